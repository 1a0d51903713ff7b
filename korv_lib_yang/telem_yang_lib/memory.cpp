/* The allocation that most of the library's memory comes from. */
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"

void *TELMYANG_Malloc_BZero(TELMYANG_LOCAL_DATA_S *pstLocal, uint64_t ulModuleId, uint32_t uiSize)
{
    if (uiSize == 0)
        return nullptr;
    void *pvBlock = korv::AllocCleared(ulModuleId, uiSize);
    if (pvBlock == nullptr)
        KORV_LOG_ERROR(pstLocal, "malloc fail!");
    return pvBlock;
}
