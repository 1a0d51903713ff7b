/**
 * @file
 * What this project's schema layer offers tools beyond the contract.
 *
 * A tool needs more of a model than a device: which statements a file holds, where each of them stands, which file a module
 * came from. The schema layer reads the files, so it says that, and no tool reads them a second time. The library itself
 * never uses this header, and a device's own schema layer has none of it.
 *
 * In short
 *
 *     QXYANG_FILE *pstFile = QXYANG_ReadFile("models/acme.yang", 0);
 *     QXYANG_ScanFile(pstFile, OnEvent, pvCookie);
 *     QXYANG_CloseFile(pstFile);
 *
 * shows the statements of a file, and QXYANG_KeepDetails makes a context tell where the nodes of loaded modules come from.
 *
 * Conventions are those of korv_platform.h: texts are zero-terminated UTF-8, a scan ends with the first nonzero result of its
 * callback and returns it, pointer arguments must not be null unless a function says otherwise, and no C++ exception leaves a
 * function. A file's handle and a context are driven by one thread at a time.
 *
 * The header compiles as C11 and as C++17.
 */
#ifndef QXYANG_H
#define QXYANG_H

#include "korv_platform.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup qxyang_file The statements of one file
 *
 * The file is read as it is, alone: nothing that it imports is looked for, and nothing is checked but its syntax, so that
 * a tool can show models that do not load.
 * @{
 */

typedef struct QXYANG_FILE QXYANG_FILE; /**< a file that was read; release it with QXYANG_CloseFile */

/** The two syntaxes of YANG. */
enum {
    QXYANG_SYNTAX_YIN = 1,    /**< XML; file names end in ".yin" */
    QXYANG_SYNTAX_COMPACT = 2 /**< braces; file names end in ".yang" */
};

/** Options of QXYANG_ReadFile and QXYANG_ReadText, to be joined by "or". */
enum {
    QXYANG_OPTION_COMMENTS = 1 /**< comments are events, too */
};

/** How a statement's argument is written. */
enum {
    QXYANG_ARGUMENT_NONE = 0,      /**< the statement has none */
    QXYANG_ARGUMENT_STRING = 1,    /**< compact syntax: behind the keyword */
    QXYANG_ARGUMENT_ATTRIBUTE = 2, /**< YIN: an attribute */
    QXYANG_ARGUMENT_ELEMENT = 3,   /**< YIN: the element that YANG prescribes, which is no statement itself */
    QXYANG_ARGUMENT_TEXT = 4 /**< YIN: the text of an extension's element that holds nothing else, without the white
                                        space around it. It may be the argument of the extension statement around: that
                                        extension's definition tells. */
};

/** Kinds of events. */
enum {
    QXYANG_EVENT_BEGIN = 0,  /**< a statement begins; those within it follow */
    QXYANG_EVENT_END = 1,    /**< the statement ends */
    QXYANG_EVENT_COMMENT = 2 /**< a comment; one within a statement's head comes behind the event of its beginning */
};

/** No statement: an index. */
#define QXYANG_NO_STATEMENT 0xFFFFFFFFu

/** Where something stands in a file. Line and column count from 1, the column in characters; offset and length in bytes.
 * Line 0: not known. */
typedef struct QXYANG_PLACE_S {
    uint32_t uiLine;   /**< line, or 0 */
    uint32_t uiColumn; /**< column, or 0 */
    uint32_t uiOffset; /**< bytes of the file in front of it */
    uint32_t uiLength; /**< its bytes */
} QXYANG_PLACE_S;

/** A statement. Texts live as long as the file's handle. */
typedef struct QXYANG_STATEMENT_S {
    const char *pcPrefix; /**< prefix of the keyword as written; null for a statement of YANG itself. In YIN it is the
                                element's, and empty for one without. */
    const char *pcModule; /**< module that the statement is of by the file's own imports, or its own; else null. Compact
                                syntax: the module of the prefix. YIN: the module of the element's namespace; an import is of
                                the namespace that the file binds to the import's prefix. */
    const char *pcKeyword;      /**< keyword without prefix */
    const char *pcArgument;     /**< argument, quotes and escapes resolved, or null */
    const char *pcArgumentName; /**< YIN: name of the attribute or element that is the argument; else null */
    const char *pcNamespace;    /**< YIN: namespace of the element of an extension, empty for one in none; else null */
    uint32_t uiArgumentForm;    /**< QXYANG_ARGUMENT_ value */
    uint32_t uiIndex;           /**< number of the statement in the file, from 0 */
    uint32_t uiParent;          /**< index of the statement around, or QXYANG_NO_STATEMENT */
    uint32_t uiFirstChild;      /**< index of the first statement in it, or QXYANG_NO_STATEMENT */
    uint32_t uiNext;            /**< index of the next statement in the one around, or QXYANG_NO_STATEMENT */
    uint32_t uiLevel;           /**< number of the statements around it */
    QXYANG_PLACE_S stPlace;     /**< the whole statement, from its keyword or tag to behind its end */
    QXYANG_PLACE_S
    stArgument; /**< the argument as written: with its quotes in compact syntax, what stands between quotes
                                     or tags in YIN. Line 0 when there is none, or in a YIN file in UTF-16. */
} QXYANG_STATEMENT_S;

/** A comment. */
typedef struct QXYANG_COMMENT_S {
    const char *pcText;     /**< what stands between its marks */
    uint32_t uiIsAlone;     /**< 1 when nothing else stands on its lines; else 0 */
    QXYANG_PLACE_S stPlace; /**< the comment with its marks */
} QXYANG_COMMENT_S;

/** A failure: of a file that was read, or of a load. The texts live as long as the file's handle, or until the next load. */
typedef struct QXYANG_FAILURE_S {
    const char *pcModule;   /**< name of the module or submodule, or null */
    const char *pcFile;     /**< path of the file, or null: no place in a file explains it */
    uint32_t uiLine;        /**< line, or 0 */
    uint32_t uiColumn;      /**< column, or 0 */
    const char *pcText;     /**< "file:line:column: sentence", or the sentence alone */
    const char *pcSentence; /**< what was found and what was expected: the end of pcText */
} QXYANG_FAILURE_S;

/** An event: pstStatement is null for a comment, pstComment for anything else. Both are the callback's until it returns. */
typedef uint32_t (*QXYANG_EVENT_PF)(uint32_t uiEvent, const QXYANG_STATEMENT_S *pstStatement,
                                    const QXYANG_COMMENT_S *pstComment, void *pvCookie);
/** A failure; the record is the callback's until it returns. */
typedef uint32_t (*QXYANG_FAILURE_PF)(const QXYANG_FAILURE_S *pstFailure, void *pvCookie);

/** Reads a file. The end of its name says which syntax it is in: compact for ".yang", YIN for any other.
 *
 * @param pcPath    the file; the limits of a load hold for it
 * @param uiOptions QXYANG_OPTION_ values
 * @return a handle, also when the file cannot be read or is not well formed: QXYANG_ScanFileFailures says so, and the
 *         statements are those up to the failure. Null: no memory. */
KORV_PLATFORM_API QXYANG_FILE *QXYANG_ReadFile(const char *pcPath, uint32_t uiOptions);

/** The same with a text in memory, which is copied.
 *
 * @param pcName    stands for the file's name in failures; its end says which syntax the text is in
 * @param pcText    the text, of any bytes; may be null when ulSize is 0
 * @param ulSize    its bytes
 * @param uiOptions QXYANG_OPTION_ values */
KORV_PLATFORM_API QXYANG_FILE *QXYANG_ReadText(const char *pcName, const char *pcText, uint64_t ulSize,
                                               uint32_t uiOptions);

/** Releases the handle with all its texts. Null does nothing. */
KORV_PLATFORM_API void QXYANG_CloseFile(QXYANG_FILE *pstFile);

/** The file's syntax (QXYANG_SYNTAX_). */
KORV_PLATFORM_API uint32_t QXYANG_GetFileSyntax(const QXYANG_FILE *pstFile);

/** The file's bytes, to which offsets and lengths refer; *pulSize receives their number. They live as long as the handle. */
KORV_PLATFORM_API const char *QXYANG_GetFileText(const QXYANG_FILE *pstFile, uint64_t *pulSize);

/** Reports the statements, and the comments when the handle has them, in the order of the file. */
KORV_PLATFORM_API uint32_t QXYANG_ScanFile(const QXYANG_FILE *pstFile, QXYANG_EVENT_PF pfnCb, void *pvCookie);

/** One statement by its index: statement 0 is the module or submodule. 0 = done; nonzero: the file has no such statement,
 * and *pstStatement is unchanged. */
KORV_PLATFORM_API uint32_t QXYANG_GetStatement(const QXYANG_FILE *pstFile, uint32_t uiIndex,
                                               QXYANG_STATEMENT_S *pstStatement);

/** Reports why the file cannot be read or is not well formed; nothing when it is. */
KORV_PLATFORM_API uint32_t QXYANG_ScanFileFailures(const QXYANG_FILE *pstFile, QXYANG_FAILURE_PF pfnCb, void *pvCookie);

/** How YIN writes the argument of a statement of YANG itself.
 *
 * @param pcKeyword keyword without prefix
 * @param puiForm   receives QXYANG_ARGUMENT_ATTRIBUTE, QXYANG_ARGUMENT_ELEMENT, or QXYANG_ARGUMENT_NONE for a statement
 *                  without argument
 * @return name of the attribute or element, empty for QXYANG_ARGUMENT_NONE. Null: YANG has no such statement, and *puiForm
 *         is unchanged. */
KORV_PLATFORM_API const char *QXYANG_GetArgumentName(const char *pcKeyword, uint32_t *puiForm);

/** The path of a file; the text is the callback's until it returns. */
typedef uint32_t (*QXYANG_PATH_PF)(const char *pcPath, void *pvCookie);

/** Reports the files that a load would try for a module or submodule, the best first. They exist, but nothing of them is
 * read.
 *
 * @param ppcDirs    directories in the order in which they are searched; may be null when uiDirCount is 0
 * @param uiDirCount their number
 * @param pcName     the module's name or the submodule's
 * @param pcRevision the wanted revision, or null: any
 * @param pfnCb      gets each path
 * @param pvCookie   handed to pfnCb; may be null
 * @return what the callback returned; 1 without a callback when there is no memory */
KORV_PLATFORM_API uint32_t QXYANG_ScanModulePaths(const char *const *ppcDirs, uint32_t uiDirCount, const char *pcName,
                                                  const char *pcRevision, QXYANG_PATH_PF pfnCb, void *pvCookie);

/** The name of a module or submodule; the text is the callback's until it returns. */
typedef uint32_t (*QXYANG_NAME_PF)(const char *pcName, void *pvCookie);

/** Reports the names of all modules and submodules that a load by name, without a revision, finds a file for in these
 * directories: each once, in the order of the alphabet. Nothing of the files is read.
 *
 * @param ppcDirs    directories; may be null when uiDirCount is 0
 * @param uiDirCount their number
 * @param pfnCb      gets each name
 * @param pvCookie   handed to pfnCb; may be null
 * @return what the callback returned; 1 without a callback when there is no memory */
KORV_PLATFORM_API uint32_t QXYANG_ScanModuleNames(const char *const *ppcDirs, uint32_t uiDirCount, QXYANG_NAME_PF pfnCb,
                                                  void *pvCookie);

/** Search directories and what they hold. Each directory is read when it is first needed, and once at most: a tool uses a
 * handle for as long as it takes the files to be what they were. */
typedef struct QXYANG_LISTINGS QXYANG_LISTINGS;

/** A module file of a directory: uiDir is the directory's number, pcFile the name of a file that ends in ".yin" or ".yang",
 * or null: the directory cannot be listed, and iError is the errno value that says why. The text is the callback's until it
 * returns. */
typedef uint32_t (*QXYANG_LISTED_FILE_PF)(uint32_t uiDir, const char *pcFile, int32_t iError, void *pvCookie);
/** A file of a module: pcName is the module's name or a submodule's, uiSyntax a QXYANG_SYNTAX_ value. */
typedef uint32_t (*QXYANG_MODULE_FILE_PF)(const char *pcName, const char *pcPath, uint32_t uiSyntax, void *pvCookie);

/** Notes the directories; nothing is read yet.
 *
 * @param ppcDirs    directories in the order in which they are searched; may be null when uiDirCount is 0
 * @param uiDirCount their number
 * @return a handle; release it with QXYANG_CloseListings. Null: no memory. */
KORV_PLATFORM_API QXYANG_LISTINGS *QXYANG_OpenListings(const char *const *ppcDirs, uint32_t uiDirCount);

/** Releases the handle. Contexts that use it go on with what it has read. Null does nothing. */
KORV_PLATFORM_API void QXYANG_CloseListings(QXYANG_LISTINGS *pstListings);

/** Reports all module files of the directories, also those that no load finds: directory by directory in the order of the
 * alphabet, behind them those that end in ".YANG" or the like. Subfolders and other files whose names end like that are
 * reported, too. */
KORV_PLATFORM_API uint32_t QXYANG_ScanListedFiles(QXYANG_LISTINGS *pstListings, QXYANG_LISTED_FILE_PF pfnCb,
                                                  void *pvCookie);

/** Reports what QXYANG_ScanModuleNames reports, each name with the file that a load by that name takes.
 *
 * @return what the callback returned; 1 without a callback when there is no memory */
KORV_PLATFORM_API uint32_t QXYANG_ScanListedModules(QXYANG_LISTINGS *pstListings, QXYANG_MODULE_FILE_PF pfnCb,
                                                    void *pvCookie);

/** Makes the context look for files in these listings from now on, wherever it needs the listing of one of its search
 * directories. Of files that come later it finds those that it looks up by their full name, as NAME.yin: for that it needs
 * no listing. */
KORV_PLATFORM_API void QXYANG_UseListings(QY_CTX *pCtx, QXYANG_LISTINGS *pstListings);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup qxyang_load Loads
 * @{
 */

/** Reports the files that the module was loaded from: its submodules' in the order of inclusion, its own last. The texts
 * live as long as the module. */
KORV_PLATFORM_API uint32_t QXYANG_ScanModuleFiles(const QY_MOD *pMod, QXYANG_MODULE_FILE_PF pfnCb, void *pvCookie);

/** Reports the failures of the latest load call in the order in which they were met. */
KORV_PLATFORM_API uint32_t QXYANG_ScanLoadFailures(const QY_CTX *pCtx, QXYANG_FAILURE_PF pfnCb, void *pvCookie);

/** @} */

/* ------------------------------------------------------------------------------------------------------------------ */
/**
 * @defgroup qxyang_details Where nodes come from, and what else their statements say
 *
 * A context that QXYANG_KeepDetails asked for it, before it loaded anything, keeps the texts of the files that it loads and
 * notes which statement made what. Any other context pays nothing for it, and the functions below answer nonzero there.
 *
 *     QY_CTX *pCtx = QY_CTX_Create(0);
 *     QXYANG_KeepDetails(pCtx);
 *     QY_CTX_LoadModule(pCtx, "acme", NULL);
 *
 *     QXYANG_NODE_DETAILS_S stDetails;
 *     if (QXYANG_GetNodeDetails(pNode, &stDetails) == 0 && stDetails.stStatement.pcFile != NULL)
 *         printf("%s:%u\n", stDetails.stStatement.pcFile, stDetails.stStatement.stPlace.uiLine);
 *
 * All texts and file handles that these functions give out are the context's. They live until the module whose text the
 * file is has been released.
 * @{
 */

/** A statement and its file. Not known: all pointers are null, uiStatement is QXYANG_NO_STATEMENT, and the rest 0. */
typedef struct QXYANG_ORIGIN_S {
    const QXYANG_FILE *pstFile; /**< the file as it was loaded, without its comments; not to be closed */
    const char *pcFile;         /**< its path */
    const char *pcModule;       /**< name of the module or submodule in it */
    uint32_t uiStatement;       /**< the statement's index, for QXYANG_GetStatement */
    QXYANG_PLACE_S stPlace;     /**< the statement's place */
} QXYANG_ORIGIN_S;

/** Values of a status statement. */
enum {
    QXYANG_STATUS_CURRENT = 0,
    QXYANG_STATUS_DEPRECATED = 1,
    QXYANG_STATUS_OBSOLETE = 2
};

/** What is known of a node beyond the contract. Refine and deviate statements have been applied to all values. */
typedef struct QXYANG_NODE_DETAILS_S {
    QXYANG_ORIGIN_S
    stStatement;               /**< the statement that makes the node, in its grouping if it has come from one. The case
                                      that a choice gives a node of its own has the node's, and input and output that a
                                      model does not write have their operation's. */
    QXYANG_ORIGIN_S stUses;    /**< the outermost uses statement that brought the node; not known: none did */
    const char *pcDescription; /**< description, or null */
    const char *pcUnits;       /**< units of a leaf or leaf-list, its type's included, or null */
    uint32_t uiIsConfig;       /**< 1: configuration. 0: state, or part of an operation or notification. */
    uint32_t uiStatus;         /**< QXYANG_STATUS_ value of the statement itself */
} QXYANG_NODE_DETAILS_S;

/** A text; it is the callback's as long as the context's texts live. */
typedef uint32_t (*QXYANG_TEXT_PF)(const char *pcText, void *pvCookie);
/** An extension instance as QY_EXT_SCAN_PF has it, and its statement; the record is the callback's until it returns. */
typedef uint32_t (*QXYANG_EXT_PF)(QY_EXT *pExt, const char *pcModuleName, const char *pcExtName, const char *pcArgValue,
                                  const QXYANG_ORIGIN_S *pstOrigin, void *pvCookie);

/** A statement; the record is the callback's until it returns. */
typedef uint32_t (*QXYANG_ORIGIN_PF)(const QXYANG_ORIGIN_S *pstOrigin, void *pvCookie);

/** Makes the context keep what the functions below answer.
 *
 * @return 0 = done, or asked before. Nonzero: the context holds a module already, or there is no memory; then it keeps
 *         nothing. */
KORV_PLATFORM_API uint32_t QXYANG_KeepDetails(QY_CTX *pCtx);

/** The module statement of a module.
 *
 * @return 0 = done. Nonzero: the context keeps no details, or there is no memory; *pstOrigin is unchanged. */
KORV_PLATFORM_API uint32_t QXYANG_GetModuleOrigin(const QY_MOD *pMod, QXYANG_ORIGIN_S *pstOrigin);

/** The file of a module or submodule of the context, however it came in. Of several revisions, the one that is loaded by name
 * counts, else the one that came in last.
 *
 * @param pCtx   the context
 * @param pcName the module's name or the submodule's
 * @return the file as it was loaded; not to be closed. Null: the context keeps no details, it has no such file, or there is no
 *         memory. */
KORV_PLATFORM_API const QXYANG_FILE *QXYANG_GetLoadedFile(const QY_CTX *pCtx, const char *pcName);

/** Where a node comes from, and what its statements say. Nodes that a deviation removed answer as well.
 *
 * @param pNode      any node, also an augment
 * @param pstDetails receives both
 * @return 0 = done. Nonzero: the context keeps no details, or there is no memory; *pstDetails is unchanged. */
KORV_PLATFORM_API uint32_t QXYANG_GetNodeDetails(const QY_NODE *pNode, QXYANG_NODE_DETAILS_S *pstDetails);

/** Reports the default values that hold for a node: a leaf's one, those of a leaf-list in their order, the name of a choice's
 * default case. A type's default holds for a leaf or leaf-list that has none of its own and need not exist (RFC 7950, 7.6.1
 * and 7.7.2); list keys have none (7.8.2).
 *
 * @return what the callback returned. 1 without a callback: the context keeps no details, or there is no memory. */
KORV_PLATFORM_API uint32_t QXYANG_ScanNodeDefaults(const QY_NODE *pNode, QXYANG_TEXT_PF pfnCb, void *pvCookie);

/** Reports the statements of YANG with one keyword that hold for a node: those in its own statement, then what refine and
 * deviate statements have made of them in their order. One that they add or put in another's place stands where they
 * write it. Of a node whose own statement a model does not write there is none.
 *
 * @param pNode     the node
 * @param pcKeyword keyword of a statement with an argument, such as "must" or "type"
 * @param pfnCb     gets each statement
 * @param pvCookie  handed to pfnCb; may be null
 * @return what the callback returned. 1 without a callback: the context keeps no details, or there is no memory. */
KORV_PLATFORM_API uint32_t QXYANG_ScanNodeStatements(const QY_NODE *pNode, const char *pcKeyword,
                                                     QXYANG_ORIGIN_PF pfnCb, void *pvCookie);

/** Reports the typedef statements that the type of a leaf or leaf-list leads through, the nearest first; nothing for any other
 * node. Neither members of a union nor what a leafref refers to are followed.
 *
 * @return what the callback returned. 1 without a callback: the context keeps no details, or there is no memory. */
KORV_PLATFORM_API uint32_t QXYANG_ScanNodeTypedefs(const QY_NODE *pNode, QXYANG_ORIGIN_PF pfnCb, void *pvCookie);

/** A leafref whose target a deviation leaves out: the leaf has no target, and a leaf of that type alone no final type. */
typedef struct QXYANG_LOST_TARGET_S {
    QY_NODE *pLeaf;            /**< the leaf or leaf-list */
    const char *pcPath;        /**< path of the leafref, which is the type of the leaf or stands in its union */
    QY_NODE *pTarget;          /**< what the path leads to */
    QY_NODE *pRemoved;         /**< what the deviation leaves out: the target or a node above it */
    QXYANG_ORIGIN_S stDeviate; /**< the deviate statement that does so */
} QXYANG_LOST_TARGET_S;

/** A lost target; the record is the callback's until it returns. */
typedef uint32_t (*QXYANG_LOST_TARGET_PF)(const QXYANG_LOST_TARGET_S *pstLost, void *pvCookie);

/** Reports the lost targets of all modules of the context, leafs in the order in which their modules make them. Leafs that a
 * deviation leaves out are not among them. Of several deviations of a node the first counts.
 *
 * @return what the callback returned. 1 without a callback: the context keeps no details, or there is no memory. */
KORV_PLATFORM_API uint32_t QXYANG_ScanLostTargets(const QY_CTX *pCtx, QXYANG_LOST_TARGET_PF pfnCb, void *pvCookie);

/** Reports the extension instances that QY_NODE_ScanAllExtInsts reports, in its order, each with its statement: also those
 * that a refine or deviate statement added, and those that the node has taken over from another one.
 *
 * @return what the callback returned. 1 without a callback: the context keeps no details, or there is no memory. */
KORV_PLATFORM_API uint32_t QXYANG_ScanNodeExtInsts(QY_NODE *pNode, QXYANG_EXT_PF pfnCb, void *pvCookie);

/** The same for QY_MOD_ScanAllExtInsts. */
KORV_PLATFORM_API uint32_t QXYANG_ScanModuleExtInsts(QY_MOD *pMod, QXYANG_EXT_PF pfnCb, void *pvCookie);

/** The same for QY_EXT_ScanAllChildExtInsts. pCtx is the context of the node or module that has the instance. */
KORV_PLATFORM_API uint32_t QXYANG_ScanChildExtInsts(QY_CTX *pCtx, QY_EXT *pExt, QXYANG_EXT_PF pfnCb, void *pvCookie);

/** @} */

#ifdef __cplusplus
}
#endif

#endif /* QXYANG_H */
