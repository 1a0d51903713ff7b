/* Dumping a tree level by level. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/ring.h"

namespace {

constexpr uint32_t PARENT_PATH_SIZE = 256;

using EntryPtr = korv::HostPtr<DumpIterEntry>;

/* A new entry, not zero-filled; null with a log line. */
EntryPtr NewEntry(TELMYANG_LOCAL_DATA_S *pstLocal, uint64_t ulModuleId, KorvTreeNode *pstTreeNode)
{
    EntryPtr pstEntry(static_cast<DumpIterEntry *>(
        ZOR_Malloc_F(ulModuleId, g_aucZorMemPt[0], sizeof(DumpIterEntry), __FILE__, __LINE__)));
    if (!pstEntry) {
        KORV_LOG_ERROR(pstLocal, "malloc failed!");
        return pstEntry;
    }
    pstEntry->pstTreeNode = pstTreeNode;
    pstEntry->acPath[0] = '\0';
    return pstEntry;
}

/* The pass that makes the records. Its lists are empty again when it ends, one way or the other. */
class RecordPass {
  public:
    RecordPass(TELMYANG_LOCAL_DATA_S *pstLocal, YangDumpNodeData **ppRecords, uint32_t uiCapacity)
        : m_pstLocal(pstLocal), m_ppRecords(ppRecords), m_uiCapacity(uiCapacity)
    {
        korv::MakeEmpty(&m_stIter);
        korv::MakeEmpty(&m_stInfoQueue);
    }
    ~RecordPass() { TELMYANG_FreeInfoQueueAndIter(&m_stInfoQueue, &m_stIter); }
    RecordPass(const RecordPass &) = delete;
    RecordPass &operator=(const RecordPass &) = delete;

    uint32_t Run(KorvTreeNode *pstVirtualRoot)
    {
        if (YANGLIB_PutFirstNodeToIter(m_pstLocal, m_pstLocal->ulModuleId, pstVirtualRoot, &m_stIter) != KORV_OK) {
            KORV_LOG_ERROR(m_pstLocal, "YANGLIB_PutFirstNodeToIter failed!");
            return KORV_FAIL;
        }
        uint32_t uiMoved = 0;
        do {
            if (YANGLIB_GetAllNodeFromIter(m_pstLocal, m_pstLocal->ulModuleId, &m_stInfoQueue, &m_stIter, &uiMoved) !=
                KORV_OK) {
                KORV_LOG_ERROR(m_pstLocal, "YANGLIB_PutNodeToQueueFromIter failed!");
                return KORV_FAIL;
            }
            if (HandleLevel() != KORV_OK)
                return KORV_FAIL;
        } while (uiMoved != 0);
        return KORV_OK;
    }

    uint32_t RecordNum() const { return m_uiRecordNum; }

  private:
    uint32_t HandleLevel()
    {
        while (!korv::IsEmpty(&m_stInfoQueue)) {
            EntryPtr pstEntry(korv::TakeFirst(&m_stInfoQueue));
            const uint32_t uiRet =
                pstEntry->pstTreeNode->pcName != nullptr
                    ? HandleNode(pstEntry.get())
                    : TELMYANG_PutAllChildNodeToIter(m_pstLocal, pstEntry->pstTreeNode, &m_stIter, m_acParentPath);
            if (uiRet != KORV_OK)
                return KORV_FAIL;
        }
        return KORV_OK;
    }

    uint32_t HandleNode(DumpIterEntry *pstEntry)
    {
        if (m_uiRecordNum == m_uiCapacity) {
            KORV_LOG_ERROR(m_pstLocal, "dump node number over %u!", m_uiCapacity);
            return KORV_FAIL;
        }
        YangDumpNodeData *pstRecord = YANGLIB_DumpYangNodeData(m_pstLocal, pstEntry->pstTreeNode, pstEntry->acPath);
        if (pstRecord == nullptr) {
            KORV_LOG_ERROR(m_pstLocal, "Dump Yang Node Data Fail!");
            return KORV_FAIL;
        }
        m_ppRecords[m_uiRecordNum++] = pstRecord;
        if (strncpy_s(m_acParentPath, sizeof(m_acParentPath), pstEntry->acPath, PARENT_PATH_SIZE - 1) != 0)
            ZOR_Assert(__FILE__, __LINE__, 0);
        const uint32_t uiRet =
            TELMYANG_PutAllChildNodeToIter(m_pstLocal, pstEntry->pstTreeNode, &m_stIter, m_acParentPath);
        if (uiRet != KORV_OK)
            KORV_LOG_ERROR(m_pstLocal, "Put child node return 0x%x!", uiRet);
        return uiRet;
    }

    TELMYANG_LOCAL_DATA_S *m_pstLocal;
    YangDumpNodeData **m_ppRecords;
    uint32_t m_uiCapacity;
    uint32_t m_uiRecordNum = 0;
    DumpIterEntry m_stIter;      /* the next level */
    DumpIterEntry m_stInfoQueue; /* the level that is being handled */
    char m_acParentPath[PARENT_PATH_SIZE] = {};
};

/* A node over the whole chain of top nodes: it has no name, so no record is made of it. */
KorvTreeNode VirtualRoot(KorvTreeNode *pstTree)
{
    KorvTreeNode stRoot = {};
    stRoot.pstFirstChild = pstTree;
    return stRoot;
}

} // namespace

