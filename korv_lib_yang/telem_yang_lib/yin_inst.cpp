/* Building the record of a class node and the record of a leaf. */
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/leaf_statements.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/schema_nodes.h"

namespace {

using korv::NameOf;

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
    KORV_LOG_INFO(pstLocal, "Get tlmt-sample-id (0x%x) from node (%s)", uiSampleId, NameOf(pNode));
    return uiSampleId;
}

/* Ancestor keys of a class that is not of its parent's class. */
uint32_t DeriveAncestorKeys(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst *pstInst, YinInst *pstParent)
{
    if (TELMYANG_BSC_IsMethod2KeyRefAncestor(pstLocal, pNode) == 0)
        return TELMYANG_BSC_ParseNodeAncestorKeyRefInfo(pstLocal, pNode, pstInst);
    if (pstParent == nullptr)
        return KORV_OK;
    return TELMYANG_BSC_ParseNodeAncestorKeyRefInfoWithParent(pstLocal, pNode, pstInst, pstParent);
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
            KORV_LOG_ERROR(pstLocal, "Parse node (%s) <mimext:class-type> return 0x%x", NameOf(pNode), uiRet);
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

uint32_t TELMYANG_BSC_GetCompleteYinInstNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst *pstInst)
{
    uint32_t uiRet = TELMYANG_BSC_ParseNodeAutoKeyLeafInfo(pstLocal, pNode, pstInst);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Parse Node (%s) Auto-Key return 0x%x!", NameOf(pNode), uiRet);
        return uiRet;
    }
    YinInst *pstParent = TELMYANG_BSC_GetParentYinInst(pstLocal, pNode);
    if (pstParent != nullptr && TELMYANG_BSC_GetClassIdFromNodeExt_(pstLocal, pNode) == pstParent->uiClassId)
        return TELMYANG_BSC_ConstructSelfInheritKey_(pstLocal, pstParent, pNode, pstInst);
    uiRet = DeriveAncestorKeys(pstLocal, pNode, pstInst, pstParent);
    if (uiRet != KORV_OK)
        KORV_LOG_ERROR(pstLocal, "Parse Node (%s) Ancestor-Key return 0x%x!", NameOf(pNode), uiRet);
    return uiRet;
}

uint32_t TELMYANG_BSC_UpdateYinInstFromNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst *pstInst)
{
    uint32_t uiRet = TELMYANG_BSC_ParseNodeAttrLeafInfo(pstLocal, pNode, pstInst);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Parse Node(%s) Attr LeafInfo return 0x%x!", NameOf(pNode), uiRet);
        return uiRet;
    }
    uiRet = TELMYANG_BSC_ParseNodeKeyLeafInfo(pstLocal, pNode, pstInst);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Parse Node(%s) Key LeafInfo return 0x%x!", NameOf(pNode), uiRet);
        return uiRet;
    }
    uiRet = TELMYANG_BSC_GetCompleteYinInstNode(pstLocal, pNode, pstInst);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Get complete yin inst node(%s) return 0x%x!", NameOf(pNode), uiRet);
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
        KORV_LOG_ERROR(pstLocal, "Update YinInst from node (%s) return 0x%x", NameOf(pNode), uiRet);
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
