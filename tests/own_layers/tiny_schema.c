/* Two modules in tables, without files:
 *
 *   tiny:  container box (class 0x77)
 *            list item, key id (class 0x78, ancestor keys from a list)
 *              leaf id uint32 1..9, leaf state enumeration
 *   extra: augment /t:box/t:item
 *            leaf speed enumeration
 */
#include "tiny_schema.h"

#include <string.h>

struct Ext {
    const char *pcKeyword;
    const char *pcArgument;
};

struct Type {
    uint32_t uiBase;
    int64_t llMin;
    int64_t llMax;
};

struct Mod {
    const char *pcName;
    int bByName;
    int bThere; /* loaded by name, or imported by what is */
};

struct Node {
    uint32_t uiType;
    const char *pcName;
    int iParent;
    struct Ext astExt[3];
    struct Type stType;
    int bKey;
    struct Mod *pstMod;
    int bThere;
    void *pvPrivate;
};

struct Ctx {
    QY_PRIDATA_FREE_PF pfnFree;
};

enum {
    ITEM = 1,
    AUGMENT = 5
};

static struct Mod g_stTiny = {"tiny", 0, 0};
static struct Mod g_stExtra = {"extra", 0, 0};

static struct Node g_astNode[] = {
    {1, "box", -1, {{"class-id", "0x77"}, {"tlmt-sample-id", "5"}}, {0, 0, 0}, 0, &g_stTiny, 0, NULL},
    {4, "item", 0, {{"class-id", "0x78"}, {"ancestor-key-fid", "8 9"}}, {0, 0, 0}, 0, &g_stTiny, 0, NULL},
    {2, "id", 1, {{"field-id", "1"}}, {17, 1, 9}, 1, &g_stTiny, 0, NULL},
    {2, "state", 1, {{"field-id", "2"}}, {6, 0, 0}, 0, &g_stTiny, 0, NULL},
    {2, "speed", 1, {{"field-id", "3"}}, {6, 0, 0}, 0, &g_stExtra, 0, NULL},
    {14, "/t:box/t:item", -1, {{NULL, NULL}}, {0, 0, 0}, 0, &g_stExtra, 0, NULL},
};
const unsigned g_uiTinyNodeNum = sizeof(g_astNode) / sizeof(g_astNode[0]);

static struct Ctx g_stContext;
unsigned g_uiContexts = 0;
unsigned g_uiWrongHandles = 0;

/* --- handles: one more than the record's address --- */

static void *Handle(void *pvRecord)
{
    return pvRecord != NULL ? (char *)pvRecord + 1 : NULL;
}

static void *Record(const void *pvHandle)
{
    g_uiWrongHandles += ((uintptr_t)pvHandle & 1) == 0 ? 1 : 0;
    return (char *)(uintptr_t)pvHandle - 1;
}

static struct Mod *ModOf(const QY_MOD *pMod)
{
    return Record(pMod);
}

static struct Node *NodeOf(const QY_NODE *pNode)
{
    struct Node *pstNode = Record(pNode);
    g_uiWrongHandles += pstNode->bThere ? 0 : 1;
    return pstNode;
}

QY_NODE *TinyNode(unsigned uiIndex)
{
    return Handle(&g_astNode[uiIndex]);
}

/* --- the tables --- */

static struct Node *FindNode(unsigned uiFrom, int iParent)
{
    for (unsigned i = uiFrom; i < g_uiTinyNodeNum; ++i) {
        if (g_astNode[i].bThere && g_astNode[i].iParent == iParent && g_astNode[i].uiType != 14)
            return &g_astNode[i];
    }
    return NULL;
}

static struct Node *NextSibling(const struct Node *pstNode)
{
    return FindNode((unsigned)(pstNode - g_astNode) + 1, pstNode->iParent);
}

static struct Node *FirstChild(const struct Node *pstNode)
{
    if (pstNode->uiType == 14)
        return &g_astNode[AUGMENT - 1];
    return FindNode(0, (int)(pstNode - g_astNode));
}

/* Releases a module that nothing needs any more, node by node. */
static void Settle(struct Mod *pstMod, int bNeeded)
{
    if (pstMod->bThere && !bNeeded) {
        for (unsigned i = 0; i < g_uiTinyNodeNum; ++i) {
            if (g_astNode[i].pstMod != pstMod)
                continue;
            if (g_astNode[i].pvPrivate != NULL)
                g_stContext.pfnFree(NULL, TinyNode(i), g_astNode[i].pvPrivate);
            g_astNode[i].bThere = 0;
        }
    }
    for (unsigned i = 0; bNeeded && i < g_uiTinyNodeNum; ++i)
        g_astNode[i].bThere |= g_astNode[i].pstMod == pstMod;
    pstMod->bThere = bNeeded;
}

static void SettleAll(void)
{
    Settle(&g_stExtra, g_stExtra.bByName);
    Settle(&g_stTiny, g_stTiny.bByName || g_stExtra.bByName);
}

static struct Mod *FindMod(const char *pcName)
{
    if (strcmp(pcName, g_stTiny.pcName) == 0)
        return &g_stTiny;
    return strcmp(pcName, g_stExtra.pcName) == 0 ? &g_stExtra : NULL;
}

