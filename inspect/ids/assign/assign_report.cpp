#include "ids/assign/assign_report.h"

#include <cstdio>

#include "base/json_out.h"
#include "base/text.h"
#include "ids/assign/statement_names.h"
#include "ids/node_path.h"

namespace inspect::ids {
namespace {

void Count(const std::vector<NewStatement> &statements, ModuleSum *sum)
{
    for (const NewStatement &statement : statements) {
        sum->classes += statement.keyword == CLASS_ID ? 1 : 0;
        sum->attributes += statement.keyword == FIELD_ID ? 1 : 0;
        sum->ancestorKeys += statement.keyword == ANCESTOR_KEY ? 1 : 0;
        sum->datatypes += statement.keyword == DATATYPE_ID ? 1 : 0;
    }
}

std::string ClassesText(size_t number)
{
    return number == 1 ? "1 class" : std::to_string(number) + " classes";
}

std::string SumText(const ModuleSum &sum)
{
    return ClassesText(sum.classes) + ", " + inspect::Count(sum.attributes, "attribute") + ", " +
           inspect::Count(sum.ancestorKeys, "ancestor key") + ", " + inspect::Count(sum.datatypes, "datatype") +
           (sum.leftOut != 0 ? "; left out: " + inspect::Count(sum.leftOut, "node") : "");
}

ModuleSum Total(const AssignReport &report)
{
    ModuleSum total;
    for (const ModuleSum &sum : report.modules) {
        total.classes += sum.classes;
        total.attributes += sum.attributes;
        total.ancestorKeys += sum.ancestorKeys;
        total.datatypes += sum.datatypes;
        total.leftOut += sum.leftOut;
    }
    return total;
}

void WriteSum(const ModuleSum &sum, JsonOut *out)
{
    out->Member("classes", sum.classes);
    out->Member("attributes", sum.attributes);
    out->Member("ancestor_keys", sum.ancestorKeys);
    out->Member("datatypes", sum.datatypes);
    out->Member("left_out", sum.leftOut);
}

} // namespace

AssignReport MakeReport(const Survey &survey, const Plan &plan, const std::vector<FileChange> &changes)
{
    const std::vector<LoadedModule> &modules = survey.Models().Modules();
    std::vector<ModuleSum> sums(modules.size());
    for (const auto &[node, statements] : plan.statements)
        Count(statements, &sums[survey.At(node).module]);
    AssignReport report;
    Places places(survey.Models().Dirs());
    for (const LeftOut &left : plan.leftOut) {
        QY_NODE *node = survey.At(left.node).node;
        LeftOutNode entry = {survey.ModuleOf(left.node).name, PathOf(node), left.reason, "", 0, 0};
        if (std::optional<Position> position = places.Of(node)) {
            entry.file = position->file;
            entry.line = position->line;
            entry.column = position->column;
        }
        ++sums[survey.At(left.node).module].leftOut;
        report.leftOut.push_back(std::move(entry));
    }
    for (size_t i = 0; i < modules.size(); ++i)
        if (modules[i].isWanted) {
            sums[i].module = modules[i].name;
            report.modules.push_back(sums[i]);
        }
    for (const FileChange &change : changes)
        report.files.push_back(change.shown);
    return report;
}

void WriteReportText(const AssignReport &report, FILE *out)
{
    for (const LeftOutNode &node : report.leftOut) {
        Cause cause = {node.file, node.line, node.column, "", node.module};
        std::fprintf(out, "%s%s is left out: %s\n", Printable(PlaceText(cause, node.module)).c_str(),
                     Printable(node.path).c_str(), Printable(node.reason).c_str());
    }
    for (const ModuleSum &sum : report.modules)
        if (sum.classes + sum.attributes + sum.ancestorKeys + sum.datatypes + sum.leftOut != 0)
            std::fprintf(out, "%s: %s\n", Printable(sum.module).c_str(), SumText(sum).c_str());
    std::string modules = inspect::Count(report.modules.size(), "module");
    if (report.files.empty())
        std::fprintf(out, "%s: nothing to do\n", modules.c_str());
    else
        std::fprintf(out, "%s, %s %s: %s\n", modules.c_str(), inspect::Count(report.files.size(), "file").c_str(),
                     report.isDryRun ? "to change" : "changed", SumText(Total(report)).c_str());
}

void WriteReportJson(const AssignReport &report)
{
    JsonOut out;
    out.Object();
    out.Member("dry_run", report.isDryRun);
    out.Key("files");
    out.Array();
    for (const std::string &file : report.files)
        out.Text(file);
    out.EndArray();
    WriteSum(Total(report), &out);
    out.Key("modules");
    out.Array();
    for (const ModuleSum &sum : report.modules) {
        out.Object();
        out.Member("module", sum.module);
        WriteSum(sum, &out);
        out.EndObject();
    }
    out.EndArray();
    out.Key("nodes_left_out");
    out.Array();
    for (const LeftOutNode &node : report.leftOut) {
        out.Object();
        out.Member("module", node.module);
        out.Member("path", node.path);
        out.Member("reason", node.reason);
        out.Key("place");
        out.Place(node.file, node.line, node.column);
        out.EndObject();
    }
    out.EndArray();
    out.EndObject();
}

} // namespace inspect::ids
