/* A host in C that does everything once: hooks that print, two search directories, datatypes of its own, loading, finding,
 * walking, dumping and unloading.
 *
 *     korv_complete_host DIRECTORY [DIRECTORY]
 */
#include <korv_lib_yang.h>
#include <stdio.h>

enum {
    ERROR_LEVEL = 0,
    PROGRESS_LEVEL = 2,
    MEMORY_MODULE_ID = 7,
    MODULE_NUM = 2
};

static const char *const g_apcModule[MODULE_NUM] = {"example-interfaces", "example-interface-qos"};

/* What this host wants to be handed back by every hook. */
typedef struct {
    uint32_t bProgress; /* progress is wanted, not errors alone */
    uint32_t uiAdapted; /* leaves that got a datatype of this host */
} HOST_S;

static HOST_S *HostOf(uint64_t pKorvComponent)
{
    return (HOST_S *)(uintptr_t)pKorvComponent;
}

/* --- Debug hooks --- */

static uint32_t IsOpen(uint64_t pKorvComponent, uint32_t uiLevel)
{
    return uiLevel == ERROR_LEVEL || (uiLevel == PROGRESS_LEVEL && HostOf(pKorvComponent)->bProgress != 0);
}

static void Print(uint64_t pKorvComponent, uint32_t uiLevel, const char *pcReserved, const char *pcText)
{
    (void)pKorvComponent;
    (void)pcReserved;
    printf("%s: %s\n", uiLevel == ERROR_LEVEL ? "error" : "info", pcText);
}

/* --- Datatypes: this host samples truth values as one byte --- */

static uint32_t Adapt(uint64_t pKorvComponent, KorvTreeLeaf *pstLeaf)
{
    enum {
        DATATYPE_BYTE = 2
    };
    if (pstLeaf->ucBaseType == QY_TYPE_BOOLEAN && (pstLeaf->ucMask & KORV_MASK_DATA_TYPE) == 0) {
        pstLeaf->uiDataType = DATATYPE_BYTE;
        pstLeaf->ucMask |= KORV_MASK_DATA_TYPE;
        HostOf(pKorvComponent)->uiAdapted++;
    }
    return 0; /* not read */
}

/* --- Finding --- */

static void PrintKeys(const char *pcTitle, const uint8_t *pucKey)
{
    if (pucKey[0] == 0)
        return;
    printf(", %s", pcTitle);
    for (uint32_t uiLoop = 0; uiLoop < NODE_KEY_LIST_NUM && pucKey[uiLoop] != 0; ++uiLoop)
        printf(" %u", pucKey[uiLoop]);
}

static void PrintClass(const char *pcName, uint32_t uiClassId, const uint8_t *pucSelfKey, const uint8_t *pucAncestorKey)
{
    printf("%s: class 0x%x", pcName, uiClassId);
    PrintKeys("own keys", pucSelfKey);
    PrintKeys("ancestor keys", pucAncestorKey);
    printf("\n");
}

/* One container or list; a leaf needs the leaf lookup, unless its holder has no children. */
static void Find(TELMYANG_LOCAL_DATA_S *pstLocal, const YangPathRequest *pstRequest)
{
    const YangXpathLookup stLookup = {
        pstLocal, pstRequest->pcModuleName, pstRequest->pcRevision, pstRequest->pcPath, pstRequest->pcXpathMain, 0, 0};
    const KorvTreeNode *pstNode = TELMYANG_KorvFindTreeNodeByXpath(&stLookup);
    if (pstNode == NULL)
        pstNode = TELMYANG_KorvFindTreeNodeByLeafXpath(pstLocal, pstRequest->pcModuleName, pstRequest->pcRevision,
                                                       pstRequest->pcPath, pstRequest->pcXpathMain);
    if (pstNode == NULL)
        printf("%s: nothing found\n", pstRequest->pcPath);
    else
        PrintClass(pstRequest->pcPath, pstNode->uiClassId, pstNode->aucSelfNodeKey, pstNode->aucAncestorKey);
}

/* --- Walking --- */

static uint32_t PrintEnum(const char *pcName, int32_t iValue, void *pCookie)
{
    (void)pCookie;
    printf(" %s=%d", pcName, iValue);
    return 0; /* not read */
}

static void PrintLeaves(const VEC_VECTOR_S *pstLeafList)
{
    const uint32_t uiNum = pstLeafList != NULL ? VEC_VectorCount(pstLeafList) : 0;
    for (uint32_t uiLoop = 0; uiLoop < uiNum; ++uiLoop) {
        const KorvTreeLeaf *pstLeaf = (const KorvTreeLeaf *)pstLeafList->ppvItem[uiLoop];
        if (!YANGLIB_IsEnumLeaf(pstLeaf))
            continue;
        printf("    %s:", pstLeaf->pcName);
        (void)YANGLIB_ScanNameValuePair(pstLeaf, PrintEnum, NULL);
        printf("\n");
    }
}

static uint32_t VisitAncestor(void *pUserData, KorvTreeNode *pstNode)
{
    (void)pUserData;
    printf("  below %s\n", pstNode->pcName);
    return 0; /* go on */
}

