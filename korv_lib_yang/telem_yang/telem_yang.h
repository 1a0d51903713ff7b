/*
 * telem_yang.h: the middle unit of the library. The registry of loaded modules, the schema context, and the class
 * trees: how they are generated from a module that is being loaded, and released.
 *
 * Results are 0 for success and 1 for failure unless they say otherwise; a failure is logged at level 0 where it is
 * detected, and again by each caller that passes it on.
 *
 * Thirteen functions are there for hosts alone; the library itself never calls them:
 * - TELEMYANG_GenerateOriginTree, TELEMYANG_GenerateAugmentTree, TELEMYANG_AugmentDupTargetYangtree,
 *   TELEMYANG_AugmentDupSelfYangtree, TELMYANG_GenerateKorvTreeNodes, TELMYANG_GenerateKorvSiblingTreeNodes and
 *   TELMYANG_DupOneKorvTreeNode: single steps of a load. Each of them has the limit of tree records for itself; a load
 *   shares one limit among all its trees (top_chain.h).
 * - TELMYANG_GetLeafNodeDataType, TELMYANG_GetLeafNodeNameKey and TELMYANG_GetLeafNodeDataRefKey: each scans the
 *   statements of a leaf; a load scans them once for all three.
 * - TELMYANG_GetAllCaseLeafNode: a load also says when leaves are left out.
 * - TELMYANG_AllocNodeModuleName: trees borrow the name.
 * - TELMYANG_FreeYangtreeAllNodes: the library knows which of its trees have notes (tree_release.h).
 */
#ifndef KORV_TELEM_YANG_H
#define KORV_TELEM_YANG_H

#include "../telem_yang_lib/telem_yang_lib.h"

