/*
 * telem_yang_lib.h: the lowest unit of the library. Logging and memory, the extension statements, and the records that
 * they become on the schema nodes of a module that is being loaded.
 *
 * Functions take the instance (pstLocal) for logging and allocation; where it may be null, nothing is logged. Results
 * are 0 for success and 1 for failure unless they say otherwise. A failure is logged at level 0 where it is detected.
 * Scan callbacks are exported under their names; their cookie is the record that stands beside them.
 *
 * Five functions are there for hosts alone; the library itself never calls them:
 * - TELMYANG_WriteLog: the library's own lines ask the host before their arguments are evaluated (log.h).
 * - TELMYANG_BSC_CheckAllYinInstAttrValid: a load accepts attribute ids that are 0 or repeated.
 * - TELMYANG_BSC_CountLeafNodeUnderInst, with its callbacks: a load counts a class's own leaves only.
 * - TELMYANG_BSC_ParseListNodeKeyNames: a load takes the names of the key leaves, not the key statement.
 * - TELMYANG_BSC_ImplParseAutoKeyForEachCb_: a load keeps what it has looked up from one leaf to the next.
 */
#ifndef KORV_TELEM_YANG_LIB_H
#define KORV_TELEM_YANG_LIB_H

#include <korv_lib_yang.h>

