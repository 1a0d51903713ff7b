/* Releasing the records that a load attached to schema nodes. */
#include "telem_yang/leaf_nodes.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"

namespace {

void ReleaseRecord(QY_NODE *pNode, void *pvPrivate)
{
    TELMYANG_FreeYinInstInfo(TELMYANG_MDL_GetYinInstFromYinNode(pNode));
    korv::HostFree(pvPrivate);
    QY_NODE_SetPrivate(pNode, nullptr);
}

} // namespace

void TELEM_COR_FreeYinNodePrivateData(void *, QY_NODE *pNode, void *pvPrivate)
{
    if (pNode != nullptr && pvPrivate != nullptr && !korv::ReleaseWatchedModule(pNode, pvPrivate))
        ReleaseRecord(pNode, pvPrivate);
}

uint32_t TELEMYANG_FreeYinExtensionInCurNode(QY_NODE *pNode, uint32_t, void *)
{
    void *pvPrivate = QY_NODE_GetPrivate(pNode);
    if (pvPrivate != nullptr)
        ReleaseRecord(pNode, pvPrivate);
    return 0;
}

uint32_t TELEMYANG_FreeAllYinExtensionInMoule(QY_NODE *pNode, void *, void *pstLocal)
{
    (void)TELEMYANG_FreeYinExtensionInCurNode(pNode, 0, nullptr);
    return QY_NODE_IterScanChildrenNode(pNode, TELEMYANG_FreeAllYinExtensionInMoule, pstLocal);
}

void TELEMYANG_FreeAugmentYinExtensionData(TELMYANG_LOCAL_DATA_S *, TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
        TELMYANG_AUGMENT_INFO_S *pstAugment = &pstFile->astAugment[uiLoop];
        if (pstAugment->pTargetParentRoot != nullptr)
            (void)QY_NODE_TreeScanAllNode(pstAugment->pTargetParentRoot, TELEMYANG_FreeYinExtensionInCurNode, nullptr);
        pstAugment->pTargetParentRoot = nullptr;
        pstAugment->uiSelfTreeDone = 0;
    }
}

void TELEMYANG_FreeAllYinExtensionInMouleEx(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName, const char *,
                                            TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    QY_MOD *pMod = QY_CTX_GetModuleByModName(pstLocal->pstYangCtx->pSchemaCtx, pcModuleName);
    if (pMod == nullptr) {
        KORV_LOG_ERROR(pstLocal, "Get module by name %s failed!", pcModuleName);
        return;
    }
    (void)QY_MOD_IterScanTopmostNode(pMod, TELEMYANG_FreeAllYinExtensionInMoule, pstLocal);
    TELEMYANG_FreeAugmentYinExtensionData(pstLocal, pstFile);
}