#ifdef __cplusplus
extern "C" {
#endif

/* --- yang_context.cpp --- */

/* Creates the schema context into *ppSchemaCtx and makes it release private data through the library; 1 when there is
 * none, *ppSchemaCtx untouched. */
KORV_LIB_API uint32_t TELMYANG_CreateYangContext(TELMYANG_LOCAL_DATA_S *pstLocal, QY_CTX **ppSchemaCtx);

/* --- module_registry.cpp --- */

/* Gives the record copies of name and revision and marks it in use. A null revision stays null; an empty one is copied,
 * and no lookup finds it. 1 when there is no memory: what was copied stays in the record. */
KORV_LIB_API uint32_t TELMYANG_FillYangModuleInfo(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile,
                                                  uint64_t ulModuleId, const char *pcModuleName,
                                                  const char *pcRevision);

/* Takes the record out of the registry and releases it. Its trees are not released: do that first. */
KORV_LIB_API void TELMYANG_RemoveYangFile(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile);

/* Does the same with the record of that name and revision; 1 when no such module is registered. */
KORV_LIB_API uint32_t TELMYANG_RemoveYangFileInfoFromCtx(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                                         const char *pcRevision);

/* Releases a record that never was in the registry, with its trees; null does nothing. */
KORV_LIB_API void TELMYANG_FreeYangFileInfo(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile);

/* --- tree_links.cpp: linking and releasing single nodes --- */

/* The first function appends a node as last child of a parent, the second as last sibling of a node. KORV_INVALID for a
 * null node. Both follow the chain to its end. */
KORV_LIB_API uint32_t TELMYANG_AddKorvChildNode(KorvTreeNode *pstParent, KorvTreeNode *pstChild);
KORV_LIB_API uint32_t TELMYANG_AddKorvSiblingNode(KorvTreeNode *pstNode, KorvTreeNode *pstNew);

/* Releases name and leaves of the node, not the node, which is in no registered tree. */
KORV_LIB_API void TELMYANG_FreeKorvTreeNode(KorvTreeNode *pstNode);

/* Releases a vector of no registered tree with its leaf descriptors (null entries are skipped); the result of
 * VEC_VectorFree_F. */
KORV_LIB_API uint32_t TLMTLIB_FreeLeafList_(VEC_VECTOR_S *pstLeafList);

/* --- node_queue.cpp: first in, first out, so that trees are handled without recursion --- */

#pragma pack(push, 4)

/* An entry, or the head that the entries hang on; an empty queue's head is linked to itself. */
typedef struct DumpQueueEntry {
    struct DumpQueueEntry *pstNext;
    struct DumpQueueEntry *pstPrev;
    KorvTreeNode *pstTreeNode; /* null in a head */
} DumpQueueEntry;

#pragma pack(pop)

/* Puts a node at the end of the queue; a null node is not queued. 1 when there is no memory. */
KORV_LIB_API uint32_t TLMTLIB_AddNewNodeToQueue_(TELMYANG_LOCAL_DATA_S *pstLocal, DumpQueueEntry *pstQueue,
                                                 KorvTreeNode *pstNode);

/* Releases the entries of up to two queues (either may be null), not their tree nodes. */
KORV_LIB_API void TELMYANG_FreeQueue(DumpQueueEntry *pstFirstQueue, DumpQueueEntry *pstSecondQueue);

/* --- tree_release.cpp --- */

/* Releases a tree with the top nodes that follow its root, without recursion; null does nothing. 1 when the work queue
 * runs out of memory: the nodes still to come are given up. */
KORV_LIB_API uint32_t TELMYANG_FreeYangtreeAllNodes(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstRoot);

/* Releases the trees of every augment entry and sets their pointers to null; 0. */
KORV_LIB_API uint32_t TELMYANG_FreeYangtreeAllAugmentNodes(TELMYANG_LOCAL_DATA_S *pstLocal,
                                                           TELMYANG_YANG_FILE_INFO_S *pstFile);

/* --- record_release.cpp: the records on schema nodes --- */

/* Private-data free function of the schema context: releases the record of a node that is being released. */
KORV_LIB_API void TELEM_COR_FreeYinNodePrivateData(void *pvValue, QY_NODE *pNode, void *pvPrivate);

/* The first callback releases the record of one node, which a scan may visit twice; the second those of a node and of
 * everything below it. */
KORV_LIB_API uint32_t TELEMYANG_FreeYinExtensionInCurNode(QY_NODE *pNode, uint32_t uiTravType, void *pvCookie);
KORV_LIB_API uint32_t TELEMYANG_FreeAllYinExtensionInMoule(QY_NODE *pNode, void *pvUnused, void *pstLocal);

/* The first function releases the records under the augment targets of a module, the second all of the module. */
KORV_LIB_API void TELEMYANG_FreeAugmentYinExtensionData(TELMYANG_LOCAL_DATA_S *pstLocal,
                                                        TELMYANG_YANG_FILE_INFO_S *pstFile);
KORV_LIB_API void TELEMYANG_FreeAllYinExtensionInMouleEx(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                                         const char *pcRevision, TELMYANG_YANG_FILE_INFO_S *pstFile);

/* --- module_trees.cpp: all trees of a module --- */

/* Builds all trees of a module into its record; on failure the record keeps what was built. pcRevision may be null. */
KORV_LIB_API uint32_t TELEMYANG_GenerateYangMouleTree(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                                      const char *pcRevision, TELMYANG_YANG_FILE_INFO_S *pstFile,
                                                      QY_MOD *pMod);

/* Releases the trees of a registered module; 1 when it is not registered. */
KORV_LIB_API uint32_t TELEMYANG_DestroyYangMouleTree(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                                     const char *pcRevision);

/* --- tree_generation.cpp --- */

#pragma pack(push, 4)

/* State of a generation scan; zero-filled before each use. */
typedef struct {
    TELMYANG_LOCAL_DATA_S *pstLocal;
    KorvTreeNode *pstRoot;      /* first top node built so far */
    KorvTreeNode *pstCurParent; /* parent of the next node */
    KorvTreeNode *pstLastNode;  /* node of the schema node visited last, or null */
    QY_NODE *pStopNode;         /* schema node after whose tree a sibling scan ends, or null */
} KorvTreeGenCtx;

#pragma pack(pop)

/* Builds the trees of a module's own containers into its record. */
KORV_LIB_API uint32_t TELEMYANG_GenerateOriginTree(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                                   const char *pcRevision, TELMYANG_YANG_FILE_INFO_S *pstFile,
                                                   QY_MOD *pMod);

/* Builds the tree of one top node and appends it to the context's chain of top nodes. */
KORV_LIB_API uint32_t TELMYANG_GenerateKorvTreeNodes(QY_NODE *pNode, void *pvUnused, void *pstGen);

/* Makes and links the tree node of one schema node (tree scan callback). KORV_TREE_SCAN_SKIP for a schema node that has
 * none; KORV_NO_MEMORY, KORV_INVALID or 1 on failure. */
KORV_LIB_API uint32_t TELMYANG_DupOneKorvTreeNode(QY_NODE *pNode, uint32_t uiTravType, void *pstGen);

/* The parent of the next node, by how the scan reaches it. */
KORV_LIB_API KorvTreeNode *TELMYANG_UpdateLinkParentKorvNodeByTravType(KorvTreeNode *pstCurParent,
                                                                       KorvTreeNode *pstLastNode, uint32_t uiTravType);

/* One tree node with everything that it owns, or null: 0 with null for a schema node that has none, KORV_NO_MEMORY, or
 * 1 when it cannot be filled. Nothing stays allocated behind a failure. */
KORV_LIB_API uint32_t TELMYANG_CreateKorvTreeNodeByYinNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                           KorvTreeNode **ppstNode);