#ifdef __cplusplus
extern "C" {
#endif

/* --- log.cpp --- */

#define KORV_LOG_LEVEL_ERROR 0u
#define KORV_LOG_LEVEL_INFO 2u
#define KORV_LOG_TEXT_SIZE 1024u /* a message with its terminating zero */

/* Copies the host's table of four hooks into the instance; null leaves the instance as it is. */
KORV_LIB_API void TELMYANG_LIBRegDebugFuncHook(TELMYANG_LOCAL_DATA_S *pstLocal,
                                               const TELMYANG_DEBUG_HOOK_S *pstHookTable);

/* What the host's is-open hook of the level answers; 0 without instance or hook and for a level above 3. */
KORV_LIB_API uint32_t TELMYANG_LIBDebugPrintIsOpen(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiLevel);

/* Hands a finished text to the level's print hook, if there is one. Function and line go no further. */
KORV_LIB_API void TELMYANG_LIBDebugPrint(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiLevel, const char *pcFunc,
                                         uint32_t uiLine, const char *pcText);

/* Formats a message (cut to 1023 characters) and prints it, when the level is open. pcLevelName and pcFile are for the
 * reader of the call. */
KORV_LIB_API void TELMYANG_WriteLog(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiLevel, const char *pcLevelName,
                                    const char *pcFile, const char *pcFunc, uint32_t uiLine, const char *pcFormat, ...)
    KORV_PRINTF_LIKE(7, 8);

/* Logs one load failure of the schema library (QY_LOADFAIL_SCAN_PF); the cookie is the instance. Always 0. */
KORV_LIB_API uint32_t KORV_LIBYANG_LoadFailedPrint(const char *pcModuleName, const char *pcFile, uint32_t uiLine,
                                                   const char *pcErrInfo, uint32_t uiColumn, void *pstLocal);

/* --- memory.cpp --- */

/* A zero-filled block of the host's memory, or null: for size 0 silently, otherwise with a log line. pstLocal may be
 * null. Release it with ZOR_Free_F. */
KORV_LIB_API void *TELMYANG_Malloc_BZero(TELMYANG_LOCAL_DATA_S *pstLocal, uint64_t ulModuleId, uint32_t uiSize);

/* --- ext_keywords.cpp: the vocabulary of the module "quelvo-mim-extensions" --- */

#define MIM_EXT_MODULE_NAME "quelvo-mim-extensions"

typedef uint32_t MimExtType;

enum {
    MIM_EXT_CLASS_ID = 0,
    MIM_EXT_FIELD_ID = 1,
    MIM_EXT_AAA_TASK_ID = 2,
    MIM_EXT_DATATYPE_ID = 3,
    MIM_EXT_REF_ID_KEY_FID = 4,
    MIM_EXT_NAME2ID_KEY_FID = 5,
    MIM_EXT_ANCESTOR_KEY_FID = 6,
    MIM_EXT_CLASS_TYPE = 7, /* the last one that an attribute leaf can carry */
    MIM_EXT_CLASS = 8,
    MIM_EXT_FIELD = 9,
    MIM_EXT_AAA_TASK = 10,
    MIM_EXT_DATATYPE = 11,
    MIM_EXT_ANCESTOR_KEY = 12,
    MIM_EXT_NAME2ID_KEY = 13,
    MIM_EXT_REF_ID_KEY = 14,
    MIM_EXT_TLMT_SAMPLE_ID = 15,
    MIM_EXT_NONE = 16 /* not a statement of this module */
};

#pragma pack(push, 4)
typedef struct {
    MimExtType uiId;
    const char *pcName;
} MimExtKeyword;
#pragma pack(pop)

KORV_LAYOUT(sizeof(MimExtKeyword) == 12);

#define MIM_EXT_KEYWORD_NUM 17u

/* Row i describes id i; the last row, of MIM_EXT_NONE, has an empty name and is never matched. */
KORV_LIB_API extern const MimExtKeyword g_astKorvMimExtnList[MIM_EXT_KEYWORD_NUM];

/* The id of a statement, or MIM_EXT_NONE: another module's, or an unknown keyword. Either text may be null. */
KORV_LIB_API MimExtType TELMYANG_BSC_GetNodeMimExtType(const char *pcExtModule, const char *pcKeyword);

/* The keyword of an id, or null for MIM_EXT_NONE and beyond. */
KORV_LIB_API const char *TELMYANG_BSC_GetNodeMimExtName(TELMYANG_LOCAL_DATA_S *pstLocal, MimExtType uiId);

/* 1 for a statement that says nothing about an attribute leaf. */
KORV_LIB_API uint32_t TELMYANG_MimExt_NotNeedProc(MimExtType uiId);

/* --- ext_numbers.cpp: arguments as numbers --- */

/* The number at the start of the text, in C notation, cut to 32 bits; a text without digits is 0. 1 for a null text
 * and for a number that does not fit 64 bits (or is "-1"): logged, the output untouched. */
KORV_LIB_API uint32_t TELMYANG_BSC_ParseMimExtIntoInt(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcText,
                                                      uint32_t *puiValue);

/* The blank-separated numbers of the text (null: none) into an array of uiTotalNum entries. 1 for a missing output, no
 * room, or a number that does not fit: logged, the count untouched. */
KORV_LIB_API uint32_t TELMYANG_BSC_ParseMimExtIntoArray(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcText,
                                                        uint32_t *puiValArray, uint32_t uiTotalNum,
                                                        uint32_t *puiFillNum);

/* 1 plus the number of blanks: at least as many as the text has numbers. 0 for null. */
KORV_LIB_API uint32_t TELMYANG_UTL_CountWordInStr(const char *pcText);

/* --- ext_access.cpp: finding statements --- */

#define MIM_EXT_ARRAY_NUM 255u /* statements of one keyword that the array lookup returns at most */

#pragma pack(push, 4)

/* A lookup among the extension instances of one node. Zero it and set pYinNode. */
typedef struct {
    uint32_t uiScanPos;         /* instances visited that did not match */
    uint32_t uiStartPos;        /* first position that may match */
    const char *pcValue;        /* argument of the last match; borrowed */
    const char *pcExtModule;    /* module that matches */
    const char *pcExtName;      /* keyword that matches */
    QY_EXT *pExtInst;           /* the last match, or null */
    uint32_t uiHasForeignExt;   /* 1: the node is a leaf and carries another module's statement */
    QY_NODE *pYinNode;          /* the node whose instances are scanned */
    QY_EXT **ppExtInstArray;    /* array lookup: room for MIM_EXT_ARRAY_NUM matches */
    const char **ppcValueArray; /* array lookup: the arguments of the matches */
    uint32_t uiArrayNum;        /* array lookup: matches written */
} MimExtFindCtx;

/* A lookup among the instances nested in another one. */
typedef struct {
    const char *pcExtModule;
    const char *pcExtName;
    const char *pcValue; /* argument of the match */
    QY_EXT *pExtInst;    /* the match */
} MimExtSubFindCtx;

#pragma pack(pop)

/* All statements of one keyword on a node: what TELMYANG_BSC_GetNodeSpecMimExtArray fills. */
typedef struct {
    QY_EXT *apExtInst[MIM_EXT_ARRAY_NUM];
    const char *apcValue[MIM_EXT_ARRAY_NUM];
} MimExtArray;

/* The first function finds the first instance at or after uiStartPos, or null. The second puts every instance into the
 * record's arrays; its result is 0, or 1 when the scan stopped at the 256th. */
KORV_LIB_API QY_EXT *TLMTLIB_GetExtInstanceByName_(const char *pcKeyword, MimExtFindCtx *pstFind);
KORV_LIB_API uint32_t TLMTLIB_GetExtInstanceArrayByExtName_(const char *pcKeyword, MimExtFindCtx *pstFind);
KORV_LIB_API uint32_t TLMTLIB_ImplFindExtInstByNameCb(QY_EXT *pExt, const char *pcExtModule, const char *pcKeyword,
                                                      const char *pcArgument, void *pstFind);
KORV_LIB_API uint32_t TLMTLIB_ImplFindExtInstArrayByNameCb(QY_EXT *pExt, const char *pcExtModule, const char *pcKeyword,
                                                           const char *pcArgument, void *pstFind);

/* First statement of the id on the record's node, or null; an id without keyword is logged. */
KORV_LIB_API QY_EXT *TELMYANG_BSC_GetNodeSpecMimExt(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, MimExtType uiId,
                                                    MimExtFindCtx *pstFind);

/* The argument of the node's first statement of the id (borrowed); 1 and null when the node has none. */
KORV_LIB_API uint32_t TELMYANG_BSC_GetNodeSpecMimExtString(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                           MimExtType uiId, const char **ppcText);

/* The argument of the node's first statement of the id as a number. When the node has none, the result is 1 and the
 * output untouched; but a leaf that carries another module's statement gives 0 and KORV_NO_ID. */
KORV_LIB_API uint32_t TELMYANG_BSC_GetNodeSpecMimExtValue(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                          MimExtType uiId, uint32_t *puiValue);

/* All statements of the id into a zero-filled array, and their number; 1 for an id without keyword. */
KORV_LIB_API uint32_t TELMYANG_BSC_GetNodeSpecMimExtArray(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                          MimExtType uiId, MimExtArray *pstArray, uint32_t *puiNum);

/* The first statement of the id that is nested in the instance, or null; and that statement's argument as a number, or
 * 1. */
KORV_LIB_API QY_EXT *TELMYANG_BSC_FindExtFirstMimExtByType(TELMYANG_LOCAL_DATA_S *pstLocal, QY_EXT *pExt,
                                                           MimExtType uiId, MimExtSubFindCtx *pstFind);
KORV_LIB_API uint32_t TELMYANG_BSC_ImplGetExtInstByNameCb(QY_EXT *pExt, const char *pcExtModule, const char *pcKeyword,
                                                          const char *pcArgument, void *pstFind);
KORV_LIB_API uint32_t TELMYANG_BSC_GetExtSpecSubMimExtValue(TELMYANG_LOCAL_DATA_S *pstLocal, QY_EXT *pExt,
                                                            MimExtType uiId, uint32_t *puiValue);

/* Sets the u32 flag behind the cookie and stops: there is an instance. */
KORV_LIB_API uint32_t TELMYANG_BSC_JudstExtHasExtInst(QY_EXT *pExt, const char *pcExtModule, const char *pcKeyword,
                                                      const char *pcArgument, void *puiFlag);

/* Adds one to the u32 behind the cookie. */
KORV_LIB_API uint32_t TELMYANG_CountExtInstNum(QY_EXT *pExt, const char *pcExtModule, const char *pcKeyword,
                                               const char *pcArgument, void *puiCount);

/* 1 when the node carries exactly one extension instance of any module; 1 when it carries none. */
KORV_LIB_API uint32_t TELMYANG_BSC_IsYinNodeMimExtNumOnlyOne(QY_NODE *pNode);
KORV_LIB_API uint32_t TELMYANG_BSC_IsYinNodeMimExtNumOnlyZero(QY_NODE *pNode);

/* --- module_extension.cpp --- */

/* Reads the module-level statements into a new record, which the caller releases with ZOR_Free_F. Nonzero: logged,
 * nothing is left. */
KORV_LIB_API uint32_t TELMYANG_BSC_ParseModuleYinExtension(TELMYANG_LOCAL_DATA_S *pstLocal, QY_MOD *pMod,
                                                           TELMYANG_MODULE_EXT_S **ppstExt);

#pragma pack(push, 4)
typedef struct {
    TELMYANG_LOCAL_DATA_S *pstLocal;
    uint32_t *puiAaaTaskId;
} ModuleExtCtx;
#pragma pack(pop)

KORV_LIB_API uint32_t TELMYANG_BSC_ImplParseModuleExtInstCb(QY_EXT *pExt, const char *pcExtModule,
                                                            const char *pcKeyword, const char *pcArgument,
                                                            void *pstCtx);

/* --- yin_inst.cpp: the records on schema nodes --- */

#define YIN_INST_MAGIC 0xB1C2D9E9u
#define YIN_PRIVATE_MIN 256u   /* private values below are no records */
#define YIN_LEAF_BLOCK_SIZE 8u /* a leaf's block: as long as the magic that it does not carry */
#define YIN_COUNT_MAX 255u     /* attributes, keys and ancestor keys of one class */
#define YIN_AUTO_KEY_NO_NAME 0xFFu

#define YIN_CLASS_ORDINARY 0u
#define YIN_CLASS_LEAFREF 1u
#define YIN_CLASS_LEAFREF_TARGET 2u

#pragma pack(push, 4)

typedef struct YinInst YinInst;

/* One attribute leaf of a class. Of a leaf-list child behind the attributes, pLeafNode and ucAttrsInFront alone are
 * set. */
typedef struct {
    QY_NODE *pLeafNode;
    uint32_t uiDataType;
    uint8_t ucAttrID;       /* 0: none */
    uint8_t ucDataTypeSet;  /* 1: from "datatype-id", or the default is the string datatype */
    uint8_t ucAttrsInFront; /* of a leaf-list child: how many attributes stand in front of it; else 0 */
} YinAttr;

/* The ancestor keys of a class; only the first record of the array is used. */
typedef struct {
    YinInst *pstParentInst;    /* nearest ancestor's record, or null; not owned */
    uint8_t *pucKeyAttributes; /* attribute ids in this class; owned */
} AncKeyRef;

/* What the statements of a class node say. */
struct YinInst {
    uint64_t ulMagic;
    uint32_t uiClassId;
    uint32_t uiSampleId;
    uint8_t ucNumOfAttr;
    uint8_t ucKeyNum;
    uint8_t ucAncKeyNum;
    uint8_t ucAutoKeyRef;          /* YIN_AUTO_KEY_NO_NAME: attributes, but no automatic name key */
    YinAttr *pstYinAttr;           /* in schema order; owned, null when there are none */
    uint8_t *pucSelfKeyAttributes; /* attribute ids of the own keys; owned, null when there are none */
    AncKeyRef *pstKeyRefArray;     /* ucAncKeyNum records; owned, null when there are none */
    uint8_t ucAutoKeyNum;
    uint8_t ucClassType;   /* YIN_CLASS_ */
    uint8_t ucLeafOrder;   /* 1: built by this library, which keeps the leaf-list children behind the attributes */
    uint8_t ucLeafListNum; /* how many of them there are */
    QY_NODE *pYinNode;     /* set when the record is complete */
};

/* What the statements of a leaf say; its block is YIN_LEAF_BLOCK_SIZE long. */
typedef struct {
    uint8_t ucAttrID;
} YinLeaf;

#pragma pack(pop)

KORV_LAYOUT(sizeof(YinAttr) == 16 && offsetof(YinAttr, ucDataTypeSet) == 13);
KORV_LAYOUT(sizeof(AncKeyRef) == 16);
KORV_LAYOUT(sizeof(YinInst) == 56 && offsetof(YinInst, pstYinAttr) == 20 && offsetof(YinInst, pYinNode) == 48);

/* Builds the record of a class node. 0 with the output untouched when the node carries no class id. Nonzero: logged,
 * nothing is left allocated. The caller stores the record on the node, and releases it with TELMYANG_FreeYinInstInfo
 * and ZOR_Free_F. */
KORV_LIB_API uint32_t TELMYANG_BSC_ParseYinInstFromNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                        YinInst **ppstInst);

