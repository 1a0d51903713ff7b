/* Queuing a level of tree nodes with their paths. */
#include "telem_yang/telem_yang.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/ring.h"

uint32_t TELMYANG_PutAllChildNodeToIter(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstTreeNode,
                                        DumpIterEntry *pstIter, const char *pcParentPath)
{
    KorvTreeNode *pstChild = pstTreeNode->pstFirstChild;
    for (; pstChild != nullptr; pstChild = pstChild->pstNextSibling) {
        DumpIterEntry *pstEntry = korv::NewZeroed<DumpIterEntry>(pstLocal).release();
        if (pstEntry == nullptr) {
            KORV_LOG_ERROR(pstLocal, "malloc failed!");
            return KORV_FAIL;
        }
        korv::AppendEntry(pstIter, pstEntry);
        pstEntry->pstTreeNode = pstChild;
        if (snprintf_s(pstEntry->acPath, sizeof(pstEntry->acPath), "%s/%s", pcParentPath, pstChild->pcName) < 0)
            ZOR_Assert(__FILE__, __LINE__, 0);
    }
    return KORV_OK;
}

void TELMYANG_FreeInfoQueueAndIter(DumpIterEntry *pstInfoQueue, DumpIterEntry *pstIter)
{
    korv::DropAll(pstInfoQueue);
    korv::DropAll(pstIter);
}
