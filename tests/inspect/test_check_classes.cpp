/* check: rules of the tool's own that take more than a model of docs/check-rules.md or of marked/. */
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

class InspectCheckClasses : public ::testing::Test {
  protected:
    /* The rules of the findings, in order, each behind a blank. */
    std::string Findings(const std::string &module)
    {
        std::string found;
        for (const Told &finding : FindingsOf(Inspect({"check", module, "-d", dir.Path(), "--format", "json"})))
            found += " " + finding.rule;
        return found;
    }

    ModelDir dir;
};

TEST_F(InspectCheckClasses, WhatIsReadOnOneNodeHasAnEffect)
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
        {"container c { e:class-id 1; leaf " + std::string(65, 'n') + " { e:field-id 1; type string; } }",
         " long-name"},
        {"container c { e:class-id 1; leaf x { e:field-id ''; type string; } }", " bad-number"},
        {keys + "1 { e:field-id 10; e:field-id 11; } } } }", " repeated-statement"},
        {keys + "0; } } }", " unmapped-ancestor-key"},
    };
    for (const auto &[body, rules] : cases) {
        dir.AddFile("m.yang",
                    "module m { yang-version 1.1; namespace \"urn:m\"; prefix p; import "
                    "quelvo-mim-extensions { prefix e; } " +
                        body + " }");
        EXPECT_EQ(Findings("m"), rules) << body;
    }
    EXPECT_NE(LineWith(Inspect({"check", "m", "-d", dir.Path()}).out,
                       "'0' in its ancestor-key-fid is no attribute id: write one for key 1 ["),
              "");

    dir.Add("t", "<grouping name=\"g\">\n" + Leaf("x", "string", Id("1")) + "</grouping>\n");
    dir.Add("r", "<rpc name=\"r\"><input><uses name=\"t:g\"/></input></rpc>\n", "t");
    std::filesystem::remove(dir.Path() + "/m.yang");
    EXPECT_EQ(Findings("r"), "") << "others may use it";
    EXPECT_EQ(Findings("--all"), " no-effect");
    dir.Add("n", Container("c", ClassId("1") + "<uses name=\"t:g\"/>"), "t");
    EXPECT_EQ(Findings("--all"), "");
}

TEST_F(InspectCheckClasses, LeavesOfChoicesBeyondThoseThatAreListed)
{
    for (int num : {255, 256}) {
        std::string leaves;
        for (int i = 0; i < num; ++i)
            leaves += Leaf("l" + std::to_string(i), "string");
        dir.Add("m", Container("c", "<choice name=\"ch\">" + leaves + "</choice>"));
        EXPECT_EQ(Findings("m"), num > 255 ? " no-class many-case-leaves" : " no-class");
    }
}

TEST_F(InspectCheckClasses, RulesAreDescribed)
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
