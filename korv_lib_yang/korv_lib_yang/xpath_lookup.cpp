/* Finding the tree node that a host names by module and path. */
#include <cstring>

#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"

namespace {

enum class PathKind {
    Plain,
    Augment,
    TooLong, /* a prefix does not fit: nothing is found */
};

/* A prefix where it stands in its path. */
struct Prefix {
    const char *pcBegin;
    size_t ulLen;
};

bool Fits(const Prefix &stPrefix)
{
    if (stPrefix.ulLen < KORV_XPATH_PREFIX_SIZE)
        return true;
    ZOR_Assert(__FILE__, __LINE__, 0);
    return false;
}

bool Differ(const Prefix &stLeft, const Prefix &stRight)
{
    return stLeft.ulLen != stRight.ulLen || std::memcmp(stLeft.pcBegin, stRight.pcBegin, stLeft.ulLen) != 0;
}

PathKind KindOf(const char *pcXpathMain)
{
    const char *pcFirstColon = XUR_StrChr(pcXpathMain, ':');
    const char *pcLastColon = XUR_StrRChr(pcXpathMain, ':');
    if (pcFirstColon == pcLastColon)
        return PathKind::Plain;
    const char *pcLastPrefix = pcLastColon;
    while (pcLastPrefix > pcXpathMain && pcLastPrefix[-1] != '/')
        --pcLastPrefix;
    const Prefix stFirst = {pcXpathMain, static_cast<size_t>(pcFirstColon - pcXpathMain)};
    const Prefix stLast = {pcLastPrefix, static_cast<size_t>(pcLastColon - pcLastPrefix)};
    if (!Fits(stFirst) || !Fits(stLast))
        return PathKind::TooLong;
    return Differ(stFirst, stLast) ? PathKind::Augment : PathKind::Plain;
}

/* The caller's paths with "/" appended. */
struct PathCopies {
    korv::HostPtr<char> pcXpathMain;
    korv::HostPtr<char> pcPath;
};

/* Text and "/" into a zero-filled block: negative when the host's formatter refuses. A copy does for a text that fits;
 * one that does not, or that the copy refuses, is the formatter's to judge. */
int AppendSlash(char *pcOut, uint32_t uiSize, const char *pcSrc, uint32_t uiSrcLen)
{
    if (uint64_t{uiSrcLen} + 2 > uiSize || memcpy_s(pcOut, uiSize, pcSrc, uiSrcLen) != 0)
        return sprintf_s(pcOut, uiSize, "%s/", pcSrc);
    pcOut[uiSrcLen] = '/';
    return 0;
}

/* The text with "/" appended in a block of uiSize bytes. */
uint32_t CopyWithSlash(TELMYANG_LOCAL_DATA_S *pstLocal, char **ppcOut, const char *pcSrc, uint32_t uiSrcLen,
                       uint32_t uiSize)
{
    *ppcOut = korv::NewZeroed<char>(pstLocal, uiSize).release();
    if (*ppcOut == nullptr) {
        KORV_LOG_ERROR(pstLocal, "DuplicateXpath malloc failed uiLen=%u !", uiSize);
        return KORV_FAIL;
    }
    const int iRet = AppendSlash(*ppcOut, uiSize, pcSrc, uiSrcLen);
    if (iRet < 0) {
        KORV_LOG_ERROR(pstLocal, "sprintf_s return 0x%x!", static_cast<uint32_t>(iRet));
        return KORV_FAIL;
    }
    return KORV_OK;
}

bool CopyPaths(const YangXpathLookup *pstLookup, PathCopies *pstCopies)
{
    char *pcXpathMain = nullptr;
    char *pcPath = nullptr;
    TELMYANG_LOCAL_DATA_S *pstLocal = pstLookup->pstLocal;
    const uint32_t uiXpathLen = XUR_StrLen(pstLookup->pcXpathMain);
    const uint32_t uiPathLen = XUR_StrLen(pstLookup->pcPath);
    const uint32_t uiRet = CopyWithSlash(pstLocal, &pcXpathMain, pstLookup->pcXpathMain, uiXpathLen, uiXpathLen + 2);
    const uint32_t uiRetValue = CopyWithSlash(pstLocal, &pcPath, pstLookup->pcPath, uiPathLen, uiPathLen + 2);
    pstCopies->pcXpathMain.reset(pcXpathMain);
    pstCopies->pcPath.reset(pcPath);
    if (uiRet == KORV_OK && uiRetValue == KORV_OK)
        return true;
    KORV_LOG_ERROR(pstLocal, "malloc failed uiRet(%u)uiRetValue(%u)!", uiRet, uiRetValue);
    return false;
}

KorvTreeNode *Search(const YangXpathLookup *pstLookup, const PathCopies &stCopies,
                     TELMYANG_YANG_FILE_INFO_S *pstFileInfo)
{
    TELMYANG_LOCAL_DATA_S *pstLocal = pstLookup->pstLocal;
    KorvTreeNode *pstNode = nullptr;
    switch (KindOf(pstLookup->pcXpathMain)) {
        case PathKind::Augment:
            pstNode = TELMYANG_KorvFindAugmentNodeByname(pstLocal, stCopies.pcPath.get(), stCopies.pcXpathMain.get(),
                                                         pstFileInfo);
            KORV_LOG_INFO(pstLocal, "augment module pcXpathMain(%s).", pstLookup->pcXpathMain);
            return pstNode;
        case PathKind::Plain:
            pstNode = TELMYANG_KorvFindNodeByNodename(pstLocal, stCopies.pcPath.get(), pstFileInfo->pstOriginTree);
            KORV_LOG_INFO(pstLocal, "not augment module pcPath(%s)pcXpathMain(%s).", pstLookup->pcPath,
                          pstLookup->pcXpathMain);
            return pstNode;
        case PathKind::TooLong:
            return nullptr;
    }
    return nullptr;
}

/* Cuts the text at its last "/" and returns what stood behind it; null without "/". */
char *CutLastComponent(char *pcPath)
{
    char *pcSlash = XUR_StrRChr(pcPath, '/');
    if (pcSlash == nullptr)
        return nullptr;
    *pcSlash = '\0';
    return pcSlash + 1;
}

bool CopyPath(char (&acCopy)[KORV_XPATH_SIZE], const char *pcPath)
{
    if (strcpy_s(acCopy, sizeof(acCopy), pcPath) == 0)
        return true;
    ZOR_Assert(__FILE__, __LINE__, 0);
    return false;
}

} // namespace

