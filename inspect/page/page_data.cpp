#include "page/page_data.h"

#include <algorithm>
#include <new>

#include "base/text.h"
#include "model/module_search.h"
#include "model/path_finder.h"
#include "model/statements.h"
#include "page/node_records.h"
#include "tree/tree_view.h"

namespace inspect::page {
namespace {

/* "/m:sys/m:ports" of the target path of an augment or deviation in the file. */
std::string QualifiedTarget(const QXYANG_FILE *file, std::string_view target, diff::Definitions *names)
{
    std::string path;
    while (!target.empty()) {
        if (target.front() == '/')
            target.remove_prefix(1);
        std::string_view step = target.substr(0, target.find('/'));
        target.remove_prefix(step.size());
        path += "/" + names->Qualified(file, step);
    }
    return path;
}

/* "/m:sys/ports/(mode)": the target of an augment as links of the page have it; "" when the library has none. */
std::string TargetLink(const TELMYANG_AUGMENT_INFO_S &augment)
{
    TargetWay way = WayToTarget({0, augment.acAugNodeName, {}, {augment.pstTargetTree, true}});
    if (!way.missing.empty())
        return "";
    size_t named = way.nodes.size();
    while (named > 0 && !IsOrdinary(*way.nodes[named - 1]))
        --named;
    std::string path;
    std::string_view module;
    for (size_t i = 0; i < way.nodes.size(); ++i) {
        const KorvTreeNode &node = *way.nodes[i];
        if (i >= named)
            path.append("/(").append(node.pcName).append(")");
        if (!IsOrdinary(node))
            continue;
        path.append("/")
            .append(module != node.pcModuleName ? std::string(node.pcModuleName) + ":" : "")
            .append(node.pcName);
        module = node.pcModuleName;
    }
    return path;
}

/* "type uint32 { range 1..9 }" */
std::string StatementText(const QXYANG_FILE *file, const QXYANG_STATEMENT_S &statement)
{
    std::string text = statement.pcKeyword;
    if (statement.pcArgument != nullptr)
        text.append(" ").append(diff::Smoothed(statement.pcArgument));
    std::vector<std::string> within;
    ForEachIn(file, statement, [&](const QXYANG_STATEMENT_S &inner) { within.push_back(StatementText(file, inner)); });
    return within.empty() ? text : text + " { " + Join(within, "; ") + " }";
}

class DataWriter {
  public:
    explicit DataWriter(const Source &source)
        : source_(source),
          files_(source.request.dirs, &version_),
          types_(source.device.Library().Schema(), &files_, &version_, &tables_),
          findings_(source.device, source.modules, source.findings, &files_),
          nodes_(Shown(source), &findings_, &files_, &types_, &tables_)
    {
    }

    std::string Write();

  private:
    static std::set<const QY_MOD *> Shown(const Source &source);

    std::string Module(const DeviceModule &module);
    void AddHead(const DeviceModule &module, Remarks *json);
    void AddTrees(const DeviceModule &module, Remarks *json);
    std::string Augment(const ModuleFile &file, uint32_t index);
    bool IsGone(const std::string &module) const;
    void AddChanges(const std::string &module, Remarks *json);
    std::string Deviations();
    void AddDeviationsOf(const std::string &module, const QXYANG_FILE *file, std::string *json);
    std::string Findings() const;

