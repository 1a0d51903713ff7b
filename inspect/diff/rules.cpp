#include "diff/rules.h"

#include "base/text.h"

namespace inspect::diff {
namespace {

constexpr size_t NAME_WIDTH = 20;
constexpr size_t WHEN_WIDTH = 15;
constexpr size_t BY_ID_WIDTH = 7;

const char *WhenText(Breaks breaks)
{
    switch (breaks) {
        case Never:
            return "never";
        case Always:
            return "always";
        case WhenGone:
            return "changed, gone";
        case WhenNew:
            return "changed, new";
        case WhenComesOrGoes:
            return "new, gone";
        case WhenLarger:
            return "larger";
        case WhenSmaller:
            return "smaller";
        case WhenNarrower:
            return "narrower";
        case WhenRequired:
            return "required";
    }
    return "";
}

} // namespace

std::string RulesText()
{
    std::string text;
    auto add = [&text](std::string line, const char *when, const char *byId, const char *purpose) {
        PadTo(&line, NAME_WIDTH, 1);
        line += when;
        PadTo(&line, NAME_WIDTH + WHEN_WIDTH, 1);
        line += byId;
        PadTo(&line, NAME_WIDTH + WHEN_WIDTH + BY_ID_WIDTH, 1);
        text += line + purpose + "\n";
    };
    add("RULE", "BREAKING WHEN", "BY ID", "WHAT");
    for (const RuleRow &row : RULE_ROWS)
        add(row.name, WhenText(row.breaks), row.breaks != Never && row.feels == Feels::Path ? "never" : "",
            row.purpose);
    return text;
}

} // namespace inspect::diff
