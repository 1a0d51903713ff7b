/* Unloading modules, and what is left of them. */
#include <malloc.h>

#include <filesystem>

#include "support/host.h"

namespace test {
namespace {

const std::string ENUM =
    "<type name=\"enumeration\"><enum name=\"down\"/><enum name=\"up\"><value value=\"7\"/></enum></type>";

uint32_t CountPair(const char *, int32_t, void *cookie)
{
    ++*static_cast<uint32_t *>(cookie);
    return 5;
}

class UnloadModule : public HostTest {
  protected:
    void SetUp() override
    {
        HostTest::SetUp();
        dir.Add("m", Container("c", Ext("class-id", "1") + Leaf("e", ENUM, Ext("field-id", "1")) +
                                        "<choice name=\"ch\">" + Leaf("f", ENUM) + "</choice>"));
        dir.Add("x",
                "<augment target-node=\"/m:c\">" + Leaf("g", ENUM) + Container("d", Leaf("h", ENUM)) + "</augment>",
                "m");
    }

    /* Pairs that the leaf reports, or -1 when its type cannot be found. */
    static int Pairs(const KorvTreeLeaf *leaf)
    {
        uint32_t count = 0;
        return YANGLIB_ScanNameValuePair(leaf, CountPair, &count) == 0 ? static_cast<int>(count) : -1;
    }
};

TEST_F(UnloadModule, ReversesALoadOnce)
{
    ASSERT_EQ(Load("m"), 0u);
    log.Clear();
    EXPECT_EQ(Unload("m", ""), 0u);
    EXPECT_EQ(log.lines, (std::vector<LogLine>{{2, "YANGLIB_UnloadYangModule (m)"}}));
    EXPECT_EQ(SchemaModule("m"), nullptr);
    EXPECT_EQ(Local()->uiModuleNum, 0u);
    EXPECT_EQ(Services().LiveBlocks().size(), 2u);
    log.Clear();
    EXPECT_EQ(Unload("m"), 1u);
    EXPECT_EQ(log.Errors(), (std::vector<std::string>{"can not findYangModuleTree,module(m)version(NULL)!",
                                                      "TELEMYANG_DestroyYangMouleTree error!"}));
    log.Clear();
    EXPECT_EQ(YANGLIB_UnloadYangModule(Local(), nullptr, nullptr), 1u);
    EXPECT_EQ(YANGLIB_UnloadYangModule(nullptr, "m", nullptr), 1u);
    EXPECT_EQ(log.Errors(), std::vector<std::string>{"pcModuleName or pYangModule error!"});
}

TEST_F(UnloadModule, RefusedBySchemaLibraryLeavesAModuleWithoutTrees)
{
    ASSERT_EQ(Load("x"), 0u);
    ASSERT_EQ(Load("m"), 0u);
    Faults().unloadResult = 0x16;
    log.Clear();
    EXPECT_EQ(Unload("m"), 1u);
    EXPECT_EQ(Unload("x"), 1u);
    EXPECT_EQ(log.Errors(), (std::vector<std::string>{"QY_CTX_UnloadModule m fail return 0x16!",
                                                      "QY_CTX_UnloadModule x fail return 0x16!"}));
    EXPECT_EQ(Local()->uiModuleNum, 2u);
    const YangXpathLookup plain = {Local(), "m", nullptr, "/c", "m:c", 0, 0};
    EXPECT_EQ(TELMYANG_KorvFindTreeNodeByXpath(&plain), nullptr);
    const YangXpathLookup augment = {Local(), "x", nullptr, "/c/d", "m:c/x:d", 0, 0};
    EXPECT_EQ(TELMYANG_KorvFindTreeNodeByXpath(&augment), nullptr);
    YangDumpNodeData **records = nullptr;
    uint32_t count = 9;
    const YangDumpRequest dump = {Local(), "m", nullptr, nullptr, 0};
    EXPECT_EQ(YANGLIB_DumpYangModuleDataEx(&dump, &records, &count), 1u);
    EXPECT_EQ(count, 0u);
    YANGLIB_PrintYangModuleData(Local(), "x", nullptr);
    EXPECT_EQ(Unload("x"), 1u);
    EXPECT_EQ(YANGLIB_UnloadYangModuleAll(Local()), 0u);
    EXPECT_EQ(Local()->uiModuleNum, 0u);
    Faults().unloadResult = 0;
}

TEST_F(UnloadModule, AllAtOnce)
{
    EXPECT_EQ(YANGLIB_UnloadYangModuleAll(Local()), 0u);
    ASSERT_EQ(Load("x"), 0u);
    ASSERT_EQ(Load("m", "1"), 0u);
    ASSERT_EQ(Load("m", "2"), 0u);
    EXPECT_EQ(YANGLIB_UnloadYangModuleAll(Local()), 0u) << "the second m is refused by the schema library";
    EXPECT_EQ(Local()->uiModuleNum, 0u);
    EXPECT_EQ(Services().LiveBlocks().size(), 2u);
    TELMYANG_LOCAL_DATA_S without = {};
    EXPECT_EQ(YANGLIB_UnloadYangModuleAll(&without), 1u);
}

TEST_F(UnloadModule, AugmentedFirst)
{
    ASSERT_EQ(Load("m"), 0u);
    ASSERT_EQ(Load("x"), 0u);
    ASSERT_EQ(Unload("m"), 0u);
    const KorvTreeNode *target = File("x")->astAugment[0].pstTargetTree;
    EXPECT_EQ(Pairs(LeafOf(target, "e")), 2) << "x imports m, whose nodes stay";
    EXPECT_EQ(Pairs(LeafOf(target, "f", true)), 2);
    EXPECT_STREQ(target->pcModuleName, "m");
    EXPECT_EQ(Unload("x"), 0u);
}

TEST_F(UnloadModule, AugmentingFirst)
{
    ASSERT_EQ(Load("x"), 0u);
    ASSERT_EQ(Load("m"), 0u);
    EXPECT_EQ(Pairs(LeafOf(Node("m", "c"), "g")), 2);
    ASSERT_EQ(Unload("x"), 0u);
    EXPECT_EQ(Pairs(LeafOf(Node("m", "c"), "g")), -1) << "x took its nodes away";
    EXPECT_EQ(Pairs(LeafOf(Node("m", "c/d"), "h")), -1);
    EXPECT_EQ(Pairs(LeafOf(Node("m", "c"), "e")), 2);
    EXPECT_STREQ(Node("m", "c/d")->pcModuleName, "x") << "names live as long as the context";
    ASSERT_EQ(Unload("m"), 0u);
    ASSERT_EQ(Load("m"), 0u);
    EXPECT_EQ(Node("m", "c/d"), nullptr);
}

TEST_F(UnloadModule, SecondRevisionStaysReadable)
{
    ASSERT_EQ(Load("m", "1"), 0u);
    ASSERT_EQ(Load("m", "2"), 0u);
    ASSERT_EQ(Unload("m", "1"), 0u);
    const TELMYANG_YANG_FILE_INFO_S *second = File("m", "2");
    ASSERT_NE(second, nullptr);
    EXPECT_STREQ(second->pstOriginTree->pcModuleName, "m");
    EXPECT_EQ(Pairs(LeafOf(second->pstOriginTree, "e")), -1);
    EXPECT_EQ(Pairs(LeafOf(second->pstOriginTree, "f", true)), -1);
    const YangXpathLookup lookup = {Local(), "m", "2", "/c", "m:c", 0, 0};
    EXPECT_EQ(TELMYANG_KorvFindTreeNodeByXpath(&lookup), second->pstOriginTree);
    EXPECT_EQ(Load("m", "1"), 0u);
    EXPECT_EQ(Pairs(LeafOf(File("m", "1")->pstOriginTree, "e")), 2);
    EXPECT_EQ(Unload("m", "2"), 0u);
}

TEST_F(UnloadModule, ThousandRoundsKeepMemoryFlat)
{
    dir.AddExamples();
    log.open = {false, false, false, false};
    const auto round = [&] {
        for (const char *name : {"example-interface-shaping", "example-interfaces", "quelvo-bras-user-manage"})
            EXPECT_EQ(Load(name), 0u);
        for (const char *name : {"example-interfaces", "example-interface-shaping", "quelvo-bras-user-manage"})
            EXPECT_EQ(Unload(name), 0u);
    };
    for (int i = 0; i < 50; ++i)
        round();
    const size_t before = mallinfo2().uordblks;
    for (int i = 0; i < 1000; ++i)
        round();
    EXPECT_LE(mallinfo2().uordblks, before + 8192) << "a block of 16 bytes a round would be 16000";
    EXPECT_EQ(Services().LiveBlocks().size(), 2u);
}

} // namespace
} // namespace test
