/* The trees of a module's augments: the tree that an augment extends, and the nodes that it adds. */
#include "telem_yang/top_chain.h"
#include "telem_yang/tree_release.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/schema_nodes.h"

namespace {

using korv::GO_ON;
using korv::NameOf;
using korv::STOP;

/* Builds the tree of one node of a sibling scan; STOP at the stop node or with a failure. */
uint32_t GenerateSibling(QY_NODE *pNode, korv::TopChain *pstChain)
{
    const KorvTreeGenCtx *pstGen = pstChain->pstGen;
    KorvTreeGenCtx stNew = {};
    stNew.pstLocal = pstGen->pstLocal;
    korv::TopChain stNewChain = {&stNew, pstChain->pBudget, nullptr};
    if (korv::GenerateTopTree(pNode, &stNewChain) != KORV_OK) {
        KORV_LOG_ERROR(pstGen->pstLocal, "DupYangtree child failed, node(%s)!", NameOf(pNode));
        return STOP;
    }
    if (stNew.pstRoot != nullptr)
        korv::AppendTopNode(pstChain, stNew.pstRoot);
    /* The augment's last child ends its self tree, whether or not it has a tree: what follows is not the augment's. */
    return pstGen->pStopNode == pNode ? STOP : GO_ON;
}

uint32_t GenerateSiblingCb(QY_NODE *pNode, void *, void *pstChain)
{
    return GenerateSibling(pNode, static_cast<korv::TopChain *>(pstChain));
}

uint32_t GenerateTargetTrees(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile,
                             korv::TreeBudget *pBudget)
{
    for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
        TELMYANG_AUGMENT_INFO_S *pstAugment = &pstFile->astAugment[uiLoop];
        QY_NODE *pRoot = pstAugment->pTargetParentRoot;
        if (pRoot == nullptr)
            continue;
        KorvTreeGenCtx stGen = {};
        stGen.pstLocal = pstLocal;
        korv::TopChain stChain = {&stGen, pBudget, nullptr};
        if (QY_NODE_IterScanSiblingNode(pRoot, GenerateSiblingCb, &stChain) != 0) {
            KORV_LOG_ERROR(pstLocal, "DupYangtree target failed,uiLoop(%u) node(%s)!", uiLoop, NameOf(pRoot));
            (void)korv::ReleaseTree(pstLocal, stGen.pstRoot);
            return KORV_FAIL;
        }
        pstAugment->pstTargetTree = stGen.pstRoot;
    }
    return KORV_OK;
}

/* Ends early when the budget is spent. */
void GenerateSelfTrees(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile, korv::TreeBudget *pBudget)
{
    for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum && !pBudget->IsSpent(); ++uiLoop) {
        TELMYANG_AUGMENT_INFO_S *pstAugment = &pstFile->astAugment[uiLoop];
        if (pstAugment->pFirstChild == nullptr)
            continue;
        KorvTreeGenCtx stGen = {};
        stGen.pstLocal = pstLocal;
        stGen.pStopNode = TELMYANG_GetAugNodeLastChild(pstAugment->pAugNode);
        korv::TopChain stChain = {&stGen, pBudget, nullptr};
        /* Nonzero at the stop node as well as at a node that failed, which has been logged. */
        (void)QY_NODE_IterScanSiblingNode(pstAugment->pFirstChild, GenerateSiblingCb, &stChain);
        pstAugment->pstSelfTree = stGen.pstRoot;
        pstAugment->uiSelfTreeDone = 1;
    }
}

} // namespace

uint32_t TELEMYANG_GetAugmentNum(QY_NODE *, void *, void *puiCount)
{
    ++*static_cast<uint32_t *>(puiCount);
    return GO_ON;
}

uint32_t TELMYANG_ImplGetAugNodeLastChildCb(QY_NODE *pNode, void *, void *ppNode)
{
    *static_cast<QY_NODE **>(ppNode) = pNode;
    return GO_ON;
}

QY_NODE *TELMYANG_GetAugNodeLastChild(QY_NODE *pNode)
{
    QY_NODE *pLast = nullptr;
    (void)QY_NODE_IterScanChildrenNode(pNode, TELMYANG_ImplGetAugNodeLastChildCb, &pLast);
    return pLast;
}

uint32_t TELMYANG_GenerateKorvSiblingTreeNodes(QY_NODE *pNode, void *, void *pstGen)
{
    korv::TreeBudget budget;
    korv::TopChain stChain = {static_cast<KorvTreeGenCtx *>(pstGen), &budget, nullptr};
    return GenerateSibling(pNode, &stChain);
}

uint32_t TELEMYANG_AugmentDupTargetYangtree(TELMYANG_LOCAL_DATA_S *pstLocal, const char *, const char *,
                                            TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    korv::TreeBudget budget;
    return GenerateTargetTrees(pstLocal, pstFile, &budget);
}

uint32_t TELEMYANG_AugmentDupSelfYangtree(TELMYANG_LOCAL_DATA_S *pstLocal, const char *, const char *,
                                          TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    korv::TreeBudget budget;
    GenerateSelfTrees(pstLocal, pstFile, &budget);
    return KORV_OK;
}

uint32_t korv::GenerateAugmentTrees(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile, QY_MOD *pMod,
                                    TreeBudget *pBudget)
{
    uint32_t uiAugmentNum = 0;
    (void)QY_MOD_IterScanAugmentNode(pMod, TELEMYANG_GetAugmentNum, &uiAugmentNum);
    if (uiAugmentNum == 0) {
        KORV_LOG_INFO(pstLocal, "augment null,size(%u)!", uiAugmentNum);
        return KORV_OK;
    }
    if (GenerateTargetTrees(pstLocal, pstFile, pBudget) != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "DupYangtree target failed!");
        return KORV_FAIL;
    }
    /* A self tree that ends before a node that cannot be copied is no failure; one that the limit ends is. */
    GenerateSelfTrees(pstLocal, pstFile, pBudget);
    return pBudget->IsSpent() ? KORV_FAIL : KORV_OK;
}

uint32_t TELEMYANG_GenerateAugmentTree(TELMYANG_LOCAL_DATA_S *pstLocal, const char *, const char *,
                                       TELMYANG_YANG_FILE_INFO_S *pstFile, QY_MOD *pMod)
{
    korv::TreeBudget budget;
    return korv::GenerateAugmentTrees(pstLocal, pstFile, pMod, &budget);
}
