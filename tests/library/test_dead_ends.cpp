/* Calls that lead nowhere: absent arguments, names that nobody knows, nodes of the wrong kind. Each answers its code and says
 * its line, and with closed levels the same code and nothing. */
#include <functional>

#include "korv_lib_yang/korv_lib_yang.h"
#include "support/host.h"
#include "telem_yang/telem_yang.h"
#include "telem_yang_lib/telem_yang_lib.h"

namespace test {
namespace {

class DeadEnds : public HostTest {
  protected:
    void SetUp() override
    {
        HostTest::SetUp();
        dir.AddExamples();
        ASSERT_EQ(Load("example-interfaces"), 0u);
        ctx = Local()->pstYangCtx;
        node = Node("example-interfaces", "interfaces/interface");
        ASSERT_NE(node, nullptr);
    }

    uint32_t LookUp(const char *module, const char *path, const char *xpath)
    {
        const YangXpathLookup lookup = {Local(), module, nullptr, path, xpath, 0, 0};
        return TELMYANG_KorvFindTreeNodeByXpath(&lookup) != nullptr;
    }

    uint32_t LookUpLeaf(const char *path, const char *xpath)
    {
        return TELMYANG_KorvFindTreeNodeByLeafXpath(Local(), "example-interfaces", nullptr, path, xpath) != nullptr;
    }

    uint32_t Start(const std::string &directory)
    {
        TELMYANG_LOCAL_DATA_S *other =
            YANGLIB_Initial(MODULE_ID, log.Component(), log.Hooks().data(), directory.c_str(), nullptr);
        YANGLIB_Uninitial(other);
        return other != nullptr;
    }

    uint32_t Numbers(const char *text, uint32_t room)
    {
        uint32_t values[2] = {};
        uint32_t number = 0;
        return TELMYANG_BSC_ParseMimExtIntoArray(Local(), text, values, room, &number);
    }

    uint32_t Travel(const char *module, const char *path, YANGLIB_TRAVEL_PF callback)
    {
        const YangPathRequest request = {module, nullptr, path, path};
        return YANGLIB_TravelYangModule(Local(), &request, nullptr, callback, callback);
    }