static uint32_t VisitNode(void *pUserData, KorvTreeNode *pstNode)
{
    static const char *const apcKind[] = {"node", "choice", "case"};
    ++*(uint32_t *)pUserData;
    printf("  %s %s\n", apcKind[pstNode->ucNodeType], pstNode->pcName);
    PrintLeaves(pstNode->pstLeafList);
    return 0;
}

static void Walk(TELMYANG_LOCAL_DATA_S *pstLocal, const YangPathRequest *pstRequest)
{
    uint32_t uiVisited = 0;
    printf("walk from %s\n", pstRequest->pcPath);
    const uint32_t uiRet = YANGLIB_TravelYangModule(pstLocal, pstRequest, &uiVisited, VisitAncestor, VisitNode);
    printf("  result %u, %u nodes\n", uiRet, uiVisited);
}

/* --- Dumping --- */

static void Dump(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName)
{
    const YangDumpRequest stRequest = {pstLocal, pcModuleName, NULL, NULL, 0};
    YangDumpNodeData **ppRecords = NULL; /* a dump that finds nothing leaves it alone */
    uint32_t uiCount = 0;
    if (YANGLIB_DumpYangModuleDataEx(&stRequest, &ppRecords, &uiCount) != KORV_OK)
        return;
    printf("dump of %s\n", pcModuleName);
    for (uint32_t uiLoop = 0; uiLoop < uiCount; ++uiLoop) {
        const YangDumpNodeData *pstNode = ppRecords[uiLoop];
        PrintClass(pstNode->pcXpath, pstNode->uiClassId, pstNode->aucSelfNodeKey, pstNode->aucAncestorKey);
    }
    YANGLIB_FreeDumpDataEx(ppRecords, uiCount); /* the records */
    ZOR_Free_F(ppRecords, __FILE__, __LINE__);  /* the array; null when there was nothing */
}

/* --- From start to end --- */

static TELMYANG_LOCAL_DATA_S *SetUp(HOST_S *pstHost, const char *pcDir1, const char *pcDir2)
{
    TELMYANG_DEBUG_HOOK_S astHook[KORV_LOG_LEVEL_NUM];
    for (uint32_t uiLevel = 0; uiLevel < KORV_LOG_LEVEL_NUM; ++uiLevel)
        astHook[uiLevel] = (TELMYANG_DEBUG_HOOK_S){uiLevel, Print, IsOpen};
    const uint64_t pKorvComponent = (uint64_t)(uintptr_t)pstHost;
    TELMYANG_LOCAL_DATA_S *pstLocal = YANGLIB_Initial(MEMORY_MODULE_ID, pKorvComponent, astHook, pcDir1, pcDir2);
    if (pstLocal != NULL)
        YANGLIB_RegisterDatatypeAdaptFunc(pstLocal, Adapt); /* before the loads whose leaves it is to see */
    return pstLocal;
}

static uint32_t LoadAll(TELMYANG_LOCAL_DATA_S *pstLocal)
{
    for (size_t uiLoop = 0; uiLoop < MODULE_NUM; ++uiLoop) {
        const uint32_t uiRet = YANGLIB_LoadYangModule(pstLocal, g_apcModule[uiLoop], NULL);
        printf("load %s: %u\n", g_apcModule[uiLoop], uiRet);
        if (uiRet != KORV_OK)
            return uiRet;
    }
    return KORV_OK;
}

static void Ask(TELMYANG_LOCAL_DATA_S *pstLocal)
{
    const YangPathRequest astRequest[] = {
        {"example-interfaces", NULL, "/interfaces/interface", "if:interfaces/if:interface"},
        {"example-interfaces", NULL, "/interfaces/interface/mtu", "if:interfaces/if:interface/if:mtu"},
        {"example-interface-qos", NULL, "/interfaces/interface/traffic", "if:interfaces/if:interface/ifq:traffic"},
    };
    for (size_t uiLoop = 0; uiLoop < sizeof(astRequest) / sizeof(astRequest[0]); ++uiLoop)
        Find(pstLocal, &astRequest[uiLoop]);
    Walk(pstLocal, &astRequest[0]);
    Dump(pstLocal, "example-interfaces");
}

int main(int iArgc, char **ppcArgv)
{
    HOST_S stHost = {0, 0};
    TELMYANG_LOCAL_DATA_S *pstLocal = SetUp(&stHost, iArgc > 1 ? ppcArgv[1] : ".", iArgc > 2 ? ppcArgv[2] : NULL);
    if (pstLocal == NULL)
        return 1;
    const uint32_t uiRet = LoadAll(pstLocal);
    if (uiRet == KORV_OK) {
        printf("%u modules, %u leaves with a datatype of this host\n", pstLocal->uiModuleNum, stHost.uiAdapted);
        Ask(pstLocal);
        stHost.bProgress = 1;
        (void)YANGLIB_UnloadYangModule(pstLocal, g_apcModule[1], NULL);
    }
    YANGLIB_Uninitial(pstLocal); /* unloads what is still loaded */
    return uiRet == KORV_OK ? 0 : 1;
}