/* Reads class type and class id; the flag becomes 1 for a class. */
KORV_LIB_API uint32_t TELMYANG_BSC_GetNodeClassInfo(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                    uint32_t *puiIsClass, YinInst *pstInst);

/* Fills attributes, own keys, automatic and ancestor keys. The ancestors' records must be complete. */
KORV_LIB_API uint32_t TELMYANG_BSC_UpdateYinInstFromNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                         YinInst *pstInst);

/* Fills the record of a leaf; always 0. */
KORV_LIB_API uint32_t TELMYANG_BSC_ParseYinLeafFromNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                        YinLeaf *pstLeaf);

/* Last stage of a record: automatic keys, then the keys of the parent class, copied or derived. */
KORV_LIB_API uint32_t TELMYANG_BSC_GetCompleteYinInstNode(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                          YinInst *pstInst);

/* --- inst_record.cpp --- */

/* Releases what the record owns, not the record; null and a second call do nothing. */
KORV_LIB_API void TELMYANG_FreeYinInstInfo(YinInst *pstInst);

/* The node's record, or null when its private slot holds none. */
KORV_LIB_API YinInst *TELMYANG_MDL_GetYinInstFromYinNode(QY_NODE *pNode);

/* --- final_type.cpp --- */

#define YIN_LEAFREF_HOPS_MAX 64u

