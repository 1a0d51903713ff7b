/* A host in C that asks for data: why a module does not load, what is loaded, and what an id stands for.
 *
 *     korv_asking_host DIRECTORY MODULE... [CLASS/ATTRIBUTE]
 */
#include <korv_lib_yang.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static uint32_t PrintFailure(const YANGLIB_LOAD_FAILURE_S *pstFailure, void *pvCookie)
{
    (void)pvCookie;
    if (pstFailure->uiRefusedBy == YANGLIB_REFUSED_BY_SCHEMA)
        printf("  %s, line %u: %s\n", pstFailure->pcModule, pstFailure->uiLine, pstFailure->pcSentence);
    else
        printf("  %s: %s\n", pstFailure->pcClassPath != NULL ? pstFailure->pcClassPath : pstFailure->pcModule,
               pstFailure->pcSentence);
    return 0; /* go on */
}

static uint32_t PrintModule(const YANGLIB_MODULE_S *pstModule, void *pvCookie)
{
    (void)pvCookie;
    printf("%s of %s: %u classes\n", pstModule->pcModuleName,
           pstModule->pcLoadedRevision != NULL ? pstModule->pcLoadedRevision : "no revision", pstModule->uiClassNum);
    return 0;
}

static uint32_t PrintPlace(const YANGLIB_PLACE_S *pstPlace, void *pvCookie)
{
    static const char *const apcTree[] = {"own tree", "target tree", "self tree"};
    TELMYANG_LOCAL_DATA_S *pstLocal = (TELMYANG_LOCAL_DATA_S *)pvCookie;
    char acPath[256];
    YANGLIB_TEXT_S stText = {acPath, sizeof(acPath), 0};
    if (pstPlace->pstNode->ucNodeType == KORV_NODE_ORDINARY &&
        YANGLIB_GetNodePath(pstLocal, pstPlace->pstNode, YANGLIB_PATH_NAMES, &stText) == KORV_OK)
        printf("  %s, %s of %s\n", acPath, apcTree[pstPlace->uiTree], pstPlace->pstFile->pcModuleName);
    return 0;
}

/* "0x1001/10" */
static void PrintId(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcId)
{
    char *pcSlash = NULL;
    const uint32_t uiClassId = (uint32_t)strtoul(pcId, &pcSlash, 0);
    const uint32_t uiFieldId = (uint32_t)strtoul(pcSlash + (*pcSlash == '/' ? 1 : 0), NULL, 0);
    KorvTreeNode *pstNode = NULL;
    KorvTreeLeaf *pstLeaf = NULL;
    char acPath[256];
    YANGLIB_TEXT_S stText = {acPath, sizeof(acPath), 0};
    if (YANGLIB_FindAttribute(pstLocal, uiClassId, uiFieldId, &pstNode, &pstLeaf) == KORV_OK &&
        YANGLIB_GetLeafPath(pstLocal, pstNode, pstLeaf, YANGLIB_PATH_PREFIXED, &stText) == KORV_OK)
        printf("attribute %s is %s\n", pcId, acPath);
    else
        printf("attribute %s: nothing has it\n", pcId);
    printf("class 0x%x\n", uiClassId);
    if (YANGLIB_FindClass(pstLocal, uiClassId, PrintPlace, pstLocal) == KORV_NOT_FOUND)
        printf("  nothing has it\n");
}

int main(int iArgc, char **ppcArgv)
{
    TELMYANG_LOCAL_DATA_S *pstLocal = YANGLIB_Initial(1, 0, NULL, iArgc > 1 ? ppcArgv[1] : ".", NULL);
    if (pstLocal == NULL)
        return 1;
    for (int iArg = 2; iArg < iArgc && strchr(ppcArgv[iArg], '/') == NULL; ++iArg) {
        if (YANGLIB_LoadYangModule(pstLocal, ppcArgv[iArg], NULL) == KORV_OK)
            continue;
        printf("%s does not load:\n", ppcArgv[iArg]);
        (void)YANGLIB_ScanLoadFailures(pstLocal, ppcArgv[iArg], NULL, PrintFailure, NULL);
    }
    (void)YANGLIB_ScanModules(pstLocal, PrintModule, NULL);
    if (strchr(ppcArgv[iArgc - 1], '/') != NULL && iArgc > 2)
        PrintId(pstLocal, ppcArgv[iArgc - 1]);
    YANGLIB_Uninitial(pstLocal);
    return 0;
}
