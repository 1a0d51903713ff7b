/* diff: every kind of change, and whether it breaks a host that goes by ids. */
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

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

std::string InModule(const std::string &body, const std::string &revision = "2026-01-01")
{
    return "module m {\n  yang-version 1.1;\n  namespace urn:m;\n  prefix p;\n"
           "  import quelvo-mim-extensions { prefix e; }\n  revision " +
           revision + ";\n  " + body + "\n}\n";
}

/* The pattern with the text in it, as the body of a module unless it is a module itself. */
std::string Filled(std::string pattern, const std::string &text, const std::string &revision)
{
    pattern.replace(pattern.find('%'), 1, text);
    return pattern.starts_with("module") ? pattern : InModule(pattern, revision);
}

/* Writes the text without its "@"; the place of the last one as JSON has it, "null" for none. */
std::string AddFile(ModelDir *dir, std::string text)
{
    std::string ahead = text.substr(0, text.rfind('@') + 1);
    std::erase(text, '@');
    dir->AddFile("m.yang", text);
    if (std::erase(ahead, '@') == 0)
        return "null";
    return R"({"file":")" + dir->Path() + R"(/m.yang","line":)" +
           std::to_string(std::count(ahead.begin(), ahead.end(), '\n') + 1) + R"(,"column":)" +
           std::to_string(ahead.size() - ahead.rfind('\n')) + "}";
}

/* Compares two modules, of which the second one has a newer revision. */
void ExpectPair(const std::string &before, const std::string &after, const std::string &changes,
                const std::string &options)
{
    ModelDir oldDir;
    ModelDir newDir;
    const std::string oldPlace = AddFile(&oldDir, before);
    const std::string newPlace = AddFile(&newDir, after);
    const Result result = RunShell("korv-inspect diff m --format json --old " + oldDir.Path() + " --new " +
                                   newDir.Path() + " " + options);
    const rapidjson::Document json = Json(result);
    ASSERT_TRUE(json.IsObject()) << before << after << result.err;
    std::string found;
    for (const std::string &change : ChangesIn(json))
        found += (found.empty() ? "" : "; ") + change;
    EXPECT_EQ(found, changes) << before << after;
    EXPECT_EQ(result.exitCode, ("; " + changes).find("; +") != std::string::npos ? 1 : 0) << before << after;
    if (json["changes"].Empty())
        return;
    EXPECT_EQ(Compact(json["changes"][0]["old_place"]), oldPlace) << before;
    EXPECT_EQ(Compact(json["changes"][0]["new_place"]), newPlace) << after;
}

/* Each line of the table is a pattern in compact syntax or, below it, "BEFORE -> AFTER = CHANGES": two texts that take the
 * place of its "%", and what has changed. The last "@" stands in front of the statement that the first change is about. */
void ExpectChanges(const std::string &table, const std::string &options = "")
{
    std::istringstream lines(table);
    std::string pattern;
    for (std::string line; std::getline(lines, line);) {
        const size_t arrow = line.find("->");
        const size_t equals = line.find(" =", arrow + 2);
        if (!line.starts_with("  ")) {
            pattern = line;
            continue;
        }
        ASSERT_NE(equals, std::string::npos) << line;
        ExpectPair(Filled(pattern, line.substr(0, arrow), "2026-01-01"),
                   Filled(pattern, line.substr(arrow + 2, equals - arrow - 2), "2026-01-02"),
                   equals + 3 < line.size() ? line.substr(equals + 3) : "", options);
    }
}

