/* Search directories of installed packages, beside the two base directories. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"

namespace {

/* The head begins with the same two links as a node. */
DLL_NODE_S *ListEnd(TELMYANG_LOCAL_DATA_S *pstLocal)
{
    return reinterpret_cast<DLL_NODE_S *>(&pstLocal->stInstallPathList);
}

} // namespace

uint32_t YANGLIB_InitPkgSearchPath(TELMYANG_LOCAL_DATA_S *pstLocal)
{
    pstLocal->stInstallPathList = {ListEnd(pstLocal), ListEnd(pstLocal), 0};
    return KORV_OK;
}

void YANGLIB_DeInitPkgSearchPath(TELMYANG_LOCAL_DATA_S *pstLocal)
{
    if (pstLocal->stInstallPathList.uiCount == 0)
        return;
    DLL_NODE_S *const pstEnd = ListEnd(pstLocal);
    for (DLL_NODE_S *pstNode = pstLocal->stInstallPathList.pstNext; pstNode != pstEnd;) {
        DLL_NODE_S *pstNext = pstNode->pstNext;
        DLL_Delete(&pstLocal->stInstallPathList, pstNode);
        korv::HostFree(pstNode);
        pstNode = pstNext;
    }
}

uint32_t YANGLIB_PkgAddInstallPath(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcDir)
{
    if (XUR_VFS_IsDirExist(pcDir) != 1) {
        KORV_LOG_INFO(pstLocal, "The install path not exist.");
        return KORV_OK;
    }
    return QY_CTX_SetSearchDir(pstLocal->pstYangCtx->pSchemaCtx, pcDir);
}

uint32_t YANGLIB_PkgDelUnInstallPath(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcDir)
{
    QY_CTX_UnSetSearchDir(pstLocal->pstYangCtx->pSchemaCtx, pcDir);
    return KORV_OK;
}

int32_t YANGLIB_PkgDllCompare(const char *pcKey, const YANGLIB_INSTALL_PATH_S *pstPath)
{
    return XUR_StrCmp(pstPath->pcPath, pcKey);
}
