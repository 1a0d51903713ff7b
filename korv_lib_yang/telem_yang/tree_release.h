/* Releasing the trees that this unit itself has made or forgotten. */
#ifndef KORV_TREE_RELEASE_H
#define KORV_TREE_RELEASE_H

#include "telem_yang/telem_yang.h"

namespace korv {

/* TELMYANG_FreeYangtreeAllNodes for a tree with no notes (leaf_notes.h) of its leaves, or whose record gives its notes up next. */
uint32_t ReleaseTree(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstRoot);

} // namespace korv

#endif // KORV_TREE_RELEASE_H
