/* Making and releasing the record of one dumped node. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"

namespace {

/* Releases what a record owns: texts first, then the leaves. */
void FreeContents(YangDumpNodeData *pstRecord)
{
    korv::HostFree(pstRecord->pcXpath);
    pstRecord->pcXpath = nullptr;
    korv::HostFree(pstRecord->pcName);
    pstRecord->pcName = nullptr;
    if (pstRecord->pstLeafList != nullptr)
        TELMYANG_FillListDataFreeIfErr_(nullptr, pstRecord);
}

struct RecordDelete {
    void operator()(YangDumpNodeData *pstRecord) const
    {
        FreeContents(pstRecord);
        korv::HostFree(pstRecord);
    }
};
using RecordPtr = std::unique_ptr<YangDumpNodeData, RecordDelete>;

void CopyKeys(uint8_t (&aucTo)[NODE_KEY_LIST_NUM], const uint8_t (&aucFrom)[NODE_KEY_LIST_NUM])
{
    if (memcpy_s(aucTo, sizeof(aucTo), aucFrom, sizeof(aucFrom)) != 0)
        ZOR_Assert(__FILE__, __LINE__, 0);
}

} // namespace

YangDumpNodeData *YANGLIB_DumpYangNodeData(TELMYANG_LOCAL_DATA_S *pstLocal, const KorvTreeNode *pstTreeNode,
                                           const char *pcXpath)
{
    RecordPtr pstRecord(
        static_cast<YangDumpNodeData *>(korv::AllocCleared(pstLocal->ulModuleId, sizeof(YangDumpNodeData))));
    if (!pstRecord) {
        KORV_LOG_ERROR(pstLocal, "malloc failed!");
        return nullptr;
    }
    pstRecord->uiClassId = pstTreeNode->uiClassId;
    pstRecord->uiSampleId = pstTreeNode->uiSampleId;
    CopyKeys(pstRecord->aucSelfNodeKey, pstTreeNode->aucSelfNodeKey);
    CopyKeys(pstRecord->aucAncestorKey, pstTreeNode->aucAncestorKey);
    pstRecord->pcName = korv::CopyText(pstLocal->ulModuleId, pstTreeNode->pcName);
    if (pstRecord->pcName == nullptr) {
        KORV_LOG_ERROR(pstLocal, "Malloc failed!");
        return nullptr;
    }
    pstRecord->pcXpath = korv::CopyText(pstLocal->ulModuleId, pcXpath);
    if (pstRecord->pcXpath == nullptr) {
        KORV_LOG_ERROR(pstLocal, "malloc failed!");
        return nullptr;
    }
    if (pstTreeNode->pstLeafList == nullptr)
        return pstRecord.release();
    const uint32_t uiRet =
        TELMYANG_FillListDataFromLeafNode(pstLocal, pstRecord.get(), pstTreeNode, pstLocal->ulModuleId);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Fill List Data return 0x%x!", uiRet);
        return nullptr;
    }
    return pstRecord.release();
}

void YANGLIB_FreeDumpDataExx(YangDumpNodeData **ppRecords, uint32_t uiCount)
{
    for (uint32_t uiLoop = 0; uiLoop < uiCount; ++uiLoop) {
        RecordPtr pstRecord(ppRecords[uiLoop]);
        ppRecords[uiLoop] = nullptr;
    }
}

void YANGLIB_FreeDumpDataEx(YangDumpNodeData **ppRecords, uint32_t uiCount)
{
    if (ppRecords != nullptr)
        YANGLIB_FreeDumpDataExx(ppRecords, uiCount);
}
