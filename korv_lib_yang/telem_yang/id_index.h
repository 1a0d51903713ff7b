/* Nodes and leaves of all registered modules by their ids.
 *
 * The index is one block that is made when a host first asks for an id, and given back before any tree that it shows
 * changes. It hangs on the registry's first entry, in room that was there for alignment: a host that does not ask pays
 * nothing for it. Records that no load has registered may come and go unnoticed: while there are any, a question looks
 * through the trees. */
#ifndef KORV_ID_INDEX_H
#define KORV_ID_INDEX_H

#include "telem_yang/leaf_notes.h"

namespace korv {

/* Takes the index off the registry, if there is one; the caller gives it back with HostFree. The host's memory functions may
 * ask for an id at any time, which makes a new one: so what the index must not show any more goes right afterwards, or has
 * gone before. */
IdIndex *TakeIds(TELMYANG_YANG_CTX_S *pstYangCtx);

/* Gives the index back. To be called where a tree of the registry has just gone, or a record is about to be one of its. */
void DropIds(TELMYANG_YANG_CTX_S *pstYangCtx);

/* YANGLIB_FindClass and YANGLIB_FindAttribute for arguments that they have checked. */
uint32_t FindClass(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiClassId, YANGLIB_PLACE_PF pfnCb, void *pvCookie);

struct Attribute {
    KorvTreeNode *pstNode;
    KorvTreeLeaf *pstLeaf;
};
uint32_t FindAttribute(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiClassId, uint32_t uiFieldId, Attribute *pstFound);

} // namespace korv

#endif // KORV_ID_INDEX_H
