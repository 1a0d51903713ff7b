/* Host memory and assertions on top of the C runtime: every module and partition shares the process's heap. */
#include <cstdio>
#include <cstdlib>

#include "korv_platform.h"

uint8_t g_aucZorMemPt[] = {0};

void *ZOR_Malloc_F(uint64_t, uint8_t, uint64_t ulSize, const char *, uint32_t)
{
    return std::malloc(ulSize);
}

void ZOR_Free_F(void *pvBlock, const char *, uint32_t)
{
    std::free(pvBlock);
}

void ZOR_Assert(const char *pcFile, uint32_t uiLine, uint32_t uiValue)
{
    std::fprintf(stderr, "%s:%u: assertion failed (%u)\n", pcFile, uiLine, uiValue);
}
