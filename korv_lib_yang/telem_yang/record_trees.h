/* Where a tree node stands: the trees of the registry's records in the order in which hosts see them. */
#ifndef KORV_RECORD_TREES_H
#define KORV_RECORD_TREES_H

#include "telem_yang/file_list.h"
#include "telem_yang/tree_leaves.h"

namespace korv {

/* One tree of a record: a chain of top nodes, or null. */
struct RecordTree {
    const TELMYANG_YANG_FILE_INFO_S *pstFile;
    KorvTreeNode *pstRoot;
    uint32_t uiTree; /* YANGLIB_TREE_ */
    uint32_t uiAugment;
};

/* Calls the visitor for each tree of a record until it answers nonzero, which is the result. */
template <typename Visit>
uint32_t VisitTreesOf(const TELMYANG_YANG_FILE_INFO_S *pstFile, Visit &&visit)
{
    uint32_t uiRet = visit(RecordTree{pstFile, pstFile->pstOriginTree, YANGLIB_TREE_OWN, 0});
    for (uint32_t uiLoop = 0; uiRet == 0 && uiLoop < pstFile->ucAugmentNum; ++uiLoop)
        uiRet = visit(RecordTree{pstFile, pstFile->astAugment[uiLoop].pstTargetTree, YANGLIB_TREE_TARGET, uiLoop});
    for (uint32_t uiLoop = 0; uiRet == 0 && uiLoop < pstFile->ucAugmentNum; ++uiLoop)
        uiRet = visit(RecordTree{pstFile, pstFile->astAugment[uiLoop].pstSelfTree, YANGLIB_TREE_SELF, uiLoop});
    return uiRet;
}

/* The same for all records of the registry, in the order of their loads. */
template <typename Visit>
uint32_t VisitAllTrees(TELMYANG_YANG_CTX_S *pstYangCtx, Visit &&visit)
{
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = ListEnd(pstYangCtx);
    uint32_t uiRet = 0;
    for (auto *pstFile = pstYangCtx->stYangFileList.pstNext; uiRet == 0 && pstFile != pstEnd;
         pstFile = pstFile->pstNext)
        uiRet = VisitTreesOf(pstFile, visit);
    return uiRet;
}

/* Names of a module mostly are the same text: the one that was compared last is kept with its answer. */
class OwnerCheck {
  public:
    explicit OwnerCheck(const TELMYANG_YANG_FILE_INFO_S *pstFile) : m_pcOwn(pstFile->pcModuleName) {}

    bool IsOwn(const char *pcModuleName)
    {
        if (pcModuleName != m_pcLast || pcModuleName == nullptr) {
            m_pcLast = pcModuleName;
            m_bOwn = IsSameName(pcModuleName, m_pcOwn);
        }
        return m_bOwn;
    }

  private:
    const char *m_pcOwn;
    const char *m_pcLast = nullptr;
    bool m_bOwn = false;
};

inline YANGLIB_PLACE_S PlaceOf(const RecordTree &stTree, KorvTreeNode *pstNode, OwnerCheck *pOwner)
{
    return {static_cast<uint32_t>(sizeof(YANGLIB_PLACE_S)), stTree.uiTree, stTree.uiAugment,
            pOwner->IsOwn(pstNode->pcModuleName) ? 1u : 0u, pstNode,       stTree.pstFile};
}

} // namespace korv

#endif // KORV_RECORD_TREES_H