uint32_t TELMYANG_CaculateNodeNum(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstVirtualRoot, uint32_t *puiCount)
{
    DumpQueueEntry stQueue = {};
    korv::MakeEmpty(&stQueue);
    uint32_t uiRet = TLMTLIB_AddNewNodeToQueue_(pstLocal, &stQueue, pstVirtualRoot->pstFirstChild);
    uint32_t uiCount = 0;
    while (uiRet == KORV_OK && !korv::IsEmpty(&stQueue)) {
        const KorvTreeNode *pstNode = stQueue.pstNext->pstTreeNode;
        uiRet = TLMTLIB_AddNewNodeToQueue_(pstLocal, &stQueue, pstNode->pstFirstChild);
        if (uiRet == KORV_OK)
            uiRet = TLMTLIB_AddNewNodeToQueue_(pstLocal, &stQueue, pstNode->pstNextSibling);
        korv::HostFree(korv::TakeFirst(&stQueue));
        ++uiCount;
    }
    if (uiRet != KORV_OK) {
        TELMYANG_FreeQueue(&stQueue, nullptr);
        return KORV_FAIL;
    }
    *puiCount = uiCount;
    return KORV_OK;
}

uint32_t YANGLIB_PutFirstNodeToIter(TELMYANG_LOCAL_DATA_S *pstLocal, uint64_t ulModuleId, KorvTreeNode *pstTreeNode,
                                    DumpIterEntry *pstIter)
{
    EntryPtr pstEntry = NewEntry(pstLocal, ulModuleId, pstTreeNode);
    if (!pstEntry)
        return KORV_FAIL;
    korv::AppendEntry(pstIter, pstEntry.release());
    return KORV_OK;
}

uint32_t YANGLIB_GetAllNodeFromIter(TELMYANG_LOCAL_DATA_S *pstLocal, uint64_t ulModuleId, DumpIterEntry *pstInfoQueue,
                                    DumpIterEntry *pstIter, uint32_t *puiCount)
{
    uint32_t uiMoved = 0;
    while (!korv::IsEmpty(pstIter)) {
        EntryPtr pstNew = NewEntry(pstLocal, ulModuleId, pstIter->pstNext->pstTreeNode);
        if (!pstNew)
            return KORV_FAIL;
        EntryPtr pstOld(korv::TakeFirst(pstIter));
        if (strncpy_s(pstNew->acPath, sizeof(pstNew->acPath), pstOld->acPath, sizeof(pstOld->acPath) - 1) != 0)
            ZOR_Assert(__FILE__, __LINE__, 0);
        korv::AppendEntry(pstInfoQueue, pstNew.release());
        ++uiMoved;
    }
    *puiCount = uiMoved;
    return KORV_OK;
}

uint32_t YANGLIB_DumpYangData(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstVirtualRoot,
                              YangDumpNodeData **ppRecords, uint32_t uiCapacity)
{
    RecordPass pass(pstLocal, ppRecords, uiCapacity);
    if (pass.Run(pstVirtualRoot) == KORV_OK)
        return KORV_OK;
    YANGLIB_FreeDumpDataEx(ppRecords, pass.RecordNum());
    return KORV_FAIL;
}

void YANGLIB_DumpYangModuleData(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstTree, YangDumpNodeData ***ppRecords,
                                uint32_t *puiCount)
{
    KorvTreeNode stRoot = VirtualRoot(pstTree);
    uint32_t uiCount = 0;
    if (TELMYANG_CaculateNodeNum(pstLocal, &stRoot, &uiCount) != KORV_OK || uiCount == 0) {
        KORV_LOG_ERROR(pstLocal, "ret err orTree node zero!");
        return;
    }
    const uint64_t ulSize = uint64_t{uiCount} * sizeof(YangDumpNodeData *);
    korv::HostPtr<YangDumpNodeData *> ppArray(
        static_cast<YangDumpNodeData **>(korv::AllocCleared(pstLocal->ulModuleId, ulSize)));
    if (!ppArray) {
        KORV_LOG_ERROR(pstLocal, "malloc failed!");
        return;
    }
    if (YANGLIB_DumpYangData(pstLocal, &stRoot, ppArray.get(), uiCount) != KORV_OK) {
        *ppRecords = nullptr;
        *puiCount = 0;
        return;
    }
    *ppRecords = ppArray.release();
    *puiCount = uiCount;
}

uint32_t YANGLIB_DumpYangModuleDataEx(const YangDumpRequest *pstRequest, YangDumpNodeData ***ppRecords,
                                      uint32_t *puiCount)
{
    TELMYANG_LOCAL_DATA_S *pstLocal = pstRequest->pstLocal;
    *puiCount = 0;
    if (pstLocal == nullptr || pstLocal->pstYangCtx == nullptr) {
        KORV_LOG_ERROR(pstLocal, "pstLocal or pstYangCtx is NULL!");
        return KORV_FAIL;
    }
    const TELMYANG_YANG_FILE_INFO_S *pstFile =
        TELMYANG_GetIfYangModuleExist(pstLocal, pstLocal->pstYangCtx, pstRequest->pcModuleName, pstRequest->pcRevision);
    if (pstFile == nullptr || (pstRequest->bIsAugment == 0 && pstFile->pstOriginTree == nullptr)) {
        KORV_LOG_ERROR(pstLocal, "can not findYangModuleTree(%s)!", korv::Shown(pstRequest->pcModuleName));
        return KORV_FAIL;
    }
    KorvTreeNode *pstTree = pstRequest->bIsAugment != 0 ? pstRequest->pstAugmentTree : pstFile->pstOriginTree;
    YANGLIB_DumpYangModuleData(pstLocal, pstTree, ppRecords, puiCount);
    return KORV_OK;
}
