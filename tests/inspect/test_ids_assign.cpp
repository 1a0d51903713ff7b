/* ids assign: what gets which ids, and what else of a file may change (nothing). */
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

namespace fs = std::filesystem;

using Files = std::map<std::string, std::string>;

class InspectIdsAssign : public ::testing::Test {
  protected:
    Result Run(const std::string &arguments) { return RunIn("korv-inspect ids assign " + arguments); }

    Result RunIn(const std::string &command) { return RunShell("cd " + dir.Path() + " && " + command); }

    std::string TextOf(const std::string &file)
    {
        std::ostringstream text;
        text << std::ifstream(dir.Path() + "/" + file, std::ios::binary).rdbuf();
        return text.str();
    }

    /* "m" in compact syntax with this body. */
    void AddCompact(const std::string &body, const std::string &name = "m", const std::string &imports = "")
    {
        dir.AddFile(name + ".yang", "module " + name + " {\n  namespace \"urn:" + name + "\";\n  prefix " + name +
                                        ";\n" + imports + body + "}\n");
    }

    /* What `tree` shows of a module's classes and attributes, columns one blank apart; the module must load. */
    std::string Tree(const std::string &module, const std::string &options = "")
    {
        const Result result = RunIn("korv-inspect tree " + module + " " + options);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        const std::string rows = result.out.substr(result.out.find("\n\n") + 2);
        return std::regex_replace(rows, std::regex("([^ \n]) +"), "$1 ");
    }

    ModelDir dir;
};

TEST_F(InspectIdsAssign, ChangesNothingButWhatItAdds)
{
    struct Case {
        const char *file;
        std::string before;
        std::string after;
    };
    const std::string yin = R"(<?xml version="1.0" encoding="ISO-8859-1"?>
<module name="m"
        xmlns="urn:ietf:params:xml:ns:yang:yin:1"
        xmlns:m="urn:m">
	<namespace uri="urn:m"/><prefix value="m"/> <!-- head: )"
                            "\xE9"
                            R"( -->
	<grouping name="g"><leaf name="x"><type name="string"/></leaf></grouping>
	<container name='a>b' ></container>
	<container xmlns:mimext="urn:other" name="c"> <!-- two
	  lines --><uses name="g" /></container>
	<container name="d"><uses name="g"/></container>
