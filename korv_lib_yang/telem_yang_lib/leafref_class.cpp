/* Leafref source classes: a class that carries nothing but its class type takes over the statements of its first child
 * class, and its leafref leaves those of the leaves that they refer to. */
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/refusal.h"
#include "telem_yang_lib/schema_nodes.h"

namespace {

using korv::NameOf;

constexpr char CLASS_TYPE_LEAFREF[] = "leafref";
constexpr char CLASS_TYPE_LEAFREF_TARGET[] = "leafref-target";
constexpr uint32_t TARGET_AS_DECLARED = 0;

} // namespace

uint32_t TELMYANG_BSC_ParseNodeClassTypeExt(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst *pstInst,
                                            const char *pcClassType)
{
    if (pcClassType == nullptr) {
        korv::Refuse(pstLocal, {korv::Why::ClassTypeUnknown, pNode, nullptr, nullptr, nullptr});
        return KORV_FAIL;
    }
    if (XUR_StrCmp(pcClassType, CLASS_TYPE_LEAFREF_TARGET) == 0) {
        pstInst->ucClassType = YIN_CLASS_LEAFREF_TARGET;
        return KORV_OK;
    }
    if (XUR_StrCmp(pcClassType, CLASS_TYPE_LEAFREF) != 0) {
        KORV_LOG_ERROR(pstLocal, "class-type do not support %s", pcClassType);
        korv::Refuse(pstLocal, {korv::Why::ClassTypeUnknown, pNode, nullptr, pcClassType, nullptr});
        return KORV_FAIL;
    }
    const uint32_t uiRet = TELMYANG_BSC_CheckLeafrefClassTypeExtension(pstLocal, pNode);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Check leafref node return 0x%x", uiRet);
        return uiRet;
    }
    pstInst->ucClassType = YIN_CLASS_LEAFREF;
    return TELMYANG_BSC_AutoFillLeafrefNodeExtInst(pstLocal, pNode, pstInst);
}

uint32_t TELMYANG_BSC_CheckLeafrefClassTypeExtension(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode)
{
    if (TELMYANG_BSC_IsYinNodeMimExtNumOnlyOne(pNode) == 0) {
        KORV_LOG_ERROR(pstLocal,
                       "The leafref source class %s can only have mimext:class-type, need remove other mimext",
                       NameOf(pNode));
        korv::Refuse(pstLocal, {korv::Why::ClassTypeNotAlone, pNode, nullptr, nullptr, nullptr});
        return KORV_FAIL;
    }
    if (TELMYANG_BSC_FindFirstNonLeafChild(pNode) == nullptr) {
        KORV_LOG_ERROR(pstLocal, "Leafref source class %s must have a child class", NameOf(pNode));
        korv::Refuse(pstLocal, {korv::Why::ClassTypeNoChildClass, pNode, nullptr, nullptr, nullptr});
        return KORV_FAIL;
    }
    LeafrefCheckCtx stCheck = {pstLocal, pNode};
    return QY_NODE_IterScanChildrenNode(pNode, TELMYANG_BSC_ImplCheckAllLeafWithLeafrefAndNoMim, &stCheck);
}

uint32_t TELMYANG_BSC_ImplCheckAllLeafWithLeafrefAndNoMim(QY_NODE *pNode, void *, void *pstCheck)
{
    auto *pstCtx = static_cast<LeafrefCheckCtx *>(pstCheck);
    if (QY_NODE_GetNodeType(pNode) != QY_NODE_TYPE_LEAF)
        return KORV_OK;
    if (QY_NODE_GetLeafrefTargetNode(pNode, TARGET_AS_DECLARED) == nullptr) {
        KORV_LOG_ERROR(pstCtx->pstLocal, "Attr %s under %s is not with type leafref", NameOf(pNode),
                       NameOf(pstCtx->pClassNode));
        korv::Refuse(pstCtx->pstLocal, {korv::Why::ClassTypeNoLeafref, pstCtx->pClassNode, pNode, nullptr, nullptr});
        return KORV_FAIL;
    }
    if (TELMYANG_BSC_IsYinNodeMimExtNumOnlyZero(pNode) == 0) {
        KORV_LOG_ERROR(pstCtx->pstLocal, "Attr %s under %s with type leafref, should have no mimext", NameOf(pNode),
                       NameOf(pstCtx->pClassNode));
        korv::Refuse(pstCtx->pstLocal,
                     {korv::Why::ClassTypeLeafStatements, pstCtx->pClassNode, pNode, nullptr, nullptr});
        return KORV_FAIL;
    }
    return KORV_OK;
}

uint32_t TELMYANG_BSC_AutoFillLeafrefNodeExtInst(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst *)
{
    QY_NODE *pChild = TELMYANG_BSC_FindFirstNonLeafChild(pNode);
    if (pChild == nullptr) {
        KORV_LOG_ERROR(pstLocal, "The leafref source class %s already checked, have child class", NameOf(pNode));
        return KORV_FAIL;
    }
    if (QY_NODE_ReplaceDstExtInst(pNode, pChild) != 0) {
        KORV_LOG_ERROR(pstLocal, "Leafref source class %s dup ext-inst from %s fail", NameOf(pNode), NameOf(pChild));
        return KORV_FAIL;
    }
    return QY_NODE_IterScanChildrenNode(pNode, TELMYANG_BSC_ImplLeafrefNodeExtInstUpdateCb, pstLocal);
}

uint32_t TELMYANG_BSC_ImplLeafrefNodeExtInstUpdateCb(QY_NODE *pNode, void *, void *pstLocal)
{
    auto *pstInstance = static_cast<TELMYANG_LOCAL_DATA_S *>(pstLocal);
    if (QY_NODE_GetNodeType(pNode) != QY_NODE_TYPE_LEAF)
        return KORV_OK;
    QY_NODE *pTarget = QY_NODE_GetLeafrefTargetNode(pNode, TARGET_AS_DECLARED);
    if (pTarget == nullptr) {
        KORV_LOG_ERROR(pstInstance, "The leafref attr %s dup ext-inst fail to find target node", NameOf(pNode));
        return KORV_FAIL;
    }
    if (QY_NODE_ReplaceDstExtInst(pNode, pTarget) != 0) {
        KORV_LOG_ERROR(pstInstance, "The leafref attr %s dup ext-inst from %s fail to replace extension instance",
                       NameOf(pNode), NameOf(pTarget));
        return KORV_FAIL;
    }
    return KORV_OK;
}
