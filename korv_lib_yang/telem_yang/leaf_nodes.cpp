/* Keeping leaf descriptors from pointing at released schema nodes. Each node's private slot points back at one descriptor
 * while a module is unloaded; further descriptors of the same node point at that one instead of the node. Both kinds of
 * pointer are marked by their lowest bit, which no record and no node has set. */
#include "telem_yang/leaf_nodes.h"

#include "telem_yang/file_list.h"

namespace {

constexpr uintptr_t MARK = 1;

bool IsMarked(const void *pvAny)
{
    return (reinterpret_cast<uintptr_t>(pvAny) & MARK) != 0;
}

void *Marked(KorvTreeLeaf *pstLeaf)
{
    return reinterpret_cast<void *>(reinterpret_cast<uintptr_t>(pstLeaf) | MARK);
}

KorvTreeLeaf *Unmarked(void *pvMarked)
{
    return reinterpret_cast<KorvTreeLeaf *>(reinterpret_cast<uintptr_t>(pvMarked) & ~MARK);
}

using LeafVisit = void (*)(KorvTreeLeaf *pstLeaf);

void VisitLeafList(const VEC_VECTOR_S *pstLeafList, LeafVisit pfnVisit)
{
    const uint32_t uiNum = pstLeafList != nullptr ? VEC_VectorCount(pstLeafList) : 0;
    for (uint32_t uiLoop = 0; uiLoop < uiNum; ++uiLoop) {
        auto *pstLeaf = static_cast<KorvTreeLeaf *>(pstLeafList->ppvItem[uiLoop]);
        if (pstLeaf != nullptr && pstLeaf->pYinNode != nullptr)
            pfnVisit(pstLeaf);
    }
}

/* The node after this one in a chain of top nodes and everything below them; null at the end. */
KorvTreeNode *NextInTree(KorvTreeNode *pstNode)
{
    if (pstNode->pstFirstChild != nullptr)
        return pstNode->pstFirstChild;
    while (pstNode != nullptr && pstNode->pstNextSibling == nullptr)
        pstNode = pstNode->pstParent;
    return pstNode != nullptr ? pstNode->pstNextSibling : nullptr;
}

void VisitTree(KorvTreeNode *pstRoot, LeafVisit pfnVisit)
{
    for (KorvTreeNode *pstNode = pstRoot; pstNode != nullptr; pstNode = NextInTree(pstNode)) {
        VisitLeafList(pstNode->pstLeafList, pfnVisit);
        VisitLeafList(pstNode->pstCaseLeafList, pfnVisit);
    }
}

void VisitAllTrees(TELMYANG_LOCAL_DATA_S *pstLocal, LeafVisit pfnVisit)
{
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = korv::ListEnd(pstLocal->pstYangCtx);
    for (auto *pstFile = pstLocal->pstYangCtx->stYangFileList.pstNext; pstFile != pstEnd; pstFile = pstFile->pstNext) {
        VisitTree(pstFile->pstOriginTree, pfnVisit);
        for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
            VisitTree(pstFile->astAugment[uiLoop].pstTargetTree, pfnVisit);
            VisitTree(pstFile->astAugment[uiLoop].pstSelfTree, pfnVisit);
        }
    }
}

void Watch(KorvTreeLeaf *pstLeaf)
{
    void *pvPrivate = QY_NODE_GetPrivate(pstLeaf->pYinNode);
    if (pvPrivate == nullptr)
        QY_NODE_SetPrivate(pstLeaf->pYinNode, Marked(pstLeaf));
    else if (IsMarked(pvPrivate))
        pstLeaf->pYinNode = static_cast<QY_NODE *>(pvPrivate);
}

/* Descriptors that share a node first: the one that they point at must still be marked in its node. */
void SettleSharer(KorvTreeLeaf *pstLeaf)
{
    if (IsMarked(pstLeaf->pYinNode))
        pstLeaf->pYinNode = Unmarked(pstLeaf->pYinNode)->pYinNode;
}

void SettleHolder(KorvTreeLeaf *pstLeaf)
{
    if (IsMarked(QY_NODE_GetPrivate(pstLeaf->pYinNode)))
        QY_NODE_SetPrivate(pstLeaf->pYinNode, nullptr);
}

} // namespace

korv::LeafNodeWatch::LeafNodeWatch(TELMYANG_LOCAL_DATA_S *pstLocal) : m_pstLocal(pstLocal)
{
    VisitAllTrees(pstLocal, Watch);
}

korv::LeafNodeWatch::~LeafNodeWatch()
{
    VisitAllTrees(m_pstLocal, SettleSharer);
    VisitAllTrees(m_pstLocal, SettleHolder);
}

bool korv::ReleaseWatchedNode(QY_NODE *pNode, void *pvPrivate)
{
    if (!IsMarked(pvPrivate))
        return false;
    Unmarked(pvPrivate)->pYinNode = nullptr;
    QY_NODE_SetPrivate(pNode, nullptr);
    return true;
}
