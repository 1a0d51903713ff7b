/* Automatic keys. The statements are searched on the class node itself, so that every leaf of it gets the same answer:
 * models that load on a device rely on that. */
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/refusal.h"
#include "telem_yang_lib/schema_nodes.h"

namespace {

using korv::GO_ON;
using korv::NameOf;
using korv::STOP;

/* What the class node answers, which is looked up once for all leaves below it. */
struct ClassKeys {
    QY_NODE *pClassNode;
    QY_EXT *pNameExt;
    QY_EXT *pRefExt;
};

struct AutoKeyPass {
    AutoKeyScanCtx stScan;
    ClassKeys stKeys;
};

ClassKeys KeysOf(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pClassNode)
{
    ClassKeys stKeys = {pClassNode, nullptr, nullptr};
    MimExtFindCtx stFind = {};
    stFind.pYinNode = pClassNode;
    stKeys.pNameExt = TELMYANG_BSC_GetNodeSpecMimExt(pstLocal, pClassNode, MIM_EXT_NAME2ID_KEY_FID, &stFind);
    if (stKeys.pNameExt == nullptr)
        stKeys.pRefExt = TELMYANG_BSC_GetNodeSpecMimExt(pstLocal, pClassNode, MIM_EXT_REF_ID_KEY_FID, &stFind);
    return stKeys;
}

void RecordPair(AutoKeyScanCtx *pstCtx, QY_NODE *pNode, QY_EXT *pExt)
{
    pstCtx->pstPairs[pstCtx->ucPairNum++] = {pNode, pExt};
}

/* Counts one leaf; pstKeys is what was looked up last. */
uint32_t CountLeaf(AutoKeyScanCtx *pstCtx, ClassKeys *pstKeys, QY_NODE *pNode)
{
    YinInst *pstInst = pstCtx->pstInst;
    if (pstCtx->ucPairNum == pstInst->ucNumOfAttr) {
        KORV_LOG_ERROR(pstCtx->pstLocal, "autoKey(%d)ucNumOfAttr(%d)name(%s) error!", pstCtx->ucPairNum,
                       pstInst->ucNumOfAttr, NameOf(pNode));
        korv::Refuse(pstCtx->pstLocal, {korv::Why::AutoKeys, nullptr, pNode, nullptr, nullptr});
        return STOP;
    }
    QY_NODE *pClassNode = QY_NODE_GetParentNode(pNode);
    if (pstKeys->pClassNode != pClassNode)
        *pstKeys = KeysOf(pstCtx->pstLocal, pClassNode);
    if (pstKeys->pNameExt != nullptr) {
        RecordPair(pstCtx, pNode, pstKeys->pNameExt);
        if (pstCtx->pstNameKey->pNode != nullptr) {
            korv::Refuse(pstCtx->pstLocal, {korv::Why::AutoKeys, nullptr, pNode, nullptr, nullptr});
            return STOP;
        }
        *pstCtx->pstNameKey = {pClassNode, pstKeys->pNameExt};
    } else if (pstKeys->pRefExt != nullptr) {
        RecordPair(pstCtx, pNode, pstKeys->pRefExt);
    }
    pstInst->ucAutoKeyNum = pstCtx->ucPairNum;
    return GO_ON;
}

uint32_t CountLeafCb(QY_NODE *pNode, void *, void *pvPass)
{
    auto *pstPass = static_cast<AutoKeyPass *>(pvPass);
    return QY_NODE_GetNodeType(pNode) == QY_NODE_TYPE_LEAF ? CountLeaf(&pstPass->stScan, &pstPass->stKeys, pNode)
                                                           : GO_ON;
}

} // namespace

uint32_t TELMYANG_BSC_ImplParseAutoKeyForEachCb_(QY_NODE *pNode, void *, void *pstScan)
{
    ClassKeys stKeys = {};
    return QY_NODE_GetNodeType(pNode) == QY_NODE_TYPE_LEAF
               ? CountLeaf(static_cast<AutoKeyScanCtx *>(pstScan), &stKeys, pNode)
               : GO_ON;
}

uint32_t TELMYANG_BSC_ParseNodeAutoKeyLeafInfoForEach_(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                       YinInst *pstInst, AutoKeyPair *pstPairs, AutoKeyPair *pstNameKey)
{
    AutoKeyPass stPass = {{pstLocal, pstInst, pstPairs, pstNameKey, 0}, {}};
    return QY_NODE_IterScanChildrenNode(pNode, CountLeafCb, &stPass);
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
