/* The module "tiny" in tables, without files:
 *
 *   container box (class 0x77)
 *     list item, key id (class 0x78, ancestor keys from a list)
 *       leaf id uint32 1..9, leaf state enumeration
 */
#include "tiny_schema.h"

#include <string.h>

struct QY_EXT {
    const char *pcKeyword;
    const char *pcArgument;
};

struct QY_TYPE {
    uint32_t uiBase;
    int64_t llMin;
    int64_t llMax;
};

struct QY_NODE {
    uint32_t uiType;
    const char *pcName;
    int iParent;
    struct QY_EXT astExt[3];
    struct QY_TYPE stType;
    int bKey;
    void *pvPrivate;
};

struct QY_MOD {
    const char *pcName;
};

struct QY_CTX {
    int bLoaded;
};

static struct QY_NODE g_astNode[] = {
    {1, "box", -1, {{"class-id", "0x77"}, {"tlmt-sample-id", "5"}, {NULL, NULL}}, {0, 0, 0}, 0, NULL},
    {4, "item", 0, {{"class-id", "0x78"}, {"ancestor-key-fid", "8 9"}, {NULL, NULL}}, {0, 0, 0}, 0, NULL},
    {2, "id", 1, {{"field-id", "1"}, {NULL, NULL}, {NULL, NULL}}, {17, 1, 9}, 1, NULL},
    {2, "state", 1, {{"field-id", "2"}, {NULL, NULL}, {NULL, NULL}}, {6, 0, 0}, 0, NULL},
};
const unsigned g_uiTinyNodeNum = sizeof(g_astNode) / sizeof(g_astNode[0]);

static struct QY_MOD g_stModule = {"tiny"};
static struct QY_CTX g_stContext;
unsigned g_uiContexts = 0;

QY_NODE *TinyNode(unsigned uiIndex)
{
    return &g_astNode[uiIndex];
}

static int IndexOf(const QY_NODE *pNode)
{
    return (int)(pNode - g_astNode);
}

static QY_NODE *NextSibling(QY_NODE *pNode)
{
    for (unsigned i = (unsigned)IndexOf(pNode) + 1; i < g_uiTinyNodeNum; ++i) {
        if (g_astNode[i].iParent == pNode->iParent)
            return &g_astNode[i];
    }
    return NULL;
}

static QY_NODE *FirstChild(const QY_NODE *pNode)
{
    for (unsigned i = 0; i < g_uiTinyNodeNum; ++i) {
        if (g_astNode[i].iParent == IndexOf(pNode))
            return &g_astNode[i];
    }
    return NULL;
}

QY_CTX *QY_CTX_Create(uint32_t uiOptions)
{
    g_uiContexts++;
    g_stContext.bLoaded = 0;
    return uiOptions == QY_CTX_OPTION_KORV ? &g_stContext : NULL;
}

void QY_CTX_Delete(QY_CTX *pCtx)
{
    g_uiContexts -= pCtx == &g_stContext ? 1 : 0;
}

void QY_CTX_SetPridataFreeFunc(QY_CTX *pCtx, QY_PRIDATA_FREE_PF pfnFree)
{
    (void)pCtx, (void)pfnFree;
}

uint32_t QY_CTX_SetSearchDir(QY_CTX *pCtx, const char *pcDir)
{
    return (void)pCtx, (void)pcDir, 0;
}

void QY_CTX_UnSetSearchDir(QY_CTX *pCtx, const char *pcDir)
{
    (void)pCtx, (void)pcDir;
}

uint32_t QY_CTX_LoadModule(QY_CTX *pCtx, const char *pcModuleName, const char *pcRevision)
{
    (void)pcRevision;
    if (strcmp(pcModuleName, g_stModule.pcName) != 0)
        return 0x44;
    pCtx->bLoaded = 1;
    return 0;
}

QY_MOD *QY_CTX_GetModuleByModName(QY_CTX *pCtx, const char *pcModuleName)
{
    return pCtx->bLoaded && strcmp(pcModuleName, g_stModule.pcName) == 0 ? &g_stModule : NULL;
}

uint32_t QY_CTX_UnloadModule(QY_CTX *pCtx, const char *pcModuleName)
{
    (void)pcModuleName;
    pCtx->bLoaded = 0;
    return 0;
}

uint32_t QY_CTX_ScanAllSchemaLoadFail(QY_CTX *pCtx, QY_LOADFAIL_SCAN_PF pfnCb, void *pvCookie)
{
    (void)pCtx;
    return pfnCb("other", NULL, 0, "there is only the module tiny", 0, pvCookie);
}

uint32_t QY_MOD_EnableFeature(QY_MOD *pMod, const char *pcFeature)
{
    return (void)pMod, (void)pcFeature, 0;
}

const char *QY_MOD_GetModuleName(QY_MOD *pMod)
{
    return pMod->pcName;
}

const char *QY_MOD_GetRevision(QY_MOD *pMod)
{
    return pMod != NULL ? "2026-01-01" : NULL;
}

uint32_t QY_MOD_IterScanTopmostNode(QY_MOD *pMod, QY_NODE_SCAN_PF pfnCb, void *pvCookie)
{
    (void)pMod;
    return pfnCb(&g_astNode[0], NULL, pvCookie);
}

