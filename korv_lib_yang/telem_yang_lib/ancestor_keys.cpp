/* The keys that a class has from the classes above it: copied from a parent of the same class, or listed by its
 * "ancestor-key-fid" statement. */
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/refusal.h"
#include "telem_yang_lib/schema_nodes.h"

namespace {

using korv::HostPtr;
using korv::NameOf;

/* An array of ancestor keys whose first record has room for their ids. */
uint32_t NewAncestorKeys(TELMYANG_LOCAL_DATA_S *pstLocal, YinInst *pstInst, YinInst *pstParent)
{
    HostPtr<AncKeyRef> pstRefs = korv::NewZeroed<AncKeyRef>(pstLocal, pstInst->ucAncKeyNum);
    if (!pstRefs)
        return KORV_FAIL;
    pstRefs->pstParentInst = pstParent;
    pstRefs->pucKeyAttributes = korv::NewZeroed<uint8_t>(pstLocal, pstInst->ucAncKeyNum).release();
    if (pstRefs->pucKeyAttributes == nullptr)
        return KORV_FAIL;
    pstInst->pstKeyRefArray = pstRefs.release();
    return KORV_OK;
}

uint32_t CopyAncestorKeys(TELMYANG_LOCAL_DATA_S *pstLocal, YinInst *pstParent, QY_NODE *pNode, YinInst *pstInst)
{
    pstInst->ucAncKeyNum = pstParent->ucAncKeyNum;
    if (NewAncestorKeys(pstLocal, pstInst, pstParent) != KORV_OK)
        return KORV_FAIL;
    for (uint32_t uiLoop = 0; uiLoop < pstParent->ucAncKeyNum; ++uiLoop)
        pstInst->pstKeyRefArray->pucKeyAttributes[uiLoop] = pstParent->pstKeyRefArray->pucKeyAttributes[uiLoop];
    KORV_LOG_INFO(pstLocal, "Copy parent inherit key count(%u) in node (%s, 0x%x)!", pstInst->ucAncKeyNum,
                  NameOf(pNode), pstParent->uiClassId);
    return KORV_OK;
}

uint32_t CopySelfKeys(TELMYANG_LOCAL_DATA_S *pstLocal, const YinInst *pstParent, QY_NODE *pNode, YinInst *pstInst)
{
    korv::HostFree(pstInst->pucSelfKeyAttributes);
    pstInst->ucKeyNum = pstParent->ucKeyNum;
    pstInst->pucSelfKeyAttributes = korv::NewZeroed<uint8_t>(pstLocal, pstParent->ucKeyNum).release();
    if (pstInst->pucSelfKeyAttributes == nullptr)
        return KORV_FAIL;
    for (uint32_t uiLoop = 0; uiLoop < pstParent->ucKeyNum; ++uiLoop)
        pstInst->pucSelfKeyAttributes[uiLoop] = pstParent->pucSelfKeyAttributes[uiLoop];
    KORV_LOG_INFO(pstLocal, "Copy parent self key count(%u) in node (%s, 0x%x)!", pstInst->ucKeyNum, NameOf(pNode),
                  pstParent->uiClassId);
    return KORV_OK;
}

} // namespace

YinInst *TELMYANG_BSC_GetParentYinInst(TELMYANG_LOCAL_DATA_S *, QY_NODE *pNode)
{
    QY_NODE *pParent = pNode != nullptr ? QY_NODE_GetParentNode(pNode) : nullptr;
    while (pParent != nullptr) {
        YinInst *pstInst = TELMYANG_MDL_GetYinInstFromYinNode(pParent);
        if (pstInst != nullptr)
            return pstInst;
        pParent = QY_NODE_GetParentNode(pParent);
    }
    return nullptr;
}

uint32_t TELMYANG_BSC_GetClassIdFromNodeExt_(TELMYANG_LOCAL_DATA_S *, QY_NODE *pNode)
{
    uint32_t uiClassId = 0;
    (void)QY_NODE_ScanAllExtInsts(pNode, TELMYANG_BSC_ImplGetClassIdFromYinNodeExtCb_, &uiClassId);
    return uiClassId;
}

uint32_t TELMYANG_BSC_ImplGetClassIdFromYinNodeExtCb_(QY_EXT *, const char *pcExtModule, const char *pcKeyword,
                                                      const char *pcArgument, void *puiClassId)
{
    if (TELMYANG_BSC_GetNodeMimExtType(pcExtModule, pcKeyword) != MIM_EXT_CLASS_ID)
        return 0;
    if (pcArgument != nullptr)
        *static_cast<uint32_t *>(puiClassId) = static_cast<uint32_t>(XUR_strtoul(pcArgument, nullptr, 0));
    return 1;
}

