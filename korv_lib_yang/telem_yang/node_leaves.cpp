/* The leaf vector of a tree node: a descriptor of each leaf and leaf-list child. */
#include "telem_yang/leaf_append.h"

#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/schema_nodes.h"

korv::LeafAppend korv::AppendLeaf(const LeafFillCtx &stFill, QY_NODE *pLeaf)
{
    TELMYANG_LOCAL_DATA_S *pstLocal = stFill.pstLocal;
    KorvTreeLeaf *pstLeaf = nullptr;
    if (TELMYANG_FillLeafData(pstLocal, pstLocal->ulModuleId, &pstLeaf, pLeaf) != KORV_OK)
        return LeafAppend::NotFilled;
    (void)TELMYANG_FillYinInstKeyFromLeafNode(pstLocal, stFill.pstInst, pstLeaf);
    pstLeaf->uiClassId = stFill.pstNode->uiClassId;
    if (pstLocal->pfnDatatypeAdapt != nullptr)
        (void)pstLocal->pfnDatatypeAdapt(pstLocal->pKorvComponent, pstLeaf);
    if (VEC_VectorSet(stFill.pstLeafList, pstLeaf) != KORV_NO_ID)
        return LeafAppend::Done;
    HostFree(pstLeaf->pcName);
    HostFree(pstLeaf);
    KORV_LOG_ERROR(pstLocal, "VEC_VectorSet error!");
    return LeafAppend::NotStored;
}

uint32_t TELMYANG_GetLeafChildNum(QY_NODE *pNode, void *, void *pstCount)
{
    if (korv::IsLeafOrLeafList(QY_NODE_GetNodeType(pNode)))
        ++static_cast<LeafNumCtx *>(pstCount)->uiCount;
    return KORV_OK;
}

uint32_t TELMYANG_FillLeafDataByNodeCb(QY_NODE *pNode, void *, void *pstFill)
{
    if (!korv::IsLeafOrLeafList(QY_NODE_GetNodeType(pNode)))
        return KORV_OK;
    return korv::AppendLeaf(*static_cast<LeafFillCtx *>(pstFill), pNode) == korv::LeafAppend::Done ? KORV_OK
                                                                                                   : KORV_FAIL;
}

uint32_t TELMYANG_FillLeafDataByNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst *pstInst,
                                     KorvTreeNode *pstNode)
{
    LeafNumCtx stCount = {};
    (void)QY_NODE_IterScanChildrenNode(pNode, TELMYANG_GetLeafChildNum, &stCount);
    if (stCount.uiCount == 0)
        return KORV_OK;
    pstNode->pstLeafList = VEC_VectorInit_F(pstLocal->ulModuleId, stCount.uiCount, __FILE__, __LINE__);
    if (pstNode->pstLeafList == nullptr) {
        KORV_LOG_ERROR(pstLocal, "VEC_VectorInit failed!");
        return KORV_FAIL;
    }
    LeafFillCtx stFill = {pstLocal, pstInst, pstNode, pstNode->pstLeafList};
    return QY_NODE_IterScanChildrenNode(pNode, TELMYANG_FillLeafDataByNodeCb, &stFill);
}
