/* The forms in which `check` writes its report, and the list of its rules. */
#pragma once

#include <span>
#include <string>

#include "check/report/report.h"

namespace inspect {

/* A form of the report, by the word of --format. */
struct ReportFormat {
    const char *name;
    void (*write)(const Report &report);
};

/* In the order of the help; text is the first. */
std::span<const ReportFormat> ReportFormats();

/* Each writes to standard output. */
void WriteReportText(const Report &report);
void WriteReportJson(const Report &report);
void WriteReportGithub(const Report &report);
void WriteReportSarif(const Report &report);
void WriteReportJunit(const Report &report);
void WriteReportGitlab(const Report &report);

void WriteRulesText(const Policy &policy);
void WriteRulesJson(const Policy &policy);

/* The file as a relative reference: percent-encoded, without "." steps; with "file://" in front if it begins at the root. */
std::string FileUri(const std::string &file);

/* The line beside which a machine shows what is wrong: the first one for a file as a whole. */
uint32_t ShownLine(const Cause &cause);

/* "models/m.yin" of "./models/m.yin". */
std::string PlainPath(const std::string &file);

} // namespace inspect