    const Source &source_;
    diff::Version version_; /* names of files, and types */
    diff::FileNames files_;
    Tables tables_;
    TypeRecords types_;
    FindingPlaces findings_;
    NodeRecords nodes_;
};

/* Values of an array, joined. */
void Append(std::string *array, const std::string &json)
{
    *array += array->empty() ? "[" : ",";
    *array += json;
}

std::string Closed(const std::string &array)
{
    return array.empty() ? "[]" : array + "]";
}

std::set<const QY_MOD *> DataWriter::Shown(const Source &source)
{
    std::set<const QY_MOD *> shown;
    for (const DeviceModule &module : source.modules)
        if (module.schema != nullptr)
            shown.insert(module.schema);
    return shown;
}

void DataWriter::AddHead(const DeviceModule &module, Remarks *json)
{
    QXYANG_ORIGIN_S origin = {};
    if (QXYANG_GetModuleOrigin(module.schema, &origin) != 0)
        throw std::bad_alloc();
    const char *revision = source_.device.Library().Revision(module.key.name);
    json->Add("revision", std::string_view(revision != nullptr ? revision : ""));
    if (uint32_t task = TaskId(*module.at); task != 0)
        json->AddNumber("task", task);
    if (origin.pstFile == nullptr)
        return;
    QXYANG_STATEMENT_S root = StatementAt(origin.pstFile, origin.uiStatement);
    json->Add("prefix", ArgumentIn(origin.pstFile, root, "prefix"));
    json->Add("namespace", ArgumentIn(origin.pstFile, root, "namespace"));
    diff::Where where = files_.Of(origin);
    json->Add("file", *where.file);
    json->AddNumber("line", where.line);
    if (std::string text = ArgumentIn(origin.pstFile, root, "description"); !text.empty())
        json->AddNumber("text", nodes_.TextOf(text.c_str()));
}

/* The text with which hosts ask begins with the target of the first of the module's augments of that node. */
std::string DataWriter::Augment(const ModuleFile &file, uint32_t index)
{
    const TELMYANG_AUGMENT_INFO_S &info = file.astAugment[index];
    std::string names = BareNames(info.acAugNodeName);
    uint32_t first = 0;
    while (BareNames(file.astAugment[first].acAugNodeName) != names)
        ++first;
    Remarks json;
    QXYANG_NODE_DETAILS_S details = {};
    if (info.pAugNode != nullptr && QXYANG_GetNodeDetails(info.pAugNode, &details) != 0)
        throw std::bad_alloc();
    const QXYANG_ORIGIN_S &origin = details.stStatement;
    json.Add("to", TargetLink(info));
    json.Add("written", std::string_view(file.astAugment[first].acAugNodeName));
    RecordLists added = nodes_.AddedBy(index);
    json.Add("nodes", added.nodes);
    json.Add("leaves", added.leaves);
    if (origin.pstFile == nullptr)
        return json.Json();
    diff::Where where = files_.Of(origin);
    json.AddNumber("line", where.line);
    if (uint32_t name = nodes_.FileOf(where); name != 0)
        json.AddNumber("file", name);
    if (uint32_t text = nodes_.TextOf(details.pcDescription); text != 0)
        json.AddNumber("text", text);
    if (uint32_t remarks = nodes_.RemarksOf(info.pAugNode, details); remarks != 0)
        json.AddNumber("remarks", remarks);
    return json.Json();
}

void DataWriter::AddTrees(const DeviceModule &module, Remarks *json)
{
    nodes_.Begin(module.schema, *module.at);
    json->Add("tree", nodes_.OwnTrees());
    std::string augments;
    for (uint32_t i = 0; i < module.at->ucAugmentNum; ++i)
        Append(&augments, Augment(*module.at, i));
    if (!augments.empty())
        json->AddJson("augments", Closed(augments));
}

/* A change: {"rule", "breaking", "path", "old", "new", "file", "line"}, with the place in the new version where there is one. */
void DataWriter::AddChanges(const std::string &module, Remarks *json)
{
    if (source_.uncompared.contains(module))
        json->AddNumber("uncompared", 1);
    auto found = std::find_if(source_.changes.begin(), source_.changes.end(),
                              [&module](const diff::ModuleChanges &changes) { return changes.module == module; });
    if (found == source_.changes.end() || found->changes.empty())
        return;
    std::string list;
    for (const diff::Change &change : found->changes) {
        Remarks one;
        one.Add("rule", std::string_view(change.rule->name));
        if (change.breaking)
            one.AddNumber("breaking", 1);
        one.Add("path", change.path);
        one.Add("old", diff::ValueText(change.before));
        one.Add("new", diff::ValueText(change.after));
        const diff::Where &where = change.newWhere.file != nullptr ? change.newWhere : change.oldWhere;
        if (where.file != nullptr) {
            one.Add("file", *where.file);
            one.AddNumber("line", where.line);
        }
        Append(&list, one.Json());
    }
    Remarks changes;
    changes.Add("old", found->oldRevision);
    changes.Add("new", found->newRevision);
    changes.AddJson("list", Closed(list));
    json->AddJson("changes", changes.Json());
}

/* True if only the old version has the module. */
bool DataWriter::IsGone(const std::string &module) const
{
    return std::none_of(source_.modules.begin(), source_.modules.end(),
                        [&module](const DeviceModule &shown) { return shown.key.name == module; });
}

std::string DataWriter::Module(const DeviceModule &module)
{
    Remarks json;
    json.Add("name", module.key.name);
    json.Add("key", module.key.revision);
    std::vector<std::string> causes;
    for (const Cause &cause : module.causes)
        causes.push_back(PlaceText(cause, module.key.name) + cause.text);
    if (module.schema != nullptr && module.at != nullptr) {
        nodes_.Begin(module.schema, *module.at);
        AddHead(module, &json);
        AddTrees(module, &json);
    } else if (!module.report.loaded && causes.empty()) {
        causes.emplace_back("the module cannot be loaded");
    }
    json.Add(module.report.loaded ? "deviations" : "failed", causes);
    AddChanges(module.key.name, &json);
    json.Add("findings", findings_.Rest(module.key.name));
    return json.Json();
}

void DataWriter::AddDeviationsOf(const std::string &module, const QXYANG_FILE *file, std::string *json)
{
    ForEachIn(file, StatementAt(file, 0), [&](const QXYANG_STATEMENT_S &statement) {
        if (!IsYang(statement, "deviation") || statement.pcArgument == nullptr)
            return;
        std::vector<std::string> what;
        ForEachIn(file, statement, [&](const QXYANG_STATEMENT_S &deviate) {
            if (!IsYang(deviate, "deviate") || deviate.pcArgument == nullptr)
                return;
            std::string how = deviate.pcArgument;
            if (deviate.uiFirstChild == QXYANG_NO_STATEMENT)
                what.push_back(how);
            ForEachIn(file, deviate,
                      [&](const QXYANG_STATEMENT_S &inner) { what.push_back(how + " " + StatementText(file, inner)); });
        });
        Remarks one;
        one.Add("by", module);
        one.Add("to", QualifiedTarget(file, statement.pcArgument, types_.Names()));
        one.Add("what", what);
        if (diff::Where where = files_.Of(file, statement); where.file != nullptr) {
            one.Add("file", *where.file);
            one.AddNumber("line", where.line);
        }
        Append(json, one.Json());
    });
}

/* Those of all modules that the device holds, also of those that came with others. */
std::string DataWriter::Deviations()
{
    std::string json;
    for (const std::string &name : ModuleNames(source_.request.dirs)) {
        const QXYANG_FILE *file = QXYANG_GetLoadedFile(source_.device.Library().Schema(), name.c_str());
        if (file == nullptr)
            continue;
        files_.Learn(file, ModulePath(source_.request.dirs, name).c_str());
        QXYANG_STATEMENT_S root = StatementAt(file, 0);
        AddDeviationsOf(IsYang(root, "submodule") ? ArgumentIn(file, root, "belongs-to") : name, file, &json);
    }
    return Closed(json);
}

std::string DataWriter::Findings() const
{
    std::string json;
    for (uint32_t i = 0; i < source_.findings.size(); ++i) {
        const ReportedFinding &reported = source_.findings[i];
        const Cause &cause = reported.finding.cause;
        Remarks one;
        one.Add("rule", std::string_view(reported.finding.rule->name));
        one.Add("level", std::string_view(SeverityText(reported.severity)));
        one.Add("text", SentenceText(reported.finding));
        one.Add("module", reported.finding.module);
        if (QY_NODE *node = findings_.NodeOf(i); node != nullptr && QY_NODE_GetNodeType(node) != QY_NODE_TYPE_AUGMENT)
            one.Add("at", LinkPath(node));
        else
            one.Add("path", reported.finding.path);
        one.Add("file", cause.file);
        if (cause.line != 0)
            one.AddNumber("line", cause.line);
        Append(&json, one.Json());
    }
    return Closed(json);
}

std::string DataWriter::Write()
{
    std::string modules;
    for (const DeviceModule &module : source_.modules)
        Append(&modules, Module(module));
    for (const diff::ModuleChanges &changes : source_.changes)
        if (IsGone(changes.module)) {
            Remarks gone;
            gone.Add("name", changes.module);
            gone.AddNumber("gone", 1);
            AddChanges(changes.module, &gone);
            Append(&modules, gone.Json());
        }
    Remarks head;
    head.Add("tool", std::string_view(KORV_LIB_YANG_VERSION));
    head.Add("folders", source_.request.dirs.dirs);
    head.Add("against", source_.against);
    head.AddJson("modules", Closed(modules));
    head.AddJson("deviations", Deviations());
    head.AddJson("findings", Findings());
    std::string json = head.Json();
    json.pop_back();
    auto add = [&json](const char *name, const auto &table) {
        json.append(",\"").append(name).append("\":");
        table.AddTo(&json);
    };
    add("texts", tables_.texts);
    add("types", tables_.types);
    add("remarks", tables_.remarks);
    add("leaves", tables_.leaves);
    add("nodes", tables_.nodes);
    return json + "}";
}

} // namespace

std::string DataOf(const Source &source)
{
    return DataWriter(source).Write();
}

} // namespace inspect::page
