/* Rules of `check` for the extension statements that classes are made of. */
#pragma once

#include "check/rows/rule_row.h"

namespace inspect {

inline constexpr RuleRow STATEMENT_ROWS[] = {
    {"field-id-range", Severity::Warning, nullptr, "an attribute id beyond 255: only its low 8 bits count"},
    {"bad-number", Severity::Warning, nullptr, "an argument that is no number of 32 bits, and what it counts as"},
    {"repeated-statement", Severity::Warning, nullptr, "a statement that may stand once stands again"},
    {"no-effect", Severity::Warning, nullptr, "a statement where nothing reads it"},
    {"class-without-tree", Severity::Warning, nullptr, "a class outside the containers at the module's top"},
    {"extra-ancestor-key", Severity::Warning, nullptr, "more ancestor keys than the lists above have keys"},
    {"dropped-key", Severity::Warning, nullptr,
     "the list's keys are ignored, since a list above has the same class id"},
    {"missing-key", Severity::Warning, nullptr, "a deviation removed a leaf that is a key of this class"},
};

} // namespace inspect