uint32_t TELMYANG_BSC_IsMethod2KeyRefAncestor(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode)
{
    MimExtFindCtx stFind = {};
    stFind.pYinNode = pNode;
    QY_EXT *pExt = TELMYANG_BSC_GetNodeSpecMimExt(pstLocal, pNode, MIM_EXT_ANCESTOR_KEY_FID, &stFind);
    uint32_t uiHasNested = 0;
    if (pExt != nullptr)
        (void)QY_EXT_ScanAllChildExtInsts(pExt, TELMYANG_BSC_JudstExtHasExtInst, &uiHasNested);
    return uiHasNested;
}

uint32_t TELMYANG_BSC_ConstructSelfInheritKey_(TELMYANG_LOCAL_DATA_S *pstLocal, YinInst *pstParent, QY_NODE *pNode,
                                               YinInst *pstInst)
{
    if (pstParent->ucAncKeyNum != 0 && CopyAncestorKeys(pstLocal, pstParent, pNode, pstInst) != KORV_OK)
        return KORV_FAIL;
    if (pstParent->ucKeyNum == 0)
        return KORV_OK;
    return CopySelfKeys(pstLocal, pstParent, pNode, pstInst);
}

uint32_t TELMYANG_BSC_ParseNodeAncestorKeyRefInfo(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst *pstInst)
{
    MimExtFindCtx stFind = {};
    stFind.pYinNode = pNode;
    if (TELMYANG_BSC_GetNodeSpecMimExt(pstLocal, pNode, MIM_EXT_ANCESTOR_KEY_FID, &stFind) == nullptr)
        return KORV_OK;
    const uint32_t uiWordNum = TELMYANG_UTL_CountWordInStr(stFind.pcValue);
    if (uiWordNum == 0) {
        KORV_LOG_ERROR(pstLocal, "no word error in node(%s)!", NameOf(pNode));
        korv::Refuse(pstLocal, {korv::Why::AncestorKeysEmpty, pNode, nullptr, nullptr, nullptr});
        return KORV_FAIL;
    }
    KORV_LOG_INFO(pstLocal, "ancestor-key-fid(old) : %s", stFind.pcValue);
    HostPtr<uint32_t> puiIdArr = korv::NewZeroed<uint32_t>(pstLocal, uiWordNum);
    if (!puiIdArr) {
        KORV_LOG_ERROR(pstLocal, "puiIdArr XUR_Malloc error!");
        return KORV_FAIL;
    }
    uint32_t uiIdNum = 0;
    const uint32_t uiRet =
        TELMYANG_BSC_ParseMimExtIntoArray(pstLocal, stFind.pcValue, puiIdArr.get(), uiWordNum, &uiIdNum);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Parse MimExt Into Array return 0x%x, uiTmpNum(%d) name(%s)!", uiRet,
                       static_cast<int>(uiIdNum), NameOf(pNode));
        korv::Refuse(pstLocal, {korv::Why::AncestorKeysNoNumbers, pNode, nullptr, stFind.pcValue, nullptr});
        return KORV_FAIL;
    }
    return TELMYANG_BSC_ConstructAncestorKeyRef(pstInst, pNode, puiIdArr.get(), uiIdNum, pstLocal);
}

uint32_t TELMYANG_BSC_ConstructAncestorKeyRef(YinInst *pstInst, QY_NODE *pNode, const uint32_t *puiIdArr,
                                              uint32_t uiNum, TELMYANG_LOCAL_DATA_S *pstLocal)
{
    if (uiNum > YIN_COUNT_MAX) {
        KORV_LOG_ERROR(pstLocal, "class node(%s) has %u ancestor keys, more than %u!", NameOf(pNode), uiNum,
                       YIN_COUNT_MAX);
        korv::Refuse(pstLocal, {korv::Why::AncestorKeyNum, pNode, nullptr, nullptr, nullptr});
        return KORV_FAIL;
    }
    pstInst->ucAncKeyNum = static_cast<uint8_t>(uiNum);
    HostPtr<AncKeyRef> pstRefs = korv::NewZeroed<AncKeyRef>(pstLocal, uiNum);
    if (!pstRefs) {
        KORV_LOG_ERROR(pstLocal, "pstYinInst->pstKeyRefArray XUR_Malloc error!");
        if (uiNum == 0)
            korv::Refuse(pstLocal, {korv::Why::AncestorKeysEmpty, pNode, nullptr, nullptr, nullptr});
        return KORV_NO_ID;
    }
    pstRefs->pstParentInst = TELMYANG_BSC_GetParentYinInst(pstLocal, pNode);
    pstRefs->pucKeyAttributes = korv::NewZeroed<uint8_t>(pstLocal, uiNum).release();
    if (pstRefs->pucKeyAttributes == nullptr) {
        KORV_LOG_ERROR(pstLocal, "pstAncRef->pucKeyAttributes XUR_Malloc error!");
        return KORV_NO_ID;
    }
    for (uint32_t uiLoop = 0; uiLoop < uiNum; ++uiLoop)
        pstRefs->pucKeyAttributes[uiLoop] = static_cast<uint8_t>(puiIdArr[uiLoop]);
    pstInst->pstKeyRefArray = pstRefs.release();
    return KORV_OK;
}
