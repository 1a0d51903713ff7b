/* Leaf descriptors borrow schema nodes. A module that is unloaded can take away nodes that other modules' trees show: the
 * nodes that it added to them, or its own when it was registered under another revision as well. */
#ifndef KORV_LEAF_NODES_H
#define KORV_LEAF_NODES_H

#include "telem_yang/telem_yang.h"

namespace korv {

/* While it lives, a schema node that is released takes itself out of the leaf descriptors of all registered trees: their
 * pYinNode is null afterwards. Needs no memory; no extension data may be read meanwhile. */
class LeafNodeWatch {
  public:
    explicit LeafNodeWatch(TELMYANG_LOCAL_DATA_S *pstLocal);
    ~LeafNodeWatch();
    LeafNodeWatch(const LeafNodeWatch &) = delete;
    LeafNodeWatch &operator=(const LeafNodeWatch &) = delete;

  private:
    TELMYANG_LOCAL_DATA_S *m_pstLocal;
};

/* Takes a node that is being released out of its descriptor; false when its private data is no watch's mark. */
bool ReleaseWatchedNode(QY_NODE *pNode, void *pvPrivate);

} // namespace korv

#endif // KORV_LEAF_NODES_H
