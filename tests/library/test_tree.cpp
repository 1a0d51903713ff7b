/* The class trees of loaded modules: their shape, nodes and leaf descriptors. */
#include <cstring>

#include "support/host.h"
#include "telem_yang/telem_yang.h"

namespace test {
namespace {

/* "a{b,c{d}}" of a chain of nodes. */
std::string Shape(const KorvTreeNode *node)
{
    std::string text;
    for (; node != nullptr; node = node->pstNextSibling) {
        text += node->pcName;
        if (node->pstFirstChild != nullptr)
            text += "{" + Shape(node->pstFirstChild) + "}";
        text += node->pstNextSibling != nullptr ? "," : "";
    }
    return text;
}

std::vector<std::string> LeafNames(const VEC_VECTOR_S *leaves)
{
    std::vector<std::string> names;
    for (uint32_t i = 0; leaves != nullptr && i < leaves->uiCount; ++i)
        names.emplace_back(static_cast<const KorvTreeLeaf *>(leaves->ppvItem[i])->pcName);
    return names;
}

class Tree : public HostTest {
  protected:
    const KorvTreeNode *LoadTree(const std::string &body)
    {
        dir.Add("m", body);
        EXPECT_EQ(Load("m"), 0u);
        return File("m")->pstOriginTree;
    }
};

TEST_F(Tree, HoldsContainersListsChoicesAndCasesBelowTopContainers)
{
    const KorvTreeNode *root =
        LoadTree(Container("a", Leaf("l1", "int8") + Container("b", Leaf("l2", "int8")) + Leaf("l3", "int8") +
                                    List("c", "k", Leaf("k", "int8") + Container("d", Container("e", ""))) +
                                    "<choice name=\"f\"><case name=\"g\">" + Container("h", "") + "</case>" +
                                    Container("i", "") + "</choice>" + Container("j", "")) +
                 List("top-list", "k", Leaf("k", "int8")) + Leaf("top-leaf", "int8") + "<rpc name=\"r\"><input>" +
                 Container("in", "") + "</input></rpc><notification name=\"n\">" + Container("note", "") +
                 "</notification>" + Container("z", ""));
    EXPECT_EQ(Shape(root), "a{b,c{d{e}},f{g{h},i{i}},j},z");
    EXPECT_EQ(root->pstParent, nullptr);
    EXPECT_EQ(root->pstNextSibling->pstParent, nullptr);
    EXPECT_EQ(Node("m", "a/c/d/e")->pstParent, Node("m", "a/c/d"));
    EXPECT_EQ(Node("m", "a/f")->ucNodeType, 1);
    EXPECT_EQ(Node("m", "a/f/g")->ucNodeType, 2);
    EXPECT_EQ(Node("m", "a/f/i")->ucNodeType, 2) << "the implicit case";
    EXPECT_EQ(Node("m", "a/f/i/i")->ucNodeType, 0);
    EXPECT_EQ(LeafNames(root->pstLeafList), (std::vector<std::string>{"l1", "l3"}));
    EXPECT_EQ(Node("m", "a/j")->pstLeafList, nullptr);
    EXPECT_STREQ(root->pcModuleName, "m");
}

TEST_F(Tree, MayBeEmpty)
{
    EXPECT_EQ(LoadTree(List("l", "k", Leaf("k", "int8"))), nullptr);
}

TEST_F(Tree, AugmentNodeThatIsReportedAsTopNodeYieldsNothing)
{
    dir.Add("x", "<augment target-node=\"/m:a\">" + Container("b", "") + "</augment>", "m");
    LoadTree(Container("a", ""));
    ASSERT_EQ(Load("x"), 0u);
    KorvTreeGenCtx gen = {};
    gen.pstLocal = Local();
    EXPECT_EQ(TELMYANG_GenerateKorvTreeNodes(File("x")->astAugment[0].pAugNode, nullptr, &gen), 0u);
    EXPECT_EQ(gen.pstRoot, nullptr);
}

TEST_F(Tree, ChoicesAndCasesCarryTheClassIdAboveThem)
{
    LoadTree(Container("a", Ext("class-id", "5") + Ext("tlmt-sample-id", "6") + Leaf("own", "int8") +
                                "<choice name=\"ch\"><case name=\"cs\"><choice name=\"inner\"><case name=\"ic\">" +
                                Leaf("deep", "int8", Ext("field-id", "3")) + "</case></choice>" +
                                Leaf("l", "int8", Ext("field-id", "2")) + "</case></choice>" + Container("plain", "")));
    for (const char *path : {"a", "a/ch", "a/ch/cs", "a/ch/cs/inner", "a/ch/cs/inner/ic"})
        EXPECT_EQ(Node("m", path)->uiClassId, 5u) << path;
    EXPECT_EQ(Node("m", "a/plain")->uiClassId, 0u);
    EXPECT_EQ(Node("m", "a")->uiSampleId, 6u);
    EXPECT_EQ(Node("m", "a/ch")->uiSampleId, 0u);
    EXPECT_EQ(LeafOf(Node("m", "a"), "own")->uiClassId, 5u);
    EXPECT_EQ(LeafOf(Node("m", "a/ch/cs"), "l")->uiClassId, 0u) << "filled before the case takes the class id";
    EXPECT_EQ(LeafOf(Node("m", "a"), "l", true)->uiClassId, 5u);
    EXPECT_EQ(LeafOf(Node("m", "a"), "deep", true)->uiFieldId, 3u);
    EXPECT_TRUE(Node("m", "a/ch/cs")->pstCaseLeafList == nullptr);
}

TEST_F(Tree, CaseLeavesAreTheEnabledLeavesOfAllChoices)
{
    /* The module's own features are all enabled; those of a module that it imports can be switched off only there, so the
     * disabled leaf comes from a grouping whose feature stays off: an if-feature that needs its opposite. */
    const auto pair = [](const std::string &name) {
        return "<case name=\"" + name + "\">" + Leaf(name + "1", "int8") +
               Leaf(name + "-off", "int8", "<if-feature name=\"not f\"/>") + Leaf(name + "2", "int8") +
               Container(name + "-box", Leaf("boxed", "int8")) + "<leaf-list name=\"" + name +
               "-ll\"><type name=\"int8\"/></leaf-list></case>";
    };
    LoadTree("<feature name=\"f\"/>" +
             Container("a", Leaf("own", "int8") + "<choice name=\"ch\">" + pair("x") + pair("y") + "</choice>"));
    EXPECT_EQ(LeafNames(Node("m", "a")->pstCaseLeafList), (std::vector<std::string>{"x1", "x2", "y1", "y2"}));
    EXPECT_EQ(LeafNames(Node("m", "a")->pstLeafList), std::vector<std::string>{"own"});
    EXPECT_EQ(LeafNames(Node("m", "a/ch/x")->pstLeafList), (std::vector<std::string>{"x1", "x-off", "x2", "x-ll"}));
    EXPECT_EQ(LeafNames(Node("m", "a/ch/x/x-box")->pstLeafList), std::vector<std::string>{"boxed"});
}

TEST_F(Tree, KeepsTheFirst255CaseLeavesAndSaysSo)
{
    std::string body = "<choice name=\"ch\">";
    for (int i = 0; i < 3; ++i) {
        body += "<case name=\"c" + std::to_string(i) + "\">";
        for (int j = 0; j < 100; ++j)
            body += Leaf("l" + std::to_string(i * 100 + j), "int8");
        body += "</case>";
    }
    LoadTree(Container("a", body + "</choice>"));
    const std::vector<std::string> names = LeafNames(Node("m", "a")->pstCaseLeafList);
    ASSERT_EQ(names.size(), 255u);
    EXPECT_EQ(names.front(), "l0");
    EXPECT_EQ(names.back(), "l254");
    EXPECT_EQ(log.Errors().front(), "node(a) has more than 255 case leaves, the others are left out!");
    QY_NODE *leaves[4] = {};
    EXPECT_EQ(TELMYANG_GetAllCaseLeafNode(SchemaNode(SchemaModule("m"), "a"), 0, leaves, 1, 3), 3u);
    EXPECT_EQ(leaves[0], nullptr);
    EXPECT_EQ(TELMYANG_GetAllCaseLeafNode(SchemaNode(SchemaModule("m"), "a"), 0, leaves, 256, 3), 3u);
}

TEST_F(Tree, LeafDescriptor)
{
    const std::string range = "<type name=\"uint32\"><range value=\"1..10 | 20..30\"/></type>";
    const std::string small = "<type name=\"uint8\"><range value=\"1..10\"/></type>";
    LoadTree(Container(
        "a", Ext("class-id", "0x10") +
                 Leaf("full", range,
                      Ext("datatype-id", "0x40") + Ext("field-id", "300") + Ext("name2id-key-fid", "8") +
                          Ext("ref-id-key-fid", "9")) +
                 Leaf("zero", small, Ext("datatype-id", "0") + Ext("field-id", "2")) +
                 Leaf("none", "uint64", Ext("datatype-id", "0xFFFFFFFF")) + Leaf("bare", "string") +
                 "<leaf-list name=\"ll\"><type name=\"uint16\"/>" + Ext("field-id", "5") + "</leaf-list>" +
                 Leaf("ref", "<type name=\"leafref\"><path value=\"../full\"/></type>", Ext("field-id", "6"))));
    const KorvTreeNode *a = Node("m", "a");
    const KorvTreeLeaf *full = LeafOf(a, "full");
    EXPECT_STREQ(full->pcModuleName, "m");
    EXPECT_EQ(full->ucMask, 0x3a);
    EXPECT_EQ(full->uiFieldId, 9u) << "the reference key";
    EXPECT_EQ(full->uiDataType, 0x40u);
    EXPECT_EQ(full->uiName2IdKeyFid, 8u);
    EXPECT_EQ(full->uiRefIdKeyFid, 9u);
    EXPECT_EQ(full->ucBaseType, QY_TYPE_UINT32);
    EXPECT_EQ(full->uiClassId, 0x10u);
    EXPECT_EQ(full->llRangeMin, 20) << "the last part";
    EXPECT_EQ(full->llRangeMax, 30);
    EXPECT_EQ(full->pYinNode, SchemaNode(SchemaModule("m"), "a/full"));
    const KorvTreeLeaf *zero = LeafOf(a, "zero");
    EXPECT_EQ(zero->ucMask, 0x02);
    EXPECT_EQ(zero->uiDataType, 0u);
    EXPECT_EQ(zero->llRangeMax, 0) << "no range for uint8";
    const KorvTreeLeaf *none = LeafOf(a, "none");
    EXPECT_EQ(none->ucMask, 0);
    EXPECT_EQ(none->uiDataType, 0u);
    EXPECT_EQ(none->llRangeMin, 0);
    EXPECT_EQ(none->llRangeMax, -1) << "all 64 bits of the largest uint64";
    EXPECT_EQ(LeafOf(a, "bare")->ucMask, 0);
    EXPECT_EQ(LeafOf(a, "ll")->ucMask, 0) << "no statement of a leaf-list is read";
    EXPECT_EQ(LeafOf(a, "ll")->ucBaseType, QY_TYPE_UINT16);
    EXPECT_EQ(LeafOf(a, "ref")->ucBaseType, QY_TYPE_UINT32);
    EXPECT_EQ(LeafOf(a, "ref")->llRangeMax, 30);
    for (const char *text : {"Read leaf node (full) mimext info.", "Read datatype = 0x40", "Read name2id-key-fid = 8",
                             "Read ref-id-key-fid = 9", "Read field-id = 9"})
        EXPECT_TRUE(log.Has(text)) << text;
}

uint32_t Adapt(uint64_t component, KorvTreeLeaf *leaf)
{
    reinterpret_cast<LogSink *>(component)->lines.push_back({9, leaf->pcName + std::string(leaf->ucIsKey ? "*" : "")});
    leaf->uiDataType = 1000 + leaf->uiClassId;
    return 1;
}

TEST_F(Tree, AdaptFunctionSeesEveryLeafOnceAndItsResultIsIgnored)
{
    const std::string body = Container("a", List("l", "k",
                                                 Ext("class-id", "7") + Leaf("k", "int8", Ext("field-id", "1")) +
                                                     "<choice name=\"ch\">" + Leaf("c", "int8") + "</choice>"));
    YANGLIB_RegisterDatatypeAdaptFunc(Local(), Adapt);
    LoadTree(body);
    EXPECT_EQ(log.Texts(9), (std::vector<std::string>{"k*", "c", "c"}));
    EXPECT_EQ(LeafOf(Node("m", "a/l"), "k")->uiDataType, 1007u);
    EXPECT_EQ(LeafOf(Node("m", "a/l"), "c", true)->uiDataType, 1007u);
    YANGLIB_RegisterDatatypeAdaptFunc(Local(), nullptr);
    dir.Add("n", body);
    log.Clear();
    ASSERT_EQ(Load("n"), 0u);
    EXPECT_TRUE(log.Texts(9).empty());
}

TEST_F(Tree, LinksAppendAtTheEndOfAChain)
{
    KorvTreeNode nodes[5] = {};
    EXPECT_EQ(TELMYANG_AddKorvChildNode(&nodes[0], nullptr), 22u);
    EXPECT_EQ(TELMYANG_AddKorvChildNode(nullptr, &nodes[0]), 22u);
    EXPECT_EQ(TELMYANG_AddKorvSiblingNode(&nodes[0], nullptr), 22u);
    EXPECT_EQ(TELMYANG_AddKorvSiblingNode(nullptr, &nodes[0]), 22u);
    for (int i = 1; i < 4; ++i)
        EXPECT_EQ(TELMYANG_AddKorvChildNode(&nodes[0], &nodes[i]), 0u);
    EXPECT_EQ(TELMYANG_AddKorvSiblingNode(&nodes[2], &nodes[4]), 0u);
    EXPECT_TRUE(nodes[0].pstFirstChild == &nodes[1]);
    EXPECT_TRUE(nodes[1].pstNextSibling == &nodes[2]);
    EXPECT_TRUE(nodes[2].pstNextSibling == &nodes[3]);
    EXPECT_TRUE(nodes[3].pstNextSibling == &nodes[4]);
    EXPECT_TRUE(nodes[4].pstNextSibling == nullptr);
    EXPECT_TRUE(nodes[4].pstParent == &nodes[0]);
}

TEST_F(Tree, ScanCallbackBuildsTheSameTreeOnItsOwn)
{
    LoadTree(Container("a", Leaf("l", "int8") + Container("b", Container("c", "")) + Container("d", "")));
    KorvTreeGenCtx gen = {};
    gen.pstLocal = Local();
    EXPECT_EQ(QY_NODE_TreeScanAllNode(SchemaNode(SchemaModule("m"), "a"), TELMYANG_DupOneKorvTreeNode, &gen), 0u);
    EXPECT_EQ(Shape(gen.pstRoot), "a{b{c},d}");
    EXPECT_EQ(TELMYANG_DupOneKorvTreeNode(SchemaNode(SchemaModule("m"), "a/d"), QY_TRAV_SIBLING, &gen), 22u)
        << "no parent to link to";
    EXPECT_EQ(TELMYANG_FreeYangtreeAllNodes(Local(), gen.pstRoot), 0u);
    EXPECT_EQ(TELMYANG_FreeYangtreeAllNodes(Local(), nullptr), 0u);
}

TEST_F(Tree, NamesCanBeCopied)
{
    LoadTree(Container("a", ""));
    QY_NODE *node = SchemaNode(SchemaModule("m"), "a");
    char *module = TELMYANG_AllocNodeModuleName(Local(), node);
    char *name = TELMYANG_AllocNodeSelfName(Local(), node);
    EXPECT_STREQ(module, "m");
    EXPECT_STREQ(name, "a");
    ZOR_Free_F(module, __FILE__, __LINE__);
    ZOR_Free_F(name, __FILE__, __LINE__);
    KorvTreeNode treeNode = {};
    EXPECT_EQ(TELMYANG_FillContainerBaseInfo(Local(), nullptr, node), 1u);
    Services().FailAllocation(0, false);
    EXPECT_EQ(TELMYANG_FillContainerBaseInfo(Local(), &treeNode, node), 12u);
}

} // namespace
} // namespace test
