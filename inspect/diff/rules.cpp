#include "diff/rules.h"

#include <cstdio>

#include "base/json_out.h"
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

bool IsNeverById(const RuleRow &row)
{
    return row.breaks != Never && row.feels == Feels::Path;
}

} // namespace

void WriteRulesText()
{
    auto write = [](std::string line, const char *when, const char *byId, const char *purpose) {
        PadTo(&line, NAME_WIDTH, 1);
        line += when;
        PadTo(&line, NAME_WIDTH + WHEN_WIDTH, 1);
        line += byId;
        PadTo(&line, NAME_WIDTH + WHEN_WIDTH + BY_ID_WIDTH, 1);
        std::printf("%s%s\n", line.c_str(), purpose);
    };
    write("RULE", "BREAKING WHEN", "BY ID", "WHAT");
    for (const RuleRow &row : RULE_ROWS)
        write(row.name, WhenText(row.breaks), IsNeverById(row) ? "never" : "", row.purpose);
}

void WriteRulesJson()
{
    JsonOut out;
    out.Array();
    for (const RuleRow &row : RULE_ROWS) {
        out.Object();
        out.Member("name", row.name);
        out.Member("breaking_when", WhenText(row.breaks));
        out.Member("breaking_when_by_id", WhenText(IsNeverById(row) ? Never : row.breaks));
        out.Member("purpose", row.purpose);
        out.EndObject();
    }
    out.EndArray();
}

} // namespace inspect::diff
