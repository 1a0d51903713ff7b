/* What a load and a lookup do in larger steps, asked for one by one. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "support/host.h"

namespace test {
namespace {

class SingleSteps : public HostTest {
  protected:
    void SetUp() override
    {
        HostTest::SetUp();
        dir.AddExamples();
        ASSERT_EQ(Load("example-interfaces"), 0u);
        node = Node("example-interfaces", "interfaces/interface");
        ASSERT_NE(node, nullptr);
    }

    KorvTreeNode *node = nullptr;
};

TEST_F(SingleSteps, ValuesOfExtensionRecordsWhileTheyExist)
{
    QY_MOD *mod = SchemaModule("example-interfaces");
    QY_NODE *list = SchemaNode(mod, "interfaces/interface");
    QY_NODE *leaf = SchemaNode(mod, "interfaces/interface/mtu");
    EXPECT_EQ(TELMYANG_GetNodePrivateValue(Local(), list), 0u) << "released after the load";
    ASSERT_EQ(TELEMYANG_ReadYinModDataNodeExtension(SchemaNode(mod, "interfaces"), nullptr, Local()), 0u);
    EXPECT_EQ(TELMYANG_GetNodePrivateValue(Local(), list), node->uiClassId);
    EXPECT_EQ(TELMYANG_GetNodePrivateValue(Local(), leaf), LeafOf(node, "mtu")->uiFieldId);
    EXPECT_EQ(TELMYANG_GetNodePrivateValue(Local(), SchemaNode(mod, "interfaces/interface/mode")), 0u);
    EXPECT_EQ(TELMYANG_GetNodePrivateValue(Local(), SchemaNode(mod, "interfaces/interface/mode/fixed")), 0u);
    TELEMYANG_FreeAllYinExtensionInMouleEx(Local(), "example-interfaces", nullptr, File("example-interfaces"));
    EXPECT_EQ(QY_NODE_GetPrivate(list), nullptr);
}

/* A schema library may have no name for an extension's module, or for the extension. */
TEST_F(SingleSteps, StatementsWithoutNames)
{
    uint32_t taskId = 0;
    ModuleExtCtx module = {Local(), &taskId};
    uint32_t classId = 7;
    YinAttr attr = {};
    AttrFillCtx fill = {Local(), &attr};
    const char *const names[][2] = {{nullptr, nullptr}, {"quelvo-mim-extensions", nullptr}, {nullptr, "class-id"}};
    for (const auto &[extModule, keyword] : names) {
        EXPECT_EQ(TELMYANG_BSC_ImplParseModuleExtInstCb(nullptr, extModule, keyword, "1", &module), 1u);
        EXPECT_EQ(TELMYANG_BSC_ImplGetClassIdFromYinNodeExtCb_(nullptr, extModule, keyword, "1", &classId), 0u);
        EXPECT_EQ(TELMYANG_BSC_ImplFillLeafIntoYinAttrCb(nullptr, extModule, keyword, "1", &fill), 0u);
    }
    EXPECT_EQ(classId, 7u);
    EXPECT_EQ(taskId, 0u);
}

TEST_F(SingleSteps, AnswerAsTheWholeDoes)
{
    QY_MOD *mod = SchemaModule("example-interfaces");
    for (uint32_t i = 0; i < VEC_VectorCount(node->pstLeafList); ++i) {
        const auto *leaf = static_cast<const KorvTreeLeaf *>(node->pstLeafList->ppvItem[i]);
        QY_NODE *schemaLeaf = SchemaNode(mod, std::string("interfaces/interface/") + leaf->pcName);
        KorvTreeLeaf steps = {};
        TELMYANG_GetLeafNodeDataType(Local(), schemaLeaf, &steps);
        TELMYANG_GetLeafNodeNameKey(Local(), schemaLeaf, &steps);
        TELMYANG_GetLeafNodeDataRefKey(Local(), schemaLeaf, &steps);
        EXPECT_EQ(steps.uiDataType, leaf->uiDataType) << leaf->pcName;
        EXPECT_EQ(steps.uiName2IdKeyFid, leaf->uiName2IdKeyFid) << leaf->pcName;
        EXPECT_EQ(steps.uiRefIdKeyFid, leaf->uiRefIdKeyFid) << leaf->pcName;
        EXPECT_EQ(steps.ucMask, leaf->ucMask & ~KORV_MASK_FIELD_ID) << leaf->pcName;
    }
    KorvTreeNode *top = File("example-interfaces")->pstOriginTree;
    EXPECT_EQ(TELMYANG_KorvFindNodeWithChoiceCase(top->pstFirstChild, "interface"), node);
    EXPECT_EQ(TELMYANG_KorvFindNodeWithChoiceCase(top->pstFirstChild, "interfac"), nullptr);
    EXPECT_EQ(TELMYANG_KorvFindNodeWithChoiceCase(top->pstFirstChild, ""), nullptr);
    char name[10] = "untouched";
    uint32_t length = 0;
    EXPECT_EQ(TELMYANG_GetNextNodeName("interface/name", name, 9, &length), 1u);
    EXPECT_STREQ(name, "untouched");
    EXPECT_EQ(TELMYANG_GetNextNodeName("interface/name", name, 10, &length), 0u);
    EXPECT_STREQ(name, "interface");
    EXPECT_EQ(length, 9u);
    char *copy = nullptr;
    EXPECT_EQ(TELMYANG_DuplicateXpath(Local(), &copy, "/a", 4), 0u);
    EXPECT_STREQ(copy, "/a/");
    ZOR_Free_F(copy, __FILE__, __LINE__);
    EXPECT_EQ(TELMYANG_DuplicateXpath(Local(), &copy, "/a", 3), 1u) << "no room for the slash";
    ZOR_Free_F(copy, __FILE__, __LINE__);
}

TEST_F(SingleSteps, LeafrefChainsEndAfter64Hops)
{
    std::string leaves = Leaf("l0", "uint32", Ext("field-id", "1"));
    for (int i = 1; i <= 66; ++i)
        leaves += Leaf("l" + std::to_string(i),
                       "<type name=\"leafref\"><path value=\"../l" + std::to_string(i - 1) + "\"/></type>");
    dir.Add("m", Container("c", leaves));
    ASSERT_EQ(Load("m"), 0u);
    QY_MOD *mod = SchemaModule("m");
    EXPECT_NE(TELMYANG_UTL_GetFinalLeafType(SchemaNode(mod, "c/l64")), 0u);
    EXPECT_EQ(TELMYANG_UTL_GetFinalLeafType(SchemaNode(mod, "c/l65")), 0u);
}

} // namespace
} // namespace test