</module>
)";
    std::string wantedYin = yin;
    auto replace = [&wantedYin](const std::string &part, const std::string &other) {
        wantedYin.replace(wantedYin.find(part), part.size(), other);
    };
    replace("        xmlns:m=\"urn:m\"",
            "        xmlns:m=\"urn:m\"\n        xmlns:mimext2=\"urn:quelvo:yang:mim-extensions\"");
    replace("<prefix value=\"m\"/>",
            "<prefix value=\"m\"/><import module=\"quelvo-mim-extensions\"><prefix value=\"mimext2\"/></import>");
    replace("name=\"c\">", "name=\"c\"><mimext2:class-id value=\"0x1000\"/>");
    replace("<uses name=\"g\" />",
            "<uses name=\"g\" >\n\t  \t<refine target-node=\"x\">\n\t  \t\t<mimext2:field-id "
            "value=\"1\"/>\n\t  \t</refine>\n\t  </uses>");
    replace("<container name=\"d\"><uses name=\"g\"/>",
            "<container name=\"d\"><mimext2:class-id value=\"0x1001\"/><uses name=\"g\">\n\t\t<refine "
            "target-node=\"x\">\n\t\t\t<mimext2:field-id value=\"1\"/>\n\t\t</refine>\n\t</uses>");
    std::string plainYin = yin;
    for (std::string *text : {&plainYin, &wantedYin}) /* a name that XML alone allows */
        text->erase(text->find("\t<container name='a>b' ></container>\n"), 37);

    const Case cases[] = {
        {"m.yang",
         "module m { // head\r\n"
         "    namespace \"urn:m\"; prefix m;\r\n"
         "    import quelvo-mim-extensions { prefix x; }\r\n"
         "    container c\r\n"
         "    { /* one */ // two\r\n"
         "        leaf a { type string; } leaf b {type uint8;}\r\n"
         "        leaf c { // kept\r\n"
         "            type string;\r\n"
         "            x:field-id 7;\r\n"
         "        }\r\n"
         "    }\r\n"
         "}",
         "module m { // head\r\n"
         "    namespace \"urn:m\"; prefix m;\r\n"
         "    import quelvo-mim-extensions { prefix x; }\r\n"
         "    container c\r\n"
         "    { /* one */ // two\r\n"
         "        x:class-id 0x1000;\r\n"
         "        leaf a { x:field-id 8; type string; } leaf b { x:field-id 9; type uint8;}\r\n"
         "        leaf c { // kept\r\n"
         "            type string;\r\n"
         "            x:field-id 7;\r\n"
         "        }\r\n"
         "    }\r\n"
         "}"},
        {"m.yang",
         "module m {\n\tnamespace 'urn:m';\n\tprefix mimext;\n\n\tgrouping g { container \"in\" + 'ner' { leaf x { "
         "type empty; } } }\n"
         "\tcontainer c { uses g { refine inner { description 'd'; } } }\n\tcontainer d { uses g; }\n}\n",
         "module m {\n\tnamespace 'urn:m';\n\tprefix mimext;\n\timport quelvo-mim-extensions {\n\t\tprefix "
         "mimext2;\n\t}\n\n\tgrouping g { container \"in\" + 'ner' { leaf x { type empty; } } }\n"
         "\tcontainer c { uses g { refine \"inner/x\" { mimext2:field-id 1; mimext2:datatype-id 0x40; } refine inner { "
         "mimext2:class-id 0x1000; description 'd'; } } }\n"
         "\tcontainer d { uses g {\n\t\trefine \"inner\" {\n\t\t\tmimext2:class-id 0x1001;\n\t\t}\n\t\trefine "
         "\"inner/x\" "
         "{\n\t\t\tmimext2:field-id 1;\n\t\t\tmimext2:datatype-id 0x40;\n\t\t}\n\t} }\n}\n"},
        {"m.yin", plainYin, wantedYin},
    };
    for (const Case &one : cases) {
        fs::remove(dir.Path() + "/m.yang");
        dir.AddFile(one.file, one.before);
        const Result dry = Run("m --datatype empty=0x40 --dry-run");
        EXPECT_EQ(dry.exitCode, 0) << dry.err;
        EXPECT_EQ(TextOf(one.file), one.before);
        EXPECT_EQ(Run("m --datatype empty=0x40").exitCode, 0);
        EXPECT_EQ(TextOf(one.file), one.after);
        EXPECT_EQ(RunIn("korv-inspect check m").exitCode, 0);
        EXPECT_EQ(Run("m --datatype empty=0x40").out, "1 module: nothing to do\n");
        EXPECT_EQ(TextOf(one.file), one.after);

        dir.AddFile(one.file, one.before); /* the diff says the same */
        std::ofstream(dir.Path() + "/diff", std::ios::binary) << dry.out;
        const Result patch = RunIn("git apply -p0 --whitespace=nowarn diff");
        EXPECT_EQ(patch.exitCode, 0) << patch.err << dry.out;
        EXPECT_EQ(TextOf(one.file), one.after);
    }
}

TEST_F(InspectIdsAssign, Utf16StaysUtf16)
{
    const std::string yin =
        "<module name='m' xmlns='urn:ietf:params:xml:ns:yang:yin:1'>\n  <namespace uri='urn:m'/>\n"
        "  <prefix value='m'/>\n  <container name='c'>\n    <leaf name='l'>\n      <type "
        "name='string'/>\n    </leaf>\n  </container>\n</module>\n";
    for (const int kind : {0, 1, 2, 3}) {
        const bool isBig = kind % 2 == 1;
        std::string wide = kind >= 2 ? "" : isBig ? "\xFE\xFF" : "\xFF\xFE";
        for (const char c : yin)
            wide += isBig ? std::string{'\0', c} : std::string{c, '\0'};
        dir.AddFile("m.yin", wide);
        EXPECT_EQ(Run("m").exitCode, 0);
        const std::string after = TextOf("m.yin");
        EXPECT_EQ(after.substr(0, 2), wide.substr(0, 2));
        EXPECT_EQ(after.size() % 2, 0U);
        EXPECT_EQ(Tree("m"), "c class 0x1000\n  - l 1 string\n");
    }
}

