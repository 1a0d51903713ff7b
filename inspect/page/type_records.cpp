#include "page/type_records.h"

#include "model/schema_scan.h"
#include "model/statements.h"
#include "model/trees.h"
#include "tree/tree_rows.h"

namespace inspect::page {
namespace {

/* [["up",1,"Ready to pass packets."],["down",2]] */
std::string NamesJson(const std::vector<diff::NamedNumber> &names)
{
    std::string json = "[";
    for (const diff::NamedNumber &name : names) {
        json += json.size() > 1 ? ",[" : "[";
        AddQuoted(&json, name.name);
        json += "," + std::to_string(name.number);
        std::string text;
        if (name.file != nullptr)
            text = diff::Smoothed(ArgumentIn(name.file, StatementAt(name.file, name.statement), "description"));
        if (!text.empty()) {
            json += ",";
            AddQuoted(&json, text);
        }
        json += "]";
    }
    return json + "]";
}

std::vector<std::string> FactTexts(const diff::TypeModel &type, diff::Rule rule)
{
    std::vector<std::string> texts;
    for (const diff::Fact &fact : type.facts)
        if (fact.rule == rule)
            texts.push_back(diff::ValueText(fact.value));
    return texts;
}

/* True if the range is the built-in type's own. */
bool IsFull(const diff::TypeModel &type)
{
    return type.range->range == *diff::ValueRange::Of(type.base);
}

} // namespace

std::string LinkPath(QY_NODE *node)
{
    std::vector<QY_NODE *> way;
    for (; node != nullptr; node = QY_NODE_GetParentNode(node)) {
        uint32_t kind = QY_NODE_GetNodeType(node);
        if (kind != QY_NODE_TYPE_CHOICE && kind != QY_NODE_TYPE_CASE)
            way.push_back(node);
    }
    std::string path;
    const QY_MOD *module = nullptr;
    for (auto step = way.rbegin(); step != way.rend(); ++step) {
        path += "/";
        if (QY_NODE_GetModule(*step) != module)
            path.append(ModuleNameOf(*step)).append(":");
        module = QY_NODE_GetModule(*step);
        path += QY_NODE_GetNodeName(*step);
    }
    return path;
}

uint32_t TypeRecords::Of(const KorvTreeLeaf &leaf)
{
    std::optional<diff::LeafType> type = types_.OfLeaf(leaf.pYinNode);
    if (!type)
        return tables_->types.Add("{}");
    QY_NODE *target = type->own->base == "leafref" ? QY_NODE_GetLeafrefTargetNode(leaf.pYinNode, 1) : nullptr;
    auto [known, isNew] = known_.try_emplace({type->written, type->own, type->last, target}, 0);
    if (isNew)
        known->second = Record(leaf, *type, target);
    return known->second;
}

uint32_t TypeRecords::Record(const KorvTreeLeaf &leaf, const diff::LeafType &type, QY_NODE *target)
{
    std::string written = type.written != nullptr ? type.written : "";
    Remarks record;
    const char *base = TypeName(leaf);
    record.Add("base", std::string_view(base != nullptr ? base : type.last->base.c_str()));
    if (written != type.last->base)
        record.Add("written", written);
    if (type.own->base == "leafref") {
        record.Add("path", FactTexts(*type.own, "leafref-path"));
        if (target != nullptr)
            record.Add("to", LinkPath(target));
    }
    Describe(type.last, &record);
    std::string kept = RangeText(leaf);
    if (!kept.empty() && (type.last->range == nullptr || kept != type.last->range->range.Text()))
        record.Add("kept", kept);
    return tables_->types.Add(record.Json());
}

uint32_t TypeRecords::Member(Type type)
{
    Remarks record;
    record.Add("base", std::string_view(type->base));
    Describe(type, &record);
    return tables_->types.Add(record.Json());
}

/* What the type allows. Members of a union have records of their own. */
void TypeRecords::Describe(Type type, Remarks *record)
{
    if (type->range != nullptr && !IsFull(*type))
        record->Add("range", type->range->range.Text());
    if (type->length != nullptr)
        record->Add("length", type->length->range.Text());
    record->Add("patterns", FactTexts(*type, "pattern"));
    record->Add("digits", FactTexts(*type, "fraction-digits"));
    record->Add("bases", FactTexts(*type, "base"));
    record->Add("instance", FactTexts(*type, "require-instance"));
    if (!type->names.empty())
        record->AddJson("names", NamesJson(type->names));
    std::vector<uint32_t> members;
    for (Type member : type->members)
        members.push_back(Member(member));
    record->Add("members", members);
}

} // namespace inspect::page
