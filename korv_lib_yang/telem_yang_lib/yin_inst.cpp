/* The record of a class node and the record of a leaf: how they are built, recognised and released. */
#include <cstring>

#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/leaf_statements.h"
#include "telem_yang_lib/log.h"

namespace {

/* Releases a record with what it owns. */
struct YinInstDelete {
    void operator()(YinInst *pstInst) const
    {
        TELMYANG_FreeYinInstInfo(pstInst);
        korv::HostFree(pstInst);
    }
};
using YinInstPtr = std::unique_ptr<YinInst, YinInstDelete>;

YinInstPtr NewYinInst(TELMYANG_LOCAL_DATA_S *pstLocal)
{
    YinInstPtr pstInst(korv::NewZeroed<YinInst>(pstLocal).release());
    if (pstInst)
        pstInst->ulMagic = YIN_INST_MAGIC;
    return pstInst;
}

uint32_t ReadSampleId(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode)
{
    uint32_t uiSampleId = 0;
    if (TELMYANG_BSC_GetNodeSpecMimExtValue(pstLocal, pNode, MIM_EXT_TLMT_SAMPLE_ID, &uiSampleId) != KORV_OK)
        uiSampleId = 0;
    KORV_LOG_INFO(pstLocal, "Get tlmt-sample-id (0x%x) from node (%s)", uiSampleId,
                  korv::Shown(QY_NODE_GetNodeName(pNode)));
    return uiSampleId;
}

} // namespace

uint32_t TELMYANG_BSC_GetNodeClassInfo(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, uint32_t *puiIsClass,
                                       YinInst *pstInst)
{
    const char *pcClassType = nullptr;
    if (TELMYANG_BSC_GetNodeSpecMimExtString(pstLocal, pNode, MIM_EXT_CLASS_TYPE, &pcClassType) == KORV_OK) {
        KORV_LOG_INFO(pstLocal, "Get class-type = %s", korv::Shown(pcClassType));
        const uint32_t uiRet = TELMYANG_BSC_ParseNodeClassTypeExt(pstLocal, pNode, pstInst, pcClassType);
        if (uiRet != KORV_OK) {
            KORV_LOG_ERROR(pstLocal, "Parse node (%s) <mimext:class-type> return 0x%x",
                           korv::Shown(QY_NODE_GetNodeName(pNode)), uiRet);
            return uiRet;
        }
    }
    uint32_t uiClassId = 0;
    if (TELMYANG_BSC_GetNodeSpecMimExtValue(pstLocal, pNode, MIM_EXT_CLASS_ID, &uiClassId) == KORV_OK &&
        uiClassId != 0) {
        pstInst->uiClassId = uiClassId;
        *puiIsClass = 1;
        KORV_LOG_INFO(pstLocal, "Get class-id = 0x%x", uiClassId);
    }
    return KORV_OK;
}

uint32_t TELMYANG_BSC_UpdateYinInstFromNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst *pstInst)
{
    uint32_t uiRet = TELMYANG_BSC_ParseNodeAttrLeafInfo(pstLocal, pNode, pstInst);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Parse Node(%s) Attr LeafInfo return 0x%x!", korv::Shown(QY_NODE_GetNodeName(pNode)),
                       uiRet);
        return uiRet;
    }
    uiRet = TELMYANG_BSC_ParseNodeKeyLeafInfo(pstLocal, pNode, pstInst);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Parse Node(%s) Key LeafInfo return 0x%x!", korv::Shown(QY_NODE_GetNodeName(pNode)),
                       uiRet);
        return uiRet;
    }
    uiRet = TELMYANG_BSC_GetCompleteYinInstNode(pstLocal, pNode, pstInst);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Get complete yin inst node(%s) return 0x%x!", korv::Shown(QY_NODE_GetNodeName(pNode)),
                       uiRet);
    }
    return uiRet;
}

uint32_t TELMYANG_BSC_ParseYinInstFromNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst **ppstInst)
{
    YinInstPtr pstInst = NewYinInst(pstLocal);
    if (!pstInst)
        return KORV_FAIL;
    uint32_t uiIsClass = 0;
    uint32_t uiRet = TELMYANG_BSC_GetNodeClassInfo(pstLocal, pNode, &uiIsClass, pstInst.get());
    if (uiRet != KORV_OK || uiIsClass == 0)
        return uiRet;
    uiRet = TELMYANG_BSC_UpdateYinInstFromNode(pstLocal, pNode, pstInst.get());
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Update YinInst from node (%s) return 0x%x", korv::Shown(QY_NODE_GetNodeName(pNode)),
                       uiRet);
        return uiRet;
    }
    pstInst->uiSampleId = ReadSampleId(pstLocal, pNode);
    pstInst->pYinNode = pNode;
    *ppstInst = pstInst.release();
    return KORV_OK;
}

uint32_t TELMYANG_BSC_ParseYinLeafFromNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinLeaf *pstLeaf)
{
    const korv::LeafStatements statements(pNode);
    pstLeaf->ucAttrID = 0;
    uint32_t uiFieldId = 0;
    if (statements.Value(pstLocal, MIM_EXT_FIELD_ID, &uiFieldId) != KORV_OK || uiFieldId == 0)
        return KORV_OK;
    /* A leaf with only another module's statement answers "none" here, and may still have a reference key. */
    pstLeaf->ucAttrID = uiFieldId == KORV_NO_ID ? 0 : static_cast<uint8_t>(uiFieldId);
    uint32_t uiRefIdKey = 0;
    if (statements.Value(pstLocal, MIM_EXT_REF_ID_KEY_FID, &uiRefIdKey) == KORV_OK && uiRefIdKey != 0 &&
        uiRefIdKey != KORV_NO_ID)
        pstLeaf->ucAttrID = static_cast<uint8_t>(uiRefIdKey);
    return KORV_OK;
}

void TELMYANG_FreeYinInstInfo(YinInst *pstInst)
{
    if (pstInst == nullptr)
        return;
    korv::HostFree(pstInst->pstYinAttr);
    pstInst->pstYinAttr = nullptr;
    korv::HostFree(pstInst->pucSelfKeyAttributes);
    pstInst->pucSelfKeyAttributes = nullptr;
    if (pstInst->pstKeyRefArray == nullptr)
        return;
    for (uint32_t uiLoop = 0; uiLoop < pstInst->ucAncKeyNum; ++uiLoop) {
        korv::HostFree(pstInst->pstKeyRefArray[uiLoop].pucKeyAttributes);
        pstInst->pstKeyRefArray[uiLoop].pucKeyAttributes = nullptr;
    }
    korv::HostFree(pstInst->pstKeyRefArray);
    pstInst->pstKeyRefArray = nullptr;
}

YinInst *TELMYANG_MDL_GetYinInstFromYinNode(QY_NODE *pNode)
{
    void *pvPrivate = QY_NODE_GetPrivate(pNode);
    if (reinterpret_cast<uintptr_t>(pvPrivate) < YIN_PRIVATE_MIN || QY_NODE_GetNodeType(pNode) == QY_NODE_TYPE_LEAF)
        return nullptr;
    uint64_t ulMagic = 0;
    std::memcpy(&ulMagic, pvPrivate, sizeof(ulMagic));
    return ulMagic == YIN_INST_MAGIC ? static_cast<YinInst *>(pvPrivate) : nullptr;
}
