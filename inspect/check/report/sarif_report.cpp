/* The report as SARIF 2.1.0. */
#include <korv_lib_yang.h>

#include <map>

#include "base/json_out.h"
#include "check/report/report_formats.h"

namespace inspect {
namespace {

constexpr const char *SCHEMA = "https://docs.oasis-open.org/sarif/sarif/v2.1.0/os/schemas/sarif-schema-2.1.0.json";

void WriteMessage(const char *name, const std::string &text, JsonOut *out)
{
    out->Key(name);
    out->Object();
    out->Member("text", text);
    out->EndObject();
}

/* All rules, so that a reader sees what was looked for as well. Their places in the list are their indexes. */
void WriteTool(JsonOut *out)
{
    out->Key("tool");
    out->Object();
    out->Key("driver");
    out->Object();
    out->Member("name", "korv-inspect");
    out->Member("semanticVersion", KORV_LIB_YANG_VERSION);
    out->Key("rules");
    out->Array();
    ForEachRule([out](const RuleRow &row) {
        std::string section = SectionText(row);
        out->Object();
        out->Member("id", row.name);
        WriteMessage("shortDescription", row.purpose, out);
        WriteMessage("help", std::string(row.purpose) + (section.empty() ? "" : " (" + section + ")"), out);
        out->Key("defaultConfiguration");
        out->Object();
        out->Member("level", SeverityText(row.severity));
        out->EndObject();
        if (!section.empty()) {
            out->Key("properties");
            out->Object();
            out->Member("section", section);
            out->EndObject();
        }
        out->EndObject();
    });
    out->EndArray();
    out->EndObject();
    out->EndObject();
}

void WritePlace(const Cause &cause, JsonOut *out)
{
    out->Key("physicalLocation");
    out->Object();
    out->Key("artifactLocation");
    out->Object();
    out->Member("uri", FileUri(cause.file));
    out->EndObject();
    out->Key("region");
    out->Object();
    out->Member("startLine", ShownLine(cause));
    if (cause.column != 0)
        out->Member("startColumn", cause.column);
    out->EndObject();
    out->EndObject();
}

void WriteResult(const ReportedFinding &reported, size_t ruleIndex, JsonOut *out)
{
    const Finding &finding = reported.finding;
    out->Object();
    out->Member("ruleId", finding.rule->name);
    out->Member("ruleIndex", ruleIndex);
    out->Member("level", SeverityText(reported.severity));
    WriteMessage("message", SentenceText(finding), out);
    out->Key("locations");
    out->Array();
    out->Object();
    if (!finding.cause.file.empty())
        WritePlace(finding.cause, out);
    out->Key("logicalLocations");
    out->Array();
    out->Object();
    out->Member("name", finding.module);
    out->Member("kind", "module");
    out->EndObject();
    out->EndArray();
    out->EndObject();
    out->EndArray();
    out->Key("partialFingerprints");
    out->Object();
    out->Member("korvInspect/v1", reported.fingerprint);
    out->EndObject();
    out->EndObject();
}

} // namespace

void WriteReportSarif(const Report &report)
{
    std::map<const RuleRow *, size_t> indexes;
    ForEachRule([&indexes](const RuleRow &row) { indexes.emplace(&row, indexes.size()); });
    JsonOut out;
    out.Object();
    out.Member("$schema", SCHEMA);
    out.Member("version", "2.1.0");
    out.Key("runs");
    out.Array();
    out.Object();
    WriteTool(&out);
    out.Member("columnKind", "unicodeCodePoints");
    out.Key("results");
    out.Array();
    for (const ReportedFinding &reported : report.findings)
        WriteResult(reported, indexes.at(&*reported.finding.rule), &out);
    out.EndArray();
    out.EndObject();
    out.EndArray();
    out.EndObject();
}

} // namespace inspect
