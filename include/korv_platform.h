/**
 * @file
 * The contract between libkorv_libyang and what lies below it.
 *
 * The library parses no YANG and owns no memory of its own. It drives a schema library (the QY_ functions) and a
 * handful of host services (ZOR_ memory and assertions, XUR_ texts and files, VEC_ vectors, DLL_ lists, and bounded
 * text functions). All of them are resolved when the host is linked or started: libqxyang.so and libkorv_platform.so of
 * this project provide them, and a device may bring its own instead.
 *
 * Conventions
 *
 *  - Texts are zero-terminated UTF-8. A returned `const char *` is borrowed; how long it lives stands with
 *    the function.
 *  - A scan calls its callback once an item, with the caller's cookie as the last argument. The callback returns 0 to
 *    go on; any other value ends the scan and is what the scan returns. A completed scan returns 0.
 *  - Every call happens on the thread of the caller, and no callback comes on another one. A host that drives several
 *    instances of the library at the same time, each from a thread of its own, needs layers that allow it: different
 *    schema contexts in use at once, memory from any thread, and a find directory a thread. Those of this project do.
 *  - No function lets a C++ exception out.
 *  - Unless a function says otherwise, its pointer arguments must not be null.
 *
 * The header compiles as C11 and as C++17.
 */
#ifndef KORV_PLATFORM_H
#define KORV_PLATFORM_H

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>

/** Marks a function that a lower layer exports. */
#if defined(__GNUC__)
#define KORV_PLATFORM_API __attribute__((visibility("default")))
/** Lets the compiler check a format and its arguments. */
#define KORV_PRINTF_LIKE(uiFormat, uiFirst) __attribute__((format(printf, uiFormat, uiFirst)))
#else
#define KORV_PLATFORM_API
#define KORV_PRINTF_LIKE(uiFormat, uiFirst)
#endif

