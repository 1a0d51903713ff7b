/* Small questions about an instance, a module or a leaf. */
#include "korv_lib_yang/korv_lib_yang.h"

void YANGLIB_RegisterDatatypeAdaptFunc(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_DATATYPE_ADAPT_PF pfnDatatypeAdapt)
{
    pstLocal->pfnDatatypeAdapt = pfnDatatypeAdapt;
}

uint32_t YANGLIB_IsEnumLeaf(const KorvTreeLeaf *pstLeaf)
{
    return pstLeaf != nullptr && pstLeaf->ucBaseType == QY_TYPE_ENUMERATION ? 1 : 0;
}

const char *YANGLIB_GetYangRevision(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName)
{
    if (pstLocal->pstYangCtx == nullptr)
        return nullptr;
    return QY_MOD_GetRevision(QY_CTX_GetModuleByModName(pstLocal->pstYangCtx->pSchemaCtx, pcModuleName));
}

uint32_t YANGLIB_ScanNameValuePair(const KorvTreeLeaf *pstLeaf, YANGLIB_NAME_VALUE_PF pfnCb, void *pCookie)
{
    QY_TYPE *pType = pstLeaf->pYinNode != nullptr ? TELEM_MDL_GetYinNodeFinalType(pstLeaf->pYinNode) : nullptr;
    if (pType == nullptr)
        return KORV_FAIL;
    NameValueScanCtx stScan = {pCookie, pfnCb};
    return QY_TYPE_ScanNameValuePair(pType, YANGLIB_NameValuePairProc, &stScan);
}

uint32_t YANGLIB_NameValuePairProc(const char *pcName, int32_t iValue, void *, void *pstScan)
{
    const auto *pstCtx = static_cast<const NameValueScanCtx *>(pstScan);
    (void)pstCtx->pfnCb(pcName, iValue, pstCtx->pCookie);
    return 0;
}
