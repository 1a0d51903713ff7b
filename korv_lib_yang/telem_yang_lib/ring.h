/* Circular lists whose head is an entry itself. An entry has the links pstNext and pstPrev; an empty list's head is
 * linked to itself. */
#ifndef KORV_RING_H
#define KORV_RING_H

#include "telem_yang_lib/host_memory.h"

namespace korv {

template <typename Entry>
void MakeEmpty(Entry *pstHead)
{
    pstHead->pstNext = pstHead;
    pstHead->pstPrev = pstHead;
}

template <typename Entry>
bool IsEmpty(const Entry *pstHead)
{
    return pstHead->pstNext == pstHead;
}

template <typename Entry>
void AppendEntry(Entry *pstHead, Entry *pstEntry)
{
    pstEntry->pstNext = pstHead;
    pstEntry->pstPrev = pstHead->pstPrev;
    pstHead->pstPrev->pstNext = pstEntry;
    pstHead->pstPrev = pstEntry;
}

/* Takes the first entry out of a list that is not empty; the caller owns it from here. */
template <typename Entry>
Entry *TakeFirst(Entry *pstHead)
{
    Entry *pstEntry = pstHead->pstNext;
    pstHead->pstNext = pstEntry->pstNext;
    pstEntry->pstNext->pstPrev = pstHead;
    return pstEntry;
}

/* Releases every entry of a list; null does nothing. The place that the releases name is the caller's. */
template <typename Entry>
void DropAll(Entry *pstHead, const char *pcFile = __builtin_FILE(), uint32_t uiLine = __builtin_LINE())
{
    while (pstHead != nullptr && !IsEmpty(pstHead))
        HostFree(TakeFirst(pstHead), pcFile, uiLine);
}

} // namespace korv

#endif // KORV_RING_H
