/* The host's header as a C++17 host reads it. */
#include "korv_lib_yang.h"

static_assert(__cplusplus < 202002L, "compiled as C++17");

KorvTreeNode *StartOfTree(TELMYANG_YANG_FILE_INFO_S *pstFile);

KorvTreeNode *StartOfTree(TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    return pstFile->pstOriginTree;
}
