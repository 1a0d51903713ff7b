#include "ids/listing.h"

#include <algorithm>
#include <cstdio>
#include <set>
#include <tuple>

#include "base/csv.h"
#include "base/json_out.h"
#include "base/text.h"
#include "ids/node_path.h"

namespace inspect::ids {
namespace {

/* An entry of either kind; `field` is null for a class. */
struct Row {
    const ClassEntry *entry;
    const FieldEntry *field;

    uint32_t ClassId() const { return field != nullptr ? field->classId : entry->id; }
    uint32_t FieldId() const { return field != nullptr ? field->id : 0; }
    const std::string &Path() const { return field != nullptr ? field->path : entry->path; }
    uint32_t Sample() const { return field != nullptr ? 0 : entry->sample; }
    const std::optional<std::string> &Gone() const { return field != nullptr ? field->gone : entry->gone; }
    const char *KindText() const { return field == nullptr ? "class" : field->isAncestorKey ? "ancestor-key" : "leaf"; }
};

std::vector<Row> RowsOf(const Registry &registry, By by)
{
    std::vector<Row> rows;
    for (const ClassEntry &entry : registry.classes)
        rows.push_back({&entry, nullptr});
    for (const FieldEntry &entry : registry.fields)
        rows.push_back({nullptr, &entry});
    auto byId = [](const Row &row) { return std::tuple(row.ClassId(), row.FieldId(), std::string_view(row.Path())); };
    auto byPath = [](const Row &row) { return std::tuple(std::string_view(row.Path()), row.ClassId(), row.FieldId()); };
    std::stable_sort(rows.begin(), rows.end(), [&](const Row &left, const Row &right) {
        return by == By::Id ? byId(left) < byId(right) : byPath(left) < byPath(right);
    });
    return rows;
}

std::string GoneText(const std::optional<std::string> &gone)
{
    if (!gone)
        return "";
    return gone->empty() ? "  reserved" : "  reserved since " + *gone;
}

/* "0x1000", or "3" in the text of a class; by path, "0x1000 3". */
std::string IdText(const Row &row, By by)
{
    std::string kind = row.field != nullptr && row.field->isAncestorKey ? "key " : "";
    if (row.field == nullptr)
        return Hex(row.ClassId());
    return (by == By::Id ? "  " : Hex(row.ClassId()) + " ") + kind + std::to_string(row.FieldId());
}

} // namespace

Registry Narrowed(const Registry &registry, const std::vector<std::string> &modules)
{
    if (modules.empty())
        return registry;
    std::set<std::string_view> wanted(modules.begin(), modules.end());
    Registry narrowed;
    std::set<uint32_t> own;      /* classes of the modules */
    std::set<uint32_t> extended; /* classes to which they add attributes */
    for (const RangeEntry &range : registry.ranges)
        if (wanted.contains(range.module))
            narrowed.ranges.push_back(range);
    for (const ClassEntry &entry : registry.classes)
        if (wanted.contains(ModuleOfPath(entry.path)))
            own.insert(entry.id);
    for (const FieldEntry &entry : registry.fields)
        if (entry.isAncestorKey ? own.contains(entry.classId) : wanted.contains(ModuleOfPath(entry.path))) {
            narrowed.fields.push_back(entry);
            if (!own.contains(entry.classId))
                extended.insert(entry.classId);
        }
    for (const ClassEntry &entry : registry.classes)
        if (extended.contains(entry.id) || wanted.contains(ModuleOfPath(entry.path)))
            narrowed.classes.push_back(entry);
    return narrowed;
}

void ListText(const Registry &registry, By by)
{
    for (const RangeEntry &range : registry.ranges)
        std::printf("range %s..%s  %s\n", Hex(range.first).c_str(), Hex(range.last).c_str(),
                    Printable(range.module).c_str());
    std::vector<Row> rows = RowsOf(registry, by);
    if (!registry.ranges.empty() && !rows.empty())
        std::printf("\n");
    size_t width = 0;
    for (const Row &row : rows)
        width = std::max(width, by == By::Id ? IdText(row, by).size() : row.Path().size());
    for (const Row &row : rows) {
        std::string line = by == By::Id ? IdText(row, by) : Printable(row.Path());
        PadTo(&line, width, 0);
        line += "  " + (by == By::Id ? Printable(row.Path()) : IdText(row, by));
        if (row.Sample() != 0)
            line += "  sample " + Hex(row.Sample());
        std::printf("%s%s\n", line.c_str(), Printable(GoneText(row.Gone())).c_str());
    }
}

void ListJson(const Registry &registry, By by)
{
    JsonOut out;
    out.Object();
    out.Key("ranges");
    out.Array();
    for (const RangeEntry &range : registry.ranges) {
        out.Object();
        out.Member("module", range.module);
        out.Member("first", range.first);
        out.Member("last", range.last);
        out.EndObject();
    }
    out.EndArray();
    out.Key("ids");
    out.Array();
    for (const Row &row : RowsOf(registry, by)) {
        out.Object();
        out.Member("kind", row.KindText());
        out.Member("class_id", row.ClassId());
        out.NumberOrNull("field_id", row.FieldId());
        out.Member("path", row.Path());
        out.NumberOrNull("sample_id", row.Sample());
        out.Member("reserved", row.Gone().has_value());
        out.Member("gone", row.Gone() && !row.Gone()->empty() ? row.Gone()->c_str() : nullptr);
        out.EndObject();
    }
    out.EndArray();
    out.EndObject();
}

void ListCsv(const Registry &registry, By by)
{
    std::fputs("kind,class_id,field_id,path,sample_id,reserved,gone\n", stdout);
    for (const Row &row : RowsOf(registry, by))
        std::printf("%s,%u,%u,%s,%u,%s,%s\n", row.KindText(), row.ClassId(), row.FieldId(),
                    CsvField(row.Path()).c_str(), row.Sample(), row.Gone() ? "true" : "false",
                    CsvField(row.Gone().value_or("")).c_str());
}

} // namespace inspect::ids
