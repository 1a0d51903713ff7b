/* Rules of `check` for what YANG asks of the statements of a module's files. */
#pragma once

#include "check/rows/rule_row.h"

namespace inspect {

inline constexpr RuleRow YANG_ROWS[] = {
    {"statement-order", Severity::Warning, "14", "a section of the module stands behind one that it should precede"},
    {"revision-order", Severity::Warning, "7.1.9", "a revision is not older than the one in front of it"},
    {"empty-statement", Severity::Warning, "14", "an input, output, list or augment that defines nothing"},
    {"leading-zero", Severity::Warning, "14", "a number with leading zeros"},
    {"schema-path-blanks", Severity::Warning, "14", "blanks in the path of an augment, refine or deviation"},
    {"xml-name", Severity::Warning, "12", "a name that begins with 'xml', in YANG version 1", 6020U},
    {"version-1-type", Severity::Warning, "1.1", "a type says what types may say since YANG version 1.1 alone"},
    {"relative-namespace", Severity::Warning, "7.1.3", "a namespace that is no absolute URI"},
    {"duplicate-namespace", Severity::Warning, "5.3", "two modules with one namespace", 7950U, true},
    {"submodule-not-included", Severity::Warning, "5.1", "a submodule includes one that the module does not include"},
    {"obsolete-reference", Severity::Warning, "7.21.2",
     "a definition refers to a deprecated or obsolete one of its module"},
    {"xpath-syntax", Severity::Warning, "6.4", "an expression that is no XPath 1.0"},
    {"xpath-function", Severity::Warning, "6.4.1", "a function that is unknown, or has another number of arguments"},
    {"xpath-prefix", Severity::Warning, "6.4.1", "a prefix that stands for no module in the file"},
    {"leafref-path", Severity::Warning, "9.9.2", "a path that is not of the form that leafrefs have"},
    {"bad-pattern", Severity::Warning, "9.4.5", "a pattern that is no regular expression of XML Schema"},
};

} // namespace inspect
