/* check: what findings cost, which of them are left out, and how they are written. */
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

/* One class with a leaf that has no id (line 7), two leaves of one id (lines 8 to 13), and a key without one. */
constexpr const char *FAULTY = R"(module m {
  namespace "urn:m"; prefix p;
  import quelvo-mim-extensions { prefix mimext; }
  container c {
    mimext:class-id 1;
    leaf a {
      type string;
    }
    leaf b { type string; mimext:field-id 2; }
    leaf d {
      type string;
      mimext:field-id 2;
    }
  }
}
)";

std::string FileText(const std::string &path)
{
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

class InspectCheckReport : public ::testing::Test {
  protected:
    /* Runs in the directory of the models; "check" stands in front. */
    Result Run(const std::string &arguments, const std::string &folder = ".")
    {
        return RunShell("cd " + dir.Path() + "/" + folder + " && korv-inspect check " + arguments);
    }

    /* "RULE SEVERITY LINE" of each finding. */
    std::string Findings(const std::string &arguments)
    {
        std::string text;
        for (const Told &finding : FindingsOf(Run(arguments + " --format json")))
            text +=
                (text.empty() ? "" : ", ") + finding.rule + " " + finding.severity + " " + std::to_string(finding.line);
        return text;
    }

    /* What the validator says of the report, a line a finding or suite. */
    std::string Validated(const std::string &form, const std::string &arguments)
    {
        const Result result =
            RunShell("report=$(cd " + dir.Path() + " && korv-inspect check " + arguments + " --format " + form +
                     "); echo \"$report\" | python3 " KORV_SOURCE_DIR "/tests/inspect/validate_reports.py " + form);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        return result.out;
    }

    void Change(const std::string &file, const std::string &script)
    {
        EXPECT_EQ(RunShell("sed -i '" + script + "' '" + dir.Path() + "/" + file + "'").exitCode, 0);
    }

    ModelDir dir;
};

TEST_F(InspectCheckReport, WhatARuleCountsAs)
{
    dir.AddFile("m.yang", FAULTY);
    const std::string both = "missing-field-id warning 6, duplicate-field-id warning 12";
    const std::tuple<const char *, int, std::string> cases[] = {
        {"m", 0, both},
        {"m --strict", 1, both},
        {"m --error missing-field-id", 1, "missing-field-id error 6, duplicate-field-id warning 12"},
        {"m --error missing-field-id --warn missing-field-id", 0, both},
        {"m --warn missing-field-id --error missing-field-id --off missing-field-id", 0,
         "duplicate-field-id warning 12"},
        {"m --strict --off missing-field-id --off duplicate-field-id", 0, ""},
        {"m --off missing-field-id --warn missing-field-id", 0, both},
        {"m --off missing-field-id:m.yang", 0, "duplicate-field-id warning 12"},
        {"m --off missing-field-id:m.yang --error missing-field-id", 0, "duplicate-field-id warning 12"},
        {"m --off 'missing-field-id:*.yin'", 0, both},
        {"m --off 'missing-field-id:?.yan*'", 0, "duplicate-field-id warning 12"},
        {"m --off 'missing-field-id:./*'", 0, "duplicate-field-id warning 12"},
        {"m --off 'missing-field-id:/**/m.yang'", 0, "duplicate-field-id warning 12"},
        {"m --off 'missing-field-id:**/x/m.yang'", 0, both},
        {"m --off 'missing-field-id:/*/m.yang'", 0, both},
        {"m --off 'missing-field-id:/**'", 0, "duplicate-field-id warning 12"},
        {"m --off 'missing-field-id:../**/**/m.yang'", 0, "duplicate-field-id warning 12"},
    };
    for (const auto &[arguments, exitCode, findings] : cases) {
        EXPECT_EQ(Findings(arguments), findings) << arguments;
        EXPECT_EQ(Run(arguments).exitCode, exitCode) << arguments;
    }
    dir.AddFile("n.yang", "module n {");
    EXPECT_EQ(Run("--all").exitCode, 3);
    EXPECT_EQ(Run("n --warn load-failed").exitCode, 0);
    EXPECT_EQ(Run("n --warn load-failed --strict").exitCode, 3);
}

TEST_F(InspectCheckReport, ListsItsRules)
{
    const Result text = Run("--rules --error bad-number --off long-name");
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_EQ(LineWith(text.out, "load-failed ").find("load-failed               error    the module"), 0U) << text.out;
    EXPECT_EQ(LineWith(text.out, "bad-number ").find("bad-number                error    an argument"), 0U);
    EXPECT_EQ(LineWith(text.out, "long-name ").find("long-name                 off      a name"), 0U);
    const rapidjson::Document json = Json(Run("--rules --format json"));
    EXPECT_EQ(Compact(json[0]), R"({"name":"load-failed","severity":"error","section":null,)"
                                R"("purpose":"the module, or something that it needs, is not right"})");
    std::istringstream lines(text.out);
    std::string line;
    for (const rapidjson::Value &rule : json.GetArray()) {
        std::getline(lines, line);
        EXPECT_EQ(line.find(rule["name"].GetString()), 0U);
        const char *section = rule["section"].IsString() ? rule["section"].GetString() : "";
        EXPECT_NE(line.find(section), std::string::npos) << line;
    }
}

TEST_F(InspectCheckReport, TextIsGroupedByFileAndSummedUpByRule)
{
    dir.AddFile("m.yang", FAULTY);
    dir.AddFile("n.yang", "module n { namespace urn:n; prefix n; container c { leaf x { type strng; } } }");
    const Result result = Run("m n --off duplicate-field-id");
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out,
              "m.yang:6:5: warning: leaf 'a' of class /c (0x1) has no attribute id [missing-field-id]\n\n"
              "n.yang:1:62: error: unknown type 'strng'; did you mean 'string'? [load-failed]\n\n"
              "        1 error  load-failed\n"
              "      1 warning  missing-field-id\n"
              "2 modules checked: 1 error, 1 warning\n");
}

