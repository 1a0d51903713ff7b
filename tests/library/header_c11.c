/* The host's header as a C11 host reads it. */
#include "korv_lib_yang.h"

uint32_t HostFromC(void);

uint32_t HostFromC(void)
{
    TELMYANG_LOCAL_DATA_S *pstLocal = YANGLIB_Initial(1, 2, NULL, NULL, NULL);
    const uint32_t uiRet = pstLocal != NULL ? YANGLIB_LoadYangModule(pstLocal, "no-such-module", NULL) : 99;
    YANGLIB_Uninitial(pstLocal);
    return uiRet;
}
