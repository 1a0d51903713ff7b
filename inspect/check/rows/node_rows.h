/* Rules of `check` for what YANG asks of the nodes that a module defines. */
#pragma once

#include "check/rows/rule_row.h"

namespace inspect {

inline constexpr RuleRow NODE_ROWS[] = {
    {"leafref-config", Severity::Warning, "9.9",
     "a leaf that is configuration refers to state, and needs the instance"},
    {"mandatory-default-case", Severity::Warning, "7.9.3", "a mandatory node directly in a choice's default case"},
    {"augment-mandatory", Severity::Warning, "7.17",
     "an augment without 'when' adds mandatory configuration to another module"},
    {"bad-default", Severity::Warning, "7.6.4 and 7.7.4",
     "the default of an identityref or instance-identifier is no value of the type"},
    {"conditional-default", Severity::Warning, "7.6.4 and 7.7",
     "a default names an enum, bit or identity that has an 'if-feature'"},
    {"repeated-default", Severity::Warning, "7.7", "a default that the leaf-list has already"},
    {"default-with-min-elements", Severity::Warning, "7.7.4", "a leaf-list has a default and cannot be empty"},
    {"list-without-key", Severity::Warning, "7.8.2", "a list that is configuration has no key"},
    {"key-config", Severity::Warning, "7.8.2", "of a list and its key, one is configuration and the other state"},
    {"empty-key", Severity::Warning, "7.8.2", "a key of type 'empty' in YANG version 1", 6020U},
    {"conditional-key", Severity::Warning, "7.21.5", "a key, or the 'uses' that brings it, has a 'when'"},
    {"unique-config", Severity::Warning, "7.8.3", "a 'unique' refers to configuration and to state"},
    {"action-below-keyless-list", Severity::Warning, "7.15 and 7.16",
     "an action or notification below a list that has no key"},
    {"xpath-root", Severity::Warning, "6.4.1", "the path of a 'must', 'when' or 'path' climbs above the root"},
    {"removed-leafref-target", Severity::Warning, "7.20.3", "a deviation leaves out what a leafref refers to", 7950U,
     true},
};

} // namespace inspect