uint32_t TELMYANG_JudgeXpathNodeType(TELMYANG_LOCAL_DATA_S *, const char *pcXpathMain)
{
    return KindOf(pcXpathMain) == PathKind::Augment ? 1 : 0;
}

uint32_t TELMYANG_DuplicateXpath(TELMYANG_LOCAL_DATA_S *pstLocal, char **ppcOut, const char *pcSrc, uint32_t uiLen)
{
    return CopyWithSlash(pstLocal, ppcOut, pcSrc, XUR_StrLen(pcSrc), uiLen);
}

KorvTreeNode *TELMYANG_KorvFindTreeNodeByXpath(const YangXpathLookup *pstLookup)
{
    TELMYANG_LOCAL_DATA_S *pstLocal = pstLookup->pstLocal;
    if (pstLookup->pcModuleName == nullptr || pstLookup->pcPath == nullptr || pstLookup->pcXpathMain == nullptr)
        return nullptr;
    TELMYANG_YANG_FILE_INFO_S *pstFileInfo =
        TELMYANG_GetIfYangModuleExist(pstLocal, pstLocal->pstYangCtx, pstLookup->pcModuleName, pstLookup->pcRevision);
    if (pstFileInfo == nullptr) {
        KORV_LOG_ERROR(pstLocal, "can not findYangModuleTree!");
        return nullptr;
    }
    PathCopies stCopies;
    if (!CopyPaths(pstLookup, &stCopies))
        return nullptr;
    KorvTreeNode *pstNode = Search(pstLookup, stCopies, pstFileInfo);
    if (pstNode == nullptr)
        KORV_LOG_ERROR(pstLocal, "find node (%s) failed!", stCopies.pcPath.get());
    return pstNode;
}

KorvTreeNode *TELMYANG_KorvFindTreeNodeByLeafXpath(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                                   const char *pcRevision, const char *pcPath, const char *pcXpathMain)
{
    char acPath[KORV_XPATH_SIZE];
    char acXpathMain[KORV_XPATH_SIZE];
    if (pcPath == nullptr || pcXpathMain == nullptr || !CopyPath(acPath, pcPath) || !CopyPath(acXpathMain, pcXpathMain))
        return nullptr;
    const char *pcLeafName = CutLastComponent(acPath);
    if (pcLeafName == nullptr || CutLastComponent(acXpathMain) == nullptr)
        return nullptr;
    const YangXpathLookup stLookup = {pstLocal,    pcModuleName,    pcRevision,     acPath,
                                      acXpathMain, KORV_XPATH_SIZE, KORV_XPATH_SIZE};
    KorvTreeNode *pstNode = TELMYANG_KorvFindTreeNodeByXpath(&stLookup);
    if (pstNode == nullptr) {
        KORV_LOG_ERROR(pstLocal, "Find Tree Node By Xpath failed, name(%s) pcPath(%s)pcXpathMain(%s)!",
                       korv::Shown(pcModuleName), pcPath, pcXpathMain);
        return nullptr;
    }
    return YANGLIB_IsLeafNode(pstNode, pcLeafName) != 0 ? pstNode : nullptr;
}

uint32_t YANGLIB_HasSubNodeInXpath(TELMYANG_LOCAL_DATA_S *pstLocal, const YangPathRequest *pstRequest)
{
    if (pstRequest->pcPath == nullptr || pstRequest->pcXpathMain == nullptr)
        return 0;
    const YangXpathLookup stLookup = {pstLocal,
                                      pstRequest->pcModuleName,
                                      pstRequest->pcRevision,
                                      pstRequest->pcPath,
                                      pstRequest->pcXpathMain,
                                      XUR_StrLen(pstRequest->pcPath),
                                      XUR_StrLen(pstRequest->pcXpathMain)};
    const KorvTreeNode *pstNode = TELMYANG_KorvFindTreeNodeByXpath(&stLookup);
    if (pstNode == nullptr)
        return 0;
    for (pstNode = pstNode->pstFirstChild; pstNode != nullptr; pstNode = pstNode->pstNextSibling) {
        if (pstNode->ucNodeType == KORV_NODE_ORDINARY)
            return 1;
    }
    return 0;
}

uint32_t YANGLIB_IsLeafNode(const KorvTreeNode *pstTreeNode, const char *pcLeafName)
{
    if (pstTreeNode == nullptr || pcLeafName == nullptr)
        return 0;
    return TELMYANG_ExistLeafNode(pstTreeNode->pstLeafList, pcLeafName);
}