TEST_F(InspectCheckReport, ABaselineKnowsItsFindingsWhereverTheyMove)
{
    dir.AddFile("m.yang", FAULTY);
    Change("m.yang",
           "s/container c {/grouping g { leaf x { type string; } } container d { mimext:class-id 9; uses g; } &/");
    dir.AddFile("n.yang", "module n {");
    dir.Add("o", Container("c", ClassId("1")));
    EXPECT_EQ(Run("--all --write-baseline all.json").exitCode, 3) << "a module that is not loaded is always news";
    EXPECT_EQ(Run("m --strict --write-baseline base.json").exitCode, 0);
    const std::string file = FileText(dir.Path() + "/base.json");
    EXPECT_EQ(Run("m --write-baseline base.json").exitCode, 0);
    EXPECT_EQ(FileText(dir.Path() + "/base.json"), file);
    EXPECT_EQ(file.find(dir.Path()), std::string::npos);

    /* The lines move, and the grouping gets another first use. */
    Change("m.yang", "3a \\ \\n container before { mimext:class-id 8; uses g; }");
    RunShell("mkdir " + dir.Path() + "/sub");
    const std::string known = " findings of the baseline\n1 module checked: no errors, no warnings\n";
    const std::tuple<const char *, const char *, std::string> runs[] = {
        {"m --baseline base.json", ".", "3 known" + known},
        {"m --baseline ../base.json -d ..", "sub", "3 known" + known},
        {"m --baseline base.json --off missing-field-id", ".", "1 known finding" + known.substr(9)},
        {"m --baseline base.json --off 'missing-field-id:m.*'", ".", "1 known finding" + known.substr(9)},
        {"o --baseline all.json", ".", known.substr(known.find('\n') + 1)},
        {"m o --baseline ../all.json -d ..", "sub",
         "4 known findings of the baseline\n2 modules checked: no errors, no warnings\n"},
    };
    for (const auto &[arguments, folder, out] : runs)
        EXPECT_EQ(Run(std::string("--strict ") + arguments, folder).out, out) << arguments;

    /* One is new, and one is no more. */
    Change("m.yang", "s/leaf b {/leaf e { type string; } &/; s/    leaf a {/&mimext:field-id 7;/");
    const Result changed = Run("m --strict --baseline base.json");
    EXPECT_EQ(changed.exitCode, 1);
    EXPECT_NE(LineWith(changed.out, "leaf 'e' of class /c (0x1) has no attribute id"), "");
    EXPECT_EQ(
        changed.out.substr(changed.out.find("2 known")),
        "2 known findings of the baseline\n1 finding of the baseline is no longer there: --write-baseline makes it "
        "anew\n1 module checked: no errors, 1 warning\n");
    dir.AddFile("m.yang", "module m {");
    EXPECT_EQ(LineWith(Run("m --baseline base.json").out, "no longer there"), "") << "nobody knows";
}

