/* Rules of `check` for the extension statements that classes are made of. */
#pragma once

#include "check/rows/rule_row.h"

namespace inspect {

inline constexpr RuleRow STATEMENT_ROWS[] = {
    {"field-id-range", Severity::Warning, nullptr, "an attribute id beyond 255: only its low 8 bits count"},
    {"bad-number", Severity::Warning, nullptr, "an argument that is no number of 32 bits, and what it counts as"},
    {"misleading-number", Severity::Warning, nullptr,
     "a number that counts as something else than it says: octal, 0, or the one that stands for none"},
    {"repeated-statement", Severity::Warning, nullptr, "a statement that may stand once stands again"},
    {"no-effect", Severity::Warning, nullptr, "a statement where nothing reads it"},
    {"class-without-tree", Severity::Warning, nullptr,
     "a class in no tree: outside the containers at a module's top, or in an operation or notification"},
    {"nested-leafref-class", Severity::Warning, nullptr,
     "a class of class-type 'leafref' whose first child is one as well"},
    {"mixed-ancestor-keys", Severity::Warning, nullptr, "an ancestor-key-fid of another form than the first one"},
    {"hidden-index-map", Severity::Warning, nullptr,
     "a leaf without field-id before a key, so that classes below do not find the key's index map"},
    {"extra-ancestor-key", Severity::Warning, nullptr, "more ancestor keys than the lists above have keys"},
    {"dropped-key", Severity::Warning, nullptr,
     "the list's keys are ignored, since a list above has the same class id"},
};

} // namespace inspect
