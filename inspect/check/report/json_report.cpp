/* The report as JSON of the program's own form, and as code quality reports have it. */
#include "base/json_out.h"
#include "check/report/report_formats.h"

namespace inspect {
namespace {

void WriteFinding(const ReportedFinding &reported, JsonOut *out)
{
    const Finding &finding = reported.finding;
    std::string section = SectionText(*finding.rule);
    out->Object();
    out->Member("name", finding.rule->name);
    out->Member("severity", SeverityText(reported.severity));
    out->Member("section", section.empty() ? nullptr : section.c_str());
    out->Member("module", finding.module);
    out->Member("file", finding.cause.file.empty() ? nullptr : finding.cause.file.c_str());
    out->NumberOrNull("line", finding.cause.line);
    out->NumberOrNull("column", finding.cause.column);
    out->Member("text", finding.cause.text);
    out->Member("places", finding.places);
    out->Member("first_place", finding.path.empty() ? nullptr : finding.path.c_str());
    out->EndObject();
}

} // namespace

void WriteReportJson(const Report &report)
{
    JsonOut out;
    out.Object();
    out.Key("modules");
    out.Array();
    for (const std::string &module : report.modules)
        out.Text(module);
    out.EndArray();
    out.Member("errors", report.errors);
    out.Member("warnings", report.warnings);
    out.Member("hidden", report.hidden);
    out.Member("known", report.known);
    out.Member("gone", report.gone);
    out.Key("findings");
    out.Array();
    for (const ReportedFinding &reported : report.findings)
        WriteFinding(reported, &out);
    out.EndArray();
    out.EndObject();
}

/* Each finding has a file and a line there: those without get the module's name and 1. */
void WriteReportGitlab(const Report &report)
{
    JsonOut out;
    out.Array();
    for (const ReportedFinding &reported : report.findings) {
        const Finding &finding = reported.finding;
        out.Object();
        out.Member("description", SentenceText(finding));
        out.Member("check_name", finding.rule->name);
        out.Member("fingerprint", reported.fingerprint);
        out.Member("severity", reported.severity == Severity::Error ? "major" : "minor");
        out.Key("location");
        out.Object();
        out.Member("path", finding.cause.file.empty() ? finding.module : PlainPath(finding.cause.file));
        out.Key("lines");
        out.Object();
        out.Member("begin", ShownLine(finding.cause));
        out.EndObject();
        out.EndObject();
        out.EndObject();
    }
    out.EndArray();
}

} // namespace inspect
