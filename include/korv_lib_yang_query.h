/**
 * @file
 * Further questions of a host: why a load failed, which modules are loaded, which nodes have an id, and what path a node has.
 *
 * korv_lib_yang.h includes this header, and its conventions hold here. All answers are made from what the library has anyway:
 * nothing is kept for a host that does not ask.
 *
 * In short
 *
 *     if (YANGLIB_LoadYangModule(pstLocal, "acme", NULL) != KORV_OK)
 *         YANGLIB_ScanLoadFailures(pstLocal, "acme", NULL, PrintFailure, NULL);
 *
 *     KorvTreeNode *pstNode = NULL;
 *     KorvTreeLeaf *pstLeaf = NULL;
 *     char acPath[256];
 *     YANGLIB_TEXT_S stText = {acPath, sizeof(acPath), 0};
 *     if (YANGLIB_FindAttribute(pstLocal, 0x1001, 10, &pstNode, &pstLeaf) == KORV_OK &&
 *         YANGLIB_GetLeafPath(pstLocal, pstNode, pstLeaf, YANGLIB_PATH_NAMES, &stText) == KORV_OK)
 *         puts(acPath);
 *
 * What is common to these functions
 *
 *  - A scan calls its callback once an item, in the order that its function says. The callback returns 0 to go on; any other
 *    value ends the scan and is what the scan returns. A callback that returns one of the codes below cannot be told apart.
 *  - A null instance, an instance without registry, a null callback and every other null argument that its function does not
 *    allow give KORV_INVALID.
 *  - No function here writes a log line.
 *  - Records that callbacks get are the callback's until it returns. What they point at is the module's: it lives until the
 *    module is unloaded, unless said otherwise.
 *  - uiSize is the first field of each such record: the bytes of it that the library fills. Later versions append fields, and
 *    a host that is to run with an older library asks for "uiSize > offsetof(record, field)" before it reads a field that came
 *    later than 0.1.
 *  - Callbacks may ask further questions, and must not load or unload modules.
 *
 * These records are naturally aligned.
 */
#ifndef KORV_LIB_YANG_QUERY_H
#define KORV_LIB_YANG_QUERY_H

#include "korv_lib_yang.h"