/* The type that a leaf's values have, leafrefs followed; null when a target is missing, the leafrefs form a cycle or
 * there are more than 64 of them. */
KORV_LIB_API QY_TYPE *TELEM_MDL_GetYinNodeFinalType(QY_NODE *pNode);
KORV_LIB_API uint32_t TELEM_MDL_ImplGetYinNodeFinalTypeCb(void *pvUnused1, void *pvUnused2, QY_TYPE *pType,
                                                          void *ppType);

/* The built-in type (QY_TYPE_) of the final type, or 0 when there is none. */
KORV_LIB_API uint32_t TELMYANG_UTL_GetFinalLeafType(QY_NODE *pNode);

#define YIN_DATATYPE_STRING 25u
#define YIN_SIZE_VARIABLE 0xFFFFFFFFu

/* Default datatype and size in bytes (puiSize may be null) of a built-in type; 1 when it has none, outputs
 * untouched. */
KORV_LIB_API uint32_t TELMYANG_UTL_GetDefaultFldTypeByYangType(uint32_t uiYangType, uint16_t *pusDataType,
                                                               uint32_t *puiSize);

/* --- attr_leaves.cpp: a class's attributes --- */

#pragma pack(push, 4)

typedef struct {
    TELMYANG_LOCAL_DATA_S *pstLocal;
    uint32_t uiAttrNum;    /* nodes of the wanted type */
    uint32_t uiFillNum;    /* records filled so far */
    YinAttr *pstCurAttr;   /* record to fill next */
    uint32_t uiWantedType; /* QY_NODE_TYPE_ */
} AttrLeafScanCtx;

