/* The index of the registry's records by name. */
#include "telem_yang/name_index.h"

namespace {

using korv::RegistryEntry;

/* Puts pstNew, or nothing if it is null, in the place that the entry has below another one. */
void PutInPlaceOf(const RegistryEntry *pstEntry, RegistryEntry *pstNew)
{
    if (RegistryEntry *pstAbove = pstEntry->pstAbove)
        pstAbove->apstBelow[pstAbove->apstBelow[1] == pstEntry ? 1 : 0] = pstNew;
}

/* One of the last entries on the ways through this one; itself if nothing is below it. */
RegistryEntry *LastBelow(RegistryEntry *pstEntry)
{
    while (pstEntry->apstBelow[0] != nullptr || pstEntry->apstBelow[1] != nullptr)
        pstEntry = pstEntry->apstBelow[pstEntry->apstBelow[0] != nullptr ? 0 : 1];
    return pstEntry;
}

} // namespace

void korv::JoinNames(TELMYANG_YANG_CTX_S *pstYangCtx, RegistryEntry *pstEntry)
{
    TELMYANG_YANG_FILE_INFO_S *pstBefore = pstEntry->stFile.pstPrev;
    if (pstBefore != ListEnd(pstYangCtx))
        pstEntry->bBehindOthers = EntryOf(pstBefore) == nullptr || EntryOf(pstBefore)->bBehindOthers ? 1 : 0;
    pstEntry->uiNameHash = HashOf(pstEntry->stFile.pcModuleName) & 0x7FFFFFFFu;
    RegistryEntry *pstAbove = FirstEntry(pstYangCtx);
    if (pstAbove == pstEntry)
        return;
    pstAbove = TopOf(pstAbove);
    uint32_t uiDepth = 0;
    while (RegistryEntry *pstBelow = NextOnWay(pstAbove, pstEntry->uiNameHash, uiDepth)) {
        pstAbove = pstBelow;
        ++uiDepth;
    }
    NextOnWay(pstAbove, pstEntry->uiNameHash, uiDepth) = pstEntry;
    pstEntry->pstAbove = pstAbove;
}

/* Every entry below may take the place: the ways to all of them lead through it. */
void korv::LeaveNames(RegistryEntry *pstEntry)
{
    RegistryEntry *pstLast = LastBelow(pstEntry);
    PutInPlaceOf(pstLast, nullptr);
    if (pstLast == pstEntry)
        return;
    PutInPlaceOf(pstEntry, pstLast);
    pstLast->pstAbove = pstEntry->pstAbove;
    for (uint32_t uiSide = 0; uiSide < 2; ++uiSide) {
        pstLast->apstBelow[uiSide] = pstEntry->apstBelow[uiSide];
        if (pstLast->apstBelow[uiSide] != nullptr)
            pstLast->apstBelow[uiSide]->pstAbove = pstLast;
    }
}
