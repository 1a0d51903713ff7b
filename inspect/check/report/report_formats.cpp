#include "check/report/report_formats.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "base/json_out.h"

namespace inspect {
namespace {

constexpr ReportFormat FORMATS[] = {
    {"text", WriteReportText},   {"json", WriteReportJson},   {"github", WriteReportGithub},
    {"sarif", WriteReportSarif}, {"junit", WriteReportJunit}, {"gitlab", WriteReportGitlab},
};

const char *LevelText(const Policy &policy, const RuleRow &row)
{
    std::optional<Severity> level = policy.LevelOf(row);
    return level ? SeverityText(*level) : "off";
}

bool NeedsNoEscape(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') ||
           std::string_view("-._~/").find(character) != std::string_view::npos;
}

} // namespace

std::span<const ReportFormat> ReportFormats()
{
    return FORMATS;
}

void WriteRulesText(const Policy &policy)
{
    ForEachRule([&](const RuleRow &row) {
        std::string section = SectionText(row);
        std::printf("%-*s %-9s%s%s\n", static_cast<int>(MAX_RULE_NAME), row.name, LevelText(policy, row), row.purpose,
                    section.empty() ? "" : (" (" + section + ")").c_str());
    });
}

void WriteRulesJson(const Policy &policy)
{
    JsonOut out;
    out.Array();
    ForEachRule([&](const RuleRow &row) {
        std::string section = SectionText(row);
        out.Object();
        out.Member("name", row.name);
        out.Member("severity", LevelText(policy, row));
        out.Member("section", section.empty() ? nullptr : section.c_str());
        out.Member("purpose", row.purpose);
        out.EndObject();
    });
    out.EndArray();
}

uint32_t ShownLine(const Cause &cause)
{
    return std::max(cause.line, 1U);
}

std::string PlainPath(const std::string &file)
{
    return std::filesystem::path(file).lexically_normal().generic_string();
}

std::string FileUri(const std::string &file)
{
    constexpr char DIGITS[] = "0123456789ABCDEF";
    std::string path = PlainPath(file);
    std::string uri = path.starts_with("/") ? "file://" : "";
    for (const char character : path) {
        auto byte = static_cast<uint8_t>(character);
        if (NeedsNoEscape(character))
            uri += character;
        else
            uri.append({'%', DIGITS[byte >> 4U], DIGITS[byte & 0xFU]});
    }
    return uri;
}

} // namespace inspect
