/* Dumps: flat records of a tree, level by level. */
#include <cstring>

#include "korv_lib_yang/korv_lib_yang.h"
#include "support/host.h"

namespace test {
namespace {

class Dump : public HostTest {
  protected:
    void SetUp() override
    {
        HostTest::SetUp();
        dir.Add("m",
                Container("sys", Ext("class-id", "0x10") + Ext("tlmt-sample-id", "3") +
                                     Container("ports", List("port", "name",
                                                             Ext("class-id", "0x1a2") +
                                                                 Leaf("name", "string", Ext("field-id", "1")) +
                                                                 Leaf("speed", "uint32",
                                                                      Ext("field-id", "3") + Ext("datatype-id", "7") +
                                                                          Ext("name2id-key-fid", "4")))) +
                                     "<choice name=\"mode\"><case name=\"auto\">" + Container("timer", "") +
                                     "</case></choice>") +
                    Container("second", ""));
    }

    uint32_t DumpOf(const char *module, KorvTreeNode *augment = nullptr, bool isAugment = false)
    {
        const YangDumpRequest request = {Local(), module, nullptr, augment, isAugment ? 1u : 0u};
        return YANGLIB_DumpYangModuleDataEx(&request, &records, &count);
    }

    void Free()
    {
        YANGLIB_FreeDumpDataEx(records, count);
        for (uint32_t i = 0; i < count; ++i)
            EXPECT_EQ(records[i], nullptr);
        ZOR_Free_F(records, __FILE__, __LINE__);
        records = nullptr;
        count = 0;
    }

    std::vector<std::string> Paths() const
    {
        std::vector<std::string> paths;
        for (uint32_t i = 0; i < count; ++i)
            paths.emplace_back(records[i]->pcXpath);
        return paths;
    }

    const YangDumpLeafData *LeafAt(uint32_t record, uint32_t leaf) const
    {
        return static_cast<const YangDumpLeafData *>(records[record]->pstLeafList->ppvItem[leaf]);
    }

