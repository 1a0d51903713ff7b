/* Blocks of the host's memory, and the guard that gives one back on every way out of a function. */
#ifndef KORV_HOST_MEMORY_H
#define KORV_HOST_MEMORY_H

#include <memory>

#include "telem_yang_lib/telem_yang_lib.h"

namespace korv {

/* Gives a block back; null does nothing. The place is the caller's. */
inline void HostFree(void *pvBlock, const char *pcFile = __builtin_FILE(), uint32_t uiLine = __builtin_LINE())
{
    if (pvBlock != nullptr)
        ZOR_Free_F(pvBlock, pcFile, uiLine);
}

/* A zero-filled block of the memory module, or null. The place is the caller's. */
inline void *AllocCleared(uint64_t ulModuleId, uint64_t ulSize, const char *pcFile = __builtin_FILE(),
                          uint32_t uiLine = __builtin_LINE())
{
    void *pvBlock = ZOR_Malloc_F(ulModuleId, g_aucZorMemPt[0], ulSize, pcFile, uiLine);
    if (pvBlock != nullptr && memset_s(pvBlock, ulSize, 0, ulSize) != 0)
        ZOR_Assert(pcFile, uiLine, 0);
    return pvBlock;
}

/* What a text copy does when the host's bounded copy reports a violation. */
enum class OnViolation {
    Assert, /* tells the host; the copy is taken as it is */
    GiveUp, /* there is no copy */
};

/* A copy of a text in a block of the memory module, or null. The place is the caller's. */
inline char *CopyText(uint64_t ulModuleId, const char *pcText, OnViolation eOnViolation = OnViolation::Assert,
                      const char *pcFile = __builtin_FILE(), uint32_t uiLine = __builtin_LINE())
{
    const uint32_t uiSize = XUR_StrLen(pcText) + 1;
    auto *pcCopy = static_cast<char *>(ZOR_Malloc_F(ulModuleId, g_aucZorMemPt[0], uiSize, pcFile, uiLine));
    if (pcCopy == nullptr || strcpy_s(pcCopy, uiSize, pcText) == 0)
        return pcCopy;
    if (eOnViolation == OnViolation::GiveUp) {
        HostFree(pcCopy, pcFile, uiLine);
        return nullptr;
    }
    ZOR_Assert(pcFile, uiLine, 0);
    return pcCopy;
}

struct HostDelete {
    void operator()(void *pvBlock) const { HostFree(pvBlock); }
};

/* Owns one block within a function. The place that its release names is this file's. */
template <typename T>
using HostPtr = std::unique_ptr<T, HostDelete>;

/* uiNum zero-filled records of T, or null with a log line (silently for none). */
template <typename T>
HostPtr<T> NewZeroed(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiNum = 1)
{
    return HostPtr<T>(static_cast<T *>(
        TELMYANG_Malloc_BZero(pstLocal, pstLocal->ulModuleId, static_cast<uint32_t>(uiNum * sizeof(T)))));
}

} // namespace korv

#endif // KORV_HOST_MEMORY_H
