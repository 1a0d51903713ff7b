/* All nodes of a module's trees, each once, and which of them make up a class. */
#pragma once

#include <string>
#include <vector>

#include "model/path_finder.h"

namespace inspect {

struct ModelNode {
    Place place;      /* without leaf */
    std::string path; /* "/sys/mode/auto/timer": as a dump has it, choices and cases included */
    bool own;         /* the module itself defines the node */
};

/* The nodes of the module's own tree, then those that only its augments' target trees have, parents first. */
std::vector<ModelNode> NodesOf(const ModuleFile &file);

bool IsClass(const KorvTreeNode &node);

/* The nearest class above the node, or null. */
const KorvTreeNode *ClassAbove(const KorvTreeNode &node);

/* The topmost of the nodes that are one class with this one: each is the nearest class above the next and has its id. */
const KorvTreeNode &ClassTop(const KorvTreeNode &node);

} // namespace inspect
