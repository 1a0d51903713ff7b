/* Extension statements: their vocabulary, their arguments, and finding them on nodes. */
#include "support/host.h"
#include "telem_yang_lib/telem_yang_lib.h"

namespace test {
namespace {

using Numbers = std::vector<uint32_t>;

class ExtAccess : public HostTest {
  protected:
    /* Loads a module whose container "c" holds the body into the schema context and returns that container. */
    QY_NODE *ContainerWith(const std::string &body)
    {
        dir.AddFile("foreign.yin",
                    "<module name=\"foreign\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\" "
                    "xmlns:f=\"urn:foreign\"><namespace uri=\"urn:foreign\"/><prefix value=\"f\"/>"
                    "<extension name=\"field-id\"><argument name=\"value\"/></extension></module>");
        dir.Add("m", Container("c", body), "foreign");
        EXPECT_EQ(QY_CTX_LoadModule(Local()->pstYangCtx->pSchemaCtx, "m", nullptr), 0u);
        return SchemaNode(SchemaModule("m"), "c");
    }

    uint32_t Value(QY_NODE *node, MimExtType id, uint32_t *value)
    {
        return TELMYANG_BSC_GetNodeSpecMimExtValue(Local(), node, id, value);
    }
};

const char FOREIGN[] = "<foreign:field-id value=\"77\"/>";

TEST(ExtKeywords, AreThoseOfTheExtensionModuleAlone)
{
    const char *module = "quelvo-mim-extensions";
    EXPECT_EQ(TELMYANG_BSC_GetNodeMimExtType(module, "class-id"), 0u);
    EXPECT_EQ(TELMYANG_BSC_GetNodeMimExtType(module, "ref-id-key"), 14u);
    EXPECT_EQ(TELMYANG_BSC_GetNodeMimExtType(module, "tlmt-sample-id"), 15u);
    EXPECT_EQ(TELMYANG_BSC_GetNodeMimExtType(module, ""), 16u);
    EXPECT_EQ(TELMYANG_BSC_GetNodeMimExtType(module, "Class-id"), 16u);
    EXPECT_EQ(TELMYANG_BSC_GetNodeMimExtType("quelvo-mim-extension", "class-id"), 16u);
    EXPECT_EQ(TELMYANG_BSC_GetNodeMimExtType(nullptr, "class-id"), 16u);
    for (uint32_t id = 0; id < 16; ++id)
        EXPECT_EQ(TELMYANG_BSC_GetNodeMimExtType(module, TELMYANG_BSC_GetNodeMimExtName(nullptr, id)), id);
    EXPECT_EQ(TELMYANG_BSC_GetNodeMimExtName(nullptr, 16), nullptr);
    EXPECT_EQ(TELMYANG_MimExt_NotNeedProc(7), 0u);
    EXPECT_EQ(TELMYANG_MimExt_NotNeedProc(8), 1u);
}

TEST_F(ExtAccess, NumbersAreReadInCNotation)
{
    const struct {
        const char *text;
        uint32_t ret;
        uint32_t value;
    } cases[] = {
        {"12", 0, 12},
        {"0x1F", 0, 31},
        {"010", 0, 8},
        {"abc", 0, 0},
        {"", 0, 0},
        {"4294967297", 0, 1},
        {" 7", 0, 7},
        {"12abc", 0, 12},
        {"-1", 1, 99},
        {"18446744073709551616", 1, 99},
        {"18446744073709551615", 1, 99},
    };
    for (const auto &c : cases) {
        uint32_t value = 99;
        EXPECT_EQ(TELMYANG_BSC_ParseMimExtIntoInt(Local(), c.text, &value), c.ret) << c.text;
        EXPECT_EQ(value, c.value) << c.text;
    }
    EXPECT_EQ(log.Errors(), std::vector<std::string>(3, "uiTmpVal error,uiTmpVal(18446744073709551615)!"));
    uint32_t untouched = 99;
    EXPECT_EQ(TELMYANG_BSC_ParseMimExtIntoInt(Local(), nullptr, &untouched), 1u);
    EXPECT_EQ(untouched, 99u);
}

TEST_F(ExtAccess, NumberListsAreBlankSeparated)
{
    const struct {
        const char *text;
        uint32_t capacity;
        Numbers numbers;
        const char *error; /* null: success */
    } cases[] = {
        {"1 2 3", 3, {1, 2, 3}, nullptr},
        {" 7  8 ", 5, {7, 8}, nullptr},
        {"", 1, {}, nullptr},
        {"  ", 1, {}, nullptr},
        {nullptr, 1, {}, nullptr},
        {"12abc 5", 2, {12, 5}, nullptr},
        {"x 0x10", 2, {0, 16}, nullptr},
        {"1 2 3", 2, {}, "uiTotalNum(2)i(2) error!"},
        {"4 -1 x", 3, {}, "pcCurPtr( x)i(1) error!"},
        {"1", 0, {}, "uiTotalNum(0) error!"},
    };
    for (const auto &c : cases) {
        uint32_t array[8] = {};
        uint32_t count = 99;
        log.Clear();
        const uint32_t ret = TELMYANG_BSC_ParseMimExtIntoArray(Local(), c.text, array, c.capacity, &count);
        EXPECT_EQ(ret, c.error != nullptr ? 1u : 0u);
        EXPECT_EQ(log.Errors(), c.error != nullptr ? std::vector<std::string>{c.error} : std::vector<std::string>{});
        EXPECT_EQ(count, c.error != nullptr ? 99u : c.numbers.size());
        if (c.error == nullptr) {
            EXPECT_EQ(Numbers(array, array + count), c.numbers);
        }
    }
    log.Clear();
    EXPECT_EQ(TELMYANG_BSC_ParseMimExtIntoArray(Local(), "1", nullptr, 1, nullptr), 1u);
    EXPECT_EQ(log.Errors(), std::vector<std::string>{"puiValArray or puiFillNum null error!"});
    EXPECT_EQ(TELMYANG_UTL_CountWordInStr(" 7  8 "), 5u);
    EXPECT_EQ(TELMYANG_UTL_CountWordInStr(""), 1u);
    EXPECT_EQ(TELMYANG_UTL_CountWordInStr(nullptr), 0u);
}

TEST_F(ExtAccess, FirstAndAllStatementsOfAKeyword)
{
    QY_NODE *leaf = SchemaChild(
        ContainerWith(Leaf("l", "string", Ext("field-id", "7") + Ext("datatype-id", "3") + Ext("field-id", "9"))), "l");
    const char *text = nullptr;
    EXPECT_EQ(TELMYANG_BSC_GetNodeSpecMimExtString(Local(), leaf, MIM_EXT_FIELD_ID, &text), 0u);
    EXPECT_STREQ(text, "7");
    EXPECT_EQ(TELMYANG_BSC_GetNodeSpecMimExtString(Local(), leaf, MIM_EXT_CLASS_ID, &text), 1u);
    EXPECT_EQ(text, nullptr);
    MimExtArray all = {};
    uint32_t num = 0;
    EXPECT_EQ(TELMYANG_BSC_GetNodeSpecMimExtArray(Local(), leaf, MIM_EXT_FIELD_ID, &all, &num), 0u);
    ASSERT_EQ(num, 2u);
    EXPECT_STREQ(all.apcValue[0], "7");
    EXPECT_STREQ(all.apcValue[1], "9");
    EXPECT_EQ(TELMYANG_BSC_GetNodeSpecMimExtArray(Local(), leaf, MIM_EXT_NONE, &all, &num), 1u);
    log.Clear();
    uint32_t value = 99;
    EXPECT_EQ(Value(leaf, MIM_EXT_NONE, &value), 1u);
    EXPECT_EQ(log.Errors(), std::vector<std::string>{"Get ExtName error in node!"});
}

TEST_F(ExtAccess, ArrayLookupStopsAt255)
{
    std::string many;
    for (int i = 0; i < 300; ++i)
        many += Ext("ancestor-key-fid", std::to_string(i));
    MimExtArray all = {};
    uint32_t num = 0;
    EXPECT_EQ(TELMYANG_BSC_GetNodeSpecMimExtArray(Local(), ContainerWith(many), MIM_EXT_ANCESTOR_KEY_FID, &all, &num),
              0u);
    EXPECT_EQ(num, 255u);
    EXPECT_STREQ(all.apcValue[254], "254");
}

TEST_F(ExtAccess, AnotherModulesStatementOnALeafReadsAsNoValue)
{
    QY_NODE *c = ContainerWith(FOREIGN + Leaf("foreign-only", "string", FOREIGN) + Leaf("bare", "string") +
                               Leaf("both", "string", FOREIGN + Ext("field-id", "5")));
    uint32_t value = 99;
    EXPECT_EQ(Value(SchemaChild(c, "foreign-only"), MIM_EXT_FIELD_ID, &value), 0u);
    EXPECT_EQ(value, KORV_NO_ID);
    value = 99;
    EXPECT_EQ(Value(c, MIM_EXT_FIELD_ID, &value), 1u) << "only leaves";
    EXPECT_EQ(Value(SchemaChild(c, "bare"), MIM_EXT_FIELD_ID, &value), 1u);
    EXPECT_EQ(value, 99u);
    EXPECT_EQ(Value(SchemaChild(c, "both"), MIM_EXT_FIELD_ID, &value), 0u);
    EXPECT_EQ(value, 5u);
    EXPECT_EQ(TELMYANG_BSC_IsYinNodeMimExtNumOnlyOne(c), 1u);
    EXPECT_EQ(TELMYANG_BSC_IsYinNodeMimExtNumOnlyOne(SchemaChild(c, "both")), 0u);
    EXPECT_EQ(TELMYANG_BSC_IsYinNodeMimExtNumOnlyZero(SchemaChild(c, "bare")), 1u);
    EXPECT_EQ(TELMYANG_BSC_IsYinNodeMimExtNumOnlyZero(c), 0u);
}

TEST_F(ExtAccess, StatementsWithoutArgumentAreNoNumbers)
{
    /* Another definition of the extension module: its statements take no argument. */
    dir.AddFile("quelvo-mim-extensions.yin",
                "<module name=\"quelvo-mim-extensions\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\" "
                "xmlns:x=\"urn:quelvo:yang:mim-extensions\"><namespace uri=\"urn:quelvo:yang:mim-extensions\"/><prefix "
                "value=\"x\"/><extension name=\"class-id\"/><extension name=\"field-id\"/><extension "
                "name=\"ancestor-key-fid\"/><extension name=\"aaa-task-id\"/></module>");
    dir.Add("none", Container("c", "<mimext:class-id/>" + Leaf("l", "int8", "<mimext:field-id/>")));
    EXPECT_EQ(Load("none"), 0u);
    EXPECT_EQ(Node("none", "c")->uiClassId, 0u);
    dir.Add("task", "<mimext:aaa-task-id/>");
    EXPECT_EQ(Load("task"), 1u);
}

TEST_F(ExtAccess, NestedStatements)
{
    QY_NODE *c = ContainerWith(
        Ext("ancestor-key-fid", "2", Ext("class-id", "8") + Ext("field-id", "20") + Ext("field-id", "21")) +
        Ext("ancestor-key-fid", "3"));
    MimExtArray all = {};
    uint32_t num = 0;
    ASSERT_EQ(TELMYANG_BSC_GetNodeSpecMimExtArray(Local(), c, MIM_EXT_ANCESTOR_KEY_FID, &all, &num), 0u);
    ASSERT_EQ(num, 2u);
    uint32_t value = 99;
    EXPECT_EQ(TELMYANG_BSC_GetExtSpecSubMimExtValue(Local(), all.apExtInst[0], MIM_EXT_FIELD_ID, &value), 0u);
    EXPECT_EQ(value, 20u);
    EXPECT_EQ(TELMYANG_BSC_GetExtSpecSubMimExtValue(Local(), all.apExtInst[1], MIM_EXT_FIELD_ID, &value), 1u);
    EXPECT_EQ(TELMYANG_BSC_GetExtSpecSubMimExtValue(Local(), all.apExtInst[0], MIM_EXT_NONE, &value), 1u);
    EXPECT_EQ(value, 20u);
}

TEST_F(ExtAccess, ModuleTaskIdIsTheFirstThatIsNotZero)
{
    dir.Add("m", Ext("aaa-task-id", "0") + Ext("aaa-task-id", "5") + Ext("aaa-task-id", "6") + Container("c", ""));
    ASSERT_EQ(Load("m"), 0u);
    EXPECT_EQ(File("m")->pModuleExtInfo->uiAaaTaskId, 5u);
    EXPECT_TRUE(log.Has("Get task-id (5) in module quelvo-mim-extensions."));
    EXPECT_TRUE(log.Has("Get duplicated task-id (5) in module quelvo-mim-extensions."));
    dir.Add("bad", Ext("aaa-task-id", "-1") + Container("c", ""));
    log.Clear();
    EXPECT_EQ(Load("bad"), 1u);
    EXPECT_EQ(log.Errors(),
              (std::vector<std::string>{"uiTmpVal error,uiTmpVal(18446744073709551615)!",
                                        "Parse module yin extension return value(0x1)",
                                        "QXYang Fail get module bad module-level!",
                                        "-4. Read module (bad) mimext info return 0x1", "Load Module (bad) fail!"}));
}

} // namespace
} // namespace test