typedef struct {
    TELMYANG_LOCAL_DATA_S *pstLocal;
    YinAttr *pstAttr;
} AttrFillCtx;

#pragma pack(pop)

/* Fills ucNumOfAttr and pstYinAttr. Nonzero: logged, pstYinAttr is null, and the caller releases the record. */
KORV_LIB_API uint32_t TELMYANG_BSC_ParseNodeAttrLeafInfo(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                         YinInst *pstInst);
KORV_LIB_API uint32_t TELMYANG_BSC_ParseNodeAttrLeafNum(QY_NODE *pNode, void *pvUnused, void *pstScan);
KORV_LIB_API uint32_t TELMYANG_BSC_ParseNodeAttrLeafArray(QY_NODE *pNode, void *pvUnused, void *pstScan);

/* Fills one zero-filled attribute from its leaf. */
KORV_LIB_API uint32_t TELMYANG_BSC_FillLeafIntoYinAttr(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pLeaf,
                                                       YinAttr *pstAttr);
KORV_LIB_API uint32_t TELMYANG_BSC_ImplFillLeafIntoYinAttrCb(QY_EXT *pExt, const char *pcExtModule,
                                                             const char *pcKeyword, const char *pcArgument,
                                                             void *pstCtx);
KORV_LIB_API uint32_t TELMYANG_BSC_FillLeafInfoByExtType(TELMYANG_LOCAL_DATA_S *pstLocal, MimExtType uiId,
                                                         const char *pcArgument, YinAttr *pstAttr);
