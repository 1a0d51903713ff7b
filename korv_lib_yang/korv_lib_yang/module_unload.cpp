/* Unloading modules. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang/file_list.h"
#include "telem_yang/leaf_nodes.h"
#include "telem_yang_lib/log.h"

namespace {

enum class Others {
    Stay, /* their records must not point at nodes that go */
    Go,   /* they are unloaded next, and show no nodes any more */
};

uint32_t UnloadSchema(TELMYANG_YANG_CTX_S *pstYangCtx, TELMYANG_YANG_FILE_INFO_S *pstFile, const char *pcModuleName,
                      Others eOthers)
{
    if (eOthers == Others::Go)
        return QY_CTX_UnloadModule(pstYangCtx->pSchemaCtx, pcModuleName);
    korv::LeafNodeWatch watch(pstYangCtx, pstFile);
    return QY_CTX_UnloadModule(pstYangCtx->pSchemaCtx, pcModuleName);
}

/* Takes the record's module out of the schema context. The record itself goes next, or shows what it showed. */
uint32_t UnloadSchemaOf(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile, const char *pcModuleName,
                        Others eOthers)
{
    if (pstFile == nullptr)
        return UnloadSchema(pstLocal->pstYangCtx, pstFile, pcModuleName, eOthers);
    korv::HiddenAugments augments(pstFile);
    const uint32_t uiRet = UnloadSchema(pstLocal->pstYangCtx, pstFile, pcModuleName, eOthers);
    if (uiRet != 0)
        augments.Show();
    return uiRet;
}

uint32_t Unload(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName, const char *pcRevision, Others eOthers)
{
    KORV_LOG_INFO(pstLocal, "YANGLIB_UnloadYangModule (%s)", pcModuleName);
    if (TELEMYANG_DestroyYangMouleTree(pstLocal, pcModuleName, pcRevision) != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "TELEMYANG_DestroyYangMouleTree error!");
        return KORV_FAIL;
    }
    TELMYANG_YANG_FILE_INFO_S *pstFile =
        TELMYANG_GetIfYangModuleExist(pstLocal, pstLocal->pstYangCtx, pcModuleName, pcRevision);
    uint32_t uiRet = UnloadSchemaOf(pstLocal, pstFile, pcModuleName, eOthers);
    if (uiRet != 0) {
        KORV_LOG_ERROR(pstLocal, "QY_CTX_UnloadModule %s fail return 0x%x!", pcModuleName, uiRet);
        return KORV_FAIL;
    }
    uiRet = TELMYANG_RemoveYangFileInfoFromCtx(pstLocal, pcModuleName, pcRevision);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Remove yang file info return 0x%x!", uiRet);
        return KORV_FAIL;
    }
    return KORV_OK;
}

} // namespace

uint32_t YANGLIB_UnloadYangModule(TELMYANG_LOCAL_DATA_S *pYangModule, const char *pcModuleName, const char *pcRevision)
{
    if (pYangModule == nullptr || pcModuleName == nullptr) {
        KORV_LOG_ERROR(pYangModule, "pcModuleName or pYangModule error!");
        return KORV_FAIL;
    }
    return Unload(pYangModule, pcModuleName, pcRevision, Others::Stay);
}

uint32_t YANGLIB_UnloadYangModuleAll(TELMYANG_LOCAL_DATA_S *pstLocal)
{
    TELMYANG_YANG_CTX_S *pstYangCtx = pstLocal->pstYangCtx;
    if (pstYangCtx == nullptr)
        return KORV_FAIL;
    korv::ForgetSchemaNodes(pstYangCtx);
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = korv::ListEnd(pstYangCtx);
    for (auto *pstFile = pstYangCtx->stYangFileList.pstNext; pstFile != pstEnd;) {
        TELMYANG_YANG_FILE_INFO_S *pstNext = pstFile->pstNext;
        if (Unload(pstLocal, pstFile->pcModuleName, pstFile->pcRevision, Others::Go) != KORV_OK)
            TELMYANG_RemoveYangFile(pstLocal, pstFile);
        pstFile = pstNext;
    }
    return KORV_OK;
}
