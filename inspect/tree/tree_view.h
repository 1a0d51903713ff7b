/* What `tree` shows of a module, and how each format writes it. */
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <korv_lib_yang.h>
#include "base/paint.h"

namespace inspect {

class OwnRows;

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
    std::set<std::string> added = {}; /* names of the nodes and leaves that it puts below its target */
};

struct TreeView {
    std::string module;
    const char *revision; /* may be null */
    uint32_t taskId;      /* 0: none */
    TreePart origin;
    std::vector<AugmentView> augments;
    bool whole;           /* of the module: nothing was asked for in particular */
    uint32_t depth;       /* levels to show, 0: all */
    bool full;            /* text and graphs: target trees with everything that the module does not touch */
    bool classes = false; /* graphs: classes alone, without their leaves */
    std::shared_ptr<const OwnRows> own = {}; /* null: everything is shown */
    Paint paint = Paint();                   /* of text */
};

/* The nodes from the top of an augment's target tree down to the augment's target. */
struct TargetWay {
    std::vector<const KorvTreeNode *> nodes;
    std::string missing; /* name of the first that the tree does not have; "" for none */
};
TargetWay WayToTarget(const AugmentView &augment);

/* The augment of the view's module adds this below its target. */
bool IsAdded(const TreeView &view, const AugmentView &augment, const char *name, const char *module);

void WriteTreeText(const TreeView &view);

/* A graph in the language of Graphviz. */
std::string TreeDot(const TreeView &view);

} // namespace inspect
