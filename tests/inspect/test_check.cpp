/* check: every finding, and the statement that it points at. */
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <regex>

#include "inspect/run_inspect.h"
#include "support/models.h"
#include "support/unprivileged.h"

using namespace test;

namespace {

std::string LineAt(const std::string &file, uint32_t line)
{
    std::ifstream stream(file);
    std::string text;
    for (uint32_t i = 0; i < line; ++i)
        std::getline(stream, text);
    return text;
}

/* The name on a line of a YIN file, or "class-id 1" for a line that begins with an extension statement. */
std::string NameAt(const std::string &file, uint32_t line)
{
    const std::string text = LineAt(file, line);
    std::smatch found;
    if (std::regex_search(text, found, std::regex("^<mimext:([a-z0-9-]+) value=\"([^\"]*)")))
        return found[1].str() + " " + found[2].str();
    return std::regex_search(text, found, std::regex("name=\"([^\"]*)")) ? found[1].str() : "?";
}

/* "leaf x" of a line that holds the head of one statement, in either syntax. */
std::string StatementAt(const std::string &file, uint32_t line)
{
    std::string text =
        std::regex_replace(LineAt(file, line), std::regex("^ +<?|[a-z-]+=|\"| xmlns.*|/?>.*| \\{|;"), "");
    return text;
}

class InspectCheck : public ::testing::Test {
  protected:
    Result Run(std::vector<std::string> args)
    {
        args.insert(args.begin(), "check");
        args.insert(args.end(), {"-d", dir.Path()});
        return Inspect(args);
    }

    /* "SEVERITY? NAME at STATEMENT" of each finding, in order; the statement is what stands on the finding's line. */
    std::vector<std::string> Findings(std::vector<std::string> args)
    {
        args.insert(args.end(), {"--format", "json"});
        std::vector<std::string> findings;
        for (const Told &finding : FindingsOf(Run(args)))
            findings.push_back(finding.rule +
                               (finding.line != 0 ? " at " + NameAt(finding.file, finding.line) : std::string()));
        return findings;
    }

