/* The schema context of an instance. */
#include "telem_yang/telem_yang.h"

uint32_t TELMYANG_CreateYangContext(TELMYANG_LOCAL_DATA_S *, QY_CTX **ppSchemaCtx)
{
    QY_CTX *pSchemaCtx = QY_CTX_Create(QY_CTX_OPTION_KORV);
    if (pSchemaCtx == nullptr)
        return KORV_FAIL;
    *ppSchemaCtx = pSchemaCtx;
    QY_CTX_SetPridataFreeFunc(pSchemaCtx, TELEM_COR_FreeYinNodePrivateData);
    return KORV_OK;
}
