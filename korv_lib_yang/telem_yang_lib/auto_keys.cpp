/* Automatic keys. The statements are searched on the class node itself, once for each of its leaves, so that every leaf
 * gets the same answer: models that load on a device rely on that. */
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"

namespace {

constexpr uint32_t GO_ON = 0;
constexpr uint32_t STOP = 1;

void RecordPair(AutoKeyScanCtx *pstCtx, QY_NODE *pNode, QY_EXT *pExt)
{
    pstCtx->pstPairs[pstCtx->ucPairNum++] = {pNode, pExt};
}

} // namespace

uint32_t TELMYANG_BSC_ImplParseAutoKeyForEachCb_(QY_NODE *pNode, void *, void *pstScan)
{
    auto *pstCtx = static_cast<AutoKeyScanCtx *>(pstScan);
    YinInst *pstInst = pstCtx->pstInst;
    if (QY_NODE_GetNodeType(pNode) != QY_NODE_TYPE_LEAF)
        return GO_ON;
    if (pstCtx->ucPairNum == pstInst->ucNumOfAttr) {
        KORV_LOG_ERROR(pstCtx->pstLocal, "autoKey(%d)ucNumOfAttr(%d)name(%s) error!", pstCtx->ucPairNum,
                       pstInst->ucNumOfAttr, korv::Shown(QY_NODE_GetNodeName(pNode)));
        return STOP;
    }
    QY_NODE *pClassNode = QY_NODE_GetParentNode(pNode);
    MimExtFindCtx stFind = {};
    stFind.pYinNode = pClassNode;
    QY_EXT *pExt = TELMYANG_BSC_GetNodeSpecMimExt(pstCtx->pstLocal, pClassNode, MIM_EXT_NAME2ID_KEY_FID, &stFind);
    if (pExt != nullptr) {
        RecordPair(pstCtx, pNode, pExt);
        if (pstCtx->pstNameKey->pNode != nullptr)
            return STOP;
        *pstCtx->pstNameKey = {pClassNode, pExt};
        pstInst->ucAutoKeyNum = pstCtx->ucPairNum;
        return GO_ON;
    }
    pExt = TELMYANG_BSC_GetNodeSpecMimExt(pstCtx->pstLocal, pClassNode, MIM_EXT_REF_ID_KEY_FID, &stFind);
    if (pExt != nullptr)
        RecordPair(pstCtx, pNode, pExt);
    pstInst->ucAutoKeyNum = pstCtx->ucPairNum;
    return GO_ON;
}

uint32_t TELMYANG_BSC_ParseNodeAutoKeyLeafInfoForEach_(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                       YinInst *pstInst, AutoKeyPair *pstPairs, AutoKeyPair *pstNameKey)
{
    AutoKeyScanCtx stScan = {pstLocal, pstInst, pstPairs, pstNameKey, 0};
    return QY_NODE_IterScanChildrenNode(pNode, TELMYANG_BSC_ImplParseAutoKeyForEachCb_, &stScan);
}

uint32_t TELMYANG_BSC_FillAutoKeyRefInfo(TELMYANG_LOCAL_DATA_S *, QY_NODE *pNameKeyNode, YinInst *pstInst)
{
    if (pNameKeyNode == nullptr)
        pstInst->ucAutoKeyRef = YIN_AUTO_KEY_NO_NAME;
    return KORV_OK;
}

uint32_t TELMYANG_BSC_ParseNodeAutoKeyLeafInfo(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst *pstInst)
{
    if (pstInst->ucNumOfAttr == 0)
        return KORV_OK;
    korv::HostPtr<AutoKeyPair> pstPairs = korv::NewZeroed<AutoKeyPair>(pstLocal, pstInst->ucNumOfAttr);
    if (!pstPairs) {
        KORV_LOG_ERROR(pstLocal, "XUR_Malloc error!");
        return KORV_FAIL;
    }
    AutoKeyPair stNameKey = {};
    if (TELMYANG_BSC_ParseNodeAutoKeyLeafInfoForEach_(pstLocal, pNode, pstInst, pstPairs.get(), &stNameKey) != 0)
        return KORV_FAIL;
    const uint32_t uiRet = TELMYANG_BSC_FillAutoKeyRefInfo(pstLocal, stNameKey.pNode, pstInst);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Fill Auto-Key Info return 0x%x!", uiRet);
        return KORV_FAIL;
    }
    return KORV_OK;
}
