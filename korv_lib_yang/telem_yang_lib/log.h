/* Logging from within the library: a closed level costs its is-open call, and not even the arguments are evaluated. */
#ifndef KORV_LOG_H
#define KORV_LOG_H

#include "telem_yang_lib/telem_yang_lib.h"

namespace korv {

/* TELMYANG_WriteLog for a level that is known to be open: the host is not asked again. */
void WriteOpenLog(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiLevel, const char *pcLevelName, const char *pcFile,
                  const char *pcFunc, uint32_t uiLine, const char *pcFormat, ...) KORV_PRINTF_LIKE(7, 8);

/* TELMYANG_LIBDebugPrintIsOpen for one of the levels, without a call but the host's. */
inline bool IsOpen(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiLevel)
{
    if (pstLocal == nullptr)
        return false;
    const TELMYANG_DEBUG_HOOK_S &stHook = pstLocal->astDebugHook[uiLevel];
    return stHook.pfnDebugIsOpen != nullptr && stHook.pfnDebugIsOpen(pstLocal->pKorvComponent, stHook.uiDebugType) != 0;
}

/* A text as a message shows it: an absent one is "NULL". */
inline const char *Shown(const char *pcText)
{
    return pcText != nullptr ? pcText : "NULL";
}

} // namespace korv

#define KORV_LOG_AT(pstLocal, uiLevel, pcLevelName, ...)                                                   \
    do {                                                                                                   \
        if (korv::IsOpen(pstLocal, uiLevel))                                                               \
            korv::WriteOpenLog(pstLocal, uiLevel, pcLevelName, __FILE__, __func__, __LINE__, __VA_ARGS__); \
    } while (0)

#define KORV_LOG_ERROR(pstLocal, ...) KORV_LOG_AT(pstLocal, KORV_LOG_LEVEL_ERROR, "error", __VA_ARGS__)
#define KORV_LOG_INFO(pstLocal, ...) KORV_LOG_AT(pstLocal, KORV_LOG_LEVEL_INFO, "info", __VA_ARGS__)

#endif // KORV_LOG_H
