/* The report as JUnit has it: a suite a module, a test a finding. A finding that counts is a test that failed. */
#include <cstdio>
#include <map>
#include <vector>

#include "base/text.h"
#include "check/report/report_formats.h"

namespace inspect {
namespace {

std::string Quoted(const std::string &text)
{
    std::string quoted = "\"";
    for (const char character : Printable(text)) {
        switch (character) {
            case '&':
                quoted += "&amp;";
                break;
            case '<':
                quoted += "&lt;";
                break;
            case '>':
                quoted += "&gt;";
                break;
            case '"':
                quoted += "&quot;";
                break;
            default:
                quoted += character;
        }
    }
    return quoted + "\"";
}

void WriteTest(const Report &report, const ReportedFinding &reported)
{
    const Finding &finding = reported.finding;
    const Cause &cause = finding.cause;
    std::string place = PlaceText(cause, finding.module);
    std::string test =
        "    <testcase name=" + Quoted(place + finding.rule->name) + " classname=" + Quoted(finding.module);
    if (!cause.file.empty())
        test += " file=" + Quoted(PlainPath(cause.file));
    if (cause.line != 0)
        test += " line=\"" + std::to_string(cause.line) + "\"";
    std::string text = Quoted(FindingText(reported));
    std::string content = text.substr(1, text.size() - 2);
    if (Counts(report, reported))
        test += "><failure type=" + Quoted(finding.rule->name) + " message=" + Quoted(SentenceText(finding)) + ">" +
                content + "</failure></testcase>";
    else
        test += "><system-out>" + content + "</system-out></testcase>";
    std::printf("%s\n", test.c_str());
}

size_t CountFailures(const Report &report, const std::vector<const ReportedFinding *> &findings)
{
    size_t failures = 0;
    for (const ReportedFinding *finding : findings)
        failures += Counts(report, *finding) ? 1 : 0;
    return failures;
}

/* A module without findings is one test that has passed. */
void WriteSuite(const Report &report, const std::string &module, const std::vector<const ReportedFinding *> &findings)
{
    std::string name = Quoted(module);
    std::printf("  <testsuite name=%s tests=\"%zu\" failures=\"%zu\" errors=\"0\" skipped=\"0\">\n", name.c_str(),
                findings.empty() ? 1 : findings.size(), CountFailures(report, findings));
    if (findings.empty())
        std::printf("    <testcase name=\"check\" classname=%s/>\n", name.c_str());
    for (const ReportedFinding *finding : findings)
        WriteTest(report, *finding);
    std::printf("  </testsuite>\n");
}

} // namespace

void WriteReportJunit(const Report &report)
{
    std::map<std::string, std::vector<const ReportedFinding *>> suites;
    for (const std::string &module : report.modules)
        suites.try_emplace(module);
    size_t tests = 0;
    size_t failures = 0;
    for (const ReportedFinding &finding : report.findings) {
        suites[finding.finding.module].push_back(&finding);
        failures += Counts(report, finding) ? 1 : 0;
    }
    for (const auto &[module, findings] : suites)
        tests += findings.empty() ? 1 : findings.size();
    std::printf(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<testsuites name=\"korv-inspect\" tests=\"%zu\" failures=\"%zu\" errors=\"0\">\n",
        tests, failures);
    for (const auto &[module, findings] : suites)
        WriteSuite(report, module, findings);
    std::printf("</testsuites>\n");
}

} // namespace inspect
