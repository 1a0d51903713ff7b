/* The attributes of a class: the leaves directly under its node, or a leaf-list class itself. */
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/refusal.h"
#include "telem_yang_lib/schema_nodes.h"

namespace {

using korv::NameOf;

/* A pass over the nodes that can be attributes of the class: its children, or for a leaf-list the node alone. */
struct AttrPass {
    AttrLeafScanCtx stScan;
    uint32_t uiLeafListNum;
    YinAttr *pstLeafList; /* record of the next leaf-list child, behind the attributes */
};

bool IsLeafListChild(const AttrPass *pstPass, QY_NODE *pNode)
{
    return pstPass->stScan.uiWantedType == QY_NODE_TYPE_LEAF && QY_NODE_GetNodeType(pNode) == QY_NODE_TYPE_LEAF_LIST;
}

uint32_t CountCb(QY_NODE *pNode, void *pvUnused, void *pvPass)
{
    auto *pstPass = static_cast<AttrPass *>(pvPass);
    if (IsLeafListChild(pstPass, pNode))
        ++pstPass->uiLeafListNum;
    return TELMYANG_BSC_ParseNodeAttrLeafNum(pNode, pvUnused, &pstPass->stScan);
}

uint32_t FillCb(QY_NODE *pNode, void *pvUnused, void *pvPass)
{
    auto *pstPass = static_cast<AttrPass *>(pvPass);
    if (pstPass->pstLeafList != nullptr && IsLeafListChild(pstPass, pNode))
        *pstPass->pstLeafList++ = {pNode, 0, 0, 0, static_cast<uint8_t>(pstPass->stScan.uiFillNum)};
    return TELMYANG_BSC_ParseNodeAttrLeafArray(pNode, pvUnused, &pstPass->stScan);
}

uint32_t VisitAttrNodes(QY_NODE *pNode, AttrPass *pstPass, QY_NODE_SCAN_PF pfnCb)
{
    if (pstPass->stScan.uiWantedType == QY_NODE_TYPE_LEAF_LIST)
        return pfnCb(pNode, nullptr, pstPass);
    QY_NODE *pFirst = TELMYANG_BSC_FindFirstChild(pNode);
    return pFirst != nullptr ? QY_NODE_IterScanSiblingNode(pFirst, pfnCb, pstPass) : KORV_OK;
}

/* Room for the attributes, and for the leaf-list children behind them unless there are too many of those. */
bool AllocAttrs(TELMYANG_LOCAL_DATA_S *pstLocal, YinInst *pstInst, AttrPass *pstPass)
{
    const uint32_t uiAttrNum = pstPass->stScan.uiAttrNum;
    const uint32_t uiLeafListNum = pstPass->uiLeafListNum <= YIN_COUNT_MAX ? pstPass->uiLeafListNum : 0;
    pstInst->pstYinAttr = korv::NewZeroed<YinAttr>(pstLocal, uiAttrNum + uiLeafListNum).release();
    if (pstInst->pstYinAttr == nullptr)
        return false;
    pstInst->ucNumOfAttr = static_cast<uint8_t>(uiAttrNum);
    pstInst->ucLeafOrder = uiLeafListNum == pstPass->uiLeafListNum ? 1 : 0;
    pstInst->ucLeafListNum = static_cast<uint8_t>(uiLeafListNum);
    pstPass->stScan.pstCurAttr = pstInst->pstYinAttr;
    pstPass->pstLeafList = uiLeafListNum != 0 ? pstInst->pstYinAttr + uiAttrNum : nullptr;
    return true;
}

uint32_t SetFieldId(TELMYANG_LOCAL_DATA_S *pstLocal, YinAttr *pstAttr, uint32_t uiValue)
{
    if (pstAttr->ucAttrID == 0)
        pstAttr->ucAttrID = static_cast<uint8_t>(uiValue);
    KORV_LOG_INFO(pstLocal, "Get field-id = %u", pstAttr->ucAttrID);
    return KORV_OK;
}

uint32_t SetRefIdKey(TELMYANG_LOCAL_DATA_S *pstLocal, YinAttr *pstAttr, uint32_t uiValue)
{
    KORV_LOG_INFO(pstLocal, "ref-id-key-fid value (%d) update (%d).", static_cast<int>(uiValue), pstAttr->ucAttrID);
    pstAttr->ucAttrID = static_cast<uint8_t>(uiValue);
    return KORV_OK;
}

uint32_t SetDataType(TELMYANG_LOCAL_DATA_S *pstLocal, YinAttr *pstAttr, uint32_t uiValue)
{
    if (pstAttr->uiDataType == 0)
        pstAttr->uiDataType = uiValue;
    KORV_LOG_INFO(pstLocal, "Get datatype = 0x%x", pstAttr->uiDataType);
    return KORV_OK;
}

using SetValue = uint32_t (*)(TELMYANG_LOCAL_DATA_S *pstLocal, YinAttr *pstAttr, uint32_t uiValue);

SetValue SetterOf(MimExtType uiId)
{
    switch (uiId) {
        case MIM_EXT_FIELD_ID:
            return SetFieldId;
        case MIM_EXT_REF_ID_KEY_FID:
            return SetRefIdKey;
        case MIM_EXT_DATATYPE_ID:
            return SetDataType;
        default:
            return nullptr;
    }
}

} // namespace

