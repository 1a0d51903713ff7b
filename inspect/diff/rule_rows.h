/* The table of rules. */
#pragma once

#include <cstdint>

namespace inspect::diff {

/* When a change of this kind is breaking. */
enum class Breaks : uint8_t {
    Never,
    Always,
    WhenGone,        /* unless there was none before */
    WhenNew,         /* unless there is none any more */
    WhenComesOrGoes, /* unless there is one before and after */
    WhenLarger,      /* the number */
    WhenSmaller,     /* the number */
    WhenNarrower,    /* a value is excluded that was allowed before */
    WhenRequired     /* what is new has to be given within something that was there before */
};

/* Who feels it. */
enum class Feels : uint8_t {
    Ids,  /* a host that addresses data by ids; only of a class, or of a leaf that has a class and a field id */
    Data, /* whoever reads or writes data; by ids, only of the same */
    Path, /* who goes by names and paths */
    All
};

struct RuleRow {
    const char *name; /* stays the same from release to release */
    Breaks breaks;
    Feels feels;
    const char *absent; /* what holds without a statement; null: nothing */
    const char *purpose;
};

using enum Breaks;

/* RFC 7950, 11 says which changes of a module are compatible. */
inline constexpr RuleRow RULE_ROWS[] = {
    /* The module as a whole. */
    {"module-removed", Always, Feels::All, nullptr, "the module is gone"},
    {"module-added", Never, Feels::All, nullptr, "the module is new"},
    {"no-new-revision", Never, Feels::All, nullptr,
     "statements have changed, and the revision has not, or there is none"},
    {"namespace", Always, Feels::Path, nullptr, "the module's namespace"},
    {"prefix", Never, Feels::Path, nullptr, "the prefix that the module gives itself"},
    {"yang-version", Never, Feels::Path, "1", "the version of YANG"},
    {"task-id", Never, Feels::Ids, nullptr, "the module's task id"},
    {"feature-removed", Always, Feels::Path, nullptr, "a feature is gone"},
    {"feature-added", Never, Feels::Path, nullptr, "a feature is new"},
    {"identity-removed", Always, Feels::Path, nullptr, "an identity is gone"},
    {"identity-added", Never, Feels::Path, nullptr, "an identity is new"},
    {"identity-base", WhenGone, Feels::Path, nullptr, "what an identity is derived from"},
    {"definition-removed", Always, Feels::Path, nullptr,
     "a typedef, grouping or extension is gone, which other modules may use"},
    {"definition-added", Never, Feels::Path, nullptr, "a typedef, grouping or extension is new"},

    /* What is there. */
    {"class-removed", Always, Feels::Data, nullptr, "a class is gone"},
    {"leaf-removed", Always, Feels::Data, nullptr, "a leaf or leaf-list is gone"},
    {"node-removed", Always, Feels::Data, nullptr, "any other node is gone"},
    {"choice-removed", Never, Feels::Data, nullptr, "a choice is gone; what was in it has changes of its own"},
    {"class-added", WhenRequired, Feels::Path, nullptr, "a class is new"},
    {"leaf-added", WhenRequired, Feels::Path, nullptr, "a leaf or leaf-list is new"},
    {"node-added", WhenRequired, Feels::Path, nullptr, "any other node is new"},
    {"choice-added", WhenRequired, Feels::Path, nullptr, "a choice is new"},
    {"class-moved", Always, Feels::Path, nullptr, "a class has another path or name under the same class id"},
    {"leaf-moved", Always, Feels::Path, nullptr, "a leaf has another path or name under the same ids"},
    {"node-moved", Always, Feels::Path, nullptr, "any other node has another path or name"},
    {"kind", Always, Feels::Data, nullptr, "the kind of node: leaf, leaf-list, container and the like"},
    {"case", WhenNew, Feels::Path, nullptr, "the case in which a node stands, and which excludes others"},

    /* Ids. */
    {"class-id", WhenGone, Feels::Ids, nullptr, "the class id"},
    {"sample-id", WhenGone, Feels::Ids, nullptr, "the sample id"},
    {"keys", Always, Feels::Ids, nullptr, "attribute ids of a class's own keys, and their order"},
    {"ancestor-keys", Always, Feels::Ids, nullptr, "attribute ids of the keys of the classes above, and their order"},
    {"field-id", WhenGone, Feels::Ids, nullptr, "the attribute id"},
    {"datatype", Always, Feels::Ids, nullptr, "the datatype"},
    {"index-map", Always, Feels::Ids, nullptr, "the index map"},
    {"reference-key", Always, Feels::Ids, nullptr, "the reference key"},

    /* Types. */
    {"type", Always, Feels::Data, nullptr, "the built-in type, typedefs and leafrefs followed"},
    {"leafref", WhenNew, Feels::Data, nullptr, "the leaf that a leafref refers to"},
    {"leafref-path", Never, Feels::Path, nullptr, "the path by which a leafref refers to the same leaf as before"},
    {"require-instance", WhenGone, Feels::Data, "true", "if the value that is referred to has to exist"},
    {"fraction-digits", Always, Feels::Data, nullptr, "digits behind the point of a decimal64"},
    {"range", WhenNarrower, Feels::Data, nullptr, "the range of a number, all its parts"},
    {"length", WhenNarrower, Feels::Data, nullptr, "the length of a string or binary, all its parts"},
    {"pattern", WhenNew, Feels::Data, nullptr, "a pattern of a string"},
    {"enum", WhenGone, Feels::Data, nullptr, "the name and value of an enumeration"},
    {"bit", WhenGone, Feels::Data, nullptr, "the name and position of a bit"},
    {"base", WhenNew, Feels::Data, nullptr, "what the identities of an identityref are derived from"},
    {"member", WhenGone, Feels::Data, nullptr, "a type of a union"},
    {"member-order", Always, Feels::Data, nullptr, "the order in which the types of a union are tried"},

    /* Other statements. */
    {"key", Always, Feels::Path, nullptr, "the names of a list's keys, and their order"},
    {"units", WhenGone, Feels::Data, nullptr, "the units, those of typedefs included"},
    {"default", WhenGone, Feels::Data, nullptr, "the default, that of typedefs included"},
    {"config", WhenNew, Feels::Data, "true", "configuration or state; a mandatory node must not become configuration"},
    {"mandatory", WhenNew, Feels::Data, "false", "if there has to be a value"},
    {"presence", WhenComesOrGoes, Feels::Data, nullptr, "if a container means something by itself"},
    {"min-elements", WhenLarger, Feels::Data, "0", "the least number of entries"},
    {"max-elements", WhenSmaller, Feels::Data, "unbounded", "the greatest number of entries"},
    {"ordered-by", Always, Feels::Data, "system", "who orders the entries"},
    {"unique", WhenNew, Feels::Data, nullptr, "names of leaves that differ in each entry, in any order"},
    {"must", WhenNew, Feels::Data, nullptr, "a condition, as a text"},
    {"when", WhenNew, Feels::Data, nullptr, "a condition, as a text; that of an augment or uses included"},
    {"if-feature", WhenNew, Feels::Data, nullptr,
     "a feature; that of an augment, uses, definition, enum or bit included; of a mandatory node, also when gone"},
    {"status", Never, Feels::Path, "current", "current, deprecated or obsolete; of a definition, enum or bit, too"},
    {"description", Never, Feels::Path, nullptr, "the description"},
};

} // namespace inspect::diff
