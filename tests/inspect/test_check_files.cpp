/* check: which files and directories are read, and what is said of the others. */
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <regex>

#include "inspect/run_inspect.h"
#include "support/models.h"
#include "support/unprivileged.h"

using namespace test;

namespace {

class InspectCheckFiles : public ::testing::Test {
  protected:
    Result Run(std::vector<std::string> args)
    {
        args.insert(args.begin(), "check");
        args.insert(args.end(), {"-d", dir.Path()});
        return Inspect(args);
    }

    ModelDir dir;
};

TEST_F(InspectCheckFiles, FilesThatStandBesideOneAnother)
{
    dir.AddFile("m@2020-01-01.yang", "module m { }");
    dir.AddFile("m@2020-01-01.yin", Module("m", "<revision date=\"2020-01-01\"/>"));
    const std::string twins = dir.Path() + "/m@2020-01-01.yin: warning: '" + dir.Path() +
                              "/m@2020-01-01.yang' stands beside it: of the two, a load by name reads the .yin file "
                              "alone [two-syntaxes]";
    for (const std::string &arg : {std::string("m"), std::string("--all"), dir.Path() + "/m@2020-01-01.yin"})
        EXPECT_EQ(LineWith(Run({arg}).out, "two-syntaxes"), twins) << arg;
    dir.Add("m", "");
    const std::string unread = "/m@2020-01-01.yin: warning: nothing reads the file: a load by name takes '";
    EXPECT_NE(LineWith(Run({"m"}).out, unread), "");
    EXPECT_EQ(LineWith(Run({dir.Path() + "/m@2020-01-01.yin"}).out, "a load by name takes"), "")
        << "it is not loaded by name";
}

TEST_F(InspectCheckFiles, FilesThatNoLoadReaches)
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

TEST_F(InspectCheckFiles, AllMeansTheModulesOfTheDirectoriesOfD)
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

TEST_F(InspectCheckFiles, ReadsNothingThatIsNoFileOfReasonableSize)
{
    dir.Add("m", Container("c", ClassId("1")));
    RunShell("cd " + dir.Path() + " && mkfifo pipe.yin && mkdir folder.yin && truncate -s 1G large.yin");
    const Result result = Run({"--all"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_NE(LineWith(result.out, "/pipe.yin' is not a regular file"), "") << result.out;
    EXPECT_NE(LineWith(result.out, "/large.yin' is larger than 256 MiB"), "") << result.out;
    EXPECT_TRUE(result.out.ends_with("5 modules checked: 3 errors, no warnings\n")) << result.out;
}

TEST_F(InspectCheckFiles, DirectoriesThatHideDeviations)
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

} // namespace
