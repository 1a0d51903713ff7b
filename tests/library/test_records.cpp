/* The records that extension statements become: classes, their attributes, and leaves. */
#include "support/records.h"

namespace test {
namespace {

const char FOREIGN[] = "<foreign:note value=\"77\"/>";

class Records : public RecordTest {
  protected:
    void SetUp() override
    {
        RecordTest::SetUp();
        dir.AddFile("foreign.yin",
                    "<module name=\"foreign\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\" "
                    "xmlns:f=\"urn:foreign\"><namespace uri=\"urn:foreign\"/><prefix value=\"f\"/>"
                    "<extension name=\"note\"><argument name=\"value\"/></extension></module>");
    }

    /* Reads a module whose class "c" holds the body. */
    uint32_t ReadClass(const std::string &body)
    {
        return Read(Container("c", Ext("class-id", "0x20") + body), "foreign");
    }
};

TEST_F(Records, ClassNeedsAClassIdOtherThanZero)
{
    ASSERT_EQ(Read(Container("none", Leaf("l", "string")) + Container("zero", Ext("class-id", "0")) +
                   Container("text", Ext("class-id", "abc")) + Container("overflow", Ext("class-id", "-1")) +
                   Container("c", Ext("class-id", "0x20") + Ext("tlmt-sample-id", "0x51")) +
                   Container("s", Ext("class-id", "7") + Ext("tlmt-sample-id", "-1"))),
              0u);
    for (const char *name : {"none", "zero", "text", "overflow"})
        EXPECT_EQ(QY_NODE_GetPrivate(SchemaNode(SchemaModule("m"), name)), nullptr) << name;
    const YinInst *c = Inst("c");
    ASSERT_NE(c, nullptr);
    EXPECT_EQ(c->uiClassId, 0x20u);
    EXPECT_EQ(c->uiSampleId, 0x51u);
    EXPECT_EQ(c->pYinNode, SchemaNode(SchemaModule("m"), "c"));
    EXPECT_EQ(Inst("s")->uiSampleId, 0u);
    EXPECT_TRUE(log.Has("Get class-id = 0x20"));
    EXPECT_TRUE(log.Has("Get tlmt-sample-id (0x51) from node (c)"));
}

TEST_F(Records, OnlyTopLevelContainersStartTheReading)
{
    ASSERT_EQ(Read(List("l", "k", Ext("class-id", "1") + Leaf("k", "string", Ext("field-id", "1"))) +
                   Leaf("top", "string", Ext("field-id", "1"))),
              0u);
    EXPECT_EQ(Inst("l"), nullptr);
    EXPECT_EQ(LeafId("l/k"), -1);
    EXPECT_EQ(LeafId("top"), -1);
}

TEST_F(Records, LeafAttributeIds)
{
    const std::string typeless = "string";
    ASSERT_EQ(
        Read(Container("c", Leaf("none", typeless) + Leaf("cut", typeless, Ext("field-id", "300")) +
                                Leaf("ref", typeless, Ext("field-id", "5") + Ext("ref-id-key-fid", "9")) +
                                Leaf("ref-only", typeless, Ext("ref-id-key-fid", "9")) +
                                Leaf("ref-foreign", typeless, FOREIGN + Ext("ref-id-key-fid", "9")) +
                                Leaf("foreign", typeless, FOREIGN) + Leaf("bad", typeless, Ext("field-id", "-1"))),
             "foreign"),
        0u);
    EXPECT_EQ(LeafId("c/none"), 0);
    EXPECT_EQ(LeafId("c/cut"), 300 - 256);
    EXPECT_EQ(LeafId("c/ref"), 9);
    EXPECT_EQ(LeafId("c/ref-only"), 0);
    EXPECT_EQ(LeafId("c/ref-foreign"), 9);
    EXPECT_EQ(LeafId("c/foreign"), 0);
    EXPECT_EQ(LeafId("c/bad"), 0);
}

TEST_F(Records, DefaultDatatypeFollowsTheFinalType)
{
    const std::string dec = "<type name=\"decimal64\"><fraction-digits value=\"2\"/></type>";
    const struct {
        const char *name;
        std::string type;
        std::string statements;
        uint32_t dataType;
        uint8_t set;
    } cases[] = {
        {"boolean", "boolean", "", 283, 0},
        {"enumeration", "<type name=\"enumeration\"><enum name=\"a\"/></type>", "", 29, 0},
        {"int8", "int8", "", 1, 0},
        {"int16", "int16", "", 3, 0},
        {"int32", "int32", "", 5, 0},
        {"int64", "int64", "", 7, 0},
        {"uint8", "uint8", "", 2, 0},
        {"uint16", "uint16", "", 4, 0},
        {"uint32", "uint32", "", 6, 0},
        {"uint64", "uint64", "", 8, 0},
        {"string", "string", "", 25, 1},
        {"given", dec, Ext("datatype-id", "0x40"), 0x40, 1},
        {"twice", "uint8", Ext("datatype-id", "5") + Ext("datatype-id", "6"), 5, 1},
        {"derived", "<type name=\"t2\"/>", "", 4, 0},
        {"leafref", "<type name=\"leafref\"><path value=\"../leafref2\"/></type>", "", 4, 0},
        {"leafref2", "<type name=\"leafref\"><path value=\"../uint16\"/></type>", "", 4, 0},
    };
    std::string body;
    int id = 1;
    for (const auto &c : cases)
        body += Leaf(c.name, c.type, Ext("field-id", std::to_string(id++)) + c.statements);
    ASSERT_EQ(Read("<typedef name=\"t1\"><type name=\"uint16\"/></typedef><typedef name=\"t2\"><type name=\"t1\"/>"
                   "</typedef>" +
                   Container("c", Ext("class-id", "1") + body)),
              0u);
    const YinInst *inst = Inst("c");
    ASSERT_NE(inst, nullptr);
    ASSERT_EQ(inst->ucNumOfAttr, std::size(cases));
    for (size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ(inst->pstYinAttr[i].uiDataType, cases[i].dataType) << cases[i].name;
        EXPECT_EQ(inst->pstYinAttr[i].ucDataTypeSet, cases[i].set) << cases[i].name;
        EXPECT_EQ(inst->pstYinAttr[i].ucAttrID, i + 1) << cases[i].name;
        EXPECT_STREQ(QY_NODE_GetNodeName(inst->pstYinAttr[i].pLeafNode), cases[i].name);
    }
}

TEST_F(Records, TypesWithoutDefaultNeedADatatypeId)
{
    const char *const types[] = {
        "<type name=\"binary\"/>",
        "<type name=\"bits\"><bit name=\"a\"/></type>",
        "<type name=\"decimal64\"><fraction-digits value=\"1\"/></type>",
        "<type name=\"empty\"/>",
        "<type name=\"instance-identifier\"/>",
        "<type name=\"union\"><type name=\"int8\"/></type>",
    };
    const uint32_t numbers[] = {1, 2, 4, 5, 8, 19};
    for (size_t i = 0; i < std::size(types); ++i) {
        const std::string name = "m" + std::to_string(i);
        dir.Add(name, Container("c", Ext("class-id", "1") + Leaf("l", types[i], Ext("field-id", "4"))));
        log.Clear();
        EXPECT_EQ(Load(name), 1u);
        const std::string number = std::to_string(numbers[i]);
        EXPECT_EQ(log.Errors(),
                  (std::vector<std::string>{
                      "Get Default Type By YangType " + number + ", return 0x1!", "Fill Leaf Into YinAttr return 0x1!",
                      "Parse Node(c) Attr LeafInfo return 0x1!", "Update YinInst from node (c) return 0x1",
                      "Read Node(c) Extension return 0x1!", "ReadOriginExtensionData failed!",
                      "ReadOriginExtensionData failed!", "-4. Read module (" + name + ") mimext info return 0x1",
                      "Load Module (" + name + ") fail!"}));
    }
    uint16_t dataType = 9;
    uint32_t size = 9;
    for (uint32_t type : {0u, 1u, 7u, 13u, 20u, 0xFFFFFFFFu})
        EXPECT_EQ(TELMYANG_UTL_GetDefaultFldTypeByYangType(type, &dataType, &size), 1u);
    EXPECT_EQ(dataType, 9);
    EXPECT_EQ(TELMYANG_UTL_GetDefaultFldTypeByYangType(14, &dataType, &size), 0u);
    EXPECT_EQ(dataType, 25);
    EXPECT_EQ(size, 0xFFFFFFFFu);
}

TEST_F(Records, AttributesAreTheDirectLeavesInSchemaOrder)
{
    ASSERT_EQ(ReadClass(Leaf("b", "int8", Ext("field-id", "7") + Ext("field-id", "9")) + "<choice name=\"ch\">" +
                        Leaf("in-choice", "int8", Ext("field-id", "1")) + "</choice>" +
                        Container("sub", Leaf("nested", "int8", Ext("field-id", "2"))) +
                        "<leaf-list name=\"ll\"><type name=\"int8\"/></leaf-list>" + Leaf("a", "binary")),
              0u);
    const YinInst *inst = Inst("c");
    ASSERT_EQ(inst->ucNumOfAttr, 2);
    EXPECT_STREQ(QY_NODE_GetNodeName(inst->pstYinAttr[0].pLeafNode), "b");
    EXPECT_EQ(inst->pstYinAttr[0].ucAttrID, 7) << "the first field-id stays";
    EXPECT_STREQ(QY_NODE_GetNodeName(inst->pstYinAttr[1].pLeafNode), "a");
    EXPECT_EQ(inst->pstYinAttr[1].ucAttrID, 0);
    EXPECT_EQ(inst->pstYinAttr[1].uiDataType, 0u);
    EXPECT_TRUE(log.Has("ucAttrID info, name(a)!"));
    EXPECT_EQ(inst->ucAutoKeyRef, 0xFF);
}

TEST_F(Records, ReferenceKeyDecidesTheAttributeId)
{
    ASSERT_EQ(ReadClass(Leaf("ref-first", "int8", Ext("ref-id-key-fid", "12") + Ext("field-id", "7")) +
                        Leaf("ref-last", "int8", Ext("field-id", "7") + Ext("ref-id-key-fid", "13")) +
                        Leaf("ref-zero", "int8", Ext("ref-id-key-fid", "256") + Ext("field-id", "7"))),
              0u);
    const YinInst *inst = Inst("c");
    EXPECT_EQ(inst->pstYinAttr[0].ucAttrID, 12);
    EXPECT_EQ(inst->pstYinAttr[1].ucAttrID, 13);
    EXPECT_EQ(inst->pstYinAttr[2].ucAttrID, 7);
    EXPECT_TRUE(log.Has("ref-id-key-fid value (13) update (7)."));
}

TEST_F(Records, LeafListClassDescribesItselfOnly)
{
    const std::string type = "<type name=\"uint16\"/>";
    ASSERT_EQ(Read(Container("c", "<leaf-list name=\"a\">" + Ext("class-id", "5") + Ext("field-id", "3") + type +
                                      "</leaf-list><leaf-list name=\"b\">" + Ext("field-id", "4") + type +
                                      "</leaf-list>" + Leaf("l", "int8", Ext("field-id", "6")))),
              0u);
    const YinInst *inst = Inst("c/a");
    ASSERT_NE(inst, nullptr);
    ASSERT_EQ(inst->ucNumOfAttr, 1);
    EXPECT_EQ(inst->pstYinAttr[0].pLeafNode, inst->pYinNode);
    EXPECT_EQ(inst->pstYinAttr[0].ucAttrID, 3);
    EXPECT_EQ(inst->pstYinAttr[0].uiDataType, 4u);
    EXPECT_EQ(Inst("c/b"), nullptr);
}

TEST_F(Records, At255AttributesAClassIsFull)
{
    const auto leaves = [](int num) {
        std::string body = Ext("class-id", "1");
        for (int i = 1; i <= num; ++i)
            body += Leaf("l" + std::to_string(i), "int8", Ext("field-id", std::to_string(i)));
        return body;
    };
    dir.Add("full", Container("c", leaves(255)));
    EXPECT_EQ(Load("full"), 0u);
    dir.Add("over", Container("c", leaves(256)));
    log.Clear();
    EXPECT_EQ(Load("over"), 1u);
    EXPECT_EQ(log.Errors().front(), "class node(c) has 256 attribute leaves, more than 255!");
}

TEST_F(Records, UnreadableArgumentFailsTheClassWithTheWholeChain)
{
    ASSERT_EQ(ReadClass(Leaf("good", "int8", Ext("field-id", "1")) + Leaf("bad", "int8", Ext("datatype-id", "-1"))),
              1u);
    EXPECT_EQ(log.Errors(), (std::vector<std::string>{
                                "uiTmpVal error,uiTmpVal(18446744073709551615)!", "(-1) not a good number string",
                                "Fill Leaf Info By ExtType error, leaf name(bad) ext(datatype-id) value(-1)!",
                                "Fill Leaf Into YinAttr return 0x1!", "Parse Node(c) Attr LeafInfo return 0x1!",
                                "Update YinInst from node (c) return 0x1", "Read Node(c) Extension return 0x1!",
                                "ReadOriginExtensionData failed!", "ReadOriginExtensionData failed!"}));
    EXPECT_EQ(Inst("c"), nullptr);
}

TEST_F(Records, PrivateDataThatIsNoRecordIsNotTakenForOne)
{
    ASSERT_EQ(ReadClass(Leaf("l", "int8", Ext("field-id", "1"))), 0u);
    QY_NODE *c = SchemaNode(SchemaModule("m"), "c");
    EXPECT_EQ(TELMYANG_MDL_GetYinInstFromYinNode(SchemaChild(c, "l")), nullptr);
    void *record = QY_NODE_GetPrivate(c);
    QY_NODE_SetPrivate(c, reinterpret_cast<void *>(uintptr_t{0x80}));
    EXPECT_EQ(TELMYANG_MDL_GetYinInstFromYinNode(c), nullptr);
    QY_NODE_SetPrivate(c, record);
    TELMYANG_FreeYinInstInfo(Inst("c"));
    TELMYANG_FreeYinInstInfo(Inst("c"));
    TELMYANG_FreeYinInstInfo(nullptr);
}

TEST_F(Records, NodeIsReadOnceAndReleasedWhenTheSchemaGoes)
{
    ASSERT_EQ(ReadClass(Leaf("l", "int8", Ext("field-id", "1"))), 0u);
    YinInst *const first = Inst("c");
    EXPECT_EQ(TELEMYANG_ReadYinModDataNodeExtension(SchemaNode(SchemaModule("m"), "c"), nullptr, Local()), 0u);
    EXPECT_EQ(Inst("c"), first);
    EXPECT_EQ(QY_CTX_UnloadModule(Local()->pstYangCtx->pSchemaCtx, "m"), 0u);
    log.Clear();
    Release();
    EXPECT_EQ(log.Errors(), std::vector<std::string>{"Get module by name m failed!"});
}

TEST_F(Records, AttributeIdsOfAClassCanBeChecked)
{
    YinAttr attrs[3] = {};
    YinInst inst = {};
    inst.uiClassId = 32;
    inst.pstYinAttr = attrs;
    inst.ucNumOfAttr = 3;
    const auto check = [&](uint8_t a, uint8_t b, uint8_t c) {
        attrs[0].ucAttrID = a;
        attrs[1].ucAttrID = b;
        attrs[2].ucAttrID = c;
        log.Clear();
        return TELMYANG_BSC_CheckAllYinInstAttrValid(Local(), &inst);
    };
    EXPECT_EQ(check(1, 2, 255), 0u);
    EXPECT_EQ(check(1, 2, 1), 1u);
    EXPECT_EQ(log.Texts(2), std::vector<std::string>{"Duplicated attr id 1 defined for class 32"});
    EXPECT_EQ(check(1, 0, 3), 1u);
    EXPECT_EQ(log.Texts(2), std::vector<std::string>{"Invalid attr id 0 defined for class 32"});
}

TEST_F(Records, CountingLeaves)
{
    const std::string off = "<if-feature name=\"off\"/>";
    dir.Add("m", "<feature name=\"off\"/>" + Container("c", Leaf("x", "int8") + Leaf("y", "int8", off) +
                                                                "<choice name=\"ch\"><case name=\"one\">" +
                                                                Leaf("p", "int8") + "</case>" + Leaf("q", "int8") +
                                                                "</choice><leaf-list name=\"z\"><type name=\"int8\"/>"
                                                                "</leaf-list>"));
    ASSERT_EQ(QY_CTX_LoadModule(Local()->pstYangCtx->pSchemaCtx, "m", nullptr), 0u);
    QY_NODE *first = TELMYANG_BSC_FindFirstChild(SchemaNode(SchemaModule("m"), "c"));
    EXPECT_EQ(TELMYANG_BSC_CountLeafNodeUnderInst(Local(), first, QY_NODE_TYPE_LEAF), 3);
    EXPECT_EQ(TELMYANG_BSC_CountLeafNodeUnderInst(Local(), first, QY_NODE_TYPE_LEAF_LIST), 0) << "first node only";
}

} // namespace
} // namespace test
