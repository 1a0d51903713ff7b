/* Linking tree nodes, and releasing what a single one owns. */
#include "telem_yang/telem_yang.h"
#include "telem_yang_lib/host_memory.h"

namespace {

KorvTreeNode *LastOfChain(KorvTreeNode *pstNode)
{
    while (pstNode->pstNextSibling != nullptr)
        pstNode = pstNode->pstNextSibling;
    return pstNode;
}

} // namespace

uint32_t TELMYANG_AddKorvChildNode(KorvTreeNode *pstParent, KorvTreeNode *pstChild)
{
    if (pstParent == nullptr || pstChild == nullptr)
        return KORV_INVALID;
    pstChild->pstParent = pstParent;
    pstChild->pstNextSibling = nullptr;
    if (pstParent->pstFirstChild == nullptr)
        pstParent->pstFirstChild = pstChild;
    else
        LastOfChain(pstParent->pstFirstChild)->pstNextSibling = pstChild;
    return KORV_OK;
}

uint32_t TELMYANG_AddKorvSiblingNode(KorvTreeNode *pstNode, KorvTreeNode *pstNew)
{
    if (pstNode == nullptr || pstNew == nullptr)
        return KORV_INVALID;
    pstNew->pstParent = pstNode->pstParent;
    pstNew->pstNextSibling = nullptr;
    LastOfChain(pstNode)->pstNextSibling = pstNew;
    return KORV_OK;
}

void TELMYANG_FreeKorvTreeNode(KorvTreeNode *pstNode)
{
    if (pstNode->pstLeafList != nullptr)
        (void)TLMTLIB_FreeLeafList_(pstNode->pstLeafList);
    pstNode->pstLeafList = nullptr;
    if (pstNode->pstCaseLeafList != nullptr)
        (void)TLMTLIB_FreeLeafList_(pstNode->pstCaseLeafList);
    pstNode->pstCaseLeafList = nullptr;
    korv::HostFree(pstNode->pcName);
    pstNode->pcName = nullptr;
}

uint32_t TLMTLIB_FreeLeafList_(VEC_VECTOR_S *pstLeafList)
{
    for (uint32_t uiLoop = 0; uiLoop < VEC_VectorCount(pstLeafList); ++uiLoop) {
        auto *pstLeaf = static_cast<KorvTreeLeaf *>(pstLeafList->ppvItem[uiLoop]);
        if (pstLeaf == nullptr)
            continue;
        korv::HostFree(pstLeaf->pcName);
        korv::HostFree(pstLeaf);
        pstLeafList->ppvItem[uiLoop] = nullptr;
    }
    return VEC_VectorFree_F(pstLeafList);
}
