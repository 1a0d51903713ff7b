/* The host's header and its C++ face as a C++17 host reads them. */
#include "korv_lib_yang.h"
#include "korv_lib_yang.hpp"

static_assert(__cplusplus < 202002L, "compiled as C++17");

KorvTreeNode *StartOfTree(TELMYANG_YANG_FILE_INFO_S *pstFile);

KorvTreeNode *StartOfTree(TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    return pstFile->pstOriginTree;
}
