/* diff: two versions of a module, or of all modules. */
#include <CLI/CLI.hpp>

#include <algorithm>
#include <iterator>

#include "base/failure.h"
#include "commands/commands.h"
#include "diff/changes.h"
#include "diff/git_folders.h"
#include "diff/rules.h"
#include "diff/versions.h"
#include "diff/write.h"
#include "line/model_options.h"
#include "model/module_search.h"

namespace inspect {
namespace {

constexpr const char *HELP =
    R"(Compares what a device makes of the two versions, deviations and augments applied, and what
else their statements say. A change is breaking when a host that looks data up, or whoever
reads or writes it, has to follow: RFC 7950, 11 is the guide. Hosts look up by path, so that
a new name or place is breaking; with '--by id' it is not, nor is anything without ids.
'korv-inspect diff --rules' lists what is compared.

Either version may have several directories: one for what has changed, say, and the common
one. With --against, the old version is that of the same directories in a revision of their
git repository.

Examples:
  korv-inspect diff example-interfaces --old examples/yin --new examples/yin
  korv-inspect diff --all examples/yin examples/yin
  korv-inspect diff --rules)";

using diff::By;
using diff::ModuleChanges;
using diff::Version;

class DiffCommand final : public Command {
  public:
    void AddTo(CLI::App *app) override
    {
        options_.AddCommon(app);
        app->add_option("MODULE", arguments_, "The module; with --all, the directories of both versions")
            ->option_text("[@REVISION] | OLD NEW");
        app->add_flag("--all", all_, "Compare every module of the directories");
        ModelOptions::AddDirOption(app, "--old", &oldDirs_, "Directory of the old version; may be repeated");
        ModelOptions::AddDirOption(app, "-d,--dir,--new", &newDirs_, "Directory of the new version; may be repeated");
        app->add_option("--against", against_, "Old version: this revision of the new version's directories in git")
            ->option_text("REF[:FOLDER]");
        app->add_option("--by", by_, "How hosts find data (path)")
            ->option_text("path|id")
            ->check(CLI::IsMember({"path", "id"}));
        app->add_flag("--rules", rules_, "List what is compared, and when a change is breaking");
        options_.AddFormats(app, {"text", "json"});
    }

    void Understand() override;

    int Run() override;

  private:
    void UnderstandDirs();
    ModelRequest RequestOf(const std::vector<std::string> &dirs) const;
    std::set<std::string> NamesIn(const ModelRequest &request) const;
    ModelRequest OldRequest(diff::GitFolders *git) const;
    int CompareOne(const ModelRequest &oldSide, const ModelRequest &newSide) const;
    int CompareAll(const ModelRequest &oldSide, const ModelRequest &newSide) const;
    By HostsGo() const { return by_ == "id" ? By::Id : By::Path; }

