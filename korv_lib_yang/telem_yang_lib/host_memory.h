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

/* A block of the instance's memory module, not zero-filled, or null. The place is the caller's. */
inline void *HostAlloc(const TELMYANG_LOCAL_DATA_S *pstLocal, uint64_t ulSize, const char *pcFile = __builtin_FILE(),
                       uint32_t uiLine = __builtin_LINE())
{
    return ZOR_Malloc_F(pstLocal->ulModuleId, g_aucZorMemPt[0], ulSize, pcFile, uiLine);
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
