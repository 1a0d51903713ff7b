/* Messages on their way to the host's debug hooks. */
#include "telem_yang_lib/log.h"

#include <cstdarg>

namespace {

void FormatAndPrint(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiLevel, const char *pcFunc, uint32_t uiLine,
                    const char *pcFormat, va_list vaArgs)
{
    char acText[KORV_LOG_TEXT_SIZE] = {};
    if (vsnprintf_s(acText, sizeof(acText), pcFormat, vaArgs) < 0)
        ZOR_Assert(__FILE__, __LINE__, 0);
    TELMYANG_LIBDebugPrint(pstLocal, uiLevel, pcFunc, uiLine, acText);
}

} // namespace

namespace korv {

void WriteOpenLog(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiLevel, const char *, const char *, const char *pcFunc,
                  uint32_t uiLine, const char *pcFormat, ...)
{
    va_list vaArgs;
    va_start(vaArgs, pcFormat);
    FormatAndPrint(pstLocal, uiLevel, pcFunc, uiLine, pcFormat, vaArgs);
    va_end(vaArgs);
}

} // namespace korv

void TELMYANG_LIBRegDebugFuncHook(TELMYANG_LOCAL_DATA_S *pstLocal, const TELMYANG_DEBUG_HOOK_S *pstHookTable)
{
    if (pstHookTable == nullptr)
        return;
    if (memcpy_s(pstLocal->astDebugHook, sizeof(pstLocal->astDebugHook), pstHookTable,
                 sizeof(pstLocal->astDebugHook)) != 0)
        ZOR_Assert(__FILE__, __LINE__, 0);
}

uint32_t TELMYANG_LIBDebugPrintIsOpen(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiLevel)
{
    if (pstLocal == nullptr || uiLevel >= KORV_LOG_LEVEL_NUM)
        return 0;
    const TELMYANG_DEBUG_HOOK_S &stHook = pstLocal->astDebugHook[uiLevel];
    return stHook.pfnDebugIsOpen != nullptr ? stHook.pfnDebugIsOpen(pstLocal->pKorvComponent, stHook.uiDebugType) : 0;
}

void TELMYANG_LIBDebugPrint(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiLevel, const char *, uint32_t,
                            const char *pcText)
{
    if (pstLocal == nullptr || uiLevel >= KORV_LOG_LEVEL_NUM)
        return;
    const TELMYANG_DEBUG_HOOK_S &stHook = pstLocal->astDebugHook[uiLevel];
    if (stHook.pfnDebugPrint != nullptr)
        stHook.pfnDebugPrint(pstLocal->pKorvComponent, stHook.uiDebugType, "NULL", pcText);
}

void TELMYANG_WriteLog(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiLevel, const char *, const char *,
                       const char *pcFunc, uint32_t uiLine, const char *pcFormat, ...)
{
    if (TELMYANG_LIBDebugPrintIsOpen(pstLocal, uiLevel) == 0)
        return;
    va_list vaArgs;
    va_start(vaArgs, pcFormat);
    FormatAndPrint(pstLocal, uiLevel, pcFunc, uiLine, pcFormat, vaArgs);
    va_end(vaArgs);
}

uint32_t KORV_LIBYANG_LoadFailedPrint(const char *pcModuleName, const char *, uint32_t, const char *pcErrInfo, uint32_t,
                                      void *pstLocal)
{
    if (pcModuleName != nullptr && pcErrInfo != nullptr)
        KORV_LOG_ERROR(static_cast<TELMYANG_LOCAL_DATA_S *>(pstLocal), "3. Load module %s failed, errInfo: %s",
                       pcModuleName, pcErrInfo);
    return 0;
}
