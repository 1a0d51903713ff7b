/* The type that a leaf's values have in the end, and the datatype that goes with it. */
#include "telem_yang_lib/telem_yang_lib.h"

namespace {

constexpr uint32_t NO_DATATYPE = 0xFFFFFFFF;

struct DefaultFieldType {
    uint32_t uiYangType;
    uint32_t uiDataType; /* odd ones are signed, even ones unsigned */
    uint32_t uiSize;     /* bytes */
};

constexpr DefaultFieldType DEFAULT_FIELD_TYPES[] = {
    {0, NO_DATATYPE, 0},
    {QY_TYPE_BINARY, NO_DATATYPE, 0},
    {QY_TYPE_BITS, NO_DATATYPE, 0},
    {QY_TYPE_BOOLEAN, 283, 1},
    {QY_TYPE_DECIMAL64, NO_DATATYPE, 0},
    {QY_TYPE_EMPTY, NO_DATATYPE, 0},
    {QY_TYPE_ENUMERATION, 29, 4},
    {QY_TYPE_IDENTITYREF, NO_DATATYPE, 0},
    {QY_TYPE_INSTANCE_IDENTIFIER, NO_DATATYPE, 0},
    {QY_TYPE_INT8, 1, 1},
    {QY_TYPE_INT16, 3, 2},
    {QY_TYPE_INT32, 5, 4},
    {QY_TYPE_INT64, 7, 8},
    {QY_TYPE_LEAFREF, NO_DATATYPE, 0},
    {QY_TYPE_STRING, YIN_DATATYPE_STRING, YIN_SIZE_VARIABLE},
    {QY_TYPE_UINT8, 2, 1},
    {QY_TYPE_UINT16, 4, 2},
    {QY_TYPE_UINT32, 6, 4},
    {QY_TYPE_UINT64, 8, 8},
    {QY_TYPE_UNION, NO_DATATYPE, 0},
};
constexpr uint32_t ROW_NUM = sizeof(DEFAULT_FIELD_TYPES) / sizeof(DEFAULT_FIELD_TYPES[0]);

constexpr bool RowsAreInTypeOrder()
{
    for (uint32_t uiRow = 0; uiRow < ROW_NUM; ++uiRow) {
        if (DEFAULT_FIELD_TYPES[uiRow].uiYangType != uiRow)
            return false;
    }
    return ROW_NUM == 20;
}
static_assert(RowsAreInTypeOrder());

QY_TYPE *LastDerivedType(QY_NODE *pNode)
{
    QY_TYPE *pType = nullptr;
    return QY_NODE_ScanDerivedType(pNode, TELEM_MDL_ImplGetYinNodeFinalTypeCb, &pType) == 0 ? pType : nullptr;
}

} // namespace

uint32_t TELEM_MDL_ImplGetYinNodeFinalTypeCb(void *, void *, QY_TYPE *pType, void *ppType)
{
    *static_cast<QY_TYPE **>(ppType) = pType;
    return 0;
}

QY_TYPE *TELEM_MDL_GetYinNodeFinalType(QY_NODE *pNode)
{
    QY_TYPE *pType = LastDerivedType(pNode);
    /* A cycle of leafrefs runs into the hop limit as well. */
    for (uint32_t uiHop = 0; pType != nullptr && QY_TYPE_GetBuiltInBaseType(pType) == QY_TYPE_LEAFREF; ++uiHop) {
        if (uiHop == YIN_LEAFREF_HOPS_MAX)
            return nullptr;
        pNode = QY_NODE_GetLeafrefTargetNode(pNode, 1);
        pType = pNode != nullptr ? LastDerivedType(pNode) : nullptr;
    }
    return pType;
}

uint32_t TELMYANG_UTL_GetFinalLeafType(QY_NODE *pNode)
{
    QY_TYPE *pType = TELEM_MDL_GetYinNodeFinalType(pNode);
    return pType != nullptr ? QY_TYPE_GetBuiltInBaseType(pType) : 0;
}

uint32_t TELMYANG_UTL_GetDefaultFldTypeByYangType(uint32_t uiYangType, uint16_t *pusDataType, uint32_t *puiSize)
{
    if (uiYangType >= ROW_NUM || DEFAULT_FIELD_TYPES[uiYangType].uiDataType == NO_DATATYPE)
        return KORV_FAIL;
    *pusDataType = static_cast<uint16_t>(DEFAULT_FIELD_TYPES[uiYangType].uiDataType);
    if (puiSize != nullptr)
        *puiSize = DEFAULT_FIELD_TYPES[uiYangType].uiSize;
    return KORV_OK;
}
