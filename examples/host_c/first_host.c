#include <korv_lib_yang.h>
#include <stdio.h>

static void Print(uint64_t ulHost, uint32_t uiLevel, const char *pcUnused, const char *pcText)
{
    (void)ulHost, (void)uiLevel, (void)pcUnused, (void)fprintf(stderr, "%s\n", pcText);
}
static uint32_t IsOpen(uint64_t ulHost, uint32_t uiLevel)
{
    return (void)ulHost, uiLevel == 0;
} /* errors only */

int main(int iArgc, char **ppcArgv)
{
    const TELMYANG_DEBUG_HOOK_S astHook[4] = {
        {0, Print, IsOpen}, {1, Print, IsOpen}, {2, Print, IsOpen}, {3, Print, IsOpen}};
    TELMYANG_LOCAL_DATA_S *pstLib = YANGLIB_Initial(1, 0, astHook, iArgc > 1 ? ppcArgv[1] : ".", NULL);
    if (pstLib == NULL || YANGLIB_LoadYangModule(pstLib, "example-interfaces", NULL) != 0)
        return 1;
    const YangXpathLookup stPath = {
        pstLib, "example-interfaces", NULL, "/interfaces/interface", "if:interfaces/if:interface", 0, 0};
    const KorvTreeNode *pstNode = TELMYANG_KorvFindTreeNodeByXpath(&stPath);
    if (pstNode != NULL)
        printf("%s is class 0x%x, sampled as 0x%x\n", pstNode->pcName, pstNode->uiClassId, pstNode->uiSampleId);
    YANGLIB_Uninitial(pstLib);
    return 0;
}
