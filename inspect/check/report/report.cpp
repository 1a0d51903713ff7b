#include "check/report/report.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

#include "base/failure.h"
#include "base/text.h"

namespace inspect {
namespace {

bool StandsBefore(const Finding &left, const Finding &right)
{
    return std::tie(left.cause.file, left.cause.line, left.cause.column) <
           std::tie(right.cause.file, right.cause.line, right.cause.column);
}

/* A hash that stays the same from release to release: FNV-1a of 64 bits. */
std::string Fingerprint(const std::string &text)
{
    uint64_t hash = 0xcbf29ce484222325U;
    for (const char character : text)
        hash = (hash ^ static_cast<uint8_t>(character)) * 0x100000001b3U;
    constexpr char DIGITS[] = "0123456789abcdef";
    std::string digits;
    for (uint32_t shift = 64; shift > 0; shift -= 4)
        digits += DIGITS[hash >> (shift - 4) & 0xFU];
    return digits;
}

} // namespace

/* What a module that cannot be loaded would have is not known. */
Report MakeReport(std::vector<Finding> findings, std::vector<std::string> modules, const ReportRequest &request)
{
    Report report;
    std::set<std::string> known(modules.begin(), modules.end());
    report.modules = std::move(modules);
    std::stable_sort(findings.begin(), findings.end(), StandsBefore);
    BaselineUse use(request.baseline);
    std::map<std::string, size_t> equals;
    for (Finding &finding : findings) {
        if (finding.rule == Rule("load-failed"))
            known.erase(finding.module);
        std::optional<Severity> severity = request.policy.LevelOf(finding);
        bool isKnown = use.Takes(finding);
        if (severity && isKnown)
            ++report.known;
        if (!severity || isKnown)
            continue;
        ++(*severity == Severity::Error ? report.errors : report.warnings);
        std::string same = KeyOf(finding, finding.cause.file);
        std::string number = std::to_string(++equals[same]);
        report.findings.push_back({std::move(finding), *severity, Fingerprint(same + number)});
    }
    report.gone = use.Gone(known, request.all);
    return report;
}

bool Counts(const Report &report, const ReportedFinding &finding)
{
    return report.strict || finding.severity == Severity::Error;
}

int ExitCodeOf(const Report &report)
{
    bool failed = false;
    for (const ReportedFinding &finding : report.findings) {
        if (!Counts(report, finding))
            continue;
        if (finding.finding.rule == Rule("load-failed"))
            return EXIT_NOT_LOADED;
        failed = true;
    }
    return failed ? EXIT_NEGATIVE : EXIT_OK;
}

const char *SeverityText(Severity severity)
{
    return severity == Severity::Error ? "error" : "warning";
}

std::string SentenceText(const Finding &finding)
{
    std::string section = SectionText(*finding.rule);
    return TextOf(finding) + (section.empty() ? "" : " (" + section + ")");
}

std::string FindingText(const ReportedFinding &reported, const Paint &paint)
{
    const Finding &finding = reported.finding;
    Tone tone = reported.severity == Severity::Error ? Tone::Bad : Tone::Warning;
    return paint.Text(Tone::Name, Printable(PlaceText(finding.cause, finding.module))) +
           paint.Text(tone, SeverityText(reported.severity)) + ": " + Printable(SentenceText(finding)) +
           paint.Text(Tone::Faint, std::string(" [") + finding.rule->name + "]");
}

std::string SummaryText(const Report &report)
{
    return Count(report.modules.size(), "module") +
           " checked: " + (report.errors != 0 ? Count(report.errors, "error") : "no errors") + ", " +
           (report.warnings != 0 ? Count(report.warnings, "warning") : "no warnings");
}

} // namespace inspect
