/* check: what a device would trip over. */
#include <unistd.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <set>
#include <tuple>

#include "base/failure.h"
#include "check/check_rules.h"
#include "check/rules.h"
#include "check/statement_rules.h"
#include "commands/commands.h"
#include "line/model_options.h"
#include "model/load_causes.h"
#include "model/message_text.h"
#include "model/module_search.h"
#include "model/schema_places.h"
#include "model/schema_scan.h"

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

bool Has(const std::vector<Finding> &findings, Rule rule)
{
    return std::any_of(findings.begin(), findings.end(),
                       [rule](const Finding &finding) { return finding.rule == rule; });
}

bool StandsBefore(const Finding &left, const Finding &right)
{
    return std::tie(left.cause.file, left.cause.line, left.cause.column) <
           std::tie(right.cause.file, right.cause.line, right.cause.column);
}

/* The module's top nodes that are no containers but hold or are classes: the library gives them no tree. */
std::vector<QY_NODE *> ClassesWithoutTree(QY_MOD *module)
{
    std::vector<QY_NODE *> found;
    ForEachTop(module, [&](QY_NODE *top) {
        if (QY_NODE_GetNodeType(top) == QY_NODE_TYPE_CONTAINER)
            return;
        bool holdsClass = false;
        ForEachBelow(top, [&](QY_NODE *below) { holdsClass |= !ExtensionArguments(below, "class-id").empty(); });
        if (holdsClass)
            found.push_back(top);
    });
    return found;
}

class Checker {
  public:
    Checker(const ModelRequest &request, bool all) : request_(request), all_(all), places_(request.dirs) {}

    std::vector<ModuleKey> Modules()
    {
        if (!all_)
            return request_.modules;
        std::vector<ModuleKey> modules;
        for (const std::string &name : ModuleNames(request_.dirs))
            if (!HoldsSubmodule(ModulePath(request_.dirs, name)))
                modules.push_back({name, ""});
        return modules;
    }

    /* Each module gets an instance of its own: it is judged by what it needs, not by what was checked before it. */
    std::vector<Finding> Check(const ModuleKey &key)
    {
        Instance instance(request_.dirs, request_.verbose);
        for (const ModuleKey &load : request_.loads)
            LoadOrFail(&instance, request_, load);
        LoadReport report = instance.Load(key);
        std::vector<Finding> findings = LoadFindings(instance, key, report);
        AddUnlistedDirs(key, &findings);
        AddTwins(instance, key, &findings);
        if (!report.loaded)
            return findings;
        std::vector<Finding> rules = RuleChecker(instance, Loaded(instance, key), &places_, &uses_).Check();
        findings.insert(findings.end(), rules.begin(), rules.end());
        if (QY_MOD *schema = QY_CTX_GetModuleByModName(instance.Schema(), key.name.c_str())) {
            std::vector<Finding> statements = StatementRules(instance.Schema(), schema, &places_).Check();
            findings.insert(findings.end(), statements.begin(), statements.end());
        }
        AddClassesWithoutTree(instance, key, &findings);
        if (report.problems.empty())
            AddMessages(key, report, &findings);
        std::stable_sort(findings.begin(), findings.end(), StandsBefore);
        return findings;
    }

  private:
    std::vector<Finding> LoadFindings(const Instance &instance, const ModuleKey &key, const LoadReport &report)
    {
        std::vector<Finding> findings;
        const Cause *seen = nullptr;
        std::vector<Cause> causes = CausesOf(instance, request_.dirs, key, report);
        for (const Cause &cause : causes)
            if (!cause.file.empty() && !reported_.insert(PlaceText(cause, key.name) + cause.text).second)
                seen = &cause;
            else
                findings.push_back({report.loaded ? Rule("deviation-failed") : Rule("load-failed"), key.name, cause});
        if (!report.loaded && findings.empty() && seen != nullptr) {
            findings.push_back({"load-failed", key.name, *seen});
            findings.back().cause.text = "module '" + key.name + "' is not loaded for the same reason";
        }
        if (report.loaded && !causes.empty())
            findings.push_back({"deviation-failed",
                                key.name,
                                {"", 0, 0, "the module is loaded without its deviations: it is not what was meant"}});
        return findings;
    }

    /* Each directory once. */
    void AddUnlistedDirs(const ModuleKey &key, std::vector<Finding> *findings)
    {
        for (const std::string &dir : request_.dirs.dirs) {
            std::error_code error;
            std::filesystem::directory_iterator listing(dir, error);
            if (error && reported_.insert(dir).second)
                findings->push_back({"unlisted-directory",
                                     key.name,
                                     {"", 0, 0,
                                      "directory '" + dir + "' cannot be listed (" + error.message() +
                                          "): deviation files and files of other revisions in it are not seen"}});
        }
    }

    /* Files of one name in both syntaxes, each pair once. */
    void AddTwin(const std::string &module, const std::string &path, std::vector<Finding> *findings)
    {
        std::string yin = ShownPath(request_.dirs, path);
        std::string compact = TwinOf(yin);
        if (compact.ends_with(".yin"))
            yin.swap(compact);
        if (compact.empty() || !reported_.insert(compact).second)
            return;
        Finding finding = {"two-syntaxes", module, {yin, 0, 0, ""}};
        finding.cause.text = "'" + compact + "' stands beside it: of the two, a load by name reads the .yin file alone";
        findings->push_back(finding);
    }

    /* Of the module's own file, loaded or not, and of its submodules'. */
    void AddTwins(const Instance &instance, const ModuleKey &key, std::vector<Finding> *findings)
    {
        AddTwin(key.name, ModulePath(request_.dirs, key.name), findings);
        if (QY_MOD *module = QY_CTX_GetModuleByModName(instance.Schema(), key.name.c_str()))
            for (const std::string &path : PathsOf(module))
                AddTwin(key.name, path, findings);
    }

    void AddClassesWithoutTree(const Instance &instance, const ModuleKey &key, std::vector<Finding> *findings)
    {
        QY_MOD *module = QY_CTX_GetModuleByModName(instance.Schema(), key.name.c_str());
        if (module == nullptr)
            return;
        for (QY_NODE *top : ClassesWithoutTree(module)) {
            Finding finding = {"class-without-tree", key.name, {}};
            finding.cause.text =
                "'" + NameOf(top) + "' is no container at the module's top: its classes are in no tree";
            PlaceAt(places_.Of(top), &finding.cause);
            findings->push_back(finding);
        }
    }

    /* What the library has said beyond what the rules find by themselves, each once. */
    static void AddMessages(const ModuleKey &key, const LoadReport &report, std::vector<Finding> *findings)
    {
        bool keysExplained = Has(*findings, "unmapped-ancestor-key");
        bool idsExplained = Has(*findings, "missing-field-id") || Has(*findings, "key-without-field-id");
        std::set<std::string> said;
        for (const std::string &error : report.errors) {
            Remark remark = RemarkOf(error);
            bool explained =
                (remark == Remark::AncestorKey && keysExplained) || (remark == Remark::FieldId && idsExplained);
            if (!explained && said.insert(error).second)
                findings->push_back({"library-message", key.name, {"", 0, 0, error}});
        }
    }

    const ModelRequest &request_;
    bool all_; /* every module of the directories */
    Places places_;
    ClassUses uses_;
    std::set<std::string> reported_; /* causes of failed loads, and directories: what many modules meet is told once */
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