uint32_t QY_MOD_IterScanAugmentNode(QY_MOD *pMod, QY_NODE_SCAN_PF pfnCb, void *pvCookie)
{
    return (void)pMod, (void)pfnCb, (void)pvCookie, 0;
}

uint32_t QY_MOD_ScanAllExtInsts(QY_MOD *pMod, QY_EXT_SCAN_PF pfnCb, void *pvCookie)
{
    (void)pMod;
    return pfnCb(NULL, "quelvo-mim-extensions", "aaa-task-id", "12", pvCookie);
}

uint32_t QY_NODE_GetNodeType(QY_NODE *pNode)
{
    return pNode->uiType;
}

const char *QY_NODE_GetNodeName(QY_NODE *pNode)
{
    return pNode->pcName;
}

QY_NODE *QY_NODE_GetParentNode(QY_NODE *pNode)
{
    return pNode->iParent >= 0 ? &g_astNode[pNode->iParent] : NULL;
}

QY_MOD *QY_NODE_GetModule(QY_NODE *pNode)
{
    return (void)pNode, &g_stModule;
}

QY_NODE *QY_NODE_GetAugmentTargetNode(QY_NODE *pNode)
{
    return (void)pNode, NULL;
}

QY_NODE *QY_NODE_GetLeafrefTargetNode(QY_NODE *pNode, uint32_t uiFlag)
{
    return (void)pNode, (void)uiFlag, NULL;
}

uint32_t QY_NODE_GetNodeKeyNum(QY_NODE *pNode)
{
    return pNode->uiType == 4 ? 1 : 0;
}

uint32_t QY_NODE_IsKey(QY_NODE *pNode)
{
    return pNode->bKey ? 0xFFFFFFFF : 0xFFFFFFFE; /* bit 0 alone counts */
}

uint32_t QY_NODE_IsEnabled(QY_NODE *pNode)
{
    return (void)pNode, 1;
}

void *QY_NODE_GetPrivate(QY_NODE *pNode)
{
    return pNode->pvPrivate;
}

void QY_NODE_SetPrivate(QY_NODE *pNode, void *pvPrivate)
{
    pNode->pvPrivate = pvPrivate;
}

uint32_t QY_NODE_IterScanChildrenNode(QY_NODE *pNode, QY_NODE_SCAN_PF pfnCb, void *pvCookie)
{
    QY_NODE *pFirst = FirstChild(pNode);
    return pFirst != NULL ? QY_NODE_IterScanSiblingNode(pFirst, pfnCb, pvCookie) : 0;
}

uint32_t QY_NODE_IterScanSiblingNode(QY_NODE *pNode, QY_NODE_SCAN_PF pfnCb, void *pvCookie)
{
    for (; pNode != NULL; pNode = NextSibling(pNode)) {
        const uint32_t uiRet = pfnCb(pNode, NULL, pvCookie);
        if (uiRet != 0)
            return uiRet;
    }
    return 0;
}

/* The siblings from pNode on with everything below them; uiTravType is how the first one is reached. */
static uint32_t ScanLevel(QY_NODE *pNode, uint32_t uiTravType, QY_TREE_SCAN_PF pfnCb, void *pvCookie)
{
    for (; pNode != NULL; pNode = uiTravType != QY_TRAV_START ? NextSibling(pNode) : NULL) {
        uint32_t uiRet = pfnCb(pNode, uiTravType, pvCookie);
        if (uiRet == KORV_TREE_SCAN_SKIP) {
            uiTravType = QY_TRAV_SIBLING;
            continue;
        }
        QY_NODE *pChild = FirstChild(pNode);
        if (uiRet == 0 && pChild != NULL) {
            uiRet = ScanLevel(pChild, QY_TRAV_CHILD, pfnCb, pvCookie);
            if (uiRet == 0)
                uiRet = pfnCb(pNode, QY_TRAV_RETURN, pvCookie);
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
    return ScanLevel(pNode, QY_TRAV_START, pfnCb, pvCookie);
}

uint32_t QY_NODE_ScanAllExtInsts(QY_NODE *pNode, QY_EXT_SCAN_PF pfnCb, void *pvCookie)
{
    for (struct QY_EXT *pstExt = pNode->astExt; pstExt->pcKeyword != NULL; ++pstExt) {
        const uint32_t uiRet = pfnCb(pstExt, "quelvo-mim-extensions", pstExt->pcKeyword, pstExt->pcArgument, pvCookie);
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
    return pfnCb(NULL, NULL, &pNode->stType, pvCookie);
}

uint32_t QY_EXT_ScanAllChildExtInsts(QY_EXT *pExt, QY_EXT_SCAN_PF pfnCb, void *pvCookie)
{
    return (void)pExt, (void)pfnCb, (void)pvCookie, 0;
}

uint32_t QY_TYPE_GetBuiltInBaseType(QY_TYPE *pType)
{
    return pType->uiBase;
}

uint32_t QY_TYPE_ScanNameValuePair(QY_TYPE *pType, QY_ENUM_SCAN_PF pfnCb, void *pvCookie)
{
    return pType->uiBase == 6 ? pfnCb("on", 3, NULL, pvCookie) : 0;
}

uint32_t QY_TYPE_ScanStartEndPair(QY_TYPE *pType, QY_RANGE_SCAN_PF pfnCb, void *pvCookie)
{
    return pfnCb(&pType->llMin, &pType->llMax, pvCookie);
}
