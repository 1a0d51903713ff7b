/* One leaf descriptor, from its schema leaf into a tree node's vector. */
#ifndef KORV_LEAF_APPEND_H
#define KORV_LEAF_APPEND_H

#include "telem_yang/telem_yang.h"

namespace korv {

/* How far AppendLeaf came. */
enum class LeafAppend {
    Done,
    NotFilled, /* the descriptor could not be filled; the reason is logged */
    NotStored, /* the vector did not take it; logged */
};

/* Fills a descriptor of the leaf, shows it to the host's adapt function and stores it in the context's vector. */
LeafAppend AppendLeaf(const LeafFillCtx &stFill, QY_NODE *pLeaf);

} // namespace korv

#endif // KORV_LEAF_APPEND_H
