/* diff: every kind of change, and whether it breaks a host that goes by ids. */
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <tuple>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

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

using Changes = std::vector<std::string>;

std::string TextOf(const rapidjson::Value &value)
{
    if (value.IsNull())
        return "";
    return value.IsString() ? value.GetString() : Compact(value);
}

/* "+" for a breaking change, "-" for a compatible one, its rule, path and values. */
Changes ChangesIn(const rapidjson::Value &module)
{
    Changes changes;
    for (const rapidjson::Value &change : module["changes"].GetArray())
        changes.push_back(std::string(change["breaking"].GetBool() ? "+" : "-") + change["rule"].GetString() + " " +
                          TextOf(change["path"]) + " " + TextOf(change["old"]) + ">" + TextOf(change["new"]));
    return changes;
}

Result RunDiff(const ModelDir &before, const ModelDir &after, const std::vector<std::string> &options = {})
{
    std::vector<std::string> args = {"diff", "m", "--old", before.Path(), "--new", after.Path(), "--format", "json"};
    args.insert(args.end(), options.begin(), options.end());
    return Inspect(args);
}

Changes Diff(const std::string &before, const std::string &after, const std::vector<std::string> &options = {})
{
    ModelDir oldDir;
    ModelDir newDir;
    oldDir.Add("m", before);
    newDir.Add("m", after);
    const Result result = RunDiff(oldDir, newDir, options);
    Changes changes = ChangesIn(Json(result));
    const bool breaking =
        std::any_of(changes.begin(), changes.end(), [](const std::string &change) { return change[0] == '+'; });
    EXPECT_EQ(result.exitCode, breaking ? 1 : 0) << result.err;
    return changes;
}

TEST(InspectDiff, NothingWhereOnlyWhatNoHostSeesHasChanged)
{
    const std::string before = Base(Leaf("x", "string", Id("2")) + Leaf("y", "uint16", Id("3")));
    EXPECT_EQ(Diff(before, before), Changes{});
    EXPECT_EQ(Diff(before, Base(Leaf("y", "uint16", Id("3")) + Leaf("x", "string", Id("2")))), Changes{});
}

