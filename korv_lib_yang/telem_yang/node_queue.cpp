/* Work queues of tree nodes. */
#include "telem_yang/node_queue.h"

#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"

namespace {

void DropAll(DumpQueueEntry *pstQueue)
{
    while (pstQueue != nullptr && !korv::IsEmpty(pstQueue))
        korv::DropEntry(pstQueue->pstNext);
}

} // namespace

void korv::DropEntry(DumpQueueEntry *pstEntry)
{
    pstEntry->pstPrev->pstNext = pstEntry->pstNext;
    pstEntry->pstNext->pstPrev = pstEntry->pstPrev;
    HostFree(pstEntry);
}

uint32_t TLMTLIB_AddNewNodeToQueue_(TELMYANG_LOCAL_DATA_S *pstLocal, DumpQueueEntry *pstQueue, KorvTreeNode *pstNode)
{
    if (pstNode == nullptr)
        return KORV_OK;
    DumpQueueEntry *pstEntry = korv::NewZeroed<DumpQueueEntry>(pstLocal).release();
    if (pstEntry == nullptr) {
        KORV_LOG_ERROR(pstLocal, "malloc failed!");
        return KORV_FAIL;
    }
    *pstEntry = {pstQueue, pstQueue->pstPrev, pstNode};
    pstQueue->pstPrev->pstNext = pstEntry;
    pstQueue->pstPrev = pstEntry;
    return KORV_OK;
}

void TELMYANG_FreeQueue(DumpQueueEntry *pstFirstQueue, DumpQueueEntry *pstSecondQueue)
{
    DropAll(pstFirstQueue);
    DropAll(pstSecondQueue);
}
