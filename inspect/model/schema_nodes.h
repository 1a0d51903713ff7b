/* From a node of a class tree to the schema's node. */
#pragma once

#include <string>
#include <unordered_map>

#include "model/path_finder.h"

namespace inspect {

/* The nodes of one loaded module's trees. What is below a schema node is looked through once, however many ask. */
class SchemaNodes {
  public:
    SchemaNodes(const Instance &instance, const ModuleFile &file) : instance_(instance), file_(file) {}

    /* The schema's node of the leaf or node at that place, or null. */
    QY_NODE *Of(const Place &place);

  private:
    using Named = std::unordered_map<std::string, QY_NODE *>; /* by "module:name" */

    QY_MOD *ModuleOfTree(const Place &place) const;
    QY_NODE *TopAt(const Place &place, const KorvTreeNode &top);
    const Named &Tops(QY_MOD *module);
    const Named &Below(QY_NODE *node);

    const Instance &instance_;
    const ModuleFile &file_;
    std::unordered_map<QY_MOD *, Named> tops_;
    std::unordered_map<QY_NODE *, Named> below_;
    std::unordered_map<const KorvTreeNode *, QY_NODE *> known_;
};

} // namespace inspect
