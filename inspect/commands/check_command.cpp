/* check: what a device would trip over. */
#include <unistd.h>
#include <CLI/CLI.hpp>

#include <cstdio>

#include "base/failure.h"
#include "check/checker.h"
#include "check/rules.h"
#include "commands/commands.h"
#include "line/model_options.h"

namespace inspect {
namespace {

constexpr const char *INTRODUCTION =
    R"(Each module is loaded by itself, after those of --load. Findings name the file and line
where these can be told, and end in a short name that stays the same from release to
release. Errors give exit status 1; a warning keeps nothing from being loaded.

)";

constexpr const char *EXAMPLES = R"(
Examples:
  korv-inspect check example-interfaces -d examples/yin
  korv-inspect check --all -d examples/yin --format json)";

/* A line on standard error that each module overwrites; nothing unless that is a terminal. */
class Progress {
  public:
    explicit Progress(size_t total) : total_(isatty(STDERR_FILENO) == 1 ? total : 0) {}

    void Show(size_t number, const std::string &module) const
    {
        if (total_ > 1)
            std::fprintf(stderr, "\r\033[K[%zu/%zu] %s", number, total_, module.c_str());
    }

    void Clear() const
    {
        if (total_ > 1)
            std::fputs("\r\033[K", stderr);
    }

  private:
    size_t total_;
};

class CheckCommand final : public Command {
  public:
    void AddTo(CLI::App *app) override
    {
        options_.AddCommon(app);
        options_.AddModules(app, "Modules to check");
        app->add_flag("--all", all_, "Check every module of the directories");
        options_.AddFormats(app, {"text", "json"});
    }

    void Understand() override
    {
        options_.Understand();
        if (all_ != options_.Request().modules.empty())
            throw CLI::ValidationError("name the modules to check, or give --all");
    }

    int Run() override;

  private:
    ModelOptions options_;
    bool all_ = false;
};

const char *Help()
{
    static const std::string text = INTRODUCTION + RulesText() + EXAMPLES;
    return text.c_str();
}

int CheckCommand::Run()
{
    Checker checker(options_.Request(), all_);
    std::vector<ModuleKey> modules = checker.Modules();
    if (modules.empty())
        throw Failure("no module in the directories");
    std::vector<Finding> all;
    std::vector<std::string> names;
    Progress progress(modules.size());
    for (const ModuleKey &module : modules) {
        progress.Show(names.size() + 1, module.name);
        std::vector<Finding> findings = checker.Check(module);
        names.push_back(module.name);
        all.insert(all.end(), findings.begin(), findings.end());
        if (options_.OutputFormat() == Format::Json || findings.empty())
            continue;
        progress.Clear();
        for (const Finding &finding : findings)
            std::printf("%s\n", FindingText(finding).c_str());
        std::fflush(stdout);
    }
    progress.Clear();
    if (options_.OutputFormat() == Format::Json)
        WriteFindingsJson(names, all);
    else
        std::printf("%s\n", SummaryText(names.size(), all).c_str());
    return HasErrors(all) ? EXIT_NEGATIVE : EXIT_OK;
}

} // namespace

const CommandEntry CHECK_COMMAND = {"check", "Report what a device would trip over", Help(), Make<CheckCommand>};

} // namespace inspect
