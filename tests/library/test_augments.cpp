/* Augments: their table, their self and target trees. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "support/host.h"

namespace test {
namespace {

std::string Augment(const std::string &target, const std::string &body)
{
    return "<augment target-node=\"" + target + "\">" + body + "</augment>";
}

class Augments : public HostTest {
  protected:
    void SetUp() override
    {
        HostTest::SetUp();
        dir.Add("m", Container("sys", Ext("class-id", "1") +
                                          List("port", "name",
                                               Ext("class-id", "2") + Leaf("name", "string", Ext("field-id", "1")) +
                                                   "<choice name=\"mode\"><case name=\"auto\">" + Leaf("t", "int8") +
                                                   "</case></choice>")) +
                         Container("other", ""));
    }

    const TELMYANG_AUGMENT_INFO_S &Entry(const std::string &module, size_t i) { return File(module)->astAugment[i]; }
};

TEST_F(Augments, ModuleWithoutAugments)
{
    ASSERT_EQ(Load("m"), 0u);
    EXPECT_EQ(File("m")->ucAugmentNum, 0);
    EXPECT_TRUE(log.Has("augment null,size(0)!"));
}

TEST_F(Augments, SelfAndTargetTrees)
{
    dir.Add("x",
            Augment("/m:sys/m:port",
                    Container("stats", Ext("class-id", "3") + Ext("ancestor-key-fid", "1", Ext("field-id", "9")) +
                                           Leaf("rx", "int8", Ext("field-id", "1"))) +
                        Leaf("flag", "boolean") + Container("second", "")) +
                Augment("/m:sys", Leaf("only-leaf", "int8") + List("only-list", "k", Leaf("k", "int8"))) +
                Augment("/m:sys/m:port/m:mode", "<case name=\"extra\">" + Container("in-case", "") + "</case>") +
                Augment("/m:sys/m:port/m:mode/m:auto", Leaf("u", "int8")) + Container("own", ""),
            "m");
    ASSERT_EQ(Load("x"), 0u);
    ASSERT_EQ(File("x")->ucAugmentNum, 4);
    const TELMYANG_AUGMENT_INFO_S &stats = Entry("x", 0);
    EXPECT_STREQ(stats.acAugNodeName, "/m:sys/m:port");
    EXPECT_EQ(stats.pTargetParentRoot, nullptr) << "only while the module is being loaded";
    ASSERT_NE(stats.pstSelfTree, nullptr);
    EXPECT_STREQ(stats.pstSelfTree->pcName, "stats");
    EXPECT_STREQ(stats.pstSelfTree->pcModuleName, "x");
    EXPECT_STREQ(stats.pstSelfTree->pstNextSibling->pcName, "second") << "the leaf between them has no tree";
    EXPECT_EQ(stats.pstSelfTree->pstNextSibling->pstNextSibling, nullptr);
    EXPECT_EQ(test::Keys(stats.pstSelfTree->aucAncestorKey), "9");
    ASSERT_NE(stats.pstTargetTree, nullptr);
    EXPECT_STREQ(stats.pstTargetTree->pcName, "sys");
    EXPECT_STREQ(stats.pstTargetTree->pstNextSibling->pcName, "other") << "and the siblings that follow";
    const KorvTreeNode *copy = NodeBelow(stats.pstTargetTree, "sys/port/stats");
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(test::Keys(copy->aucAncestorKey), "9");
    EXPECT_STREQ(NodeBelow(stats.pstTargetTree, "sys/port")->pcModuleName, "m");
    EXPECT_NE(LeafOf(NodeBelow(stats.pstTargetTree, "sys/port"), "flag"), nullptr);

    EXPECT_EQ(Entry("x", 1).pstSelfTree, nullptr) << "leaves and lists start no tree";
    EXPECT_NE(NodeBelow(Entry("x", 1).pstTargetTree, "sys/only-list"), nullptr);
    EXPECT_EQ(Entry("x", 2).pstSelfTree, nullptr) << "a case starts no tree";
    EXPECT_NE(NodeBelow(Entry("x", 2).pstTargetTree, "sys/port/mode/extra/in-case"), nullptr);
    EXPECT_NE(LeafOf(NodeBelow(Entry("x", 3).pstTargetTree, "sys/port/mode/auto"), "u"), nullptr);
    EXPECT_STREQ(File("x")->pstOriginTree->pcName, "own");
    EXPECT_EQ(File("x")->pstOriginTree->pstNextSibling, nullptr);
}

TEST_F(Augments, SelfTreeEndsWithTheAugmentsLastChild)
{
    /* The last child has no tree; behind it the target goes on with another augment's container. */
    dir.Add(
        "x",
        Augment("/m:sys", Container("mine", "") + Leaf("last", "int8")) + Augment("/m:sys", Container("not-mine", "")),
        "m");
    ASSERT_EQ(Load("x"), 0u);
    const KorvTreeNode *self = Entry("x", 0).pstSelfTree;
    ASSERT_NE(self, nullptr);
    EXPECT_STREQ(self->pcName, "mine");
    EXPECT_EQ(self->pstNextSibling, nullptr);
    const YangXpathLookup lookup = {Local(), "x", nullptr, "/sys/not-mine", "m:sys/x:not-mine", 0, 0};
    KorvTreeNode *notMine = NodeBelow(Entry("x", 0).pstTargetTree, "sys/not-mine");
    EXPECT_EQ(TELMYANG_KorvFindTreeNodeByXpath(&lookup), notMine) << "of equal targets the first entry answers";
}

