/* The registry's records by the names of their modules.
 *
 * The entries are the nodes of a binary tree, so that the index takes no memory of its own and nothing of it can fail. The
 * way from the top to an entry follows the bits of the hash of its name, the lowest first. All entries of one name stand
 * on one way, whose length is about the number of digits that the number of entries has in base two. */
#ifndef KORV_NAME_INDEX_H
#define KORV_NAME_INDEX_H

#include "telem_yang/file_list.h"
#include "telem_yang/leaf_notes.h"
#include "telem_yang/tree_leaves.h"

namespace korv {

/* FNV-1a, of which RegistryEntry::uiNameHash keeps 31 bits. A null name has the hash of the empty one. */
inline uint32_t HashOf(const char *pcName)
{
    uint32_t uiHash = 2166136261u;
    for (; pcName != nullptr && *pcName != '\0'; ++pcName)
        uiHash = (uiHash ^ static_cast<uint8_t>(*pcName)) * 16777619u;
    return uiHash & 0x7FFFFFFFu;
}

/* The first entry of the registry's list, or null. */
inline RegistryEntry *FirstEntry(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = ListEnd(pstYangCtx);
    for (auto *pstFile = pstYangCtx->stYangFileList.pstNext; pstFile != pstEnd; pstFile = pstFile->pstNext) {
        if (RegistryEntry *pstEntry = EntryOf(pstFile))
            return pstEntry;
    }
    return nullptr;
}

/* False when there are records that no load has registered, so that the index does not have them. */
inline bool HasAllNames(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    TELMYANG_YANG_FILE_INFO_S *pstLast = pstYangCtx->stYangFileList.pstPrev;
    if (pstLast == ListEnd(pstYangCtx))
        return true;
    const RegistryEntry *pstEntry = EntryOf(pstLast);
    return pstEntry != nullptr && pstEntry->bBehindOthers == 0;
}

/* Adds an entry that has just been put at the end of the registry's list. */
void JoinNames(TELMYANG_YANG_CTX_S *pstYangCtx, RegistryEntry *pstEntry);

/* Takes an entry out of the index. */
void LeaveNames(RegistryEntry *pstEntry);

/* What stands below the entry on the way to that hash. The entry has uiDepth others above it. */
inline RegistryEntry *&NextOnWay(RegistryEntry *pstEntry, uint32_t uiHash, uint32_t uiDepth)
{
    return pstEntry->apstBelow[uiHash >> uiDepth % 31 & 1];
}

inline RegistryEntry *TopOf(RegistryEntry *pstEntry)
{
    while (pstEntry != nullptr && pstEntry->pstAbove != nullptr)
        pstEntry = pstEntry->pstAbove;
    return pstEntry;
}

/* Calls the visitor for each entry of that name until it answers true. */
template <typename Visit>
bool AnyOfName(TELMYANG_YANG_CTX_S *pstYangCtx, const char *pcName, Visit &&visit)
{
    const uint32_t uiHash = HashOf(pcName);
    uint32_t uiDepth = 0;
    for (RegistryEntry *pstEntry = TopOf(FirstEntry(pstYangCtx)); pstEntry != nullptr;
         pstEntry = NextOnWay(pstEntry, uiHash, uiDepth++)) {
        if (pstEntry->uiNameHash == uiHash && IsSameName(pstEntry->stFile.pcModuleName, pcName) && visit(pstEntry))
            return true;
    }
    return false;
}

} // namespace korv

#endif // KORV_NAME_INDEX_H
