/* diff: every kind of change, and whether it breaks a host that goes by ids. */
#include <gtest/gtest.h>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

std::string Id(const std::string &number)
{
    return Ext("field-id", number);
}

/* A class with one key; what is under test comes below it. */
std::string Base(const std::string &body)
{
    return Container("c", List("l", "k", Ext("class-id", "0x10") + Leaf("k", "string", Id("1")) + body));
}

std::string Ranged(const std::string &type, const std::string &range)
{
    return "<type name=\"" + type + "\"><range value=\"" + range + "\"/></type>";
}

std::string Enum(const std::string &enums)
{
    return "<type name=\"enumeration\">" + enums + "</type>";
}

/* "+" for a breaking change, "-" for a compatible one, and its line without the module's heading. */
std::vector<std::string> Diff(const std::string &before, const std::string &after)
{
    ModelDir oldDir;
    ModelDir newDir;
    oldDir.Add("m", before);
    newDir.Add("m", after);
    const Result result = Inspect({"diff", "m", "--old", oldDir.Path(), "--new", newDir.Path(), "--format", "json"});
    const rapidjson::Document json = Json(result);
    std::vector<std::string> changes;
    bool breaking = false;
    for (const rapidjson::Value &change : json["changes"].GetArray()) {
        const auto text = [&](const char *name) { return change[name].IsNull() ? "" : change[name].GetString(); };
        changes.push_back(std::string(change["breaking"].GetBool() ? "+" : "-") + text("change") + " " + text("path") +
                          " " + text("old") + ">" + text("new"));
        breaking |= change["breaking"].GetBool();
    }
    EXPECT_EQ(result.exitCode, breaking ? 1 : 0) << result.err;
    return changes;
}

using Changes = std::vector<std::string>;

TEST(InspectDiff, NothingWhereOnlyWhatNoHostSeesHasChanged)
{
    const std::string before = Base(Leaf("x", "string", Id("2")) + Leaf("y", "uint16", Id("3")));
    EXPECT_EQ(Diff(before, before), Changes{});
    /* Order, and a case around a leaf: a host's path stays the same. */
    const std::string after =
        Base("<choice name=\"ch\">" + Leaf("y", "uint16", Id("3")) + "</choice>" + Leaf("x", "string", Id("2")));
    EXPECT_EQ(Diff(before, after), Changes{});
}

TEST(InspectDiff, LeavesComeGoAndChange)
{
    const std::tuple<std::string, std::string, Changes> cases[] = {
        {"", Leaf("x", "string", Id("2")), {"-leaf-added /c/l/x >2"}},
        {Leaf("x", "string", Id("2")), "", {"+leaf-removed /c/l/x 2>"}},
        {Leaf("x", "string"), "", {"-leaf-removed /c/l/x >"}},
        {Leaf("x", "string", Id("2")), Leaf("x", "string", Id("3")), {"+field-id /c/l/x 2>3"}},
        {Leaf("x", "string"), Leaf("x", "string", Id("3")), {"-field-id /c/l/x >3"}},
        {Leaf("x", "string", Id("2")), Leaf("y", "string", Id("2")), {"-leaf-moved /c/l/x /c/l/x>/c/l/y"}},
        {Leaf("x", "uint16", Id("2")), Leaf("x", "uint32", Id("2")), {"+type /c/l/x uint16>uint32"}},
        {Leaf("x", "string", Id("2")), Leaf("x", "string", Id("2") + Ext("datatype-id", "9")), {"+datatype /c/l/x >9"}},
        {Leaf("x", "string", Id("2") + Ext("name2id-key-fid", "7")),
         Leaf("x", "string", Id("2")),
         {"+index-map /c/l/x 7>"}},
        {Leaf("x", "string", Id("2") + Ext("ref-id-key-fid", "2")),
         Leaf("x", "string", Id("3") + Ext("ref-id-key-fid", "3")),
         {"+field-id /c/l/x 2>3", "+reference-key /c/l/x 2>3"}},
        {Leaf("x", Ranged("uint16", "1..9"), Id("2")),
         Leaf("x", Ranged("uint16", "1..8"), Id("2")),
         {"+range /c/l/x 1..9>1..8"}},
        {Leaf("x", Ranged("uint16", "1..9"), Id("2")),
         Leaf("x", Ranged("uint16", "2..10"), Id("2")),
         {"+range /c/l/x 1..9>2..10"}},
        {Leaf("x", Ranged("uint64", "1..9"), Id("2")),
         Leaf("x", "uint64", Id("2")),
         {"-range /c/l/x 1..9>0..18446744073709551615"}},
        {Leaf("x", Ranged("int32", "-100..100"), Id("2")),
         Leaf("x", Ranged("int32", "0..10"), Id("2")),
         {"+range /c/l/x -100..100>0..10"}},
        {Leaf("x", Ranged("uint8", "0..10"), Id("2")), Leaf("x", "uint8", Id("2")), {"-range /c/l/x 0..10>0..255"}},
        /* Every part counts, and adjacent ones are one. */
        {Leaf("x", Ranged("uint32", "1..1024 | 4096"), Id("2")),
         Leaf("x", Ranged("uint32", "1..512 | 4096"), Id("2")),
         {"+range /c/l/x 1..1024 | 4096>1..512 | 4096"}},
        {Leaf("x", Ranged("uint32", "1..1024"), Id("2")),
         Leaf("x", Ranged("uint32", "1..1024 | 4096"), Id("2")),
         {"-range /c/l/x 1..1024>1..1024 | 4096"}},
        {Leaf("x", Ranged("int8", "-5..-1 | 0..5"), Id("2")), Leaf("x", Ranged("int8", "-5..5"), Id("2")), {}},
        /* Through a leafref. */
        {Leaf("y", Ranged("int16", "1..9")) +
             Leaf("x", "<type name=\"leafref\"><path value=\"../y\"/></type>", Id("2")),
         Leaf("y", Ranged("int16", "1..8")) +
             Leaf("x", "<type name=\"leafref\"><path value=\"../y\"/></type>", Id("2")),
         {"-range /c/l/y 1..9>1..8", "+range /c/l/x 1..9>1..8"}},
        {Leaf("x", Enum("<enum name=\"a\"/><enum name=\"b\"/>"), Id("2")),
         Leaf("x", Enum("<enum name=\"b\"/><enum name=\"z\"/>"), Id("2")),
         {"+enum /c/l/x a 0>", "+enum /c/l/x b 1>b 0", "-enum /c/l/x >z 1"}},
        {"<leaf-list name=\"x\"><type name=\"string\"/></leaf-list>",
         Leaf("x", "string"),
         {"-kind /c/l/x leaf-list>leaf"}},
    };
    for (const auto &[before, after, changes] : cases)
        EXPECT_EQ(Diff(Base(before), Base(after)), changes) << before << after;
}