/* The same finding twice is known twice only if the baseline has it twice. */
TEST_F(InspectCheckReport, ABaselineCountsEqualFindings)
{
    const std::string statement = "mimext:field-id 9; ";
    dir.AddFile("m.yang", FAULTY);
    Change("m.yang", "s/leaf a {/&" + statement + statement + "/");
    EXPECT_EQ(Findings("m --off duplicate-field-id"), "repeated-statement warning 6");
    Run("m --write-baseline base.json");
    Change("m.yang", "s/leaf a {/&" + statement + "/");
    EXPECT_EQ(Findings("m --baseline base.json"), "repeated-statement warning 6");
}

TEST_F(InspectCheckReport, ADamagedBaselineIsRefusedWhereItIsDamaged)
{
    dir.AddFile("m.yang", FAULTY);
    const std::string entry = R"({"rule":"r","module":"m","file":"f","text":"t","count":1})";
    const std::pair<std::string, const char *> cases[] = {
        {"", "base.json:1:1: "},
        {"{\n  \"version\": 1,\n  \"findings\": [,]\n}", "base.json:3:16: the baseline is damaged: Invalid value."},
        {"[]", "base.json:1:"},
        {R"({"version":2,"findings":[]})", "a baseline of version 2"},
        {R"({"findings":[]})", "a baseline has 'version' and 'findings'"},
        {R"({"version":1,"findings":[{"rule":"r"}]})", "a finding has 'rule', 'module', 'file', 'text' and 'count'"},
        {"{\"version\":1,\"findings\":[\n" + entry + ",\n{\"rul\":1}]}",
         "base.json:3:7: the baseline is damaged: a "
         "baseline has no 'rul' here"},
        {R"({"version":1,"findings":[{"count":-1}]})", "this has no place in a baseline"},
        {"{\"version\":1,\"findings\":[" + entry + "]}x", "The document root must not be followed"},
        {"{\"version\":1,\"findings\":[{\"rule\":\"\xFF\"}]}", "Invalid encoding"},
        {std::string(100000, '['), "this has no place in a baseline"},
    };
    for (const auto &[text, error] : cases) {
        dir.AddFile("base.json", text);
        const Result result = Run("m --baseline base.json");
        EXPECT_EQ(result.exitCode, 2) << text.substr(0, 100);
        EXPECT_NE(LineWith(result.err, error), "") << result.err;
    }
    const Result folder = Run("m --baseline .");
    EXPECT_EQ(folder.err, "korv-inspect: the baseline '.' is a directory\n");
    EXPECT_EQ(folder.exitCode, 2);
}

TEST_F(InspectCheckReport, CommentsInAModelHideFindings)
{
    dir.AddFile("m.yang", R"(module m {
  namespace "urn:m"; prefix p;
  import quelvo-mim-extensions { prefix mimext; }
  container c {
    mimext:class-id 1;
    // korv-inspect off missing-field-id: never sent
    leaf hidden { type string; }
    leaf shown { type string; } /* korv-inspect off key-without-field-id: of another rule */
    leaf end {
      type string;
    } // korv-inspect off missing-field-id: the one that ends here
    /* korv-inspect off missing-field-id: all
       that is in it */
    container d {
      mimext:class-id 2;
      leaf in { type string; }
    }
    container e { // korv-inspect off missing-field-id: of its line
      mimext:class-id 3;
      leaf in { type string; }
      // korv-inspect off missing-field-id: there is nothing behind it
    }
    leaf after { type string; }
    // korv-inspect off missing-field-id
    leaf one { type string; }
    // korv-inspect off missing-field: a wrong name
    leaf two { type string; }
    // korv-inspect off load-failed: cannot be hidden
    // korv-inspect offers more
    leaf three { type string; }
  }
}
)");
    ASSERT_EQ(Run("m.yang >/dev/null; mkdir yin; korv-inspect convert m.yang -o yin/").exitCode, 0);
    for (const char *file : {"m.yang", "yin/m.yin"}) {
        const Result result = Run(std::string(file) + " -d .");
        std::string texts;
        std::istringstream lines(result.out);
        for (std::string line; std::getline(lines, line) && !line.empty();)
            texts += line.substr(line.find("warning: ") + 9) + "\n";
        const std::string of = "' of class /c (0x1) has no attribute id [missing-field-id]\n";
        EXPECT_EQ(
            texts,
            "leaf 'shown" + of +
                "the comment hides nothing: its statement has no finding of key-without-field-id [unused-ignore]\n"
                "the comment hides nothing: it stands at no statement [unused-ignore]\n"
                "leaf 'after" +
                of +
                "the comment gives no reason to hide findings of missing-field-id: 'korv-inspect off "
                "missing-field-id: reason' [bad-ignore]\nleaf 'one" +
                of + "there is no rule 'missing-field': did you mean 'missing-field-id'? [bad-ignore]\nleaf 'two" + of +
                "findings of load-failed cannot be hidden by a comment [bad-ignore]\nleaf 'three" + of)
            << file;
        EXPECT_NE(LineWith(result.out, "4 findings hidden by comments in the models"), "") << result.out;
    }
}

