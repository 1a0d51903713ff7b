/**
 * @file
 * The host's interface of libkorv_libyang.
 *
 * The library turns YANG modules (YIN or compact syntax) into the class and attribute model by which a host samples and addresses
 * data, and answers the host's questions about it.
 *
 * In short
 *
 *     pstLocal = YANGLIB_Initial(ulModuleId, component, astHooks, "/models", NULL);
 *     YANGLIB_LoadYangModule(pstLocal, "example-interfaces", NULL);
 *     ... lookups, travel, dumps ...
 *     YANGLIB_Uninitial(pstLocal);
 *
 * Conventions
 *
 *  - Results are unsigned 32-bit codes: 0 = success, anything else a failure. Functions that produce a record return a
 *    pointer, null on failure.
 *  - Texts are zero-terminated UTF-8. Text arguments are borrowed for the duration of the call; the library keeps
 *    copies of what it needs later.
 *  - A failure is reported through the host's debug hooks at level 0, from the innermost function outward, unless its
 *    function says otherwise; progress at level 2.
 *  - Pointer arguments must not be null unless their function says that they may be.
 *  - All memory comes from ZOR_Malloc_F with the host's memory module id and goes back through ZOR_Free_F.
 *  - One instance is driven by one thread at a time; the library takes no locks and creates no threads. Different
 *    instances may be driven by different threads, as far as the layers below allow it (korv_platform.h). Hooks and
 *    callbacks run on the calling thread. They let no exception out, may ask (lookups, travel, dumps, small questions), and
 *    must not load or unload modules or change directories on the same instance. YANGLIB_Initial and YANGLIB_Uninitial
 *    write g_pstKORVLibYangLocalData: call them from one thread.
 *  - No C++ exception leaves a function.
 *
 * The header compiles as C11 and as C++17. Records are 4-byte packed unless said otherwise.
 */
#ifndef KORV_LIB_YANG_H
#define KORV_LIB_YANG_H

#include "korv_platform.h"

