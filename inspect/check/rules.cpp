#include "check/rules.h"

#include "base/text.h"

namespace inspect {
namespace {

constexpr size_t NAME_WIDTH = MAX_RULE_NAME + 1;
constexpr size_t TEXT_WIDTH = 64;

constexpr bool AllNamesDiffer()
{
    for (std::span<const RuleRow> table : RULE_TABLES)
        for (const RuleRow &row : table) {
            std::string_view name = row.name;
            size_t uses = 0;
            for (std::span<const RuleRow> other : RULE_TABLES)
                for (const RuleRow &otherRow : other)
                    uses += name == otherRow.name ? 1 : 0;
            if (uses != 1)
                return false;
        }
    return true;
}

static_assert(AllNamesDiffer());

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

const RuleRow *FindRule(std::string_view name)
{
    const RuleRow *found = nullptr;
    ForEachRule([&](const RuleRow &row) { found = row.name == name ? &row : found; });
    return found;
}

std::string NoRuleText(std::string_view name)
{
    NearestName nearest(name);
    ForEachRule([&](const RuleRow &row) { nearest.Offer(row.name); });
    return "there is no rule '" + std::string(name) + "'" + nearest.Hint();
}

std::string SectionText(const RuleRow &row)
{
    return row.section == nullptr ? "" : "RFC " + std::to_string(row.rfc) + ", " + row.section;
}

std::string RulesText()
{
    std::string text;
    for (std::span<const RuleRow> table : RULE_TABLES)
        for (const RuleRow &row : table) {
            std::string name = row.name;
            std::string section = SectionText(row);
            text.append("  ").append(name).append(NAME_WIDTH - name.size(), ' ');
            AppendWrapped((row.severity == Severity::Error ? "error: " : "") + std::string(row.purpose) +
                              (section.empty() ? "" : " (" + section + ")"),
                          &text);
        }
    return text;
}

} // namespace inspect
