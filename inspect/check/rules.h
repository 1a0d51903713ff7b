/* The rules of `check`, a row each. */
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace inspect {

/* In the order of the rows. */
enum class Rule : uint8_t {
    LoadFailed,
    DeviationFailed,
    MissingFieldId,
    DuplicateFieldId,
    FieldIdRange,
    BadNumber,
    RepeatedStatement,
    NoEffect,
    KeyWithoutFieldId,
    DuplicateClassId,
    ClassWithoutTree,
    ManyKeys,
    UnmappedAncestorKey,
    ExtraAncestorKey,
    DroppedKey,
    MissingKey,
    AncestorKeyCollision,
    LongPath,
    LongName,
    TwoSyntaxes,
    ManyAugments,
    UnlistedDirectory,
    LibraryMessage,
};

enum class Severity : uint8_t {
    Error, /* the module, or what deviates from it, cannot be loaded */
    Warning
};

/* What a rule looks at. */
enum class Subject : uint8_t {
    Load,       /* what the load of a module says */
    Classes,    /* the trees that the library has made */
    Statements, /* the statements from which it makes them */
    Files       /* files and directories */
};

struct RuleRow {
    Rule rule;
    const char *name; /* short; stays the same from release to release */
    Severity severity;
    Subject subject;
    const char *purpose; /* what a finding of the rule means */
};

std::span<const RuleRow> AllRules();

const RuleRow &RowOf(Rule rule);

/* The names and purposes of all rules for the help. */
std::string RulesText();

} // namespace inspect
