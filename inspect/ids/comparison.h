/* What the models say that the registry does not, and the other way round. */
#pragma once

#include <set>
#include <string>
#include <vector>

#include "ids/item_index.h"

namespace inspect::ids {

enum class Kind : uint8_t {
    NotLocked,   /* an id that the registry does not have yet, or has as reserved for this very node */
    NotReserved, /* the node has gone, and the registry has it as if it was there */
    Missing,     /* the node is there without its id */
    Changed,     /* the node has another id, which is nobody else's */
    Moved,       /* the id is another node's */
    Reused,      /* the id was another node's */
    Twice,       /* two nodes of the models have the id */
    Sample,      /* the class has another sample id */
    Range,       /* a new class id out of the module's ranges, or in one of another module */
};

/* "not-locked": one word for scripts. */
const char *KindName(Kind kind);

struct Difference {
    Kind kind;
    uint32_t classId;
    uint32_t fieldId; /* 0: it is about the class */
    std::string path;
    std::string text;
    QY_NODE *node = nullptr;        /* whose id it is about, in the models; null: there is none */
    QXYANG_ORIGIN_S statement = {}; /* that gives an attribute id; without file for a class */
    uint32_t line = 0;              /* of the registry; 0: it has none */
};

/* True if locking takes the difference for what it is there for: what is new, and what has gone. */
bool IsOrdinary(const Difference &difference);

/* A registry and what some modules say. Entries of other modules are not compared. */
struct Sides {
    const Registry &registry;
    const ModelIds &models;
    const std::set<std::string> &modules; /* that the models are of; those that have gone among them */

    /* True if the registry's entry is about one of the modules. */
    bool Has(const ClassEntry &entry) const;
    bool Has(const FieldEntry &entry) const;
};

/* What has gone is `NotReserved`, be the node there without its id or not: ids alone do not tell. */
std::vector<Difference> Compare(const Sides &sides);

/* Makes those whose node is there `Missing`. */
void TellMissing(const Instance &instance, const std::vector<ModuleKey> &modules, std::vector<Difference> *differences);

} // namespace inspect::ids