/* Gives a linked choice or case its parent's class id. */
KORV_LIB_API void TELEMYANG_ChoiceCaseUpdateClassId(KorvTreeNode *pstNode);

/* --- augment_trees.cpp --- */

/* Builds the target trees and then the self trees of a module's augments. */
KORV_LIB_API uint32_t TELEMYANG_GenerateAugmentTree(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                                    const char *pcRevision, TELMYANG_YANG_FILE_INFO_S *pstFile,
                                                    QY_MOD *pMod);
KORV_LIB_API uint32_t TELEMYANG_GetAugmentNum(QY_NODE *pNode, void *pvUnused, void *puiCount);
/* The first function builds the target trees. When one fails, the result is 1: earlier entries keep their trees, the
 * failing one's is released. The second builds the self trees; its result is always 0. A node that cannot be copied is
 * logged and ends the self tree of its entry. */
KORV_LIB_API uint32_t TELEMYANG_AugmentDupTargetYangtree(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                                         const char *pcRevision, TELMYANG_YANG_FILE_INFO_S *pstFile);
KORV_LIB_API uint32_t TELEMYANG_AugmentDupSelfYangtree(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                                       const char *pcRevision, TELMYANG_YANG_FILE_INFO_S *pstFile);

/* Builds the tree of one node of a sibling scan; 1 ends the scan, at the stop node or with a failure. */
KORV_LIB_API uint32_t TELMYANG_GenerateKorvSiblingTreeNodes(QY_NODE *pNode, void *pvUnused, void *pstGen);

/* The node's last child, or null. */
KORV_LIB_API QY_NODE *TELMYANG_GetAugNodeLastChild(QY_NODE *pNode);
KORV_LIB_API uint32_t TELMYANG_ImplGetAugNodeLastChildCb(QY_NODE *pNode, void *pvUnused, void *ppNode);

/* --- node_data.cpp: filling tree nodes --- */

/* Fills a zero-filled tree node from its schema node. On failure it is half filled: release it. */
KORV_LIB_API uint32_t TELMYANG_FillDataFromYangNode(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstNode,
                                                    QY_NODE *pNode);

/* Kind and names: 1 for a null tree node, KORV_NO_MEMORY when the name cannot be copied. */
KORV_LIB_API uint32_t TELMYANG_FillContainerBaseInfo(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstNode,
                                                     QY_NODE *pNode);
/* Sets ucNodeType; the schema node's type. */
KORV_LIB_API uint32_t TELEMYANG_ChoiceCaseNodeProc(KorvTreeNode *pstNode, QY_NODE *pNode);

/* Fills class id, sample id and both key lists from the node's record; does nothing without a record. 1 for more than
 * 16 keys. */
KORV_LIB_API uint32_t TELMYANG_FillSelfAndAncestorKeyList(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                          KorvTreeNode *pstNode);

/* --- node_names.cpp --- */

/* Name of the module that defines the node. The first function's is borrowed; the second's is a copy, or null, that the
 * caller releases with ZOR_Free_F. */
KORV_LIB_API const char *TELMYANG_GetNodeModuleName(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode);
KORV_LIB_API char *TELMYANG_AllocNodeModuleName(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode);
/* A copy of the node's name, or null. */
KORV_LIB_API char *TELMYANG_AllocNodeSelfName(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode);

/* --- node_leaves.cpp: the leaf vectors of a tree node --- */

#pragma pack(push, 4)

typedef struct {
    uint32_t uiCount;
} LeafNumCtx;

typedef struct {
    TELMYANG_LOCAL_DATA_S *pstLocal;
    YinInst *pstInst; /* may be null */
    KorvTreeNode *pstNode;
    VEC_VECTOR_S *pstLeafList;
} LeafFillCtx;

#pragma pack(pop)

/* Fills pstLeafList from the leaf and leaf-list children; on 1 the node keeps what was made, to be released with it. */
KORV_LIB_API uint32_t TELMYANG_FillLeafDataByNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst *pstInst,
                                                  KorvTreeNode *pstNode);
/* Callbacks of the children scan. The first counts leaves (cookie: LeafNumCtx); the second fills the vector (cookie:
 * LeafFillCtx) and ends the scan with 1 on failure. */
KORV_LIB_API uint32_t TELMYANG_GetLeafChildNum(QY_NODE *pNode, void *pvUnused, void *pstCount);
KORV_LIB_API uint32_t TELMYANG_FillLeafDataByNodeCb(QY_NODE *pNode, void *pvUnused, void *pstFill);

/* --- case_leaves.cpp: the leaves in choices below a node --- */

#define KORV_CASE_LEAF_NUM 255u /* case leaves that a node keeps at most */

