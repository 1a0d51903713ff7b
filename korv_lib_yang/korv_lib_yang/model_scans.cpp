/* What is loaded: modules, and the nodes and leaves of their trees. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang/record_trees.h"

namespace {

using korv::RecordTree;

bool IsSameNode(const KorvTreeNode *pstLeft, const KorvTreeNode *pstRight)
{
    return korv::IsSameName(pstLeft->pcName, pstRight->pcName) &&
           korv::IsSameName(pstLeft->pcModuleName, pstRight->pcModuleName);
}

bool IsInChain(const KorvTreeNode *pstTop, const KorvTreeNode *pstWanted)
{
    while (pstTop != nullptr && !IsSameNode(pstTop, pstWanted))
        pstTop = pstTop->pstNextSibling;
    return pstTop != nullptr;
}

/* Target trees of one module are copies of the same top nodes from one of them on: true for a top node that a target tree
 * of an earlier augment shows as well. pstFirst: the first top node of this tree. */
bool IsShownBefore(const RecordTree &stTree, const KorvTreeNode *pstFirst, const KorvTreeNode *pstTop)
{
    for (uint32_t uiLoop = 0; uiLoop < stTree.uiAugment; ++uiLoop) {
        const KorvTreeNode *pstEarlier = stTree.pstFile->astAugment[uiLoop].pstTargetTree;
        if (pstEarlier != nullptr &&
            (IsSameNode(pstEarlier, pstTop) || (pstTop == pstFirst && IsInChain(pstEarlier, pstTop))))
            return true;
    }
    return false;
}

/* True for a container or list with a class id that the one around it has not. */
bool BeginsClass(const KorvTreeNode *pstNode)
{
    if (pstNode->ucNodeType != KORV_NODE_ORDINARY || pstNode->uiClassId == 0)
        return false;
    const KorvTreeNode *pstAround = pstNode->pstParent;
    while (pstAround != nullptr && pstAround->ucNodeType != KORV_NODE_ORDINARY)
        pstAround = pstAround->pstParent;
    return pstAround == nullptr || pstAround->uiClassId != pstNode->uiClassId;
}

/* Counts the classes of a tree that are its module's own. */
void CountClasses(const RecordTree &stTree, uint32_t *puiNum)
{
    korv::OwnerCheck owner(stTree.pstFile);
    for (KorvTreeNode *pstNode = stTree.pstRoot; pstNode != nullptr; pstNode = korv::NextInTree(pstNode)) {
        const bool bTop = pstNode->pstParent == nullptr;
        if (bTop && stTree.uiTree == YANGLIB_TREE_TARGET && IsShownBefore(stTree, stTree.pstRoot, pstNode))
            return;
        if (BeginsClass(pstNode) && owner.IsOwn(pstNode->pcModuleName))
            ++*puiNum;
    }
}

/* What a self tree has stands in the target tree, too. */
uint32_t ClassNum(const TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    uint32_t uiNum = 0;
    (void)korv::VisitTreesOf(pstFile, [&uiNum](const RecordTree &stTree) {
        if (stTree.uiTree != YANGLIB_TREE_SELF)
            CountClasses(stTree, &uiNum);
        return 0u;
    });
    return uiNum;
}

uint32_t ScanLeafList(const VEC_VECTOR_S *pstList, YANGLIB_LEAF_PF pfnCb, void *pvCookie)
{
    const uint32_t uiNum = pstList != nullptr ? VEC_VectorCount(pstList) : 0;
    uint32_t uiRet = 0;
    for (uint32_t uiLoop = 0; uiRet == 0 && uiLoop < uiNum; ++uiLoop) {
        if (auto *pstLeaf = static_cast<KorvTreeLeaf *>(pstList->ppvItem[uiLoop]))
            uiRet = pfnCb(pstLeaf, pvCookie);
    }
    return uiRet;
}

} // namespace

uint32_t YANGLIB_ScanModules(TELMYANG_LOCAL_DATA_S *pstLocal, YANGLIB_MODULE_PF pfnCb, void *pvCookie)
{
    if (pstLocal == nullptr || pstLocal->pstYangCtx == nullptr || pfnCb == nullptr)
        return KORV_INVALID;
    TELMYANG_YANG_CTX_S *pstYangCtx = pstLocal->pstYangCtx;
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = korv::ListEnd(pstYangCtx);
    uint32_t uiRet = 0;
    for (auto *pstFile = pstYangCtx->stYangFileList.pstNext; uiRet == 0 && pstFile != pstEnd;
         pstFile = pstFile->pstNext) {
        const YANGLIB_MODULE_S stModule = {static_cast<uint32_t>(sizeof(YANGLIB_MODULE_S)),
                                           ClassNum(pstFile),
                                           pstFile->pcModuleName,
                                           pstFile->pcRevision,
                                           YANGLIB_GetYangRevision(pstLocal, pstFile->pcModuleName),
                                           pstFile};
        uiRet = pfnCb(&stModule, pvCookie);
    }
    return uiRet;
}

uint32_t YANGLIB_ScanTopNodes(const TELMYANG_YANG_FILE_INFO_S *pstFile, YANGLIB_PLACE_PF pfnCb, void *pvCookie)
{
    if (pstFile == nullptr || pfnCb == nullptr)
        return KORV_INVALID;
    return korv::VisitTreesOf(pstFile, [=](const RecordTree &stTree) {
        korv::OwnerCheck owner(stTree.pstFile);
        uint32_t uiRet = 0;
        for (KorvTreeNode *pstTop = stTree.pstRoot; uiRet == 0 && pstTop != nullptr; pstTop = pstTop->pstNextSibling) {
            const YANGLIB_PLACE_S stPlace = korv::PlaceOf(stTree, pstTop, &owner);
            uiRet = pfnCb(&stPlace, pvCookie);
        }
        return uiRet;
    });
}

uint32_t YANGLIB_ScanNodes(const KorvTreeNode *pstNode, YANGLIB_NODE_PF pfnCb, void *pvCookie)
{
    if (pstNode == nullptr || pfnCb == nullptr)
        return KORV_INVALID;
    uint32_t uiRet = 0;
    for (KorvTreeNode *pstChild = pstNode->pstFirstChild; uiRet == 0 && pstChild != nullptr;
         pstChild = pstChild->pstNextSibling)
        uiRet = pfnCb(pstChild, pvCookie);
    return uiRet;
}

uint32_t YANGLIB_ScanLeaves(const KorvTreeNode *pstNode, uint32_t uiWhich, YANGLIB_LEAF_PF pfnCb, void *pvCookie)
{
    if (pstNode == nullptr || pfnCb == nullptr)
        return KORV_INVALID;
    uint32_t uiRet = 0;
    if ((uiWhich & YANGLIB_LEAVES_DIRECT) != 0)
        uiRet = ScanLeafList(pstNode->pstLeafList, pfnCb, pvCookie);
    if (uiRet == 0 && (uiWhich & YANGLIB_LEAVES_CASES) != 0)
        uiRet = ScanLeafList(pstNode->pstCaseLeafList, pfnCb, pvCookie);
    return uiRet;
}