/* Keys first, then what the classes above give, then the rest; leaves of cases belong to the class around. */
TEST_F(InspectIdsAssign, GivesKeysOfClassesAboveOverLevelsAndModules)
{
    AddCompact(
        "  container top {\n    list a {\n      key \"k2 k1\";\n      leaf z { type string; mimext:field-id 9; }\n"
        "      leaf k1 { type string; mimext:name2id-key-fid 9; }\n      leaf k2 { type uint8; }\n"
        "      choice way { case one { leaf w { type int8; } } leaf v { type int16; } }\n"
        "      container same { mimext:class-id 0x50; leaf s { type string; }\n"
        "        list b { key n; leaf n { type uint16; } leaf-list ll { type string; } } }\n    }\n  }\n",
        "m", "  import quelvo-mim-extensions { prefix mimext; }\n");
    AddCompact(
        "  augment \"/m:top/m:a/m:same/m:b\" {\n    container c { leaf l { type string; } }\n"
        "    leaf extra { type string; }\n  }\n",
        "n", "  import m { prefix m; }\n");
    std::string text = TextOf("m.yang"); /* the class that goes on below itself */
    text.replace(text.find("list a {"), 8, "list a { mimext:class-id 0x50;");
    dir.AddFile("m.yang", text);
    const Result result = Run("--all");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(Tree("m", "--load n"), R"(top
  a class 0x50 keys 10 11
    - z 9 string
    * k1 10 string index map 9
    * k2 11 uint8
    choice way
      case one
        - w 12 int8
      case v
        - v 13 int16
    same class 0x50 keys 10 11
      - s 14 string
      b class 0x1000 key 1 ancestor keys 2 3
        * n 1 uint16
        - ll - string
        - extra 4 string (n)
        c class 0x1001 ancestor keys 1 2 3 (n)
          - l 4 string
)");
    const Result checked = RunIn("korv-inspect check --all --strict");
    EXPECT_EQ(checked.exitCode, 0) << checked.out;
}

TEST_F(InspectIdsAssign, LeavesOutWhatCannotBeAClassAndSaysWhy)
{
    std::string many;
    std::string keys;
    for (int i = 0; i < 17; ++i) {
        many += " leaf k" + std::to_string(i) + " { type uint8; }";
        keys += (i == 0 ? "k" : " k") + std::to_string(i);
    }
    std::string wide;
    for (int i = 0; i < 256; ++i)
        wide += " leaf l" + std::to_string(i) + " { type uint8; }";
    AddCompact(
        "  list top { key k; leaf k { type string; } }\n"
        "  container c {\n    list u { key k; leaf k { type union { type string; type int8; } } }\n"
        "    list many { key \"" +
        keys + "\";" + many + " }\n    container wide {" + wide +
        " }\n"
        "    list way { key k; leaf k { type bits { bit b; } } container in { leaf x { type string; } } }\n"
        "    container held { leaf f { type string; } leaf e { type empty; } }\n"
        "    action act { input { list in { key k; leaf k { type string; } } } }\n  }\n");
    dir.AddFile("m.yang", "module m { yang-version 1.1;" + TextOf("m.yang").substr(10));
    const rapidjson::Document json = Json(Run("m --format json"));
    std::string reasons;
    for (const rapidjson::Value &node : json["nodes_left_out"].GetArray())
        reasons += std::string(node["path"].GetString()) + ": " + node["reason"].GetString() + "\n";
    EXPECT_EQ(reasons, R"(/m:top: no tree holds it: it is not below a container at a module's top
/m:c/u: its key 'k' is of type union, for which there is no datatype
/m:c/many: it has 17 keys, a class has at most 16
/m:c/wide: it has 256 leaves, a class has at most 255
/m:c/way: its key 'k' is of type bits, for which there is no datatype
/m:c/way/in: the list /m:c/way around it is no class: nothing would tell its objects apart
/m:c/held/e: it is of type empty, for which there is no datatype
/m:c/act/input/in: no tree holds it: it is not below a container at a module's top
)");
    EXPECT_EQ(json["classes"].GetInt(), 1);
    EXPECT_EQ(json["attributes"].GetInt(), 1);
    EXPECT_EQ(json["left_out"].GetInt(), 8);
    (void)Tree("m");
}

