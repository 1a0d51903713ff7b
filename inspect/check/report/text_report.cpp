/* The report for people, and for machines that show lines of a log beside the file. */
#include <algorithm>
#include <cstdio>
#include <map>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "check/report/report_formats.h"

namespace inspect {
namespace {

/* "     2 warnings  missing-field-id": errors first, then the most frequent. */
void WriteCounts(const Report &report)
{
    std::map<std::pair<Severity, std::string_view>, size_t> counts;
    for (const ReportedFinding &finding : report.findings)
        ++counts[{finding.severity, finding.finding.rule->name}];
    std::vector<std::pair<std::pair<Severity, std::string_view>, size_t>> sorted(counts.begin(), counts.end());
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto &left, const auto &right) {
        return left.first.first == right.first.first ? left.second > right.second
                                                     : left.first.first < right.first.first;
    });
    for (const auto &[rule, count] : sorted) {
        std::string number = Count(count, SeverityText(rule.first));
        std::printf("  %13s  %.*s\n", number.c_str(), static_cast<int>(rule.second.size()), rule.second.data());
    }
}

/* The text with these characters as "%25" and the like. */
std::string Escaped(std::string_view text, std::string_view characters)
{
    std::string escaped;
    char code[4] = {};
    for (const char character : text) {
        if (characters.find(character) == std::string_view::npos) {
            escaped += character;
            continue;
        }
        std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned>(static_cast<uint8_t>(character)));
        escaped += code;
    }
    return escaped;
}

} // namespace

void WriteReportText(const Report &report)
{
    const std::string *file = nullptr;
    for (const ReportedFinding &finding : report.findings) {
        if (file != nullptr && *file != finding.finding.cause.file)
            std::printf("\n");
        file = &finding.finding.cause.file;
        std::printf("%s\n", FindingText(finding, report.paint).c_str());
    }
    if (!report.findings.empty())
        std::printf("\n");
    WriteCounts(report);
    if (report.hidden != 0)
        std::printf("%s hidden by comments in the models\n", Count(report.hidden, "finding").c_str());
    if (report.known != 0)
        std::printf("%s of the baseline\n", Count(report.known, "known finding").c_str());
    if (report.gone != 0)
        std::printf("%s of the baseline %s no longer there: --write-baseline makes it anew\n",
                    Count(report.gone, "finding").c_str(), report.gone == 1 ? "is" : "are");
    std::printf("%s\n", SummaryText(report).c_str());
}

/* A line a finding, which the machine shows beside the line of the file; then the summary, which it leaves in its log. */
void WriteReportGithub(const Report &report)
{
    for (const ReportedFinding &reported : report.findings) {
        const Finding &finding = reported.finding;
        std::string line = std::string("::") + SeverityText(reported.severity) + " ";
        const Cause &cause = finding.cause;
        if (!cause.file.empty())
            line +=
                "file=" + Escaped(PlainPath(cause.file), "%\r\n:,") + ",line=" + std::to_string(ShownLine(cause)) + ",";
        if (cause.column != 0)
            line += "col=" + std::to_string(cause.column) + ",";
        std::string text = (cause.file.empty() ? finding.module + ": " : "") + SentenceText(finding);
        line += std::string("title=") + finding.rule->name + "::" + Escaped(ValidUtf8(text), "%\r\n");
        std::printf("%s\n", line.c_str());
    }
    std::printf("%s\n", SummaryText(report).c_str());
}

} // namespace inspect
