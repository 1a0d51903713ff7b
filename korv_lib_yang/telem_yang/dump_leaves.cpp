/* The leaf vector of a dump record: copies of a tree node's leaf descriptors. */
#include "telem_yang/telem_yang.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"

namespace {

void FreeEntry(YangDumpLeafData *pstEntry)
{
    korv::HostFree(pstEntry->pcPath);
    korv::HostFree(pstEntry->pcName);
    korv::HostFree(pstEntry);
}

/* Writes "path/name" into a block of uiSize bytes with two copies: a formatter would take far longer. False when the
 * host's copy function reports a violation; the block may hold anything then. */
bool JoinPath(char *pcOut, uint32_t uiSize, const char *pcXpath, uint32_t uiXpathLen, const char *pcName)
{
    if (memcpy_s(pcOut, uiSize, pcXpath, uiXpathLen) != 0)
        return false;
    pcOut[uiXpathLen] = '/';
    const uint32_t uiNamePos = uiXpathLen + 1;
    return memcpy_s(pcOut + uiNamePos, uiSize - uiNamePos, pcName, uiSize - uiNamePos) == 0;
}

/* Name and path of an entry; what was made stays in the entry on failure. */
uint32_t FillTexts(TELMYANG_LOCAL_DATA_S *pstLocal, YangDumpLeafData *pstEntry, const KorvTreeLeaf *pstLeaf,
                   const char *pcXpath, uint64_t ulModuleId)
{
    pstEntry->pcName = korv::CopyText(ulModuleId, pstLeaf->pcName);
    if (pstEntry->pcName == nullptr) {
        KORV_LOG_ERROR(pstLocal, "malloc failed!");
        return KORV_FAIL;
    }
    const uint32_t uiXpathLen = XUR_StrLen(pcXpath);
    const uint32_t uiPathSize = XUR_StrLen(pstLeaf->pcName) + uiXpathLen + 2;
    pstEntry->pcPath = static_cast<char *>(ZOR_Malloc_F(ulModuleId, g_aucZorMemPt[0], uiPathSize, __FILE__, __LINE__));
    if (pstEntry->pcPath == nullptr) {
        KORV_LOG_ERROR(pstLocal, "malloc failed!");
        return KORV_FAIL;
    }
    if (!JoinPath(pstEntry->pcPath, uiPathSize, pcXpath, uiXpathLen, pstLeaf->pcName) &&
        sprintf_s(pstEntry->pcPath, uiPathSize, "%s/%s", pcXpath, pstLeaf->pcName) < 0) {
        KORV_LOG_ERROR(pstLocal, "path too long! (%s)", pstEntry->pcPath);
        return KORV_FAIL;
    }
    return KORV_OK;
}

void FillValues(YangDumpLeafData *pstEntry, const KorvTreeLeaf *pstLeaf)
{
    pstEntry->ucMask = pstLeaf->ucMask;
    pstEntry->uiFieldId = pstLeaf->uiFieldId;
    pstEntry->uiDataType = pstLeaf->uiDataType;
    pstEntry->uiIndexMap = pstLeaf->uiName2IdKeyFid;
    pstEntry->llRangeMin = pstLeaf->llRangeMin;
    pstEntry->llRangeMax = pstLeaf->llRangeMax;
}

/* Makes the entry of one leaf and appends it. */
uint32_t AppendEntry(TELMYANG_LOCAL_DATA_S *pstLocal, YangDumpNodeData *pstRecord, const KorvTreeLeaf *pstLeaf,
                     uint64_t ulModuleId)
{
    auto *pstEntry =
        static_cast<YangDumpLeafData *>(TELMYANG_Malloc_BZero(pstLocal, ulModuleId, sizeof(YangDumpLeafData)));
    if (pstEntry == nullptr) {
        KORV_LOG_ERROR(pstLocal, "malloc failed!");
        TELMYANG_FillListDataFreeIfErr_(nullptr, pstRecord);
        return KORV_FAIL;
    }
    uint32_t uiRet = FillTexts(pstLocal, pstEntry, pstLeaf, pstRecord->pcXpath, ulModuleId);
    if (uiRet == KORV_OK) {
        FillValues(pstEntry, pstLeaf);
        if (VEC_VectorSet(pstRecord->pstLeafList, pstEntry) != KORV_NO_ID)
            return KORV_OK;
        KORV_LOG_ERROR(pstLocal, "VEC_VectorSet failed!");
    }
    TELMYANG_FillListDataFreeIfErr_(pstEntry, pstRecord);
    return KORV_FAIL;
}

} // namespace

void TELMYANG_FillListDataFreeIfErr_(YangDumpLeafData *pstLeafEntry, YangDumpNodeData *pstRecord)
{
    if (pstLeafEntry != nullptr)
        FreeEntry(pstLeafEntry);
    const uint32_t uiNum = pstRecord->pstLeafList != nullptr ? VEC_VectorCount(pstRecord->pstLeafList) : 0;
    for (uint32_t uiLoop = 0; uiLoop < uiNum; ++uiLoop) {
        auto *pstEntry = static_cast<YangDumpLeafData *>(pstRecord->pstLeafList->ppvItem[uiLoop]);
        if (pstEntry == nullptr)
            continue;
        FreeEntry(pstEntry);
        pstRecord->pstLeafList->ppvItem[uiLoop] = nullptr;
    }
    (void)VEC_VectorFree_F(pstRecord->pstLeafList);
    pstRecord->pstLeafList = nullptr;
}

uint32_t TELMYANG_FillListDataFromLeafNode(TELMYANG_LOCAL_DATA_S *pstLocal, YangDumpNodeData *pstRecord,
                                           const KorvTreeNode *pstTreeNode, uint64_t ulModuleId)
{
    const VEC_VECTOR_S *pstLeafList = pstTreeNode->pstLeafList;
    const uint32_t uiNum = VEC_VectorCount(pstLeafList);
    pstRecord->pstLeafList = VEC_VectorInit_F(ulModuleId, uiNum, __FILE__, __LINE__);
    if (pstRecord->pstLeafList == nullptr) {
        KORV_LOG_ERROR(pstLocal, "VEC_VectorInit failed!");
        return KORV_FAIL;
    }
    for (uint32_t uiLoop = 0; uiLoop < uiNum; ++uiLoop) {
        const auto *pstLeaf = static_cast<const KorvTreeLeaf *>(pstLeafList->ppvItem[uiLoop]);
        if (AppendEntry(pstLocal, pstRecord, pstLeaf, ulModuleId) != KORV_OK)
            return KORV_FAIL;
    }
    return KORV_OK;
}
