/* Finding extension statements on schema nodes and within other statements. */
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/schema_nodes.h"

namespace {

using korv::GO_ON;
using korv::STOP;

bool IsSought(const char *pcExtModule, const char *pcKeyword, const char *pcWantedModule, const char *pcWantedName)
{
    return pcExtModule != nullptr && pcKeyword != nullptr && XUR_StrCmp(pcKeyword, pcWantedName) == 0 &&
           XUR_StrCmp(pcExtModule, pcWantedModule) == 0;
}

/* True for the statement that is sought. Notes a leaf that carries another module's statement. */
bool MatchesOnNode(MimExtFindCtx *pstFind, const char *pcExtModule, const char *pcKeyword)
{
    if (pcExtModule != nullptr && XUR_StrCmp(pcExtModule, pstFind->pcExtModule) == 0)
        return pcKeyword != nullptr && XUR_StrCmp(pcKeyword, pstFind->pcExtName) == 0;
    if (QY_NODE_GetNodeType(pstFind->pYinNode) == QY_NODE_TYPE_LEAF)
        pstFind->uiHasForeignExt = 1;
    return false;
}

void TakeMatch(MimExtFindCtx *pstFind, QY_EXT *pExt, const char *pcArgument)
{
    pstFind->pcValue = pcArgument;
    pstFind->pExtInst = pExt;
    pstFind->uiStartPos = pstFind->uiScanPos + 1;
}

void SetSought(MimExtFindCtx *pstFind, const char *pcKeyword)
{
    pstFind->pcExtModule = MIM_EXT_MODULE_NAME;
    pstFind->pcExtName = pcKeyword;
    pstFind->pExtInst = nullptr;
}

uint32_t CountInstances(QY_NODE *pNode)
{
    uint32_t uiCount = 0;
    (void)QY_NODE_ScanAllExtInsts(pNode, TELMYANG_CountExtInstNum, &uiCount);
    return uiCount;
}

} // namespace

uint32_t TLMTLIB_ImplFindExtInstByNameCb(QY_EXT *pExt, const char *pcExtModule, const char *pcKeyword,
                                         const char *pcArgument, void *pstFind)
{
    auto *pstCtx = static_cast<MimExtFindCtx *>(pstFind);
    if (pstCtx->uiScanPos >= pstCtx->uiStartPos && MatchesOnNode(pstCtx, pcExtModule, pcKeyword)) {
        TakeMatch(pstCtx, pExt, pcArgument);
        return STOP;
    }
    ++pstCtx->uiScanPos;
    return GO_ON;
}

uint32_t TLMTLIB_ImplFindExtInstArrayByNameCb(QY_EXT *pExt, const char *pcExtModule, const char *pcKeyword,
                                              const char *pcArgument, void *pstFind)
{
    auto *pstCtx = static_cast<MimExtFindCtx *>(pstFind);
    if (MatchesOnNode(pstCtx, pcExtModule, pcKeyword)) {
        if (pstCtx->uiArrayNum == MIM_EXT_ARRAY_NUM)
            return STOP;
        TakeMatch(pstCtx, pExt, pcArgument);
        pstCtx->ppcValueArray[pstCtx->uiArrayNum] = pcArgument;
        pstCtx->ppExtInstArray[pstCtx->uiArrayNum] = pExt;
        ++pstCtx->uiArrayNum;
    }
    ++pstCtx->uiScanPos;
    return GO_ON;
}

QY_EXT *TLMTLIB_GetExtInstanceByName_(const char *pcKeyword, MimExtFindCtx *pstFind)
{
    SetSought(pstFind, pcKeyword);
    (void)QY_NODE_ScanAllExtInsts(pstFind->pYinNode, TLMTLIB_ImplFindExtInstByNameCb, pstFind);
    return pstFind->pExtInst;
}

uint32_t TLMTLIB_GetExtInstanceArrayByExtName_(const char *pcKeyword, MimExtFindCtx *pstFind)
{
    SetSought(pstFind, pcKeyword);
    return QY_NODE_ScanAllExtInsts(pstFind->pYinNode, TLMTLIB_ImplFindExtInstArrayByNameCb, pstFind);
}

QY_EXT *TELMYANG_BSC_GetNodeSpecMimExt(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *, MimExtType uiId,
                                       MimExtFindCtx *pstFind)
{
    const char *pcKeyword = TELMYANG_BSC_GetNodeMimExtName(pstLocal, uiId);
    if (pcKeyword == nullptr) {
        KORV_LOG_ERROR(pstLocal, "Get ExtName error in node!");
        return nullptr;
    }
    return TLMTLIB_GetExtInstanceByName_(pcKeyword, pstFind);
}

