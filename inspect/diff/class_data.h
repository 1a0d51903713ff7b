/* What the library has made of a module's nodes: classes and attributes. */
#pragma once

#include <unordered_map>

#include "model/schema_nodes.h"

namespace inspect::diff {

class ClassData {
  public:
    /* Of the module's own tree, and of its augments' target trees what the module itself has added. */
    ClassData(const Instance &instance, const ModuleFile &file);

    /* Null: the library has none. */
    const KorvTreeNode *NodeOf(QY_NODE *node) const;
    const KorvTreeLeaf *LeafOf(QY_NODE *node) const;

  private:
    void Read(SchemaNodes *schema, Chain chain, std::optional<uint32_t> augment);
    void ReadNode(SchemaNodes *schema, const KorvTreeNode &node, std::optional<uint32_t> augment);

    const char *module_;
    std::unordered_map<QY_NODE *, const KorvTreeNode *> nodes_;
    std::unordered_map<QY_NODE *, const KorvTreeLeaf *> leaves_;
};

} // namespace inspect::diff
