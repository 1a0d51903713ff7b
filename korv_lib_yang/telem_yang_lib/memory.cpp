/* The allocation that most of the library's memory comes from. */
#include "telem_yang_lib/log.h"

void *TELMYANG_Malloc_BZero(TELMYANG_LOCAL_DATA_S *pstLocal, uint64_t ulModuleId, uint32_t uiSize)
{
    if (uiSize == 0)
        return nullptr;
    void *pvBlock = ZOR_Malloc_F(ulModuleId, g_aucZorMemPt[0], uiSize, __FILE__, __LINE__);
    if (pvBlock == nullptr) {
        KORV_LOG_ERROR(pstLocal, "malloc fail!");
        return nullptr;
    }
    if (memset_s(pvBlock, uiSize, 0, uiSize) != 0)
        ZOR_Assert(__FILE__, __LINE__, 0);
    return pvBlock;
}
