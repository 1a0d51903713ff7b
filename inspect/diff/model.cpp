#include "diff/model.h"

#include <korv_platform.h>

#include <algorithm>

namespace inspect::diff {

bool Item::IsLeaf() const
{
    return kind == QY_NODE_TYPE_LEAF || kind == QY_NODE_TYPE_LEAF_LIST;
}

bool Item::IsChoice() const
{
    return kind == QY_NODE_TYPE_CHOICE || kind == QY_NODE_TYPE_CASE;
}

const Fact *Item::Find(Rule rule) const
{
    auto found = std::lower_bound(facts.begin(), facts.end(), rule,
                                  [](const Fact &fact, Rule wanted) { return fact.rule < wanted; });
    return found != facts.end() && found->rule == rule ? &*found : nullptr;
}

} // namespace inspect::diff
