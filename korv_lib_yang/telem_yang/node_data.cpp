/* Filling a tree node from its schema node and record. */
#include "telem_yang/telem_yang.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/refusal.h"
#include "telem_yang_lib/schema_nodes.h"

namespace {

using korv::NameOf;

/* Copies at most 16 keys; a class with more cannot be placed in the tree. */
uint32_t CopyKeys(TELMYANG_LOCAL_DATA_S *pstLocal, uint8_t *pucTo, const uint8_t *pucFrom, uint32_t uiNum,
                  const korv::Refusal &stRefusal)
{
    for (uint32_t uiLoop = 0; uiLoop < uiNum; ++uiLoop) {
        if (uiLoop == NODE_KEY_LIST_NUM) {
            KORV_LOG_ERROR(pstLocal, "NODE_KEY_LIST_NUM error!");
            korv::Refuse(pstLocal, stRefusal);
            return KORV_FAIL;
        }
        pucTo[uiLoop] = pucFrom[uiLoop];
    }
    return KORV_OK;
}

} // namespace

uint32_t TELEMYANG_ChoiceCaseNodeProc(KorvTreeNode *pstNode, QY_NODE *pNode)
{
    const uint32_t uiNodeType = QY_NODE_GetNodeType(pNode);
    pstNode->ucNodeType = KORV_NODE_ORDINARY;
    if (uiNodeType == QY_NODE_TYPE_CHOICE)
        pstNode->ucNodeType = KORV_NODE_CHOICE;
    if (uiNodeType == QY_NODE_TYPE_CASE)
        pstNode->ucNodeType = KORV_NODE_CASE;
    return uiNodeType;
}

uint32_t TELMYANG_FillContainerBaseInfo(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstNode, QY_NODE *pNode)
{
    if (pstNode == nullptr)
        return KORV_FAIL;
    (void)TELEMYANG_ChoiceCaseNodeProc(pstNode, pNode);
    pstNode->pcModuleName = TELMYANG_GetNodeModuleName(pstLocal, pNode);
    pstNode->pcName = TELMYANG_AllocNodeSelfName(pstLocal, pNode);
    return pstNode->pcName != nullptr ? KORV_OK : KORV_NO_MEMORY;
}

uint32_t TELMYANG_FillSelfAndAncestorKeyList(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, KorvTreeNode *pstNode)
{
    const YinInst *pstInst = TELMYANG_MDL_GetYinInstFromYinNode(pNode);
    if (pstInst == nullptr)
        return KORV_OK;
    pstNode->uiClassId = pstInst->uiClassId;
    pstNode->uiSampleId = pstInst->uiSampleId;
    if (CopyKeys(pstLocal, pstNode->aucSelfNodeKey, pstInst->pucSelfKeyAttributes, pstInst->ucKeyNum,
                 {korv::Why::TreeKeyNum, pNode, nullptr, nullptr, nullptr}) != KORV_OK)
        return KORV_FAIL;
    if (pstInst->pstKeyRefArray == nullptr)
        return KORV_OK;
    return CopyKeys(pstLocal, pstNode->aucAncestorKey, pstInst->pstKeyRefArray->pucKeyAttributes, pstInst->ucAncKeyNum,
                    {korv::Why::TreeAncestorKeyNum, pNode, nullptr, nullptr, nullptr});
}

uint32_t TELMYANG_FillDataFromYangNode(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstNode, QY_NODE *pNode)
{
    const uint32_t uiNodeType = QY_NODE_GetNodeType(pNode);
    if (korv::IsLeafOrLeafList(uiNodeType)) {
        KORV_LOG_ERROR(pstLocal, "nodetype error,name(%s)!", NameOf(pNode));
        return KORV_FAIL;
    }
    if (TELMYANG_FillContainerBaseInfo(pstLocal, pstNode, pNode) != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Fill container base info failed !");
        return KORV_FAIL;
    }
    YinInst *pstInst = TELMYANG_MDL_GetYinInstFromYinNode(pNode);
    if (pstInst != nullptr && TELMYANG_FillSelfAndAncestorKeyList(pstLocal, pNode, pstNode) != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Fill ancestor key failed!");
        return KORV_FAIL;
    }
    uint32_t uiRet = TELMYANG_FillLeafDataByNode(pstLocal, pNode, pstInst, pstNode);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Fill Leaf Data By Node(%s) return 0x%x!", NameOf(pNode), uiRet);
        return KORV_FAIL;
    }
    uiRet = TELMYANG_FillCaseLeafDataByNode(pstLocal, pNode, pstInst, pstNode);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Fill Case Leaf Data By Node(%s) return 0x%x!", NameOf(pNode), uiRet);
        return KORV_FAIL;
    }
    return KORV_OK;
}