TEST(InspectDiff, LeavesComeGoAndChange)
{
    const std::tuple<std::string, std::string, Changes> cases[] = {
        {"", Leaf("x", "string", Id("2")), {"-leaf-added /c/l/x >2"}},
        {Leaf("x", "string", Id("2")), "", {"+leaf-removed /c/l/x 2>"}},
        {Leaf("x", "string"), "", {"+leaf-removed /c/l/x >"}},
        {Leaf("x", "string", Id("2")), Leaf("x", "string", Id("3")), {"+field-id /c/l/x 2>3"}},
        {Leaf("x", "string"), Leaf("x", "string", Id("3")), {"-field-id /c/l/x >3"}},
        {Leaf("x", "string", Id("2")), Leaf("y", "string", Id("2")), {"+leaf-moved /c/l/x /c/l/x>/c/l/y"}},
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
         {"+range /c/l/y 1..9>1..8", "+range /c/l/x 1..9>1..8"}},
        {Leaf("x", Enum("<enum name=\"a\"/><enum name=\"b\"/>"), Id("2")),
         Leaf("x", Enum("<enum name=\"b\"/><enum name=\"z\"/>"), Id("2")),
         {"+enum /c/l/x a 0>", "+enum /c/l/x b 1>b 0", "-enum /c/l/x >z 1"}},
        {"<leaf-list name=\"x\"><type name=\"string\"/></leaf-list>",
         Leaf("x", "string"),
         {"+kind /c/l/x leaf-list>leaf"}},
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
        {"", Container("x", id), {"-class-added /c/l/x >32"}},
        {Container("x", id), "", {"+class-removed /c/l/x 32>"}},
        {Container("x", ""), "", {"+node-removed /c/l/x >"}},
        {Container("x", ""), Container("x", id), {"-class-id /c/l/x >32"}},
        {Container("x", id), Container("x", Ext("class-id", "0x21")), {"+class-id /c/l/x 32>33"}},
        {Container("x", id), Container("x", ""), {"+class-id /c/l/x 32>"}},
        {Container("x", id), Container("x", id + Ext("tlmt-sample-id", "3")), {"-sample-id /c/l/x >3"}},
        {Container("x", id + Ext("tlmt-sample-id", "3")), Container("x", id), {"+sample-id /c/l/x 3>"}},
        {list("x", "a", id), list("x", "a b", id), {"+keys /c/l/x [1]>[1,2]"}},
        {Container("x", id + Ext("ancestor-key-fid", "8 9")),
         Container("x", id + Ext("ancestor-key-fid", "9 8")),
         {"+ancestor-keys /c/l/x [8,9]>[9,8]"}},
        /* What stands below moves with it, and what goes with it goes, too. */
        {list("x", "a", id), list("y", "a", id), {"+class-moved /c/l/x /c/l/x>/c/l/y"}},
        {Container("x", Container("in", id)),
         Container("y", Container("in", id)),
         {"+node-removed /c/l/x >", "+class-moved /c/l/x/in /c/l/x/in>/c/l/y/in", "-node-added /c/l/y >"}},
        {Container("x", id + Leaf("a", "string", Id("1"))),
         "",
         {"+class-removed /c/l/x 32>", "+leaf-removed /c/l/x/a 1>"}},
    };
    for (const auto &[before, after, changes] : cases)
        EXPECT_EQ(Diff(Base(before), Base(after)), changes) << before << after;
    EXPECT_EQ(Diff(Ext("aaa-task-id", "5"), Ext("aaa-task-id", "6")), (Changes{"-task-id  5>6"}));
}

/* Two bodies of a container in compact syntax. "@" stands in front of the statement that the first change is about. */
struct Pair {
    std::string before;
    std::string after;
    Changes changes;
};

/* Takes the "@" out of the text; its place as JSON has it, "null" without one. */
std::string TakePlace(std::string *text, const std::string &file)
{
    const size_t at = text->find('@');
    if (at == std::string::npos)
        return "null";
    text->erase(at, 1);
    const auto line = std::count(text->begin(), text->begin() + static_cast<std::ptrdiff_t>(at), '\n') + 1;
    const size_t column = at - (text->rfind('\n', at) + 1) + 1;
    return R"({"file":")" + file + R"(","line":)" + std::to_string(line) + R"(,"column":)" + std::to_string(column) +
           "}";
}

std::string InModule(const std::string &body)
{
    return "module m {\n  yang-version 1.1;\n  namespace urn:m;\n  prefix p;\n"
           "  import quelvo-mim-extensions { prefix mimext; }\n  " +
           body + "\n}\n";
}

/* Compares two files of module m as given, and the places of the first change. */
void ExpectChanges(std::string before, std::string after, const Changes &changes,
                   const std::vector<std::string> &options = {})
{
    ModelDir oldDir;
    ModelDir newDir;
    const std::string oldPlace = TakePlace(&before, oldDir.Path() + "/m.yang");
    const std::string newPlace = TakePlace(&after, newDir.Path() + "/m.yang");
    oldDir.AddFile("m.yang", before);
    newDir.AddFile("m.yang", after);
    const Result result = RunDiff(oldDir, newDir, options);
    const rapidjson::Document json = Json(result);
    ASSERT_TRUE(json.IsObject()) << result.err;
    EXPECT_EQ(ChangesIn(json), changes) << before << after;
    if (json["changes"].Empty())
        return;
    EXPECT_EQ(Compact(json["changes"][0]["old_place"]), oldPlace) << before;
    EXPECT_EQ(Compact(json["changes"][0]["new_place"]), newPlace) << after;
}

