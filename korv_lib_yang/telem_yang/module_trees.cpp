/* The trees of a module together: its own tree, and those of its augments. */
#include "telem_yang/id_index.h"
#include "telem_yang/top_chain.h"
#include "telem_yang/tree_release.h"
#include "telem_yang_lib/log.h"

uint32_t TELEMYANG_GenerateYangMouleTree(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName, const char *,
                                         TELMYANG_YANG_FILE_INFO_S *pstFile, QY_MOD *pMod)
{
    if (pMod == nullptr) {
        KORV_LOG_ERROR(pstLocal, "inval parameter!");
        return KORV_FAIL;
    }
    korv::TreeBudget budget;
    if (korv::GenerateOriginTree(pstLocal, pstFile, pMod, &budget) != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "GenerateOriginTree failed,pcModuleName(%s)!", pcModuleName);
        return KORV_FAIL;
    }
    if (korv::GenerateAugmentTrees(pstLocal, pstFile, pMod, &budget) != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "GenerateAugmentTree failed,pcModuleName(%s)!", pcModuleName);
        return KORV_FAIL;
    }
    return KORV_OK;
}

uint32_t TELEMYANG_DestroyYangMouleTree(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                        const char *pcRevision)
{
    TELMYANG_YANG_FILE_INFO_S *pstFile =
        TELMYANG_GetIfYangModuleExist(pstLocal, pstLocal->pstYangCtx, pcModuleName, pcRevision);
    if (pstFile == nullptr) {
        KORV_LOG_ERROR(pstLocal, "can not findYangModuleTree,module(%s)version(%s)!", korv::Shown(pcModuleName),
                       korv::Shown(pcRevision));
        return KORV_FAIL;
    }
    KorvTreeNode *pstOriginTree = pstFile->pstOriginTree;
    pstFile->pstOriginTree = nullptr;
    korv::DropIds(pstLocal->pstYangCtx);
    (void)korv::ReleaseTree(pstLocal, pstOriginTree);
    (void)TELMYANG_FreeYangtreeAllAugmentNodes(pstLocal, pstFile);
    return KORV_OK;
}