TEST_F(InspectIdsAssign, TwoUsesNeverShareAndImportedGroupingsStayAsTheyAre)
{
    const std::string body =
        "  grouping once { container o { leaf x { type string; } } }\n"
        "  grouping twice { list t { key k; leaf k { type string; } choice c { container d { leaf y { "
        "type string; } } } } }\n";
    AddCompact(body, "g");
    AddCompact(body +
                   "  grouping outer { uses twice; }\n  container top {\n    uses once;\n    uses outer;\n"
                   "    container in { uses twice; uses g:once; }\n  }\n",
               "m", "  import g { prefix g; }\n");
    const std::string imported = TextOf("g.yang");
    EXPECT_EQ(Run("m").exitCode, 0);
    EXPECT_EQ(TextOf("g.yang"), imported);
    EXPECT_NE(
        TextOf("m.yang").find("grouping once { container o { mimext:class-id 0x1000; leaf x { mimext:field-id 1;"),
        std::string::npos)
        << TextOf("m.yang");
    EXPECT_EQ(Tree("m"), R"(top
  o class 0x1000
    - x 1 string
  t class 0x1001 key 1
    * k 1 string
    choice c
      case d
        d class 0x1002 ancestor key 1
          - y 2 string
  in
    t class 0x1003 key 1
      * k 1 string
      choice c
        case d
          d class 0x1004 ancestor key 1
            - y 2 string
    o class 0x1005
      - x 1 string
)");
}

TEST_F(InspectIdsAssign, RespectsWhatOtherModulesAddAndRepeat)
{
    const std::string mim = "  import quelvo-mim-extensions { prefix x; }\n";
    AddCompact(
        "  grouping g { leaf l { type string; } }\n"
        "  grouping old { container o { x:class-id 5; leaf p { x:field-id 1; type string; } } }\n"
        "  container c { leaf a { type string; } uses g; }\n  container d { uses old; container e { uses old; } }\n",
        "m", mim);
    AddCompact("  augment /m:c { leaf b { x:field-id 9; type string; } }\n  container n { uses m:g; }\n", "n",
               mim + "  import m { prefix m; }\n");
    AddCompact("  augment /m:none { leaf b { type string; } }\n", "broken", "  import m { prefix m; }\n");
    const Result result = Run("m");
    EXPECT_EQ(result.err, "korv-inspect: module 'broken' cannot be loaded: what it adds to others is not looked at\n");
    EXPECT_NE(LineWith(result.out,
                       "m.yang:6:18: /m:d/e/o is left out: its grouping gives it class id 0x5, as it does "
                       "/m:d/o: the registry has neither, so that both keep it"),
              "")
        << result.out;
    EXPECT_EQ(Tree("m", "--load n --path /c"),
              "c class 0x1000\n  - a 10 string\n  - l 11 string\n  - b 9 string (n)\n");
    EXPECT_EQ(Tree("n"), "n\n  - l - string\n\naugment 0 of /m:c\n  c class 0x1000 (m)\n    - b 9 string\n");

    AddCompact(/* what a deviation removes keeps its ids */
               "  container c { x:class-id 5; leaf a { x:field-id 1; type string; } leaf b { type string; }\n"
               "    container r { x:class-id 0x1000; } }\n  container d { leaf l { type string; } }\n",
               "m", mim);
    AddCompact(
        "  deviation /m:c/m:a { deviate not-supported; }\n  deviation /m:c/m:r { deviate not-supported; }\n"
        "  augment /m:d { leaf f { type string; } }\n",
        "n", "  import m { prefix m; }\n");
    RunIn("rm broken.yang");
    EXPECT_EQ(Run("m --dry-run --exclude /c --include /d/l").err,
              "korv-inspect: module 'n' deviates others: what it adds to them, or uses of them, is not looked at\n"
              "m.yang:7:17: /m:d/l is left out: no class can be made of it: it is neither a list nor a container\n"
              "1 module, 1 file to change: 1 class, 1 attribute, 0 ancestor keys, 0 datatypes; left out: 1 node\n");
    EXPECT_EQ(Run("--all").exitCode, 0);
    EXPECT_EQ(Tree("m"),
              "c class 0x5\n  - a 1 string\n  - b 2 string\n  r class 0x1000\nd class 0x1001\n  - l 1 string\n");

    /* of two revisions of a module an import brings the other one */
    const std::string old = "  import m { prefix m; }\n  revision 2020-01-01;\n";
    AddCompact("  augment /m:d { container o { x:class-id 0x1002; leaf p { type string; } } }\n", "n", mim + old);
    RunIn("mv n.yang n@2020-01-01.yang");
    AddCompact("  container e { leaf l { type string; } }\n", "n");
    AddCompact("", "u", "  import n { prefix n; revision-date 2020-01-01; }\n");
    const Result both = Run("m u n --dry-run --include /m:d/n:o/p");
    EXPECT_NE(LineWith(both.err, "n@2020-01-01.yang:7:51: /m:d/n:o/p is left out: no class can be made of it"), "")
        << both.err;
    EXPECT_NE(LineWith(both.out, "+  container e { mimext:class-id 0x1003; "), "") << both.out;
}

