/* The files of docs/ci/ as a model repository uses them. */
#include <gtest/gtest.h>

#include "inspect/run_inspect.h"
#include "support/models.h"

using namespace test;

namespace {

constexpr const char *GIT = "git -c user.name=test -c user.email=test@localhost -c init.defaultBranch=main ";

/* A repository with the models of a device in the folder models. */
class Repository {
  public:
    Repository()
    {
        Run("git init -q && cp " KORV_SOURCE_DIR
            "/docs/ci/pre-commit .git/hooks/ && mkdir models && mv *.yin models &&"
            " git config korv-inspect.models models && echo text > README");
        Write("m", Container("c", Leaf("x", "string")));
    }

    Result Run(const std::string &command) const
    {
        return RunShell(
            "cd " + dir.Path() +
            "; export GIT_CONFIG_GLOBAL=$PWD/.git/global GIT_CONFIG_NOSYSTEM=1 GIT_CEILING_DIRECTORIES=/; git() "
            "{ command " +
            GIT + "\"$@\"; }; { " + command + "\n} 2>&1");
    }

    void Write(const std::string &module, const std::string &body) const
    {
        dir.AddFile("models/" + module + ".yin", Module(module, body));
    }

  private:
    mutable ModelDir dir;
};

TEST(InspectCi, TheHookRefusesWhatIsStagedWithAFaultAndNothingElse)
{
    const Repository repository;
    const auto commit = [&](const std::string &add) { return repository.Run(add + " && git commit -q -m change"); };
    EXPECT_EQ(commit("git add README").out, "");
    const Result good = commit("git add models");
    EXPECT_EQ(good.exitCode, 0) << good.out;
    EXPECT_NE(LineWith(good.out, "2 modules checked: no errors"), "") << good.out;

    repository.Write("m", Container("c", Leaf("x", "strng")));
    EXPECT_EQ(commit("echo more >> README; git add README").exitCode, 0) << "the fault is not staged";
    const Result bad = commit("git add models");
    EXPECT_NE(bad.exitCode, 0);
    EXPECT_EQ(LineWith(bad.out, "unknown type 'strng'").find("models/m.yin:5:16: error: "), 0U) << bad.out;
    repository.Write("m", Container("c", Leaf("x", "uint8")));
    EXPECT_NE(commit(":").exitCode, 0) << "the fault is still staged";
    EXPECT_EQ(commit("git add models").exitCode, 0);

    /* A baseline counts, wherever it stands. */
    repository.Write("m", Container("c", Ext("class-id", "1") + Leaf("x", "uint8")));
    repository.Run("mkdir ci && printf '[check]\nstrict = true\nbaseline = \"ci/known.json\"\n' >korv-inspect.toml");
    const Result known =
        commit("korv-inspect check --all -d models --no-config --write-baseline ci/known.json; git add .");
    EXPECT_EQ(known.exitCode, 0) << known.out;
    EXPECT_NE(LineWith(known.out, "1 known finding of the baseline"), "") << known.out;
    EXPECT_EQ(commit("git rm -q -r models").exitCode, 0) << "no model is left";
    const std::pair<std::string, std::string> wrong[] = {{"modls", "the repository has no folder 'modls'"},
                                                         {"..", "is outside repository"}};
    for (const auto &[folder, text] : wrong) {
        const Result refused = commit("git config korv-inspect.models " + folder + "; git add .");
        EXPECT_NE(refused.exitCode, 0);
        EXPECT_NE(LineWith(refused.out, text), "") << refused.out;
    }
}

TEST(InspectCi, TheJobChecksEveryModelAndComparesWithTheBranchItGoesTo)
{
    const Repository repository;
    const auto classOf = [](const std::string &type, const std::string &id) {
        return Container("c", Ext("class-id", "1") + Leaf("x", type, Ext("field-id", id)));
    };
    /* The workspace belongs to somebody else as far as the tests may give it away. */
    const auto job = [&](const std::string &body) {
        repository.Write("m", body);
        return repository
            .Run("git commit -q -a -m change && { chown -R 12345 . 2>/dev/null || :; } && python3 " KORV_SOURCE_DIR
                 "/tests/inspect/run_job.py " KORV_SOURCE_DIR "/docs/ci/job.yml BASE=main; chown -R $(id -u) .")
            .out;
    };
    repository.Write("m", classOf("string", "1"));
    repository.Run("rm .git/hooks/pre-commit; git add . && git commit -q -m models && git checkout -q -b change");
    repository.Write("new", "");
    repository.Run("git checkout -q main && git add . && git commit -q -m new && git checkout -q change");
    const std::string same = job(classOf("string", "1") + "<!-- a comment -->");
    EXPECT_EQ(same.find("Check the models\n"), 0U) << same;
    EXPECT_NE(same.find("exit status 0\nSay what hosts have to follow\n"), std::string::npos) << same;
    EXPECT_TRUE(same.ends_with("exit status 0\n")) << same;

    const std::string other = job(classOf("string", "2"));
    EXPECT_NE(LineWith(other, "breaking    /c/x  field id 1 -> 2"), "") << other;
    EXPECT_TRUE(other.ends_with("exit status 1\n")) << other;

    const std::string wrong = job(classOf("strng", "1"));
    EXPECT_EQ(LineWith(wrong, "unknown type").find("::error file=models/m.yin,line=6,col=16,"), 0U) << wrong;
    EXPECT_TRUE(wrong.ends_with("exit status 3\n")) << "the comparison cannot load it, either: " << wrong;
}

} // namespace
