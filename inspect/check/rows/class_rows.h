/* Rules of `check` for the class trees that the library makes. */
#pragma once

#include "check/rows/rule_row.h"

namespace inspect {

inline constexpr RuleRow CLASS_ROWS[] = {
    {"missing-field-id", Severity::Warning, nullptr, "a leaf of a class has no attribute id"},
    {"duplicate-field-id", Severity::Warning, nullptr, "two leaves of a class have the same attribute id", 7950U, true},
    {"key-without-field-id", Severity::Warning, nullptr, "a key leaf has no attribute id"},
    {"duplicate-class-id", Severity::Warning, nullptr, "two unrelated classes have the same class id", 7950U, true},
    {"duplicate-sample-id", Severity::Warning, nullptr, "two unrelated classes have the same sample id", 7950U, true},
    {"keyless-class", Severity::Warning, nullptr, "a list that is a class has no key"},
    {"dangling-index-map", Severity::Warning, nullptr, "an index map that is no attribute id of the class"},
    {"dangling-reference-key", Severity::Warning, nullptr,
     "a leaf with ref-id-key-fid and without field-id, which is no attribute"},
    {"many-keys", Severity::Warning, nullptr, "more than 8 own or ancestor keys; more than 16 cannot be loaded"},
    {"unmapped-ancestor-key", Severity::Warning, nullptr,
     "a key of the classes above has no attribute id in this class"},
    {"ancestor-key-collision", Severity::Warning, nullptr, "an ancestor key takes the attribute id of a leaf", 7950U,
     true},
    {"duplicate-ancestor-key", Severity::Warning, nullptr, "two ancestor keys of a class have the same attribute id"},
    {"many-case-leaves", Severity::Warning, nullptr,
     "more than 255 leaves in the choices of a node: the others are left out"},
    {"long-path", Severity::Warning, nullptr, "a path of more than 256 characters: cut in dumps, no lookup"},
    {"long-name", Severity::Warning, nullptr, "a name of more than 64 characters: no lookup"},
    {"many-augments", Severity::Warning, nullptr, "18 augments or more; more than 20 cannot be loaded"},
};

} // namespace inspect
