#include "check/checker.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "base/numbers.h"
#include "base/text.h"
#include "check/statement_rules.h"
#include "check/yang/node_rules.h"
#include "model/load_faults.h"
#include "model/message_text.h"
#include "model/module_search.h"
#include "model/schema_scan.h"

namespace inspect {
namespace {

constexpr size_t SHOWN_CHANGER_NUM = DeviceOrder::MANY - 1;

/* ", when module 'm' is loaded before 'a', 'b'" */
std::string OrderText(const std::string &module, const char *where, const std::set<std::string> &changers)
{
    std::vector<std::string> names;
    for (const std::string &changer : changers)
        if (names.size() < SHOWN_CHANGER_NUM)
            names.push_back("'" + changer + "'");
    return ", when module '" + module + "' is loaded " + where + " " + Join(names, ", ") +
           (changers.size() > names.size() ? " and others" : "");
}

/* The statement that gives the module its task id. */
std::optional<Extension> TaskIdOf(QY_MOD *module)
{
    for (const Extension &extension : ExtensionsOf(module))
        if (extension.keyword == "aaa-task-id" && ReadNumber(extension.argument).value != 0)
            return extension;
    return std::nullopt;
}

/* "2020-01-01" of "models/m@2020-01-01.yin", or "" */
std::string RevisionInName(const std::string &file)
{
    size_t begin = file.rfind('@');
    size_t end = file.rfind('.');
    return begin == std::string::npos || begin > end || file.find('/', begin) != std::string::npos
               ? ""
               : file.substr(begin + 1, end - begin - 1);
}

} // namespace

/* The modules to check, each once: a revision chooses no file. */
std::vector<ModuleKey> Checker::Keys() const
{
    std::vector<ModuleKey> keys;
    std::set<std::string> seen;
    for (const ModuleKey &key : request_.modules)
        if (seen.insert(key.name).second)
            keys.push_back(key);
    if (all_)
        for (const std::string &name : files_.OwnModules())
            keys.push_back({name, ""});
    return keys;
}

/* Submodules, which --all names as well, are checked with their modules. */
void Checker::Load(Device *device, const std::vector<ModuleKey> &keys, const Progress &progress)
{
    for (size_t i = 0; i < keys.size(); ++i) {
        progress(i + 1, keys.size(), keys[i].name);
        bool isUnread = all_ && files_.UnreadDeviations().contains(keys[i].name);
        if (isUnread) {
            modules_.push_back({keys[i], {true, {}, {}}, {}});
            CheckAlone(keys[i]);
            continue;
        }
        DeviceModule module = device->Load(keys[i]);
        if (all_ && !module.report.loaded && HoldsSubmodule(listing_.Modules().at(keys[i].name))) {
            submodules_.insert(keys[i].name);
            continue;
        }
        judged_.insert(keys[i].name);
        modules_.push_back(std::move(module));
    }
    for (const ModuleKey &load : request_.loads)
        judged_.insert(load.name);
}

/* Deviations that no device loads would change the others: they get a device of their own. */
void Checker::CheckAlone(const ModuleKey &key)
{
    Device device(request_, listing_);
    DeviceModule module = device.Load(key);
    AddCauses(module, "");
    StatementUses uses;
    if (module.schema != nullptr)
        CheckSchema(device, module.schema, LostTargets(device.Library().Schema()), &uses);
    findings_.Add(uses.TakeFindings({key.name}));
}

void Checker::CheckSchema(const Device &device, QY_MOD *module, const LostTargets &lost, StatementUses *uses)
{
    QY_CTX *schema = device.Library().Schema();
    NoteMarkedFiles(schema, module, request_.dirs, &marked_);
    findings_.Add(StatementRules(schema, module, &places_, uses).Check());
    findings_.Add(CheckYangStatements(schema, module, &places_, &namespaces_));
    findings_.Add(CheckNodes(schema, module, &places_, lost));
}

/* `order`, unless it is "", says in which order of loads they show. */
void Checker::AddCauses(const DeviceModule &module, const std::string &order)
{
    bool isLoaded = module.report.loaded;
    Rule rule = isLoaded ? Rule("deviation-failed") : Rule("load-failed");
    const Cause *known = nullptr;
    bool isNew = false;
    for (const Cause &cause : module.causes) {
        auto [reason, isFirst] = reasons_.try_emplace(PlaceText(cause, module.key.name) + cause.text, rule);
        if (!cause.file.empty() && !isFirst) {
            known = reason->second == rule ? &cause : known;
            isNew = isNew || known == nullptr; // a deviation module: the module that it deviates has told it
            continue;
        }
        Finding finding = {rule, module.key.name, cause};
        finding.cause.text += order;
        findings_.Add(std::move(finding));
        isNew = true;
    }
    if (!order.empty())
        return;
    if (!isLoaded && !isNew && known != nullptr) {
        Finding finding = {"load-failed", module.key.name, *known};
        finding.cause.text = "module '" + module.key.name + "' is not loaded for the same reason";
        findings_.Add(std::move(finding));
    }
    if (isLoaded && !module.causes.empty())
        findings_.Add({"deviation-failed",
                       module.key.name,
                       {"", 0, 0, "the module is loaded without its deviations: it is not what was meant"}});
}

void Checker::AddFacts(const Device &device)
{
    QY_CTX *schema = device.Library().Schema();
    for (const std::string &name : judged_)
        if (QY_MOD *module = QY_CTX_GetModuleByModName(schema, name.c_str()))
            facts_.emplace(name, FactsOf(device.Library(), module));
    std::map<std::string, size_t> turns;
    for (size_t i = 0; i < modules_.size(); ++i)
        turns.emplace(modules_[i].key.name, i + 1);
    for (const ModuleKey &load : request_.loads)
        turns.erase(load.name);
    for (const auto &[name, facts] : facts_) {
        auto turn = turns.find(name);
        order_.Add(name, facts, turn != turns.end() ? turn->second : 0);
    }
    order_.Close();
}

void Checker::CheckFiles()
{
    FileRules::Uses uses = {{}, {}, std::move(submodules_), all_};
    for (const DeviceModule &module : modules_)
        uses.modules.insert(module.key.name);
    for (const auto &[name, facts] : facts_) {
        uses.dated.insert(facts.dated.begin(), facts.dated.end());
        for (const std::string &submodule : facts.submodules)
            uses.orphans.erase(submodule);
        if (uses.modules.contains(name))
            uses.modules.insert(facts.submodules.begin(), facts.submodules.end());
    }
    findings_.Add(files_.Check(std::move(uses)));
}

void Checker::CheckTaskId(const DeviceModule &module)
{
    std::optional<Extension> taskId = TaskIdOf(module.schema);
    std::optional<Position> place = taskId ? places_.Of(taskId->origin) : std::nullopt;
    if (!place)
        return;
    auto [first, isNew] = taskIds_.try_emplace(ReadNumber(taskId->argument).value, std::pair(module.key.name, *place));
    if (isNew)
        return;
    Finding finding = {"duplicate-task-id", module.key.name, {}};
    finding.cause.text = "aaa-task-id " + taskId->argument + " is that of module '" + first->second.first +
                         "' as well" + SeeText(first->second.second, place);
    PlaceAt(place, &finding);
    findings_.Add(std::move(finding));
}

/* A file of the module, and the revisions in it. */
void Checker::CheckRevision(const DeviceModule &module, const FileHeader &header)
{
    std::optional<Position> place = places_.Of(header.root);
    if (!place)
        return;
    std::string named = RevisionInName(place->file);
    if (named.empty() || named == header.revision)
        return;
    Finding finding = {"file-revision", module.key.name, {}};
    finding.cause.text =
        "the file's name says revision " + named + ", and " +
        (header.revision.empty() ? "there is none in it" : "the newest revision in it is " + header.revision);
    PlaceAt(places_.Of(header.revision.empty() ? header.root : header.statement), &finding);
    findings_.Add(std::move(finding));
}

void Checker::CheckSchemas(const Device &device)
{
    LostTargets lost(device.Library().Schema());
    StatementUses uses;
    for (const DeviceModule &module : modules_) {
        if (module.schema == nullptr)
            continue;
        for (const FileHeader &header : facts_.at(module.key.name).headers)
            CheckRevision(module, header);
        CheckTaskId(module);
        CheckAugmentNum(*module.at, places_.Of(module.schema),
                        [this](Finding finding) { findings_.Add(std::move(finding)); });
        CheckSchema(device, module.schema, lost, &uses);
    }
    findings_.Add(uses.TakeFindings(judged_));
}

void Checker::CheckTrees(const Device &device, const std::vector<const ModuleFile *> &files,
                         const ClassRules::Report &report)
{
    ClassRules(device.Library(), judged_, &places_, report).Check(TreesOf(files));
}

/* With all modules before it, each one has all that others add to its classes. */
void Checker::CheckLast(Device *device)
{
    std::vector<const ModuleFile *> files;
    for (const DeviceModule &module : modules_) {
        if (module.schema == nullptr)
            continue;
        files.push_back(module.at);
        std::set<std::string> changers = order_.ChangersOf(module.key.name, DeviceOrder::Turns::All);
        if (changers.empty())
            continue;
        DeviceModule last = device->LoadLast(module);
        AddCauses(last, OrderText(module.key.name, "after", changers));
        if (last.at != nullptr)
            files.back() = last.at;
    }
    CheckTrees(*device, files, [this](Finding finding) { findings_.Add(std::move(finding)); });
}

/* Modules as they were when their turn came, where modules that change them were still to come: later ones, and in the
 * reverse order earlier ones. */
void Checker::CheckTurns(const Device &device, const Modules &modules, DeviceOrder::Turns toCome)
{
    for (const DeviceModule &module : modules) {
        std::set<std::string> changers = order_.ChangersOf(module.key.name, toCome);
        if (module.at == nullptr || changers.empty())
            continue;
        std::string order = OrderText(module.key.name, "before", changers);
        CheckTrees(device, {module.at}, [&](Finding finding) { findings_.AddOfOrder(std::move(finding), order); });
    }
}

void Checker::CheckReverse()
{
    std::vector<ModuleKey> keys;
    for (const DeviceModule &module : modules_)
        if (order_.Matters(module.key.name))
            keys.push_back(module.key);
    if (keys.size() < 2)
        return;
    Device device(request_, listing_);
    Modules modules;
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
        modules.push_back(device.Load(*key));
        AddCauses(modules.back(), ", when the modules are loaded in reverse order");
    }
    CheckTurns(device, modules, DeviceOrder::Turns::Earlier);
}

