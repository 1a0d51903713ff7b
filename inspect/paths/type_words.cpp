#include "paths/type_words.h"

#include <functional>

#include "model/schema_places.h"
#include "model/statements.h"

namespace inspect {
namespace {

/* Facts of a type that are said, and what is said of them. */
struct Phrase {
    diff::Rule rule;
    const char *before;
    const char *behind;
};

constexpr Phrase PHRASES[] = {
    {"fraction-digits", "", " digits behind the point"}, {"pattern", "pattern ", ""}, {"base", "derived from ", ""}};

void AddPart(std::string *text, const std::string &part)
{
    *text += (text->empty() ? "" : "; ") + part;
}

std::string NamesText(const diff::TypeModel &type)
{
    std::string text;
    for (const diff::NamedNumber &name : type.names)
        text += (text.empty() ? "" : ", ") + name.name + " " + std::to_string(name.number);
    return text;
}

/* What a leafref says where it leads. */
std::string PathOf(const diff::TypeModel &type)
{
    for (const diff::Fact &fact : type.facts)
        if (fact.rule == diff::Rule("leafref-path"))
            return diff::ValueText(fact.value);
    return "";
}

/* "string (length 1..3) | uint8 | leafref (/sys/load)" */
std::string MembersText(const diff::TypeModel &type,
                        const std::function<const std::string &(const diff::TypeModel &)> &limitsOf)
{
    std::string text;
    for (const diff::TypeModel *member : type.members) {
        std::string within = limitsOf(*member);
        if (!member->names.empty())
            AddPart(&within, NamesText(*member));
        if (std::string path = PathOf(*member); !path.empty())
            AddPart(&within, path);
        text += (text.empty() ? "" : " | ") + member->base + (within.empty() ? "" : " (" + within + ")");
    }
    return text;
}

/* Where a leafref leads, or what it says when that is nowhere. */
std::string TargetText(QY_NODE *leaf, const diff::TypeModel &type)
{
    if (QY_NODE *target = QY_NODE_GetLeafrefTargetNode(leaf, 1))
        return "leads to " + DataPath(target);
    std::string path = PathOf(type);
    return path.empty() ? "leads nowhere" : "leads nowhere (" + path + ")";
}

} // namespace

const std::string &TypeWords::LimitsOf(const diff::TypeModel &type)
{
    auto [entry, isNew] = limits_.try_emplace(&type);
    std::string &text = entry->second;
    if (!isNew)
        return text;
    if (type.range != nullptr && type.range->range != *diff::ValueRange::Of(type.base))
        AddPart(&text, type.range->range.Text());
    if (type.length != nullptr)
        AddPart(&text, "length " + type.length->range.Text());
    for (const Phrase &phrase : PHRASES)
        for (const diff::Fact &fact : type.facts)
            if (fact.rule == phrase.rule)
                AddPart(&text, phrase.before + diff::ValueText(fact.value) + phrase.behind);
    if (!type.members.empty())
        AddPart(&text, MembersText(type, [this](const diff::TypeModel &member) -> const std::string & {
            return LimitsOf(member);
        }));
    return text;
}

TypeText TypeWords::Of(QY_NODE *leaf)
{
    std::optional<diff::LeafType> type = types_.OfLeaf(leaf);
    if (!type)
        return {};
    TypeText text;
    text.written = type->written != nullptr ? type->written : "";
    if (type->own->base == "leafref")
        text.limits = TargetText(leaf, *type->own);
    text.base = type->last->base;
    text.names = type->last->names.empty() ? nullptr : type->last;
    if (const std::string &limits = LimitsOf(*type->last); !limits.empty())
        AddPart(&text.limits, limits);
    return text;
}

} // namespace inspect