uint32_t TELMYANG_BSC_ParseNodeAttrLeafNum(QY_NODE *pNode, void *, void *pstScan)
{
    auto *pstCtx = static_cast<AttrLeafScanCtx *>(pstScan);
    if (QY_NODE_GetNodeType(pNode) == pstCtx->uiWantedType)
        ++pstCtx->uiAttrNum;
    return KORV_OK;
}

uint32_t TELMYANG_BSC_ParseNodeAttrLeafArray(QY_NODE *pNode, void *, void *pstScan)
{
    auto *pstCtx = static_cast<AttrLeafScanCtx *>(pstScan);
    if (QY_NODE_GetNodeType(pNode) != pstCtx->uiWantedType)
        return KORV_OK;
    KORV_LOG_INFO(pstCtx->pstLocal, "Process leaf node %s", NameOf(pNode));
    const uint32_t uiRet = TELMYANG_BSC_FillLeafIntoYinAttr(pstCtx->pstLocal, pNode, pstCtx->pstCurAttr);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstCtx->pstLocal, "Fill Leaf Into YinAttr return 0x%x!", uiRet);
        return KORV_FAIL;
    }
    if (++pstCtx->uiFillNum < pstCtx->uiAttrNum)
        ++pstCtx->pstCurAttr;
    return KORV_OK;
}

uint32_t TELMYANG_BSC_ParseNodeAttrLeafInfo(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst *pstInst)
{
    AttrPass stPass = {};
    stPass.stScan.pstLocal = pstLocal;
    const bool bLeafList = QY_NODE_GetNodeType(pNode) == QY_NODE_TYPE_LEAF_LIST;
    stPass.stScan.uiWantedType = bLeafList ? QY_NODE_TYPE_LEAF_LIST : QY_NODE_TYPE_LEAF;
    (void)VisitAttrNodes(pNode, &stPass, CountCb);
    const uint32_t uiAttrNum = stPass.stScan.uiAttrNum;
    if (uiAttrNum == 0)
        return KORV_OK;
    if (uiAttrNum > YIN_COUNT_MAX) {
        KORV_LOG_ERROR(pstLocal, "class node(%s) has %u attribute leaves, more than %u!", NameOf(pNode), uiAttrNum,
                       YIN_COUNT_MAX);
        korv::Refuse(pstLocal, {korv::Why::AttributeNum, pNode, nullptr, nullptr, nullptr});
        return KORV_FAIL;
    }
    if (!AllocAttrs(pstLocal, pstInst, &stPass)) {
        KORV_LOG_ERROR(pstLocal, "XUR_Malloc error!");
        return KORV_FAIL;
    }
    const uint32_t uiRet = VisitAttrNodes(pNode, &stPass, FillCb);
    if (uiRet != KORV_OK) {
        korv::HostFree(pstInst->pstYinAttr);
        pstInst->pstYinAttr = nullptr;
    }
    return uiRet;
}

uint32_t TELMYANG_BSC_FillLeafIntoYinAttr(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pLeaf, YinAttr *pstAttr)
{
    pstAttr->pLeafNode = pLeaf;
    AttrFillCtx stFill = {pstLocal, pstAttr};
    const uint32_t uiRet = QY_NODE_ScanAllExtInsts(pLeaf, TELMYANG_BSC_ImplFillLeafIntoYinAttrCb, &stFill);
    if (uiRet != KORV_OK)
        return uiRet;
    return TELMYANG_BSC_AfterFillLeafInfoByExtType(pstLocal, pstAttr, pLeaf);
}

