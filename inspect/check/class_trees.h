/* The class trees that `check` looks at. */
#pragma once

#include <optional>
#include <vector>

#include "model/instance.h"

namespace inspect {

struct ClassTree {
    const ModuleFile *file;
    std::optional<uint32_t> augment; /* in this augment's target tree; none: in the module's own tree */
    const KorvTreeNode *top;
};

/* A node of such a tree. */
struct ClassNode {
    const ClassTree *tree;
    const KorvTreeNode *node;
};

/* The trees of modules, each tree of the schema once: as its own module shows it, or else as the first augment does. Every
 * tree has what all modules have added until its module was registered. */
std::vector<ClassTree> TreesOf(const std::vector<const ModuleFile *> &files);

} // namespace inspect
