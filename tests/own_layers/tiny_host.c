/* A host that links the library alone and brings both layers below it: loads, queries and unloads through them. */
#include <stdio.h>
#include <string.h>

#include "korv_lib_yang.h"
#include "tiny_schema.h"

static int g_iFailures = 0;

#define CHECK(condition)                                                          \
    do {                                                                          \
        if (!(condition)) {                                                       \
            (void)fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition); \
            g_iFailures++;                                                        \
        }                                                                         \
    } while (0)

static char g_acLastError[256];

static void Print(uint64_t pHost, uint32_t uiDebugType, const char *pcReserved, const char *pcText)
{
    (void)pHost, (void)pcReserved;
    if (uiDebugType == 0)
        (void)snprintf(g_acLastError, sizeof(g_acLastError), "%s", pcText);
}

static uint32_t IsOpen(uint64_t pHost, uint32_t uiDebugType)
{
    return pHost == 7 && uiDebugType == 0;
}

static uint32_t CountNode(void *pUserData, KorvTreeNode *pstTreeNode)
{
    (void)pstTreeNode;
    ++*(int *)pUserData;
    return 0;
}

static uint32_t TakePair(const char *pcName, int32_t iValue, void *pCookie)
{
    CHECK(strcmp(pcName, "on") == 0);
    *(int32_t *)pCookie = iValue;
    return 0;
}

static void Query(TELMYANG_LOCAL_DATA_S *pstLib)
{
    const YangPathRequest stRequest = {"tiny", NULL, "/box/item", "t:box/t:item"};
    int iNodes = 0;
    CHECK(YANGLIB_TravelYangModule(pstLib, &stRequest, &iNodes, CountNode, CountNode) == 0);
    CHECK(iNodes == 2);
    KorvTreeNode *pstItem =
        TELMYANG_KorvFindTreeNodeByLeafXpath(pstLib, "tiny", NULL, "/box/item/id", "t:box/t:item/t:id");
    CHECK(pstItem != NULL && pstItem->uiClassId == 0x78);
    if (pstItem == NULL)
        return;
    CHECK(pstItem->aucSelfNodeKey[0] == 1 && pstItem->aucSelfNodeKey[1] == 0);
    CHECK(pstItem->aucAncestorKey[0] == 8 && pstItem->aucAncestorKey[1] == 9);
    const KorvTreeLeaf *pstId = pstItem->pstLeafList->ppvItem[0];
    CHECK(pstId->ucIsKey == 1 && pstId->llRangeMin == 1 && pstId->llRangeMax == 9);
    int32_t iValue = 0;
    CHECK(YANGLIB_ScanNameValuePair(pstItem->pstLeafList->ppvItem[1], TakePair, &iValue) == 0 && iValue == 3);
    CHECK(strcmp(YANGLIB_GetYangRevision(pstLib, "tiny"), "2026-01-01") == 0);
}

static void Dump(TELMYANG_LOCAL_DATA_S *pstLib)
{
    const YangDumpRequest stRequest = {pstLib, "tiny", NULL, NULL, 0};
    YangDumpNodeData **ppstRecords = NULL;
    uint32_t uiCount = 0;
    CHECK(YANGLIB_DumpYangModuleDataEx(&stRequest, &ppstRecords, &uiCount) == 0);
    CHECK(uiCount == 2 && strcmp(ppstRecords[1]->pcXpath, "/box/item") == 0);
    YANGLIB_FreeDumpDataEx(ppstRecords, uiCount);
    ZOR_Free_F(ppstRecords, __FILE__, __LINE__);
}

/* The module extra goes, and what it had added to tiny's tree with it. */
static void UnloadExtra(TELMYANG_LOCAL_DATA_S *pstLib)
{
    CHECK(YANGLIB_LoadYangModule(pstLib, "extra", NULL) == 0);
    CHECK(YANGLIB_LoadYangModule(pstLib, "tiny", NULL) == 0);
    KorvTreeNode *pstItem =
        TELMYANG_KorvFindTreeNodeByLeafXpath(pstLib, "tiny", NULL, "/box/item/speed", "t:box/t:item/t:speed");
    CHECK(pstItem != NULL && pstItem->pstLeafList->uiCount == 3);
    if (pstItem == NULL)
        return;
    KorvTreeLeaf *const *ppstLeaf = (KorvTreeLeaf *const *)pstItem->pstLeafList->ppvItem;
    CHECK(ppstLeaf[2]->pYinNode == TinyNode(4));
    CHECK(YANGLIB_UnloadYangModule(pstLib, "extra", NULL) == 0);
    CHECK(ppstLeaf[0]->pYinNode == TinyNode(2) && ppstLeaf[1]->pYinNode == TinyNode(3));
    CHECK(ppstLeaf[2]->pYinNode == NULL);
    for (unsigned i = 0; i < 4; ++i)
        CHECK(QY_NODE_GetPrivate(TinyNode(i)) == NULL);
    CHECK(YANGLIB_LoadYangModule(pstLib, "extra", NULL) == 0);
    CHECK(YANGLIB_LoadYangModule(pstLib, "extra", "r") == 0);
    CHECK(YANGLIB_UnloadYangModule(pstLib, "extra", NULL) == 0);
    const TELMYANG_YANG_FILE_INFO_S *pstFile = TELMYANG_GetIfYangModuleExist(pstLib, pstLib->pstYangCtx, "extra", "r");
    CHECK(pstFile != NULL && pstFile->astAugment[0].pAugNode == NULL && pstFile->astAugment[0].pFirstChild == NULL);
    CHECK(YANGLIB_UnloadYangModuleAll(pstLib) == 0);
}

int main(void)
{
    const TELMYANG_DEBUG_HOOK_S astHook[4] = {
        {0, Print, IsOpen}, {1, Print, IsOpen}, {2, Print, IsOpen}, {3, Print, IsOpen}};
    TELMYANG_LOCAL_DATA_S *pstLib = YANGLIB_Initial(42, 7, astHook, "in", "memory");
    CHECK(pstLib != NULL);
    CHECK(YANGLIB_LoadYangModule(pstLib, "other", NULL) == 1);
    CHECK(strcmp(g_acLastError, "Load Module (other) fail!") == 0);
    CHECK(YANGLIB_LoadYangModule(pstLib, "tiny", NULL) == 0);
    for (unsigned i = 0; i < 4; ++i)
        CHECK(QY_NODE_GetPrivate(TinyNode(i)) == NULL);
    Query(pstLib);
    Dump(pstLib);
    CHECK(YANGLIB_UnloadYangModule(pstLib, "tiny", NULL) == 0);
    CHECK(g_uiLiveBlocks == 2);
    UnloadExtra(pstLib);
    CHECK(g_uiLiveBlocks == 2);
    CHECK(YANGLIB_LoadYangModule(pstLib, "tiny", "r") == 0);
    YANGLIB_Uninitial(pstLib);
    CHECK(g_uiLiveBlocks == 0 && g_uiContexts == 0 && g_uiAssertions == 0 && g_uiWrongHandles == 0);
    return g_iFailures != 0;
}