QY_CTX *QY_CTX_Create(uint32_t uiOptions)
{
    g_uiContexts++;
    return uiOptions == QY_CTX_OPTION_KORV ? Handle(&g_stContext) : NULL;
}

void QY_CTX_Delete(QY_CTX *pCtx)
{
    g_uiContexts -= Record(pCtx) == &g_stContext ? 1 : 0;
    g_stTiny.bByName = g_stExtra.bByName = 0;
    SettleAll();
}

void QY_CTX_SetPridataFreeFunc(QY_CTX *pCtx, QY_PRIDATA_FREE_PF pfnFree)
{
    ((struct Ctx *)Record(pCtx))->pfnFree = pfnFree;
}

uint32_t QY_CTX_SetSearchDir(QY_CTX *pCtx, const char *pcDir)
{
    return (void)Record(pCtx), (void)pcDir, 0;
}

void QY_CTX_UnSetSearchDir(QY_CTX *pCtx, const char *pcDir)
{
    (void)pCtx, (void)pcDir;
}

uint32_t QY_CTX_LoadModule(QY_CTX *pCtx, const char *pcModuleName, const char *pcRevision)
{
    (void)Record(pCtx), (void)pcRevision;
    struct Mod *pstMod = FindMod(pcModuleName);
    if (pstMod == NULL)
        return 0x44;
    pstMod->bByName = 1;
    SettleAll();
    return 0;
}

QY_MOD *QY_CTX_GetModuleByModName(QY_CTX *pCtx, const char *pcModuleName)
{
    (void)Record(pCtx);
    struct Mod *pstMod = FindMod(pcModuleName);
    return pstMod != NULL && pstMod->bByName ? Handle(pstMod) : NULL;
}

uint32_t QY_CTX_UnloadModule(QY_CTX *pCtx, const char *pcModuleName)
{
    (void)Record(pCtx);
    struct Mod *pstMod = FindMod(pcModuleName);
    if (pstMod == NULL || !pstMod->bByName)
        return 0x45;
    pstMod->bByName = 0;
    SettleAll();
    return 0;
}

uint32_t QY_CTX_ScanAllSchemaLoadFail(QY_CTX *pCtx, QY_LOADFAIL_SCAN_PF pfnCb, void *pvCookie)
{
    (void)pCtx;
    return pfnCb("other", NULL, 0, "there are only the modules tiny and extra", 0, pvCookie);
}

uint32_t QY_MOD_EnableFeature(QY_MOD *pMod, const char *pcFeature)
{
    return (void)pMod, (void)pcFeature, 0;
}

const char *QY_MOD_GetModuleName(QY_MOD *pMod)
{
    return ModOf(pMod)->pcName;
}

const char *QY_MOD_GetRevision(QY_MOD *pMod)
{
    return pMod != NULL ? "2026-01-01" : NULL;
}

uint32_t QY_MOD_IterScanTopmostNode(QY_MOD *pMod, QY_NODE_SCAN_PF pfnCb, void *pvCookie)
{
    return ModOf(pMod) == &g_stTiny ? pfnCb(TinyNode(0), NULL, pvCookie) : 0;
}

uint32_t QY_MOD_IterScanAugmentNode(QY_MOD *pMod, QY_NODE_SCAN_PF pfnCb, void *pvCookie)
{
    return ModOf(pMod) == &g_stExtra ? pfnCb(TinyNode(AUGMENT), NULL, pvCookie) : 0;
}

uint32_t QY_MOD_ScanAllExtInsts(QY_MOD *pMod, QY_EXT_SCAN_PF pfnCb, void *pvCookie)
{
    (void)ModOf(pMod);
    return pfnCb(NULL, "quelvo-mim-extensions", "aaa-task-id", "12", pvCookie);
}

uint32_t QY_NODE_GetNodeType(QY_NODE *pNode)
{
    return NodeOf(pNode)->uiType;
}

const char *QY_NODE_GetNodeName(QY_NODE *pNode)
{
    return NodeOf(pNode)->pcName;
}

QY_NODE *QY_NODE_GetParentNode(QY_NODE *pNode)
{
    const int iParent = NodeOf(pNode)->iParent;
    return iParent >= 0 ? TinyNode((unsigned)iParent) : NULL;
}

QY_MOD *QY_NODE_GetModule(QY_NODE *pNode)
{
    return Handle(NodeOf(pNode)->pstMod);
}

QY_NODE *QY_NODE_GetAugmentTargetNode(QY_NODE *pNode)
{
    return NodeOf(pNode)->uiType == 14 ? TinyNode(ITEM) : NULL;
}

QY_NODE *QY_NODE_GetLeafrefTargetNode(QY_NODE *pNode, uint32_t uiFlag)
{
    return (void)pNode, (void)uiFlag, NULL;
}

uint32_t QY_NODE_GetNodeKeyNum(QY_NODE *pNode)
{
    return NodeOf(pNode)->uiType == 4 ? 1 : 0;
}

