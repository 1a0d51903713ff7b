/* The columns of rows of paths. */
#include <algorithm>

#include "base/failure.h"
#include "base/text.h"
#include "model/trees.h"
#include "paths/path_rows.h"

namespace inspect {
namespace {

using Row = PathRow;

std::string NumberOrNone(uint32_t number)
{
    return number != 0 ? std::to_string(number) : "";
}

std::string IdText(uint32_t id, bool isForPeople)
{
    return id != 0 && isForPeople ? Hex(id) : NumberOrNone(id);
}

std::string LeafNumber(const Row &row, uint32_t mask, uint32_t KorvTreeLeaf::*number)
{
    const KorvTreeLeaf *leaf = row.node->place.leaf;
    return leaf != nullptr && Has(*leaf, mask) ? std::to_string(leaf->*number) : "";
}

std::string YesOrNo(bool value)
{
    return value ? "true" : "false";
}

std::string EnumText(const Row &row)
{
    std::string text;
    if (row.type.names != nullptr)
        for (const diff::NamedNumber &name : row.type.names->names)
            text += (text.empty() ? "" : " ") + name.name + "=" + std::to_string(name.number);
    return text;
}

constexpr PathColumn COLUMNS[] = {
    {"path", 44, Tone::Name, [](const Row &row, bool) { return row.node->path; }},
    {"module", 24, Tone::Plain, [](const Row &row, bool) { return std::string(row.module); }},
    {"kind", 9, Tone::Plain, [](const Row &row, bool) { return std::string(row.kind); }},
    {"class_id", 10, Tone::Id,
     [](const Row &row, bool isForPeople) { return IdText(row.node->ClassId(), isForPeople); }},
    {"sample_id", 10, Tone::Id,
     [](const Row &row, bool isForPeople) { return IdText(row.node->SampleId(), isForPeople); }},
    {"field_id", 3, Tone::Id,
     [](const Row &row, bool) { return LeafNumber(row, KORV_MASK_FIELD_ID, &KorvTreeLeaf::uiFieldId); }},
    {"key", 1, Tone::Key,
     [](const Row &row, bool isForPeople) {
         return isForPeople ? std::string(row.isKey ? "*" : "-") : YesOrNo(row.isKey);
     }},
    {"self_keys", 8, Tone::Key, [](const Row &row, bool) { return JoinNumbers(row.selfKeys, " "); }},
    {"ancestor_keys", 8, Tone::Key, [](const Row &row, bool) { return JoinNumbers(row.ancestorKeys, " "); }},
    {"type", 16, Tone::Plain, [](const Row &row, bool) { return row.type.written; }},
    {"base_type", 11, Tone::Plain, [](const Row &row, bool) { return row.type.base; }},
    {"limits", 24, Tone::Faint, [](const Row &row, bool) { return row.type.limits; }},
    {"data_type", 3, Tone::Plain,
     [](const Row &row, bool) { return LeafNumber(row, KORV_MASK_DATA_TYPE, &KorvTreeLeaf::uiDataType); }},
    {"index_map", 3, Tone::Plain,
     [](const Row &row, bool) { return LeafNumber(row, KORV_MASK_NAME2ID_KEY, &KorvTreeLeaf::uiName2IdKeyFid); }},
    {"reference_key", 3, Tone::Plain,
     [](const Row &row, bool) { return LeafNumber(row, KORV_MASK_REF_ID_KEY, &KorvTreeLeaf::uiRefIdKeyFid); }},
    {"units", 8, Tone::Faint, [](const Row &row, bool) { return std::string(row.units != nullptr ? row.units : ""); }},
    {"default", 8, Tone::Plain, [](const Row &row, bool) { return Join(row.defaults, " "); }},
    {"config", 5, Tone::Plain, [](const Row &row, bool) { return YesOrNo(row.isConfig); }},
    {"status", 10, Tone::Plain, [](const Row &row, bool) { return std::string(row.status); }},
    {"enum", 24, Tone::Plain, [](const Row &row, bool) { return EnumText(row); }},
    {"description", 40, Tone::Faint, [](const Row &row, bool) { return row.description; }},
    {"file", 40, Tone::Faint,
     [](const Row &row, bool) { return row.where.file != nullptr ? *row.where.file : std::string(); }},
    {"line", 5, Tone::Faint, [](const Row &row, bool) { return NumberOrNone(row.where.line); }},
};

const PathColumn *FindColumn(const std::string &name)
{
    NearestName nearest(name);
    for (const PathColumn &column : COLUMNS) {
        if (name == column.name)
            return &column;
        nearest.Offer(column.name);
    }
    std::string all;
    for (const PathColumn &column : COLUMNS)
        all.append(all.empty() ? "" : ", ").append(column.name);
    std::string hint = nearest.Hint();
    throw Failure("there is no column '" + name + "'" + (hint.empty() ? ": there are " + all : hint), EXIT_USAGE);
}

} // namespace

std::vector<const PathColumn *> AllColumns()
{
    std::vector<const PathColumn *> columns;
    for (const PathColumn &column : COLUMNS)
        columns.push_back(&column);
    return columns;
}

std::vector<const PathColumn *> ColumnsOf(const std::string &names)
{
    std::vector<const PathColumn *> columns;
    for (size_t begin = 0; begin <= names.size();) {
        size_t end = std::min(names.find(',', begin), names.size());
        columns.push_back(FindColumn(names.substr(begin, end - begin)));
        begin = end + 1;
    }
    return columns;
}

} // namespace inspect