/* The ids of a class that takes them from the one below it are written there, for keys as well. */
TEST_F(InspectIdsAssign, NamesKeysAsTheLibraryFindsThem)
{
    AddCompact(
        "  container top {\n    list l { x:class-type leafref; key k;\n      leaf k { type leafref { path ../in/k; } "
        "}\n"
        "      container in { leaf a { type string; } leaf k { type string; x:name2id-key-fid 2; }\n"
        "        container deep { leaf d { type string; } } } }\n"
        "    list h { key k; leaf-list hidden { type string; } leaf k { type string; x:name2id-key-fid 9; }\n"
        "      leaf i { type uint8; x:field-id 9; } container deep { leaf d { type string; } } }\n  }\n",
        "m", "  import quelvo-mim-extensions { prefix x; }\n");
    EXPECT_EQ(Run("m").exitCode, 0);
    EXPECT_EQ(RunIn("korv-inspect tree m").err, "");
    EXPECT_EQ(Tree("m"), R"(top
  l class 0x1000 key 3
    * k 3 string index map 2
    in class 0x1000 key 3
      - a 4 string
      * k 3 string index map 2
      deep class 0x1001 ancestor key 1
        - d 2 string
  h class 0x1002 key 10
    - hidden - string
    * k 10 string index map 9
    - i 9 uint8
    deep class 0x1003 ancestor key 1
      - d 2 string
)");
}

TEST_F(InspectIdsAssign, WritesTheFilesThatAreMeant)
{
    const std::string body = "  container c { leaf l { type strange; } leaf m { type empty; } }\n";
    const std::string type = "  typedef strange { type union { type string; type int8; } }\n";
    AddCompact(body, "m", "  revision 2026-01-01;\n" + type);
    RunIn(
        "mv m.yang m@2026-01-01.yang; sed s/2026/2025/ m@2026-01-01.yang > m@2025-01-01.yang; mkdir more; "
        "printf '[ids]\ndatatype = [\"m:strange=0x41\", \"o:strang=1\", \"other:t=2\", \"union=3\"]' "
        "> korv-inspect.toml");
    dir.AddFile("more/o.yang",
                "module o { namespace 'urn:o'; prefix o; typedef strange { type empty; } container c { leaf "
                "l { type strange; } } }\n");
    const Result result = Run("m@2025-01-01");
    EXPECT_EQ(result.out,
              R"(m@2025-01-01.yang:9:110: /m:c/m is left out: it is of type empty, for which there is no datatype
1 module, 1 file changed: 1 class, 1 attribute, 0 ancestor keys, 1 datatype; left out: 1 node
'korv-inspect ids lock' keeps these ids in 'korv-ids.json'
)") << TextOf("m@2025-01-01.yang");
    EXPECT_EQ(RunIn("grep -l mimext *.yang more/*").out, "m@2025-01-01.yang\n");
    EXPECT_EQ(Run("--all --install-path more").exitCode, 0);
    EXPECT_EQ(RunIn("grep -l mimext *.yang more/*").out, "m@2025-01-01.yang\nm@2026-01-01.yang\n");
    EXPECT_EQ(Run("o -d more -d . --registry ids.json").err,
              "korv-inspect: there is no registry 'ids.json': ids of nodes that have gone are not known\n"
              "korv-inspect: datatype 'o:strang': module 'o' has no such typedef: did you mean 'strange'?\n");
    EXPECT_EQ(RunIn("korv-inspect ids lock o -d more -d . --registry ids.json && ls *.json").exitCode, 0);
}