TEST(InspectDiff, LeavesAndClassesComeGoMoveAndChangeTheirIds)
{
    ExpectChanges(R"(
container c { list l { e:class-id 16; key k; leaf k { type string; e:field-id 1; } % } }
  leaf x { type int8; } leaf y { type string; } -> leaf y { type string; } leaf x { type int8; } =
  -> @leaf x { type string; e:field-id 2; } = -leaf-added /c/l/x >2
  @leaf x { type string; e:field-id 2; } -> = +leaf-removed /c/l/x 2>
  @leaf x { type string; } -> = +leaf-removed /c/l/x >
  @leaf x { type int8; e:field-id 2; } -> @leaf y { type int8; e:field-id 2; } = +leaf-moved /c/l/x /c/l/x>/c/l/y
  -> @container x { e:class-id 32; } = -class-added /c/l/x >32
  @container x { e:class-id 32; } -> = +class-removed /c/l/x 32>
  @container x; -> = +node-removed /c/l/x >
  @container x { e:class-id 32; leaf a { type int8; } } -> = +class-removed /c/l/x 32>; +leaf-removed /c/l/x/a >
container c { list l { e:class-id 16; key k; leaf k { type string; e:field-id 1; } @leaf x { type string; % } } }
  @e:field-id 2; -> @e:field-id 3; = +field-id /c/l/x 2>3
  -> @e:field-id 3; = -field-id /c/l/x >3
  e:field-id 2; -> e:field-id 2; @e:datatype-id 9; = +datatype /c/l/x >9
  e:field-id 2; @e:name2id-key-fid 7; -> e:field-id 2; = +index-map /c/l/x 7>
  @e:field-id 2; e:ref-id-key-fid 2; -> @e:field-id 3; e:ref-id-key-fid 3; = +field-id /c/l/x 2>3; +reference-key /c/l/x 2>3
container c { list l { e:class-id 16; key k; leaf k { type string; e:field-id 1; } @container x { % } } }
  -> @e:class-id 32; = -class-id /c/l/x >32
  @e:class-id 32; -> @e:class-id 33; = +class-id /c/l/x 32>33
  @e:class-id 32; -> = +class-id /c/l/x 32>
  e:class-id 32; -> e:class-id 32; @e:tlmt-sample-id 3; = -sample-id /c/l/x >3
  e:class-id 32; @e:tlmt-sample-id 3; -> e:class-id 32; = +sample-id /c/l/x 3>
  e:class-id 32; @e:ancestor-key-fid '8 9'; -> e:class-id 32; @e:ancestor-key-fid '9 8'; = +ancestor-keys /c/l/x [8,9]>[9,8]
container c { list % leaf a { type string; e:field-id 1; } leaf b { type string; e:field-id 2; } } }
  x { e:class-id 32; @key a; -> x { e:class-id 32; @key 'a b'; = +keys /c/x [1]>[1,2]
container c { % { list l { e:class-id 32; key a; leaf a { type string; e:field-id 1; } } } }
  @container x -> container y = +node-removed /c/x >; +class-moved /c/x/l /c/x/l>/c/y/l; -node-added /c/y >
)");
}

TEST(InspectDiff, SeesWhatReadersOfDataFeel)
{
    ExpectChanges(R"(
container c { @leaf x { type int8; % } }
  @units s; -> @units ms; = +units /c/x s>ms
  -> @units ms; = -units /c/x >ms
  @default 1; -> = +default /c/x 1>
  -> @default 1; = -default /c/x >1
  @config false; -> = -config /c/x false>true
  @config false; mandatory true; -> mandatory true; = +config /c/x false>true
  -> @mandatory true; = +mandatory /c/x false>true
  @must '. > 1'; -> = -must /c/x . > 1>
  must 'a'; @must '. > 1'; -> @must '. > 2'; must 'a'; = +must /c/x . > 1>. > 2
  must '.  >   1'; -> must '. > 1'; =
  -> @when '../y'; = +when /c/x >../y
  @status obsolete; -> = -status /c/x obsolete>current
  @description a; -> @description b; = -description /c/x a>b
container c { @leaf-list x { type int8; % } }
  default 1; @default 2; -> default 1; @default 3; = +default /c/x 2>3
  default 1; default 0x10; -> default +1; default 16; =
  @min-elements 1; -> @min-elements 2; = +min-elements /c/x 1>2
  @min-elements 1; -> = -min-elements /c/x 1>0
  -> @max-elements 9; = +max-elements /c/x unbounded>9
  @max-elements 9; -> @max-elements 10; = -max-elements /c/x 9>10
  -> @ordered-by user; = +ordered-by /c/x system>user
container c { list x { % leaf a { type int8; } leaf b { type int8; } leaf c { type int8; } } }
  @key 'a b'; -> @key 'b a'; = +key /c/x a b>b a
  key a; unique 'b c'; -> key a; unique 'c  b'; =
  key a; @unique 'b a'; -> key a; @unique 'c b'; = +unique /c/x a b>b c
container c { @container d { % } }
  leaf x { type int8; } -> @config false; leaf x { type int8; } = +config /c/d true>false
  -> @presence yes; = +presence /c/d >yes
  @presence yes; -> @presence no; = -presence /c/d yes>no
container c { % }
  @leaf x { type int8; } -> @container x; = +kind /c/x leaf>container
  @leaf-list x { type int8; } -> @leaf x { type int8; } = +kind /c/x leaf-list>leaf
  @leaf x { type int8; } -> choice h { @leaf x { type int8; } } = +case /c/x >h/x; -choice-added /c/h >
typedef t { type int8; % } container c { leaf x { type t; } }
  @units s; -> @units ms; = +units /c/x s>ms
grouping g { @leaf x { type int8; } } uses g { % }
  -> @when 'y'; = +when /x >y
)");
}

TEST(InspectDiff, ComparesWhatTypesAllow)
{
    ExpectChanges(R"(
typedef small { type string { length 1..8; } } container c { @leaf x { % } }
  type uint8 { @range 1..9; } -> type uint8 { @range 1..8; } = +range /c/x 1..9>1..8
  type uint16 { @range 1..9; } -> type uint16 { @range 2..10; } = +range /c/x 1..9>2..10
  type uint64 { @range 1..9; } -> @type uint64; = -range /c/x 1..9>0..18446744073709551615
  type int32 { @range -9..9; } -> type int32 { @range 0..10; } = +range /c/x -9..9>0..10
  type int32 { @range '1..9 | 11'; } -> type int32 { @range '1..8 | 11'; } = +range /c/x 1..9 | 11>1..8 | 11
  type int32 { @range 1..9; } -> type int32 { @range '1..9 | 11'; } = -range /c/x 1..9>1..9 | 11
  type int8 { range '-5..-1 | 0..5'; } -> type int8 { range -5..5; } =
  @type uint8; -> @type int8 { range min..max; } = +type /c/x uint8>int8
  type string { @length 1..9; } -> @type string; = -length /c/x 1..9>
  type small; -> type string { length 1..8; } =
  @type small; -> type string { length 1..8; @pattern 'a*'; } = +pattern /c/x >a*
  type string { @pattern 'a*'; } -> type string { @pattern 'a*' { modifier invert-match; } } = +pattern /c/x a*>not a*
  type bits { @bit a; bit b; } -> @type bits { bit b; bit d; } = +bit /c/x a 0>; +bit /c/x b 1>b 0; -bit /c/x >d 1
  type union { @type int8; type string; } -> @type union { type string; } = +member /c/x int8>
  type union { type small; } -> type union { type string { length 1..8; } } =
container c { leaf x { type decimal64 { % } } }
  fraction-digits 2; @range '0.5..max'; -> fraction-digits 2; @range 0.50..9; = +range /c/x 0.5..92233720368547758.07>0.5..9.0
  @fraction-digits 2; range 1..2; -> @fraction-digits 3; range 1..2; = +fraction-digits /c/x 2>3
container c { leaf x { type decimal64 { fraction-digits 2; } % } }
  default -1.0; -> default -1.00; =
  @default 1.01; -> @default 1.1; = +default /c/x 1.01>1.1
leaf y { type int8; } container c { leaf x { @type union { % } } }
  type int8; type uint8 { @range 1..9; } -> type int8; type uint8 { @range 1..8; } = +range /c/x 1..9>1..8
  type string; -> type string; @type leafref { path '/p:y'; } = -member /c/x >leafref
  type int8; type string; -> type string; type int8; = +member-order /c/x int8 string>string int8
typedef t { type enumeration { enum red { value 4; } enum blue; } } container c { leaf x { @type t { % } } }
  @enum red; enum blue; -> enum blue; = +enum /c/x red 4>
feature f; container c { leaf x { type enumeration { @enum red { % } enum blue; } } }
  -> @if-feature f; = +if-feature /c/x >enum red: f
  @if-feature f; -> = -if-feature /c/x enum red: f>
  -> @status obsolete; = -status /c/x current>enum red: obsolete
identity i; identity j; container c { leaf x { @type identityref { % } } }
  @base i; -> @base j; = +base /c/x m:i>m:j
  base i; @base j; -> base i; = -base /c/x m:j>
container c { leaf y { type int8; } leaf z { type int8; } @leaf x { type leafref { % } } }
  @path '../y'; -> @path '../z'; = +leafref /c/x /m:c/m:y>/m:c/m:z
  @path '../y'; -> @path '/p:c/p:y'; = -leafref-path /c/x ../y>/p:c/p:y
  path '../y'; @require-instance false; -> path '../y'; = +require-instance /c/x false>true
container c { leaf y { type int8; } leaf z { type int8; } leaf x { type union { @type leafref { % } type string; } } }
  path '../y'; -> path '../z'; = +leafref /c/x /m:c/m:y>/m:c/m:z
  @path '../y'; -> @path "/p:c/p:y"; = -leafref-path /c/x ../y>/p:c/p:y
container c { leaf x { @type instance-identifier { % } } }
  -> @require-instance false; = -require-instance /c/x true>false
leaf y { type int8 { % } } leaf x { type leafref { path '../y'; } }
  @range 1..9; -> @range 1..8; = +range /y 1..9>1..8; +range /x 1..9>1..8
)");
}

TEST(InspectDiff, ComparesTheModuleAsAWhole)
{
    ExpectChanges(R"(
%
  @feature f; -> = +feature-removed  f>
  -> @identity i; = -identity-added  >i
  identity i; identity j { @base i; } -> identity i; @identity j; = +identity-base  j m:i>
  @grouping g { leaf x { type int8; } } -> = +definition-removed  grouping g>
  @e:aaa-task-id 5; -> @e:aaa-task-id 6; = -task-id  5>6
  @rpc r { input { leaf x { type int8; } } } -> = +node-removed /r >; +leaf-removed /r/input/x >
  typedef t { type int8 { @range 1..9; } } -> typedef t { type int8 { @range 1..8; } } = +range  typedef t: 1..9>typedef t: 1..8
  typedef t { type int8; @units s; } -> typedef t { type int8; @units ms; } = +units  typedef t: s>typedef t: ms
  feature f; feature g; identity i { @if-feature f; } -> feature f; feature g; identity i { @if-feature g; } = +if-feature  identity i: f>identity i: g
  @grouping g; -> grouping g { @status obsolete; } = -status  grouping g: current>grouping g: obsolete
feature f; @leaf x { type int8; % }
  -> @if-feature f; = +if-feature /x >f
module m { %; }
  @namespace urn:m; prefix p -> @namespace urn:n; prefix p; revision 2026-01-02 = +namespace  urn:m>urn:n
  namespace urn:m; @prefix p -> namespace urn:m; @prefix q; revision 2026-01-02 = -prefix  p>q
module m { namespace urn:m; prefix p; % }
  revision 2026-01-01; @contact a; -> revision 2026-01-01; @contact b; = -no-new-revision  2026-01-01>2026-01-01
  revision 2026-01-01; contact a; -> revision 2026-01-02; contact b; =
  revision 2026-01-01; contact 'a b'; -> /* c */ revision 2026-01-01; contact 'a   b'; =
  @revision 2026-01-01; contact a; -> @contact a; = -no-new-revision  2026-01-01>
  @contact a; -> @contact b; = -no-new-revision  >
  contact a; -> revision 2026-01-01; contact b; =
  contact a; -> contact a; /* c */ =
)");
}

TEST(InspectDiff, ANewNodeBreaksWhereItHasToBeGiven)
{
    ExpectChanges(R"(
container c { % }
  -> @leaf x { type int8; mandatory true; } = +leaf-added /c/x >
  -> @leaf x { type int8; mandatory true; config false; } = -leaf-added /c/x >
  -> @container d { leaf x { type int8; mandatory true; } } = -node-added /c/d >; +leaf-added /c/d/x >
  -> @container d { presence y; leaf x { type int8; mandatory true; } } = -node-added /c/d >; -leaf-added /c/d/x >
  -> @leaf-list x { type int8; min-elements 1; } = +leaf-added /c/x >
  -> @choice h { mandatory true; leaf x { type int8; mandatory true; } } = +choice-added /c/h >; -leaf-added /c/x >
rpc r { % }
  -> input { @leaf x { type int8; mandatory true; } } = +leaf-added /r/input/x >
%
  -> @feature f; leaf x { if-feature f; type int8; mandatory true; } = -feature-added  >f; -leaf-added /x >
)");
}

TEST(InspectDiff, ByIdNamesDoNotMatterNorWhatHasNoIds)
{
    ExpectChanges(R"(
container c { e:class-id 16; % }
  @leaf x { type int8; e:field-id 2; } -> @leaf y { type int8; e:field-id 2; } = -leaf-moved /c/x /c/x>/c/y
  @leaf x { type string; } -> = -leaf-removed /c/x >
  @leaf x { type string; e:field-id 2; } -> = +leaf-removed /c/x 2>
  leaf x { @type string; } -> leaf x { @type int8; } = -type /c/x string>int8
  leaf x { @type string; e:field-id 2; } -> leaf x { @type int8; e:field-id 2; } = +type /c/x string>int8
)",
                  "--by id");
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
    good.AddFile("m.yang", InModule(""));
    bad.AddFile("m.yang", InModule("leaf x { type strng; }"));
    const Result result = Inspect({"diff", "m", "--old", good.Path(), "--new", bad.Path()});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(LineWith(result.err, bad.Path() + "/m.yang:"), "");
}