uint32_t TELMYANG_BSC_ImplFillLeafIntoYinAttrCb(QY_EXT *, const char *pcExtModule, const char *pcKeyword,
                                                const char *pcArgument, void *pstCtx)
{
    auto *pstFill = static_cast<AttrFillCtx *>(pstCtx);
    const MimExtType uiId = TELMYANG_BSC_GetNodeMimExtType(pcExtModule, pcKeyword);
    if (TELMYANG_MimExt_NotNeedProc(uiId) != 0)
        return KORV_OK;
    if (TELMYANG_BSC_FillLeafInfoByExtType(pstFill->pstLocal, uiId, pcArgument, pstFill->pstAttr) == KORV_OK)
        return KORV_OK;
    KORV_LOG_ERROR(pstFill->pstLocal, "Fill Leaf Info By ExtType error, leaf name(%s) ext(%s) value(%s)!",
                   NameOf(pstFill->pstAttr->pLeafNode), pcKeyword, korv::Shown(pcArgument));
    korv::Refuse(pstFill->pstLocal, {korv::Why::Number, nullptr, pstFill->pstAttr->pLeafNode, pcArgument, pcKeyword});
    return KORV_FAIL;
}

uint32_t TELMYANG_BSC_FillLeafInfoByExtType(TELMYANG_LOCAL_DATA_S *pstLocal, MimExtType uiId, const char *pcArgument,
                                            YinAttr *pstAttr)
{
    const SetValue pfnSet = SetterOf(uiId);
    if (pfnSet == nullptr)
        return KORV_OK;
    uint32_t uiValue = 0;
    if (TELMYANG_BSC_ParseMimExtIntoInt(pstLocal, pcArgument, &uiValue) != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "(%s) not a good number string", korv::Shown(pcArgument));
        return KORV_FAIL;
    }
    return pfnSet(pstLocal, pstAttr, uiValue);
}

uint32_t TELMYANG_BSC_AfterFillLeafInfoByExtType(TELMYANG_LOCAL_DATA_S *pstLocal, YinAttr *pstAttr, QY_NODE *pLeaf)
{
    if (pstAttr->ucAttrID == 0) {
        KORV_LOG_INFO(pstLocal, "ucAttrID info, name(%s)!", NameOf(pLeaf));
        return KORV_OK;
    }
    if (pstAttr->uiDataType != 0) {
        pstAttr->ucDataTypeSet = 1;
        return KORV_OK;
    }
    uint16_t usDataType = 0;
    const uint32_t uiYangType = TELMYANG_UTL_GetFinalLeafType(pLeaf);
    const uint32_t uiRet = TELMYANG_UTL_GetDefaultFldTypeByYangType(uiYangType, &usDataType, nullptr);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Get Default Type By YangType %u, return 0x%x!", uiYangType, uiRet);
        korv::Refuse(pstLocal, {uiYangType == 0 ? korv::Why::NoLeafrefTarget : korv::Why::NoDatatype, nullptr, pLeaf,
                                nullptr, nullptr});
        return uiRet;
    }
    pstAttr->uiDataType = usDataType;
    pstAttr->ucDataTypeSet = usDataType == YIN_DATATYPE_STRING ? 1 : 0;
    return KORV_OK;
}

uint32_t TELMYANG_BSC_CheckAllYinInstAttrValid(TELMYANG_LOCAL_DATA_S *pstLocal, const YinInst *pstInst)
{
    bool abSeen[YIN_COUNT_MAX + 1] = {};
    for (uint32_t uiLoop = 0; uiLoop < pstInst->ucNumOfAttr; ++uiLoop) {
        const uint8_t ucAttrId = pstInst->pstYinAttr[uiLoop].ucAttrID;
        if (ucAttrId == 0) {
            KORV_LOG_INFO(pstLocal, "Invalid attr id 0 defined for class %u", pstInst->uiClassId);
            return KORV_FAIL;
        }
        if (abSeen[ucAttrId]) {
            KORV_LOG_INFO(pstLocal, "Duplicated attr id %u defined for class %u", ucAttrId, pstInst->uiClassId);
            return KORV_FAIL;
        }
        abSeen[ucAttrId] = true;
    }
    return KORV_OK;
}
