/* Statements of a file as later stages read them. Statements that no stage reads (description, must, units, ...) are
 * checked while the file is parsed and get no record. */
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/arena.h"
#include "files/failures.h"
#include "files/source.h"
#include "schema/model.h"
#include "syntax/keywords.h"

namespace qxyang {

/* Properties of a statement. For refine and deviate: what they set. The first ten are in the order of the node flags
 * that follow from them, see FlagsOf. */
enum Property : uint16_t {
    SETS_CONFIG = 1 << 0,
    IS_STATE = 1 << 1, /* config is false */
    SETS_DEFAULT = 1 << 2,
    SETS_MANDATORY = 1 << 3,
    IS_MANDATORY = 1 << 4, /* mandatory is true */
    SETS_UNITS = 1 << 5,
    SETS_MUST = 1 << 6,
    SETS_UNIQUE = 1 << 7,
    SETS_MIN_ELEMENTS = 1 << 8,
    SETS_MAX_ELEMENTS = 1 << 9,
    SETS_PRESENCE = 1 << 10,
    SETS_TYPE = 1 << 11,
    HAS_DEFINITIONS = 1 << 12, /* typedefs or groupings of its own */
    HAS_TEXT = 1 << 13,        /* an extension statement: the argument is its text, not an attribute */
};

enum class DeviateKind : uint8_t {
    NotSupported,
    Add,
    Replace,
    Delete
};

struct Statement {
    Statement *next;
    Statement *first; /* child */
    const char *argument;
    uint32_t offset; /* in the file */
    Kw keyword;
    union {
        uint8_t builtinType;     /* of a type: number of the built-in type that its argument names, or 0 */
        DeviateKind deviateKind; /* of a deviate */
    };
    uint16_t properties;
};

/* An extension keyword as a file uses it: one record for all statements with it. An element directly within another
 * extension statement of the same namespace may be that one's argument, so the keyword has another record there. */
struct ExtensionUse {
    const char *name; /* what the table finds it by; in YIN: keyword of `above`, if any, then namespace and keyword; in
                         compact syntax: prefix and keyword as written */
    const char *keyword;
    std::string_view space;  /* namespace; empty in compact syntax */
    std::string_view prefix; /* in compact syntax */
    ExtensionUse *above;     /* the use that the statement around is of, or null */
    const char *attribute;   /* name of the first attribute met, or null */
    uint32_t offset;         /* of the first of the statements */
    bool resolved;
    const Extension *definition; /* once resolved; null: an element with it is the argument of the statement around */
};

struct ExtensionStatement : Statement {
    ExtensionUse *use;
    const char *attribute; /* in YIN: name of the attribute that is the argument, or null */
};

inline ExtensionStatement *AsExtension(Statement *statement)
{
    return static_cast<ExtensionStatement *>(statement);
}

/* The first child of that keyword, or null. */
inline Statement *FindChild(const Statement *statement, Kw keyword)
{
    Statement *child = statement->first;
    while (child != nullptr && child->keyword != keyword)
        child = child->next;
    return child;
}

/* The argument of the first child of that keyword, or an empty text. */
inline std::string_view ArgumentOf(const Statement *statement, Kw keyword)
{
    const Statement *child = FindChild(statement, keyword);
    return child != nullptr ? child->argument : std::string_view();
}

/* A prefix that the file may use, and the module that it stands for. */
struct PrefixBinding {
    std::string_view name;
    QY_MOD *module;
};

class ExtensionHints;

/* One file of a module, the module's own or a submodule's, while it is being loaded. */
class Unit {
  public:
    Unit(std::string path, std::string name, QY_MOD *owner) : module(owner), source(std::move(path), std::move(name)) {}

    QY_MOD *module; /* that the file is part of */
    Source source;
    Statement *root = nullptr;
    bool isVersion11 = false;
    uint32_t keptFile = Spot::NO_FILE;     /* number of the file in a context that keeps it */
    const char *revision = nullptr;        /* latest, or null */
    ExtensionHints *hints = nullptr;       /* while the file is parsed */
    std::vector<PrefixBinding *> bindings; /* in the order of the imports; the module's, for failures of its leafrefs */
    NameTable<PrefixBinding> prefixes;     /* the same, by name */
    NameTable<ExtensionUse> extensionUses;
    Arena statements; /* all records of the file; released when the module is complete */

    const std::string &Name() const { return source.Module(); }

    /* The module that a prefix stands for; an empty prefix stands for this one. Null: the prefix is unknown. */
    QY_MOD *BoundModule(std::string_view prefix) const
    {
        if (prefix.empty())
            return module;
        const PrefixBinding *binding = prefixes.Find(prefix);
        return binding != nullptr ? binding->module : nullptr;
    }
};

} // namespace qxyang
