#include <korv_lib_yang.h>
#include <stdio.h>

static uint32_t PrintReason(const YANGLIB_LOAD_FAILURE_S *pstFailure, void *pvUnused)
{
    return (void)pvUnused, printf("%s\n", pstFailure->pcText) < 0;
}
int main(int iArgc, char **ppcArgv)
{
    TELMYANG_LOCAL_DATA_S *pstLib = YANGLIB_Initial(1, 0, NULL, iArgc > 1 ? ppcArgv[1] : ".", NULL);
    const uint32_t uiRet = YANGLIB_LoadYangModule(pstLib, "example-interfaces", NULL);
    if (uiRet != KORV_OK)
        (void)YANGLIB_ScanLoadFailures(pstLib, "example-interfaces", NULL, PrintReason, NULL);
    KorvTreeNode *pstNode = NULL;
    KorvTreeLeaf *pstLeaf = NULL;
    if (YANGLIB_FindAttribute(pstLib, 0x1001, 2, &pstNode, &pstLeaf) == KORV_OK)
        printf("attribute 2 of class 0x1001 is %s of %s\n", pstLeaf->pcName, pstNode->pcName);
    YANGLIB_Uninitial(pstLib);
    return uiRet != KORV_OK;
}