/** A record's layout is part of the binary interface with 64-bit hosts. */
#ifdef __cplusplus
#define KORV_LAYOUT(condition) static_assert(sizeof(void *) != 8 || (condition), "layout: " #condition)
#else
#define KORV_LAYOUT(condition) _Static_assert(sizeof(void *) != 8 || (condition), "layout: " #condition)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup contract_handles Handles of the schema library
 *
 * Pointers to records that only the schema library knows. Null means "none"; any other number will do, since the library
 * compares handles and hands them back, and keeps no marks in them.
 * @{
 */

typedef struct QY_CTX QY_CTX;   /**< schema context: the modules of one library instance */
typedef struct QY_MOD QY_MOD;   /**< loaded module */
typedef struct QY_NODE QY_NODE; /**< schema node, augment statements included */
typedef struct QY_EXT QY_EXT;   /**< extension instance on a node, on a module or within another instance */
typedef struct QY_TYPE QY_TYPE; /**< one type of a leaf's derivation chain */

/** Schema node types, as QY_NODE_GetNodeType returns them. */
enum {
    QY_NODE_TYPE_NONE = 0,
    QY_NODE_TYPE_CONTAINER = 1,
    QY_NODE_TYPE_LEAF = 2,
    QY_NODE_TYPE_LEAF_LIST = 3,
    QY_NODE_TYPE_LIST = 4,
    QY_NODE_TYPE_CHOICE = 5,
    QY_NODE_TYPE_CASE = 6,
    QY_NODE_TYPE_ANYXML = 7,
    QY_NODE_TYPE_ANYDATA = 8,
    QY_NODE_TYPE_RPC = 10, /**< rpc and action */
    QY_NODE_TYPE_INPUT = 11,
    QY_NODE_TYPE_OUTPUT = 12,
    QY_NODE_TYPE_NOTIFICATION = 13,
    QY_NODE_TYPE_AUGMENT = 14
};

/** YANG built-in types in alphabetical order, as QY_TYPE_GetBuiltInBaseType returns them. */
enum {
    QY_TYPE_BINARY = 1,
    QY_TYPE_BITS = 2,
    QY_TYPE_BOOLEAN = 3,
    QY_TYPE_DECIMAL64 = 4,
    QY_TYPE_EMPTY = 5,
    QY_TYPE_ENUMERATION = 6,
    QY_TYPE_IDENTITYREF = 7,
    QY_TYPE_INSTANCE_IDENTIFIER = 8,
    QY_TYPE_INT8 = 9,
    QY_TYPE_INT16 = 10,
    QY_TYPE_INT32 = 11,
    QY_TYPE_INT64 = 12,
    QY_TYPE_LEAFREF = 13,
    QY_TYPE_STRING = 14,
    QY_TYPE_UINT8 = 15,
    QY_TYPE_UINT16 = 16,
    QY_TYPE_UINT32 = 17,
    QY_TYPE_UINT64 = 18,
    QY_TYPE_UNION = 19
};

/** How the tree scan reached a node. */
enum {
    QY_TRAV_CHILD = 0,   /**< first child of the node visited just before: one level down */
    QY_TRAV_SIBLING = 1, /**< a following sibling: same level */
    QY_TRAV_RETURN = 2,  /**< back up one level, with the node returned to: no new node */
    QY_TRAV_START = 3    /**< the start node, the first call */
};

/** Result of a tree scan callback: no failure, but the node's subtree is not entered. */
#define KORV_TREE_SCAN_SKIP 0x5A6B7C8Du

/** Option value that the library passes to QY_CTX_Create. */
#define QY_CTX_OPTION_KORV 17u

/** Feature name that stands for every feature of a module. */
#define QY_FEATURE_ALL "*"

/** Releases the private data of a schema node that is being released: pvValue is the schema library's own. */
typedef void (*QY_PRIDATA_FREE_PF)(void *pvValue, QY_NODE *pNode, void *pvPrivate);

/** One recorded load failure; see QY_CTX_ScanAllSchemaLoadFail. */
typedef uint32_t (*QY_LOADFAIL_SCAN_PF)(const char *pcModuleName, const char *pcFile, uint32_t uiLine,
                                        const char *pcText, uint32_t uiColumn, void *pvCookie);
/** One node of a scan over modules, children or siblings. */
typedef uint32_t (*QY_NODE_SCAN_PF)(QY_NODE *pNode, void *pvUnused, void *pvCookie);
/** One step of a tree scan; uiTravType is a QY_TRAV_ value. */
typedef uint32_t (*QY_TREE_SCAN_PF)(QY_NODE *pNode, uint32_t uiTravType, void *pvCookie);
/** One extension instance: the module that defines its extension, its keyword and its argument. pcArgument is null for
 * a statement of an extension that takes no argument. */
typedef uint32_t (*QY_EXT_SCAN_PF)(QY_EXT *pExt, const char *pcExtModule, const char *pcKeyword, const char *pcArgument,
                                   void *pvCookie);
/** One type of a derivation chain. */
typedef uint32_t (*QY_TYPE_SCAN_PF)(void *pvUnused1, void *pvUnused2, QY_TYPE *pType, void *pvCookie);
/** One name and value of an enumeration. */
typedef uint32_t (*QY_ENUM_SCAN_PF)(const char *pcName, int32_t iValue, void *pvUnused, void *pvCookie);
/** One part of a range, both bounds included. */
typedef uint32_t (*QY_RANGE_SCAN_PF)(const int64_t *pllStart, const int64_t *pllEnd, void *pvCookie);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup contract_context Schema context
 * @{
 */

/** A new, empty schema context, or null when there is no memory. uiOptions is QY_CTX_OPTION_KORV. Release it with
 * QY_CTX_Delete. */
KORV_PLATFORM_API QY_CTX *QY_CTX_Create(uint32_t uiOptions);

/** Releases the context with every module, node and text in it. Nodes whose private slot is set go through the
 * private-data free function first. Null does nothing. */
KORV_PLATFORM_API void QY_CTX_Delete(QY_CTX *pCtx);

/** Sets the function that releases the private data of nodes that are being released; it must clear the node's slot.
 * Null: private data are left to their owner. */
KORV_PLATFORM_API void QY_CTX_SetPridataFreeFunc(QY_CTX *pCtx, QY_PRIDATA_FREE_PF pfnFree);

/** Adds a directory to those searched for module files; a null or empty text is accepted and ignored. 0 = accepted, also
 * when it is registered already. */
KORV_PLATFORM_API uint32_t QY_CTX_SetSearchDir(QY_CTX *pCtx, const char *pcDir);

/** Removes that directory, or all of them for null. An unknown directory is no failure. */
KORV_PLATFORM_API void QY_CTX_UnSetSearchDir(QY_CTX *pCtx, const char *pcDir);

/** Loads the named module, and what it imports and includes, from the search directories; 0 = loaded. pcRevision may be
 * null for whichever is preferred. Otherwise nonzero: the context holds what it held before, and what went wrong is
 * recorded for QY_CTX_ScanAllSchemaLoadFail. */
KORV_PLATFORM_API uint32_t QY_CTX_LoadModule(QY_CTX *pCtx, const char *pcModuleName, const char *pcRevision);

/** The module that was loaded under that name, or null. It lives until it is unloaded. */
KORV_PLATFORM_API QY_MOD *QY_CTX_GetModuleByModName(QY_CTX *pCtx, const char *pcModuleName);

/** Takes the module's name out of the context; its nodes are released as soon as no loaded module needs them. A node
 * whose private slot is set goes through the private-data free function first; that function may ask for type, module,
 * children and slot of other nodes that have not been through it, and set their slots. 0 = unloaded; nonzero when no
 * module was loaded under that name. */
KORV_PLATFORM_API uint32_t QY_CTX_UnloadModule(QY_CTX *pCtx, const char *pcModuleName);

/** Reports each failure that the latest load call recorded: module name, file, line, text, column. The library says
 * nothing of a failure without name or text, so both are there, also when memory ran out (the name of the module that
 * was to be loaded, which may be empty). The file may be null and line and column 0 when they are not known; the text begins
 * with "file:line:column: " when they are. The texts live until the next load call. */
KORV_PLATFORM_API uint32_t QY_CTX_ScanAllSchemaLoadFail(QY_CTX *pCtx, QY_LOADFAIL_SCAN_PF pfnCb, void *pvCookie);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup contract_module Module
 * @{
 */

/** Enables one feature of the module, or all for QY_FEATURE_ALL. 0 = success; nonzero: the module has no such feature.
 */
KORV_PLATFORM_API uint32_t QY_MOD_EnableFeature(QY_MOD *pMod, const char *pcFeature);

/** The module's name. It lives as long as the context, also after the module is unloaded. */
KORV_PLATFORM_API const char *QY_MOD_GetModuleName(QY_MOD *pMod);

/** The module's latest revision ("2026-11-22"), or null when it has none or pMod is null. It lives as long as the
 * module. */
KORV_PLATFORM_API const char *QY_MOD_GetRevision(QY_MOD *pMod);

/** Scans the module's top-level nodes in schema order. */
KORV_PLATFORM_API uint32_t QY_MOD_IterScanTopmostNode(QY_MOD *pMod, QY_NODE_SCAN_PF pfnCb, void *pvCookie);

/** Scans the module's augments in statement order: nodes of type 14, or whatever another schema library reports. */
KORV_PLATFORM_API uint32_t QY_MOD_IterScanAugmentNode(QY_MOD *pMod, QY_NODE_SCAN_PF pfnCb, void *pvCookie);

/** Scans the extension instances that stand directly in the module, in statement order. */
KORV_PLATFORM_API uint32_t QY_MOD_ScanAllExtInsts(QY_MOD *pMod, QY_EXT_SCAN_PF pfnCb, void *pvCookie);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup contract_node Schema node
 *
 * A node, and what the functions answer about it, lives as long as its module.
 * @{
 */

/** The node's type (QY_NODE_TYPE_). */
KORV_PLATFORM_API uint32_t QY_NODE_GetNodeType(QY_NODE *pNode);

/** The node's name, or null; of an augment, its target path as the statement has it. */
KORV_PLATFORM_API const char *QY_NODE_GetNodeName(QY_NODE *pNode);

/** The parent in the schema, choices and cases included, or null at a module's top and for an augment. */
KORV_PLATFORM_API QY_NODE *QY_NODE_GetParentNode(QY_NODE *pNode);

/** The module whose statement the node is: for a node that an augment adds, the augmenting module. */
KORV_PLATFORM_API QY_MOD *QY_NODE_GetModule(QY_NODE *pNode);

/** The node that an augment targets, or null. */
KORV_PLATFORM_API QY_NODE *QY_NODE_GetAugmentTargetNode(QY_NODE *pNode);

/** The leaf that a leafref leaf refers to, or null: for a leaf of another type, or a missing target. uiFlag: the
 * library passes 1 while it resolves a leaf's final type and 0 otherwise. */
KORV_PLATFORM_API QY_NODE *QY_NODE_GetLeafrefTargetNode(QY_NODE *pNode, uint32_t uiFlag);

/** Number of keys of a list, in the low 8 bits; classes have at most 255 keys. */
KORV_PLATFORM_API uint32_t QY_NODE_GetNodeKeyNum(QY_NODE *pNode);

/** Bit 0 is set when the leaf is a key of its list. */
KORV_PLATFORM_API uint32_t QY_NODE_IsKey(QY_NODE *pNode);

/** Bit 0 is set when the node is enabled: its own and all its ancestors' features hold. */
KORV_PLATFORM_API uint32_t QY_NODE_IsEnabled(QY_NODE *pNode);

/** The node's private slot, null until set. */
KORV_PLATFORM_API void *QY_NODE_GetPrivate(QY_NODE *pNode);

/** Sets the private slot; what it held is its owner's to release. pvPrivate may be null. */
KORV_PLATFORM_API void QY_NODE_SetPrivate(QY_NODE *pNode, void *pvPrivate);

/** Scans the node's direct children in schema order. */
KORV_PLATFORM_API uint32_t QY_NODE_IterScanChildrenNode(QY_NODE *pNode, QY_NODE_SCAN_PF pfnCb, void *pvCookie);

/** Scans the node itself and then each following sibling in schema order. */
KORV_PLATFORM_API uint32_t QY_NODE_IterScanSiblingNode(QY_NODE *pNode, QY_NODE_SCAN_PF pfnCb, void *pvCookie);

/** Walks the node's subtree depth first, parents before children, and reports each step (QY_TRAV_). A callback result
 * of KORV_TREE_SCAN_SKIP leaves the node's subtree out; any other nonzero result ends the walk and is returned. */
KORV_PLATFORM_API uint32_t QY_NODE_TreeScanAllNode(QY_NODE *pNode, QY_TREE_SCAN_PF pfnCb, void *pvCookie);

/** Scans the extension instances of any module that stand on the node, in statement order. */
KORV_PLATFORM_API uint32_t QY_NODE_ScanAllExtInsts(QY_NODE *pNode, QY_EXT_SCAN_PF pfnCb, void *pvCookie);

/** Replaces the extension instances of pDst by copies of those of pSrc. 0 = done; nonzero: no memory, pDst unchanged.
 *
 * The library completes a class in this way: first the class node, then each of its leaves. When it fails for one of the
 * leaves, the load fails, and the schema library also gives the leaf's parent and the leaves beside it their own extension
 * instances back. A schema library that leaves them replaced has to refuse later loads that read this class: the library
 * cannot tell a half-completed class from one that the model has, and would build its tree without the missing ids. */
KORV_PLATFORM_API uint32_t QY_NODE_ReplaceDstExtInst(QY_NODE *pDst, QY_NODE *pSrc);

/** Scans the types of a leaf or leaf-list from the built-in type to the leaf's own: the last one is effective. */
KORV_PLATFORM_API uint32_t QY_NODE_ScanDerivedType(QY_NODE *pNode, QY_TYPE_SCAN_PF pfnCb, void *pvCookie);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup contract_extension Extension instance and type
 * @{
 */

/** Scans the extension instances nested in the instance's statement, in statement order. */
KORV_PLATFORM_API uint32_t QY_EXT_ScanAllChildExtInsts(QY_EXT *pExt, QY_EXT_SCAN_PF pfnCb, void *pvCookie);

/** Number of the built-in type that the type is derived from (QY_TYPE_). */
KORV_PLATFORM_API uint32_t QY_TYPE_GetBuiltInBaseType(QY_TYPE *pType);

/** Scans the names and values of an enumeration in declaration order; nothing for another type. */
KORV_PLATFORM_API uint32_t QY_TYPE_ScanNameValuePair(QY_TYPE *pType, QY_ENUM_SCAN_PF pfnCb, void *pvCookie);

/** Scans the parts of an integer type's range in order; 64-bit unsigned bounds come as the same 64 bits. An integer
 * type without a range has one part, its full range; nothing for another type. */
KORV_PLATFORM_API uint32_t QY_TYPE_ScanStartEndPair(QY_TYPE *pType, QY_RANGE_SCAN_PF pfnCb, void *pvCookie);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup contract_memory Host services: memory and assertions
 * @{
 */

/** The host's memory partitions: the first byte is the partition number that the library gives to every allocation. */
KORV_PLATFORM_API extern uint8_t g_aucZorMemPt[];

/** A block of ulSize bytes, aligned for any record, or null. pcFile and uiLine name the place that asks. */
KORV_PLATFORM_API void *ZOR_Malloc_F(uint64_t ulModuleId, uint8_t ucPartition, uint64_t ulSize, const char *pcFile,
                                     uint32_t uiLine);

/** Releases a block of ZOR_Malloc_F; null does nothing. */
KORV_PLATFORM_API void ZOR_Free_F(void *pvBlock, const char *pcFile, uint32_t uiLine);

/** Reports that something broke at that place; the caller goes on afterwards. uiValue: the library passes 0. */
KORV_PLATFORM_API void ZOR_Assert(const char *pcFile, uint32_t uiLine, uint32_t uiValue);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup contract_texts Host services: texts and files
 * @{
 */

/** Number of characters. */
KORV_PLATFORM_API uint32_t XUR_StrLen(const char *pcText);

/** 0 when both texts are equal, otherwise the sign of the first difference. */
KORV_PLATFORM_API int32_t XUR_StrCmp(const char *pcLeft, const char *pcRight);

/** First occurrence of pcPart in pcText, or null. */
KORV_PLATFORM_API char *XUR_StrStr(const char *pcText, const char *pcPart);

/** First occurrence of the character, or null. */
KORV_PLATFORM_API char *XUR_StrChr(const char *pcText, char cChar);

/** Last occurrence of the character, or null. */
KORV_PLATFORM_API char *XUR_StrRChr(const char *pcText, char cChar);

/** The number that the text begins with, as strtoul reads it: base 0 takes "0x" and "0" prefixes, all ones stand for an
 * overflow, no digits give 0. ppcEnd may be null and otherwise receives where the number ends. */
KORV_PLATFORM_API uint64_t XUR_strtoul(const char *pcText, char **ppcEnd, uint32_t uiBase);

/** Find record: the name of the match, without its directory, and the search's own state. Zero it before the first use.
 */
typedef struct {
    char acFileName[256]; /**< the match */
    void *pHandle;        /**< the search's own; null when there is none */
} XUR_VFS_FIND_S;

KORV_LAYOUT(sizeof(XUR_VFS_FIND_S) == 264);

/** Makes the directory the one that XUR_VFS_FindFirst searches; 0 = done, nonzero: no such directory. A relative directory
 * is the one that XUR_VFS_IsDirExist was asked for by that text on the same thread, wherever the process works now; one
 * that it was not asked for is looked for in the process's working directory. */
KORV_PLATFORM_API uint32_t XUR_VFS_SetWorkPath(const char *pcDir);

/** Starts a search for regular files, also behind symbolic links, whose names match the pattern ('*' stands for any text)
 * and puts the first match into the record; 0 = found. Nonzero: nothing matches or the directory cannot be listed, and
 * there is nothing to close. */
KORV_PLATFORM_API uint32_t XUR_VFS_FindFirst(const char *pcPattern, XUR_VFS_FIND_S *pstFind);

/** Puts the next match into the record; nonzero: there is none. The search stays open. */
KORV_PLATFORM_API uint32_t XUR_VFS_FindNext(XUR_VFS_FIND_S *pstFind);

/** Ends a search that XUR_VFS_FindFirst started; the record keeps the name of its last match. */
KORV_PLATFORM_API void XUR_VFS_FindClose(XUR_VFS_FIND_S *pstFind);

/** 1 when the path is an existing directory. The library asks for each relative search directory when it registers it, so
 * that its place can be kept for XUR_VFS_SetWorkPath, and for each install path. */
KORV_PLATFORM_API uint32_t XUR_VFS_IsDirExist(const char *pcPath);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup contract_containers Host services: containers
 *
 * Their records are 4-byte packed, since they stand inside the library's packed records.
 * @{
 */

#pragma pack(push, 4)

/** Vector of pointers; what they point at is not the vector's. */
typedef struct {
    uint32_t uiCount;    /**< entries in use */
    uint32_t uiCapacity; /**< entries that fit */
    void **ppvItem;      /**< the entries */
} VEC_VECTOR_S;

KORV_LAYOUT(sizeof(VEC_VECTOR_S) == 16 && offsetof(VEC_VECTOR_S, ppvItem) == 8);

/** Links of a list's node; the host's data follow. */
typedef struct DLL_NODE_S {
    struct DLL_NODE_S *pstNext; /**< next node, or the head */
    struct DLL_NODE_S *pstPrev; /**< previous node, or the head */
} DLL_NODE_S;

/** Head of a circular doubly linked list; empty: both links point at the head. */
typedef struct {
    DLL_NODE_S *pstNext; /**< first node */
    DLL_NODE_S *pstPrev; /**< last node */
    uint32_t uiCount;    /**< nodes */
} DLL_S;

KORV_LAYOUT(sizeof(DLL_NODE_S) == 16);
KORV_LAYOUT(sizeof(DLL_S) == 20 && offsetof(DLL_S, uiCount) == 16);

#pragma pack(pop)

/** A new vector with room for uiCapacity entries (which may be 0), or null. Release it with VEC_VectorFree_F. */
KORV_PLATFORM_API VEC_VECTOR_S *VEC_VectorInit_F(uint64_t ulModuleId, uint32_t uiCapacity, const char *pcFile,
                                                 uint32_t uiLine);

/** Appends the entry and returns its index, or 0xFFFFFFFF: no memory, the vector unchanged. */
KORV_PLATFORM_API uint32_t VEC_VectorSet(VEC_VECTOR_S *pstVector, void *pvItem);

/** Number of entries in use. */
KORV_PLATFORM_API uint32_t VEC_VectorCount(const VEC_VECTOR_S *pstVector);

/** Releases the vector, not its entries; 0. Null does nothing. */
KORV_PLATFORM_API uint32_t VEC_VectorFree_F(VEC_VECTOR_S *pstVector);

/** Unlinks the node and takes one off the count; the node itself is not released. */
KORV_PLATFORM_API void DLL_Delete(DLL_S *pstList, DLL_NODE_S *pstNode);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup contract_bounded Bounded memory and text functions of the C11 Annex K kind
 *
 * The size of the destination comes first. 0 (for the formatters: the number of characters written) = success. A
 * source or destination that is null, and a text that does not fit, is a violation: nothing is written outside the
 * destination, a text destination becomes empty, and the result is nonzero (for the formatters: negative).
 * @{
 */

/** Fills the first ulCount bytes of pvDest. */
KORV_PLATFORM_API int memset_s(void *pvDest, size_t ulDestMax, int iValue, size_t ulCount);
/** Copies ulCount bytes. */
KORV_PLATFORM_API int memcpy_s(void *pvDest, size_t ulDestMax, const void *pvSrc, size_t ulCount);
/** Copies a text with its terminating zero. */
KORV_PLATFORM_API int strcpy_s(char *pcDest, size_t ulDestMax, const char *pcSrc);
/** Copies at most ulCount characters of a text, and a terminating zero. */
KORV_PLATFORM_API int strncpy_s(char *pcDest, size_t ulDestMax, const char *pcSrc, size_t ulCount);
/** Appends a text to the one in pcDest. */
KORV_PLATFORM_API int strcat_s(char *pcDest, size_t ulDestMax, const char *pcSrc);

/** Formats a text. One that does not fit is a violation. */
KORV_PLATFORM_API int sprintf_s(char *pcDest, size_t ulDestMax, const char *pcFormat, ...) KORV_PRINTF_LIKE(3, 4);

/** Formats a text. One that does not fit is cut to the destination; the result counts the characters that are in it. */
KORV_PLATFORM_API int snprintf_s(char *pcDest, size_t ulDestMax, const char *pcFormat, ...) KORV_PRINTF_LIKE(3, 4);

/** snprintf_s with an argument list. */
KORV_PLATFORM_API int vsnprintf_s(char *pcDest, size_t ulDestMax, const char *pcFormat, va_list vaArgs)
    KORV_PRINTF_LIKE(3, 0);

/** @} */

#ifdef __cplusplus
}
#endif

#endif /* KORV_PLATFORM_H */