    using Texts = std::vector<std::string>;
    ModelDir dir;
};

TEST_F(InspectCheck, FindsNothingInTheExamples)
{
    const Result result = InspectExamples({"check", "--all"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "9 modules checked: no errors, no warnings\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(InspectCheck, AttributeIds)
{
    dir.Add("m", Container("c", ClassId("1") + Leaf("one", "string", Id("1")) + Leaf("none", "string") +
                                    Leaf("again", "string", Id("1")) + Leaf("far", "string", Id("0x101")) +
                                    "<leaf-list name=\"tags\"><type name=\"string\"/></leaf-list>\n") +
                     Container("plain", Leaf("free", "string")));
    EXPECT_EQ(Findings({"m"}), (Texts{"missing-field-id at none", "duplicate-field-id at again",
                                      "field-id-range at far", "duplicate-field-id at far"}));
    const Result text = Run({"m"});
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_EQ(LineWith(text.out, "at most"), "");
    EXPECT_NE(LineWith(text.out,
                       "leaf 'far' of class /c (0x1): attribute ids end at 255, so that field-id 0x101 becomes 1 "
                       "[field-id-range]"),
              "")
        << text.out;
    EXPECT_TRUE(text.out.ends_with("1 module checked: no errors, 4 warnings\n"));
}

TEST_F(InspectCheck, AttributeIdsOfAClassThatSpreadsOverNodesAndCases)
{
    const std::string cases = "<choice name=\"kind\"><case name=\"a\">\n" + Leaf("first", "string", Id("5")) +
                              "</case>\n" + Leaf("second", "string", Id("5")) + "</choice>\n";
    const std::string same = Container("more", ClassId("1") + "\n" + Leaf("third", "string", Id("2")));
    dir.Add("m", Container("c", List("l", "k", ClassId("1") + Leaf("k", "string", Id("2")) + cases + same)));
    EXPECT_EQ(Findings({"m"}), (Texts{"duplicate-field-id at second", "duplicate-field-id at third"}));
    /* A class of class-type 'leafref' repeats the ids of the class below it on purpose. */
    EXPECT_EQ(InspectExamples({"check", "example-qos"}).out, "1 module checked: no errors, no warnings\n");
}

TEST_F(InspectCheck, Keys)
{
    std::string names;
    std::string leaves;
    for (int i = 1; i <= 9; ++i) {
        names += (i > 1 ? " k" : "k") + std::to_string(i);
        leaves += Leaf("k" + std::to_string(i), "string", i == 9 ? "" : Id(std::to_string(i)));
    }
    dir.Add("m", Container("c", List("l", names, "\n" + ClassId("1") + leaves)));
    EXPECT_EQ(Findings({"m"}), (Texts{"key-without-field-id at k9"}));
    dir.Add("n", Container("c", List("l", names, ClassId("1") + leaves + Leaf("x", "string", Id("20")))) +
                     "<deviation target-node=\"/p:c/p:l/p:k9\"><deviate value=\"add\">" + Id("9") +
                     "</deviate></deviation>\n");
    EXPECT_EQ(Findings({"n"}), (Texts{"many-keys at l"}));
}

TEST_F(InspectCheck, AncestorKeys)
{
    const std::string map = Ext("ancestor-key-fid", "1", Id("10")) + Ext("ancestor-key-fid", "2", Id("3"));
    const std::string inner =
        List("clash", "n", ClassId("2") + map + Leaf("n", "string", Id("3"))) +
        List("without", "n", ClassId("3") + Leaf("n", "string", Id("1"))) +
        Container("taken", ClassId("4") + Ext("ancestor-key-fid", "7 8") + Leaf("n", "string", Id("7"))) +
        Container("few", ClassId("6") + Ext("ancestor-key-fid", "7")) +
        Container("hollow", ClassId("7") + Ext("ancestor-key-fid", "2", Id("8")) +
                                Ext("ancestor-key-fid", "1", "\n" + Ext("datatype-id", "9"))) +
        Container("fine", ClassId("5") + Ext("ancestor-key-fid", "7 8"));
    dir.Add("m", Container("c", List("l", "a b",
                                     ClassId("1") + Leaf("a", "string", Id("1")) + Leaf("b", "string", Id("2")) + "\n" +
                                         inner)));
    EXPECT_EQ(Findings({"m"}), (Texts{"unmapped-ancestor-key at clash", "unmapped-ancestor-key at without",
                                      "ancestor-key-collision at ancestor-key-fid 7 8", "unmapped-ancestor-key at few",
                                      "unmapped-ancestor-key at hollow", "no-effect at datatype-id 9"}));
    const std::string text = Run({"m"}).out;
    for (const char *part :
         {"1 key of class /c/l (0x1) has no attribute id in class /c/l/clash (0x2): the field-id 3 of ancestor-key-fid "
          "2 is the attribute id of leaf 'n' as well (line 18) [",
          "2 keys of class /c/l (0x1) have no attribute id in class /c/l/without (0x3): add an ancestor-key-fid for "
          "keys 1, 2 [",
          "class /c/l/few (0x6): add an attribute id for key 2 to its ancestor-key-fid [",
          "class /c/l/hollow (0x7): write a field-id into ancestor-key-fid 1 ["})
        EXPECT_NE(LineWith(text, part), "") << part << text;
}

TEST_F(InspectCheck, ClassIdsWithinAModuleAndAcrossModules)
{
    dir.Add("m", Container("c", Container("a", ClassId("0x10")) + Container("b", ClassId("0x10")) +
                                    Container("d", ClassId("0x11") + Container("same", ClassId("0x11")))));
    dir.Add("n",
            Container("e", ClassId("0x11")) + "<augment target-node=\"/m:c\">\n" + Container("f", ClassId("0x12")) +
                "</augment>",
            "m");
    EXPECT_EQ(Findings({"m"}), (Texts{"duplicate-class-id at class-id 0x10"}));
    EXPECT_EQ(Findings({"n"}), (Texts{"duplicate-class-id at class-id 0x11"}))
        << "with a node that an augment's target tree shows";
    EXPECT_EQ(Findings({"m", "n"}),
              (Texts{"duplicate-class-id at class-id 0x10", "duplicate-class-id at class-id 0x11"}));
    const std::string text = Run({"m", "n"}).out;
    EXPECT_NE(LineWith(text, "class /e (0x11) has the class id of /c/d of module 'm' (" + dir.Path() + "/m.yin:"), "")
        << text;
}

TEST_F(InspectCheck, StatementsThatDoNotSayWhatTheySeemToSay)
{
    const std::string ref = "<type name=\"leafref\"><path value=\"../s/k\"/></type>";
    const std::string inner = List("inner", "n", ClassId("4") + Leaf("n", "string", Id("5"))) +
                              List("fine", "k", ClassId("4") + Leaf("k", "string", Id("1")));
    dir.Add("quelvo-bras-user-manage",
            Ext("aaa-task-id", "zz") +
                Container(
                    "top",
                    "\n" + ClassId("zz") + Ext("field-id", "3") +
                        Container(
                            "large",
                            ClassId("0x1FFFFFFFF") + ClassId("4") + Leaf("twice", "string", Id("1") + Id("2")) +
                                Leaf("word", "string", Id("abc")) + Leaf("none", "string", Id("")) +
                                Leaf("far", "string", Id("9") + Ext("name2id-key-fid", "300")) +
                                Leaf("all", "string", "\n" + Id("0xFFFFFFFF") + Ext("name2id-key-fid", "0xFFFFFFFF")) +
                                Leaf("eight", "string", Id("0500")) + Leaf("less", "string", Id("-3")) +
                                Container("minus", Ext("tlmt-sample-id", "-1") + ClassId("-2")) +
                                "<leaf-list name=\"tags\"><type name=\"string\"/>" + Id("3") + "</leaf-list>\n") +
                        Container("alone", ClassId("6") + Ext("ancestor-key-fid", "10")) +
                        List("list", "k",
                             "\n" + ClassId("4") + Leaf("k", "string", Id("1")) + inner +
                                 Container("more", ClassId("7") + Ext("ancestor-key-fid", "10 11"))) +
                        List("shapeless", "k",
                             Ext("class-type", "leafref") + Leaf("k", ref) + Container("plain", "") +
                                 Container("s", ClassId("8") + Leaf("k", "string", Id("1"))))));
    std::vector<std::string> findings = Findings({"quelvo-bras-user-manage"});
    std::erase_if(findings, [](const std::string &text) { return text.starts_with("duplicate-"); });
    EXPECT_EQ(findings, (Texts{"bad-number at aaa-task-id zz",
                               "bad-number at class-id zz",
                               "no-effect at field-id 3",
                               "bad-number at class-id 0x1FFFFFFFF",
                               "repeated-statement at class-id 4",
                               "repeated-statement at field-id 2",
                               "bad-number at word",
                               "bad-number at none",
                               "field-id-range at name2id-key-fid 300",
                               "misleading-number at field-id 0xFFFFFFFF",
                               "misleading-number at name2id-key-fid 0xFFFFFFFF",
                               "misleading-number at eight",
                               "bad-number at less",
                               "bad-number at tlmt-sample-id -1",
                               "bad-number at class-id -2",
                               "no-effect at tags",
                               "extra-ancestor-key at ancestor-key-fid 10",
                               "dropped-key at inner",
                               "extra-ancestor-key at ancestor-key-fid 10 11",
                               "no-effect at shapeless"}));
    const std::string text = Run({"quelvo-bras-user-manage"}).out;
    EXPECT_NE(LineWith(text, "class-id '0x1FFFFFFFF' has more than 32 bits: it counts as 0xffffffff"), "") << text;
    EXPECT_NE(LineWith(text, "leaf 'word': field-id 'abc' is no number: it counts as 0"), "");
    EXPECT_NE(LineWith(text, "leaf 'eight': field-id '0500' is octal and counts as 64: "), "");
    EXPECT_NE(LineWith(text, "leaf 'less': field-id '-3' is no number: it counts as 253"), "");
    EXPECT_NE(LineWith(text, "container 'minus': tlmt-sample-id '-1' is no number: it counts as absent"), "");
    EXPECT_NE(LineWith(text, "container 'minus': class-id '-2' is no number: it counts as 0xfffffffe"), "");
    EXPECT_NE(LineWith(text, "container 'more': it has 2 ancestor keys, but the lists above it have 1 key"), "");
}

TEST_F(InspectCheck, WhatIsReadOnOneNodeHasAnEffect)
{
    const std::string leaf = "grouping g { leaf x { e:field-id 1; type string; } } ";
    const std::string node = "grouping g { container in { e:class-id 2; } } ";
    const std::string box = "container box { e:class-id 1; uses g; } ";
    const std::string keys =
        "container c { list l { e:class-id 1; key k; leaf k { e:field-id 1; type string; } "
        "container d { e:class-id 2; e:ancestor-key-fid ";
    const struct {
        std::string body;
        const char *rules;
    } cases[] = {
        {leaf + "notification n { uses g; } list l { key x; uses g; }", " no-effect"},
        {leaf + "notification n { uses g; } list l { key x; uses g; } " + box, ""},
        {node + "rpc r { output { uses g; } }", " class-without-tree"},
        {node + "rpc r { output { uses g; } } " + box, ""},
        {"grouping g { container in { e:tlmt-sample-id 5; } } " + box, " no-effect"},
        {"grouping g { container in { e:tlmt-sample-id 5; } } " + box +
             "container b { uses g { refine in { e:class-id 3; } } }",
         ""},
        {node + "container box { e:class-id 1; uses g { refine in { e:class-id 0; } } }", ""},
        {node + "container box { e:class-id 0; uses g; }", " misleading-number"},
        {"container box { e:class-id 1; anydata any { e:field-id 1; } }", " no-effect"},
        {"rpc r;", " no-class"},
        {"e:aaa-task-id 5; rpc r;", ""},
        {"e:aaa-task-id 5; container c;", " no-class"},
        {"container c; " + leaf, ""},
        {keys + "1 { e:field-id 10; e:field-id 11; } } } }", " repeated-statement"},
        {keys + "0; } } }", " unmapped-ancestor-key"},
    };
    for (const auto &[body, rules] : cases) {
        dir.AddFile("m.yang",
                    "module m { yang-version 1.1; namespace \"urn:m\"; prefix p; import "
                    "quelvo-mim-extensions { prefix e; } " +
                        body + " }");
        std::string found;
        for (const Told &finding : FindingsOf(Run({"m", "--format", "json"})))
            found += " " + finding.rule;
        EXPECT_EQ(found, rules) << body;
    }
    EXPECT_NE(LineWith(Run({"m"}).out, "'0' in its ancestor-key-fid is no attribute id: write one for key 1 ["), "");

    dir.Add("t", "<grouping name=\"g\">\n" + Leaf("x", "string", Id("1")) + "</grouping>\n");
    dir.Add("r", "<rpc name=\"r\"><input><uses name=\"t:g\"/></input></rpc>\n", "t");
    std::filesystem::remove(dir.Path() + "/m.yang");
    EXPECT_EQ(Findings({"r"}), Texts{}) << "others may use it";
    EXPECT_EQ(Findings({"--all"}), Texts{"no-effect at x"});
    dir.Add("n", Container("c", ClassId("1") + "<uses name=\"t:g\"/>"), "t");
    EXPECT_EQ(Findings({"--all"}), Texts{});
}

TEST_F(InspectCheck, LengthsThatDumpsAndLookupsCut)
{
    const std::string name(65, 'n');
    std::string deep = Leaf("x", "string");
    for (int i = 4; i >= 0; --i)
        deep = "\n" + Container(std::string(60, 'd') + std::to_string(i), deep);
    dir.Add("m", Container("c", Container(name, Leaf(name, "string")) + deep));
    const std::string lastDeep = std::string(60, 'd') + "4";
    EXPECT_EQ(Findings({"m"}),
              (Texts{"no-class at m", "long-name at " + name, "long-name at " + name, "long-path at " + lastDeep}));
}

TEST_F(InspectCheck, LeavesOfChoicesBeyondThoseThatAreListed)
{
    for (int num : {255, 256}) {
        std::string leaves;
        for (int i = 0; i < num; ++i)
            leaves += Leaf("l" + std::to_string(i), "string");
        dir.Add("m", Container("c", "<choice name=\"ch\">" + leaves + "</choice>"));
        EXPECT_EQ(Findings({"m"}),
                  num > 255 ? (Texts{"no-class at m", "many-case-leaves at c"}) : Texts{"no-class at m"});
    }
}

TEST_F(InspectCheck, ClassesOutsideTreesAndManyAugments)
{
    std::string augments;
    for (int i = 0; i < 18; ++i)
        augments += "<augment target-node=\"/p:c\">" + Container("a" + std::to_string(i), "") + "</augment>\n";
    dir.Add("m", List("top", "k", ClassId("1") + Leaf("k", "string", Id("1"))) +
                     List("free", "k", Leaf("k", "string")) + Container("c", "") + augments);
    EXPECT_EQ(Findings({"m"}), (Texts{"many-augments at m", "class-without-tree at class-id 1"}));
}

TEST_F(InspectCheck, PointsIntoGroupingsSubmodulesAugmentsAndImpliedCases)
{
    dir.Add("types", "<grouping name=\"far\">\n" + Leaf("from-types", "string") + "</grouping>\n");
    dir.AddFile("part.yin",
                "<submodule name=\"part\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\" "
                "xmlns:mimext=\"urn:quelvo:yang:mim-extensions\">\n<yang-version value=\"1.1\"/>"
                "<belongs-to module=\"m\"><prefix value=\"p\"/></belongs-to>\n"
                "<import module=\"quelvo-mim-extensions\"><prefix value=\"mimext\"/></import>\n" +
                    Container("sub", ClassId("9") + Leaf("in-part", "string")) + "</submodule>\n");
    dir.Add("m",
            "<include module=\"part\"/>\n<grouping name=\"near\">\n" + Leaf("from-near", "string") + "</grouping>\n" +
                Container("c", ClassId("1") + "<uses name=\"near\"/><uses name=\"types:far\"/>" +
                                   "<choice name=\"ch\">\n" + Leaf("implied", "string") + "</choice>\n") +
                "<augment target-node=\"/p:c/p:ch\">\n" + Leaf("added", "string") + "</augment>\n",
            "types");
    /* In the order of files and lines. */
    EXPECT_EQ(Findings({"m"}),
              (Texts{"missing-field-id at from-near", "missing-field-id at implied", "missing-field-id at added",
                     "missing-field-id at in-part", "missing-field-id at from-types"}));
}

TEST_F(InspectCheck, PointsIntoTheFileOfTheNewestRevision)
{
    const std::string body = Container("c", ClassId("1") + Leaf("x", "string"));
    dir.AddFile("m@2026-01-01.yin", Module("m", "<revision date=\"2026-01-01\"/>\n" + body));
    dir.AddFile("m@2025-01-01.yin", Module("m", "<revision date=\"2025-01-01\"/>\n" + body));
    EXPECT_NE(LineWith(Run({"m"}).out, dir.Path() + "/m@2026-01-01.yin:"), "");
    EXPECT_EQ(Findings({"--all"}), (Texts{"unread-file", "missing-field-id at x"})) << "one module in two files";
}

TEST_F(InspectCheck, PointsAtTheStatementsThatItIsAboutInBothSyntaxes)
{
    dir.AddFile("m.yang", R"(module m {
  namespace "urn:m"; prefix p;
  import quelvo-mim-extensions { prefix mimext; }
  grouping g {
    leaf plain { type string; }
    leaf again {
      type string;
      mimext:field-id 1;
    }
  }
  container c {
    mimext:class-id 7;
    leaf first {
      mimext:field-id 1;
      type string;
    }
    uses g {
      refine plain {
        mimext:field-id 300;
      }
    }
    container d {
      mimext:class-id 7x;
      mimext:class-id 8;
    }
    leaf-list tags {
      type string;
      mimext:datatype-id 1;
    }
  }
  container e {
    mimext:class-id 7;
  }
})");
    ASSERT_EQ(RunShell("cd " + dir.Path() + " && mkdir yin && korv-inspect convert m.yang -o yin/").exitCode, 0);
    for (const char *file : {"/m.yang", "/yin/m.yin"}) {
        Texts findings;
        for (const Told &finding : FindingsOf(Run({dir.Path() + file, "--format", "json"}))) {
            EXPECT_EQ(finding.file, dir.Path() + file);
            const std::string line = LineAt(finding.file, finding.line);
            EXPECT_EQ(finding.column, line.find_first_not_of(' ') + 1) << line;
            EXPECT_EQ(finding.section, "");
            findings.push_back(finding.rule + " at " + StatementAt(finding.file, finding.line));
        }
        EXPECT_EQ(findings, (Texts{"duplicate-field-id at mimext:field-id 1", "field-id-range at mimext:field-id 300",
                                   "bad-number at mimext:class-id 7x", "repeated-statement at mimext:class-id 8",
                                   "no-effect at mimext:datatype-id 1", "duplicate-class-id at mimext:class-id 7"}))
            << file;
    }
}

TEST_F(InspectCheck, FilesThatStandBesideOneAnother)
{
    dir.Add("m", Container("c", ClassId("1") + Leaf("x", "string")));
    dir.AddFile("m@backup.yin", "not YIN");
    dir.AddFile("m@2020-01-01.yin", "nor this");
    const Texts unread = {"missing-field-id at x", "unread-file", "unread-file"};
    EXPECT_EQ(Findings({"m"}), unread);
    EXPECT_EQ(Findings({"--all"}), unread);
    EXPECT_NE(LineWith(Run({"m"}).out, "/m@backup.yin: warning: nothing reads the file: 'backup' is no revision"), "");
    EXPECT_NE(LineWith(Run({"m"}).out, "/m@2020-01-01.yin: warning: nothing reads the file: a load by name takes '"),
              "");
    dir.AddFile("m@2020-01-01.yin", Module("m", "<revision date=\"2020-01-01\"/>"));
    dir.Add("n", "<import module=\"m\"><prefix value=\"m\"/><revision-date date=\"2020-01-01\"/></import>");
    EXPECT_EQ(LineWith(Run({"--all"}).out, "/m@2020-01-01.yin: warning: nothing"), "") << "an import asks for it";
    EXPECT_EQ(LineWith(Run({dir.Path() + "/m@2020-01-01.yin"}).out, "a load by name"), "")
        << "nor is it loaded by name";
    std::filesystem::remove(dir.Path() + "/n.yin");
    std::filesystem::remove(dir.Path() + "/m@backup.yin");
    std::filesystem::remove(dir.Path() + "/m.yin");
    dir.AddFile("m@2020-01-01.yin",
                Module("m", "<revision date=\"2020-01-01\"/>" + Container("c", ClassId("1") + Leaf("old", "string"))));
    EXPECT_EQ(Findings({"m"}), (Texts{"missing-field-id at old"}));

    dir.AddFile("m@2020-01-01.yang", "module m { }");
    const std::string twins = dir.Path() + "/m@2020-01-01.yin: warning: '" + dir.Path() +
                              "/m@2020-01-01.yang' stands beside it: of the two, a load by name reads the .yin file "
                              "alone [two-syntaxes]";
    for (const std::vector<std::string> &args :
         std::vector<std::vector<std::string>>{{"m"}, {"--all"}, {dir.Path() + "/m@2020-01-01.yin"}})
        EXPECT_EQ(LineWith(Run(args).out, "two-syntaxes"), twins) << args.front();
}

TEST_F(InspectCheck, FilesThatNoLoadReaches)
{
    const auto module = [](const std::string &name, const std::string &body) {
        return "module " + name + " { namespace \"urn:" + name + "\"; prefix p; " + body + " }";
    };
    const auto submodule = [](const std::string &name, const std::string &body = "") {
        return "submodule " + name + " { belongs-to broken { prefix b; } " + body + " }";
    };
    const struct {
        std::string file;
        std::string text;
        const char *why; /* null: it is read */
    } files[] = {
        {"\xc3\xa9.yang", "", "'\xc3\xa9' cannot be the name of a module"},
        {"my mod.yin", "", "'my mod' cannot be the name of a module"},
        {"x@2020-1-1.yang", "", "'2020-1-1' is no revision"},
        {"x@2021-02-29.yang", "", "'2021-02-29' is no revision"},
        {"ok.YANG", "", "a load looks for names that end in .yin or .yang, in small letters"},
        {"a.b.yang", module("a.b", ""), nullptr},
        {"orphan.yang", submodule("orphan"), "no module includes the submodule"},
        {"part.yang", submodule("part", "include inner;"), nullptr},
        {"inner.yang", submodule("inner"), nullptr},
        {"left.yang", submodule("left", "include right;"), "no module includes the submodule"},
        {"right.yang", submodule("right", "include left;"), "no module includes the submodule"},
        {"old@2020-01-01.yang", module("old", "revision 2020-01-01;"), nullptr},
        {"old@2019-01-01.yang", module("old", "revision 2019-01-01;"), nullptr},
        {"old@2018-01-01.yang", module("old", "revision 2018-01-01;"), "a load by name takes '@/old@2020-01-01.yang'"},
        {"broken.yang",
         module("broken", "include part; import old { prefix o; revision-date 2019-01-01; } leaf l { type none; }"),
         nullptr},
    };
    for (const auto &[file, text, why] : files)
        dir.AddFile(file, text);
    const std::string all = Run({"--all"}).out;
    const std::string one = Run({"old"}).out;
    for (const auto &[file, text, why] : files) {
        const std::string line = dir.Path() + "/" + file + ": warning: nothing reads the file: ";
        const std::string reason = std::regex_replace(why != nullptr ? why : "", std::regex("@/"), dir.Path() + "/");
        const std::string expected = why != nullptr ? line + reason + " [unread-file]" : "";
        EXPECT_EQ(LineWith(all, line), expected) << file;
        EXPECT_EQ(LineWith(one, line), file.starts_with("old@") ? expected : "") << file;
    }
    EXPECT_TRUE(all.ends_with("\n4 modules checked: 1 error, 9 warnings\n")) << all;
    EXPECT_TRUE(Run({"old", "old@2020-01-01", "old"}).out.ends_with("\n1 module checked: no errors, 1 warning\n"));
}

TEST_F(InspectCheck, AllMeansTheModulesOfTheDirectoriesOfD)
{
    ModelDir others;
    others.Add("m", Container("c", ClassId("1") + Leaf("x", "string")));
    others.Add("n", Container("c", ClassId("1") + Leaf("x", "string")));
    dir.Add("m", Container("c", ClassId("1")));
    RunShell("mkdir " + dir.Path() + "/none");
    const std::string inspect = "cd " + dir.Path() + " && KORV_MODEL_PATH=" + others.Path() + " korv-inspect check ";
    for (const char *args : {"--all", "--all -d .", "--all -r"})
        EXPECT_EQ(RunShell(inspect + args).out, "2 modules checked: no errors, no warnings\n") << args;
    EXPECT_EQ(RunShell(inspect + "n").out.substr(0, others.Path().size()), others.Path());
    for (const char *args : {"--all -d none", "--all -d . -d none", "--all -r -d none"}) {
        const Result result = RunShell(inspect + args);
        EXPECT_EQ(result.exitCode, 2) << args;
        EXPECT_EQ(result.err, "korv-inspect: directory 'none' has no module file: --all checks the modules in it\n");
    }
}

TEST_F(InspectCheck, LoadFailuresAreErrorsWithTheirPlace)
{
    dir.Add("types", "<typedef name=\"t\"><type name=\"strng\"/></typedef>");
    dir.Add("a", Container("c", ""), "types");
    dir.Add("b", Container("c", ""), "types");
    dir.AddFile("broken.yin", "<module name=\"broken\">\n<leaf");
    const Result result = Run({"--all"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.err, "");
    const std::string types = dir.Path() + "/types.yin:4:";
    EXPECT_EQ(LineWith(result.out, "strng").find(types), 0U) << result.out;
    EXPECT_TRUE(LineWith(result.out, "/b.yin:").ends_with(": error: cannot import module 'types' [load-failed]"));
    EXPECT_EQ(LineWith(result.out, "module 'types' is not loaded for the same reason [load-failed]").find(types), 0U);
    EXPECT_NE(LineWith(result.out, dir.Path() + "/broken.yin:"), "");
    EXPECT_TRUE(result.out.ends_with("5 modules checked: 5 errors, no warnings\n")) << result.out;
}

TEST_F(InspectCheck, ReadsNothingThatIsNoFileOfReasonableSize)
{
    dir.Add("m", Container("c", ClassId("1")));
    RunShell("cd " + dir.Path() + " && mkfifo pipe.yin && mkdir folder.yin && truncate -s 1G large.yin");
    const Result result = Run({"--all"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_NE(LineWith(result.out, "/pipe.yin' is not a regular file"), "") << result.out;
    EXPECT_NE(LineWith(result.out, "/large.yin' is larger than 256 MiB"), "") << result.out;
    EXPECT_TRUE(result.out.ends_with("5 modules checked: 3 errors, no warnings\n")) << result.out;
}

TEST_F(InspectCheck, ExplainsWhatTheLibraryRefuses)
{
    const std::string decimal = "<type name=\"decimal64\"><fraction-digits value=\"2\"/></type>";
    std::string keys;
    std::string keyLeaves;
    for (int i = 0; i < 17; ++i) {
        keys += (i > 0 ? " k" : "k") + std::to_string(i);
        keyLeaves += Leaf("k" + std::to_string(i), "string", Id(std::to_string(i + 1)));
    }
    std::string augments;
    for (int i = 0; i < 21; ++i)
        augments += "<augment target-node=\"/p:c\">" + Container("a" + std::to_string(i), "") + "</augment>";
    std::string numbers = "1 2 3";
    for (int i = 4; i <= 17; ++i)
        numbers += " " + std::to_string(i);
    const std::string statement = "ancestor-key-fid " + numbers;
    const std::string few =
        List("inner", "n", ClassId("2") + Ext("ancestor-key-fid", "1", Id("9")) + Leaf("n", "string", Id("1")));
    const std::tuple<const char *, std::string, const char *, const char *> cases[] = {
        {"decimal", Container("c", ClassId("1") + Leaf("load", decimal, Id("1"))), "load",
         "leaf 'load' of class 'c' is of type decimal64, which has no default datatype: it needs a datatype-id"},
        {"number", Container("c", ClassId("1") + Leaf("minus", "string", Id("-1"))), "minus",
         "leaf 'minus' of class 'c': '-1' is no number that field-id can have"},
        {"keys", Container("c", List("many", keys, ClassId("1") + keyLeaves)), "many",
         "class 'many' has more than 16 keys: join or drop some"},
        {"ancestors",
         Container("c", List("l", "k",
                             ClassId("1") + Leaf("k", "string", Id("1")) +
                                 Container("d", "\n" + ClassId("2") + Ext("ancestor-key-fid", numbers)))),
         statement.c_str(), "class 'd' has more than 16 ancestor keys: name at most so many"},
        {"type", Container("c", Container("odd", Ext("class-type", "Leafref"))), "class-type Leafref",
         "class 'odd': class-type 'Leafref' is neither 'leafref' nor 'leafref-target'"},
        {"few",
         Container("c", List("outer", "a b",
                             ClassId("1") + Leaf("a", "string", Id("1")) + Leaf("b", "string", Id("2")) + few)),
         "ancestor-key-fid 1", "class 'inner' has 1 ancestor-key-fid, too few for the keys of class 'outer' above it"},
        {"empty", Container("c", Container("bare", ClassId("1") + Ext("ancestor-key-fid", ""))), "ancestor-key-fid ",
         "class 'bare': ancestor-key-fid is empty: name the attribute ids, or leave it out"},
        {"auto",
         Container(
             "c", ClassId("1") + Ext("name2id-key-fid", "2") + Leaf("x", "int8", Id("1")) + Leaf("y", "int8", Id("2"))),
         "name2id-key-fid 2", "class 'c' has several leaves and a name2id-key-fid of its own: that belongs on a leaf"},
        {"augmented", Container("c", "") + augments, "a20",
         "the module has more than 20 augments: put some into another module"},
        {"task", Ext("aaa-task-id", "-1"), "aaa-task-id -1", "aaa-task-id is no number"},
    };
    for (const auto &[module, body, place, text] : cases) {
        dir.Add(module, body);
        EXPECT_EQ(Findings({module}), (Texts{std::string("load-failed at ") + place})) << module;
        const Result result = Run({module});
        EXPECT_NE(LineWith(result.out, std::string(": error: ") + text + " [load-failed]"), "") << result.out;
        EXPECT_EQ(result.exitCode, 3);
    }
}

TEST_F(InspectCheck, FindsTheRefusedStatementAmongOthersOfItsName)
{
    const std::string refused = Ext("class-type", "odd");
    dir.Add("base", Container("sys", Container("port", "") + Container("b", Leaf("x", "empty"))));
    dir.Add("m", "<augment target-node=\"/base:sys/base:port\">\n" + Container("port", refused) + "</augment>\n",
            "base");
    dir.Add("n",
            Container("c", Container("a", ClassId("1") + Leaf("x", "string", Id("1"))) +
                               Container("b", ClassId("2") + Leaf("x", "empty", Id("1"))) +
                               Container("e", Container("b", Leaf("x", "empty")))),
            "base");
    EXPECT_EQ(Findings({"m"}), (Texts{"load-failed at class-type odd"}));
    EXPECT_EQ(LineWith(Run({"n"}).out, "leaf 'x' of class 'b' is of type empty").find(dir.Path() + "/n.yin:13:1: "), 0U)
        << Run({"n"}).out;
}

TEST_F(InspectCheck, LeafrefsThatLeadNowhere)
{
    const auto ref = [](const std::string &path) {
        return "<type name=\"leafref\"><path value=\"" + path + "\"/></type>";
    };
    dir.Add("n", Container("c", ClassId("1") + Leaf("k", "string") + Leaf("r", ref("../k")) +
                                    Leaf("y", ref("../z"), Id("2")) + Leaf("z", ref("deref(../r)/../k"), Id("3"))));
    EXPECT_EQ(Findings({"n"}), (Texts{"load-failed at y", "load-failed at z"}));
    const std::string text = Run({"n"}).out;
    EXPECT_NE(LineWith(text, "leaf 'y' of class 'c' leads to the leafref /c/z, whose path"), "") << text;
    EXPECT_NE(LineWith(text, "whose path 'deref(../r)/../k' cannot be followed: it needs a datatype-id"), "");

    dir.Add("m", Container("c", Leaf("x", ref("deref(../r)/../k")) + Leaf("r", ref("../l/k")) +
                                    List("l", "k", Leaf("k", "string"))));
    EXPECT_NE(LineWith(Inspect({"tree", "m", "-d", dir.Path()}).out, "- x      -  leafref"), "");
    const Result enums = Inspect({"enums", "m", "/c/x", "-d", dir.Path()});
    EXPECT_EQ(enums.err, "korv-inspect: /c/x is a leafref whose path 'deref(../r)/../k' cannot be followed\n");

    /* 64 leafrefs are followed: l64 has a type, and l65 has none. */
    std::string leaves = Leaf("l0", "uint8", Id("1"));
    for (int i = 1; i <= 65; ++i)
        leaves += Leaf("l" + std::to_string(i), ref("../l" + std::to_string(i - 1)), Id(std::to_string(i + 1)));
    dir.Add("far", Container("c", ClassId("1") + leaves));
    EXPECT_EQ(Findings({"far"}), (Texts{"load-failed at l65"}));
    EXPECT_NE(
        LineWith(Run({"far"}).out, "'l65' of class 'c' leads through more than 64 leafrefs: it needs a datatype-id"),
        "");
}

TEST_F(InspectCheck, DirectoriesThatHideDeviations)
{
    dir.Add("quelvo-bras-user-manage", Container("users", ClassId("1")));
    dir.AddFile("quelvo-bras-user-manage-deviations-edge.yin", "");
    std::filesystem::permissions(dir.Path(), std::filesystem::perms(EnterOnly()));
    Result result;
    bool canRun = false;
    {
        const Unprivileged unprivileged;
        canRun = access(KORV_BINARY_DIR "/bin/korv-inspect", X_OK) == 0;
    }
    if (canRun) {
        const Unprivileged unprivileged;
        result = Run({"quelvo-bras-user-manage"});
    }
    std::filesystem::permissions(dir.Path(), std::filesystem::perms(0755));
    if (!canRun)
        GTEST_SKIP() << "nobody but root can run the program here";
    EXPECT_EQ(
        result.out,
        "quelvo-bras-user-manage: warning: directory '" + dir.Path() +
            "' cannot be listed (Permission denied): deviation files and files of other revisions in it "
            "are not seen [unlisted-directory]\n\n      1 warning  unlisted-directory\n1 module checked: no errors, 1 "
            "warning\n");
}

TEST_F(InspectCheck, DeviationsThatDoNotApplyAreAnErrorThoughTheModuleIsLoaded)
{
    dir.Add("quelvo-bras-pppox-access", Container("c", ""));
    dir.Add("quelvo-bras-pppox-access-deviations-x",
            "\n<deviation target-node=\"/quelvo-bras-pppox-access:d\"><deviate value=\"not-supported\"/></deviation>",
            "quelvo-bras-pppox-access");
    const Result result = Run({"quelvo-bras-pppox-access"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(LineWith(result.out, "quelvo-bras-pppox-access: error: the module is loaded without its deviations"), "");
    EXPECT_NE(LineWith(result.out, "quelvo-bras-pppox-access-deviations-x.yin:").find("[deviation-failed]"),
              std::string::npos)
        << result.out;
    const Result tree = Inspect({"tree", "quelvo-bras-pppox-access", "-d", dir.Path()});
    EXPECT_EQ(tree.exitCode, 0);
    EXPECT_NE(LineWith(tree.err, "the deviations of module 'quelvo-bras-pppox-access' do not apply"), "") << tree.err;
}

/* The document has the rules in their order with their sections, and the same ones are errors. */
TEST_F(InspectCheck, RulesAreDescribed)
{
    std::ifstream document(KORV_SOURCE_DIR "/docs/inspector.md");
    std::string described;
    bool inTable = false;
    std::smatch found;
    for (std::string line; std::getline(document, line);) {
        inTable = line.starts_with("| Name | Finding |") || (inTable && line.starts_with("|"));
        if (inTable && std::regex_match(line, found, std::regex(R"(\| `([^`]*)` \|.*?\|(?: (RFC [^|]*) \|)?)")))
            described += found[1].str() + " " + found[2].str() + "\n";
    }
    std::string listed;
    std::string errors;
    const rapidjson::Document rules = Json(Inspect({"check", "--rules", "--format", "json"}));
    for (const rapidjson::Value &rule : rules.GetArray()) {
        const std::string name = rule["name"].GetString();
        listed += name + " " + (rule["section"].IsString() ? rule["section"].GetString() : "") + "\n";
        errors += rule["severity"] == "error" ? name + " " : "";
    }
    EXPECT_EQ(listed, described);
    EXPECT_EQ(errors, "load-failed deviation-failed ");
}

} // namespace
