/* What `check` has to say. */
#pragma once

#include <string>
#include <vector>

#include "base/cause.h"
#include "check/rules.h"

namespace inspect {

struct Finding {
    Rule rule;
    std::string module;
    Cause cause;
};

/* "models/m.yin:12:3: warning: key 'x' ... (RFC 7950, 7.8.2) [key-config]" */
std::string FindingText(const Finding &finding);

/* All findings with their counts as one object. */
void WriteFindingsJson(const std::vector<std::string> &modules, const std::vector<Finding> &findings);

/* "2 modules checked: 1 error, 3 warnings" */
std::string SummaryText(size_t modules, const std::vector<Finding> &findings);

bool HasErrors(const std::vector<Finding> &findings);

} // namespace inspect
