/* The statements that stand directly in a module. */
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/refusal.h"

using korv::HostPtr;

uint32_t TELMYANG_BSC_ImplParseModuleExtInstCb(QY_EXT *, const char *pcExtModule, const char *pcKeyword,
                                               const char *pcArgument, void *pstCtx)
{
    auto *pstModule = static_cast<ModuleExtCtx *>(pstCtx);
    if (pcExtModule == nullptr || pcKeyword == nullptr)
        return KORV_FAIL;
    if (TELMYANG_BSC_GetNodeMimExtType(pcExtModule, pcKeyword) != MIM_EXT_AAA_TASK_ID)
        return KORV_OK;
    if (*pstModule->puiAaaTaskId != 0) {
        KORV_LOG_INFO(pstModule->pstLocal, "Get duplicated task-id (%u) in module %s.", *pstModule->puiAaaTaskId,
                      pcExtModule);
        return KORV_OK;
    }
    if (TELMYANG_BSC_ParseMimExtIntoInt(pstModule->pstLocal, pcArgument, pstModule->puiAaaTaskId) != KORV_OK) {
        korv::Refuse(pstModule->pstLocal, {korv::Why::TaskId, nullptr, nullptr, pcArgument, nullptr});
        return KORV_FAIL;
    }
    KORV_LOG_INFO(pstModule->pstLocal, "Get task-id (%u) in module %s.", *pstModule->puiAaaTaskId, pcExtModule);
    return KORV_OK;
}

uint32_t TELMYANG_BSC_ParseModuleYinExtension(TELMYANG_LOCAL_DATA_S *pstLocal, QY_MOD *pMod,
                                              TELMYANG_MODULE_EXT_S **ppstExt)
{
    HostPtr<TELMYANG_MODULE_EXT_S> pstExt = korv::NewZeroed<TELMYANG_MODULE_EXT_S>(pstLocal);
    if (!pstExt) {
        KORV_LOG_ERROR(pstLocal, "XUR_Malloc error!");
        return KORV_FAIL;
    }
    ModuleExtCtx stCtx = {pstLocal, &pstExt->uiAaaTaskId};
    const uint32_t uiRet = QY_MOD_ScanAllExtInsts(pMod, TELMYANG_BSC_ImplParseModuleExtInstCb, &stCtx);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Parse module yin extension return value(0x%x)", uiRet);
        return uiRet;
    }
    *ppstExt = pstExt.release();
    return KORV_OK;
}