TEST(InspectDiff, SeesWhatReadersOfDataFeelWithBothPlaces)
{
    const Pair pairs[] = {
        {"leaf x { type string; @units s; }", "leaf x { type string; @units ms; }", {"+units /c/x s>ms"}},
        {"@leaf x { type string; }", "leaf x { type string; @units ms; }", {"-units /c/x >ms"}},
        {"typedef t { type int8; @units s; } leaf x { type t; }",
         "typedef t { type int8; @units ms; } leaf x { type t; }",
         {"+units /c/x s>ms"}},
        {"leaf x { type int8; @default 1; }", "@leaf x { type int8; }", {"+default /c/x 1>"}},
        {"@leaf x { type int8; }", "leaf x { type int8; @default 1; }", {"-default /c/x >1"}},
        {"leaf-list x { type int8; default 1; @default 2; }",
         "leaf-list x { type int8; default 1; @default 3; }",
         {"+default /c/x 2>3"}},
        {"@container d { leaf x { type int8; } }",
         "container d { @config false; leaf x { type int8; } }",
         {"+config /c/d true>false"}},
        {"leaf x { type int8; @config false; }", "@leaf x { type int8; }", {"-config /c/x false>true"}},
        {"leaf x { type int8; @config false; mandatory true; }",
         "@leaf x { type int8; mandatory true; }",
         {"+config /c/x false>true"}},
        {"@leaf x { type int8; }", "leaf x { type int8; @mandatory true; }", {"+mandatory /c/x false>true"}},
        {"@container d;", "container d { @presence yes; }", {"+presence /c/d >yes"}},
        {"container d { @presence yes; }", "container d { @presence no; }", {"-presence /c/d yes>no"}},
        {"leaf-list x { type int8; @min-elements 1; }",
         "leaf-list x { type int8; @min-elements 2; }",
         {"+min-elements /c/x 1>2"}},
        {"leaf-list x { type int8; @min-elements 1; }", "@leaf-list x { type int8; }", {"-min-elements /c/x 1>0"}},
        {"@leaf-list x { type int8; }",
         "leaf-list x { type int8; @max-elements 9; }",
         {"+max-elements /c/x unbounded>9"}},
        {"leaf-list x { type int8; @max-elements 9; }",
         "leaf-list x { type int8; @max-elements 10; }",
         {"-max-elements /c/x 9>10"}},
        {"@leaf-list x { type int8; }",
         "leaf-list x { type int8; @ordered-by user; }",
         {"+ordered-by /c/x system>user"}},
        {"list x { @key 'a b'; leaf a { type int8; } leaf b { type int8; } }",
         "list x { @key 'b a'; leaf a { type int8; } leaf b { type int8; } }",
         {"+key /c/x a b>b a"}},
        {"leaf x { type int8; @must '. > 1'; }", "@leaf x { type int8; }", {"-must /c/x . > 1>"}},
        {"leaf x { type int8; must 'a'; @must '. > 1'; }",
         "leaf x { type int8; @must '. > 2'; must 'a'; }",
         {"+must /c/x . > 1>. > 2"}},
        {"leaf x { type int8; must '.  >\n 1'; }", "leaf x { type int8; must '. > 1'; }", {}},
        {"@leaf x { type int8; }", "leaf x { type int8; @when '../y'; }", {"+when /c/x >../y"}},
        {"grouping g { @leaf x { type int8; } } uses g;",
         "grouping g { leaf x { type int8; } } uses g { @when 'y'; }",
         {"+when /c/x >y"}},
        {"leaf x { type int8; @status obsolete; }", "@leaf x { type int8; }", {"-status /c/x obsolete>current"}},
        {"leaf x { type int8; @description a; }", "leaf x { type int8; @description b; }", {"-description /c/x a>b"}},
        {"@leaf x { type int8; }",
         "choice h { @leaf x { type int8; } leaf y { type int8; } }",
         {"+case /c/x >h/x", "-choice-added /c/h >", "-leaf-added /c/y >"}},
        {"@leaf x { type int8; }", "@container x;", {"+kind /c/x leaf>container"}},
    };
    for (const Pair &pair : pairs)
        ExpectChanges(InModule("container c { " + pair.before + " }"), InModule("container c { " + pair.after + " }"),
                      pair.changes);
}