KORV_LIB_API uint32_t TELMYANG_BSC_AfterFillLeafInfoByExtType(TELMYANG_LOCAL_DATA_S *pstLocal, YinAttr *pstAttr,
                                                              QY_NODE *pLeaf);

/* 0 when every attribute id of the class is nonzero and unique, else 1 with a line at level 2. */
KORV_LIB_API uint32_t TELMYANG_BSC_CheckAllYinInstAttrValid(TELMYANG_LOCAL_DATA_S *pstLocal, const YinInst *pstInst);

/* --- child_nodes.cpp: finding and counting children --- */

#pragma pack(push, 4)
typedef struct {
    uint32_t uiCount;
    uint32_t uiWantedType;
} LeafCountCtx;
#pragma pack(pop)

/* First child, and first child that is not a leaf (type 2), or null. */
KORV_LIB_API QY_NODE *TELMYANG_BSC_FindFirstChild(QY_NODE *pNode);
KORV_LIB_API QY_NODE *TELMYANG_BSC_FindFirstNonLeafChild(QY_NODE *pNode);
KORV_LIB_API uint32_t TELMYANG_BSC_ImplFindYinFirstChildCb(QY_NODE *pNode, void *pvUnused, void *ppNode);
KORV_LIB_API uint32_t TELMYANG_BSC_ImplFindYinFirstNonLeafChildCb(QY_NODE *pNode, void *pvUnused, void *ppNode);

/* Enabled nodes of the wanted type among the node and its following siblings, and the enabled leaves of their choices;
 * at most 255. Wanted types 3, 7 and 8 look at the first node only. */
KORV_LIB_API uint8_t TELMYANG_BSC_CountLeafNodeUnderInst(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pStart,
                                                         uint32_t uiWantedType);
KORV_LIB_API uint32_t TELMYANG_LOADER_ImplCountLeafNodeUnderInstCb(QY_NODE *pNode, void *pvUnused, void *pstCount);
KORV_LIB_API uint32_t TELMYANG_BSC_CountLeafNodeUnderChoiceCase(QY_NODE *pNode, LeafCountCtx *pstCount);
KORV_LIB_API uint32_t TELMYANG_LOADER_ImplCountLeafNodeUnderChoiceCaseCb(QY_NODE *pNode, void *pvUnused,
                                                                         void *pstCount);

/* --- list_keys.cpp: a class's own keys --- */

#define YIN_KEY_NAME_NUM 16u  /* keys that are mapped to attribute ids */
#define YIN_KEY_NAME_SIZE 65u /* a key leaf's name with its terminating zero */
#define YIN_KEY_STATEMENT_MAX 1024u

typedef struct {
    char aacName[YIN_KEY_NAME_NUM][YIN_KEY_NAME_SIZE];
} KeyNameBuffer;

#pragma pack(push, 4)
typedef struct {
    TELMYANG_LOCAL_DATA_S *pstLocal;
    KeyNameBuffer *pstNames;
    uint32_t uiNum;    /* names collected */
    uint32_t uiWanted; /* keys of the list */
} KeyCollectCtx;
#pragma pack(pop)

/* Fills ucKeyNum and pucSelfKeyAttributes of a list; nothing for other nodes. The attributes must be there. */
KORV_LIB_API uint32_t TELMYANG_BSC_ParseNodeKeyLeafInfo(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                        YinInst *pstInst);
KORV_LIB_API uint32_t TELMYANG_BSC_ImplParseListAllKeyCb(QY_NODE *pNode, void *pvUnused, void *pstCollect);

/* Stores the attribute id of the key of that name as own key uiIndex; 1 = found, 0 = not. Without attribute array it
 * counts as found and nothing is stored. */
KORV_LIB_API uint32_t TELMYANG_BSC_FindListNodeKey(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcKeyName,
                                                   YinInst *pstInst, const YinAttr *pstYinAttr, uint32_t uiIndex);

/* Splits a key statement (its first 1024 characters) at single blanks into a zero-filled buffer; longer names are
 * cut. */
KORV_LIB_API void TELMYANG_BSC_ParseListNodeKeyNames(TELMYANG_LOCAL_DATA_S *pstLocal, KeyNameBuffer *pstNames,
                                                     const char *pcKeyStatement);