uint32_t QY_NODE_IsKey(QY_NODE *pNode)
{
    return NodeOf(pNode)->bKey ? 0xFFFFFFFF : 0xFFFFFFFE; /* bit 0 alone counts */
}

uint32_t QY_NODE_IsEnabled(QY_NODE *pNode)
{
    return (void)pNode, 1;
}

void *QY_NODE_GetPrivate(QY_NODE *pNode)
{
    return NodeOf(pNode)->pvPrivate;
}

void QY_NODE_SetPrivate(QY_NODE *pNode, void *pvPrivate)
{
    NodeOf(pNode)->pvPrivate = pvPrivate;
}

uint32_t QY_NODE_IterScanChildrenNode(QY_NODE *pNode, QY_NODE_SCAN_PF pfnCb, void *pvCookie)
{
    struct Node *pstNode = NodeOf(pNode);
    for (struct Node *pstChild = FirstChild(pstNode); pstChild != NULL; pstChild = NextSibling(pstChild)) {
        const uint32_t uiRet = pfnCb(Handle(pstChild), NULL, pvCookie);
        if (uiRet != 0)
            return uiRet;
    }
    return 0;
}

uint32_t QY_NODE_IterScanSiblingNode(QY_NODE *pNode, QY_NODE_SCAN_PF pfnCb, void *pvCookie)
{
    for (struct Node *pstNode = NodeOf(pNode); pstNode != NULL; pstNode = NextSibling(pstNode)) {
        const uint32_t uiRet = pfnCb(Handle(pstNode), NULL, pvCookie);
        if (uiRet != 0)
            return uiRet;
    }
    return 0;
}

/* The siblings from pstNode on with everything below them; uiTravType is how the first one is reached. */
static uint32_t ScanLevel(struct Node *pstNode, uint32_t uiTravType, QY_TREE_SCAN_PF pfnCb, void *pvCookie)
{
    for (; pstNode != NULL; pstNode = uiTravType != QY_TRAV_START ? NextSibling(pstNode) : NULL) {
        uint32_t uiRet = pfnCb(Handle(pstNode), uiTravType, pvCookie);
        if (uiRet == KORV_TREE_SCAN_SKIP) {
            uiTravType = QY_TRAV_SIBLING;
            continue;
        }
        struct Node *pstChild = FirstChild(pstNode);
        if (uiRet == 0 && pstChild != NULL) {
            uiRet = ScanLevel(pstChild, QY_TRAV_CHILD, pfnCb, pvCookie);
            if (uiRet == 0)
                uiRet = pfnCb(Handle(pstNode), QY_TRAV_RETURN, pvCookie);
        }
        if (uiRet != 0)
            return uiRet;
        if (uiTravType != QY_TRAV_START)
            uiTravType = QY_TRAV_SIBLING;
    }
    return 0;
}

uint32_t QY_NODE_TreeScanAllNode(QY_NODE *pNode, QY_TREE_SCAN_PF pfnCb, void *pvCookie)
{
    return ScanLevel(NodeOf(pNode), QY_TRAV_START, pfnCb, pvCookie);
}

uint32_t QY_NODE_ScanAllExtInsts(QY_NODE *pNode, QY_EXT_SCAN_PF pfnCb, void *pvCookie)
{
    for (struct Ext *pstExt = NodeOf(pNode)->astExt; pstExt->pcKeyword != NULL; ++pstExt) {
        const uint32_t uiRet =
            pfnCb(Handle(pstExt), "quelvo-mim-extensions", pstExt->pcKeyword, pstExt->pcArgument, pvCookie);
        if (uiRet != 0)
            return uiRet;
    }
    return 0;
}

uint32_t QY_NODE_ReplaceDstExtInst(QY_NODE *pDst, QY_NODE *pSrc)
{
    return (void)pDst, (void)pSrc, 1;
}

uint32_t QY_NODE_ScanDerivedType(QY_NODE *pNode, QY_TYPE_SCAN_PF pfnCb, void *pvCookie)
{
    return pfnCb(NULL, NULL, Handle(&NodeOf(pNode)->stType), pvCookie);
}

uint32_t QY_EXT_ScanAllChildExtInsts(QY_EXT *pExt, QY_EXT_SCAN_PF pfnCb, void *pvCookie)
{
    return (void)Record(pExt), (void)pfnCb, (void)pvCookie, 0;
}

uint32_t QY_TYPE_GetBuiltInBaseType(QY_TYPE *pType)
{
    return ((struct Type *)Record(pType))->uiBase;
}

uint32_t QY_TYPE_ScanNameValuePair(QY_TYPE *pType, QY_ENUM_SCAN_PF pfnCb, void *pvCookie)
{
    return ((struct Type *)Record(pType))->uiBase == 6 ? pfnCb("on", 3, NULL, pvCookie) : 0;
}

uint32_t QY_TYPE_ScanStartEndPair(QY_TYPE *pType, QY_RANGE_SCAN_PF pfnCb, void *pvCookie)
{
    const struct Type *pstType = Record(pType);
    return pfnCb(&pstType->llMin, &pstType->llMax, pvCookie);
}
