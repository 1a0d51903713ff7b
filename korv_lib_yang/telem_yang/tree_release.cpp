/* Releasing whole trees: breadth first over first children and next siblings, so that depth costs no stack. */
#include "telem_yang/tree_release.h"
#include "telem_yang/id_index.h"
#include "telem_yang/leaf_nodes.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/ring.h"

namespace {

/* Queues what hangs on the first entry's node, then releases node and entry. */
uint32_t ReleaseFirst(TELMYANG_LOCAL_DATA_S *pstLocal, DumpQueueEntry *pstQueue)
{
    KorvTreeNode *pstNode = pstQueue->pstNext->pstTreeNode;
    if (TLMTLIB_AddNewNodeToQueue_(pstLocal, pstQueue, pstNode->pstFirstChild) != KORV_OK ||
        TLMTLIB_AddNewNodeToQueue_(pstLocal, pstQueue, pstNode->pstNextSibling) != KORV_OK)
        return KORV_FAIL;
    TELMYANG_FreeKorvTreeNode(pstNode);
    korv::HostFree(pstNode);
    korv::HostFree(korv::TakeFirst(pstQueue));
    return KORV_OK;
}

} // namespace

uint32_t TELMYANG_FreeYangtreeAllNodes(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstRoot)
{
    korv::GiveNotesUp(pstLocal);
    return korv::ReleaseTree(pstLocal, pstRoot);
}

uint32_t korv::ReleaseTree(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstRoot)
{
    DumpQueueEntry stQueue = {};
    korv::MakeEmpty(&stQueue);
    if (TLMTLIB_AddNewNodeToQueue_(pstLocal, &stQueue, pstRoot) != KORV_OK)
        return KORV_FAIL;
    while (!korv::IsEmpty(&stQueue)) {
        if (ReleaseFirst(pstLocal, &stQueue) != KORV_OK) {
            TELMYANG_FreeQueue(&stQueue, nullptr);
            return KORV_FAIL;
        }
    }
    return KORV_OK;
}

uint32_t TELMYANG_FreeYangtreeAllAugmentNodes(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    korv::DropNotes(pstFile);
    for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
        TELMYANG_AUGMENT_INFO_S *pstAugment = &pstFile->astAugment[uiLoop];
        /* The record forgets what goes first: the host's memory functions may look at it. */
        KorvTreeNode *pstTargetTree = pstAugment->pstTargetTree;
        KorvTreeNode *pstSelfTree = pstAugment->pstSelfTree;
        pstAugment->pstTargetTree = nullptr;
        pstAugment->pTargetParentRoot = nullptr;
        pstAugment->pstSelfTree = nullptr;
        pstAugment->pFirstChild = nullptr;
        pstAugment->uiSelfTreeDone = 0;
        if (korv::EntryOf(pstFile) != nullptr)
            korv::DropIds(pstLocal->pstYangCtx);
        (void)korv::ReleaseTree(pstLocal, pstTargetTree);
        (void)korv::ReleaseTree(pstLocal, pstSelfTree);
    }
    return KORV_OK;
}
