#include "ids/assign/assign_report.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <string_view>

#include "base/json_out.h"
#include "base/text.h"
#include "ids/assign/statement_names.h"
#include "ids/node_path.h"
#include "model/schema_scan.h"

namespace inspect::ids {
namespace {

void Count(const NewStatement &statement, ModuleSum *sum)
{
    std::string_view keyword = statement.keyword;
    sum->classes += keyword == CLASS_ID ? 1 : 0;
    sum->attributes += keyword == FIELD_ID ? 1 : 0;
    sum->ancestorKeys += keyword == ANCESTOR_KEY ? 1 : 0;
    sum->datatypes += keyword == DATATYPE_ID ? 1 : 0;
}

std::string SumText(const ModuleSum &sum)
{
    return inspect::Count(sum.classes, "class") + ", " + inspect::Count(sum.attributes, "attribute") + ", " +
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

/* Where statements stand when their file has changed. */
class MovedPlaces {
  public:
    explicit MovedPlaces(const FileChange &change) : change_(change), text_(change.before)
    {
        for (const Edit &edit : change.edits)
            lines_.push_back(lines_.back() +
                             static_cast<uint32_t>(std::count(edit.text.begin(), edit.text.end(), '\n')));
    }

    /* Line and column of the statement at an offset of the old text. */
    void Move(size_t offset, LeftOutNode *entry) const
    {
        const std::vector<Edit> &edits = change_.edits;
        auto isBefore = [](const Edit &edit, size_t other) { return edit.offset < other; };
        size_t at = text_.LineBegin(offset);
        auto edit = std::lower_bound(edits.begin(), edits.end(), at, isBefore);
        auto end = std::lower_bound(edit, edits.end(), offset + 1, isBefore);
        entry->line += lines_[static_cast<size_t>(end - edits.begin())];
        std::string line; /* the new text from the old line's begin on */
        for (; edit != end; ++edit) {
            line.append(change_.before.substr(at, edit->offset - at)).append(edit->text);
            at = edit->offset + edit->length;
        }
        line.append(change_.before.substr(at, offset - at));
        line.erase(0, line.rfind('\n') + 1);
        auto isCharacter = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80; };
        if (!text_.IsWide())
            entry->column = 1 + static_cast<uint32_t>(std::count_if(line.begin(), line.end(), isCharacter));
    }

  private:
    const FileChange &change_;
    SourceText text_;
    std::vector<uint32_t> lines_ = {0}; /* how many the edits before each one add */
};

} // namespace

AssignReport MakeReport(const Survey &survey, const Plan &plan, const std::vector<FileChange> &changes, bool isDryRun)
{
    std::map<std::string_view, ModuleSum> sums;
    for (const NewStatement &statement : plan.statements)
        Count(statement, &sums[ModuleNameOf(survey.At(statement.node).node)]);
    AssignReport report;
    report.isDryRun = isDryRun;
    std::map<const QXYANG_FILE *, MovedPlaces> moved;
    for (const FileChange &change : changes)
        if (!isDryRun)
            moved.emplace(change.file, change);
    Places places(survey.Models().Dirs());
    for (const LeftOut &left : plan.leftOut) {
        QY_NODE *node = survey.At(left.node).node;
        LeftOutNode entry = {ModuleNameOf(node), PathOf(node), left.reason, "", 0, 0};
        QXYANG_ORIGIN_S origin = OriginOf(node);
        if (std::optional<Position> position = places.Of(origin)) {
            entry.file = position->file;
            entry.line = position->line;
            entry.column = position->column;
        }
        if (auto found = moved.find(origin.pstFile); found != moved.end())
            found->second.Move(origin.stPlace.uiOffset, &entry);
        ++sums[ModuleNameOf(node)].leftOut;
        report.leftOut.push_back(std::move(entry));
    }
    for (const LoadedModule &module : survey.Models().Modules())
        if (module.isWanted) {
            report.modules.push_back(sums[module.name]);
            report.modules.back().module = module.name;
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
        if (report.modules.size() > 1 &&
            sum.classes + sum.attributes + sum.ancestorKeys + sum.datatypes + sum.leftOut != 0)
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