TEST(InspectDiff, AllComparesTheModulesOfBothDirectories)
{
    EXPECT_EQ(Inspect({"diff", "--all", "docs", "docs"}).exitCode, 2) << "no module";
    ModelDir before;
    ModelDir after;
    const std::string leaf = "container c { leaf x { type int8; } }";
    before.AddFile("m.yang", InModule("include a-part;"));
    before.AddFile("a-part.yang", "submodule a-part { yang-version 1.1; belongs-to m { prefix p; } " + leaf + " }");
    before.Add("old", "");
    before.Add("n", "<augment target-node=\"/m:c\">" + Leaf("y", "string") + "</augment>", "m");
    after.AddFile("m.yang", InModule(leaf, "2026-01-02"));
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
        {"n", {"-no-new-revision  >", "+type /c/y string>int8"}},
        {"new", {"-module-added  >"}},
        {"old", {"+module-removed  >"}},
        {"quelvo-mim-extensions", {}},
    };
    EXPECT_EQ(found, expected);
    after.AddFile("old.yang", "module old {");
    const Result failed = diff("text");
    EXPECT_EQ(failed.exitCode, 3);
    EXPECT_NE(LineWith(failed.err, after.Path() + "/old.yang:1:"), "");
    EXPECT_EQ(LineWith(failed.out, "compatible  n "), "compatible  n     changed, and there is no revision: add one");
    EXPECT_EQ(LineWith(failed.out, "compared"),
              "4 modules compared: 1 new, 0 gone, 1 changed; 1 breaking change, 2 compatible");
}

