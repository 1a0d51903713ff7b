/* Walking the leaf descriptors of a record's trees. */
#ifndef KORV_TREE_LEAVES_H
#define KORV_TREE_LEAVES_H

#include "telem_yang/telem_yang.h"

namespace korv {

inline bool IsSameName(const char *pcLeft, const char *pcRight)
{
    return pcLeft == pcRight || (pcLeft != nullptr && pcRight != nullptr && XUR_StrCmp(pcLeft, pcRight) == 0);
}

/* The node after this one in a chain of top nodes and everything below them; null at the end. */
inline KorvTreeNode *NextInTree(KorvTreeNode *pstNode)
{
    if (pstNode->pstFirstChild != nullptr)
        return pstNode->pstFirstChild;
    while (pstNode != nullptr && pstNode->pstNextSibling == nullptr)
        pstNode = pstNode->pstParent;
    return pstNode != nullptr ? pstNode->pstNextSibling : nullptr;
}

/* A visitor gets each descriptor that shows a schema node. */
template <typename Visit>
void VisitLeafList(const VEC_VECTOR_S *pstLeafList, Visit &visit)
{
    const uint32_t uiNum = pstLeafList != nullptr ? VEC_VectorCount(pstLeafList) : 0;
    for (uint32_t uiLoop = 0; uiLoop < uiNum; ++uiLoop) {
        auto *pstLeaf = static_cast<KorvTreeLeaf *>(pstLeafList->ppvItem[uiLoop]);
        if (pstLeaf != nullptr && pstLeaf->pYinNode != nullptr)
            visit(pstLeaf);
    }
}

template <typename Visit>
void VisitTree(KorvTreeNode *pstRoot, Visit &visit)
{
    for (KorvTreeNode *pstNode = pstRoot; pstNode != nullptr; pstNode = NextInTree(pstNode)) {
        VisitLeafList(pstNode->pstLeafList, visit);
        VisitLeafList(pstNode->pstCaseLeafList, visit);
    }
}

/* The leaves of one tree that are neither its record's own nor of the module that stays as long as the record. */
template <typename Visit>
void VisitOthers(KorvTreeNode *pstRoot, const char *pcOwn, const char *pcStays, Visit &visit)
{
    const char *pcKnown = pcStays; /* names are mostly the same text: this one was compared last, and stays */
    auto visitOther = [&](KorvTreeLeaf *pstLeaf) {
        const char *pcModule = pstLeaf->pcModuleName;
        if (pcModule == pcStays || pcModule == pcKnown)
            return;
        if (!IsSameName(pcModule, pcStays) && !IsSameName(pcModule, pcOwn))
            visit(pstLeaf);
        else
            pcKnown = pcModule;
    };
    VisitTree(pstRoot, visitOther);
}

/* The leaves that may go before the record. A target tree begins in the module that the augment's module imports. */
template <typename Visit>
void VisitForeignLeaves(TELMYANG_YANG_FILE_INFO_S *pstFile, Visit &visit)
{
    const char *const pcOwn = pstFile->pcModuleName;
    VisitOthers(pstFile->pstOriginTree, pcOwn, pcOwn, visit);
    for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
        const TELMYANG_AUGMENT_INFO_S &stAugment = pstFile->astAugment[uiLoop];
        if (stAugment.pstTargetTree != nullptr)
            VisitOthers(stAugment.pstTargetTree, pcOwn, stAugment.pstTargetTree->pcModuleName, visit);
        VisitOthers(stAugment.pstSelfTree, pcOwn, pcOwn, visit);
    }
}

} // namespace korv

#endif // KORV_TREE_LEAVES_H
