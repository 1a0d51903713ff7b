/* Rewriting the prefixes of a path. */
#include "korv_lib_yang/korv_lib_yang.h"

namespace {

uint32_t Overflow()
{
    ZOR_Assert(__FILE__, __LINE__, 0);
    return KORV_FAIL;
}

/* Appends a piece of text to the stretch's destination. */
bool Append(AugmentStretch *pstState, const char *pcText, uint32_t uiLen)
{
    if (strncpy_s(pstState->pcDst + pstState->uiDstPos, pstState->uiDstSize - pstState->uiDstPos, pcText, uiLen) != 0)
        return false;
    pstState->uiDstPos += uiLen;
    return true;
}

/* Where the component that holds the colon begins: at its "/", or at the start of the text. */
uint32_t ComponentBegin(const char *pcText, const char *pcColon)
{
    while (pcColon > pcText && *pcColon != '/')
        --pcColon;
    return static_cast<uint32_t>(pcColon - pcText);
}

} // namespace

uint32_t TELMYANG_BuildAugmentXpath(TELMYANG_LOCAL_DATA_S *, const char *pcSrc, char *pcDst, uint32_t uiDstSize)
{
    AugmentStretch stCopy = {};
    stCopy.pcDst = pcDst;
    stCopy.uiDstSize = uiDstSize;
    while (const char *pcColon = XUR_StrChr(pcSrc, ':')) {
        uint32_t uiKept = ComponentBegin(pcSrc, pcColon);
        uiKept += pcSrc[uiKept] == '/' ? 1 : 0;
        if (!Append(&stCopy, pcSrc, uiKept))
            return Overflow();
        pcSrc = pcColon + 1;
    }
    return Append(&stCopy, pcSrc, XUR_StrLen(pcSrc)) ? KORV_OK : Overflow();
}

uint32_t TELMYANG_AddPrifix2AugmentFullPath(TELMYANG_LOCAL_DATA_S *, AugmentStretch *pstState, uint32_t bHasEnd)
{
    const uint32_t uiStart = pstState->uiSrcPos;
    const uint32_t uiEnd = bHasEnd != 0 ? pstState->uiEnd : XUR_StrLen(pstState->pcSrc);
    for (; pstState->uiSrcPos < uiEnd; ++pstState->uiSrcPos) {
        const char *pcChar = pstState->pcSrc + pstState->uiSrcPos;
        if (!Append(pstState, pcChar, 1))
            return Overflow();
        if (*pcChar == '/' && pstState->uiSrcPos != uiStart &&
            !Append(pstState, pstState->pcPrefix, pstState->uiPrefixLen))
            return Overflow();
    }
    return KORV_OK;
}

uint32_t TELMYANG_BuildAugmentFullPath(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcSrc, uint32_t, char *pcDst,
                                       uint32_t uiDstSize)
{
    AugmentStretch stState = {};
    stState.pcSrc = pcSrc;
    stState.pcDst = pcDst;
    stState.uiDstSize = uiDstSize;
    const char *pcColon = XUR_StrChr(pcSrc, ':');
    while (pcColon != nullptr) {
        stState.uiSrcPos = ComponentBegin(pcSrc, pcColon);
        stState.pcPrefix = pcSrc + stState.uiSrcPos + (pcSrc[stState.uiSrcPos] == '/' ? 1 : 0);
        stState.uiPrefixLen = static_cast<uint32_t>(pcColon + 1 - stState.pcPrefix);
        const char *pcNext = XUR_StrChr(pcColon + 1, ':');
        if (pcNext != nullptr)
            stState.uiEnd = ComponentBegin(pcSrc, pcNext);
        if (TELMYANG_AddPrifix2AugmentFullPath(pstLocal, &stState, pcNext != nullptr ? 1 : 0) != KORV_OK)
            return KORV_FAIL;
        pcColon = pcNext;
    }
    return KORV_OK;
}