    YangDumpNodeData **records = nullptr;
    uint32_t count = 0;
};

const std::vector<std::string> ALL_PATHS = {
    "/sys", "/second", "/sys/ports", "/sys/mode", "/sys/ports/port", "/sys/mode/auto", "/sys/mode/auto/timer"};

TEST_F(Dump, GoesLevelByLevel)
{
    ASSERT_EQ(Load("m"), 0u);
    ASSERT_EQ(DumpOf("m"), 0u);
    EXPECT_EQ(Paths(), ALL_PATHS);
    EXPECT_STREQ(records[4]->pcName, "port");
    EXPECT_EQ(records[0]->uiClassId, 0x10u);
    EXPECT_EQ(records[0]->uiSampleId, 3u);
    EXPECT_EQ(records[0]->pstLeafList, nullptr);
    Free();
}

TEST_F(Dump, OutlivesItsModule)
{
    ASSERT_EQ(Load("m"), 0u);
    ASSERT_EQ(DumpOf("m"), 0u);
    ASSERT_EQ(Unload("m"), 0u);
    EXPECT_EQ(Paths(), ALL_PATHS);
    EXPECT_EQ(test::Keys(records[4]->aucSelfNodeKey), "1");
    ASSERT_EQ(VEC_VectorCount(records[4]->pstLeafList), 2u);
    const YangDumpLeafData *speed = LeafAt(4, 1);
    EXPECT_STREQ(speed->pcName, "speed");
    EXPECT_STREQ(speed->pcPath, "/sys/ports/port/speed");
    EXPECT_EQ(speed->ucMask, 0x2a);
    EXPECT_EQ(speed->uiFieldId, 3u);
    EXPECT_EQ(speed->uiDataType, 7u);
    EXPECT_EQ(speed->uiIndexMap, 4u);
    EXPECT_EQ(speed->llRangeMin, 0);
    EXPECT_EQ(speed->llRangeMax, 4294967295);
    Stop();
    EXPECT_STREQ(LeafAt(4, 0)->pcPath, "/sys/ports/port/name");
    Free();
}

TEST_F(Dump, OfAnAugmentTree)
{
    dir.Add("x", "<augment target-node=\"/m:sys\">" + Container("a", "") + "</augment>", "m");
    ASSERT_EQ(Load("x"), 0u);
    ASSERT_EQ(DumpOf("x", File("x")->astAugment[0].pstSelfTree, true), 0u);
    EXPECT_EQ(Paths(), std::vector<std::string>{"/a"});
    Free();
    EXPECT_EQ(DumpOf("x"), 1u) << "x has no tree of its own";
    log.Clear();
    EXPECT_EQ(DumpOf("x", nullptr, true), 0u);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(log.Errors(), std::vector<std::string>{"ret err orTree node zero!"});
}

TEST_F(Dump, OfNothing)
{
    count = 9;
    EXPECT_EQ(DumpOf("nowhere"), 1u);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(log.Errors(), std::vector<std::string>{"can not findYangModuleTree(nowhere)!"});
    ASSERT_EQ(Load("m"), 0u);
    EXPECT_EQ(DumpOf(nullptr), 1u);
    const YangDumpRequest request = {nullptr, "m", nullptr, nullptr, 0};
    EXPECT_EQ(YANGLIB_DumpYangModuleDataEx(&request, &records, &count), 1u);
    YANGLIB_FreeDumpDataEx(nullptr, 7);
    YANGLIB_FreeDumpDataEx(records, 0);
}

TEST_F(Dump, LongPathsAreCut)
{
    const std::string name(60, 'n');
    std::string body;
    for (int i = 0; i < 6; ++i)
        body = Container(name, (i == 0 ? Leaf("leaf", "int8") : "") + body);
    dir.Add("n", body);
    ASSERT_EQ(Load("n"), 0u);
    ASSERT_EQ(DumpOf("n"), 0u);
    ASSERT_EQ(count, 6u);
    const std::string four = "/" + name + "/" + name + "/" + name + "/" + name;
    EXPECT_EQ(records[3]->pcXpath, four);
    EXPECT_EQ(records[4]->pcXpath, (four + "/" + name).substr(0, 256));
    EXPECT_EQ(records[5]->pcXpath, (four + "/" + name).substr(0, 255) + "/");
    EXPECT_EQ(LeafAt(5, 0)->pcPath, records[5]->pcXpath + std::string("/leaf"));
    Free();
}

TEST_F(Dump, ReleaseSkipsWhatIsNotThere)
{
    ASSERT_EQ(Load("m"), 0u);
    ASSERT_EQ(DumpOf("m"), 0u);
    YangDumpNodeData *first = records[0];
    records[0] = nullptr;
    auto *leaf = static_cast<YangDumpLeafData *>(records[4]->pstLeafList->ppvItem[0]);
    records[4]->pstLeafList->ppvItem[0] = nullptr;
    Free();
    YANGLIB_FreeDumpDataEx(&first, 1);
    for (void *block :
         {static_cast<void *>(leaf->pcName), static_cast<void *>(leaf->pcPath), static_cast<void *>(leaf)})
        ZOR_Free_F(block, __FILE__, __LINE__);
}

TEST_F(Dump, TreeThatGrewMeanwhileDoesNotOverrunTheArray)
{
    ASSERT_EQ(Load("m"), 0u);
    KorvTreeNode root = {};
    root.pstFirstChild = File("m")->pstOriginTree;
    YangDumpNodeData *room[4] = {};
    EXPECT_EQ(YANGLIB_DumpYangData(Local(), &root, room, 3), 1u);
    for (const YangDumpNodeData *record : room)
        EXPECT_EQ(record, nullptr);
}

TEST_F(Dump, FailingVectors)
{
    ASSERT_EQ(Load("m"), 0u);
    Services().FailVectorInit(0);
    log.Clear();
    EXPECT_EQ(DumpOf("m"), 0u);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(records, nullptr);
    EXPECT_EQ(log.Errors(), (std::vector<std::string>{"VEC_VectorInit failed!", "Fill List Data return 0x1!",
                                                      "Dump Yang Node Data Fail!"}));
    Services().FailVectorSet(1);
    log.Clear();
    YangDumpNodeData *earlier = nullptr;
    records = &earlier;
    count = 9;
    YANGLIB_DumpYangModuleData(Local(), File("m")->pstOriginTree, &records, &count);
    EXPECT_EQ(records, nullptr);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(log.Errors(), (std::vector<std::string>{"VEC_VectorSet failed!", "Fill List Data return 0x1!",
                                                      "Dump Yang Node Data Fail!"}));
}

} // namespace
} // namespace test
