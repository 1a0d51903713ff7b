/* Rules of `check` for what the load of a module says, and for files and directories. */
#pragma once

#include "check/rows/rule_row.h"

namespace inspect {

inline constexpr RuleRow LOAD_ROWS[] = {
    {"load-failed", Severity::Error, nullptr, "the module, or something that it needs, is not right"},
    {"deviation-failed", Severity::Error, nullptr,
     "the module's deviation module cannot be loaded, so that the module is loaded without it"},
    {"library-message", Severity::Warning, nullptr, "the library says something else while it loads the module"},
    {"two-syntaxes", Severity::Warning, nullptr, "NAME.yin and NAME.yang in one directory: only the former is read"},
    {"unlisted-directory", Severity::Warning, nullptr, "a directory in which deviation files cannot be seen"},
};

} // namespace inspect
