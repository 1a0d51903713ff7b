/* The trees of a module's augments: the tree that an augment extends, and the nodes that it adds. */
#include "telem_yang/top_chain.h"
#include "telem_yang_lib/log.h"

namespace {

constexpr uint32_t GO_ON = 0;
constexpr uint32_t STOP = 1;

const char *NameOf(QY_NODE *pNode)
{
    return korv::Shown(QY_NODE_GetNodeName(pNode));
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
    auto *pstChain = static_cast<KorvTreeGenCtx *>(pstGen);
    KorvTreeGenCtx stNew = {};
    stNew.pstLocal = pstChain->pstLocal;
    if (TELMYANG_GenerateKorvTreeNodes(pNode, nullptr, &stNew) != KORV_OK) {
        KORV_LOG_ERROR(pstChain->pstLocal, "DupYangtree child failed, node(%s)!", NameOf(pNode));
        return STOP;
    }
    if (stNew.pstRoot != nullptr)
        korv::AppendTopNode(pstChain, stNew.pstRoot);
    /* The augment's last child ends its self tree, whether or not it has a tree: what follows is not the augment's. */
    return pstChain->pStopNode == pNode ? STOP : GO_ON;
}

uint32_t TELEMYANG_AugmentDupTargetYangtree(TELMYANG_LOCAL_DATA_S *pstLocal, const char *, const char *,
                                            TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
        TELMYANG_AUGMENT_INFO_S *pstAugment = &pstFile->astAugment[uiLoop];
        QY_NODE *pRoot = pstAugment->pTargetParentRoot;
        if (pRoot == nullptr)
            continue;
        KorvTreeGenCtx stGen = {};
        stGen.pstLocal = pstLocal;
        if (QY_NODE_IterScanSiblingNode(pRoot, TELMYANG_GenerateKorvSiblingTreeNodes, &stGen) != 0) {
            KORV_LOG_ERROR(pstLocal, "DupYangtree target failed,uiLoop(%u) node(%s)!", uiLoop, NameOf(pRoot));
            (void)TELMYANG_FreeYangtreeAllNodes(pstLocal, stGen.pstRoot);
            return KORV_FAIL;
        }
        pstAugment->pstTargetTree = stGen.pstRoot;
    }
    return KORV_OK;
}

uint32_t TELEMYANG_AugmentDupSelfYangtree(TELMYANG_LOCAL_DATA_S *pstLocal, const char *, const char *,
                                          TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
        TELMYANG_AUGMENT_INFO_S *pstAugment = &pstFile->astAugment[uiLoop];
        if (pstAugment->pFirstChild == nullptr)
            continue;
        KorvTreeGenCtx stGen = {};
        stGen.pstLocal = pstLocal;
        stGen.pStopNode = TELMYANG_GetAugNodeLastChild(pstAugment->pAugNode);
        /* Nonzero at the stop node as well as at a node that failed, which has been logged. */
        (void)QY_NODE_IterScanSiblingNode(pstAugment->pFirstChild, TELMYANG_GenerateKorvSiblingTreeNodes, &stGen);
        pstAugment->pstSelfTree = stGen.pstRoot;
        pstAugment->uiSelfTreeDone = 1;
    }
    return KORV_OK;
}

uint32_t TELEMYANG_GenerateAugmentTree(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                       const char *pcRevision, TELMYANG_YANG_FILE_INFO_S *pstFile, QY_MOD *pMod)
{
    uint32_t uiAugmentNum = 0;
    (void)QY_MOD_IterScanAugmentNode(pMod, TELEMYANG_GetAugmentNum, &uiAugmentNum);
    if (uiAugmentNum == 0) {
        KORV_LOG_INFO(pstLocal, "augment null,size(%u)!", uiAugmentNum);
        return KORV_OK;
    }
    if (TELEMYANG_AugmentDupTargetYangtree(pstLocal, pcModuleName, pcRevision, pstFile) != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "DupYangtree target failed!");
        return KORV_FAIL;
    }
    return TELEMYANG_AugmentDupSelfYangtree(pstLocal, pcModuleName, pcRevision, pstFile);
}
