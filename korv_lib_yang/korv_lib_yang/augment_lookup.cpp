/* Finding a node that lies in one of a module's augments. */
#include "korv_lib_yang/korv_lib_yang.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"

namespace {

/* The forms of a path that the search needs. */
struct AugmentPaths {
    char acAugmentXpath[KORV_XPATH_SIZE];  /* target path of the augment */
    char acNoPrefixXpath[KORV_XPATH_SIZE]; /* the whole path without prefixes */
};

/* "/" and everything in front of the component with the last prefix. */
bool CutTargetPath(const char *pcXpathMain, const char *pcLastColon, char (&acOut)[KORV_XPATH_SIZE])
{
    const char *pcSlash = pcLastColon;
    while (pcSlash > pcXpathMain && *pcSlash != '/')
        --pcSlash;
    acOut[0] = '/';
    if (strncpy_s(acOut + 1, sizeof(acOut) - 1, pcXpathMain, static_cast<size_t>(pcSlash - pcXpathMain)) == 0)
        return true;
    ZOR_Assert(__FILE__, __LINE__, 0);
    return false;
}

} // namespace

TELMYANG_AUGMENT_INFO_S *TELMYANG_FindAugmentInfoNode(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcTargetPath,
                                                      TELMYANG_YANG_FILE_INFO_S *pstFileInfo)
{
    for (uint32_t uiLoop = 0; uiLoop < pstFileInfo->ucAugmentNum; ++uiLoop) {
        if (XUR_StrCmp(pstFileInfo->astAugment[uiLoop].acAugNodeName, pcTargetPath) == 0)
            return &pstFileInfo->astAugment[uiLoop];
    }
    KORV_LOG_INFO(pstLocal, "FindAugmentInfoNode failed,name(%s)!", pcTargetPath);
    return nullptr;
}

KorvTreeNode *TELMYANG_KorvFindAugmentNodeByname(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcPath,
                                                 const char *pcXpathMain, TELMYANG_YANG_FILE_INFO_S *pstFileInfo)
{
    korv::HostPtr<char> pAugmentFullPath = korv::NewZeroed<char>(pstLocal, KORV_AUGMENT_FULL_PATH_SIZE);
    if (!pAugmentFullPath) {
        KORV_LOG_ERROR(pstLocal, "malloc failed!");
        return nullptr;
    }
    const char *pcLastColon = XUR_StrRChr(pcXpathMain, ':');
    if (pcLastColon == nullptr)
        return nullptr;
    AugmentPaths stPaths = {};
    if (!CutTargetPath(pcXpathMain, pcLastColon, stPaths.acAugmentXpath) ||
        TELMYANG_BuildAugmentFullPath(pstLocal, stPaths.acAugmentXpath, sizeof(stPaths.acAugmentXpath),
                                      pAugmentFullPath.get(), KORV_AUGMENT_FULL_PATH_SIZE) != KORV_OK ||
        TELMYANG_BuildAugmentXpath(pstLocal, pcPath, stPaths.acNoPrefixXpath, sizeof(stPaths.acNoPrefixXpath)) !=
            KORV_OK)
        return nullptr;
    const TELMYANG_AUGMENT_INFO_S *pstAugment =
        TELMYANG_FindAugmentInfoNode(pstLocal, stPaths.acAugmentXpath, pstFileInfo);
    KorvTreeNode *pstNode = nullptr;
    if (pstAugment != nullptr)
        pstNode = TELMYANG_KorvFindNodeByNodename(pstLocal, stPaths.acNoPrefixXpath, pstAugment->pstTargetTree);
    KORV_LOG_INFO(pstLocal, "find augment augmentXpath(%s)acNoPrefixXpath(%s)pAugmentFullPath(%s)pcXpathMain(%s)",
                  stPaths.acAugmentXpath, stPaths.acNoPrefixXpath, pAugmentFullPath.get(), pcXpathMain);
    return pstNode;
}
