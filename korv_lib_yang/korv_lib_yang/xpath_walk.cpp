/* Walking a class tree along a path. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang_lib/log.h"

uint32_t TELMYANG_GetNextNodeName(const char *pcSrc, char *pcBuf, uint32_t uiBufSize, uint32_t *puiLen)
{
    const char *pcEnd = XUR_StrChr(pcSrc, '/');
    const uint32_t uiLen = pcEnd != nullptr ? static_cast<uint32_t>(pcEnd - pcSrc) : XUR_StrLen(pcSrc);
    if (uiLen == 0 || uiLen >= uiBufSize)
        return KORV_FAIL;
    if (strncpy_s(pcBuf, uiBufSize, pcSrc, uiLen) != 0)
        ZOR_Assert(__FILE__, __LINE__, 0);
    if (puiLen != nullptr)
        *puiLen = uiLen;
    return KORV_OK;
}

KorvTreeNode *TELMYANG_KorvFindNodeWithChoiceCase(KorvTreeNode *pstStart, const char *pcName)
{
    for (KorvTreeNode *pstNode = pstStart; pstNode != nullptr; pstNode = pstNode->pstNextSibling) {
        if (pstNode->ucNodeType == KORV_NODE_ORDINARY) {
            if (XUR_StrCmp(pstNode->pcName, pcName) == 0)
                return pstNode;
        } else if (KorvTreeNode *pstFound = TELMYANG_KorvFindNodeWithChoiceCase(pstNode->pstFirstChild, pcName)) {
            return pstFound;
        }
    }
    return nullptr;
}

uint32_t TELMYANG_ExistLeafNode(const VEC_VECTOR_S *pstLeafList, const char *pcName)
{
    const uint32_t uiNum = pstLeafList != nullptr ? VEC_VectorCount(pstLeafList) : 0;
    for (uint32_t uiLoop = 0; uiLoop < uiNum; ++uiLoop) {
        const auto *pstLeaf = static_cast<const KorvTreeLeaf *>(pstLeafList->ppvItem[uiLoop]);
        if (pstLeaf != nullptr && XUR_StrCmp(pstLeaf->pcName, pcName) == 0)
            return 1;
    }
    return 0;
}

uint32_t TELMYANG_CheckIsLeafNode(const KorvTreeNode *pstTreeNode, const char *pcPath)
{
    char acName[KORV_XPATH_COMPONENT_SIZE] = {};
    if (pstTreeNode == nullptr || TELMYANG_GetNextNodeName(pcPath, acName, sizeof(acName), nullptr) != KORV_OK)
        return 0;
    if (TELMYANG_ExistLeafNode(pstTreeNode->pstLeafList, acName) != 0)
        return 1;
    return TELMYANG_ExistLeafNode(pstTreeNode->pstCaseLeafList, acName);
}

KorvTreeNode *TELMYANG_KorvFindNodeByNodename(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcPath,
                                              KorvTreeNode *pstStart)
{
    KorvTreeNode *pstNode = nullptr;
    if (*pcPath == '/')
        ++pcPath;
    if (*pcPath == '\0')
        return nullptr;
    while (pstStart != nullptr) {
        char acName[KORV_XPATH_COMPONENT_SIZE];
        uint32_t uiLen = 0;
        const uint32_t uiRet = TELMYANG_GetNextNodeName(pcPath, acName, sizeof(acName), &uiLen);
        if (uiRet != KORV_OK) {
            KORV_LOG_ERROR(pstLocal, "Get next node name return 0x%x!", uiRet);
            return nullptr;
        }
        pstNode = TELMYANG_KorvFindNodeWithChoiceCase(pstStart, acName);
        if (pstNode == nullptr) {
            KORV_LOG_ERROR(pstLocal, "find node failed!");
            return nullptr;
        }
        pcPath += uiLen;
        if (*pcPath == '/')
            ++pcPath;
        if (*pcPath == '\0')
            return pstNode;
        pstStart = pstNode->pstFirstChild;
    }
    /* The path goes on below a node without children: what follows may be one of its leaves. */
    KORV_LOG_ERROR(pstLocal, "find node (%s) err!", pcPath);
    return TELMYANG_CheckIsLeafNode(pstNode, pcPath) != 0 ? pstNode : nullptr;
}
