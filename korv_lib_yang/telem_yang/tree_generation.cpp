/* Building a module's class trees from its schema nodes. */
#include "telem_yang/top_chain.h"
#include "telem_yang/tree_release.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/refusal.h"
#include "telem_yang_lib/schema_nodes.h"

namespace {

/* Releases a tree node with what it owns; its links are left alone. */
struct TreeNodeDelete {
    void operator()(KorvTreeNode *pstNode) const
    {
        TELMYANG_FreeKorvTreeNode(pstNode);
        korv::HostFree(pstNode);
    }
};
using TreeNodePtr = std::unique_ptr<KorvTreeNode, TreeNodeDelete>;

/* A generation scan that remembers the last child of the current parent, so that a node with many children is built
 * without walking their chain for each of them. */
struct TreeScan {
    KorvTreeGenCtx stGen;
    KorvTreeNode *pstTail;
    korv::TreeBudget *pBudget;
};

bool YieldsTreeNode(uint32_t uiNodeType)
{
    return uiNodeType == QY_NODE_TYPE_CONTAINER || uiNodeType == QY_NODE_TYPE_LIST ||
           uiNodeType == QY_NODE_TYPE_CHOICE || uiNodeType == QY_NODE_TYPE_CASE;
}

/* Links a node as last child of the parent; pstTail is the last child so far, or null when that is not known. */
uint32_t LinkChild(KorvTreeNode *pstParent, KorvTreeNode *pstTail, KorvTreeNode *pstNode)
{
    return pstTail != nullptr ? TELMYANG_AddKorvSiblingNode(pstTail, pstNode)
                              : TELMYANG_AddKorvChildNode(pstParent, pstNode);
}

uint32_t PlaceNode(KorvTreeGenCtx *pstGen, uint32_t uiTravType, KorvTreeNode *pstTail, TreeNodePtr pstNode)
{
    if (uiTravType == QY_TRAV_START) {
        pstGen->pstRoot = pstNode.release();
        return KORV_OK;
    }
    const uint32_t uiRet = LinkChild(pstGen->pstCurParent, pstTail, pstNode.get());
    if (uiRet == KORV_OK)
        TELEMYANG_ChoiceCaseUpdateClassId(pstNode.release());
    return uiRet;
}

/* Creates the tree node of a schema node. One that the load may not have any more is released. */
uint32_t CreateNode(QY_NODE *pNode, TELMYANG_LOCAL_DATA_S *pstLocal, korv::TreeBudget *pBudget, KorvTreeNode **ppstNode)
{
    const uint32_t uiRet = TELMYANG_CreateKorvTreeNodeByYinNode(pstLocal, pNode, ppstNode);
    if (*ppstNode == nullptr || pBudget->Take(*ppstNode))
        return uiRet;
    KORV_LOG_ERROR(pstLocal, "the trees of one load have more than %u nodes, leaf lists and leaves, node(%s)!",
                   korv::TREE_RECORDS_MAX, (*ppstNode)->pcName);
    korv::Refuse(pstLocal, {korv::Why::TreeSize, pNode, nullptr, nullptr, nullptr});
    TreeNodeDelete()(*ppstNode);
    *ppstNode = nullptr;
    return KORV_FAIL;
}

/* The tree node of one schema node. ppstTail: last child of the current parent, kept up to date, or null. */
uint32_t DupNode(QY_NODE *pNode, uint32_t uiTravType, KorvTreeGenCtx *pstGen, korv::TreeBudget *pBudget,
                 KorvTreeNode **ppstTail)
{
    if (ppstTail != nullptr && uiTravType == QY_TRAV_CHILD)
        *ppstTail = nullptr;
    if (ppstTail != nullptr && uiTravType == QY_TRAV_RETURN)
        *ppstTail = pstGen->pstCurParent;
    pstGen->pstCurParent =
        TELMYANG_UpdateLinkParentKorvNodeByTravType(pstGen->pstCurParent, // NOLINT(clang-analyzer-core.NullDereference)
                                                    pstGen->pstLastNode, uiTravType);
    if (uiTravType == QY_TRAV_RETURN)
        return KORV_OK;
    KorvTreeNode *pstNode = nullptr;
    const uint32_t uiRet = CreateNode(pNode, pstGen->pstLocal, pBudget, &pstNode);
    if (pstNode != nullptr) {
        KorvTreeNode *pstTail = ppstTail != nullptr ? *ppstTail : nullptr;
        const uint32_t uiLinkRet = PlaceNode(pstGen, uiTravType, pstTail, TreeNodePtr(pstNode));
        if (uiLinkRet != KORV_OK)
            return uiLinkRet;
        if (ppstTail != nullptr)
            *ppstTail = pstNode;
    }
    pstGen->pstLastNode = pstNode;
    return pstNode == nullptr && uiRet == KORV_OK ? KORV_TREE_SCAN_SKIP : uiRet;
}

uint32_t DupNodeCb(QY_NODE *pNode, uint32_t uiTravType, void *pvScan)
{
    auto *pstScan = static_cast<TreeScan *>(pvScan);
    return DupNode(pNode, uiTravType, &pstScan->stGen, pstScan->pBudget, &pstScan->pstTail);
}

uint32_t GenerateTopTreeCb(QY_NODE *pNode, void *, void *pstChain)
{
    return korv::GenerateTopTree(pNode, static_cast<korv::TopChain *>(pstChain));
}

} // namespace