TEST_F(InspectIdsAssign, KeepsToTheRegistry)
{
    dir.AddFile("korv-ids.json", R"({
  "version": 1,
  "ranges": [
    {"module": "m", "first": "0x10", "last": "0x12"},
    {"module": "other", "first": "0x1000", "last": "0x1001"}
  ],
  "ids": [
    {"class": "0x10", "path": "/m:gone", "gone": "2026-01-01"},
    {"class": "0x12", "path": "/m:back"},
    {"class": "0x12", "field": 1, "path": "/m:back/gone", "gone": ""},
    {"class": "0x12", "field": 5, "path": "/m:back/l"}
  ]
}
)");
    AddCompact(
        "  container gone { leaf l { type string; } }\n"
        "  container back { leaf n { type string; } leaf l { type string; } }\n");
    AddCompact("  container c { leaf l { type string; } }\n", "n");
    const Result result = Run("m n");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(Tree("m"), "gone class 0x11\n  - l 1 string\nback class 0x12\n  - n 6 string\n  - l 5 string\n");
    EXPECT_EQ(Tree("n"), "c class 0x1002\n  - l 1 string\n");

    AddCompact("  container a { leaf l { type string; } }\n  container b { leaf l { type string; } }\n");
    const std::string before = TextOf("m.yang");
    const Result full = Run("m");
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_EQ(full.err,
              "korv-inspect: module 'm' has no class id left in 0x10..0x12: give it a further range; nothing "
              "is written\n");
    EXPECT_EQ(TextOf("m.yang"), before);
}

TEST_F(InspectIdsAssign, RulesAndPathsChooseTheClasses)
{
    const std::string body =
        "  container a { container b { list l { key k; leaf k { type string; } } leaf x { type "
        "string; } } }\n";
    const std::map<std::string, std::string> cases = {
        {"", "/a/b /a/b/l "},
        {"--classes lists", "/a/b/l "},
        {"--classes all", "/a /a/b /a/b/l "},
        {"--classes lists --include /m:a", "/a /a/b/l "},
        {"--exclude /a/b/l", "/a/b "},
    };
    for (const auto &[options, expected] : cases) {
        AddCompact(body);
        EXPECT_EQ(Run("m " + options).exitCode, 0);
        std::istringstream lines(RunIn("korv-inspect dump m | grep -v 'class 0x0 '").out);
        std::string classes;
        for (std::string line; std::getline(lines, line);)
            classes += line.starts_with("/") ? line.substr(0, line.find(' ')) + " " : "";
        EXPECT_EQ(classes, expected) << options;
    }
    AddCompact(body);
    const Result missed = Run("m --exclude /a/c");
    EXPECT_EQ(missed.exitCode, 2);
    EXPECT_EQ(missed.err, "korv-inspect: --exclude: the models have no node /a/c: did you mean '/a/b'?\n");
}

TEST_F(InspectIdsAssign, WritesAllFilesOrNone)
{
    AddCompact("  container c { leaf l { type string; } }\n");
    AddCompact("  container c { leaf l { type strng; } }\n", "broken");
    AddCompact("  container c { leaf l { type string; } } // " + std::string(5000, '-') + "\n", "n");
    const std::string before = TextOf("m.yang");
    const auto expectNothingDone = [&](const Result &result, int exitCode, const std::string &text) {
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_NE(LineWith(result.err, text), "") << result.err;
        EXPECT_EQ(TextOf("m.yang"), before);
        EXPECT_EQ(RunIn("ls").out, "broken.yang\nm.yang\nn.yang\nquelvo-mim-extensions.yin\n");
    };
    expectNothingDone(Run("m broken"), 3, "module 'broken' cannot be loaded");
    expectNothingDone(RunIn("trap '' XFSZ; ulimit -f 8; korv-inspect ids assign m n"), 1,
                      "cannot write 'n.yang': File too large; nothing is written");
    expectNothingDone(Run("m --first-class 0xFFFFFFFF"), 2, "--first-class: '0xFFFFFFFF' is no class id");
    expectNothingDone(Run("- <m.yang"), 2, "'ids assign' changes files: standard input is none");
}

} // namespace
