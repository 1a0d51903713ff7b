/* Setting up and releasing a library instance. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang/file_list.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"

TELMYANG_LOCAL_DATA_S *g_pstKORVLibYangLocalData = nullptr;

namespace {

/* Releases an instance that is not complete, or no longer. */
struct InstanceDelete {
    void operator()(TELMYANG_LOCAL_DATA_S *pstLocal) const
    {
        korv::HostFree(pstLocal->pstYangCtx);
        pstLocal->pstYangCtx = nullptr;
        korv::HostFree(pstLocal);
    }
};
using InstancePtr = std::unique_ptr<TELMYANG_LOCAL_DATA_S, InstanceDelete>;

/* Schema context and search directories of a new instance. */
bool SetUpSchema(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcDir1, const char *pcDir2)
{
    TELMYANG_YANG_CTX_S *pstYangCtx = pstLocal->pstYangCtx;
    uint32_t uiRet = TELMYANG_CreateYangContext(pstLocal, &pstYangCtx->pSchemaCtx);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Create yang context return 0x%x", uiRet);
        return false;
    }
    uiRet = TELMYANG_SetSearchDir(pcDir1, pcDir2, pstLocal);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Set yang search direction return 0x%x", uiRet);
        QY_CTX_Delete(pstYangCtx->pSchemaCtx);
        return false;
    }
    return true;
}

} // namespace

TELMYANG_LOCAL_DATA_S *YANGLIB_Initial(uint64_t ulModuleId, uint64_t pKorvComponent,
                                       const TELMYANG_DEBUG_HOOK_S *pstHookTable, const char *pcDir1,
                                       const char *pcDir2)
{
    InstancePtr pstLocal(
        static_cast<TELMYANG_LOCAL_DATA_S *>(korv::AllocCleared(ulModuleId, sizeof(TELMYANG_LOCAL_DATA_S))));
    if (!pstLocal)
        return nullptr;
    pstLocal->pKorvComponent = pKorvComponent;
    TELMYANG_LIBRegDebugFuncHook(pstLocal.get(), pstHookTable);
    pstLocal->pstYangCtx =
        static_cast<TELMYANG_YANG_CTX_S *>(korv::AllocCleared(ulModuleId, sizeof(TELMYANG_YANG_CTX_S)));
    if (pstLocal->pstYangCtx == nullptr) {
        KORV_LOG_ERROR(pstLocal.get(), "XUR_Malloc  failed\n");
        return nullptr;
    }
    pstLocal->ulModuleId = ulModuleId;
    korv::MakeEmpty(pstLocal->pstYangCtx);
    (void)YANGLIB_InitPkgSearchPath(pstLocal.get());
    if (!SetUpSchema(pstLocal.get(), pcDir1, pcDir2))
        return nullptr;
    TELMYANG_SetLibYangLocalData(pstLocal.get());
    return pstLocal.release();
}

void YANGLIB_Uninitial(TELMYANG_LOCAL_DATA_S *pstLocal)
{
    if (pstLocal == nullptr)
        return;
    InstancePtr pstGuard(pstLocal);
    (void)YANGLIB_UnloadYangModuleAll(pstLocal);
    YANGLIB_DeInitPkgSearchPath(pstLocal);
    if (pstLocal->pstYangCtx != nullptr)
        QY_CTX_Delete(pstLocal->pstYangCtx->pSchemaCtx);
    pstGuard.reset();
    TELMYANG_SetLibYangLocalData(nullptr);
}

void TELMYANG_SetLibYangLocalData(TELMYANG_LOCAL_DATA_S *pstLocal)
{
    g_pstKORVLibYangLocalData = pstLocal;
}

uint64_t YANGLIB_GetKorvComponent(const TELMYANG_LOCAL_DATA_S *pstLocal)
{
    return pstLocal->pKorvComponent;
}
