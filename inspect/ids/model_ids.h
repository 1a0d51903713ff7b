/* The ids that loaded modules give, with the nodes and leaves that have them. */
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "model/instance.h"
#include "model/schema_scan.h"

namespace inspect::ids {

struct ModelClass {
    uint32_t id;
    uint32_t sample; /* 0: none */
    std::string path;
    std::string top; /* path of the topmost node that is one class with this one, or its own */
    QY_NODE *node;
};

/* An attribute, or an id in which a class carries a key of the classes above. */
struct ModelField {
    uint32_t classId;
    uint32_t id;
    bool isAncestorKey;
    std::string path;          /* of the leaf, which for an ancestor key is one above; "" when not known */
    QY_NODE *node;             /* whose statement gives the id */
    QXYANG_ORIGIN_S statement; /* that one */
};

struct ModelIds {
    std::vector<ModelClass> classes; /* of the modules, and those to which they add attributes */
    std::vector<ModelField> fields;
    std::map<std::string, std::string> revisions; /* by module; "" for none */
};

/* The ids of these loaded modules, wherever their nodes stand. What a class of type leafref or its leaves take over counts where
 * it was written; the class itself is one. */
ModelIds IdsOf(const Instance &instance, const std::vector<ModuleKey> &modules);

/* Those of the paths that lead to a node of these modules, with the node. */
std::map<std::string, QY_NODE *> NodesAt(const Instance &instance, const std::vector<ModuleKey> &modules,
                                         const std::set<std::string> &paths);

} // namespace inspect::ids
