#include "check/checker.h"

#include <algorithm>
#include <filesystem>

#include "check/statement_rules.h"
#include "check/yang/node_rules.h"
#include "model/load_causes.h"
#include "model/message_text.h"
#include "model/module_search.h"
#include "model/schema_scan.h"

namespace inspect {
namespace {

bool Has(const std::vector<Finding> &findings, Rule rule)
{
    return std::any_of(findings.begin(), findings.end(),
                       [rule](const Finding &finding) { return finding.rule == rule; });
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

} // namespace

std::vector<ModuleKey> Checker::Modules() const
{
    if (!all_)
        return request_.modules;
    std::vector<ModuleKey> modules;
    for (const std::string &name : ModuleNames(request_.dirs))
        if (!HoldsSubmodule(ModulePath(request_.dirs, name)))
            modules.push_back({name, ""});
    return modules;
}

std::vector<Finding> Checker::Check(const ModuleKey &key)
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
        NoteMarkedFiles(instance.Schema(), schema, request_.dirs, &marked_);
        std::vector<Finding> statements = StatementRules(instance.Schema(), schema, &places_).Check();
        findings.insert(findings.end(), statements.begin(), statements.end());
        std::vector<Finding> yang = CheckYangStatements(instance.Schema(), schema, &places_, &namespaces_);
        findings.insert(findings.end(), yang.begin(), yang.end());
        std::vector<Finding> nodes = CheckNodes(instance.Schema(), schema, &places_);
        findings.insert(findings.end(), nodes.begin(), nodes.end());
    }
    AddClassesWithoutTree(instance, key, &findings);
    if (report.problems.empty())
        AddMessages(key, report, &findings);
    return findings;
}

std::vector<Finding> Checker::LoadFindings(const Instance &instance, const ModuleKey &key, const LoadReport &report)
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
void Checker::AddUnlistedDirs(const ModuleKey &key, std::vector<Finding> *findings)
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
void Checker::AddTwin(const std::string &module, const std::string &path, std::vector<Finding> *findings)
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
void Checker::AddTwins(const Instance &instance, const ModuleKey &key, std::vector<Finding> *findings)
{
    AddTwin(key.name, ModulePath(request_.dirs, key.name), findings);
    if (QY_MOD *module = QY_CTX_GetModuleByModName(instance.Schema(), key.name.c_str()))
        for (const std::string &path : PathsOf(module))
            AddTwin(key.name, path, findings);
}

void Checker::AddClassesWithoutTree(const Instance &instance, const ModuleKey &key, std::vector<Finding> *findings)
{
    QY_MOD *module = QY_CTX_GetModuleByModName(instance.Schema(), key.name.c_str());
    if (module == nullptr)
        return;
    for (QY_NODE *top : ClassesWithoutTree(module)) {
        Finding finding = {"class-without-tree", key.name, {}};
        finding.cause.text = "'" + NameOf(top) + "' is no container at the module's top: its classes are in no tree";
        PlaceAt(places_.Of(top), &finding.cause);
        findings->push_back(finding);
    }
}

/* What the library has said beyond what the rules find by themselves, each once. */
void Checker::AddMessages(const ModuleKey &key, const LoadReport &report, std::vector<Finding> *findings)
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

} // namespace inspect
