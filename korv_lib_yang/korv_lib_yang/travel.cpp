/* Walking a class tree with the host's callbacks, by following the tree's own links. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang_lib/log.h"

namespace {

bool IsComplete(const YangPathRequest *pstRequest)
{
    return pstRequest != nullptr && pstRequest->pcModuleName != nullptr && pstRequest->pcPath != nullptr &&
           pstRequest->pcXpathMain != nullptr;
}

/* The node after pstNode below pstStart, parents first; null at the end. */
KorvTreeNode *NextBelow(const KorvTreeNode *pstStart, KorvTreeNode *pstNode)
{
    if (pstNode->pstFirstChild != nullptr)
        return pstNode->pstFirstChild;
    while (pstNode->pstNextSibling == nullptr) {
        pstNode = pstNode->pstParent;
        if (pstNode == nullptr || pstNode == pstStart)
            return nullptr;
    }
    return pstNode->pstNextSibling != pstStart ? pstNode->pstNextSibling : nullptr;
}

} // namespace

uint32_t YANGLIB_TravelParentNode_(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstTreeNode, void *pUserData,
                                   YANGLIB_TRAVEL_PF pfnParentCb)
{
    if (pfnParentCb == nullptr)
        return KORV_OK;
    for (KorvTreeNode *pstNode = pstTreeNode->pstParent; pstNode != nullptr; pstNode = pstNode->pstParent) {
        const uint32_t uiRet = pfnParentCb(pUserData, pstNode);
        if (uiRet != 0) {
            KORV_LOG_ERROR(pstLocal, "Parent node error, return(%d) name(%s)!", static_cast<int>(uiRet),
                           korv::Shown(pstNode->pcName));
            return uiRet;
        }
    }
    return KORV_OK;
}

uint32_t YANGLIB_TravelYangModuleSubTree(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstTreeNode, void *pUserData,
                                         YANGLIB_TRAVEL_PF pfnParentCb, YANGLIB_TRAVEL_PF pfnNodeCb)
{
    if (pstTreeNode == nullptr || pfnNodeCb == nullptr)
        return KORV_FAIL;
    uint32_t uiRet = YANGLIB_TravelParentNode_(pstLocal, pstTreeNode, pUserData, pfnParentCb);
    if (uiRet != 0)
        return uiRet;
    uiRet = pfnNodeCb(pUserData, pstTreeNode);
    if (uiRet != 0) {
        KORV_LOG_ERROR(pstLocal, "Self node error, return(%d) name(%s)!", static_cast<int>(uiRet),
                       korv::Shown(pstTreeNode->pcName));
        return uiRet;
    }
    KorvTreeNode *pstNode = pstTreeNode->pstFirstChild != pstTreeNode ? pstTreeNode->pstFirstChild : nullptr;
    for (; pstNode != nullptr; pstNode = NextBelow(pstTreeNode, pstNode)) {
        uiRet = pfnNodeCb(pUserData, pstNode);
        if (uiRet != 0) {
            KORV_LOG_ERROR(pstLocal, "Son node error, return(%d) name(%s)!", static_cast<int>(uiRet),
                           korv::Shown(pstNode->pcName));
            return uiRet;
        }
    }
    return KORV_OK;
}

uint32_t YANGLIB_TravelYangModule(TELMYANG_LOCAL_DATA_S *pstLocal, const YangPathRequest *pstRequest, void *pUserData,
                                  YANGLIB_TRAVEL_PF pfnParentCb, YANGLIB_TRAVEL_PF pfnNodeCb)
{
    if (!IsComplete(pstRequest) || pfnNodeCb == nullptr)
        return KORV_TRAVEL_NOT_FOUND;
    const YangXpathLookup stLookup = {pstLocal,
                                      pstRequest->pcModuleName,
                                      pstRequest->pcRevision,
                                      pstRequest->pcPath,
                                      pstRequest->pcXpathMain,
                                      XUR_StrLen(pstRequest->pcPath),
                                      XUR_StrLen(pstRequest->pcXpathMain)};
    KorvTreeNode *pstNode = TELMYANG_KorvFindTreeNodeByXpath(&stLookup);
    if (pstNode == nullptr) {
        KORV_LOG_ERROR(pstLocal, "Find Tree Node By Xpath failed, name(%s) pcPath(%s)pcXpathMain(%s)!",
                       pstRequest->pcModuleName, pstRequest->pcPath, pstRequest->pcXpathMain);
        pstNode = TELMYANG_KorvFindTreeNodeByLeafXpath(pstLocal, pstRequest->pcModuleName, pstRequest->pcRevision,
                                                       pstRequest->pcPath, pstRequest->pcXpathMain);
    }
    if (pstNode == nullptr)
        return KORV_TRAVEL_NOT_FOUND;
    return YANGLIB_TravelYangModuleSubTree(pstLocal, pstNode, pUserData, pfnParentCb, pfnNodeCb);
}
