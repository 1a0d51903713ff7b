/* What a run of `check` comes to: the findings that are left, in the order of their places, and what became of the others. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/paint.h"
#include "check/findings.h"
#include "check/report/baseline.h"
#include "check/report/policy.h"

namespace inspect {

struct ReportedFinding {
    Finding finding;
    Severity severity;
    std::string fingerprint; /* differs from those of all others, and stays the same when the file changes above it */
};

struct Report {
    std::vector<std::string> modules; /* that were checked */
    std::vector<ReportedFinding> findings;
    size_t errors = 0;
    size_t warnings = 0;
    size_t hidden = 0; /* findings that comments in the models hide */
    size_t known = 0;  /* findings of the baseline */
    size_t gone = 0;   /* what the baseline has and the run has not found in the modules that were checked */
    bool strict = false;
    Paint paint = Paint(); /* of text */
};

/* How a report is made of findings. */
struct ReportRequest {
    const Policy &policy;
    const Baseline *baseline; /* or null */
    bool all;                 /* every module of the directories was checked */
};

/* Sorts the findings and leaves out those that the policy switches off, and those that the baseline knows. */
Report MakeReport(std::vector<Finding> findings, std::vector<std::string> modules, const ReportRequest &request);

/* True if the finding makes the run fail. */
bool Counts(const Report &report, const ReportedFinding &finding);

int ExitCodeOf(const Report &report);

/* "error" or "warning". */
const char *SeverityText(Severity severity);

/* "models/m.yin:12:3: warning: key 'x' ... (RFC 7950, 7.8.2) [key-config]" */
std::string FindingText(const ReportedFinding &reported, const Paint &paint = Paint());

/* The finding's text with the number of its places and the section of the RFC that has its rule. */
std::string SentenceText(const Finding &finding);

/* "2 modules checked: 1 error, 3 warnings" */
std::string SummaryText(const Report &report);

} // namespace inspect