/* A comment about other modules' classes is not blamed when these are not looked at, and one before the module is about
 * all of it. */
TEST_F(InspectCheckReport, CommentsAboutWholeFilesAndOtherModules)
{
    const std::string comment = "// korv-inspect off duplicate-class-id: the other one is going to be removed\n";
    const std::string body =
        " { namespace urn:NAME; prefix p;\n import quelvo-mim-extensions { prefix mimext; }\n"
        "container NAME { mimext:class-id 1; leaf x { type string; } } }\n";
    dir.AddFile("m.yang", "module m" + body);
    dir.AddFile("n.yang", "// korv-inspect off missing-field-id: none\n" + comment + "module n" + body);
    RunShell("cd " + dir.Path() + " && sed -i s/NAME/m/g m.yang && sed -i s/NAME/n/g n.yang");
    EXPECT_EQ(Findings("n"), "");
    EXPECT_EQ(Findings("m n"), "missing-field-id warning 3");
    EXPECT_EQ(Findings("--all"), "missing-field-id warning 3");
    Change("m.yang", "s/class-id 1/class-id 2/");
    EXPECT_EQ(Findings("--all"), "missing-field-id warning 3, unused-ignore warning 2");
}

TEST_F(InspectCheckReport, ReportsForMachinesAreValid)
{
    RunShell("mkdir '" + dir.Path() + "/a b'");
    dir.AddFile("a b/m.yang", FAULTY);
    dir.AddFile("a b/m@x.yang", "");
    dir.AddFile("n.yang", "module n { namespace urn:n; prefix n; container c { leaf \"<&>\" { type string; } } }");
    dir.AddFile("o.yang", "module o { namespace urn:o; prefix o; }");
    const std::string args = "m n o -d . -d 'a b'";
    const std::string uri = "a%20b/m.yang";
    const std::string sarif = Validated("sarif", args);
    EXPECT_NE(LineWith(sarif, "missing-field-id warning " + uri + " 6 5"), "") << sarif;
    EXPECT_NE(LineWith(sarif, "load-failed error n.yang 1 58"), "") << sarif;
    EXPECT_NE(LineWith(sarif, "unread-file warning a%20b/m%40x.yang 1 0"), "") << "a place that can be shown";
    EXPECT_NE(LineWith(Validated("sarif", "m -d . -d '" + dir.Path() + "/a b'"), "warning file:///"), "");
    EXPECT_EQ(Validated("junit", args), "m 3 0\nn 1 1\no 1 0\n");
    EXPECT_EQ(Validated("junit", args + " --strict"), "m 3 3\nn 1 1\no 1 0\n");

    const std::string gitlab = Validated("gitlab", args);
    EXPECT_NE(LineWith(gitlab, "load-failed major"), "") << gitlab;
    Change("a b/m.yang", "3a container before;");
    EXPECT_EQ(Validated("gitlab", args), gitlab) << "fingerprints stay when the file changes above";
}

TEST_F(InspectCheckReport, AnnotationsEscapeWhatEndsThem)
{
    RunShell("mkdir '" + dir.Path() + "/a,b:c%'");
    dir.AddFile("a,b:c%/m.yang", FAULTY);
    dir.AddFile("a,b:c%/m@x.yang", "");
    EXPECT_EQ(Run("m -d 'a,b:c%' -d . --format github --error missing-field-id --off duplicate-field-id").out,
              "::error file=a%2Cb%3Ac%25/m.yang,line=6,col=5,title=missing-field-id::leaf 'a' of class /c (0x1) has no "
              "attribute id\n"
              "::warning file=a%2Cb%3Ac%25/m@x.yang,line=1,title=unread-file::nothing reads the file: 'x' is no "
              "revision\n1 module checked: 1 error, 1 warning\n");
}

