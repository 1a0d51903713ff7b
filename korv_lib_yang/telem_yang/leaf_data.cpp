/* Filling a leaf descriptor from its schema leaf: names, type, and what the extension statements say. */
#include "telem_yang/telem_yang.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/leaf_statements.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/schema_nodes.h"

namespace {

using korv::IsClassBearing;

struct RangePair {
    int64_t llMin;
    int64_t llMax;
};

/* The number of a leaf's statement, 0 when it has none that counts. */
uint32_t ReadStatement(TELMYANG_LOCAL_DATA_S *pstLocal, const korv::LeafStatements &statements, MimExtType uiId)
{
    uint32_t uiValue = 0;
    if (statements.Value(pstLocal, uiId, &uiValue) != KORV_OK || uiValue == KORV_NO_ID)
        return 0;
    return uiValue;
}

void AddMask(KorvTreeLeaf *pstLeaf, uint32_t uiBit)
{
    pstLeaf->ucMask = static_cast<uint8_t>(pstLeaf->ucMask | uiBit);
}

void ReadDataType(TELMYANG_LOCAL_DATA_S *pstLocal, const korv::LeafStatements &statements, KorvTreeLeaf *pstLeaf)
{
    const uint32_t uiValue = ReadStatement(pstLocal, statements, MIM_EXT_DATATYPE_ID);
    if (uiValue == 0)
        return;
    pstLeaf->uiDataType = uiValue;
    AddMask(pstLeaf, KORV_MASK_DATA_TYPE);
    KORV_LOG_INFO(pstLocal, "Read datatype = 0x%x", uiValue);
}

void ReadNameKey(TELMYANG_LOCAL_DATA_S *pstLocal, const korv::LeafStatements &statements, KorvTreeLeaf *pstLeaf)
{
    const uint32_t uiValue = ReadStatement(pstLocal, statements, MIM_EXT_NAME2ID_KEY_FID);
    if (uiValue == 0)
        return;
    pstLeaf->uiName2IdKeyFid = uiValue;
    AddMask(pstLeaf, KORV_MASK_NAME2ID_KEY);
    KORV_LOG_INFO(pstLocal, "Read name2id-key-fid = %u", uiValue);
}

void ReadRefKey(TELMYANG_LOCAL_DATA_S *pstLocal, const korv::LeafStatements &statements, KorvTreeLeaf *pstLeaf)
{
    const uint32_t uiValue = ReadStatement(pstLocal, statements, MIM_EXT_REF_ID_KEY_FID);
    if (uiValue == 0)
        return;
    pstLeaf->uiRefIdKeyFid = uiValue;
    AddMask(pstLeaf, KORV_MASK_REF_ID_KEY);
    KORV_LOG_INFO(pstLocal, "Read ref-id-key-fid = %u", uiValue);
}

/* The private value of a leaf. */
void ReadFieldId(TELMYANG_LOCAL_DATA_S *pstLocal, const korv::LeafStatements &statements, QY_NODE *pLeaf,
                 KorvTreeLeaf *pstLeaf)
{
    const auto *pstRecord = static_cast<const YinLeaf *>(QY_NODE_GetPrivate(pLeaf));
    const uint32_t uiFieldId = statements.Num() != 0 && pstRecord != nullptr ? pstRecord->ucAttrID : 0;
    if (uiFieldId == 0)
        return;
    pstLeaf->uiFieldId = uiFieldId;
    AddMask(pstLeaf, KORV_MASK_FIELD_ID);
    KORV_LOG_INFO(pstLocal, "Read field-id = %u", uiFieldId);
}

/* Calls one of the readers above for a leaf; other nodes have no such statements. */
template <typename Reader>
void ReadFromLeaf(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pLeaf, KorvTreeLeaf *pstLeaf, Reader pfnRead)
{
    if (QY_NODE_GetNodeType(pLeaf) == QY_NODE_TYPE_LEAF)
        pfnRead(pstLocal, korv::LeafStatements(pLeaf), pstLeaf);
}

bool HasRange(uint8_t ucBaseType)
{
    return ucBaseType == QY_TYPE_UINT16 || ucBaseType == QY_TYPE_UINT32 || ucBaseType == QY_TYPE_UINT64;
}

void ReadRange(QY_TYPE *pType, KorvTreeLeaf *pstLeaf)
{
    RangePair stRange = {};
    (void)QY_TYPE_ScanStartEndPair(pType, TELMYANG_GetLeafNodeTypeRangeValue, &stRange);
    pstLeaf->llRangeMin = stRange.llMin;
    pstLeaf->llRangeMax = stRange.llMax;
}

} // namespace

void TELMYANG_GetLeafNodeDataType(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pLeaf, KorvTreeLeaf *pstLeaf)
{
    ReadFromLeaf(pstLocal, pLeaf, pstLeaf, ReadDataType);
}