/* --- auto_keys.cpp --- */

#pragma pack(push, 4)

typedef struct {
    QY_NODE *pNode;
    QY_EXT *pExtInst;
} AutoKeyPair;

typedef struct {
    TELMYANG_LOCAL_DATA_S *pstLocal;
    YinInst *pstInst;
    AutoKeyPair *pstPairs;   /* ucNumOfAttr entries */
    AutoKeyPair *pstNameKey; /* the first name key */
    uint8_t ucPairNum;
} AutoKeyScanCtx;

#pragma pack(pop)

/* Fills ucAutoKeyNum and ucAutoKeyRef; the statements are those of the class node itself. */
KORV_LIB_API uint32_t TELMYANG_BSC_ParseNodeAutoKeyLeafInfo(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                            YinInst *pstInst);
KORV_LIB_API uint32_t TELMYANG_BSC_ParseNodeAutoKeyLeafInfoForEach_(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                                    YinInst *pstInst, AutoKeyPair *pstPairs,
                                                                    AutoKeyPair *pstNameKey);
KORV_LIB_API uint32_t TELMYANG_BSC_ImplParseAutoKeyForEachCb_(QY_NODE *pNode, void *pvUnused, void *pstScan);
KORV_LIB_API uint32_t TELMYANG_BSC_FillAutoKeyRefInfo(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNameKeyNode,
                                                      YinInst *pstInst);

/* --- leafref_class.cpp: classes that take their statements from their children and targets --- */

#pragma pack(push, 4)
typedef struct {
    TELMYANG_LOCAL_DATA_S *pstLocal;
    QY_NODE *pClassNode;
} LeafrefCheckCtx;
#pragma pack(pop)

/* Sets ucClassType from the argument of "class-type" and, for "leafref", checks the class and copies the statements. A
 * failure in the middle of the copying leaves the copies made so far. */
KORV_LIB_API uint32_t TELMYANG_BSC_ParseNodeClassTypeExt(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                         YinInst *pstInst, const char *pcClassType);
KORV_LIB_API uint32_t TELMYANG_BSC_CheckLeafrefClassTypeExtension(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode);
KORV_LIB_API uint32_t TELMYANG_BSC_ImplCheckAllLeafWithLeafrefAndNoMim(QY_NODE *pNode, void *pvUnused, void *pstCheck);
KORV_LIB_API uint32_t TELMYANG_BSC_AutoFillLeafrefNodeExtInst(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                              YinInst *pstInst);
KORV_LIB_API uint32_t TELMYANG_BSC_ImplLeafrefNodeExtInstUpdateCb(QY_NODE *pNode, void *pvUnused, void *pstLocal);

/* --- ancestor_keys.cpp: keys that come from the classes above --- */

/* Record of the nearest ancestor that has one, or null; null for a null node. */
KORV_LIB_API YinInst *TELMYANG_BSC_GetParentYinInst(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode);

/* Argument of the node's first "class-id", 0 when there is none. */
KORV_LIB_API uint32_t TELMYANG_BSC_GetClassIdFromNodeExt_(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode);
KORV_LIB_API uint32_t TELMYANG_BSC_ImplGetClassIdFromYinNodeExtCb_(QY_EXT *pExt, const char *pcExtModule,
                                                                   const char *pcKeyword, const char *pcArgument,
                                                                   void *puiClassId);

/* 1 when the node's first "ancestor-key-fid" has nested statements: the mapping form. */
KORV_LIB_API uint32_t TELMYANG_BSC_IsMethod2KeyRefAncestor(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode);

/* Copies own and ancestor keys of a parent of the same class. */
KORV_LIB_API uint32_t TELMYANG_BSC_ConstructSelfInheritKey_(TELMYANG_LOCAL_DATA_S *pstLocal, YinInst *pstParent,
                                                            QY_NODE *pNode, YinInst *pstInst);

/* Ancestor keys from the list form. */
KORV_LIB_API uint32_t TELMYANG_BSC_ParseNodeAncestorKeyRefInfo(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                               YinInst *pstInst);

/* Stores uiNum ids as the class's ancestor keys. 1 for more than 255; KORV_NO_ID when there is no memory, and for none
 * (an empty list in the statement). */
