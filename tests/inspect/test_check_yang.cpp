/* check: what YANG asks of expressions, references and files, and where a finding points. The other rules for statements have
 * their models in verdicts/. */
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

class InspectCheckYang : public ::testing::Test {
  protected:
    using Texts = std::vector<std::string>;

    /* A module in compact syntax: its head is the first line. */
    void Add(const std::string &name, const std::string &body, const std::string &version = "1.1")
    {
        dir.AddFile(name + ".yang", "module " + name + " { yang-version " + version + "; namespace 'urn:" + name +
                                        "'; prefix p;\n" + body + "\n}\n");
    }

    static std::vector<Told> Run(std::vector<std::string> args, const std::string &in)
    {
        args.insert(args.begin(), "check");
        args.insert(args.end(), {"-d", in, "--format", "json"});
        return FindingsOf(Inspect(args));
    }

    /* "NAME LINE:COLUMN" of each finding, with the file's name in front of the line unless it is the module's. */
    Texts Places(const std::vector<std::string> &modules)
    {
        Texts places;
        for (const Told &finding : Run(modules, dir.Path()))
            places.push_back(finding.rule + " " + (finding.Stem() == modules.back() ? "" : finding.Stem() + ":") +
                             std::to_string(finding.line) + ":" + std::to_string(finding.column));
        return places;
    }

    /* The names and texts of the findings, without the lines that the texts name. */
    Texts Said(const std::string &module, const std::string &in)
    {
        Texts said;
        for (const Told &finding : Run({module}, in))
            said.push_back(finding.rule + ": " +
                           std::regex_replace(finding.text, std::regex(" \\([^()]*[0-9]+\\)"), ""));
        std::sort(said.begin(), said.end());
        return said;
    }

    /* Both syntaxes have the same findings. */
    void ExpectTheSameInYin(const std::string &module)
    {
        const std::string yin = dir.Path() + "/yin";
        ASSERT_EQ(RunShell("cd " + dir.Path() + " && mkdir -p yin && korv-inspect convert *.yang -o yin/").exitCode, 0);
        EXPECT_EQ(Said(module, yin), Said(module, dir.Path()));
    }

    ModelDir dir;
};

TEST_F(InspectCheckYang, PointsIntoExpressions)
{
    const struct {
        const char *body;
        Texts places;
    } cases[] = {
        {"leaf x { type string; must 'a b'; must \"count() > foo(1)\"; must ../q:x/p:y; when \"$v = 1\"; }",
         {"xpath-syntax 2:31", "xpath-function 2:41", "xpath-function 2:51", "xpath-prefix 2:68", "xpath-syntax 2:83"}},
        {"leaf x { type string; must \"'\xc3\xa4\xc3\xb6' = foo(.)\"; must 'a ' + '= b c'; must \"a\n  = foo()\"; }",
         {"xpath-function 2:36", "xpath-syntax 2:51", "xpath-function 2:72"}},
        {"leaf x { type string; must \"substring(., 1, 2, 3) or concat(.) or true(.) or number()\"; }",
         {"xpath-function 2:29", "xpath-function 2:54", "xpath-function 2:67"}},
        {"leaf x { type string; must \"\\\"x\\\" = foo() and foo(1) and zz:a = zz:b and $v = $v and id() = id(1, 2)\"; "
         "}",
         {"xpath-syntax 2:29", "xpath-prefix 2:29", "xpath-function 2:29", "xpath-function 2:29",
          "xpath-function 2:29"}},
        {"leaf x { type string; must \"derived-from(., 'p:i') and re-match(., '[') and current() = deref(.)/../x\"; }",
         {}},
        {"list l { key 'a b'; leaf a { type string; } leaf b { type string; } leaf c { type string; } }\n"
         "leaf x { type string; }\n"
         "leaf y { type leafref { path \"/p:l[p:a = current()/../p:x][b=current ( ) /.. / x]/p:c\"; } }\n"
         "leaf z { type leafref { path '../l[a = current()/x]/c'; } }\n"
         "leaf w { type leafref { path '../l[1]/c'; } } leaf v { type leafref { path '../l[a=\"1\"]/c'; } }\n"
         "leaf u { type leafref { path '../ l/c'; } } leaf t { type leafref { path 'current()/../x'; } }\n"
         "leaf s { type leafref { path '../l[q:a = current()/../x]/c'; } } leaf r { type leafref { path '../l[a=]/c'; "
         "} }",
         {"leafref-path 5:50", "leafref-path 6:36", "leafref-path 6:84", "leafref-path 7:34", "leafref-path 7:75",
          "xpath-prefix 8:36", "xpath-syntax 8:103"}},
        {"import marks { prefix mark; }\nmark:it { container c { leaf x { type string; must 'a b'; } list l; } }\n"
         "leaf y { type string { pattern '('; } mark:it; }",
         {"bad-pattern 4:24"}},
    };
    dir.AddFile("marks.yang", "module marks { namespace 'urn:marks'; prefix m; extension it; }");
    for (const auto &[body, places] : cases) {
        Add("m", body);
        EXPECT_EQ(Places({"m"}), places) << body;
        ExpectTheSameInYin("m");
    }
    Add("m", "leaf x { type string; must \"derived-from(., 'p:i') or current() = enum-value(.)\"; }", "1");
    EXPECT_EQ(Places({"m"}), (Texts{"xpath-function 2:29", "xpath-function 2:67"}));
    EXPECT_EQ(Said("m", dir.Path()).front(), "xpath-function: must: function 'derived-from' takes yang-version 1.1");
    Add("m", "leaf x { type string { pattern '(" + std::string(200, 'a') + "'; } must 'string(., 1)'; }");
    EXPECT_EQ(Said("m", dir.Path()),
              (Texts{"bad-pattern: pattern '(" + std::string(119, 'a') +
                         "...' is no regular expression of XML Schema: it ends too early",
                     "xpath-function: must: function 'string' takes 0 or 1 arguments, and has 2"}));
}

