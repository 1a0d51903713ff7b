/* One version of a module as `diff` compares it, by value: what hosts can address, what readers of data feel. */
#pragma once

#include <qxyang.h>

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "diff/rules.h"
#include "diff/value_range.h"
#include "diff/values.h"

namespace inspect::diff {

/* Where a statement stands. */
struct Where {
    const std::string *file = nullptr; /* as a person names it; the version keeps it. Null: not known. */
    uint32_t line = 0;
    uint32_t column = 0;
};

/* What one statement says. Without a fact, the rule's row says what holds. */
struct Fact {
    Rule rule;
    Value value;
    Where where; /* not known: where the node stands */
};

/* The name of an enumeration with its value, or of a bit with its position. */
struct NamedNumber {
    std::string name;
    int64_t number;
    Where where;
    std::vector<Fact> facts; /* by rule: features and status */
    const QXYANG_FILE *file; /* the file and the index of the statement that gives it */
    uint32_t statement;
};

/* A range or length that a statement gives. */
struct Limits {
    ValueRange range;
    Where where;
};

/* A type with its typedefs followed. Leaves of one type statement share it. */
struct TypeModel {
    std::string base; /* built-in type */
    Where where;
    std::string signature;          /* equal for types that say the same */
    std::vector<Fact> facts;        /* by rule: what does not need a comparison of its own */
    std::unique_ptr<Limits> range;  /* null for a type without numbers, and for a decimal64 without range */
    std::unique_ptr<Limits> length; /* null for a type without length statement */
    std::vector<NamedNumber> names; /* of enumeration and bits */
    std::string target;             /* path of a leafref, its names with their modules */
    std::vector<const TypeModel *> members;
};

constexpr uint32_t NO_ITEM = 0xFFFFFFFF;

/* A node of the schema. */
struct Item {
    uint32_t
        parent; /* the nearest one above that stands in data; of choices and cases, the very next one. Or NO_ITEM. */
    uint32_t above;   /* the very next one, or NO_ITEM */
    std::string step; /* "module:name", which tells the node among those of its parent */
    std::string path; /* without modules; choices and cases only in paths of choices and cases */
    uint32_t kind;    /* QY_NODE_TYPE_ */
    bool isCompared;  /* false: it only stands above others that are */
    bool isInput;     /* it stands in the input of an rpc or action */
    uint32_t classId; /* of a node, or of the class that has the leaf; 0: none */
    uint32_t fieldId; /* 0: none */
    Where where;
    std::vector<Fact> facts; /* by rule */
    const TypeModel *type;   /* leafrefs followed; null without type */

    bool IsLeaf() const;
    bool IsChoice() const; /* or a case */
    bool IsClass() const { return !IsLeaf() && classId != 0; }
    bool IsAddressable() const { return classId != 0 && (fieldId != 0 || !IsLeaf()); }

    /* The first fact of the rule, or null. */
    const Fact *Find(Rule rule) const;
};

/* A feature, identity, typedef, grouping or extension. */
struct Definition {
    std::string keyword;
    std::string name;
    Where where;
    std::vector<Fact> facts;         /* by rule */
    const TypeModel *type = nullptr; /* of a typedef that has led no node to its type */
};

/* A statement as far as it takes to tell if it has changed. */
struct Mark {
    uint64_t hash;
    Where where;
    bool operator==(const Mark &other) const { return hash == other.hash; }
};

struct ModuleModel {
    std::string name;
    std::string revision; /* "" for none */
    Where where;
    std::vector<Fact> facts; /* by rule */
    std::vector<Definition> definitions;
    std::vector<Item> items; /* parents first */
    std::vector<Mark> marks; /* all statements of its files */
};

/* One version of a module or of many. */
struct Version {
    Version() = default;
    Version(Version &&) = default;
    Version(const Version &) = delete;
    Version &operator=(const Version &) = delete;

    std::map<std::string, std::unique_ptr<ModuleModel>> modules;
    std::set<std::string> failed;             /* names of modules that cannot be loaded */
    std::map<std::string, std::string> files; /* shown names by path; what places refer to */
    std::deque<TypeModel> types;
};

} // namespace inspect::diff
