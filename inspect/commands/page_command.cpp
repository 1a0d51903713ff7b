/* page: all modules in one file for a browser. */
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <set>

#include "base/failure.h"
#include "base/output_file.h"
#include "base/progress.h"
#include "check/checker.h"
#include "check/report/report.h"
#include "commands/commands.h"
#include "diff/git_folders.h"
#include "diff/versions.h"
#include "line/model_options.h"
#include "model/module_search.h"
#include "page/page.h"

namespace inspect {
namespace {

constexpr const char *HELP =
    R"(The page is one file that opens from a disk, without a network: modules and classes to unfold,
with ids, keys and types, a search, a link to everything in it, the texts with which a host
asks for a node, and what 'check' finds. With --against it says what has changed since
another version. The same models make the same file.

A module that cannot be loaded is shown with the reason, and the exit status is 3.

Examples:
  korv-inspect page --all -d examples/yin -o examples.html
  korv-inspect page example-qos -d examples/yin -o qos.html
  korv-inspect page --all -d examples/yin --against examples/yin -o changes.html)";

namespace fs = std::filesystem;

class PageCommand final : public Command {
  public:
    void AddTo(CLI::App *app) override
    {
        options_.AddCommon(app);
        options_.AddModules(app, "Modules to show");
        app->add_flag("--all", all_, "Show every module of the directories");
        app->add_option("-o,--output", output_, "The file to make, standard output when not given")
            ->option_text("FILE");
        app->add_option("--against", against_, "Show what has changed since this version; a directory may be repeated")
            ->option_text("DIR|REF[:FOLDER]")
            ->allow_extra_args(false);
    }

    void Understand() override
    {
        options_.Understand();
        if (all_ == !options_.Request().modules.empty())
            throw CLI::ValidationError("name the modules to show, or give --all");
        isAgainstGit_ = against_.size() == 1 && !fs::is_directory(against_.front());
        for (const std::string &dir : against_)
            if (std::string wrong = CLI::ExistingDirectory(dir); !isAgainstGit_ && !wrong.empty())
                throw CLI::ValidationError(wrong);
    }

    int Run() override;

  private:
    struct Versions {
        diff::Version before;
        diff::Version after;
    };

    std::set<std::string> NamesIn(const SearchDirs &dirs) const;
    std::vector<std::string> OldDirs(diff::GitFolders *git) const;
    Versions LoadVersions() const;
    int Report(const Checker::Modules &modules, const std::set<std::string> &uncompared) const;

    ModelOptions options_;
    bool all_ = false;
    std::string output_;
    std::vector<std::string> against_;
    bool isAgainstGit_ = false;
};

/* The modules that the page shows, as far as the directories have them. */
std::set<std::string> PageCommand::NamesIn(const SearchDirs &dirs) const
{
    std::set<std::string> names;
    for (const std::string &name : ModuleNames(dirs))
        if (all_ || std::any_of(options_.Request().modules.begin(), options_.Request().modules.end(),
                                [&name](const ModuleKey &key) { return key.name == name; }))
            names.insert(name);
    return names;
}

/* Where the old version's files are now. */
std::vector<std::string> PageCommand::OldDirs(diff::GitFolders *git) const
{
    if (git == nullptr)
        return against_;
    std::vector<std::string> dirs;
    for (const std::string &dir : options_.Dirs()) {
        dirs.push_back(git->Take(dir, options_.IsRecursive()));
        if (git->HasOneFolder())
            break;
    }
    return dirs;
}

/* What the old version does not have by itself, say a module with common types, is that of the new one. */
PageCommand::Versions PageCommand::LoadVersions() const
{
    std::optional<diff::GitFolders> git;
    if (isAgainstGit_)
        git.emplace(diff::GitRevision::Parse(against_.front()), diff::Missing::IsEmpty);
    const ModelRequest &after = options_.Request();
    ModelRequest before = options_.RequestWith(OldDirs(git ? &*git : nullptr));
    if (git)
        git->ShowIn(&before.dirs);
    SearchDirs own = before.dirs;
    own.dirs.resize(own.dirs.size() - after.dirs.dirs.size());
    return {diff::LoadModules(before, NamesIn(own)), diff::LoadModules(after, NamesIn(after.dirs))};
}

/* Says which modules are not loaded; the loads of the comparison have said which of theirs are not. */
int PageCommand::Report(const Checker::Modules &modules, const std::set<std::string> &uncompared) const
{
    const Notes &notes = options_.Request().notes;
    int code = uncompared.empty() ? EXIT_OK : EXIT_NOT_LOADED;
    for (const DeviceModule &module : modules) {
        if (module.report.loaded || uncompared.contains(module.key.name))
            continue;
        for (const Cause &cause : module.causes)
            notes.Say(cause, module.key.name);
        notes.Say("module '" + module.key.name + "' cannot be loaded: the page shows why");
        code = EXIT_NOT_LOADED;
    }
    return code;
}

int PageCommand::Run()
{
    const ModelRequest &request = options_.Request();
    Checker checker(request, all_);
    Progress progress;
    CheckResult result = checker.Check(
        [&progress](size_t number, size_t total, const std::string &module) { progress.Show(number, total, module); });
    progress.Clear();
    (void)Ignores(request.dirs, checker.Marked(), all_).Apply(&result.findings);
    Policy policy;
    auto report = MakeReport(std::move(result.findings), std::move(result.modules), {policy, nullptr, all_});
    page::Source source = {request, checker.Checked(), checker.CheckedModules(), report.findings, "", {}, {}};
    std::optional<Versions> versions; /* what the changes refer to */
    if (!against_.empty()) {
        versions.emplace(LoadVersions());
        source.against = against_.front();
        source.changes = diff::CompareAll(versions->before, versions->after, diff::By::Path);
        source.uncompared = versions->before.failed;
        source.uncompared.insert(versions->after.failed.begin(), versions->after.failed.end());
    }
    std::string page = page::PageOf(source);
    if (output_.empty())
        std::fwrite(page.data(), 1, page.size(), stdout);
    else
        WriteOutputFile(output_, page);
    return Report(checker.CheckedModules(), source.uncompared);
}

} // namespace

const CommandEntry PAGE_COMMAND = {"page", "Show modules in one file for a browser", HELP, Make<PageCommand>};

} // namespace inspect