TEST(InspectDiff, ComparesWhatTypesAllow)
{
    const Pair pairs[] = {
        {"uint8 { @range 1..9; }", "uint8 { @range 1..8; }", {"+range /c/x 1..9>1..8"}},
        {"@uint8", "@int8 { range min..max; }", {"+type /c/x uint8>int8"}},
        {"decimal64 { fraction-digits 2; @range '0.5..max'; }",
         "decimal64 { fraction-digits 2; @range '0.50..9.99'; }",
         {"+range /c/x 0.5..92233720368547758.07>0.5..9.99"}},
        {"decimal64 { @fraction-digits 2; range 1..2; }",
         "decimal64 { @fraction-digits 3; range 1..2; }",
         {"+fraction-digits /c/x 2>3"}},
        {"string { @length 1..9; }", "@string", {"-length /c/x 1..9>"}},
        {"small", "string { @length 1..8; }", {}},
        {"@small", "string { length 1..8; @pattern 'a*'; }", {"+pattern /c/x >a*"}},
        {"string { @pattern 'a*'; }",
         "string { @pattern 'a*' { modifier invert-match; } }",
         {"+pattern /c/x a*>not a*"}},
        {"bits { @bit a; bit b; }",
         "@bits { bit b; bit d; }",
         {"+bit /c/x a 0>", "+bit /c/x b 1>b 0", "-bit /c/x >d 1"}},
        {"colour { @enum red; enum blue; }", "@colour { enum blue; }", {"+enum /c/x red 4>"}},
        {"identityref { @base i; }", "identityref { @base j; }", {"+base /c/x m:i>m:j"}},
        {"identityref { base i; @base j; }", "@identityref { base i; }", {"-base /c/x m:j>"}},
        {"leafref { @path '../y'; }", "leafref { @path '../z'; }", {"+leafref /c/x /m:c/m:y>/m:c/m:z"}},
        {"leafref { @path '../y'; }", "leafref { @path '/p:c/p:y'; }", {"-leafref-path /c/x ../y>/p:c/p:y"}},
        {"leafref { path '../y'; @require-instance false; }",
         "@@leafref { path '../y'; }",
         {"+require-instance /c/x false>true"}},
        {"union { @type int8; type string; }", "@union { type string; }", {"+member /c/x int8>"}},
        {"union { type int8; type uint8 { @range 1..9; } }",
         "union { type int8; type uint8 { @range 1..8; } }",
         {"+range /c/x 1..9>1..8"}},
        {"@union { type int8; type string; }",
         "@union { type string; type int8; }",
         {"+member-order /c/x int8 string>string int8"}},
        {"union { type small; }", "union { type string { length 1..8; } }", {}},
    };
    const auto module = [](const std::string &type) {
        const size_t marks = type.find_first_not_of('@'); /* one: the place is the type, two: the leaf */
        const std::string leaf = std::string(marks == 2 ? "@" : "") + "leaf x { " + (marks == 1 ? "@" : "") + "type " +
                                 type.substr(marks) + (type.ends_with('}') ? " }" : "; }");
        return InModule(
            "typedef small { type string { length 1..8; } } typedef colour { type enumeration { enum red { "
            "value 4; } enum blue; } } identity i; identity j; container c { leaf y { type int8; } leaf z { "
            "type int8; } " +
            leaf + " }");
    };
    for (const Pair &pair : pairs)
        ExpectChanges(module(pair.before), module(pair.after), pair.changes);
}