TEST_F(InspectCheckYang, ReferencesToDeprecatedAndObsoleteDefinitions)
{
    const std::string old = "status obsolete;";
    Add("m", "feature gone { " + old +
                 " } feature fine; identity past { status deprecated; }\n"
                 "identity later { base past; }\n"
                 "identity last { base p:past; status deprecated; }\n"
                 "typedef t { type string; " +
                 old +
                 " }\n"
                 "grouping g { status deprecated; leaf x { type t; }\n"
                 "  leaf ref { type leafref { path '../gone'; } } leaf gone { type string; " +
                 old +
                 " } }\n"
                 "container c { uses g; typedef s { type string; " +
                 old +
                 " } leaf a { type s; } container d { uses g; } }\n"
                 "leaf f { if-feature 'fine and not(p:gone)'; type union { type string; type p:t; } }\n"
                 "container over { " +
                 old +
                 " leaf a { type t; } uses g; leaf r { type leafref { path '/p:gone-leaf'; } } }\n"
                 "leaf gone-leaf { type string; status deprecated; } leaf other { type types:t; }\n"
                 "leaf r { type leafref { path '/p:gone-leaf'; } }");
    dir.AddFile("types.yang",
                "module types { namespace 'urn:types'; prefix t; typedef t { type string; " + old + " } }");
    RunShell("cd " + dir.Path() + " && sed -i 's/prefix p;/& import types { prefix types; }/' m.yang");
    EXPECT_EQ(Places({"m"}), (Texts{"obsolete-reference 3:18", "obsolete-reference 6:42", "obsolete-reference 7:3",
                                    "obsolete-reference 8:15", "obsolete-reference 8:76", "obsolete-reference 8:100",
                                    "obsolete-reference 9:10", "obsolete-reference 9:71", "obsolete-reference 12:1"}));
    ExpectTheSameInYin("m");
    EXPECT_EQ(Said("m", dir.Path()).front(),
              "obsolete-reference: base 'past' of a current definition refers to a deprecated one");
}

TEST_F(InspectCheckYang, FilesOfAModuleAndModulesOfARun)
{
    const auto submodule = [&](const std::string &name, const std::string &body) {
        dir.AddFile(name + ".yang",
                    "submodule " + name + " { yang-version 1.1; belongs-to m { prefix s; }\n" + body + " }");
    };
    submodule("a", "include b;\nleaf x { type s:t; must 'p:y'; }\nimport other { prefix o; }");
    submodule("b", "typedef t { type string; status obsolete; }");
    Add("m", "import other { prefix q; }\ninclude a;\nleaf z { type string; must 's:x'; must '(o:x)'; }");
    dir.AddFile("other.yang", "module other { namespace 'urn:m'; prefix o;\nleaf bad { type string; must 'a b'; } }");
    EXPECT_EQ(Places({"m"}),
              (Texts{"submodule-not-included a:2:1", "obsolete-reference a:3:10", "xpath-prefix a:3:26",
                     "statement-order a:4:1", "duplicate-namespace 1:30", "xpath-prefix 4:29", "xpath-prefix 4:42"}));
    ExpectTheSameInYin("m");

    /* Neither needs the other: the second one that is checked has the finding. */
    dir.AddFile("later.yang", "module later { namespace 'urn:m'; prefix o; }");
    EXPECT_EQ(Places({"later"}), Texts());
    EXPECT_EQ(Places({"later", "other"}), (Texts{"duplicate-namespace 1:16", "xpath-syntax 2:33"}));
}

} // namespace
