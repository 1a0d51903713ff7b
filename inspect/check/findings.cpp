#include "check/findings.h"

#include <algorithm>

#include "base/json_out.h"
#include "base/text.h"

namespace inspect {
namespace {

bool IsError(const Finding &finding)
{
    return finding.rule->severity == Severity::Error;
}

size_t CountErrors(const std::vector<Finding> &findings)
{
    return static_cast<size_t>(std::count_if(findings.begin(), findings.end(), IsError));
}

void WriteNumberOrNull(JsonOut *out, const char *name, uint32_t number)
{
    out->Key(name);
    if (number != 0)
        out->Value(number);
    else
        out->Null();
}

} // namespace

std::string FindingText(const Finding &finding)
{
    std::string section = SectionText(*finding.rule);
    return Printable(PlaceText(finding.cause, finding.module) + (IsError(finding) ? "error: " : "warning: ") +
                     finding.cause.text + (section.empty() ? "" : " (" + section + ")") + " [" + finding.rule->name +
                     "]");
}

void WriteFindingsJson(const std::vector<std::string> &modules, const std::vector<Finding> &findings)
{
    JsonOut out;
    out.Object();
    out.Key("modules");
    out.Array();
    for (const std::string &module : modules)
        out.Text(module);
    out.EndArray();
    out.Member("errors", CountErrors(findings));
    out.Member("warnings", findings.size() - CountErrors(findings));
    out.Key("findings");
    out.Array();
    for (const Finding &finding : findings) {
        out.Object();
        out.Member("name", finding.rule->name);
        out.Member("severity", IsError(finding) ? "error" : "warning");
        std::string section = SectionText(*finding.rule);
        out.Member("section", section.empty() ? nullptr : section.c_str());
        out.Member("module", finding.module);
        out.Member("file", finding.cause.file.empty() ? nullptr : finding.cause.file.c_str());
        WriteNumberOrNull(&out, "line", finding.cause.line);
        WriteNumberOrNull(&out, "column", finding.cause.column);
        out.Member("text", finding.cause.text);
        out.EndObject();
    }
    out.EndArray();
    out.EndObject();
}

std::string SummaryText(size_t modules, const std::vector<Finding> &findings)
{
    size_t errors = CountErrors(findings);
    size_t warnings = findings.size() - errors;
    return Count(modules, "module") + " checked: " + (errors != 0 ? Count(errors, "error") : "no errors") + ", " +
           (warnings != 0 ? Count(warnings, "warning") : "no warnings");
}

bool HasErrors(const std::vector<Finding> &findings)
{
    return CountErrors(findings) != 0;
}

} // namespace inspect
