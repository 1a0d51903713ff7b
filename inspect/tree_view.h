/* What `tree` shows of a module, and how each format writes it. */
#ifndef KORV_INSPECT_TREE_VIEW_H
#define KORV_INSPECT_TREE_VIEW_H

#include <cstdint>
#include <string>
#include <vector>

#include "korv_lib_yang.h"

namespace inspect {

class JsonOut;

/* Trees with the nodes below them: a chain, or one node alone. */
struct TreePart {
    const KorvTreeNode *first = nullptr;
    bool withSiblings = true;
};

struct AugmentView {
    uint32_t index;
    const char *target; /* path as the statement has it */
    TreePart self;
    TreePart targetTree;
};

struct TreeView {
    std::string module;
    const char *revision; /* may be null */
    uint32_t taskId;      /* 0: none */
    TreePart origin;
    std::vector<AugmentView> augments;
    bool whole;     /* of the module: nothing was asked for in particular */
    uint32_t depth; /* levels to show, 0: all */
    bool full;      /* text and dot: target trees with everything that the module does not touch */
};

/* The nodes from the top of an augment's target tree down to the augment's target; empty when it is not in the tree. */
std::vector<const KorvTreeNode *> WayToTarget(const AugmentView &augment);

void WriteTreeText(const TreeView &view);
void WriteTreeJson(const TreeView &view);
void WriteTreeDot(const TreeView &view);

/* A node with `depth` levels, itself included; 0 for all. */
void WriteNodeJson(JsonOut *out, const KorvTreeNode &node, uint32_t depth);
void WriteLeafJson(JsonOut *out, const KorvTreeLeaf &leaf);

} // namespace inspect

#endif // KORV_INSPECT_TREE_VIEW_H
