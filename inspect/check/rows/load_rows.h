/* Rules of `check` for what the load of a module says, and for files and directories. */
#pragma once

#include "check/rows/rule_row.h"

namespace inspect {

inline constexpr RuleRow LOAD_ROWS[] = {
    {"load-failed", Severity::Error, nullptr, "the module, or something that it needs, is not right"},
    {"deviation-failed", Severity::Error, nullptr,
     "the module's deviation module cannot be loaded, so that the module is loaded without it"},
    {"library-message", Severity::Warning, nullptr, "the library says something else while it loads the module"},
    {"unread-file", Severity::Warning, nullptr,
     "a file that nothing reads, since another one wins or its name is wrong", 7950U, true},
    {"unread-deviation", Severity::Warning, nullptr, "a deviation file that no device loads"},
    {"file-revision", Severity::Warning, nullptr, "a file whose name has another revision than its module"},
    {"duplicate-task-id", Severity::Warning, nullptr, "two modules have the same task id", 7950U, true},
    {"no-class", Severity::Warning, nullptr,
     "a module that imports the extension module and gives no node a class-id or field-id"},
    {"two-syntaxes", Severity::Warning, nullptr, "NAME.yin and NAME.yang in one directory: only the former is read"},
    {"unlisted-directory", Severity::Warning, nullptr, "a directory in which deviation files cannot be seen"},
};

} // namespace inspect
