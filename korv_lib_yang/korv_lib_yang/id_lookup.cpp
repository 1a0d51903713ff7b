/* Nodes and leaves by their ids. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang/id_index.h"

uint32_t YANGLIB_FindClass(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiClassId, YANGLIB_PLACE_PF pfnCb, void *pvCookie)
{
    if (pstLocal == nullptr || pstLocal->pstYangCtx == nullptr || pfnCb == nullptr)
        return KORV_INVALID;
    return uiClassId != 0 ? korv::FindClass(pstLocal, uiClassId, pfnCb, pvCookie) : KORV_NOT_FOUND;
}

uint32_t YANGLIB_FindAttribute(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiClassId, uint32_t uiFieldId,
                               KorvTreeNode **ppstNode, KorvTreeLeaf **ppstLeaf)
{
    korv::Attribute stFound = {};
    uint32_t uiRet = KORV_INVALID;
    if (pstLocal != nullptr && pstLocal->pstYangCtx != nullptr)
        uiRet = uiClassId != 0 && uiFieldId != 0 ? korv::FindAttribute(pstLocal, uiClassId, uiFieldId, &stFound)
                                                 : KORV_NOT_FOUND;
    if (ppstNode != nullptr)
        *ppstNode = stFound.pstNode;
    if (ppstLeaf != nullptr)
        *ppstLeaf = stFound.pstLeaf;
    return uiRet;
}
