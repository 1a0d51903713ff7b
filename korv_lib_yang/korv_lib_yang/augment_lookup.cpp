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

/* True when the path fits the buffer for full paths even if all of it but its slashes were the prefix of every
 * component. */
bool SurelyFitsFull(const char *pcPath)
{
    uint32_t uiSlashes = 0;
    for (const char *pcSlash = XUR_StrChr(pcPath, '/'); pcSlash != nullptr; pcSlash = XUR_StrChr(pcSlash + 1, '/'))
        ++uiSlashes;
    const uint32_t uiLen = XUR_StrLen(pcPath);
    return uiSlashes * (uiLen - uiSlashes) + uiLen < KORV_AUGMENT_FULL_PATH_SIZE;
}

/* True when it fits even if every component took the longest prefix. */
bool FitsWithLongestPrefix(const char *pcPath)
{
    uint32_t uiSlashes = 0;
    ptrdiff_t lLongest = 0;
    const char *pcBegin = pcPath;
    const char *pcChar = pcPath;
    for (; *pcChar != '\0'; ++pcChar) {
        if (*pcChar == '/') {
            ++uiSlashes;
            pcBegin = pcChar + 1;
        } else if (*pcChar == ':' && pcChar + 1 - pcBegin > lLongest) {
            lLongest = pcChar + 1 - pcBegin;
        }
    }
    return uiSlashes * lLongest + (pcChar - pcPath) < ptrdiff_t{KORV_AUGMENT_FULL_PATH_SIZE};
}

/* The path with a prefix on every component, for the one line that shows it. */
const char *FullPath(TELMYANG_LOCAL_DATA_S *pstLocal, const AugmentPaths &stPaths, char *pcOut)
{
    if (*pcOut == '\0')
        (void)TELMYANG_BuildAugmentFullPath(pstLocal, stPaths.acAugmentXpath, sizeof(stPaths.acAugmentXpath), pcOut,
                                            KORV_AUGMENT_FULL_PATH_SIZE);
    return pcOut;
}

/* Fills the paths; false when one does not fit. The full path is built here only where it may be too long. */
bool FillPaths(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcPath, const char *pcXpathMain, const char *pcLastColon,
               AugmentPaths *pstPaths, char *pcFullPath)
{
    if (!CutTargetPath(pcXpathMain, pcLastColon, pstPaths->acAugmentXpath))
        return false;
    if (!SurelyFitsFull(pstPaths->acAugmentXpath) && !FitsWithLongestPrefix(pstPaths->acAugmentXpath) &&
        TELMYANG_BuildAugmentFullPath(pstLocal, pstPaths->acAugmentXpath, sizeof(pstPaths->acAugmentXpath), pcFullPath,
                                      KORV_AUGMENT_FULL_PATH_SIZE) != KORV_OK)
        return false;
    return TELMYANG_BuildAugmentXpath(pstLocal, pcPath, pstPaths->acNoPrefixXpath, sizeof(pstPaths->acNoPrefixXpath)) ==
           KORV_OK;
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
    AugmentPaths stPaths; /* each is written before it is read: clearing both would cost as much as the search */
    stPaths.acAugmentXpath[0] = stPaths.acNoPrefixXpath[0] = '\0';
    if (!FillPaths(pstLocal, pcPath, pcXpathMain, pcLastColon, &stPaths, pAugmentFullPath.get()))
        return nullptr;
    const TELMYANG_AUGMENT_INFO_S *pstAugment =
        TELMYANG_FindAugmentInfoNode(pstLocal, stPaths.acAugmentXpath, pstFileInfo);
    KorvTreeNode *pstNode = nullptr;
    if (pstAugment != nullptr)
        pstNode = TELMYANG_KorvFindNodeByNodename(pstLocal, stPaths.acNoPrefixXpath, pstAugment->pstTargetTree);
    KORV_LOG_INFO(pstLocal, "find augment augmentXpath(%s)acNoPrefixXpath(%s)pAugmentFullPath(%s)pcXpathMain(%s)",
                  stPaths.acAugmentXpath, stPaths.acNoPrefixXpath, FullPath(pstLocal, stPaths, pAugmentFullPath.get()),
                  pcXpathMain);
    return pstNode;
}
