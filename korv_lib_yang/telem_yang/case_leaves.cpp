/* The case leaf vector of a container or list: the enabled leaves in its choices, nested ones included. */
#include "telem_yang/leaf_append.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/schema_nodes.h"

namespace {

using korv::GO_ON;
using korv::IsChoiceOrCase;
using korv::NameOf;
using korv::STOP;

/* STOP when there are more leaves than the context's limit: the first ones are kept. */
uint32_t Collect(CaseLeafScanCtx *pstScan)
{
    return QY_NODE_IterScanChildrenNode(pstScan->pNode, TELMYANG_GetAllCaseLeafNodeCb, pstScan);
}

/* Choices may be nested as deep as the schema library lets them: the context is changed and restored rather than
 * copied, since each level costs the thread's stack. */
uint32_t CollectBelow(CaseLeafScanCtx *pstScan, QY_NODE *pChoiceOrCase)
{
    QY_NODE *pAround = pstScan->pNode;
    const uint32_t uiAroundInCase = pstScan->uiInCase;
    pstScan->pNode = pChoiceOrCase;
    pstScan->uiInCase = 1;
    const uint32_t uiRet = Collect(pstScan);
    pstScan->pNode = pAround;
    pstScan->uiInCase = uiAroundInCase;
    return uiRet;
}

CaseLeafScanCtx ScanOf(QY_NODE *pNode, uint32_t uiInCase, QY_NODE **ppLeaf, uint32_t uiStart, uint32_t uiLimit)
{
    return {pNode, ppLeaf, uiLimit < KORV_CASE_LEAF_NUM ? uiLimit : KORV_CASE_LEAF_NUM, uiInCase,
            static_cast<uint8_t>(uiStart)};
}

} // namespace

uint32_t TELMYANG_GetAllCaseLeafNodeCb(QY_NODE *pNode, void *, void *pstScan)
{
    auto *pstCtx = static_cast<CaseLeafScanCtx *>(pstScan);
    const uint32_t uiNodeType = QY_NODE_GetNodeType(pNode);
    if (IsChoiceOrCase(uiNodeType))
        return CollectBelow(pstCtx, pNode);
    if (pstCtx->uiInCase == 0 || uiNodeType != QY_NODE_TYPE_LEAF || (QY_NODE_IsEnabled(pNode) & 1u) == 0)
        return GO_ON;
    if (pstCtx->ucCount >= pstCtx->uiLimit)
        return STOP;
    pstCtx->ppLeaf[pstCtx->ucCount++] = pNode;
    return GO_ON;
}

uint32_t TELMYANG_GetAllCaseLeafNode(QY_NODE *pNode, uint32_t uiInCase, QY_NODE **ppLeaf, uint32_t uiStart,
                                     uint32_t uiLimit)
{
    CaseLeafScanCtx stScan = ScanOf(pNode, uiInCase, ppLeaf, uiStart, uiLimit);
    if (uiStart >= stScan.uiLimit)
        return stScan.uiLimit;
    (void)Collect(&stScan);
    return stScan.ucCount;
}

uint32_t TELMYANG_FillCaseLeafDataByNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst *pstInst,
                                         KorvTreeNode *pstNode)
{
    if (pstNode->ucNodeType != KORV_NODE_ORDINARY)
        return KORV_OK;
    QY_NODE *apLeaf[KORV_CASE_LEAF_NUM];
    CaseLeafScanCtx stScan = ScanOf(pNode, 0, apLeaf, 0, KORV_CASE_LEAF_NUM);
    if (Collect(&stScan) == STOP)
        KORV_LOG_ERROR(pstLocal, "node(%s) has more than %u case leaves, the others are left out!", NameOf(pNode),
                       KORV_CASE_LEAF_NUM);
    if (stScan.ucCount == 0)
        return KORV_OK;
    pstNode->pstCaseLeafList = VEC_VectorInit_F(pstLocal->ulModuleId, stScan.ucCount, __FILE__, __LINE__);
    if (pstNode->pstCaseLeafList == nullptr) {
        KORV_LOG_ERROR(pstLocal, "Init case leaf vector failed!");
        return KORV_FAIL;
    }
    const LeafFillCtx stFill = {pstLocal, pstInst, pstNode, pstNode->pstCaseLeafList};
    for (uint32_t uiLoop = 0; uiLoop < stScan.ucCount; ++uiLoop) {
        const korv::LeafAppend eResult = korv::AppendLeaf(stFill, apLeaf[uiLoop]);
        if (eResult == korv::LeafAppend::NotFilled)
            KORV_LOG_ERROR(pstLocal, "fill leaf data failed!");
        if (eResult != korv::LeafAppend::Done)
            return KORV_FAIL;
    }
    return KORV_OK;
}
