/* Loading a module into the schema context. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang_lib/log.h"

uint32_t TELMYANG_LoadYangModule(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_CTX_S *pstYangCtx,
                                 const char *pcModuleName)
{
    if (pstYangCtx == nullptr || pcModuleName == nullptr) {
        KORV_LOG_ERROR(pstLocal, "TELMYANG_LoadYangModule parameter null!");
        return KORV_FAIL;
    }
    if (QY_CTX_GetModuleByModName(pstYangCtx->pSchemaCtx, pcModuleName) != nullptr)
        return KORV_OK;
    if (QY_CTX_LoadModule(pstYangCtx->pSchemaCtx, pcModuleName, nullptr) != 0) {
        KORV_LOG_ERROR(pstLocal, "QY_CTX_LoadModule %s error!", pcModuleName);
        return KORV_FAIL;
    }
    QY_MOD *pMod = QY_CTX_GetModuleByModName(pstYangCtx->pSchemaCtx, pcModuleName);
    if (pMod == nullptr) {
        KORV_LOG_ERROR(pstLocal, "QY_CTX_GetModuleByModName %s error!", pcModuleName);
        return KORV_FAIL;
    }
    return QY_MOD_EnableFeature(pMod, QY_FEATURE_ALL);
}
