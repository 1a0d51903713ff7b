/* The nodes of a module, parents first. */
#pragma once

#include <unordered_map>
#include <vector>

#include "diff/model.h"
#include "diff/node_facts.h"

namespace inspect::diff {

class ItemReader {
  public:
    ItemReader(QY_MOD *module, NodeFacts *facts) : module_(module), facts_(facts) {}

    /* The module's own nodes, wherever they stand, and those above them. With `others` also the nodes that other modules
     * have put into the module's own tree. */
    std::vector<Item> Read(bool others);

  private:
    void Add(QY_NODE *node, bool isCompared);
    uint32_t IndexOf(QY_NODE *above);

    QY_MOD *module_;
    NodeFacts *facts_;
    std::vector<Item> items_;
    std::vector<QXYANG_ORIGIN_S> uses_; /* by item: the uses statement that brought it */
    std::unordered_map<QY_NODE *, uint32_t> indexes_;
};

} // namespace inspect::diff