TEST(InspectDiff, ComparesTheModuleAsAWhole)
{
    const std::string module = InModule("");
    const auto with = [&module](const std::string &part, const std::string &other) {
        std::string text = module;
        return text.replace(text.find(part), part.size(), other);
    };
    const Pair pairs[] = {
        {with("namespace", "@namespace"), with("namespace urn:m", "@namespace urn:n"), {"+namespace  urn:m>urn:n"}},
        {with("prefix p", "@prefix p"), with("prefix p", "@prefix q"), {"-prefix  p>q"}},
        {InModule("@feature f;"), module, {"+feature-removed  f>"}},
        {module, InModule("@identity i;"), {"-identity-added  >i"}},
        {InModule("identity i; identity j { @base i; }"),
         InModule("identity i; @identity j;"),
         {"+identity-base  j m:i>"}},
        {InModule("@grouping g { leaf x { type int8; } }"), module, {"+definition-removed  grouping g>"}},
        {InModule("revision 2026-01-01; @contact a;"),
         InModule("revision 2026-01-01; @contact b;"),
         {"-no-new-revision  2026-01-01>2026-01-01"}},
        {InModule("revision 2026-01-01; contact a;"), InModule("revision 2026-01-02; contact b;"), {}},
        {InModule("revision 2026-01-01; contact 'a b';"),
         InModule("// c\n  revision 2026-01-01; contact 'a\n  b';"),
         {}},
        {InModule("@rpc r { input { leaf x { type int8; } } }"),
         module,
         {"+node-removed /r >", "+leaf-removed /r/input/x >"}},
        {InModule("feature f; @leaf x { type int8; }"),
         InModule("feature f; leaf x { @if-feature f; type int8; }"),
         {"+if-feature /x >f"}},
    };
    for (const Pair &pair : pairs)
        ExpectChanges(pair.before, pair.after, pair.changes);
}

TEST(InspectDiff, ANewNodeBreaksWhereItHasToBeGiven)
{
    const std::pair<const char *, Changes> cases[] = {
        {"@leaf x { type int8; mandatory true; }", {"+leaf-added /c/x >"}},
        {"@leaf x { type int8; mandatory true; config false; }", {"-leaf-added /c/x >"}},
        {"@container d { leaf x { type int8; mandatory true; } }", {"-node-added /c/d >", "+leaf-added /c/d/x >"}},
        {"@container d { presence yes; leaf x { type int8; mandatory true; } }",
         {"-node-added /c/d >", "-leaf-added /c/d/x >"}},
        {"@leaf-list x { type int8; min-elements 1; }", {"+leaf-added /c/x >"}},
        {"@choice h { mandatory true; leaf x { type int8; mandatory true; } }",
         {"+choice-added /c/h >", "-leaf-added /c/x >"}},
    };
    for (const auto &[added, changes] : cases)
        ExpectChanges(InModule("container c;"), InModule("container c { " + std::string(added) + " }"), changes);
    ExpectChanges(InModule("rpc r;"), InModule("rpc r { input { @leaf x { type int8; mandatory true; } } }"),
                  {"+leaf-added /r/input/x >"});
    ExpectChanges(InModule("container c;"),
                  InModule("@feature f; container c { leaf x { if-feature f; type int8; mandatory true; } }"),
                  {"-feature-added  >f", "-leaf-added /c/x >"});
}

TEST(InspectDiff, ByIdNamesDoNotMatterNorWhatHasNoIds)
{
    const std::string x = Leaf("x", "string", Id("2"));
    const std::tuple<std::string, std::string, Changes> cases[] = {
        {x, Leaf("y", "string", Id("2")), {"-leaf-moved /c/l/x /c/l/x>/c/l/y"}},
        {Leaf("x", "string"), "", {"-leaf-removed /c/l/x >"}},
        {Leaf("x", "string"), Leaf("x", "uint16"), {"-type /c/l/x string>uint16"}},
        {x, Leaf("x", "uint16", Id("2")), {"+type /c/l/x string>uint16"}},
        {x, "", {"+leaf-removed /c/l/x 2>"}},
    };
    for (const auto &[before, after, changes] : cases)
        EXPECT_EQ(Diff(Base(before), Base(after), {"--by", "id"}), changes) << before << after;
}

