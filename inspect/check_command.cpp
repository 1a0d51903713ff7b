/* check: what a device would trip over. */
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <set>
#include <tuple>

#include "check_rules.h"
#include "commands.h"
#include "failure.h"
#include "message_text.h"
#include "schema_scan.h"
#include "statement_rules.h"

namespace inspect {
namespace {

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

bool Has(const std::vector<Finding> &findings, const char *name)
{
    return std::any_of(findings.begin(), findings.end(),
                       [name](const Finding &finding) { return finding.name == name; });
}

bool StandsBefore(const Finding &left, const Finding &right)
{
    return std::tie(left.cause.file, left.cause.line) < std::tie(right.cause.file, right.cause.line);
}

/* Names of the module's top nodes that are no containers but hold or are classes: the library gives them no tree. */
std::vector<std::string> ClassesWithoutTree(QY_MOD *module)
{
    std::vector<std::string> names;
    ForEachTop(module, [&](QY_NODE *top) {
        if (QY_NODE_GetNodeType(top) == QY_NODE_TYPE_CONTAINER)
            return;
        bool holdsClass = false;
        ForEachBelow(top, [&](QY_NODE *below) { holdsClass |= !ExtensionArguments(below, "class-id").empty(); });
        if (holdsClass)
            names.push_back(NameOf(top));
    });
    return names;
}

class Checker {
  public:
    explicit Checker(const Arguments &args) : args_(args), files_(args.dirs) {}

    std::vector<ModuleKey> Modules()
    {
        if (!args_.all)
            return args_.modules;
        std::vector<ModuleKey> modules;
        for (const std::string &name : files_.Names()) {
            const YinFile *file = files_.Find(name);
            if (file == nullptr || !file->IsSubmodule())
                modules.push_back({name, ""});
        }
        return modules;
    }

    /* Each module gets an instance of its own: it is judged by what it needs, not by what was checked before it. */
    std::vector<Finding> Check(const ModuleKey &key)
    {
        Instance instance(args_.dirs, args_.verbose);
        for (const ModuleKey &load : args_.loads)
            LoadOrFail(&instance, args_, load);
        const LoadReport report = instance.Load(key);
        std::vector<Finding> findings = LoadFindings(instance, key, report);
        if (!report.loaded)
            return findings;
        const StatementFinder finder(key.name, instance.Revision(key.name), &files_);
        const std::vector<Finding> rules = RuleChecker(Loaded(instance, key), finder, &uses_).Check();
        findings.insert(findings.end(), rules.begin(), rules.end());
        if (QY_MOD *schema = QY_CTX_GetModuleByModName(instance.Schema(), key.name.c_str())) {
            const std::vector<Finding> statements = StatementRules(schema, finder).Check();
            findings.insert(findings.end(), statements.begin(), statements.end());
        }
        AddClassesWithoutTree(instance, key, finder, &findings);
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
        const std::vector<Cause> causes = CausesOf(instance, args_.dirs, key, report, &files_);
        for (const Cause &cause : causes) {
            if (!cause.file.empty() && !reported_.insert(PlaceText(cause, key.name) + cause.text).second)
                seen = &cause;
            else
                findings.push_back({report.loaded ? "deviation-failed" : "load-failed", true, key.name, cause});
        }
        if (!report.loaded && findings.empty() && seen != nullptr) {
            findings.push_back({"load-failed", true, key.name, *seen});
            findings.back().cause.text = "module '" + key.name + "' is not loaded for the same reason";
        }
        if (report.loaded && !causes.empty())
            findings.push_back({"deviation-failed",
                                true,
                                key.name,
                                {"", 0, 0, "the module is loaded without its deviations: it is not what was meant"}});
        return findings;
    }

    void AddClassesWithoutTree(const Instance &instance, const ModuleKey &key, const StatementFinder &finder,
                               std::vector<Finding> *findings)
    {
        QY_MOD *module = QY_CTX_GetModuleByModName(instance.Schema(), key.name.c_str());
        if (module == nullptr)
            return;
        for (const std::string &name : ClassesWithoutTree(module)) {
            Finding finding = {"class-without-tree", false, key.name, {}};
            finding.cause.text = "'" + name + "' is no container at the module's top: its classes are in no tree";
            if (const auto position = finder.Find({{name.c_str(), key.name.c_str(), true}})) {
                finding.cause.file = position->file;
                finding.cause.line = position->line;
            }
            findings->push_back(finding);
        }
    }

    /* What the library has said beyond what the rules find by themselves, each once. */
    static void AddMessages(const ModuleKey &key, const LoadReport &report, std::vector<Finding> *findings)
    {
        const bool keysExplained = Has(*findings, "unmapped-ancestor-key");
        const bool idsExplained = Has(*findings, "missing-field-id") || Has(*findings, "key-without-field-id");
        std::set<std::string> said;
        for (const std::string &error : report.errors) {
            const Remark remark = RemarkOf(error);
            const bool explained =
                (remark == Remark::ANCESTOR_KEY && keysExplained) || (remark == Remark::FIELD_ID && idsExplained);
            if (!explained && said.insert(error).second)
                findings->push_back({"library-message", false, key.name, {"", 0, 0, error}});
        }
    }

    const Arguments &args_;
    YinFiles files_;
    ClassUses uses_;
    std::set<std::string> reported_; /* causes of failed loads: a file that many modules import is at fault once */
};

} // namespace

int RunCheck(const Arguments &args)
{
    Checker checker(args);
    const std::vector<ModuleKey> modules = checker.Modules();
    if (modules.empty())
        throw Failure("no module in the directories");
    std::vector<Finding> all;
    std::vector<std::string> names;
    Progress progress(modules.size());
    for (const ModuleKey &module : modules) {
        progress.Show(names.size() + 1, module.name);
        const std::vector<Finding> findings = checker.Check(module);
        names.push_back(module.name);
        all.insert(all.end(), findings.begin(), findings.end());
        if (args.format == Format::JSON || findings.empty())
            continue;
        progress.Clear();
        for (const Finding &finding : findings)
            std::printf("%s\n", FindingText(finding).c_str());
        std::fflush(stdout);
    }
    progress.Clear();
    if (args.format == Format::JSON)
        WriteFindingsJson(names, all);
    else
        std::printf("%s\n", SummaryText(names.size(), all).c_str());
    return HasErrors(all) ? EXIT_NEGATIVE : EXIT_OK;
}

} // namespace inspect
