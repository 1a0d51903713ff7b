/* The table of a module's augments in its registry record. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/refusal.h"
#include "telem_yang_lib/schema_nodes.h"

namespace {

using korv::GO_ON;
using korv::STOP;

QY_NODE *TopOf(QY_NODE *pNode)
{
    while (QY_NODE *pParent = QY_NODE_GetParentNode(pNode))
        pNode = pParent;
    return pNode;
}

} // namespace

QY_NODE *TELMYANG_BSC_FindAugTargetParentRoot(QY_NODE *pNode)
{
    QY_NODE *pRoot = nullptr;
    QY_NODE *pTarget = QY_NODE_GetAugmentTargetNode(pNode);
    while (pTarget != nullptr) {
        pRoot = TopOf(pTarget);
        pTarget = QY_NODE_GetNodeType(pRoot) == QY_NODE_TYPE_AUGMENT ? QY_NODE_GetAugmentTargetNode(pRoot) : nullptr;
    }
    return pRoot;
}

uint32_t TELEMYANG_ImplFillAugmentDataToYangFileCb(QY_NODE *pNode, void *, void *pstCtx)
{
    auto *pstFill = static_cast<AugmentFillCtx *>(pstCtx);
    TELMYANG_YANG_FILE_INFO_S *pstFile = pstFill->pstFile;
    if (pstFile->ucAugmentNum == KORV_AUGMENT_NUM) {
        KORV_LOG_ERROR(pstFill->pstLocal, "augment cnt over max, ModName(%s)", pstFill->pcModuleName);
        korv::Refuse(pstFill->pstLocal, {korv::Why::AugmentNum, pNode, nullptr, nullptr, nullptr});
        return STOP;
    }
    if (QY_NODE_GetNodeType(pNode) == QY_NODE_TYPE_LEAF) {
        KORV_LOG_INFO(pstFill->pstLocal, "skip augment's leaf node");
        return GO_ON;
    }
    TELMYANG_AUGMENT_INFO_S *pstAugment = &pstFile->astAugment[pstFile->ucAugmentNum];
    pstAugment->pAugNode = pNode;
    pstAugment->pFirstChild = TELMYANG_BSC_FindFirstChild(pNode);
    if (strcpy_s(pstAugment->acAugNodeName, sizeof(pstAugment->acAugNodeName), QY_NODE_GetNodeName(pNode)) != 0)
        ZOR_Assert(__FILE__, __LINE__, 0);
    pstAugment->pTargetParentRoot = TELMYANG_BSC_FindAugTargetParentRoot(pNode);
    pstFile->ucAugmentNum++;
    return GO_ON;
}

uint32_t TELEMYANG_FillAugmentDataToYangFile(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                             TELMYANG_YANG_FILE_INFO_S *pstFile, QY_MOD *pMod)
{
    AugmentFillCtx stFill = {pstLocal, pstFile, pcModuleName};
    return QY_MOD_IterScanAugmentNode(pMod, TELEMYANG_ImplFillAugmentDataToYangFileCb, &stFill);
}