TEST_F(Augments, IntoNodesOfAnotherAugment)
{
    dir.Add("x", Augment("/m:sys/m:port", Container("stats", Ext("class-id", "3"))), "m");
    dir.Add("y",
            Augment("/m:sys/m:port/x:stats", Container("deep", Ext("class-id", "4") + Ext("ancestor-key-fid", "5"))),
            "m x");
    ASSERT_EQ(Load("y"), 0u);
    const KorvTreeNode *deep = NodeBelow(Entry("y", 0).pstTargetTree, "sys/port/stats/deep");
    ASSERT_NE(deep, nullptr);
    EXPECT_STREQ(deep->pcModuleName, "y");
    EXPECT_STREQ(deep->pstParent->pcModuleName, "x");
    EXPECT_EQ(test::Keys(deep->aucAncestorKey), "5");
    ASSERT_EQ(Load("m"), 0u);
    EXPECT_NE(Node("m", "sys/port/stats/deep"), nullptr) << "m's tree shows what its augments added";
}

TEST_F(Augments, TwentyFitAndTheNextOneFailsTheLoad)
{
    const auto augments = [](int num) {
        std::string body;
        for (int i = 0; i < num; ++i)
            body += Augment("/m:sys", Container("c" + std::to_string(i), ""));
        return body;
    };
    dir.Add("full", augments(20), "m");
    dir.Add("over", augments(21), "m");
    dir.Add("leaf-over", augments(20) + Augment("/m:other", Leaf("l", "int8")), "m");
    EXPECT_EQ(Load("full"), 0u);
    EXPECT_EQ(File("full")->ucAugmentNum, 20);
    EXPECT_STREQ(Entry("full", 19).pstSelfTree->pcName, "c19");
    ASSERT_EQ(Unload("full"), 0u);
    for (const char *name : {"over", "leaf-over"}) {
        log.Clear();
        EXPECT_EQ(Load(name), 1u);
        const std::string module(name);
        EXPECT_EQ(log.Errors(), (std::vector<std::string>{"augment cnt over max, ModName(" + module + ")",
                                                          "TELEMYANG_GetAugmentData failed,pcModName(" + module + ")!",
                                                          "ReadAugmentExtensionData failed!",
                                                          "-4. Read module (" + module + ") mimext info return 0x1",
                                                          "Load Module (" + module + ") fail!"}));
    }
}

TEST_F(Augments, LeafThatIsReportedAsAugmentTakesNoEntry)
{
    ASSERT_EQ(Load("m"), 0u);
    TELMYANG_YANG_FILE_INFO_S file = {};
    AugmentFillCtx fill = {Local(), &file, "m"};
    QY_NODE *leaf = SchemaNode(SchemaModule("m"), "sys/port/name");
    log.Clear();
    EXPECT_EQ(TELEMYANG_ImplFillAugmentDataToYangFileCb(leaf, nullptr, &fill), 0u);
    EXPECT_EQ(file.ucAugmentNum, 0);
    EXPECT_EQ(log.Texts(2), std::vector<std::string>{"skip augment's leaf node"});
    file.ucAugmentNum = 20;
    EXPECT_EQ(TELEMYANG_ImplFillAugmentDataToYangFileCb(leaf, nullptr, &fill), 1u) << "the limit comes first";
}

TEST_F(Augments, FailingNodeUnderATargetFailsTheAugmentingModule)
{
    dir.Add("x", Augment("/m:sys", Container("bad", Ext("class-id", "3") + Leaf("l", "empty", Ext("field-id", "1")))),
            "m");
    EXPECT_EQ(Load("x"), 1u);
    const std::vector<std::string> errors = log.Errors();
    const std::vector<std::string> tail(errors.end() - 5, errors.end());
    EXPECT_EQ(tail, (std::vector<std::string>{"Read Node(bad) Extension return 0x1!",
                                              "ReadAugmentExtensionData failed,pcModName(x)uiLoop(0)!",
                                              "ReadAugmentExtensionData failed!",
                                              "-4. Read module (x) mimext info return 0x1", "Load Module (x) fail!"}));
    EXPECT_EQ(Services().LiveBlocks().size(), 2u) << Services().Leaks();
}

TEST_F(Augments, FailingTargetTreeIsReleasedWithItsEarlierSiblings)
{
    /* 17 ancestor keys are read, but cannot be placed in a tree. */
    dir.Add("x",
            Augment("/m:sys", Container("good", "")) +
                Augment("/m:other",
                        Container("bad", Ext("class-id", "3") +
                                             Ext("ancestor-key-fid", "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17"))),
            "m");
    EXPECT_EQ(Load("x"), 1u);
    const std::vector<std::string> errors = log.Errors();
    EXPECT_TRUE(log.Has("DupYangtree child failed, node(other)!"));
    EXPECT_TRUE(log.Has("DupYangtree target failed,uiLoop(0) node(sys)!"));
    EXPECT_EQ(errors[errors.size() - 4], "DupYangtree target failed!");
    EXPECT_EQ(errors[errors.size() - 3], "GenerateAugmentTree failed,pcModuleName(x)!");
    EXPECT_EQ(Services().LiveBlocks().size(), 2u) << Services().Leaks();
}

} // namespace
} // namespace test