    TELMYANG_YANG_CTX_S *ctx = nullptr;
    KorvTreeNode *node = nullptr;
};

uint32_t Refuse(void *, KorvTreeNode *)
{
    return 9;
}

uint32_t RefuseBelowTop(void *, KorvTreeNode *node)
{
    return node->pstParent != nullptr ? 9 : 0;
}

uint32_t RefuseBelowList(void *, KorvTreeNode *node)
{
    return node->pstParent != nullptr && node->pstParent->pstParent != nullptr ? 9 : 0;
}

TEST_F(DeadEnds, AreSaidOrNotButAnswerTheSame)
{
    const struct {
        const char *what;
        std::function<uint32_t()> call;
        uint32_t result;
        const char *line;
    } cases[] = {
        {"schema load", [&] { return TELMYANG_LoadYangModule(Local(), ctx, nullptr); }, 1,
         "TELMYANG_LoadYangModule parameter null!"},
        {"second load", [&] { return YANGLIB_LoadYangModule(Local(), "example-interfaces", nullptr); }, 0,
         "No need load exists Module (example-interfaces)."},
        {"registry", [&] { return TELMYANG_RemoveYangFileInfoFromCtx(Local(), "nobody", nullptr); }, 1,
         "can not find yang module!\n"},
        {"unload", [&] { return Unload("nobody"); }, 1, "TELEMYANG_DestroyYangMouleTree error!"},
        {"install path", [&] { return YANGLIB_PkgAddInstallPath(Local(), "/no/such/path"); }, 0,
         "The install path not exist."},
        {"deviation", [&] { return YANGLIB_LoadDeviationModule(Local(), ctx, "nobody"); }, 0,
         "can not find deviation for mod nobody"},
        {"extensions", [&] { return TELEMYANG_ReadAllYinExtensionData(Local(), "nobody", nullptr, nullptr); }, 1,
         "Get module nobody yang info failed!"},
        {"trees", [&] { return TELEMYANG_GenerateYangMouleTree(Local(), "nobody", nullptr, nullptr, nullptr); }, 1,
         "inval parameter!"},
        {"release",
         [&] {
             TELEMYANG_FreeAllYinExtensionInMouleEx(Local(), "nobody", nullptr, nullptr);
             return 0u;
         },
         0, "Get module by name nobody failed!"},
        {"leaf as node",
         [&] {
             KorvTreeNode filled = {};
             return TELMYANG_FillDataFromYangNode(
                 Local(), &filled, SchemaNode(SchemaModule("example-interfaces"), "interfaces/interface/name"));
         },
         1, "nodetype error,name(name)!"},
        {"no augment", [&] { return LookUp("example-interfaces", "/interfaces/x", "if:interfaces/y:x"); }, 0,
         "FindAugmentInfoNode failed,name(/if:interfaces)!"},
        {"no node", [&] { return LookUp("example-interfaces", "/interfaces/x", "if:interfaces/if:x"); }, 0,
         "find node (/interfaces/x/) failed!"},
        {"no holder", [&] { return LookUpLeaf("/nobody/x", "if:nobody/if:x"); }, 0,
         "Find Tree Node By Xpath failed, name(example-interfaces) pcPath(/nobody/x)pcXpathMain(if:nobody/if:x)!"},
        {"start",
         [&] {
             Faults().noContext = true;
             const bool started = Start("x");
             Faults().noContext = false;
             return started;
         },
         0, "Create yang context return 0x1"},
        {"start elsewhere", [&] { return Start(std::string(256, 'd')); }, 0, "Set yang search direction return 0x1"},
        {"refused unload",
         [&] {
             Faults().unloadResult = 0x16;
             const uint32_t result = Unload("example-interfaces");
             Faults().unloadResult = 0;
             EXPECT_EQ(YANGLIB_UnloadYangModuleAll(Local()), 0u);
             EXPECT_EQ(YANGLIB_LoadYangModule(Local(), "example-interfaces", nullptr), 0u);
             return result;
         },
         1, "QY_CTX_UnloadModule example-interfaces fail return 0x16!"},
        {"no statement",
         [&] { return TELMYANG_BSC_GetNodeSpecMimExt(Local(), nullptr, MIM_EXT_NONE, nullptr) != nullptr; }, 0,
         "Get ExtName error in node!"},
        {"attribute ids",
         [&] {
             YinAttr attrs[2] = {};
             attrs[0].ucAttrID = 1;
             attrs[1].ucAttrID = 1;
             YinInst inst = {};
             inst.pstYinAttr = attrs;
             inst.ucNumOfAttr = 2;
             return TELMYANG_BSC_CheckAllYinInstAttrValid(Local(), &inst);
         },
         1, "Duplicated attr id 1 defined for class 0"},
        {"empty step",
         [&] { return LookUp("example-interfaces", "/interfaces//interface", "if:interfaces//if:interface"); }, 0,
         "Get next node name return 0x1!"},
        {"below the last node",
         [&] {
             return LookUp("example-interfaces", "/interfaces/interface/statistics/x/y", "if:interfaces/if:interface");
         },
         0, nullptr},
        {"no room for numbers", [&] { return Numbers("1", 0); }, 1, "uiTotalNum(0) error!"},
        {"too many numbers", [&] { return Numbers("1 2", 1); }, 1, "uiTotalNum(1)i(1) error!"},
        {"numbers", [&] { return TELMYANG_BSC_ParseMimExtIntoArray(Local(), "1", nullptr, 1, nullptr); }, 1,
         "puiValArray or puiFillNum null error!"},
        {"travel", [&] { return Travel("example-interfaces", "/nowhere", Refuse); }, 3,
         "Find Tree Node By Xpath failed, name(example-interfaces) pcPath(/nowhere)pcXpathMain(/nowhere)!"},
        {"travel stops at an ancestor", [&] { return Travel("example-interfaces", "/interfaces/interface", Refuse); },
         9, "Parent node error, return(9) name(interfaces)!"},
        {"travel stops at the node",
         [&] { return Travel("example-interfaces", "/interfaces/interface", RefuseBelowTop); }, 9,
         "Self node error, return(9) name(interface)!"},
        {"travel stops below", [&] { return Travel("example-interfaces", "/interfaces/interface", RefuseBelowList); },
         9, nullptr},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        log.open = {true, true, true, true};
        log.Clear();
        EXPECT_EQ(c.call(), c.result);
        EXPECT_TRUE(c.line != nullptr ? log.Has(c.line) : !log.lines.empty());
        log.open = {};
        log.Clear();
        EXPECT_EQ(c.call(), c.result);
        EXPECT_TRUE(log.lines.empty());
    }
}

TEST_F(DeadEnds, AbsentArgumentsAnswerNothing)
{
    EXPECT_EQ(LookUp(nullptr, "/a", "p:a"), 0u);
    EXPECT_EQ(LookUp("m", nullptr, "p:a"), 0u);
    EXPECT_EQ(LookUp("m", "/a", nullptr), 0u);
    EXPECT_EQ(LookUpLeaf(nullptr, "p:a"), 0u);
    EXPECT_EQ(LookUpLeaf("/a", nullptr), 0u);
    EXPECT_EQ(YANGLIB_IsLeafNode(nullptr, "name"), 0u);
    EXPECT_EQ(YANGLIB_IsLeafNode(node, nullptr), 0u);
    EXPECT_EQ(TELMYANG_CheckIsLeafNode(nullptr, "name"), 0u);
    EXPECT_EQ(TELMYANG_CheckIsLeafNode(node, ""), 0u);
    const YangPathRequest noPath = {"example-interfaces", nullptr, nullptr, "p:a"};
    EXPECT_EQ(YANGLIB_HasSubNodeInXpath(Local(), &noPath), 0u);
    const YangDumpRequest noInstance = {nullptr, "m", nullptr, nullptr, 0};
    YangDumpNodeData **records = nullptr;
    uint32_t count = 5;
    EXPECT_EQ(YANGLIB_DumpYangModuleDataEx(&noInstance, &records, &count), 1u);
    EXPECT_EQ(count, 0u);
    TELMYANG_LOCAL_DATA_S empty = {};
    EXPECT_EQ(YANGLIB_GetYangRevision(&empty, "m"), nullptr);
    KorvTreeNode untouched = {};
    EXPECT_EQ(TELMYANG_FillSelfAndAncestorKeyList(Local(), SchemaNode(SchemaModule("example-interfaces"), "interfaces"),
                                                  &untouched),
              0u);
    EXPECT_EQ(untouched.uiClassId, 0u);
    YANGLIB_Uninitial(nullptr);
    EXPECT_EQ(YANGLIB_GetLibVersion(), KORV_LIB_YANG_VERSION_NUMBER);
}

TEST_F(DeadEnds, ValuesOfExtensionRecordsWhileTheyExist)
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
TEST_F(DeadEnds, StatementsWithoutNames)
{
    uint32_t taskId = 0;
    ModuleExtCtx module = {Local(), &taskId};
    uint32_t classId = 7;
    YinAttr attr = {};
    AttrFillCtx fill = {Local(), &attr};
    const char *const names[][2] = {{nullptr, nullptr}, {"quelvo-mim-extensions", nullptr}, {nullptr, "class-id"}};
    for (const auto &[extModule, keyword] : names) {
        EXPECT_EQ(TELMYANG_BSC_GetNodeMimExtType(extModule, keyword), MIM_EXT_NONE);
        EXPECT_EQ(TELMYANG_BSC_ImplParseModuleExtInstCb(nullptr, extModule, keyword, "1", &module), 1u);
        EXPECT_EQ(TELMYANG_BSC_ImplGetClassIdFromYinNodeExtCb_(nullptr, extModule, keyword, "1", &classId), 0u);
        EXPECT_EQ(TELMYANG_BSC_ImplFillLeafIntoYinAttrCb(nullptr, extModule, keyword, "1", &fill), 0u);
    }
    EXPECT_EQ(TELMYANG_BSC_ImplParseModuleExtInstCb(nullptr, "quelvo-mim-extensions", "class-id", "1", &module), 0u);
    EXPECT_EQ(
        TELMYANG_BSC_ImplGetClassIdFromYinNodeExtCb_(nullptr, "quelvo-mim-extensions", "class-id", nullptr, &classId),
        1u);
    EXPECT_EQ(classId, 7u);
    EXPECT_EQ(taskId, 0u);
    AutoKeyPair pairs[1] = {};
    AutoKeyPair nameKey = {};
    YinInst inst = {};
    AutoKeyScanCtx scan = {Local(), &inst, pairs, &nameKey, 0};
    QY_MOD *mod = SchemaModule("example-interfaces");
    EXPECT_EQ(TELMYANG_BSC_ImplParseAutoKeyForEachCb_(SchemaNode(mod, "interfaces/interface"), nullptr, &scan), 0u);
    log.Clear();
    EXPECT_EQ(TELMYANG_BSC_ImplParseAutoKeyForEachCb_(SchemaNode(mod, "interfaces/number"), nullptr, &scan), 1u);
    EXPECT_EQ(log.Errors(), std::vector<std::string>{"autoKey(0)ucNumOfAttr(0)name(number) error!"});
    EXPECT_EQ(TELMYANG_BSC_FindListNodeKey(Local(), "k", &inst, nullptr, 0), 1u);
}

/* What a load and a lookup do in larger steps can be asked for one by one as well. */
TEST_F(DeadEnds, SingleStepsAnswerAsTheWholeDoes)
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

TEST_F(DeadEnds, LeafrefChainsEndAfter64Hops)
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
