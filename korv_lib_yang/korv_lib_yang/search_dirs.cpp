/* The two base directories in which the schema library finds YIN files. */
#include "korv_lib_yang/korv_lib_yang.h"

namespace {

bool HasContext(const TELMYANG_YANG_CTX_S *pstYangCtx)
{
    return pstYangCtx != nullptr && pstYangCtx->pSchemaCtx != nullptr;
}

constexpr uint32_t DIR_ENTRY_NUM = 3; /* both base directories and the null behind them */

/* The schema library and the host's file services both get a relative directory now. Each makes it absolute when it
 * first gets it, so that both mean the same place when the process's working directory has changed. */
uint32_t Register(TELMYANG_YANG_CTX_S *pstYangCtx, const char *pcDir)
{
    if (pcDir != nullptr && pcDir[0] != '\0' && pcDir[0] != '/')
        (void)XUR_VFS_IsDirExist(pcDir);
    return QY_CTX_SetSearchDir(pstYangCtx->pSchemaCtx, pcDir);
}

void RegisterAll(TELMYANG_YANG_CTX_S *pstYangCtx, char *const *ppcDir)
{
    for (uint32_t uiLoop = 0; uiLoop < DIR_ENTRY_NUM; ++uiLoop)
        (void)Register(pstYangCtx, ppcDir[uiLoop]);
}

} // namespace

uint32_t TELMYANG_SetSearchDir(const char *pcDir1, const char *pcDir2, TELMYANG_LOCAL_DATA_S *pstLocal)
{
    TELMYANG_YANG_CTX_S *pstYangCtx = pstLocal->pstYangCtx;
    if (pcDir1 != nullptr && strcpy_s(pstYangCtx->acSearchDir1, sizeof(pstYangCtx->acSearchDir1), pcDir1) != 0)
        return KORV_FAIL;
    if (pcDir2 != nullptr && strcpy_s(pstYangCtx->acSearchDir2, sizeof(pstYangCtx->acSearchDir2), pcDir2) != 0)
        return KORV_FAIL;
    (void)TELMYANG_UpdateSearchDir(pstLocal);
    pstYangCtx->ppcSearchDir = pstYangCtx->apcSearchDir;
    pstYangCtx->apcSearchDir[0] = pstYangCtx->acSearchDir2;
    pstYangCtx->apcSearchDir[1] = pstYangCtx->acSearchDir1;
    pstYangCtx->apcSearchDir[2] = nullptr;
    return KORV_OK;
}

uint32_t TELMYANG_UpdateSearchDir(TELMYANG_LOCAL_DATA_S *pstLocal)
{
    TELMYANG_YANG_CTX_S *pstYangCtx = pstLocal->pstYangCtx;
    QY_CTX_UnSetSearchDir(pstYangCtx->pSchemaCtx, nullptr);
    (void)Register(pstYangCtx, pstYangCtx->acSearchDir1);
    return Register(pstYangCtx, pstYangCtx->acSearchDir2);
}

uint32_t TELMYANG_SetYangContextSearchPath(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    if (!HasContext(pstYangCtx))
        return KORV_FAIL;
    RegisterAll(pstYangCtx, pstYangCtx->apcSearchDir);
    return KORV_OK;
}

uint32_t TELMYANG_UndoYangContextSearchPath(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    if (!HasContext(pstYangCtx))
        return KORV_FAIL;
    QY_CTX_UnSetSearchDir(pstYangCtx->pSchemaCtx, nullptr);
    if (pstYangCtx->ppcSearchDir != nullptr)
        RegisterAll(pstYangCtx, pstYangCtx->ppcSearchDir);
    return KORV_OK;
}