#ifdef __cplusplus
extern "C" {
#endif

#define KORV_NOT_FOUND 2u         /**< no node has the id that was asked for */
#define KORV_BUFFER_TOO_SMALL 34u /**< a text does not fit */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup query_failures Why a load failed
 * @{
 */

/** The schema library: the module's files are missing, or break a rule of YANG. */
#define YANGLIB_REFUSED_BY_SCHEMA 0u

/** The library: the extension statements make no class model. */
#define YANGLIB_REFUSED_BY_LIBRARY 1u

/** One reason why a load failed. */
typedef struct {
    uint32_t uiSize;        /**< bytes of the record */
    uint32_t uiRefusedBy;   /**< YANGLIB_REFUSED_BY_ value */
    uint32_t uiLine;        /**< line in pcFile, or 0: not known; the library knows none */
    uint32_t uiColumn;      /**< column, or 0 */
    const char *pcModule;   /**< module or submodule that is wrong; never null, may be empty */
    const char *pcFile;     /**< path of the file, or null: not known; the library knows none */
    const char *pcText;     /**< the reason behind its place: "file:line:column: sentence", or the sentence alone */
    const char *pcSentence; /**< the reason alone: the end of pcText */

    /* Of a failure that the library found, as far as the reason names them; else null. */
    const char *pcClassPath; /**< the class node: "/" and the names of the nodes from the module's top down to it, with
                                choices and cases */
    const char *pcClass;     /**< its name: the end of pcClassPath */
    const char *pcLeaf;      /**< a leaf or leaf-list of that class */
    const char *pcStatement; /**< keyword of the statement: of quelvo-mim-extensions, or "key" or "augment" */
    const char *pcArgument;  /**< its argument */
} YANGLIB_LOAD_FAILURE_S;

KORV_LAYOUT(sizeof(YANGLIB_LOAD_FAILURE_S) == 88);

/** A reason. All its texts are the callback's until it returns. */
typedef uint32_t (*YANGLIB_LOAD_FAILURE_PF)(const YANGLIB_LOAD_FAILURE_S *pstFailure, void *pvCookie);

/**
 * Reports why the latest load of a module failed: what the schema library recorded, in its order, or the one fault at which
 * the library itself stopped.
 *
 * Call it after the load that failed, before another load of this instance, and not from a hook or callback while a load or
 * unload runs: there it counts as a load. Nothing is kept for it. The schema library has the failures of its latest load call
 * until the next one. A module that the schema library did load is still in its context: the library reads its statements a
 * second time and builds its trees anew, without log lines and without the datatype adapt function, and releases all of it
 * again. That takes as long as these two steps of the load did. What was wrong then and no longer is, want of memory first of
 * all, is reported as a failure of the library that says so.
 *
 * @param pstLocal      the instance
 * @param pcModuleName  the module, as given to the load
 * @param pcRevision    the revision, as given to the load; may be null
 * @param pfnCb         gets each failure
 * @param pvCookie      handed to pfnCb; may be null
 * @return what the callback returned, 0 when all are reported. Without a callback: KORV_OK when the module is registered under
 *         this revision, or the schema library has recorded nothing; KORV_NO_MEMORY when there is no memory to find out, and a
 *         later call may tell; KORV_INVALID. Nothing is left allocated in any case, unless an allocation fails while a
 *         half-built tree is being released: what is left of that tree is given up, as in a load.
 */
KORV_LIB_API uint32_t YANGLIB_ScanLoadFailures(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                               const char *pcRevision, YANGLIB_LOAD_FAILURE_PF pfnCb, void *pvCookie);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup query_modules Modules, and what their trees hold
 *
 * None of these functions allocates anything.
 * @{
 */

/** A registered module. Its classes are the containers and lists of the module that have a class id which the container or
 * list around them has not, also those that it adds to other modules. */
typedef struct {
    uint32_t uiSize;                          /**< bytes of the record */
    uint32_t uiClassNum;                      /**< number of its classes */
    const char *pcModuleName;                 /**< name, as given to the load */
    const char *pcRevision;                   /**< revision as given to the load, or null */
    const char *pcLoadedRevision;             /**< latest revision in the file that was loaded, or null: it has none */
    const TELMYANG_YANG_FILE_INFO_S *pstFile; /**< its registry entry */
} YANGLIB_MODULE_S;

KORV_LAYOUT(sizeof(YANGLIB_MODULE_S) == 40);

/** A module. */
typedef uint32_t (*YANGLIB_MODULE_PF)(const YANGLIB_MODULE_S *pstModule, void *pvCookie);

/** Reports the registered modules in the order of their loads. pvCookie may be null. */
KORV_LIB_API uint32_t YANGLIB_ScanModules(TELMYANG_LOCAL_DATA_S *pstLocal, YANGLIB_MODULE_PF pfnCb, void *pvCookie);

#define YANGLIB_TREE_OWN 0u    /**< pstOriginTree: the module's own tree */
#define YANGLIB_TREE_TARGET 1u /**< pstTargetTree of an augment: the tree that it extends */
#define YANGLIB_TREE_SELF 2u   /**< pstSelfTree of an augment: the containers that it adds */

/** A node and where it stands. */
typedef struct {
    uint32_t uiSize;                          /**< bytes of the record */
    uint32_t uiTree;                          /**< YANGLIB_TREE_ value */
    uint32_t uiAugment;                       /**< index of the augment in pstFile; 0 for YANGLIB_TREE_OWN */
    uint32_t uiIsOwn;                         /**< 1: the node is of the module of pstFile; 0: of another one */
    KorvTreeNode *pstNode;                    /**< the node; not to be changed */
    const TELMYANG_YANG_FILE_INFO_S *pstFile; /**< registry entry of the module whose tree it stands in */
} YANGLIB_PLACE_S;

KORV_LAYOUT(sizeof(YANGLIB_PLACE_S) == 32);

/** A node with its place. */
typedef uint32_t (*YANGLIB_PLACE_PF)(const YANGLIB_PLACE_S *pstPlace, void *pvCookie);

/** Reports the top nodes of all trees of a registered module: those of its own tree, then those of its target trees in the
 * order of its augments, then those of its self trees. pstFile is a registry entry, of YANGLIB_ScanModules or
 * TELMYANG_GetIfYangModuleExist; pvCookie may be null. */
KORV_LIB_API uint32_t YANGLIB_ScanTopNodes(const TELMYANG_YANG_FILE_INFO_S *pstFile, YANGLIB_PLACE_PF pfnCb,
                                           void *pvCookie);

/** A node, which must not be changed. */
typedef uint32_t (*YANGLIB_NODE_PF)(KorvTreeNode *pstNode, void *pvCookie);

/** Reports the direct children of a node in schema order: containers, lists and choices, of a choice its cases. pvCookie may
 * be null. YANGLIB_TravelYangModuleSubTree reports all that is below a node. */
KORV_LIB_API uint32_t YANGLIB_ScanNodes(const KorvTreeNode *pstNode, YANGLIB_NODE_PF pfnCb, void *pvCookie);

#define YANGLIB_LEAVES_DIRECT 1u /**< pstLeafList: leafs and leaf-lists that are children of the node */
#define YANGLIB_LEAVES_CASES 2u  /**< pstCaseLeafList: the first 255 enabled ones in choices below the node */

/** A leaf or leaf-list, which must not be changed. */
typedef uint32_t (*YANGLIB_LEAF_PF)(KorvTreeLeaf *pstLeaf, void *pvCookie);

/** Reports the leafs and leaf-lists of a node in schema order, first its direct ones, then those of its choices.
 *
 * @param pstNode   the node
 * @param uiWhich   YANGLIB_LEAVES_ values, joined by "or"; 0 reports nothing
 * @param pfnCb     gets each leaf
 * @param pvCookie  handed to pfnCb; may be null */
KORV_LIB_API uint32_t YANGLIB_ScanLeaves(const KorvTreeNode *pstNode, uint32_t uiWhich, YANGLIB_LEAF_PF pfnCb,
                                         void *pvCookie);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup query_ids Nodes by their ids
 *
 * The first of these calls makes an index of all ids, one block of the instance's memory module; later ones look it up, in a
 * time that does not depend on the number of classes. A module that is loaded or unloaded, and a host that releases a tree
 * itself, give the index back, and the next call makes a new one. Where there is no memory for it a call answers
 * KORV_NO_MEMORY, and the next one tries again. YANGLIB_Uninitial releases it.
 *
 * A host that changes ids of nodes or leafs itself, rather than in its datatype adapt function, does so before it asks.
 * @{
 */

/**
 * Reports every tree node of a class, in all modules: containers and lists, and choices and cases, which have the class id of
 * the node around them (their ucNodeType tells).
 *
 * The order is that of the loads. Of one module its own tree comes first, then its target trees in the order of its augments,
 * then its self trees; of one tree the nodes come parents first, as in a travel. A node of a module that others augment has a
 * place in each tree that shows it; uiIsOwn is 1 where it stands in a tree of its own module.
 *
 * @param pstLocal   the instance
 * @param uiClassId  the class id
 * @param pfnCb      gets each place
 * @param pvCookie   handed to pfnCb; may be null
 * @return what the callback returned; KORV_NOT_FOUND when no node has the id, or it is 0; KORV_NO_MEMORY; KORV_INVALID
 */
KORV_LIB_API uint32_t YANGLIB_FindClass(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiClassId, YANGLIB_PLACE_PF pfnCb,
                                        void *pvCookie);

/**
 * The leaf of a class that has an attribute id, and the node that it belongs to. Of several the first counts, in the order of
 * YANGLIB_FindClass: of one node its direct leafs, then those of its choices.
 *
 * @param pstLocal   the instance
 * @param uiClassId  class id of the node
 * @param uiFieldId  attribute id, as KorvTreeLeaf::uiFieldId has it
 * @param ppstNode   receives the node of that class; may be null
 * @param ppstLeaf   receives the leaf; may be null
 * @return KORV_OK. KORV_NOT_FOUND when no leaf has the ids, or one of them is 0; KORV_NO_MEMORY; KORV_INVALID; then both
 *         pointers are set to null.
 */
KORV_LIB_API uint32_t YANGLIB_FindAttribute(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiClassId, uint32_t uiFieldId,
                                            KorvTreeNode **ppstNode, KorvTreeLeaf **ppstLeaf);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup query_paths Paths of nodes and leafs
 *
 * A lookup takes both forms with the module that the node is of (its pcModuleName), under the revision of its load. A node
 * that an augment adds is different where no such augment is registered, because its module came only by import: then it
 * stands in the tree of the module of its topmost node alone, the prefixes are that module's, and a lookup takes that module.
 * The path of a node in a self tree begins below the target of its augment, and no lookup takes it: the target tree has the
 * node, too.
 *
 * None of these functions allocates anything.
 * @{
 */

/** "/sys/ports/port": pcPath of a lookup. */
#define YANGLIB_PATH_NAMES 0u

/** "m:sys/m:ports/m:port": pcXpathMain of a lookup. Names of modules stand for prefixes. In front of a node that an augment
 * adds stands the augment's target path as the statement has it, and what is below that node has no prefix. */
#define YANGLIB_PATH_PREFIXED 1u

/** A buffer of the caller. */
typedef struct {
    char *pcText;      /**< receives the text with its terminating zero; may be null when uiSize is 0 */
    uint32_t uiSize;   /**< bytes of room */
    uint32_t uiNeeded; /**< receives the bytes that the text needs with its terminating zero, whether or not it fits */
} YANGLIB_TEXT_S;

KORV_LAYOUT(sizeof(YANGLIB_TEXT_S) == 16);

/**
 * The path of a node, from the top of its tree. A choice or case has no component: its path is that of the container or list
 * around it, and empty when there is none.
 *
 * @param pstLocal  the instance
 * @param pstNode   the node
 * @param uiForm    YANGLIB_PATH_ value
 * @param pstText   the buffer
 * @return KORV_OK. KORV_BUFFER_TOO_SMALL: uiNeeded says what it takes; the buffer, if it has room for a character, holds the
 *         empty text. KORV_INVALID, also for another form; the buffer is unchanged then.
 */
KORV_LIB_API uint32_t YANGLIB_GetNodePath(TELMYANG_LOCAL_DATA_S *pstLocal, const KorvTreeNode *pstNode, uint32_t uiForm,
                                          YANGLIB_TEXT_S *pstText);

/** The path of a leaf or leaf-list of that node; a leaf within the node's choices has no component of them either. Otherwise
 * like YANGLIB_GetNodePath. */
KORV_LIB_API uint32_t YANGLIB_GetLeafPath(TELMYANG_LOCAL_DATA_S *pstLocal, const KorvTreeNode *pstNode,
                                          const KorvTreeLeaf *pstLeaf, uint32_t uiForm, YANGLIB_TEXT_S *pstText);

/** @} */

#ifdef __cplusplus
}
#endif

#endif /* KORV_LIB_YANG_QUERY_H */