TEST_F(InspectCheckReport, AConfigurationFileIsFoundUpwardAndTheLineWins)
{
    RunShell("mkdir -p " + dir.Path() + "/models " + dir.Path() + "/sub/deep");
    dir.AddFile("models/m.yang", FAULTY);
    dir.AddFile("korv-inspect.toml",
                "# all runs\n[check]\ndir = [\"models\", \".\"]\nall = true\nstrict = true\n"
                "off = [\"missing-field-id:models/*\"]\n\n[tree]\ndepth = \"1\"\n");
    const std::tuple<const char *, const char *, int, const char *> cases[] = {
        {"", ".", 1, "2 modules checked: no errors, 1 warning"},
        {"", "sub/deep", 1, "../../models/m.yang:12:7: warning"},
        {"m", "sub", 1, "1 module checked: no errors, 1 warning"},
        {"--off duplicate-field-id", "sub", 1, "../models/m.yang:6:5: warning"},
        {"--warn duplicate-field-id --error duplicate-field-id", "sub", 1, "error: leaf 'd'"},
        {"--error missing-field-id", "sub", 1, "../models/m.yang:6:5: error"},
        {"--config ../korv-inspect.toml", "sub", 1, "2 modules checked: no errors, 1 warning"},
        {"--no-config m -d models -d .", ".", 0, "1 module checked: no errors, 2 warnings"},
        {"m -d ../models --install-path .. --off missing-field-id --off duplicate-field-id", "sub", 0, "no warnings"},
    };
    for (const auto &[arguments, folder, exitCode, line] : cases) {
        const Result result = Run(arguments, folder);
        EXPECT_EQ(result.exitCode, exitCode) << arguments << result.err;
        EXPECT_NE(LineWith(result.out, line), "") << arguments << "\n" << result.out << result.err;
    }
}

TEST_F(InspectCheckReport, WhatAConfigurationFileCannotSayIsToldWithItsLine)
{
    dir.AddFile("m.yang", FAULTY);
    const std::pair<const char *, const char *> cases[] = {
        {"[check]\n\nstrct = true\n", "korv-inspect.toml:3: check has no option 'strct': did you mean 'strict'?"},
        {"strict = true\n", "korv-inspect.toml:1: 'strict' stands in no section"},
        {"# x\n[chek]\nstrict = true\n", "korv-inspect.toml:2: there is no command 'chek': did you mean 'check'?"},
        {"[check] # x\nstrict = maybe # or not\n", "korv-inspect.toml:2: 'strict' is true or false"},
        {"[check]\nformat = [\"text\", \"json\"]\n", "korv-inspect.toml:2: 'format' takes one value"},
        {"[check]\nall = false\nformat = \"xml\"\n", "korv-inspect.toml:3: --format: xml not in {text,json,"},
        {"[check]\nerror = [\"bad-numbr\"]\n", "korv-inspect.toml:2: --error: there is no rule 'bad-numbr': did you"},
        {"[check]\ndir = \"no/such\"\n", "korv-inspect.toml:2: --dir: Directory does not exist: no/such"},
        {"[check]\nstrict = true\nwarn = [\n\"bad-number\",\n", "korv-inspect.toml:3: this list has no end"},
        {"[diff]\nstrict = true\n", "korv-inspect.toml:2: diff has no option 'strict'"},
        {"[check]\noff = \"load-failed:x/*\"\n", "korv-inspect.toml:2: --off: a module that cannot be loaded is"},
        {"[check]\noff = \"missing-field-id:\"\n", "korv-inspect.toml:2: --off: 'missing-field-id:' names no files"},
        {"[check]\nformat = \"a\\\"#b\" # c\n", "korv-inspect.toml:2: --format: a\\\"#b not in {text,json,"},
    };
    for (const auto &[text, error] : cases) {
        dir.AddFile("korv-inspect.toml", text);
        const Result result = Run("m");
        EXPECT_EQ(result.exitCode, 2) << text;
        EXPECT_EQ(result.err.find(std::string("korv-inspect: ") + error), 0U) << result.err;
        EXPECT_EQ(Run("m --no-config").exitCode, 0);
        EXPECT_EQ(Run("--help").exitCode, 0) << "help needs no file";
    }
    EXPECT_EQ(Run("m --config none.toml").exitCode, 2);
    dir.AddFile("korv-inspect.toml",
                "[check]\nwarn = []\nerror = [ # both\n  \"bad-number\",\n  \"long-name\"\n]\noff = \"long-name\"\n");
    EXPECT_EQ(LineWith(Run("--rules").out, "long-name ").find("long-name                 error"), 0U);
    EXPECT_EQ(LineWith(Run("--rules --warn long-name").out, "long-name ").find("long-name                 warning"),
              0U);
}

} // namespace