/* A repository with two revisions of models/m.yang in it; in the working directory, m has changed once more. */
class Repository {
  public:
    Repository()
    {
        RunShell("mkdir " + Models() + " " + dir_.Path() + "/new && git -C " + dir_.Path() + " init -q");
        RunShell("cp " + dir_.Path() + "/*.yin " + dir_.Path() + "/new && mv " + dir_.Path() + "/*.yin " + Models());
        for (const char *type : {"string", "int8"}) {
            Write(type);
            RunShell("cd " + dir_.Path() +
                     " && git add models && git -c user.name=n -c user.email=e -c commit.gpgsign=false commit -q -m x");
        }
        Write("int16");
    }

    const std::string &Path() const { return dir_.Path(); }
    std::string Models() const { return dir_.Path() + "/models"; }

  private:
    void Write(const std::string &type) { dir_.AddFile("models/m.yang", InModule("leaf x { type " + type + "; }")); }

    ModelDir dir_;
};

TEST(InspectDiff, AgainstComparesWithARevisionOfGit)
{
    if (RunShell("command -v git").exitCode != 0)
        GTEST_SKIP() << "no git";
    const Repository repository;
    const std::string models = repository.Models();
    const auto types = [](const std::string &args, const std::string &start = "") {
        const rapidjson::Document json = Json(RunShell(start + " korv-inspect diff " + args + " --format json"));
        const rapidjson::Value &change = (json.HasMember("modules") ? json["modules"][0] : json)["changes"][1];
        return TextOf(change["old"]) + ">" + TextOf(change["new"]) + " " + change["old_place"]["file"].GetString();
    };
    EXPECT_EQ(types("m --against HEAD -d " + models), "int8>int16 HEAD:models/m.yang");
    EXPECT_EQ(types("--all --against HEAD~1 " + models), "string>int16 HEAD~1:models/m.yang");
    EXPECT_EQ(types("m --against HEAD -r --new " + repository.Path()), "int8>int16 HEAD:models/m.yang");
    EXPECT_EQ(types("m --against HEAD -d " + models, "env --ignore-signal=CHLD"), "int8>int16 HEAD:models/m.yang");
    /* As in a hook of git's, where variables name another repository than the directory does. */
    EXPECT_EQ(types("m --against HEAD:models -d " + models, "GIT_DIR=.git"), "int8>int16 HEAD:models/m.yang");
    EXPECT_EQ(
        LineWith(RunShell("korv-inspect diff --all --against HEAD " + repository.Path() + "/new").out, "compared"),
        "1 module compared: 1 new, 0 gone, 0 changed; 0 breaking changes, 1 compatible");
}

