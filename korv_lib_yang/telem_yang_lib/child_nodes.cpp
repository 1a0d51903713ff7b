/* Finding a node's first children, and counting the leaves under it. */
#include "telem_yang_lib/schema_nodes.h"

namespace {

using korv::GO_ON;
using korv::IsChoiceOrCase;
using korv::STOP;

bool IsEnabled(QY_NODE *pNode)
{
    return (QY_NODE_IsEnabled(pNode) & 1u) != 0;
}

/* Callers that count one of these kinds want the first visited node alone. */
bool StopsAtFirstNode(uint32_t uiWantedType)
{
    return uiWantedType == QY_NODE_TYPE_LEAF_LIST || uiWantedType == QY_NODE_TYPE_ANYXML ||
           uiWantedType == QY_NODE_TYPE_ANYDATA;
}

} // namespace

uint32_t TELMYANG_BSC_ImplFindYinFirstChildCb(QY_NODE *pNode, void *, void *ppNode)
{
    *static_cast<QY_NODE **>(ppNode) = pNode;
    return STOP;
}

uint32_t TELMYANG_BSC_ImplFindYinFirstNonLeafChildCb(QY_NODE *pNode, void *, void *ppNode)
{
    if (QY_NODE_GetNodeType(pNode) == QY_NODE_TYPE_LEAF)
        return GO_ON;
    *static_cast<QY_NODE **>(ppNode) = pNode;
    return STOP;
}

QY_NODE *TELMYANG_BSC_FindFirstChild(QY_NODE *pNode)
{
    QY_NODE *pChild = nullptr;
    (void)QY_NODE_IterScanChildrenNode(pNode, TELMYANG_BSC_ImplFindYinFirstChildCb, &pChild);
    return pChild;
}

QY_NODE *TELMYANG_BSC_FindFirstNonLeafChild(QY_NODE *pNode)
{
    QY_NODE *pChild = nullptr;
    (void)QY_NODE_IterScanChildrenNode(pNode, TELMYANG_BSC_ImplFindYinFirstNonLeafChildCb, &pChild);
    return pChild;
}

uint8_t TELMYANG_BSC_CountLeafNodeUnderInst(TELMYANG_LOCAL_DATA_S *, QY_NODE *pStart, uint32_t uiWantedType)
{
    LeafCountCtx stCount = {0, uiWantedType};
    (void)QY_NODE_IterScanSiblingNode(pStart, TELMYANG_LOADER_ImplCountLeafNodeUnderInstCb, &stCount);
    return static_cast<uint8_t>(stCount.uiCount < YIN_COUNT_MAX ? stCount.uiCount : YIN_COUNT_MAX);
}

uint32_t TELMYANG_LOADER_ImplCountLeafNodeUnderInstCb(QY_NODE *pNode, void *, void *pstCount)
{
    auto *pstCtx = static_cast<LeafCountCtx *>(pstCount);
    const uint32_t uiNodeType = QY_NODE_GetNodeType(pNode);
    if (uiNodeType == pstCtx->uiWantedType && IsEnabled(pNode))
        ++pstCtx->uiCount;
    else if (IsChoiceOrCase(uiNodeType))
        (void)TELMYANG_BSC_CountLeafNodeUnderChoiceCase(pNode, pstCtx);
    return StopsAtFirstNode(pstCtx->uiWantedType) ? STOP : GO_ON;
}

uint32_t TELMYANG_BSC_CountLeafNodeUnderChoiceCase(QY_NODE *pNode, LeafCountCtx *pstCount)
{
    return QY_NODE_IterScanChildrenNode(pNode, TELMYANG_LOADER_ImplCountLeafNodeUnderChoiceCaseCb, pstCount);
}

uint32_t TELMYANG_LOADER_ImplCountLeafNodeUnderChoiceCaseCb(QY_NODE *pNode, void *, void *pstCount)
{
    auto *pstCtx = static_cast<LeafCountCtx *>(pstCount);
    const uint32_t uiNodeType = QY_NODE_GetNodeType(pNode);
    if (IsChoiceOrCase(uiNodeType))
        (void)TELMYANG_BSC_CountLeafNodeUnderChoiceCase(pNode, pstCtx);
    else if (uiNodeType == QY_NODE_TYPE_LEAF && IsEnabled(pNode))
        ++pstCtx->uiCount;
    return GO_ON;
}
