/* Walking a class tree along a path. */
#include <cstring>

#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang_lib/log.h"

namespace {

/* One name of a path, compared where it stands: a walk compares far more often than it moves on. */
struct Component {
    const char *pcBegin;
    uint32_t uiLen;
};

/* What stands in front of the first "/" or the end. */
Component FirstComponent(const char *pcPath)
{
    const char *pcEnd = XUR_StrChr(pcPath, '/');
    return {pcPath, pcEnd != nullptr ? static_cast<uint32_t>(pcEnd - pcPath) : XUR_StrLen(pcPath)};
}

bool IsCuttable(Component stName, uint32_t uiBufSize)
{
    return stName.uiLen != 0 && stName.uiLen < uiBufSize;
}

/* Most names differ at the first character, which is not worth a call. */
bool IsName(const char *pcText, char cFirst, Component stName)
{
    return pcText[0] == cFirst && std::strncmp(pcText, stName.pcBegin, stName.uiLen) == 0 &&
           pcText[stName.uiLen] == '\0';
}

KorvTreeNode *FindNode(KorvTreeNode *pstStart, Component stName)
{
    const char cFirst = stName.pcBegin[0];
    for (KorvTreeNode *pstNode = pstStart; pstNode != nullptr; pstNode = pstNode->pstNextSibling) {
        if (pstNode->ucNodeType == KORV_NODE_ORDINARY) {
            if (IsName(pstNode->pcName, cFirst, stName))
                return pstNode;
        } else if (KorvTreeNode *pstFound = FindNode(pstNode->pstFirstChild, stName)) {
            return pstFound;
        }
    }
    return nullptr;
}

} // namespace

uint32_t TELMYANG_GetNextNodeName(const char *pcSrc, char *pcBuf, uint32_t uiBufSize, uint32_t *puiLen)
{
    const Component stName = FirstComponent(pcSrc);
    if (!IsCuttable(stName, uiBufSize))
        return KORV_FAIL;
    if (strncpy_s(pcBuf, uiBufSize, pcSrc, stName.uiLen) != 0)
        ZOR_Assert(__FILE__, __LINE__, 0);
    if (puiLen != nullptr)
        *puiLen = stName.uiLen;
    return KORV_OK;
}

KorvTreeNode *TELMYANG_KorvFindNodeWithChoiceCase(KorvTreeNode *pstStart, const char *pcName)
{
    return FindNode(pstStart, {pcName, XUR_StrLen(pcName)});
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
        const Component stName = FirstComponent(pcPath);
        if (!IsCuttable(stName, KORV_XPATH_COMPONENT_SIZE)) {
            KORV_LOG_ERROR(pstLocal, "Get next node name return 0x%x!", KORV_FAIL);
            return nullptr;
        }
        pstNode = FindNode(pstStart, stName);
        if (pstNode == nullptr) {
            KORV_LOG_ERROR(pstLocal, "find node failed!");
            return nullptr;
        }
        pcPath += stName.uiLen;
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
