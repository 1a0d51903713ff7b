/* Own keys, automatic keys, and the keys that classes have from the classes above them. */
#include "support/records.h"

namespace test {
namespace {

std::string Key(const std::string &name, int id, const std::string &more = "")
{
    return Leaf(name, "int8", Ext("field-id", std::to_string(id)) + more);
}

/* "ancestor-key-fid" in the mapping form. */
std::string Map(int parentId, int id)
{
    return Ext("ancestor-key-fid", std::to_string(parentId), Ext("field-id", std::to_string(id)));
}

class Keys : public RecordTest {
  protected:
    /* A list "l" of class 1 with the keys a (1) and b (2), holding the body. */
    uint32_t ReadBelowList(const std::string &body, const std::string &keyStatements = "")
    {
        return Read(
            Container("c", List("l", "a b", Ext("class-id", "1") + Key("a", 1, keyStatements) + Key("b", 2) + body)));
    }
};

TEST_F(Keys, OwnKeysAreAttributeIds)
{
    ASSERT_EQ(Read(Container("c", Ext("class-id", "9") + Key("a", 1) +
                                      List("l", "b a", Ext("class-id", "1") + Key("a", 3) + Key("x", 8) + Key("b", 2)) +
                                      List("no-id", "k", Ext("class-id", "2") + Leaf("k", "int8") + Key("x", 1)))),
              0u);
    EXPECT_EQ(Inst("c")->ucKeyNum, 0);
    EXPECT_TRUE(Inst("c")->pucSelfKeyAttributes == nullptr);
    EXPECT_EQ(OwnKeys(Inst("c/l")), "3 2") << "in the order in which the key leaves stand";
    EXPECT_TRUE(log.Has("key: name(name=a) (id=3)"));
    EXPECT_EQ(OwnKeys(Inst("c/no-id")), "0");
}

TEST_F(Keys, KeyThatCannotBeMapped)
{
    const std::string longest(64, 'k');
    const std::string tooLong(65, 'k');
    const auto list = [](const std::string &key) { return List("l", key, Ext("class-id", "1") + Key(key, 1)); };
    dir.Add("ok", Container("c", list(longest)));
    EXPECT_EQ(Load("ok"), 0u);
    ASSERT_EQ(Read(Container("c", list(tooLong))), 1u);
    EXPECT_EQ(log.Errors()[0], "error,not find key field ID!nodename(l)node key size(1)");
    EXPECT_EQ(log.Errors()[1], "Parse Node(l) Key LeafInfo return 0x1!");
}

TEST_F(Keys, SixteenKeysAreMapped)
{
    std::string keys;
    std::string leaves = Ext("class-id", "1");
    for (int i = 1; i <= 16; ++i) {
        keys += (i == 1 ? "k" : " k") + std::to_string(i);
        leaves += Key("k" + std::to_string(i), i);
    }
    dir.Add("sixteen", Container("c", List("l", keys, leaves)));
    ASSERT_EQ(Load("sixteen"), 0u);
    EXPECT_EQ(test::Keys(Node("sixteen", "c/l")->aucSelfNodeKey), "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16");
    ASSERT_EQ(Read(Container("c", List("l", keys + " k17", leaves + Key("k17", 17)))), 0u);
    EXPECT_EQ(OwnKeys(Inst("c/l")), "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 0");
}

TEST_F(Keys, MoreThan255AncestorKeysAreRefused)
{
    std::string ids = "0";
    for (int i = 1; i < 255; ++i)
        ids += " " + std::to_string(i);
    ASSERT_EQ(Read(Container("c", Container("d", Ext("class-id", "1") + Ext("ancestor-key-fid", ids)))), 0u);
    EXPECT_EQ(AncestorKeys(Inst("c/d")), ids);
    Release();
    dir.Add("more", Container("c", Container("d", Ext("class-id", "1") + Ext("ancestor-key-fid", ids + " 255"))));
    log.Clear();
    EXPECT_EQ(Load("more"), 1u);
    EXPECT_EQ(log.Errors()[0], "class node(d) has 256 ancestor keys, more than 255!");
    EXPECT_EQ(log.Errors()[1], "Parse Node (d) Ancestor-Key return 0x1!");
}

TEST_F(Keys, AutomaticKeysAreSearchedOnTheClassNode)
{
    ASSERT_EQ(Read(Container("none", Ext("class-id", "1") + Key("a", 1, Ext("ref-id-key-fid", "2"))) +
                   Container("refs", Ext("class-id", "2") + Ext("ref-id-key-fid", "7") + Key("a", 1) + Key("b", 2)) +
                   Container("name", Ext("class-id", "3") + Ext("name2id-key-fid", "7") + Key("a", 1)) +
                   Container("empty", Ext("class-id", "4"))),
              0u);
    EXPECT_EQ(Inst("none")->ucAutoKeyNum, 0);
    EXPECT_EQ(Inst("none")->ucAutoKeyRef, 0xFF);
    EXPECT_EQ(Inst("refs")->ucAutoKeyNum, 2);
    EXPECT_EQ(Inst("refs")->ucAutoKeyRef, 0xFF);
    EXPECT_EQ(Inst("name")->ucAutoKeyNum, 1);
    EXPECT_EQ(Inst("name")->ucAutoKeyRef, 0);
    EXPECT_EQ(Inst("empty")->ucAutoKeyRef, 0);
    Release();
    dir.Add("two", Container("c", Ext("class-id", "3") + Ext("name2id-key-fid", "7") + Key("a", 1) + Key("b", 2)));
    log.Clear();
    EXPECT_EQ(Load("two"), 1u);
    EXPECT_EQ(log.Errors()[0], "Parse Node (c) Auto-Key return 0x1!");
    EXPECT_EQ(log.Errors()[1], "Get complete yin inst node(c) return 0x1!");
}

TEST(KeyStatement, IsSplitAtSingleBlanks)
{
    KeyNameBuffer names = {};
    TELMYANG_BSC_ParseListNodeKeyNames(nullptr, &names, "a  b");
    EXPECT_STREQ(names.aacName[0], "a");
    EXPECT_STREQ(names.aacName[1], "");
    EXPECT_STREQ(names.aacName[2], "b");
    names = {};
    const std::string text = std::string(70, 'x') + " y" + std::string(40, ' ') + "z";
    TELMYANG_BSC_ParseListNodeKeyNames(nullptr, &names, text.c_str());
    EXPECT_EQ(names.aacName[0], std::string(64, 'x'));
    EXPECT_STREQ(names.aacName[1], "y");
    EXPECT_STREQ(names.aacName[15], "");
}

TEST_F(Keys, ListFormNamesAttributeIdsOfThisClass)
{
    ASSERT_EQ(
        ReadBelowList(Container("plain", Container("d", Ext("class-id", "2") + Ext("ancestor-key-fid", "3 0x10"))) +
                      Container("none", Ext("class-id", "3"))),
        0u);
    const YinInst *d = Inst("c/l/plain/d");
    EXPECT_EQ(AncestorKeys(d), "3 16");
    EXPECT_EQ(d->pstKeyRefArray[0].pstParentInst, Inst("c/l")) << "nodes without class are passed through";
    EXPECT_EQ(Inst("c/l/none")->ucAncKeyNum, 0);
    EXPECT_TRUE(Inst("c/l/none")->pstKeyRefArray == nullptr);
    Release();
    dir.Add("bad", Container("c", Ext("class-id", "2") + Ext("ancestor-key-fid", "1 -1")));
    log.Clear();
    EXPECT_EQ(Load("bad"), 1u);
    EXPECT_EQ(log.Errors()[0], "pcCurPtr()i(1) error!");
    EXPECT_EQ(log.Errors()[1], "Parse MimExt Into Array return 0x1, uiTmpNum(0) name(c)!");
}

TEST_F(Keys, MappingFormThreeLevelsDeep)
{
    ASSERT_EQ(ReadBelowList(List(
                  "l2", "d",
                  Ext("class-id", "2") + Map(1, 20) + Map(2, 21) + Key("d", 5) +
                      List("l3", "e", Ext("class-id", "3") + Map(5, 32) + Map(21, 31) + Map(20, 30) + Key("e", 1)))),
              0u);
    EXPECT_EQ(AncestorKeys(Inst("c/l/l2")), "20 21");
    EXPECT_EQ(Inst("c/l/l2")->pstKeyRefArray[0].pstParentInst, Inst("c/l"));
    EXPECT_EQ(Inst("c/l/l2")->pstKeyRefArray[1].pucKeyAttributes, nullptr);
    EXPECT_EQ(AncestorKeys(Inst("c/l/l2/l3")), "30 31 32") << "the parent's ancestor keys, then its own";
    EXPECT_TRUE(log.Has("Node(l3) inherit father keyref : 20 ==> 30."));
    EXPECT_TRUE(log.Has("append ancestor id, node:l3, yinInst:0x3, parentInst:0x2, parentId:20"));
}

TEST_F(Keys, MappingMayUseTheIndexMapOfAKey)
{
    const std::string nested = Container("by-index", Ext("class-id", "2") + Map(7, 20) + Map(2, 21)) +
                               Container("by-id", Ext("class-id", "3") + Map(1, 20) + Map(2, 21));
    ASSERT_EQ(ReadBelowList(nested, Ext("name2id-key-fid", "7")), 0u);
    EXPECT_EQ(AncestorKeys(Inst("c/l/by-index")), "20 21");
    EXPECT_EQ(AncestorKeys(Inst("c/l/by-id")), "20 21");
    EXPECT_TRUE(log.Has("Node(by-index) inherit father key : 1(7) ==> 20."));
    EXPECT_TRUE(log.Has("Failed to find ancestor-key for by-id with attr-id 7"));
}

TEST_F(Keys, MappingStopsAtAKeyThatCannotBeMapped)
{
    ASSERT_EQ(
        ReadBelowList(Container("gap", Ext("class-id", "2") + Map(1, 20) + Map(9, 21)) +
                      Container("taken", Ext("class-id", "3") + Map(1, 4) + Map(2, 21) + Key("x", 4)) +
                      Container("no-field", Ext("class-id", "4") + Ext("ancestor-key-fid", "1", Ext("class-id", "8")) +
                                                Map(2, 21)) +
                      Container("bare", Ext("class-id", "6") + Map(1, 20) + Ext("ancestor-key-fid", "2") + Map(2, 21)) +
                      Container("unreadable", Ext("class-id", "5") +
                                                  Ext("ancestor-key-fid", "-1", Ext("field-id", "8")) + Map(1, 21))),
        0u);
    EXPECT_EQ(AncestorKeys(Inst("c/l/gap")), "20 0");
    EXPECT_EQ(AncestorKeys(Inst("c/l/taken")), "0 0");
    EXPECT_EQ(AncestorKeys(Inst("c/l/no-field")), "0 0");
    EXPECT_EQ(AncestorKeys(Inst("c/l/unreadable")), "0 0");
    EXPECT_EQ(AncestorKeys(Inst("c/l/bare")), "20 21 0") << "a statement without field-id counts, and maps nothing";
    for (const char *text : {"Node(gap) inherit father key error : 2(4294967295) ==> 4294967295.",
                             "Ancestor key for taken with child-attr-id 4 already exist",
                             "Ancestor-key for no-field with attr-id 1 do not have valid child field-id info"})
        EXPECT_TRUE(log.Has(text)) << text;
}

TEST_F(Keys, MappingOfAncestorKeysGoesOnWithTheParentsOwn)
{
    ASSERT_EQ(ReadBelowList(List(
                  "l2", "d",
                  Ext("class-id", "2") + Map(1, 20) + Map(2, 21) + Key("d", 5) +
                      List("l3", "e", Ext("class-id", "3") + Map(20, 30) + Map(5, 32) + Map(99, 33) + Key("e", 1)))),
              0u);
    EXPECT_EQ(AncestorKeys(Inst("c/l/l2/l3")), "30 32 0");
    EXPECT_TRUE(log.Has("Append one ancestor in parent key ref seq 1, current seq 1 failed."));
}

TEST_F(Keys, TooFewMappingsFailTheLoad)
{
    ASSERT_EQ(ReadBelowList(Container("one", Ext("class-id", "2") + Map(1, 20))), 1u);
    EXPECT_EQ(log.Errors()[0], "Iter key, Append one ancestor for one failed, pos is 1, except 1.");
    EXPECT_EQ(log.Errors()[1], "Parse Node (one) Ancestor-Key return 0x1!");
    Release();
    dir.Add("deep", Container("c", List("l", "a b",
                                        Ext("class-id", "1") + Key("a", 1) + Key("b", 2) +
                                            Container("d", Ext("class-id", "2") + Map(1, 20) + Map(2, 21) +
                                                               Container("e", Ext("class-id", "3") + Map(20, 9))))));
    log.Clear();
    EXPECT_EQ(Load("deep"), 1u);
    EXPECT_EQ(log.Errors()[0], "Iterate key-ref, Append one ancestor for e failed, pos is 1, except 1.");
}

TEST_F(Keys, IndexMapSearchStopsAtALeafWithoutId)
{
    ASSERT_EQ(Read(Container(
                  "c", List("l", "a",
                            Ext("class-id", "1") + Leaf("first", "int8") + Key("a", 1, Ext("name2id-key-fid", "7")) +
                                Container("d", Ext("class-id", "2") + Map(7, 20))))),
              0u);
    EXPECT_TRUE(log.Has("Get mim-ext:field-id value of Node(first) return 1."));
    EXPECT_EQ(AncestorKeys(Inst("c/l/d")), "0");
}

TEST_F(Keys, IndexMapSearchMeetsLeafListsWhereTheyStand)
{
    const auto leafList = [](const std::string &name, const std::string &statements) {
        return "<leaf-list name=\"" + name + "\"><type name=\"int8\"/>" + statements + "</leaf-list>";
    };
    const std::string key = Key("k", 1, Ext("name2id-key-fid", "7"));
    const std::string child = Container("d", Ext("class-id", "2") + Map(7, 20));
    const std::string mapped = leafList("x", Ext("field-id", "1") + Ext("name2id-key-fid", "7"));
    ASSERT_EQ(Read(Container("c", List("stop", "k", Ext("class-id", "1") + leafList("x", "") + key + child) +
                                      List("behind", "k", Ext("class-id", "1") + key + leafList("x", "") + child) +
                                      List("other", "k",
                                           Ext("class-id", "1") + leafList("x", Ext("field-id", "5")) + key + child) +
                                      List("itself", "k", Ext("class-id", "1") + Key("k", 1) + mapped + child))),
              0u);
    EXPECT_EQ(AncestorKeys(Inst("c/stop/d")), "0") << "the leaf-list has no field-id";
    EXPECT_EQ(AncestorKeys(Inst("c/behind/d")), "20");
    EXPECT_EQ(AncestorKeys(Inst("c/other/d")), "20");
    EXPECT_EQ(AncestorKeys(Inst("c/itself/d")), "20");
    Inst("c/stop")->ucLeafOrder = 0;
    Inst("c/itself")->ucLeafOrder = 0;
    EXPECT_EQ(TELMYANG_BSC_InstGetExtIndexMapId(Inst("c/stop"), 1, Local()), KORV_NO_ID) << "by the schema's children";
    EXPECT_EQ(TELMYANG_BSC_InstGetExtIndexMapId(Inst("c/itself"), 1, Local()), 7u);
}

TEST_F(Keys, OnlyTheLowByteOfTheKeyCountIsRead)
{
    Faults().keyNumBits = 0xABCD00;
    ASSERT_EQ(ReadBelowList(""), 0u);
    EXPECT_EQ(OwnKeys(Inst("c/l")), "1 2");
}

TEST_F(Keys, TopLevelClassHasNoAncestors)
{
    ASSERT_EQ(Read(Container("mapping", Ext("class-id", "1") + Map(1, 20)) +
                   Container("list", Ext("class-id", "2") + Ext("ancestor-key-fid", "5"))),
              0u);
    EXPECT_EQ(Inst("mapping")->ucAncKeyNum, 0);
    EXPECT_EQ(AncestorKeys(Inst("list")), "5");
    EXPECT_EQ(Inst("list")->pstKeyRefArray[0].pstParentInst, nullptr);
    EXPECT_TRUE(log.Errors().empty());
}

TEST_F(Keys, SameClassAsTheParentHasTheParentsKeys)
{
    ASSERT_EQ(ReadBelowList(
                  Container("same", Ext("class-id", "0x1") + Ext("ancestor-key-fid", "9")) +
                  List("inner", "x",
                       Ext("class-id", "2") + Map(1, 20) + Map(2, 21) + Key("x", 3) +
                           List("same2", "y", Ext("class-id", "2") + Key("y", 8) + Key("z", 9))) +
                  Container("keyless", Ext("class-id", "3") + List("same3", "y", Ext("class-id", "3") + Key("y", 8)))),
              0u);
    EXPECT_EQ(OwnKeys(Inst("c/l/same")), "1 2");
    EXPECT_EQ(AncestorKeys(Inst("c/l/same")), "") << "its own statement does not count";
    EXPECT_EQ(OwnKeys(Inst("c/l/inner/same2")), "3");
    EXPECT_EQ(AncestorKeys(Inst("c/l/inner/same2")), "20 21");
    EXPECT_EQ(OwnKeys(Inst("c/l/keyless/same3")), "8") << "a parent without keys leaves the child its own";
    EXPECT_TRUE(log.Has("Copy parent self key count(2) in node (same, 0x1)!"));
    EXPECT_TRUE(log.Has("Copy parent inherit key count(2) in node (same2, 0x2)!"));
}

TEST_F(Keys, TreeShowsOwnAndAncestorKeys)
{
    const std::string ids = "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16";
    dir.Add("ok", Container("c", Ext("class-id", "1") + Ext("ancestor-key-fid", ids)));
    dir.Add("over", Container("c", Ext("class-id", "1") + Ext("ancestor-key-fid", ids + " 17")));
    ASSERT_EQ(Load("ok"), 0u);
    EXPECT_EQ(test::Keys(Node("ok", "c")->aucAncestorKey), ids);
    log.Clear();
    EXPECT_EQ(Load("over"), 1u);
    EXPECT_EQ(log.Errors()[0], "NODE_KEY_LIST_NUM error!");
    dir.Add("no-id", Container("c", List("l", "k", Ext("class-id", "1") + Leaf("k", "int8"))));
    ASSERT_EQ(Load("no-id"), 0u);
    EXPECT_EQ(LeafOf(Node("no-id", "c/l"), "k")->ucIsKey, 0) << "no attribute id is a key";
    const YinInst empty = {};
    EXPECT_EQ(TELMYANG_BSC_FindAttrInYinInstByAttrId(Local(), const_cast<YinInst *>(&empty), 1), nullptr);
    EXPECT_EQ(TELMYANG_BSC_FindAttrInYinInstByAttrId(Local(), nullptr, 1), nullptr);
    EXPECT_EQ(TELMYANG_BSC_GetParentYinInst(Local(), nullptr), nullptr);
}

} // namespace
} // namespace test
