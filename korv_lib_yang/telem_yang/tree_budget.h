/* What the trees of one load may cost. */
#ifndef KORV_TREE_BUDGET_H
#define KORV_TREE_BUDGET_H

#include "telem_yang/telem_yang.h"

namespace korv {

/* Records that the trees of one load may have: nodes, leaf lists and leaf descriptors. A small file can ask for any
 * number of them, since each augment has a copy of the tree that it extends. */
inline constexpr uint32_t TREE_RECORDS_MAX = 4u << 20;

/* Each record has a copy of its name. One of this many characters or more counts as a further record, and again for
 * each time that it is as long. */
inline constexpr uint32_t NAME_OF_A_RECORD = 64;

/* Counts the records that one load makes, whichever tree they are for. */
class TreeBudget {
  public:
    /* Counts a node with its lists and descriptors. False: the limit is passed, now or before. */
    bool Take(const KorvTreeNode *pstNode);

    bool IsSpent() const { return m_ulRecords > TREE_RECORDS_MAX; }

  private:
    uint64_t m_ulRecords = 0;
};

} // namespace korv

#endif // KORV_TREE_BUDGET_H