    ModelOptions options_;
    ModuleKey module_;
    std::vector<std::string> arguments_;
    std::vector<std::string> oldDirs_;
    std::vector<std::string> newDirs_;
    std::string against_;
    std::string by_ = "path";
    bool all_ = false;
    bool rules_ = false;
};

/* With --all the arguments are directories. */
void DiffCommand::UnderstandDirs()
{
    if (arguments_.size() > 2)
        throw CLI::ValidationError("--all compares two directories");
    for (const std::string &dir : arguments_)
        if (std::string wrong = CLI::ExistingDirectory(dir); !wrong.empty())
            throw CLI::ValidationError(wrong);
    if (!arguments_.empty())
        newDirs_.insert(newDirs_.begin(), arguments_.back());
    if (arguments_.size() == 2)
        oldDirs_.insert(oldDirs_.begin(), arguments_.front());
}

void DiffCommand::Understand()
{
    options_.Understand();
    if (rules_)
        return;
    if (all_)
        UnderstandDirs();
    else if (arguments_.size() != 1)
        throw CLI::ValidationError("MODULE is required: name one module, or give --all");
    else
        module_ = options_.ToModuleKey(arguments_.front());
    if (newDirs_.empty() && !against_.empty())
        newDirs_.emplace_back(".");
    if (newDirs_.empty())
        throw CLI::ValidationError("--new is required");
    if (oldDirs_.empty() && against_.empty())
        throw CLI::ValidationError("--old or --against is required");
}

ModelRequest DiffCommand::RequestOf(const std::vector<std::string> &dirs) const
{
    ModelRequest request = options_.RequestWith(dirs);
    if (!all_)
        request.modules = {module_};
    return request;
}

/* The new version's directories as git has them, then those of --old. */
ModelRequest DiffCommand::OldRequest(diff::GitFolders *git) const
{
    if (git == nullptr)
        return RequestOf(oldDirs_);
    std::vector<std::string> dirs;
    for (const std::string &dir : newDirs_) {
        dirs.push_back(git->Take(dir, options_.IsRecursive()));
        if (git->HasOneFolder())
            break;
    }
    dirs.insert(dirs.end(), oldDirs_.begin(), oldDirs_.end());
    ModelRequest request = RequestOf(dirs);
    git->ShowIn(&request.dirs);
    return request;
}

/* The modules of a version's own directories: those of the environment and of --install-path come behind them. */
std::set<std::string> DiffCommand::NamesIn(const ModelRequest &request) const
{
    SearchDirs own = request.dirs;
    own.dirs.resize(own.dirs.size() - options_.Request().dirs.dirs.size());
    std::vector<std::string> names = ModuleNames(own);
    return {names.begin(), names.end()};
}

int DiffCommand::CompareOne(const ModelRequest &oldSide, const ModelRequest &newSide) const
{
    Version before = diff::LoadModule(oldSide);
    Version after = diff::LoadModule(newSide);
    const diff::ModuleModel &oldModel = *before.modules.begin()->second;
    const diff::ModuleModel &newModel = *after.modules.begin()->second;
    ModuleChanges changes = {module_.name, oldModel.revision, newModel.revision,
                             diff::Compare(oldModel, newModel, HostsGo())};
    if (options_.OutputFormat() == Format::Json)
        diff::WriteJson(changes);
    else
        diff::WriteText(changes, options_.Colors());
    return diff::CountBreaking(changes.changes) != 0 ? EXIT_NEGATIVE : EXIT_OK;
}

int DiffCommand::CompareAll(const ModelRequest &oldSide, const ModelRequest &newSide) const
{
    std::set<std::string> names = NamesIn(oldSide);
    names.merge(NamesIn(newSide));
    if (names.empty())
        throw Failure("the directories have no module file: --all compares the modules in them", EXIT_USAGE);
    Version before = diff::LoadModules(oldSide, names);
    Version after = diff::LoadModules(newSide, names);
    std::vector<ModuleChanges> all = diff::CompareAll(before, after, HostsGo());
    std::vector<std::string> failed;
    std::set_union(before.failed.begin(), before.failed.end(), after.failed.begin(), after.failed.end(),
                   std::back_inserter(failed));
    if (options_.OutputFormat() == Format::Json)
        diff::WriteAllJson(all, failed);
    else
        diff::WriteAllText(all, options_.Colors());
    if (!failed.empty())
        return EXIT_NOT_LOADED;
    bool isBreaking = std::any_of(all.begin(), all.end(),
                                  [](const ModuleChanges &module) { return diff::CountBreaking(module.changes) != 0; });
    return isBreaking ? EXIT_NEGATIVE : EXIT_OK;
}

int DiffCommand::Run()
{
    if (rules_) {
        if (options_.OutputFormat() == Format::Json)
            diff::WriteRulesJson();
        else
            diff::WriteRulesText();
        return EXIT_OK;
    }
    std::optional<diff::GitFolders> git;
    if (!against_.empty())
        git.emplace(diff::GitRevision::Parse(against_), all_ ? diff::Missing::IsEmpty : diff::Missing::Fails);
    ModelRequest newSide = RequestOf(newDirs_);
    ModelRequest oldSide = OldRequest(git ? &*git : nullptr);
    return all_ ? CompareAll(oldSide, newSide) : CompareOne(oldSide, newSide);
}

} // namespace

const CommandEntry DIFF_COMMAND = {"diff", "Compare two versions of a module", HELP, Make<DiffCommand>};

} // namespace inspect