KORV_LIB_API uint32_t TELMYANG_BSC_ConstructAncestorKeyRef(YinInst *pstInst, QY_NODE *pNode, const uint32_t *puiIdArr,
                                                           uint32_t uiNum, TELMYANG_LOCAL_DATA_S *pstLocal);

/* --- ancestor_mapping.cpp: the mapping form --- */

#pragma pack(push, 4)

typedef struct {
    QY_NODE *pYinNode;
    YinInst *pstYinInst; /* under construction */
    uint32_t *puiIdArr;  /* derived ids, uiAncNum of them */
    uint32_t uiAncNum;   /* "ancestor-key-fid" statements of the node */
    uint32_t uiPos;      /* ids appended so far */
} AncKeyMapCtx;

typedef struct {
    TELMYANG_LOCAL_DATA_S *pstLocal;
    uint32_t uiKeyAttrId;
    uint32_t uiIndexMapId; /* KORV_NO_ID until found */
} IndexMapFindCtx;

#pragma pack(pop)

/* Ancestor keys from the mapping form. */
KORV_LIB_API uint32_t TELMYANG_BSC_ParseNodeAncestorKeyRefInfoWithParent(TELMYANG_LOCAL_DATA_S *pstLocal,
                                                                         QY_NODE *pNode, YinInst *pstInst,
                                                                         YinInst *pstParent);
KORV_LIB_API uint32_t TELMYANG_BSC_BuildAncestorIdArray(AncKeyMapCtx *pstMap, YinInst *pstParent,
                                                        const MimExtArray *pstStatements,
                                                        TELMYANG_LOCAL_DATA_S *pstLocal);
/* The parent's ancestor keys, then its own. A key that cannot be mapped ends its pass with a log line and 0: its slot
 * and those behind it stay 0. 1 when there are fewer statements than keys. */
KORV_LIB_API uint32_t TELMYANG_BSC_MapByParentKeyRef_(AncKeyMapCtx *pstMap, YinInst *pstParent,
                                                      const MimExtArray *pstStatements,
                                                      TELMYANG_LOCAL_DATA_S *pstLocal);
KORV_LIB_API uint32_t TELMYANG_BSC_MapByParentKeySelf_(AncKeyMapCtx *pstMap, YinInst *pstParent,
                                                       const MimExtArray *pstStatements,
                                                       TELMYANG_LOCAL_DATA_S *pstLocal);

/* The attribute id that a parent-side id has in this class, or KORV_NO_ID. */
KORV_LIB_API uint32_t TELMYANG_BSC_FindSonIdByAncestorId(AncKeyMapCtx *pstMap, YinInst *pstParent,
                                                         const MimExtArray *pstStatements, uint32_t uiParentId,
                                                         TELMYANG_LOCAL_DATA_S *pstLocal);

/* First statement with nested ones whose argument is the id; an unreadable argument ends the search. */
KORV_LIB_API QY_EXT *TELMYANG_BSC_FindAncExtWithParentAttrId(TELMYANG_LOCAL_DATA_S *pstLocal,
                                                             const MimExtArray *pstStatements, uint32_t uiNum,
                                                             uint32_t uiParentId);
KORV_LIB_API uint32_t TELMYANG_BSC_FindAncExtCountChild(QY_EXT *pExt, const char *pcExtModule, const char *pcKeyword,
                                                        const char *pcArgument, void *puiCount);

/* The attribute of that id, or null; pstInst may be null. */
KORV_LIB_API YinAttr *TELMYANG_BSC_FindAttrInYinInstByAttrId(TELMYANG_LOCAL_DATA_S *pstLocal, YinInst *pstInst,
                                                             uint8_t ucAttrId);

/* The index-map id ("name2id-key-fid") of the class's leaf with that attribute id, or KORV_NO_ID. */
KORV_LIB_API uint32_t TELMYANG_BSC_InstGetExtIndexMapId(YinInst *pstInst, uint32_t uiKeyAttrId,
                                                        TELMYANG_LOCAL_DATA_S *pstLocal);
KORV_LIB_API uint32_t TELMYANG_BSC_InstGetExtIndexMapIdCb(QY_NODE *pNode, void *pvUnused, void *pstFind);

#ifdef __cplusplus
}
#endif

#endif /* KORV_TELEM_YANG_LIB_H */
