/* Printing a module's trees to the host's debug hooks. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"

namespace {

constexpr uint32_t LINE_SIZE = 512;

bool AnyLevelIsOpen(TELMYANG_LOCAL_DATA_S *pstLocal)
{
    for (uint32_t uiLevel = 0; uiLevel < KORV_LOG_LEVEL_NUM; ++uiLevel) {
        if (TELMYANG_LIBDebugPrintIsOpen(pstLocal, uiLevel) != 0)
            return true;
    }
    return false;
}

void PrintNodeLine(TELMYANG_LOCAL_DATA_S *pstLocal, const YangDumpNodeData *pstRecord)
{
    char acLine[LINE_SIZE] = {};
    const uint8_t *pucSelf = pstRecord->aucSelfNodeKey;
    const uint8_t *pucAnc = pstRecord->aucAncestorKey;
    if (sprintf_s(acLine, sizeof(acLine),
                  "Name:%s, xpath:%s, Class:0x%x SelfNodeKey(%d %d %d %d %d %d %d %d)"
                  "AncestorKey(%d %d %d %d %d %d %d %d)",
                  pstRecord->pcName, pstRecord->pcXpath, pstRecord->uiClassId, pucSelf[0], pucSelf[1], pucSelf[2],
                  pucSelf[3], pucSelf[4], pucSelf[5], pucSelf[6], pucSelf[7], pucAnc[0], pucAnc[1], pucAnc[2],
                  pucAnc[3], pucAnc[4], pucAnc[5], pucAnc[6], pucAnc[7]) < 0)
        ZOR_Assert(__FILE__, __LINE__, 0);
    KORV_LOG_INFO(pstLocal, "%s", acLine);
}

void PrintLeafLine(TELMYANG_LOCAL_DATA_S *pstLocal, const YangDumpLeafData *pstLeaf)
{
    char acLine[LINE_SIZE] = {};
    if (snprintf_s(acLine, sizeof(acLine),
                   " Leaf:%s, mask:0x%x, Field:%d, DataType:%d, indexmap:%d, range(%lld, %lld), path:%s",
                   pstLeaf->pcName, pstLeaf->ucMask, static_cast<int>(pstLeaf->uiFieldId),
                   static_cast<int>(pstLeaf->uiDataType), static_cast<int>(pstLeaf->uiIndexMap),
                   static_cast<long long>(pstLeaf->llRangeMin), static_cast<long long>(pstLeaf->llRangeMax),
                   pstLeaf->pcPath) < 0)
        ZOR_Assert(__FILE__, __LINE__, 0);
    KORV_LOG_INFO(pstLocal, "%s", acLine);
}

/* Dumps what the request names, prints it and releases it; the dump's result. */
uint32_t DumpAndPrint(const YangDumpRequest *pstRequest)
{
    YangDumpNodeData **ppRecords = nullptr;
    uint32_t uiCount = 0;
    const uint32_t uiRet = YANGLIB_DumpYangModuleDataEx(pstRequest, &ppRecords, &uiCount);
    if (uiRet != KORV_OK)
        return uiRet;
    YANGLIB_PrintYangModuleNodeData(pstRequest->pstLocal, ppRecords, uiCount);
    YANGLIB_FreeDumpDataEx(ppRecords, uiCount);
    korv::HostFree(ppRecords);
    return KORV_OK;
}

} // namespace

void YANGLIB_PrintYangModuleNodeData(TELMYANG_LOCAL_DATA_S *pstLocal, YangDumpNodeData **ppRecords, uint32_t uiCount)
{
    for (uint32_t uiLoop = 0; uiLoop < uiCount; ++uiLoop) {
        const YangDumpNodeData *pstRecord = ppRecords[uiLoop];
        PrintNodeLine(pstLocal, pstRecord);
        const uint32_t uiNum = pstRecord->pstLeafList != nullptr ? VEC_VectorCount(pstRecord->pstLeafList) : 0;
        for (uint32_t uiLeaf = 0; uiLeaf < uiNum; ++uiLeaf)
            PrintLeafLine(pstLocal, static_cast<const YangDumpLeafData *>(pstRecord->pstLeafList->ppvItem[uiLeaf]));
    }
}

void YANGLIB_PrintYangModuleOriginData(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                       const char *pcRevision)
{
    KORV_LOG_INFO(pstLocal, "PrintYangModuleOriginData:");
    const YangDumpRequest stRequest = {pstLocal, pcModuleName, pcRevision, nullptr, 0};
    const uint32_t uiRet = DumpAndPrint(&stRequest);
    if (uiRet != KORV_OK)
        KORV_LOG_ERROR(pstLocal, "Dump yang model data return 0x%x!", uiRet);
}

void YANGLIB_DumpYangModuleAugmentData(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *,
                                       const YangDumpRequest *pstRequest)
{
    const uint32_t uiRet = DumpAndPrint(pstRequest);
    if (uiRet == KORV_OK)
        return;
    const KorvTreeNode *pstTree = pstRequest->pstAugmentTree;
    KORV_LOG_ERROR(pstLocal, "Dump yang model data return 0x%x pcName(%s)!", uiRet,
                   korv::Shown(pstTree != nullptr ? pstTree->pcName : nullptr));
}

void YANGLIB_PrintYangModuleAugmentData(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                        const char *pcRevision)
{
    KORV_LOG_INFO(pstLocal, "PrintYangModuleAugmentData:");
    TELMYANG_YANG_FILE_INFO_S *pstFile =
        TELMYANG_GetIfYangModuleExist(pstLocal, pstLocal->pstYangCtx, pcModuleName, pcRevision);
    if (pstFile == nullptr || pstFile->ucAugmentNum == 0) {
        KORV_LOG_ERROR(pstLocal, "augment can not findYangModuleTree!");
        return;
    }
    YangDumpRequest stRequest = {pstLocal, pcModuleName, pcRevision, nullptr, 1};
    for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
        KORV_LOG_INFO(pstLocal, "Augment dump self Data:i=%u", uiLoop);
        stRequest.pstAugmentTree = pstFile->astAugment[uiLoop].pstSelfTree;
        YANGLIB_DumpYangModuleAugmentData(pstLocal, pstFile, &stRequest);
    }
    for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
        KORV_LOG_INFO(pstLocal, "Augment dump target Data:i=%u", uiLoop);
        stRequest.pstAugmentTree = pstFile->astAugment[uiLoop].pstTargetTree;
        YANGLIB_DumpYangModuleAugmentData(pstLocal, pstFile, &stRequest);
    }
}

void YANGLIB_PrintYangModuleData(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName, const char *pcRevision)
{
    if (!AnyLevelIsOpen(pstLocal))
        return;
    YANGLIB_PrintYangModuleOriginData(pstLocal, pcModuleName, pcRevision);
    YANGLIB_PrintYangModuleAugmentData(pstLocal, pcModuleName, pcRevision);
}
