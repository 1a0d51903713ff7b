/* check: what YANG asks of the statements of a module's files, and where a finding points. */
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

TEST_F(InspectCheckYang, PointsAtTheStatementAndSaysTheSameOfBothSyntaxes)
{
    const struct {
        const char *body;
        const char *version;
        Texts places;
    } cases[] = {
        {"organization o;\nrevision 2026-01-01;\nimport types { prefix t; }\ncontact c;", "1", {"statement-order 4:1"}},
        {"mark:it;\nfeature f;\nmark:it;\nimport marks { prefix mark; }", "1.1", {"statement-order 5:1"}},
        {"import marks { prefix mark; }\nmark:it;\nrevision 2026-02-01;\nmark:it;\nrevision 2026-02-01;\nrevision "
         "2026-03-01;\nrevision 2025-01-01;",
         "1.1",
         {"revision-order 6:1", "revision-order 7:1"}},
        {"rpc a { input { typedef t { type string; } }\n output { leaf x { type string; } } }\n list l { config "
         "false; description d; }\n choice c; augment /p:c { case d; } augment /p:l { when 'true()'; }",
         "1.1",
         {"empty-statement 2:9", "empty-statement 4:2", "empty-statement 5:37"}},
        {"leaf a { type decimal64 { fraction-digits 02; range '-0.5 .. 0.7|01|2..max'; } }\n"
         "leaf b { type string { length '0|10..20 | 030'; } }\n"
         "leaf-list c { type enumeration { enum x { value -05; } enum y { value -0; } } max-elements 010; }",
         "1.1",
         {"leading-zero 2:27", "leading-zero 2:47", "leading-zero 3:24", "leading-zero 4:43", "leading-zero 4:79"}},
        {"grouping g { container a { leaf b { type string; } container c; } }\nuses g {\n refine 'a / b' { default x; "
         "}\n "
         "augment 'a/c' { leaf d { type string; } } }\n"
         "augment \"/p:a\n   /p:c\" { leaf e { type string; } }",
         "1.1",
         {"schema-path-blanks 4:2", "schema-path-blanks 6:1"}},
        {"feature XMLf; leaf x { if-feature XMLf; type bits { bit xMl; } }\nleaf xm { type enumeration { enum xml; } }",
         "1",
         {"xml-name 2:1", "xml-name 2:53"}},
        {"feature XMLf; leaf x { if-feature XMLf; type bits { bit xMl; } }", "1.1", {}},
        {"typedef e { type f; } typedef f { type empty; } typedef r { type leafref { path '/p:x'; } }\n"
         "leaf x { type union { type string; type union { type e; } type r; } }\n"
         "leaf y { type leafref { path '/p:x'; require-instance true; } }\n"
         "leaf z { type instance-identifier { require-instance true; } }",
         "1",
         {"version-1-type 3:49", "version-1-type 3:59", "version-1-type 4:38"}},
        {"leaf x { type string { pattern '[a-z]{2}(-\\p{L}*)?'; pattern '^a{2}$'; pattern '(?i)a'; } }",
         "1.1",
         {"bad-pattern 2:72"}},
    };
    dir.AddFile("types.yang",
                "module types { namespace 'urn:types'; prefix t; leaf x { type string { pattern '('; } } }");
    dir.AddFile("marks.yang", "module marks { namespace 'urn:marks'; prefix m; extension it; }");
    for (const auto &[body, version, places] : cases) {
        Add("m", body, version);
        EXPECT_EQ(Places({"m"}), places) << body;
        ExpectTheSameInYin("m");
    }
}

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
                         "...' is no regular expression of XML Schema: expecting ')'",
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