/* What the library says beyond what the rules find by themselves. */
void Checker::AddMessages(const DeviceModule &module)
{
    if (!module.report.loaded || !module.report.problems.empty())
        return;
    for (const std::string &error : module.report.errors)
        if (std::optional<Explanation> why = RemarkOf(error)) {
            Finding finding = {"library-message", module.key.name, {"", 0, 0, why->text}};
            for (QY_NODE *node : NodesMeant(module.schema, *why))
                PlaceAt(places_.Of(node), &finding);
            findings_.Add(std::move(finding));
        }
}

CheckResult Checker::Result()
{
    CheckResult result = {{}, findings_.Take()};
    std::map<std::string, size_t> turns;
    for (const DeviceModule &module : modules_) {
        turns.emplace(module.key.name, result.modules.size());
        result.modules.push_back(module.key.name);
    }
    for (Finding &finding : result.findings)
        if (finding.module.empty() && !result.modules.empty())
            finding.module = result.modules.front();
    auto rank = [&turns](const Finding &finding) {
        auto turn = turns.find(finding.module);
        return std::tuple(turn != turns.end() ? turn->second : turns.size(), std::string_view(finding.cause.file),
                          finding.cause.line, finding.cause.column);
    };
    std::stable_sort(result.findings.begin(), result.findings.end(),
                     [&rank](const Finding &left, const Finding &right) { return rank(left) < rank(right); });
    return result;
}

CheckResult Checker::Check(const Progress &progress)
{
    if (all_)
        files_.RequireFiles();
    std::vector<ModuleKey> keys = Keys();
    Device &device = device_.emplace(request_, listing_);
    Load(&device, keys, progress);
    for (const DeviceModule &module : modules_)
        AddCauses(module, "");
    AddFacts(device);
    CheckFiles();
    CheckSchemas(device);
    CheckLast(&device);
    for (const DeviceModule &module : modules_)
        AddMessages(module);
    CheckTurns(device, modules_, DeviceOrder::Turns::Later);
    CheckReverse();
    return Result();
}

} // namespace inspect
