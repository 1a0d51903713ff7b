/*
 * korv_lib_yang.h (unit): the top unit of the library. What the host calls, beyond the functions of the public header
 * <korv_lib_yang.h>: search directories, the steps of loading a module, and the parts of lookups, dumps and prints.
 *
 * Results are 0 for success and 1 for failure unless they say otherwise; a failure is logged at level 0 where it is
 * detected, and again by each caller that passes it on.
 *
 * Five functions are there for hosts alone; the library itself never calls them:
 * - TELMYANG_JudgeXpathNodeType, TELMYANG_DuplicateXpath and TELMYANG_KorvFindNodeWithChoiceCase: single steps of a
 *   lookup, which does them on the paths where they stand, without copying names.
 * - TELMYANG_SetYangContextSearchPath and TELMYANG_UndoYangContextSearchPath: for a host that registers directories of
 *   its own for a while.
 */
#ifndef KORV_LIB_YANG_UNIT_H
#define KORV_LIB_YANG_UNIT_H

#include "../telem_yang/telem_yang.h"

#ifdef __cplusplus
extern "C" {
#endif

/* --- search_dirs.cpp --- */

/* Copies the base directories (a null one keeps what was there) and makes them the only ones of the schema context. 1
 * when one is longer than 255 characters: its copy is empty then, and the schema context is as it was. */
KORV_LIB_API uint32_t TELMYANG_SetSearchDir(const char *pcDir1, const char *pcDir2, TELMYANG_LOCAL_DATA_S *pstLocal);

/* Makes the base directories the only ones again; what the schema library answers for the second one. */
KORV_LIB_API uint32_t TELMYANG_UpdateSearchDir(TELMYANG_LOCAL_DATA_S *pstLocal);

/* Registers the base directories, second one first, beside what is registered. 1 without record or schema context. */
KORV_LIB_API uint32_t TELMYANG_SetYangContextSearchPath(TELMYANG_YANG_CTX_S *pstYangCtx);

/* Removes every directory, then registers the entries of ppcSearchDir: the base directories, second one first. 1
 * without record or schema context. */
KORV_LIB_API uint32_t TELMYANG_UndoYangContextSearchPath(TELMYANG_YANG_CTX_S *pstYangCtx);

/* --- install_paths.cpp --- */

/* The first function makes a new list of install paths empty, the second releases the entries of a list. */
KORV_LIB_API uint32_t YANGLIB_InitPkgSearchPath(TELMYANG_LOCAL_DATA_S *pstLocal);
KORV_LIB_API void YANGLIB_DeInitPkgSearchPath(TELMYANG_LOCAL_DATA_S *pstLocal);

/* --- module_load.cpp --- */

/* Fills a record from the module: schema, deviations, extension data, trees. On failure the record keeps what was
 * built, and no schema node carries private data. The failing step's code. */
KORV_LIB_API uint32_t YANGLIB_PrepareYangModuleData_(TELMYANG_LOCAL_DATA_S *pstLocal,
                                                     TELMYANG_YANG_FILE_INFO_S *pstFile,
                                                     TELMYANG_YANG_CTX_S *pstYangCtx, const char *pcModuleName,
                                                     const char *pcRevision);

/* --- schema_load.cpp --- */

/* Loads the module into the schema context and enables its features; a module that is there already is left as it
 * is. */
KORV_LIB_API uint32_t TELMYANG_LoadYangModule(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_CTX_S *pstYangCtx,
                                              const char *pcModuleName);

/* --- deviation_modules.cpp --- */

/* 1 for a module that is used together with a deviation module: its name contains one of four names. */
KORV_LIB_API uint32_t YANGLIB_IsInDeviationList(const char *pcModuleName);

/* Finds the module's deviation file in the directory and puts the deviation module's name into the buffer. 1, without
 * an error line, when there is none or the name does not fit (the buffer is empty then). Sets the host's find
 * directory. */
KORV_LIB_API uint32_t YANGLIB_FindDeviationName(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcDir,
                                                const char *pcModuleName, char *pcOut, uint32_t uiOutSize);

/* Loads the module's deviation module into the schema context; 0 also when it has none. */
KORV_LIB_API uint32_t YANGLIB_LoadDeviationModule(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_CTX_S *pstYangCtx,
                                                  const char *pcModuleName);

/* --- extension_reading.cpp --- */

/* Attaches a record to every class node and leaf of the module and of what it augments, and fills the module
 * information and the augment table. After a failure the records made so far stay attached: the caller releases
 * them. */
KORV_LIB_API uint32_t TELEMYANG_ReadAllYinExtensionData(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                                        TELMYANG_YANG_FILE_INFO_S *pstFile, QY_MOD *pMod);
/* Reads the module's own statements into the record; 1, without a line of its own, when the record has them already. */
KORV_LIB_API uint32_t TELMYANG_ReadYinModuleExtension(TELMYANG_LOCAL_DATA_S *pstLocal, QY_MOD *pMod,
                                                      TELMYANG_YANG_FILE_INFO_S *pstFile);
KORV_LIB_API uint32_t TELEMYANG_ReadOriginExtensionData(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                                        TELMYANG_YANG_FILE_INFO_S *pstFile, QY_MOD *pMod);
KORV_LIB_API uint32_t TELEMYANG_ReadAugmentExtensionData(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                                         TELMYANG_YANG_FILE_INFO_S *pstFile, QY_MOD *pMod);

/* Reads a top node (scan callback, cookie: the instance): containers with everything below them, nothing else. */
KORV_LIB_API uint32_t TELEMYANG_ReadYinModDataNodeExtension(QY_NODE *pNode, void *pvUnused, void *pstLocal);
KORV_LIB_API uint32_t TELEMYANG_ReadYinNodeExtensionToInst(QY_NODE *pNode, uint32_t uiTravType, void *pstLocal);

/* Attaches the record of one node; a node that carries private data keeps it. */
KORV_LIB_API uint32_t TELMYANG_ReadNodeExtension(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode);

/* --- augment_table.cpp --- */

#pragma pack(push, 4)
typedef struct {
    TELMYANG_LOCAL_DATA_S *pstLocal;
    TELMYANG_YANG_FILE_INFO_S *pstFile;
    const char *pcModuleName;
} AugmentFillCtx;
#pragma pack(pop)

KORV_LIB_API uint32_t TELEMYANG_FillAugmentDataToYangFile(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName,
                                                          TELMYANG_YANG_FILE_INFO_S *pstFile, QY_MOD *pMod);
KORV_LIB_API uint32_t TELEMYANG_ImplFillAugmentDataToYangFileCb(QY_NODE *pNode, void *pvUnused, void *pstCtx);

/* Topmost node above the augment's target, also when the target lies in another augment; null without target. */
KORV_LIB_API QY_NODE *TELMYANG_BSC_FindAugTargetParentRoot(QY_NODE *pNode);

/* --- xpath_lookup.cpp --- */

#define KORV_XPATH_SIZE 257u          /* a path with its terminating zero */
#define KORV_XPATH_COMPONENT_SIZE 65u /* one of its components */
#define KORV_XPATH_PREFIX_SIZE 64u
#define KORV_AUGMENT_FULL_PATH_SIZE 1024u

/* 1 for the path of a node that lies in an augment. */
KORV_LIB_API uint32_t TELMYANG_JudgeXpathNodeType(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcXpathMain);

/* A copy with "/" appended, in a block of uiLen bytes. On 1 the caller still releases *ppcOut unless it is null. */
KORV_LIB_API uint32_t TELMYANG_DuplicateXpath(TELMYANG_LOCAL_DATA_S *pstLocal, char **ppcOut, const char *pcSrc,
                                              uint32_t uiLen);

/* --- xpath_walk.cpp --- */

/* The node that the path names, among pstStart and its siblings and below them; null with a log line. */
KORV_LIB_API KorvTreeNode *TELMYANG_KorvFindNodeByNodename(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcPath,
                                                           KorvTreeNode *pstStart);

/* The first node of that name among pstStart and its siblings, choices and cases being looked through; or null. */
KORV_LIB_API KorvTreeNode *TELMYANG_KorvFindNodeWithChoiceCase(KorvTreeNode *pstStart, const char *pcName);

/* Cuts the first component into the buffer and its length into puiLen (may be null); 1 when it is empty or too long. */
KORV_LIB_API uint32_t TELMYANG_GetNextNodeName(const char *pcSrc, char *pcBuf, uint32_t uiBufSize, uint32_t *puiLen);

/* 1 when the path's first component is a leaf, or case leaf, of the node (which may be null). */
KORV_LIB_API uint32_t TELMYANG_CheckIsLeafNode(const KorvTreeNode *pstTreeNode, const char *pcPath);
KORV_LIB_API uint32_t TELMYANG_ExistLeafNode(const VEC_VECTOR_S *pstLeafList, const char *pcName);

/* --- augment_lookup.cpp --- */

/* The node that an augment of the module adds; the paths carry an appended "/". */
KORV_LIB_API KorvTreeNode *TELMYANG_KorvFindAugmentNodeByname(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcPath,
                                                              const char *pcXpathMain,
                                                              TELMYANG_YANG_FILE_INFO_S *pstFileInfo);
KORV_LIB_API TELMYANG_AUGMENT_INFO_S *TELMYANG_FindAugmentInfoNode(TELMYANG_LOCAL_DATA_S *pstLocal,
                                                                   const char *pcTargetPath,
                                                                   TELMYANG_YANG_FILE_INFO_S *pstFileInfo);

/* --- augment_path.cpp: rewriting paths into a zeroed buffer; 1 when a text does not fit --- */

#pragma pack(push, 4)

/* One stretch of a path: a prefixed component and the unprefixed ones behind it. */
typedef struct {
    const char *pcPrefix; /* prefix followed by ":" */
    uint32_t uiPrefixLen;
    const char *pcSrc;
    uint32_t uiSrcPos;
    char *pcDst;
    uint32_t uiDstSize;
    uint32_t uiDstPos;
    uint32_t uiEnd; /* where the stretch ends in the source, when it does not run to its end */
} AugmentStretch;

#pragma pack(pop)

/* Without prefixes. */
KORV_LIB_API uint32_t TELMYANG_BuildAugmentXpath(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcSrc, char *pcDst,
                                                 uint32_t uiDstSize);

/* With a prefix on every component: that of the nearest prefixed one in front. */
KORV_LIB_API uint32_t TELMYANG_BuildAugmentFullPath(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcSrc,
                                                    uint32_t uiSrcSize, char *pcDst, uint32_t uiDstSize);
KORV_LIB_API uint32_t TELMYANG_AddPrifix2AugmentFullPath(TELMYANG_LOCAL_DATA_S *pstLocal, AugmentStretch *pstState,
                                                         uint32_t bHasEnd);

/* --- travel.cpp --- */

/* The ancestors' part of a travel: 0, or what the callback (which may be null) answered. */
KORV_LIB_API uint32_t YANGLIB_TravelParentNode_(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstTreeNode,
                                                void *pUserData, YANGLIB_TRAVEL_PF pfnParentCb);

/* --- dump_records.cpp --- */

/* A record of one tree node, reached under the path; null with a log line. Release it with YANGLIB_FreeDumpDataEx. */
KORV_LIB_API YangDumpNodeData *YANGLIB_DumpYangNodeData(TELMYANG_LOCAL_DATA_S *pstLocal,
                                                        const KorvTreeNode *pstTreeNode, const char *pcXpath);
/* Does what YANGLIB_FreeDumpDataEx does; the array must not be null. */
KORV_LIB_API void YANGLIB_FreeDumpDataExx(YangDumpNodeData **ppRecords, uint32_t uiCount);

/* --- dump_traversal.cpp --- */

/* Dumps one tree; on failure the outputs keep their values, or are null and 0. */
KORV_LIB_API void YANGLIB_DumpYangModuleData(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstTree,
                                             YangDumpNodeData ***ppRecords, uint32_t *puiCount);

/* Fills the array with the records of everything below a virtual root; on failure none is left. */
KORV_LIB_API uint32_t YANGLIB_DumpYangData(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstVirtualRoot,
                                           YangDumpNodeData **ppRecords, uint32_t uiCapacity);
KORV_LIB_API uint32_t TELMYANG_CaculateNodeNum(TELMYANG_LOCAL_DATA_S *pstLocal, KorvTreeNode *pstVirtualRoot,
                                               uint32_t *puiCount);
KORV_LIB_API uint32_t YANGLIB_PutFirstNodeToIter(TELMYANG_LOCAL_DATA_S *pstLocal, uint64_t ulModuleId,
                                                 KorvTreeNode *pstTreeNode, DumpIterEntry *pstIter);

/* Moves every entry of the iter list to the info queue; those that are moved before a failure stay there. */
KORV_LIB_API uint32_t YANGLIB_GetAllNodeFromIter(TELMYANG_LOCAL_DATA_S *pstLocal, uint64_t ulModuleId,
                                                 DumpIterEntry *pstInfoQueue, DumpIterEntry *pstIter,
                                                 uint32_t *puiCount);

/* --- small_queries.cpp --- */

#pragma pack(push, 4)
typedef struct {
    void *pCookie;
    YANGLIB_NAME_VALUE_PF pfnCb;
} NameValueScanCtx;
#pragma pack(pop)

/* Hands one pair to the host's callback (QY_ENUM_SCAN_PF); 0, whatever that answers. */
KORV_LIB_API uint32_t YANGLIB_NameValuePairProc(const char *pcName, int32_t iValue, void *pvUnused, void *pstScan);

#ifdef __cplusplus
}
#endif

#endif /* KORV_LIB_YANG_UNIT_H */