void TELMYANG_GetLeafNodeNameKey(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pLeaf, KorvTreeLeaf *pstLeaf)
{
    ReadFromLeaf(pstLocal, pLeaf, pstLeaf, ReadNameKey);
}

void TELMYANG_GetLeafNodeDataRefKey(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pLeaf, KorvTreeLeaf *pstLeaf)
{
    ReadFromLeaf(pstLocal, pLeaf, pstLeaf, ReadRefKey);
}

uint32_t TELMYANG_GetNodePrivateValue(TELMYANG_LOCAL_DATA_S *, QY_NODE *pNode)
{
    uint32_t uiCount = 0;
    const uint32_t uiScanRet = QY_NODE_ScanAllExtInsts(pNode, TELMYANG_CountExtInstNum, &uiCount);
    if (uiCount == 0)
        return 0;
    const uint32_t uiNodeType = QY_NODE_GetNodeType(pNode);
    const void *pvPrivate = QY_NODE_GetPrivate(pNode);
    if (uiNodeType == QY_NODE_TYPE_LEAF && pvPrivate != nullptr)
        return static_cast<const YinLeaf *>(pvPrivate)->ucAttrID;
    const YinInst *pstInst = IsClassBearing(uiNodeType) ? TELMYANG_MDL_GetYinInstFromYinNode(pNode) : nullptr;
    return pstInst != nullptr ? pstInst->uiClassId : uiScanRet;
}

uint32_t TELMYANG_FillYinInstKeyFromLeafNode(TELMYANG_LOCAL_DATA_S *, YinInst *pstInst, KorvTreeLeaf *pstLeaf)
{
    if (pstInst == nullptr || pstLeaf == nullptr || pstInst->pucSelfKeyAttributes == nullptr)
        return KORV_OK;
    for (uint32_t uiLoop = 0; uiLoop < pstInst->ucKeyNum; ++uiLoop) {
        const uint8_t ucKey = pstInst->pucSelfKeyAttributes[uiLoop];
        if (ucKey != 0 && ucKey == static_cast<uint8_t>(pstLeaf->uiFieldId))
            pstLeaf->ucIsKey = 1;
    }
    return KORV_OK;
}

uint32_t TELMYANG_GetLeafNodeTypeRangeValue(const int64_t *pllStart, const int64_t *pllEnd, void *pllPair)
{
    *static_cast<RangePair *>(pllPair) = {*pllStart, *pllEnd};
    return 0;
}

uint32_t TELMYANG_GetLeafNodeTypeRange(TELMYANG_LOCAL_DATA_S *, KorvTreeLeaf *pstLeaf, QY_NODE *pLeaf)
{
    QY_TYPE *pType = HasRange(pstLeaf->ucBaseType) ? TELEM_MDL_GetYinNodeFinalType(pLeaf) : nullptr;
    if (pType != nullptr)
        ReadRange(pType, pstLeaf);
    return KORV_OK;
}

uint32_t TELMYANG_FillLeafData(TELMYANG_LOCAL_DATA_S *pstLocal, uint64_t ulModuleId, KorvTreeLeaf **ppstLeaf,
                               QY_NODE *pLeaf)
{
    *ppstLeaf = nullptr;
    korv::HostPtr<KorvTreeLeaf> pstLeaf(
        static_cast<KorvTreeLeaf *>(TELMYANG_Malloc_BZero(pstLocal, ulModuleId, sizeof(KorvTreeLeaf))));
    if (!pstLeaf) {
        KORV_LOG_ERROR(pstLocal, "malloc failed!");
        return KORV_FAIL;
    }
    pstLeaf->pcModuleName = TELMYANG_GetNodeModuleName(pstLocal, pLeaf);
    pstLeaf->pcName = TELMYANG_AllocNodeSelfName(pstLocal, pLeaf);
    if (pstLeaf->pcName == nullptr) {
        KORV_LOG_ERROR(pstLocal, "malloc failed!");
        return KORV_FAIL;
    }
    KORV_LOG_INFO(pstLocal, "Read leaf node (%s) mimext info.", pstLeaf->pcName);
    QY_TYPE *pType = TELEM_MDL_GetYinNodeFinalType(pLeaf);
    pstLeaf->ucBaseType = pType != nullptr ? static_cast<uint8_t>(QY_TYPE_GetBuiltInBaseType(pType)) : uint8_t{0};
    if (QY_NODE_GetNodeType(pLeaf) == QY_NODE_TYPE_LEAF) {
        const korv::LeafStatements statements(pLeaf);
        ReadDataType(pstLocal, statements, pstLeaf.get());
        ReadNameKey(pstLocal, statements, pstLeaf.get());
        ReadRefKey(pstLocal, statements, pstLeaf.get());
        ReadFieldId(pstLocal, statements, pLeaf, pstLeaf.get());
        if (HasRange(pstLeaf->ucBaseType))
            ReadRange(pType, pstLeaf.get());
    }
    pstLeaf->pYinNode = pLeaf;
    *ppstLeaf = pstLeaf.release();
    return KORV_OK;
}
