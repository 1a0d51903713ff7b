/* Reading a module's extension statements into records on its schema nodes, parents first. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/schema_nodes.h"

namespace {

using korv::NameOf;

/* Attaches the record of a class node; a node that is no class stays without. */
uint32_t ReadClassNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode)
{
    YinInst *pstInst = nullptr;
    const uint32_t uiRet = TELMYANG_BSC_ParseYinInstFromNode(pstLocal, pNode, &pstInst);
    if (uiRet == KORV_OK)
        QY_NODE_SetPrivate(pNode, pstInst);
    return uiRet;
}

uint32_t ReadLeaf(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode)
{
    korv::HostPtr<YinLeaf> pstLeaf = korv::NewZeroed<YinLeaf>(pstLocal, YIN_LEAF_BLOCK_SIZE / sizeof(YinLeaf));
    if (!pstLeaf)
        return KORV_FAIL;
    const uint32_t uiRet = TELMYANG_BSC_ParseYinLeafFromNode(pstLocal, pNode, pstLeaf.get());
    if (uiRet == KORV_OK)
        QY_NODE_SetPrivate(pNode, pstLeaf.release());
    return uiRet;
}

} // namespace

uint32_t TELMYANG_ReadNodeExtension(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode)
{
    const uint32_t uiNodeType = QY_NODE_GetNodeType(pNode);
    KORV_LOG_INFO(pstLocal, "qyNode info: name %s, node type: %u", NameOf(pNode), uiNodeType);
    if (QY_NODE_GetPrivate(pNode) != nullptr)
        return KORV_OK;
    if (uiNodeType == QY_NODE_TYPE_LEAF)
        return ReadLeaf(pstLocal, pNode);
    return korv::IsClassBearing(uiNodeType) ? ReadClassNode(pstLocal, pNode) : KORV_OK;
}

uint32_t TELEMYANG_ReadYinNodeExtensionToInst(QY_NODE *pNode, uint32_t uiTravType, void *pstLocal)
{
    if (uiTravType == QY_TRAV_RETURN)
        return KORV_OK;
    auto *pstInstance = static_cast<TELMYANG_LOCAL_DATA_S *>(pstLocal);
    const uint32_t uiRet = TELMYANG_ReadNodeExtension(pstInstance, pNode);
    if (uiRet != KORV_OK)
        KORV_LOG_ERROR(pstInstance, "Read Node(%s) Extension return 0x%x!", NameOf(pNode), uiRet);
    return uiRet;
}

uint32_t TELEMYANG_ReadYinModDataNodeExtension(QY_NODE *pNode, void *, void *pstLocal)
{
    if (QY_NODE_GetNodeType(pNode) != QY_NODE_TYPE_CONTAINER)
        return KORV_OK;
    return QY_NODE_TreeScanAllNode(pNode, TELEMYANG_ReadYinNodeExtensionToInst, pstLocal);
}

uint32_t TELMYANG_ReadYinModuleExtension(TELMYANG_LOCAL_DATA_S *pstLocal, QY_MOD *pMod,
                                         TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    if (pstFile->pModuleExtInfo != nullptr)
        return KORV_FAIL;
    TELMYANG_MODULE_EXT_S *pstExt = nullptr;
    const uint32_t uiRet = TELMYANG_BSC_ParseModuleYinExtension(pstLocal, pMod, &pstExt);
    if (uiRet == KORV_OK)
        pstFile->pModuleExtInfo = pstExt;
    return uiRet;
}

uint32_t TELEMYANG_ReadOriginExtensionData(TELMYANG_LOCAL_DATA_S *pstLocal, const char *, TELMYANG_YANG_FILE_INFO_S *,
                                           QY_MOD *pMod)
{
    if (QY_MOD_IterScanTopmostNode(pMod, TELEMYANG_ReadYinModDataNodeExtension, pstLocal) == 0)
        return KORV_OK;
    KORV_LOG_ERROR(pstLocal, "ReadOriginExtensionData failed!");
    return KORV_FAIL;
}

uint32_t TELEMYANG_ReadAugmentExtensionData(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                            TELMYANG_YANG_FILE_INFO_S *pstFile, QY_MOD *pMod)
{
    if (TELEMYANG_FillAugmentDataToYangFile(pstLocal, pcModuleName, pstFile, pMod) != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "TELEMYANG_GetAugmentData failed,pcModName(%s)!", pcModuleName);
        return KORV_FAIL;
    }
    for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
        QY_NODE *pRoot = pstFile->astAugment[uiLoop].pTargetParentRoot;
        if (pRoot != nullptr && TELEMYANG_ReadYinModDataNodeExtension(pRoot, nullptr, pstLocal) != KORV_OK) {
            KORV_LOG_ERROR(pstLocal, "ReadAugmentExtensionData failed,pcModName(%s)uiLoop(%u)!", pcModuleName, uiLoop);
            return KORV_FAIL;
        }
    }
    return KORV_OK;
}

uint32_t TELEMYANG_ReadAllYinExtensionData(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                           TELMYANG_YANG_FILE_INFO_S *pstFile, QY_MOD *pMod)
{
    if (pMod == nullptr) {
        KORV_LOG_ERROR(pstLocal, "Get module %s yang info failed!", pcModuleName);
        return KORV_FAIL;
    }
    if (TELMYANG_ReadYinModuleExtension(pstLocal, pMod, pstFile) != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "QXYang Fail get module %s module-level!", pcModuleName);
        return KORV_FAIL;
    }
    if (TELEMYANG_ReadOriginExtensionData(pstLocal, pcModuleName, pstFile, pMod) != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "ReadOriginExtensionData failed!");
        return KORV_FAIL;
    }
    if (TELEMYANG_ReadAugmentExtensionData(pstLocal, pcModuleName, pstFile, pMod) != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "ReadAugmentExtensionData failed!");
        return KORV_FAIL;
    }
    return KORV_OK;
}
