/* Lists of the dump's level by level pass; a head lives in the pass. */
#ifndef KORV_ITER_LIST_H
#define KORV_ITER_LIST_H

#include "telem_yang/telem_yang.h"

namespace korv {

inline void MakeEmpty(DumpIterEntry *pstList)
{
    pstList->pstNext = pstList;
    pstList->pstPrev = pstList;
}

inline bool IsEmpty(const DumpIterEntry *pstList)
{
    return pstList->pstNext == pstList;
}

inline void AppendEntry(DumpIterEntry *pstList, DumpIterEntry *pstEntry)
{
    pstEntry->pstNext = pstList;
    pstEntry->pstPrev = pstList->pstPrev;
    pstList->pstPrev->pstNext = pstEntry;
    pstList->pstPrev = pstEntry;
}

inline DumpIterEntry *TakeFirst(DumpIterEntry *pstList)
{
    DumpIterEntry *pstEntry = pstList->pstNext;
    pstList->pstNext = pstEntry->pstNext;
    pstEntry->pstNext->pstPrev = pstList;
    return pstEntry;
}

} // namespace korv

#endif // KORV_ITER_LIST_H
