/* Work queues of tree nodes; a head lives in the function that works. */
#include "telem_yang/telem_yang.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/ring.h"

uint32_t TLMTLIB_AddNewNodeToQueue_(TELMYANG_LOCAL_DATA_S *pstLocal, DumpQueueEntry *pstQueue, KorvTreeNode *pstNode)
{
    if (pstNode == nullptr)
        return KORV_OK;
    DumpQueueEntry *pstEntry = korv::NewZeroed<DumpQueueEntry>(pstLocal).release();
    if (pstEntry == nullptr) {
        KORV_LOG_ERROR(pstLocal, "malloc failed!");
        return KORV_FAIL;
    }
    pstEntry->pstTreeNode = pstNode;
    korv::AppendEntry(pstQueue, pstEntry);
    return KORV_OK;
}

void TELMYANG_FreeQueue(DumpQueueEntry *pstFirstQueue, DumpQueueEntry *pstSecondQueue)
{
    korv::DropAll(pstFirstQueue);
    korv::DropAll(pstSecondQueue);
}
