/* Leafref source classes. */
#include "support/records.h"

namespace test {
namespace {

const std::string TYPE_NAME = "<type name=\"leafref\"><path value=\"../config/name\"/></type>";
const std::string TYPE_RATE = "<type name=\"leafref\"><path value=\"../config/rate\"/></type>";
const std::string CONFIG =
    Container("config", Ext("class-id", "0x30") + Ext("class-type", "leafref-target") +
                            Leaf("name", "string", Ext("field-id", "1")) +
                            Leaf("rate", "uint64", Ext("field-id", "2") + Ext("datatype-id", "77")));

class LeafrefClass : public RecordTest {};

TEST_F(LeafrefClass, TakesItsStatementsFromChildAndTargets)
{
    readsOnce = true;
    const std::string body = Container(
        "top", List("policy", "name",
                    Ext("class-type", "leafref") + Leaf("name", TYPE_NAME) + CONFIG + Leaf("rate", TYPE_RATE)));
    ASSERT_EQ(Read(body), 0u);
    const YinInst *policy = Inst("top/policy");
    ASSERT_NE(policy, nullptr);
    EXPECT_EQ(policy->uiClassId, 0x30u);
    EXPECT_EQ(policy->ucClassType, 1);
    EXPECT_EQ(OwnKeys(policy), "1");
    ASSERT_EQ(policy->ucNumOfAttr, 2);
    EXPECT_EQ(policy->pstYinAttr[1].ucAttrID, 2);
    EXPECT_EQ(policy->pstYinAttr[1].uiDataType, 77u);
    EXPECT_EQ(LeafId("top/policy/name"), 1);
    EXPECT_EQ(Inst("top/policy/config")->ucClassType, 2);
    EXPECT_EQ(OwnKeys(Inst("top/policy/config")), "1") << "of the same class as the list";
    Release();
    /* The statements were taken over for good: the list now reads like a target. */
    ASSERT_EQ(Load("m"), 0u);
    const KorvTreeNode *node = Node("m", "top/policy");
    EXPECT_EQ(node->uiClassId, 0x30u);
    EXPECT_EQ(test::Keys(node->aucSelfNodeKey), "1");
    EXPECT_EQ(LeafOf(node, "name")->ucIsKey, 1);
    EXPECT_EQ(LeafOf(node, "name")->uiFieldId, 1u);
    EXPECT_EQ(LeafOf(node, "rate")->uiDataType, 77u);
    EXPECT_EQ(LeafOf(node, "rate")->ucBaseType, QY_TYPE_UINT64);
}

TEST_F(LeafrefClass, OfTheWrongShapeFailsTheLoad)
{
    const std::string source = Ext("class-type", "leafref");
    const struct {
        std::string body;
        const char *error;
        bool checked;
    } cases[] = {
        {source + Ext("class-id", "1") + CONFIG,
         "The leafref source class s can only have mimext:class-type, need remove other mimext", true},
        {source + Leaf("name", "string"), "Leafref source class s must have a child class", true},
        {source + CONFIG + Leaf("name", TYPE_NAME) + Leaf("text", "string"),
         "Attr text under s is not with type leafref", true},
        {source + CONFIG + Leaf("name", TYPE_NAME, Ext("field-id", "1")),
         "Attr name under s with type leafref, should have no mimext", true},
        {Ext("class-type", "Leafref") + CONFIG, "class-type do not support Leafref", false},
    };
    int number = 0;
    for (const auto &c : cases) {
        const std::string name = "m" + std::to_string(number++);
        dir.Add(name, Container("s", c.body));
        log.Clear();
        EXPECT_EQ(Load(name), 1u);
        std::vector<std::string> expected = {c.error};
        if (c.checked)
            expected.emplace_back("Check leafref node return 0x1");
        expected.insert(expected.end(),
                        {"Parse node (s) <mimext:class-type> return 0x1", "Read Node(s) Extension return 0x1!",
                         "ReadOriginExtensionData failed!", "ReadOriginExtensionData failed!",
                         "-4. Read module (" + name + ") mimext info return 0x1", "Load Module (" + name + ") fail!"});
        EXPECT_EQ(log.Errors(), expected);
    }
}

TEST_F(LeafrefClass, CopyThatFails)
{
    const char *const errors[] = {
        "Leafref source class s dup ext-inst from config fail",
        "The leafref attr name dup ext-inst from name fail to replace extension instance",
    };
    for (uint32_t call = 0; call < 2; ++call) {
        const std::string name = "m" + std::to_string(call);
        dir.Add(name, Container("s", Ext("class-type", "leafref") + CONFIG + Leaf("name", TYPE_NAME)));
        log.Clear();
        Faults().replaceCalls = 0;
        Faults().failReplaceAt = call;
        EXPECT_EQ(Load(name), 1u);
        EXPECT_EQ(log.Errors()[0], errors[call]);
    }
    QY_NODE *leaf = SchemaNode(SchemaModule("m0"), "s/config/name");
    EXPECT_EQ(TELMYANG_BSC_ImplLeafrefNodeExtInstUpdateCb(leaf, nullptr, Local()), 1u);
    EXPECT_EQ(log.Errors().back(), "The leafref attr name dup ext-inst fail to find target node");
    QY_NODE *config = SchemaNode(SchemaModule("m0"), "s/config");
    EXPECT_EQ(TELMYANG_BSC_AutoFillLeafrefNodeExtInst(Local(), config, nullptr), 1u);
    EXPECT_EQ(log.Errors().back(), "The leafref source class config already checked, have child class");
    EXPECT_EQ(TELMYANG_BSC_ParseNodeClassTypeExt(Local(), config, nullptr, nullptr), 1u);
}

} // namespace
} // namespace test