TEST(InspectDiff, AgainstSaysWhatKeepsGitFromReading)
{
    if (RunShell("command -v git").exitCode != 0)
        GTEST_SKIP() << "no git";
    const Repository repository;
    const std::string models = repository.Models();
    const std::string damaged = repository.Path() + "/damaged";
    ModelDir outside;
    RunShell("cd " + repository.Path() +
             " && mkdir damaged locked killed cut && echo >damaged/.git && echo >locked/git && " +
             "printf '#!/bin/sh\nkill -9 $$' >killed/git && " +
             R"(printf '#!/bin/sh\ncase "$*" in *cat-file*) %s "$@" | %s -c -1;; *) exec %s "$@";; esac' )" +
             "$(command -v git) $(command -v head) $(command -v git) >cut/git && chmod +x killed/git cut/git");
    const struct {
        std::string start;
        std::string args;
        int exitCode;
        std::string text;
    } failures[] = {
        {"", "m --against=-x --new " + models, 2, "'-x' is no revision of git's"},
        {"", "m --against=:models --new " + models, 2, "':models' is no revision of git's"},
        {"", "m --against=nowhere --new " + models, 2, "has no revision 'nowhere'"},
        {"", "m --against=HEAD:nowhere --new " + models, 2,
         "revision 'HEAD' of the repository has no folder 'nowhere'"},
        {"", "--all --against=HEAD:new --new " + models, 2, "revision 'HEAD' of the repository has no folder 'new'"},
        {"", "m --against=HEAD --new " + repository.Path() + "/new", 2, "of the repository has no folder 'new'"},
        {"", "m --against=HEAD --new " + outside.Path(), 2, "'" + outside.Path() + "' is in no git repository"},
        {"", "m --against=HEAD: --new " + repository.Path(), 3, "'HEAD:'"},
        {"", "m --against=HEAD --new " + damaged, 3,
         "git cannot read the repository of '" + damaged + "': git: fatal: "},
        {"PATH=" + outside.Path(), "m --against=HEAD --new " + models, 3, "--against needs git, which is not found"},
        {"PATH=" + repository.Path() + "/locked", "m --against=HEAD --new " + models, 3,
         "git cannot be run: Permission denied"},
        {"PATH=" + repository.Path() + "/killed", "m --against=HEAD --new " + models, 3,
         "git has been ended by signal 9"},
        {"PATH=" + repository.Path() + "/cut", "m --against=HEAD --new " + models, 3,
         "git does not tell what is in HEAD:models/"},
        {"TMPDIR=/no/where", "m --against=HEAD --new " + models, 3, "no directory can be made in /no/where: "},
    };
    const bool isEmulated = std::string(KORV_BINARY_DIR).ends_with("/emulated");
    for (const auto &[start, args, exitCode, text] : failures) {
        if (isEmulated && text.ends_with("Permission denied"))
            continue; /* qemu does not tell why a program cannot be started */
        const Result result = RunShell("program=$(command -v korv-inspect); " + start + " $program diff " + args);
        EXPECT_EQ(result.exitCode, exitCode) << start << args;
        EXPECT_NE(LineWith(result.err, text), "") << result.err;
    }
    const Result left = RunShell("TMPDIR=" + outside.Path() + " korv-inspect diff m --against HEAD --new " + models +
                                 " >/dev/null; ls -A " + outside.Path());
    EXPECT_EQ(left.out, "quelvo-mim-extensions.yin\n");
}

} // namespace