KorvTreeNode *TELMYANG_UpdateLinkParentKorvNodeByTravType(KorvTreeNode *pstCurParent, KorvTreeNode *pstLastNode,
                                                          uint32_t uiTravType)
{
    switch (uiTravType) {
        case QY_TRAV_START:
            return nullptr;
        case QY_TRAV_CHILD:
            return pstLastNode;
        case QY_TRAV_RETURN:
            return pstCurParent != nullptr ? pstCurParent->pstParent : nullptr;
        default:
            return pstCurParent;
    }
}

uint32_t TELMYANG_CreateKorvTreeNodeByYinNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, KorvTreeNode **ppstNode)
{
    *ppstNode = nullptr;
    if (!YieldsTreeNode(QY_NODE_GetNodeType(pNode)))
        return KORV_OK;
    TreeNodePtr pstNode(korv::NewZeroed<KorvTreeNode>(pstLocal).release());
    if (!pstNode)
        return KORV_NO_MEMORY;
    if (TELMYANG_FillDataFromYangNode(pstLocal, pstNode.get(), pNode) != KORV_OK)
        return KORV_FAIL;
    *ppstNode = pstNode.release();
    return KORV_OK;
}

void TELEMYANG_ChoiceCaseUpdateClassId(KorvTreeNode *pstNode)
{
    if (pstNode->ucNodeType != KORV_NODE_ORDINARY && pstNode->pstParent != nullptr)
        pstNode->uiClassId = pstNode->pstParent->uiClassId;
}

uint32_t TELMYANG_DupOneKorvTreeNode(QY_NODE *pNode, uint32_t uiTravType, void *pstGen)
{
    korv::TreeBudget budget;
    return DupNode(pNode, uiTravType, static_cast<KorvTreeGenCtx *>(pstGen), &budget, nullptr);
}

uint32_t korv::GenerateTopTree(QY_NODE *pNode, TopChain *pstChain)
{
    TELMYANG_LOCAL_DATA_S *pstLocal = pstChain->pstGen->pstLocal;
    const uint32_t uiNodeType = QY_NODE_GetNodeType(pNode);
    if (uiNodeType != QY_NODE_TYPE_CONTAINER && uiNodeType != QY_NODE_TYPE_AUGMENT)
        return KORV_OK;
    TreeScan stScan = {};
    stScan.stGen.pstLocal = pstLocal;
    stScan.pBudget = pstChain->pBudget;
    const uint32_t uiRet = QY_NODE_TreeScanAllNode(pNode, DupNodeCb, &stScan);
    KorvTreeNode *pstTop = stScan.stGen.pstRoot;
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Fill Data From Yang Node(%s) return 0x%x!", NameOf(pNode), uiRet);
        (void)korv::ReleaseTree(pstLocal, pstTop);
        return KORV_FAIL;
    }
    if (pstTop != nullptr)
        AppendTopNode(pstChain, pstTop);
    return KORV_OK;
}

uint32_t TELMYANG_GenerateKorvTreeNodes(QY_NODE *pNode, void *, void *pstGen)
{
    korv::TreeBudget budget;
    korv::TopChain stChain = {static_cast<KorvTreeGenCtx *>(pstGen), &budget, nullptr};
    return korv::GenerateTopTree(pNode, &stChain);
}

uint32_t korv::GenerateOriginTree(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile, QY_MOD *pMod,
                                  TreeBudget *pBudget)
{
    KorvTreeGenCtx stGen = {};
    stGen.pstLocal = pstLocal;
    TopChain stChain = {&stGen, pBudget, nullptr};
    const uint32_t uiRet = QY_MOD_IterScanTopmostNode(pMod, GenerateTopTreeCb, &stChain);
    pstFile->pstOriginTree = stGen.pstRoot;
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "DupYangtree failed!");
        return KORV_FAIL;
    }
    return KORV_OK;
}

uint32_t TELEMYANG_GenerateOriginTree(TELMYANG_LOCAL_DATA_S *pstLocal, const char *, const char *,
                                      TELMYANG_YANG_FILE_INFO_S *pstFile, QY_MOD *pMod)
{
    korv::TreeBudget budget;
    return korv::GenerateOriginTree(pstLocal, pstFile, pMod, &budget);
}