uint32_t TELMYANG_BSC_GetNodeSpecMimExtString(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, MimExtType uiId,
                                              const char **ppcText)
{
    MimExtFindCtx stFind = {};
    stFind.pYinNode = pNode;
    *ppcText = nullptr;
    if (TELMYANG_BSC_GetNodeSpecMimExt(pstLocal, pNode, uiId, &stFind) == nullptr)
        return KORV_FAIL;
    *ppcText = stFind.pcValue;
    return KORV_OK;
}

uint32_t TELMYANG_BSC_GetNodeSpecMimExtValue(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, MimExtType uiId,
                                             uint32_t *puiValue)
{
    MimExtFindCtx stFind = {};
    stFind.pYinNode = pNode;
    if (TELMYANG_BSC_GetNodeSpecMimExt(pstLocal, pNode, uiId, &stFind) != nullptr)
        return TELMYANG_BSC_ParseMimExtIntoInt(pstLocal, stFind.pcValue, puiValue);
    if (stFind.uiHasForeignExt == 0)
        return KORV_FAIL;
    *puiValue = KORV_NO_ID;
    return KORV_OK;
}

uint32_t TELMYANG_BSC_GetNodeSpecMimExtArray(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, MimExtType uiId,
                                             MimExtArray *pstArray, uint32_t *puiNum)
{
    const char *pcKeyword = TELMYANG_BSC_GetNodeMimExtName(pstLocal, uiId);
    if (pcKeyword == nullptr)
        return KORV_FAIL;
    MimExtFindCtx stFind = {};
    stFind.pYinNode = pNode;
    stFind.ppExtInstArray = pstArray->apExtInst;
    stFind.ppcValueArray = pstArray->apcValue;
    (void)TLMTLIB_GetExtInstanceArrayByExtName_(pcKeyword, &stFind);
    *puiNum = stFind.uiArrayNum;
    return KORV_OK;
}

QY_EXT *TELMYANG_BSC_FindExtFirstMimExtByType(TELMYANG_LOCAL_DATA_S *pstLocal, QY_EXT *pExt, MimExtType uiId,
                                              MimExtSubFindCtx *pstFind)
{
    const char *pcKeyword = TELMYANG_BSC_GetNodeMimExtName(pstLocal, uiId);
    if (pcKeyword == nullptr)
        return nullptr;
    *pstFind = {MIM_EXT_MODULE_NAME, pcKeyword, nullptr, nullptr};
    (void)QY_EXT_ScanAllChildExtInsts(pExt, TELMYANG_BSC_ImplGetExtInstByNameCb, pstFind);
    return pstFind->pExtInst;
}

uint32_t TELMYANG_BSC_ImplGetExtInstByNameCb(QY_EXT *pExt, const char *pcExtModule, const char *pcKeyword,
                                             const char *pcArgument, void *pstFind)
{
    auto *pstCtx = static_cast<MimExtSubFindCtx *>(pstFind);
    if (!IsSought(pcExtModule, pcKeyword, pstCtx->pcExtModule, pstCtx->pcExtName))
        return GO_ON;
    pstCtx->pcValue = pcArgument;
    pstCtx->pExtInst = pExt;
    return STOP;
}

uint32_t TELMYANG_BSC_GetExtSpecSubMimExtValue(TELMYANG_LOCAL_DATA_S *pstLocal, QY_EXT *pExt, MimExtType uiId,
                                               uint32_t *puiValue)
{
    MimExtSubFindCtx stFind = {};
    if (TELMYANG_BSC_FindExtFirstMimExtByType(pstLocal, pExt, uiId, &stFind) == nullptr)
        return KORV_FAIL;
    return TELMYANG_BSC_ParseMimExtIntoInt(pstLocal, stFind.pcValue, puiValue);
}

uint32_t TELMYANG_BSC_JudstExtHasExtInst(QY_EXT *, const char *, const char *, const char *, void *puiFlag)
{
    *static_cast<uint32_t *>(puiFlag) = 1;
    return STOP;
}

uint32_t TELMYANG_CountExtInstNum(QY_EXT *, const char *, const char *, const char *, void *puiCount)
{
    ++*static_cast<uint32_t *>(puiCount);
    return GO_ON;
}

uint32_t TELMYANG_BSC_IsYinNodeMimExtNumOnlyOne(QY_NODE *pNode)
{
    return CountInstances(pNode) == 1 ? 1 : 0;
}

uint32_t TELMYANG_BSC_IsYinNodeMimExtNumOnlyZero(QY_NODE *pNode)
{
    return CountInstances(pNode) == 0 ? 1 : 0;
}