/** Marks a function that the library exports. */
#if defined(__GNUC__)
#define KORV_LIB_API __attribute__((visibility("default")))
#else
#define KORV_LIB_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup host_version Version
 *
 * By the rules of semantic versioning: hosts of one major version go on with every later library of it, and while that
 * is 0, of one minor version.
 * @{
 */

#define KORV_LIB_YANG_VERSION "0.1.0"  /**< version of this header */
#define KORV_LIB_YANG_VERSION_MAJOR 0u /**< its first number */
#define KORV_LIB_YANG_VERSION_MINOR 1u /**< its second number */
#define KORV_LIB_YANG_VERSION_PATCH 0u /**< its third number */

/** The version as one number, so that later ones are greater. */
#define KORV_LIB_YANG_VERSION_NUMBER \
    (KORV_LIB_YANG_VERSION_MAJOR * 10000u + KORV_LIB_YANG_VERSION_MINOR * 100u + KORV_LIB_YANG_VERSION_PATCH)

/** KORV_LIB_YANG_VERSION_NUMBER of the library that the host runs with; the macro is what it was compiled with. */
KORV_LIB_API uint32_t YANGLIB_GetLibVersion(void);

/** @} */

/**
 * @defgroup host_values Result codes and limits
 * @{
 */

#define KORV_OK 0u               /**< success */
#define KORV_FAIL 1u             /**< the library's own failures */
#define KORV_TRAVEL_NOT_FOUND 3u /**< travel found no start node */
#define KORV_NO_MEMORY 12u       /**< no memory for a tree node, or for what a question needs */
#define KORV_INVALID 22u /**< a tree node cannot be linked; a question with a null argument that it does not allow */

/** No id. No function of this header answers it; those of the units' own headers do. A class or sample id may have this
 * value. */
#define KORV_NO_ID 0xFFFFFFFFu

#define NODE_KEY_LIST_NUM 16u       /**< own keys and ancestor keys that a tree node can hold */
#define KORV_AUGMENT_NUM 20u        /**< augments of one module */
#define KORV_SEARCH_DIR_SIZE 256u   /**< a search directory with its terminating zero */
#define KORV_AUG_NODE_NAME_SIZE 257 /**< an augment's target path with its terminating zero */
#define KORV_LOG_LEVEL_NUM 4u       /**< debug hooks of a host, and log levels */

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup host_hooks Debug hooks
 * @{
 */

/** Prints one message: its level is uiDebugType, as the hook entry has it. pcReserved is always the text "NULL"; pcText
 * has at most 1023 characters and is valid during the call only. */
typedef void (*TELMYANG_DEBUG_PRINT_PF)(uint64_t pKorvComponent, uint32_t uiDebugType, const char *pcReserved,
                                        const char *pcText);

/** Nonzero when output of this entry is wanted. Asked before each message is formatted. */
typedef uint32_t (*TELMYANG_DEBUG_ISOPEN_PF)(uint64_t pKorvComponent, uint32_t uiDebugType);

#pragma pack(push, 1)

/** One log level of the host: 20 bytes, a table holds the levels 0 to 3. Level 0 carries errors and level 2 progress;
 * the levels 1 and 3 are only asked whether they are open. */
typedef struct {
    uint32_t uiDebugType;                    /**< handed back to both functions */
    TELMYANG_DEBUG_PRINT_PF pfnDebugPrint;   /**< may be null: messages are dropped */
    TELMYANG_DEBUG_ISOPEN_PF pfnDebugIsOpen; /**< may be null: the level is closed */
} TELMYANG_DEBUG_HOOK_S;

KORV_LAYOUT(sizeof(TELMYANG_DEBUG_HOOK_S) == 20);
KORV_LAYOUT(offsetof(TELMYANG_DEBUG_HOOK_S, pfnDebugPrint) == 4);
KORV_LAYOUT(offsetof(TELMYANG_DEBUG_HOOK_S, pfnDebugIsOpen) == 12);

#pragma pack(pop)

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup host_tree Class tree
 * @{
 */

#define KORV_NODE_ORDINARY 0u /**< container or list */
#define KORV_NODE_CHOICE 1u   /**< choice */
#define KORV_NODE_CASE 2u     /**< case */

#define KORV_MASK_FIELD_ID 0x02u    /**< KorvTreeLeaf::uiFieldId was found */
#define KORV_MASK_DATA_TYPE 0x08u   /**< KorvTreeLeaf::uiDataType was found */
#define KORV_MASK_REF_ID_KEY 0x10u  /**< KorvTreeLeaf::uiRefIdKeyFid was found */
#define KORV_MASK_NAME2ID_KEY 0x20u /**< KorvTreeLeaf::uiName2IdKeyFid was found */

#pragma pack(push, 4)

/** Descriptor of one leaf or leaf-list of a tree node. It belongs to its node and lives until the module is unloaded.
 * */
typedef struct {
    const char *pcModuleName; /**< module that defines the leaf; borrowed */
    char *pcName;             /**< owned */
    uint8_t ucIsKey;          /**< 1: the leaf is one of its class's own keys */
    uint8_t ucMask;           /**< KORV_MASK_ bits: which of the values below were found */
    uint8_t ucBaseType;       /**< built-in type (QY_TYPE_) in the end, leafrefs followed; 0: there is none */
    uint32_t uiClassId;       /**< class id of the tree node; 0 in the list of a choice or case node itself */
    uint32_t uiFieldId;       /**< attribute id, 1 to 255; leaf-lists have none */
    uint32_t uiReserved1;     /**< 0 */
    uint32_t uiDataType;      /**< what "datatype-id" says; the default of a type is not filled in */
    uint32_t uiRefIdKeyFid;   /**< what "ref-id-key-fid" says */
    uint32_t uiName2IdKeyFid; /**< what "name2id-key-fid" says: the leaf's index map */
    uint32_t uiReserved2;     /**< 0 */
    int64_t llRangeMin;       /**< lower bound of the last range part of uint16, uint32 and uint64 leaves, else 0 */
    int64_t llRangeMax;       /**< its upper bound; a bound of uint64 from 2^63 on keeps its 64 bits */
    QY_NODE *pYinNode; /**< the leaf's schema node; borrowed; null once another module's unload has taken it away */
} KorvTreeLeaf;

KORV_LAYOUT(sizeof(KorvTreeLeaf) == 72);
KORV_LAYOUT(offsetof(KorvTreeLeaf, ucIsKey) == 16);
KORV_LAYOUT(offsetof(KorvTreeLeaf, ucBaseType) == 18);
KORV_LAYOUT(offsetof(KorvTreeLeaf, uiClassId) == 20);
KORV_LAYOUT(offsetof(KorvTreeLeaf, uiDataType) == 32);
KORV_LAYOUT(offsetof(KorvTreeLeaf, llRangeMin) == 48);
KORV_LAYOUT(offsetof(KorvTreeLeaf, pYinNode) == 64);

/** One container, list, choice or case of a loaded module. A tree belongs to its module's registry entry. */
typedef struct KorvTreeNode {
    struct KorvTreeNode *pstParent;            /**< null for a top node */
    struct KorvTreeNode *pstFirstChild;        /**< null: none */
    struct KorvTreeNode *pstNextSibling;       /**< null: the last one; top nodes are siblings of each other */
    const char *pcModuleName;                  /**< module that defines the node; borrowed */
    char *pcName;                              /**< owned */
    uint32_t uiClassId;                        /**< 0: no class, else an id; a choice or case has its parent's */
    uint32_t uiSampleId;                       /**< 0: none, else an id */
    uint8_t aucSelfNodeKey[NODE_KEY_LIST_NUM]; /**< own keys as attribute ids, in the order of their leaves, then 0 */
    uint8_t aucAncestorKey[NODE_KEY_LIST_NUM]; /**< the ancestors' keys as attribute ids of this class, then 0 */
    VEC_VECTOR_S *pstLeafList;                 /**< KorvTreeLeaf of each leaf and leaf-list child, or null; owned */
    uint8_t ucNodeType;                        /**< KORV_NODE_ */
    VEC_VECTOR_S *pstCaseLeafList; /**< KorvTreeLeaf of the first 255 enabled leaves in choices below, or null; owned */
} KorvTreeNode;

KORV_LAYOUT(sizeof(KorvTreeNode) == 100);
KORV_LAYOUT(offsetof(KorvTreeNode, uiClassId) == 40);
KORV_LAYOUT(offsetof(KorvTreeNode, aucSelfNodeKey) == 48);
KORV_LAYOUT(offsetof(KorvTreeNode, aucAncestorKey) == 64);
KORV_LAYOUT(offsetof(KorvTreeNode, pstLeafList) == 80);
KORV_LAYOUT(offsetof(KorvTreeNode, ucNodeType) == 88);
KORV_LAYOUT(offsetof(KorvTreeNode, pstCaseLeafList) == 92);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup host_registry Registry of loaded modules
 * @{
 */

/** One augment of a module. */
typedef struct {
    QY_NODE *pAugNode;           /**< the augment itself, or null once it is gone; borrowed */
    QY_NODE *pTargetParentRoot;  /**< topmost node above the target while the module is being loaded, else null */
    QY_NODE *pFirstChild;        /**< first child of pAugNode, or null once it is gone; borrowed */
    KorvTreeNode *pstTargetTree; /**< the tree that the augment extends, from its top down; its siblings are the
                                      containers behind that top node, with ids only where they are the module's own
                                      or another augment of the module adds to them; may be null; owned */
    KorvTreeNode *pstSelfTree;   /**< the containers that the augment adds; may be null; owned */
    uint32_t uiSelfTreeDone;     /**< 1 once the self tree is built, while the load goes on */
    char acAugNodeName[KORV_AUG_NODE_NAME_SIZE]; /**< target path as the augment statement has it */
} TELMYANG_AUGMENT_INFO_S;

KORV_LAYOUT(sizeof(TELMYANG_AUGMENT_INFO_S) == 304);
KORV_LAYOUT(offsetof(TELMYANG_AUGMENT_INFO_S, uiSelfTreeDone) == 40);
KORV_LAYOUT(offsetof(TELMYANG_AUGMENT_INFO_S, acAugNodeName) == 44);

/** Module-level extension information. */
typedef struct {
    uint32_t uiAaaTaskId; /**< 0: the module has none */
} TELMYANG_MODULE_EXT_S;

/** One loaded module. Its name and revision are those that the host gave to the load. */
typedef struct TELMYANG_YANG_FILE_INFO_S {
    struct TELMYANG_YANG_FILE_INFO_S *pstNext; /**< next record, or the list's head */
    struct TELMYANG_YANG_FILE_INFO_S *pstPrev; /**< previous record, or the list's head */
    char *pcModuleName;                        /**< owned */
    char *pcRevision;                          /**< null when the load was given none; owned */
    TELMYANG_MODULE_EXT_S *pModuleExtInfo;     /**< owned */
    KorvTreeNode *pstOriginTree;               /**< first top node; null: no container stands at its top; owned */
    TELMYANG_AUGMENT_INFO_S astAugment[KORV_AUGMENT_NUM]; /**< in statement order */
    uint8_t ucInUse;                                      /**< 1 */
    uint8_t ucAugmentNum;                                 /**< used entries of astAugment */
    uint8_t ucBorrows;       /**< the library's: schema nodes in the trees that another module's unload may take away */
    uint8_t ucBorrowsBehind; /**< the library's: ucBorrows is set here or in a later record */
} TELMYANG_YANG_FILE_INFO_S;

KORV_LAYOUT(offsetof(TELMYANG_YANG_FILE_INFO_S, pstOriginTree) == 40);
KORV_LAYOUT(offsetof(TELMYANG_YANG_FILE_INFO_S, astAugment) == 48);
KORV_LAYOUT(offsetof(TELMYANG_YANG_FILE_INFO_S, ucInUse) == 6128);
KORV_LAYOUT(offsetof(TELMYANG_YANG_FILE_INFO_S, ucBorrows) == 6130);
KORV_LAYOUT(sizeof(TELMYANG_YANG_FILE_INFO_S) == 6132);

#pragma pack(pop)

/** Head of the circular list of loaded modules, in load order; empty: both links point at the head. The head is no
 * record: compare a link with (TELMYANG_YANG_FILE_INFO_S *)&head before you read through it. */
typedef struct {
    TELMYANG_YANG_FILE_INFO_S *pstNext; /**< first record */
    TELMYANG_YANG_FILE_INFO_S *pstPrev; /**< last record */
} TELMYANG_YANG_FILE_LIST_S;

/** Schema context, registry and base search directories of an instance; naturally aligned. */
typedef struct {
    QY_CTX *pSchemaCtx;                       /**< owned */
    TELMYANG_YANG_FILE_LIST_S stYangFileList; /**< owns the records */
    char **ppcSearchDir;                      /**< apcSearchDir once the directories are set */
    char *apcSearchDir[3];                    /**< acSearchDir2, acSearchDir1, null */
    char acSearchDir1[KORV_SEARCH_DIR_SIZE];  /**< pcDir1 of YANGLIB_Initial, searched first; empty: none */
    char acSearchDir2[KORV_SEARCH_DIR_SIZE];  /**< pcDir2 of YANGLIB_Initial; empty: none */
} TELMYANG_YANG_CTX_S;

KORV_LAYOUT(offsetof(TELMYANG_YANG_CTX_S, ppcSearchDir) == 24);
KORV_LAYOUT(offsetof(TELMYANG_YANG_CTX_S, acSearchDir1) == 56);
KORV_LAYOUT(sizeof(TELMYANG_YANG_CTX_S) == 568);

/** Shows a leaf descriptor to the host before it is stored; the host may change its numbers, and must leave its
 * pointers alone. It comes once for each descriptor: a leaf has one in every tree that it stands in, and an enabled
 * leaf within choices a second one. The result is ignored. */
typedef uint32_t (*TELMYANG_DATATYPE_ADAPT_PF)(uint64_t pKorvComponent, KorvTreeLeaf *pstLeaf);

#pragma pack(push, 4)

/** A library instance. */
typedef struct {
    uint64_t ulModuleId;                                    /**< the host's memory module id */
    TELMYANG_YANG_CTX_S *pstYangCtx;                        /**< owned */
    uint32_t uiModuleNum;                                   /**< loaded modules */
    TELMYANG_DEBUG_HOOK_S astDebugHook[KORV_LOG_LEVEL_NUM]; /**< all zero: nothing is logged */
    uint64_t pKorvComponent;                                /**< the host's own value, handed to every hook */
    TELMYANG_DATATYPE_ADAPT_PF pfnDatatypeAdapt;            /**< null: none */
    DLL_S stInstallPathList;                                /**< of YANGLIB_INSTALL_PATH_S; filled by the host alone */
} TELMYANG_LOCAL_DATA_S;

KORV_LAYOUT(offsetof(TELMYANG_LOCAL_DATA_S, uiModuleNum) == 16);
KORV_LAYOUT(offsetof(TELMYANG_LOCAL_DATA_S, astDebugHook) == 20);
KORV_LAYOUT(offsetof(TELMYANG_LOCAL_DATA_S, pKorvComponent) == 100);
KORV_LAYOUT(offsetof(TELMYANG_LOCAL_DATA_S, stInstallPathList) == 116);
KORV_LAYOUT(sizeof(TELMYANG_LOCAL_DATA_S) == 136);

#pragma pack(pop)

/** The instance that was set up last, or null. The library never reads it. */
KORV_LIB_API extern TELMYANG_LOCAL_DATA_S *g_pstKORVLibYangLocalData;

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup host_lifecycle Lifecycle
 * @{
 */

/**
 * Sets up a library instance.
 *
 * @param ulModuleId      memory module id of every allocation that the instance makes
 * @param pKorvComponent  the host's own value, handed to every hook
 * @param pstHookTable    the host's four debug hooks (copied), or null: nothing is logged
 * @param pcDir1          directory of module files that is searched first (copied), at most 255 characters, or null
 * @param pcDir2          directory that is searched next, likewise
 * @return the instance, which g_pstKORVLibYangLocalData points at from then on; release it with YANGLIB_Uninitial.
 *         Null when memory or the schema context is missing or a directory is too long: nothing stays allocated then
 *         and the global keeps its value. The failure is logged unless it is the very first allocation.
 */
KORV_LIB_API TELMYANG_LOCAL_DATA_S *YANGLIB_Initial(uint64_t ulModuleId, uint64_t pKorvComponent,
                                                    const TELMYANG_DEBUG_HOOK_S *pstHookTable, const char *pcDir1,
                                                    const char *pcDir2);

/** Unloads every module, releases the instance with everything that it owns, and sets g_pstKORVLibYangLocalData to
 * null, whichever instance it points at. Null does nothing. */
KORV_LIB_API void YANGLIB_Uninitial(TELMYANG_LOCAL_DATA_S *pstLocal);

/** Stores the pointer (which may be null) in g_pstKORVLibYangLocalData. */
KORV_LIB_API void TELMYANG_SetLibYangLocalData(TELMYANG_LOCAL_DATA_S *pstLocal);

/** The host's own value as given to YANGLIB_Initial. */
KORV_LIB_API uint64_t YANGLIB_GetKorvComponent(const TELMYANG_LOCAL_DATA_S *pstLocal);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup host_install Install paths: further search directories of installed packages
 * @{
 */

#pragma pack(push, 4)

/** One entry of stInstallPathList. The library only empties the list; a host that adds entries allocates them from its
 * memory partition, since the library releases them (not their texts) with ZOR_Free_F. */
typedef struct {
    DLL_NODE_S stNode;  /**< links of the list */
    const char *pcPath; /**< the host's */
} YANGLIB_INSTALL_PATH_S;
#pragma pack(pop)

KORV_LAYOUT(sizeof(YANGLIB_INSTALL_PATH_S) == 24);

/** Adds a search directory to the schema context. Returns 0 when the directory does not exist (logged at level 2,
 * nothing is added), otherwise the schema library's result, without a log line. */
KORV_LIB_API uint32_t YANGLIB_PkgAddInstallPath(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcDir);

/** Removes a search directory from the schema context; null removes all of them. Returns 0. */
KORV_LIB_API uint32_t YANGLIB_PkgDelUnInstallPath(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcDir);

/** Compares an install path with a text: 0 when equal. */
KORV_LIB_API int32_t YANGLIB_PkgDllCompare(const char *pcKey, const YANGLIB_INSTALL_PATH_S *pstPath);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup host_modules Modules
 * @{
 */

/**
 * Loads a module with everything that it imports, reads its extension statements and registers it with its trees.
 *
 * After a failure the registry is as before and the library keeps no block of the load, unless an allocation fails while
 * a half-built tree is being released: what is left of that tree is given up. A module that the schema library did load
 * stays in its context, and a later load of the same name goes on from there. The reasons are reported at level 0; once the module's
 * file has been looked for, "Load Module (...) fail!" is the last of them. A successful load may report at level 0,
 * too: only the result tells.
 *
 * Two parts may be missing after a load that succeeds, by a fault in a file or for want of memory: the deviations that
 * the module takes along, and self trees of its augments. Loading the module again does not bring them, unloading and
 * loading it does.
 *
 * @param pYangModule    the instance
 * @param pcModuleName   the module's name; its file is found in the search directories
 * @param pcReversionIn  revision: part of the key under which the module is registered, or null or empty for none;
 *                       which file is loaded does not depend on it
 * @return 0 when the module is registered, also when it was before; 1 or the schema library's code otherwise; 1 as well
 *         when the instance or the name is null
 */
KORV_LIB_API uint32_t YANGLIB_LoadYangModule(TELMYANG_LOCAL_DATA_S *pYangModule, const char *pcModuleName,
                                             const char *pcReversionIn);

/** The registry entry of a module that was loaded under exactly this name and revision (null or empty: loaded without
 * one), or null, also for a null name. pstLocal is not used; the entry belongs to pstYangCtx and lives until the
 * module is unloaded. */
KORV_LIB_API TELMYANG_YANG_FILE_INFO_S *TELMYANG_GetIfYangModuleExist(TELMYANG_LOCAL_DATA_S *pstLocal,
                                                                      TELMYANG_YANG_CTX_S *pstYangCtx,
                                                                      const char *pcModuleName, const char *pcRevision);

/** Releases the trees of a registered module, unloads it from the schema context and takes it out of the registry.
 * pcRevision: null or empty for none. 0 = unloaded; what cannot be released of a tree for want of memory is given up
 * and logged. 1 when the instance or the name is null or no such module is registered (nothing changes), or when the
 * schema library refuses: the trees are gone then, the module stays registered without any, later queries find nothing
 * in it, and a load of it builds none. */
KORV_LIB_API uint32_t YANGLIB_UnloadYangModule(TELMYANG_LOCAL_DATA_S *pYangModule, const char *pcModuleName,
                                               const char *pcRevision);

/** Unloads every module in load order. 0: the registry is empty, whatever the schema library answered. 1, without a log
 * line, when the instance has no registry. */
KORV_LIB_API uint32_t YANGLIB_UnloadYangModuleAll(TELMYANG_LOCAL_DATA_S *pstLocal);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup host_lookups Lookups
 *
 * A node is named by two forms of its path:
 *
 *  - pcPath, "/sys/ports/port": node names separated by "/"; the leading "/" may be missing. Choices and cases have no
 *    component. Where the node lies in an augment, components may carry prefixes.
 *  - pcXpathMain, "m:sys/m:ports/m:port": the same with module prefixes and without leading "/". It decides whether the
 *    node lies in an augment: the prefix of its last prefixed component differs from that of the first one. What stands
 *    in front of the first augmented component is the augment's target path as the statement has it, without its
 *    leading "/"; the components below it carry no prefix.
 *
 * A component has at most 64 characters; a longer one is a failed lookup. These texts are reported through ZOR_Assert
 * when they do not fit, and find nothing: a prefix of more than 63 characters where two prefixes are compared, an
 * augment's target path of more than 255 characters behind its "/", or of more than 1023 once each component without
 * prefix has the one in front of it, the path of an augmented node of more than 255 characters without its prefixes,
 * and in a leaf lookup either path of more than 256 characters.
 *
 * The instance must not be null; null paths and a null module name find nothing. Nodes that are found belong to the
 * module and live until it is unloaded. A node that is not found is logged at level 0, but for calls with null arguments
 * and texts that ZOR_Assert reports.
 *
 * @{
 */

#pragma pack(push, 4)

/** How the host names a node. */
typedef struct {
    const char *pcModuleName; /**< the loaded module; for a node that an augment adds, the augmenting one */
    const char *pcRevision;   /**< as given to the load; may be null */
    const char *pcPath;       /**< node names, as described for lookups */
    const char *pcXpathMain;  /**< the same with prefixes */
} YangPathRequest;

KORV_LAYOUT(sizeof(YangPathRequest) == 32);

/** A lookup: the instance and the request in one. */
typedef struct {
    TELMYANG_LOCAL_DATA_S *pstLocal; /**< the instance */
    const char *pcModuleName;        /**< as in YangPathRequest */
    const char *pcRevision;          /**< as in YangPathRequest */
    const char *pcPath;              /**< as in YangPathRequest */
    const char *pcXpathMain;         /**< as in YangPathRequest */
    uint32_t uiPathLen;              /**< not read */
    uint32_t uiXpathMainLen;         /**< not read */
} YangXpathLookup;

KORV_LAYOUT(sizeof(YangXpathLookup) == 48);

#pragma pack(pop)

/** The tree node that the request names, or null. A path that ends in a leaf of a node without children names that
 * node. */
KORV_LIB_API KorvTreeNode *TELMYANG_KorvFindTreeNodeByXpath(const YangXpathLookup *pstLookup);

/** The tree node whose own leaf list holds the leaf that the last component of pcPath names, or null. A path without
 * "/", and a node that lacks the leaf, are not logged. */
KORV_LIB_API KorvTreeNode *TELMYANG_KorvFindTreeNodeByLeafXpath(TELMYANG_LOCAL_DATA_S *pstLocal,
                                                                const char *pcModuleName, const char *pcRevision,
                                                                const char *pcPath, const char *pcXpathMain);

/** 1 when the named node has a container or list as direct child, else 0; also when it is not found. */
KORV_LIB_API uint32_t YANGLIB_HasSubNodeInXpath(TELMYANG_LOCAL_DATA_S *pstLocal, const YangPathRequest *pstRequest);

/** 1 when the node's own leaf list holds a leaf of that name, else 0; both may be null. */
KORV_LIB_API uint32_t YANGLIB_IsLeafNode(const KorvTreeNode *pstTreeNode, const char *pcLeafName);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup host_travel Travel
 * @{
 */

/** Called for a tree node, which it must not change; 0 goes on, anything else ends the walk and is its result. */
typedef uint32_t (*YANGLIB_TRAVEL_PF)(void *pUserData, KorvTreeNode *pstTreeNode);

/**
 * Calls pfnParentCb for each ancestor of the named node, nearest first, then pfnNodeCb for the node and for everything
 * below it, parents first, choices and cases included. A leaf names its holder.
 *
 * @param pstLocal     the instance
 * @param pstRequest   names the start node
 * @param pUserData    handed to both callbacks; may be null
 * @param pfnParentCb  may be null
 * @param pfnNodeCb    called at least once when the node is found
 * @return 0 when every callback returned 0, else the first other result (logged at level 0). KORV_TRAVEL_NOT_FOUND when
 *         there is no such node, or the request, a text in it other than the revision, or pfnNodeCb is null; a callback
 *         that returns the same value cannot be told apart.
 */
KORV_LIB_API uint32_t YANGLIB_TravelYangModule(TELMYANG_LOCAL_DATA_S *pstLocal, const YangPathRequest *pstRequest,
                                               void *pUserData, YANGLIB_TRAVEL_PF pfnParentCb,
                                               YANGLIB_TRAVEL_PF pfnNodeCb);

/** The same from a node that the host holds; 1, without a log line, when the node or pfnNodeCb is null. Allocates
 * nothing. */
KORV_LIB_API uint32_t YANGLIB_TravelYangModuleSubTree(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstTreeNode,
                                                      void *pUserData, YANGLIB_TRAVEL_PF pfnParentCb,
                                                      YANGLIB_TRAVEL_PF pfnNodeCb);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup host_dumps Dumps: flat copies of a tree, which outlive it
 * @{
 */

#pragma pack(push, 4)

/** One leaf of a dumped node. */
typedef struct {
    char *pcPath;        /**< the node's path, "/" and the leaf's name; owned */
    char *pcName;        /**< owned */
    uint8_t ucMask;      /**< as in KorvTreeLeaf, as are the numbers below */
    uint32_t uiFieldId;  /**< attribute id */
    uint32_t uiDataType; /**< 0 when ucMask has no KORV_MASK_DATA_TYPE */
    uint32_t uiIndexMap; /**< the leaf's uiName2IdKeyFid */
    int64_t llRangeMin;  /**< lower bound */
    int64_t llRangeMax;  /**< upper bound */
} YangDumpLeafData;

KORV_LAYOUT(sizeof(YangDumpLeafData) == 48);
KORV_LAYOUT(offsetof(YangDumpLeafData, ucMask) == 16);
KORV_LAYOUT(offsetof(YangDumpLeafData, uiFieldId) == 20);
KORV_LAYOUT(offsetof(YangDumpLeafData, llRangeMin) == 32);

/** One dumped node. */
typedef struct {
    char *pcName;  /**< owned */
    char *pcXpath; /**< "/" and the names from the top node down, choices and cases too; cut at 256 characters; owned */
    uint32_t uiClassId;                        /**< 0: no class */
    uint32_t uiSampleId;                       /**< 0: none */
    VEC_VECTOR_S *pstLeafList;                 /**< YangDumpLeafData of the node's own leaves, or null; owned */
    uint8_t aucSelfNodeKey[NODE_KEY_LIST_NUM]; /**< as in KorvTreeNode */
    uint8_t aucAncestorKey[NODE_KEY_LIST_NUM]; /**< as in KorvTreeNode */
} YangDumpNodeData;

KORV_LAYOUT(sizeof(YangDumpNodeData) == 64);
KORV_LAYOUT(offsetof(YangDumpNodeData, uiClassId) == 16);
KORV_LAYOUT(offsetof(YangDumpNodeData, pstLeafList) == 24);
KORV_LAYOUT(offsetof(YangDumpNodeData, aucSelfNodeKey) == 32);

/** What to dump. */
typedef struct {
    TELMYANG_LOCAL_DATA_S *pstLocal; /**< the instance */
    const char *pcModuleName;        /**< must be registered, also for an augment tree */
    const char *pcRevision;          /**< as given to the load; may be null */
    KorvTreeNode *pstAugmentTree;    /**< a target or self tree of the module, when bIsAugment is set */
    uint32_t bIsAugment;             /**< 0: the module's own tree */
} YangDumpRequest;

KORV_LAYOUT(sizeof(YangDumpRequest) == 36);

#pragma pack(pop)

/**
 * Dumps a tree breadth first.
 *
 * The caller owns array and records: release the records with YANGLIB_FreeDumpDataEx, then the array with ZOR_Free_F.
 *
 * @param pstRequest  what to dump
 * @param ppRecords   receives an array of pointers to records; set it to null before the call, since a dump that finds
 *                    nothing leaves it as it is (one that fails half-way sets it to null)
 * @param puiCount    receives their number
 * @return 1 with count 0 when the instance or its registry is missing, the module is not registered, or its own tree is
 *         asked for and it has none. Otherwise 0: a dump that fails or finds no node says so at level 0 and has count
 *         0.
 */
KORV_LIB_API uint32_t YANGLIB_DumpYangModuleDataEx(const YangDumpRequest *pstRequest, YangDumpNodeData ***ppRecords,
                                                   uint32_t *puiCount);

/** Releases the records of a dump and sets the array's entries to null; the array stays. A null array, a count of 0 and
 * null entries do nothing. */
KORV_LIB_API void YANGLIB_FreeDumpDataEx(YangDumpNodeData **ppRecords, uint32_t uiCount);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup host_print Debug print
 * @{
 */

/** Writes a module's trees to the host's debug hooks: own tree, self trees, target trees. Does nothing, beyond asking,
 * while all four levels are closed. Every successful load ends with it. pstLocal may be null (nothing is printed),
 * pcRevision as well. */
KORV_LIB_API void YANGLIB_PrintYangModuleData(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                              const char *pcRevision);

/** Its first part: the module's own tree. */
KORV_LIB_API void YANGLIB_PrintYangModuleOriginData(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                                    const char *pcRevision);

/** Its second part: every augment's self tree, and then every target tree. */
KORV_LIB_API void YANGLIB_PrintYangModuleAugmentData(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                                     const char *pcRevision);

/** Dumps, prints and releases the augment tree that the request names; pstFileInfo is not read. */
KORV_LIB_API void YANGLIB_DumpYangModuleAugmentData(TELMYANG_LOCAL_DATA_S *pstLocal,
                                                    TELMYANG_YANG_FILE_INFO_S *pstFileInfo,
                                                    const YangDumpRequest *pstRequest);

/** Writes the lines of a dump: one a node (empty when it is longer than 511 characters), one a leaf (cut there). */
KORV_LIB_API void YANGLIB_PrintYangModuleNodeData(TELMYANG_LOCAL_DATA_S *pstLocal, YangDumpNodeData **ppRecords,
                                                  uint32_t uiCount);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup host_questions Small questions
 * @{
 */

/** Sets the function that sees every leaf descriptor of later loads, in place of an earlier one; null for none. */
KORV_LIB_API void YANGLIB_RegisterDatatypeAdaptFunc(TELMYANG_LOCAL_DATA_S *pstLocal,
                                                    TELMYANG_DATATYPE_ADAPT_PF pfnDatatypeAdapt);

/** 1 for a descriptor of an enumeration leaf (leafrefs followed), else 0; null is none. */
KORV_LIB_API uint32_t YANGLIB_IsEnumLeaf(const KorvTreeLeaf *pstLeaf);

/** The latest revision of the module as its file has it, or null: not loaded, or without revision. Borrowed, until the
 * module is unloaded. */
KORV_LIB_API const char *YANGLIB_GetYangRevision(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName);

/** Called for each name and value of an enumeration; the result is ignored. */
typedef uint32_t (*YANGLIB_NAME_VALUE_PF)(const char *pcName, int32_t iValue, void *pCookie);

/** Reports the names and values of an enumeration leaf in declaration order. 1, without a log line, when the leaf's
 * type cannot be found (its schema node may have gone with another module), otherwise the schema library's result. */
KORV_LIB_API uint32_t YANGLIB_ScanNameValuePair(const KorvTreeLeaf *pstLeaf, YANGLIB_NAME_VALUE_PF pfnCb,
                                                void *pCookie);

/** @} */

#ifdef __cplusplus
}
#endif

#include "korv_lib_yang_query.h"

#endif /* KORV_LIB_YANG_H */
