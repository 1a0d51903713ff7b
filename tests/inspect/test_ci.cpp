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
            "export GIT_CONFIG_GLOBAL=/dev/null GIT_CONFIG_NOSYSTEM=1 GIT_CEILING_DIRECTORIES=/; git() { command " +
            std::string(GIT) + "\"$@\"; }; cd " + dir.Path() + " && { " + command + "\n} 2>&1");
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
    EXPECT_EQ(commit("git rm -q -r models").exitCode, 0) << "no model is left";
}

} // namespace
