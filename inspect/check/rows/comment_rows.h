/* Rules of `check` for the comments by which a model hides findings. */
#pragma once

#include "check/rows/rule_row.h"

namespace inspect {

inline constexpr RuleRow COMMENT_ROWS[] = {
    {"bad-ignore", Severity::Warning, nullptr, "a comment that is to hide findings and gives no reason, or no rule"},
    {"unused-ignore", Severity::Warning, nullptr, "a comment that is to hide findings and hides none"},
};

} // namespace inspect