TEST(InspectDiff, ClassesComeGoMoveAndChange)
{
    const auto list = [](const std::string &name, const std::string &key, const std::string &statements) {
        return List(name, key, statements + Leaf("a", "string", Id("1")) + Leaf("b", "string", Id("2")));
    };
    const std::string id = Ext("class-id", "0x20");
    const std::tuple<std::string, std::string, Changes> cases[] = {
        {"", Container("x", id), {"-class-added /c/l/x >0x20"}},
        {Container("x", id), "", {"+class-removed /c/l/x 0x20>"}},
        {Container("x", ""), "", {"-node-removed /c/l/x >"}},
        {Container("x", ""), Container("x", id), {"-class-id /c/l/x >0x20"}},
        {Container("x", id), Container("x", Ext("class-id", "0x21")), {"+class-id /c/l/x 0x20>0x21"}},
        {Container("x", id), Container("x", ""), {"+class-id /c/l/x 0x20>"}},
        {Container("x", id), Container("x", id + Ext("tlmt-sample-id", "3")), {"-sample-id /c/l/x >0x3"}},
        {Container("x", id + Ext("tlmt-sample-id", "3")), Container("x", id), {"+sample-id /c/l/x 0x3>"}},
        {list("x", "a", id), list("x", "a b", id), {"+keys /c/l/x 1>1 2"}},
        {Container("x", id + Ext("ancestor-key-fid", "8 9")),
         Container("x", id + Ext("ancestor-key-fid", "9 8")),
         {"+ancestor-keys /c/l/x 8 9>9 8"}},
        /* What stands below moves with it, and what goes with it goes, too. */
        {list("x", "a", id), list("y", "a", id), {"-class-moved /c/l/x /c/l/x>/c/l/y"}},
        {Container("x", Container("in", id)),
         Container("y", Container("in", id)),
         {"-node-removed /c/l/x >", "-class-moved /c/l/x/in /c/l/x/in>/c/l/y/in", "-node-added /c/l/y >"}},
        {Container("x", id + Leaf("a", "string", Id("1"))),
         "",
         {"+class-removed /c/l/x 0x20>", "+leaf-removed /c/l/x/a 1>"}},
    };
    for (const auto &[before, after, changes] : cases)
        EXPECT_EQ(Diff(Base(before), Base(after)), changes) << before << after;
    EXPECT_EQ(Diff(Ext("aaa-task-id", "5"), Ext("aaa-task-id", "6")), (Changes{"-task-id  5>6"}));
}

TEST(InspectDiff, ComparesWhatAugmentsAddAndDeviationsChange)
{
    ModelDir plain;
    ModelDir deviated;
    plain.AddExamples();
    deviated.AddExamples();
    RunShell("rm " + plain.Path() + "/*-deviations-*; cd " + deviated.Path() +
             " && sed -i 's/name=\"matched\"/name=\"hits\"/; s/value=\"40\"/value=\"44\"/' example-interface-qos.yin");
    const auto diff = [&](const std::string &module) {
        return Inspect({"diff", module, "--old", plain.Path(), "--new", deviated.Path()});
    };
    EXPECT_EQ(diff("quelvo-bras-user-manage").out, R"(quelvo-bras-user-manage, revision 2026-04-07 -> 2026-04-07
compatible  /users/user       sample id none -> 0x72
breaking    /users/licensed   leaf removed (field id 2)
breaking    /users/user/vlan  type uint16 -> uint32
2 breaking changes, 1 compatible
)");
    EXPECT_EQ(diff("example-interface-qos").out, R"(example-interface-qos, revision 2026-05-11 -> 2026-05-11
breaking    /interfaces/interface/shaping-rate     field id 40 -> 44
compatible  /interfaces/interface/traffic/matched  leaf moved to /interfaces/interface/traffic/hits
1 breaking change, 1 compatible
)");
    const Result same = diff("example-interfaces");
    EXPECT_EQ(same.out, "example-interfaces, revision 2026-09-01 -> 2026-09-01\nno difference\n");
    EXPECT_EQ(same.exitCode, 0);
}

TEST(InspectDiff, AVersionThatCannotBeLoadedEndsTheRun)
{
    ModelDir good;
    ModelDir bad;
    good.Add("m", Base(""));
    bad.Add("m", Base(Leaf("x", "strng")));
    const Result result = Inspect({"diff", "m", "--old", good.Path(), "--new", bad.Path()});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(LineWith(result.err, bad.Path() + "/m.yin:"), "");
}

} // namespace