/* A model says the same in either syntax. */
TEST(InspectDiff, TheSyntaxIsNoDifference)
{
    ModelDir compact;
    RunShell("korv-inspect convert examples/yin/example-*.yin -d examples/yin -o " + compact.Path());
    const auto diff = [&] { return Inspect({"diff", "--all", "examples/yin", compact.Path()}); };
    RunShell("cp examples/yin/quelvo-*.yin " + compact.Path());
    EXPECT_EQ(LineWith(diff().out, "compared"),
              "9 modules compared: 0 new, 0 gone, 0 changed; 0 breaking changes, 0 compatible");
    RunShell("sed -i 's/1280..9600/1280..9000/' " + compact.Path() + "/example-interfaces.yang");
    EXPECT_EQ(diff().exitCode, 1);
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
    const auto changes = [&](const std::string &module) {
        std::string marks;
        std::istringstream lines(diff(module).out);
        for (std::string line; std::getline(lines, line);)
            if (!line.starts_with(" ")) /* places */
                marks += line + "\n";
        return marks;
    };
    EXPECT_EQ(changes("quelvo-bras-user-manage"), R"(quelvo-bras-user-manage, revision 2026-04-07 -> 2026-04-07
breaking    /users/licensed   leaf removed (field id 2)
compatible  /users/user       sample id none -> 0x72
breaking    /users/user/vlan  type uint16 -> uint32
2 breaking changes, 1 compatible
)");
    EXPECT_EQ(changes("example-interface-qos"), R"(example-interface-qos, revision 2026-05-11 -> 2026-05-11
compatible  example-interface-qos                  changed, and the revision is 2026-05-11
breaking    /interfaces/interface/traffic/matched  leaf moved to /interfaces/interface/traffic/hits
breaking    /interfaces/interface/shaping-rate     field id 40 -> 44
2 breaking changes, 1 compatible
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

TEST(InspectDiff, AllComparesTheModulesOfBothDirectories)
{
    ModelDir before;
    ModelDir after;
    const std::string leaf = "container c { leaf x { type int8; } }";
    before.AddFile("m.yang", InModule("include a-part; revision 2026-01-01;"));
    before.AddFile("a-part.yang", "submodule a-part { yang-version 1.1; belongs-to m { prefix p; } " + leaf + " }");
    before.Add("old", "");
    before.Add("n", "<augment target-node=\"/m:c\">" + Leaf("y", "string") + "</augment>", "m");
    after.AddFile("m.yang", InModule("revision 2026-01-02; " + leaf));
    after.Add("new", "");
    after.Add("n", "<augment target-node=\"/m:c\">" + Leaf("y", "int8") + "</augment>", "m");
    const auto diff = [&](const std::string &format) {
        return Inspect({"diff", "--all", before.Path(), after.Path(), "--format", format});
    };
    const Result result = diff("json");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.exitCode, 1);
    const rapidjson::Document json = Json(result);
    std::vector<std::pair<std::string, Changes>> found;
    for (const rapidjson::Value &module : json["modules"].GetArray())
        found.emplace_back(module["module"].GetString(), ChangesIn(module));
    const std::vector<std::pair<std::string, Changes>> expected = {
        {"m", {}},
        {"n", {"+type /c/y string>int8"}},
        {"new", {"-module-added  >"}},
        {"old", {"+module-removed  >"}},
        {"quelvo-mim-extensions", {}},
    };
    EXPECT_EQ(found, expected);
    after.AddFile("old.yang", "module old {");
    const Result failed = diff("text");
    EXPECT_EQ(failed.exitCode, 3);
    EXPECT_NE(LineWith(failed.err, after.Path() + "/old.yang:1:"), "");
    EXPECT_EQ(LineWith(failed.out, "compared"),
              "4 modules compared: 1 new, 0 gone, 1 changed; 1 breaking change, 1 compatible");
}

/* A repository with two revisions of models/m.yin in it; in the working directory, m has changed once more. */
class Repository {
  public:
    Repository()
    {
        RunShell("mkdir " + dir_.Path() + "/models && mv " + dir_.Path() + "/*.yin " + Models());
        Git("init -q");
        for (const char *type : {"string", "int8"}) {
            dir_.AddFile("models/m.yin", Module("m", Base(Leaf("x", type, Id("2")))));
            Git("add . && git -C " + dir_.Path() +
                " -c user.name=n -c user.email=e -c commit.gpgsign=false commit -q -m x");
        }
        dir_.AddFile("models/m.yin", Module("m", Base(Leaf("x", "int16", Id("2")))));
    }

    const std::string &Path() const { return dir_.Path(); }
    std::string Models() const { return dir_.Path() + "/models"; }

  private:
    void Git(const std::string &words) const { RunShell("git -C " + dir_.Path() + " " + words); }

    ModelDir dir_;
};

TEST(InspectDiff, AgainstComparesWithARevisionOfGit)
{
    if (RunShell("command -v git").exitCode != 0)
        GTEST_SKIP() << "no git";
    const Repository repository;
    ModelDir outside;
    const auto types = [](const std::string &args) {
        const rapidjson::Document json = Json(RunShell("korv-inspect diff " + args + " --format json"));
        const rapidjson::Value &change = (json.HasMember("modules") ? json["modules"][0] : json)["changes"][0];
        return TextOf(change["old"]) + ">" + TextOf(change["new"]) + " " + change["old_place"]["file"].GetString();
    };
    EXPECT_EQ(types("m --against HEAD -d " + repository.Models()), "int8>int16 HEAD:models/m.yin");
    EXPECT_EQ(types("--all --against HEAD~1 " + repository.Models()), "string>int16 HEAD~1:models/m.yin");
    EXPECT_EQ(types("m --against HEAD -r --new " + repository.Path()), "int8>int16 HEAD:models/m.yin");
    /* As in a hook of git's, where variables name another repository than the directory does. */
    EXPECT_EQ(
        RunShell("cd " + repository.Models() + " && GIT_DIR=.git korv-inspect diff m --against HEAD:models").exitCode,
        1);

    const std::tuple<std::string, int, std::string> failures[] = {
        {"-x --new " + repository.Models(), 2, "'-x' is no revision of git's"},
        {":models --new " + repository.Models(), 2, "':models' is no revision of git's"},
        {"nowhere --new " + repository.Models(), 2, "has no revision 'nowhere'"},
        {"HEAD:nowhere --new " + repository.Models(), 2, "revision 'HEAD' of the repository has no folder 'nowhere'"},
        {"HEAD --new " + outside.Path(), 2, "'" + outside.Path() + "' is in no git repository"},
        {"HEAD: --new " + repository.Path(), 3, "'HEAD:'"},
    };
    for (const auto &[args, code, text] : failures) {
        const Result result = RunShell("korv-inspect diff m --against=" + args);
        EXPECT_EQ(result.exitCode, code) << args;
        EXPECT_NE(LineWith(result.err, text), "") << result.err;
    }
    const Result missing = RunShell("program=$(command -v korv-inspect); PATH=" + outside.Path() +
                                    " $program diff m --against HEAD --new " + repository.Models());
    EXPECT_EQ(missing.exitCode, 3);
    EXPECT_EQ(missing.err, "korv-inspect: --against needs git, which is not found\n");
    const Result left = RunShell("TMPDIR=" + outside.Path() + " korv-inspect diff m --against HEAD --new " +
                                 repository.Models() + " >/dev/null; ls -A " + outside.Path());
    EXPECT_EQ(left.out, "quelvo-mim-extensions.yin\n");
}

} // namespace
