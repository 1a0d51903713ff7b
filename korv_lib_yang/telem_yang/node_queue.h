/* Work queues of tree nodes; a head lives in the function that works. */
#ifndef KORV_NODE_QUEUE_H
#define KORV_NODE_QUEUE_H

#include "telem_yang/telem_yang.h"

namespace korv {

inline void MakeEmpty(DumpQueueEntry *pstQueue)
{
    *pstQueue = {pstQueue, pstQueue, nullptr};
}

inline bool IsEmpty(const DumpQueueEntry *pstQueue)
{
    return pstQueue->pstNext == pstQueue;
}

/* Takes an entry out of its queue and releases it. */
void DropEntry(DumpQueueEntry *pstEntry);

} // namespace korv

#endif // KORV_NODE_QUEUE_H
