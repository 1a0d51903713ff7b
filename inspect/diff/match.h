/* Which node of the new version is which of the old one. */
#pragma once

#include <cstdint>
#include <vector>

#include "diff/model.h"

namespace inspect::diff {

struct Match {
    std::vector<uint32_t> newOf; /* by old index: the new one, or NO_ITEM */
    std::vector<uint32_t> oldOf; /* by new index */
};

/* Pairs nodes of the same name under the same node first, then those with the same ids, which have moved or changed their
 * name. What stands below a node that has moved is looked for at its new place. */
Match MatchItems(const std::vector<Item> &oldItems, const std::vector<Item> &newItems);

} // namespace inspect::diff
