#pragma once

#include <optional>
#include <string_view>
#include <utility>

#include "session.h"

namespace korv_python {

/* A node or leaf of a module's tree, as Python holds it. The pointers are read only behind a check of the module. */
struct Node {
    ModulePtr module;
    KorvTreeNode *node;

    KorvTreeNode &There() const
    {
        module->Check();
        return *node;
    }
};

struct Leaf {
    ModulePtr module;
    KorvTreeNode *node;
    KorvTreeLeaf *leaf;

    KorvTreeLeaf &There() const
    {
        module->Check();
        return *leaf;
    }
};

/* A node after the other. They are noted when the walk begins: a pointer a node, nothing of Python. */
struct Walk {
    ModulePtr module;
    std::vector<KorvTreeNode *> nodes;
    size_t next = 0;
};

/* The node and all below it, parents first. */
void AddBelow(KorvTreeNode *top, std::vector<KorvTreeNode *> *nodes);
/* Every node that the module defines: in its own tree, then in the trees that its augments extend. */
std::vector<KorvTreeNode *> NodesOf(const LoadedModule &module);
/* Every leaf that the module defines, with the container or list that has it, choices looked through. */
std::vector<Leaf> LeavesOf(const ModulePtr &module);
/* Those that have an attribute id. */
std::vector<Leaf> AttributesOf(const std::vector<ModulePtr> &modules);

enum Which : uint32_t {
    DIRECT = YANGLIB_LEAVES_DIRECT,
    CASES = YANGLIB_LEAVES_CASES,
    BOTH = DIRECT | CASES
};

std::vector<KorvTreeLeaf *> LeavesOf(const KorvTreeNode &node, Which which);
std::vector<KorvTreeNode *> ChildrenOf(const KorvTreeNode &node);
/* A node and its following siblings. */
std::vector<Node> Siblings(const ModulePtr &module, KorvTreeNode *first);

/* Names from the top down, or the form with prefixes. */
std::string PathOf(const Node &node, uint32_t form);
std::string PathOf(const Leaf &leaf, uint32_t form);

/* What a path names: a node, or with a leaf that leaf of the node. */
struct Found {
    Node node;
    KorvTreeLeaf *leaf = nullptr;
};
std::optional<Found> Find(const std::vector<ModulePtr> &modules, std::string_view path);

/* Every node of a class; those that belong to their tree's module are marked. */
std::vector<std::pair<Node, bool>> NodesOfClass(Session *session, uint32_t classId);

} // namespace korv_python
