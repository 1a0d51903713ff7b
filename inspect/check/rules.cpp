#include "check/rules.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace inspect {
namespace {

using enum Severity;
using enum Subject;

constexpr RuleRow ROWS[] = {
    {Rule::LoadFailed, "load-failed", Error, Load, "the module, or something that it needs, is not right"},
    {Rule::DeviationFailed, "deviation-failed", Error, Load,
     "the module's deviation module cannot be loaded, so that the module is loaded without it"},
    {Rule::MissingFieldId, "missing-field-id", Warning, Classes, "a leaf of a class has no attribute id"},
    {Rule::DuplicateFieldId, "duplicate-field-id", Warning, Classes,
     "two leaves of a class have the same attribute id"},
    {Rule::FieldIdRange, "field-id-range", Warning, Classes, "an attribute id beyond 255: only its low 8 bits count"},
    {Rule::BadNumber, "bad-number", Warning, Statements,
     "an argument that is no number of 32 bits, and what it counts as"},
    {Rule::RepeatedStatement, "repeated-statement", Warning, Statements,
     "a statement that may stand once stands again"},
    {Rule::NoEffect, "no-effect", Warning, Statements, "a statement where nothing reads it"},
    {Rule::KeyWithoutFieldId, "key-without-field-id", Warning, Classes, "a key leaf has no attribute id"},
    {Rule::DuplicateClassId, "duplicate-class-id", Warning, Classes, "two unrelated classes have the same class id"},
    {Rule::ClassWithoutTree, "class-without-tree", Warning, Statements,
     "a class outside the containers at the module's top"},
    {Rule::ManyKeys, "many-keys", Warning, Classes, "more than 8 own or ancestor keys; more than 16 cannot be loaded"},
    {Rule::UnmappedAncestorKey, "unmapped-ancestor-key", Warning, Classes,
     "a key of the classes above has no attribute id in this class"},
    {Rule::ExtraAncestorKey, "extra-ancestor-key", Warning, Statements,
     "more ancestor keys than the lists above have keys"},
    {Rule::DroppedKey, "dropped-key", Warning, Statements,
     "the list's keys are ignored, since a list above has the same class id"},
    {Rule::MissingKey, "missing-key", Warning, Statements, "a deviation removed a leaf that is a key of this class"},
    {Rule::AncestorKeyCollision, "ancestor-key-collision", Warning, Classes,
     "an ancestor key takes the attribute id of a leaf"},
    {Rule::LongPath, "long-path", Warning, Classes, "a path of more than 256 characters: cut in dumps, no lookup"},
    {Rule::LongName, "long-name", Warning, Classes, "a name of more than 64 characters: no lookup"},
    {Rule::TwoSyntaxes, "two-syntaxes", Warning, Files,
     "NAME.yin and NAME.yang in one directory: only the former is read"},
    {Rule::ManyAugments, "many-augments", Warning, Classes, "18 augments or more; more than 20 cannot be loaded"},
    {Rule::UnlistedDirectory, "unlisted-directory", Warning, Files,
     "a directory in which deviation files cannot be seen"},
    {Rule::LibraryMessage, "library-message", Warning, Load,
     "the library says something else while it loads the module"},
};

constexpr bool AreInOrder()
{
    size_t number = 0;
    return std::all_of(std::begin(ROWS), std::end(ROWS),
                       [&number](const RuleRow &row) { return static_cast<size_t>(row.rule) == number++; });
}

static_assert(AreInOrder());

constexpr size_t NAME_WIDTH = 25;
constexpr size_t TEXT_WIDTH = 64;

/* The text in lines of that width, each behind the first indented like it. */
void AppendWrapped(std::string_view text, std::string *out)
{
    while (text.size() > TEXT_WIDTH) {
        size_t end = text.rfind(' ', TEXT_WIDTH);
        out->append(text.substr(0, end)).append("\n").append(NAME_WIDTH + 2, ' ');
        text.remove_prefix(end + 1);
    }
    out->append(text).append("\n");
}

} // namespace

std::span<const RuleRow> AllRules()
{
    return ROWS;
}

const RuleRow &RowOf(Rule rule)
{
    return ROWS[static_cast<size_t>(rule)];
}

std::string RulesText()
{
    std::string text;
    for (const RuleRow &row : ROWS) {
        std::string name = row.name;
        text.append("  ").append(name).append(NAME_WIDTH - name.size(), ' ');
        AppendWrapped((row.severity == Error ? "error: " : "") + std::string(row.purpose), &text);
    }
    return text;
}

} // namespace inspect