#pragma pack(push, 4)
typedef struct {
    QY_NODE *pNode; /* the node that is being scanned */
    QY_NODE **ppLeaf;
    uint32_t uiLimit;
    uint32_t uiInCase; /* nonzero below a choice or case */
    uint8_t ucCount;
} CaseLeafScanCtx;
#pragma pack(pop)

/* Fills pstCaseLeafList of a container or list; on 1 the node keeps what was made, to be released with it. */
KORV_LIB_API uint32_t TELMYANG_FillCaseLeafDataByNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst *pstInst,
                                                      KorvTreeNode *pstNode);

/* Collects the enabled leaves in the choices below the node behind the first uiStart entries; the number of entries
 * then in use, never above the limit (at most 255). */
KORV_LIB_API uint32_t TELMYANG_GetAllCaseLeafNode(QY_NODE *pNode, uint32_t uiInCase, QY_NODE **ppLeaf, uint32_t uiStart,
                                                  uint32_t uiLimit);
KORV_LIB_API uint32_t TELMYANG_GetAllCaseLeafNodeCb(QY_NODE *pNode, void *pvUnused, void *pstScan);

/* --- leaf_data.cpp: filling leaf descriptors --- */

/* A new descriptor of a leaf or leaf-list, from the memory module ulModuleId; 1 and null when there is no memory. The
 * caller releases pcName and the descriptor with ZOR_Free_F. */
KORV_LIB_API uint32_t TELMYANG_FillLeafData(TELMYANG_LOCAL_DATA_S *pstLocal, uint64_t ulModuleId,
                                            KorvTreeLeaf **ppstLeaf, QY_NODE *pLeaf);

/* Sets ucIsKey when the leaf's attribute id is one of the class's own keys; pstInst may be null. 0. */
KORV_LIB_API uint32_t TELMYANG_FillYinInstKeyFromLeafNode(TELMYANG_LOCAL_DATA_S *pstLocal, YinInst *pstInst,
                                                          KorvTreeLeaf *pstLeaf);
KORV_LIB_API void TELMYANG_GetLeafNodeDataType(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pLeaf, KorvTreeLeaf *pstLeaf);
KORV_LIB_API void TELMYANG_GetLeafNodeNameKey(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pLeaf, KorvTreeLeaf *pstLeaf);
KORV_LIB_API void TELMYANG_GetLeafNodeDataRefKey(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pLeaf,
                                                 KorvTreeLeaf *pstLeaf);

/* The class id or attribute id of the record on a node that carries extension instances, else 0. */
KORV_LIB_API uint32_t TELMYANG_GetNodePrivateValue(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode);

/* Reads the range of a uint16, uint32 or uint64 leaf; 0. */
KORV_LIB_API uint32_t TELMYANG_GetLeafNodeTypeRange(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeLeaf *pstLeaf,
                                                    QY_NODE *pLeaf);
/* Stores one range part in a pair of signed 64-bit values (QY_RANGE_SCAN_PF); 0. */
KORV_LIB_API uint32_t TELMYANG_GetLeafNodeTypeRangeValue(const int64_t *pllStart, const int64_t *pllEnd, void *pllPair);

/* --- dump_leaves.cpp --- */

/* Fills the record's leaf vector from the node's; on 1 the record has none. The node must have one. */
KORV_LIB_API uint32_t TELMYANG_FillListDataFromLeafNode(TELMYANG_LOCAL_DATA_S *pstLocal, YangDumpNodeData *pstRecord,
                                                        const KorvTreeNode *pstTreeNode, uint64_t ulModuleId);

/* Releases the entry in hand (may be null) and the record's leaf vector with its entries. */
KORV_LIB_API void TELMYANG_FillListDataFreeIfErr_(YangDumpLeafData *pstLeafEntry, YangDumpNodeData *pstRecord);

/* --- dump_lists.cpp: the lists of a dump's level by level pass --- */

#define KORV_DUMP_PATH_SIZE 257u /* a node's path with its terminating zero */

#pragma pack(push, 4)

/* An entry, or the head that the entries hang on; an empty list's head is linked to itself. */
typedef struct DumpIterEntry {
    struct DumpIterEntry *pstNext;
    struct DumpIterEntry *pstPrev;
    KorvTreeNode *pstTreeNode;
    char acPath[KORV_DUMP_PATH_SIZE];
} DumpIterEntry;

#pragma pack(pop)

/* Puts every child of the node at the end of the list, with its path below the parent's. */
KORV_LIB_API uint32_t TELMYANG_PutAllChildNodeToIter(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstTreeNode,
                                                     DumpIterEntry *pstIter, const char *pcParentPath);

/* Releases every entry of both lists. */
KORV_LIB_API void TELMYANG_FreeInfoQueueAndIter(DumpIterEntry *pstInfoQueue, DumpIterEntry *pstIter);

#ifdef __cplusplus
}
#endif

#endif /* KORV_TELEM_YANG_H */
