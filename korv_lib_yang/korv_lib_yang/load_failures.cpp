/* Why a load failed: what the schema library recorded, or what an inquiry finds. */
#include <cstring>

#include "korv_lib_yang/load_steps.h"
#include "korv_lib_yang/text_writer.h"
#include "telem_yang/file_list.h"
#include "telem_yang/leaf_notes.h"
#include "telem_yang/tree_budget.h"
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/refusal.h"

namespace {

using korv::BackWriter;
using korv::HostPtr;
using korv::Refusal;
using korv::Why;

/* $C stands for the class's name, $L for the leaf's, $S for the statement's keyword and $A for its argument. */
struct Reason {
    Why eWhy;
    const char *pcStatement; /* what it is about, or null */
    const char *pcSentence;
};

constexpr Reason REASONS[] = {
    {Why::NoMemory, nullptr, ""},
    {Why::NothingIsWrong, nullptr,
     "nothing is wrong any more: the load lacked memory, or other modules have come or gone since"},
    {Why::TaskId, "aaa-task-id", "'$A' is no number that aaa-task-id can have"},
    {Why::AugmentNum, "augment", "the module has more than 20 augments: put some into another module"},
    {Why::AttributeNum, nullptr, "class '$C' has more than 255 leafs: split it"},
    {Why::Number, nullptr, "leaf '$L' of class '$C': '$A' is no number that $S can have"},
    {Why::NoDatatype, nullptr, "leaf '$L' of class '$C' is of a type without default datatype: it needs a datatype-id"},
    {Why::NoLeafrefTarget, nullptr,
     "leaf '$L' of class '$C' is a leafref whose target is not found: it needs a datatype-id"},
    {Why::KeyNoLeaf, "key", "class '$C': a key is no leaf of the list itself, or its name has more than 64 characters"},
    {Why::KeyNum, "key", "class '$C' has more than 255 keys"},
    {Why::AutoKeys, "name2id-key-fid",
     "class '$C' has several leafs and a name2id-key-fid of its own: that belongs on a leaf"},
    {Why::AncestorKeysEmpty, "ancestor-key-fid",
     "class '$C': ancestor-key-fid is empty: name the attribute ids, or leave it out"},
    {Why::AncestorKeysNoNumbers, "ancestor-key-fid",
     "class '$C': '$A' is no list of numbers that ancestor-key-fid can have"},
    {Why::AncestorKeyNum, "ancestor-key-fid", "class '$C' has more than 255 ancestor keys"},
    {Why::AncestorKeysTooFew, "ancestor-key-fid",
     "class '$C' has too few ancestor-key-fid for the keys of the class above it"},
    {Why::ClassTypeUnknown, "class-type", "class '$C': class-type '$A' is neither 'leafref' nor 'leafref-target'"},
    {Why::ClassTypeNotAlone, "class-type",
     "class '$C' of class-type 'leafref' must not have other extension statements"},
    {Why::ClassTypeNoChildClass, "class-type", "class '$C' of class-type 'leafref' must have a child class"},
    {Why::ClassTypeNoLeafref, nullptr, "leaf '$L' of '$C', a class of class-type 'leafref', is no leafref"},
    {Why::ClassTypeLeafStatements, nullptr,
     "leaf '$L' of '$C', a class of class-type 'leafref', must not have extension statements"},
    {Why::TreeKeyNum, "key", "class '$C' has more than 16 keys"},
    {Why::TreeAncestorKeyNum, "ancestor-key-fid", "class '$C' has more than 16 ancestor keys"},
    {Why::TreeSize, nullptr,
     "the module's trees, with all that its augments extend, have more than 4194304 nodes and leafs"},
};

constexpr bool ReasonsAreInOrder()
{
    uint32_t uiRow = 0;
    for (const Reason &stReason : REASONS) {
        if (static_cast<uint32_t>(stReason.eWhy) != uiRow++)
            return false;
    }
    return uiRow == static_cast<uint32_t>(Why::Num);
}
static_assert(ReasonsAreInOrder());
static_assert(KORV_AUGMENT_NUM == 20 && YIN_COUNT_MAX == 255 && NODE_KEY_LIST_NUM == 16 && YIN_KEY_NAME_SIZE == 65 &&
              korv::TREE_RECORDS_MAX == 4194304);

/* A record that is never registered. */
struct FileInfoDelete {
    TELMYANG_LOCAL_DATA_S *pstLocal;
    void operator()(TELMYANG_YANG_FILE_INFO_S *pstFile) const { TELMYANG_FreeYangFileInfo(pstLocal, pstFile); }
};
using FileInfoPtr = std::unique_ptr<TELMYANG_YANG_FILE_INFO_S, FileInfoDelete>;

/* --- Failures of the schema library --- */

struct SchemaScan {
    YANGLIB_LOAD_FAILURE_PF pfnCb;
    void *pvCookie;
};

/* What follows ":" and a number. */
const char *BehindNumber(const char *pcText)
{
    const char *pcEnd = pcText + (*pcText == ':' ? 1 : 0);
    while (*pcEnd >= '0' && *pcEnd <= '9')
        ++pcEnd;
    return pcEnd;
}

/* The text without "file:line:column: ". */
const char *SentenceOf(const char *pcText, const char *pcFile)
{
    const size_t ulFile = pcFile != nullptr ? std::strlen(pcFile) : 0;
    if (ulFile == 0 || std::strncmp(pcText, pcFile, ulFile) != 0)
        return pcText;
    const char *pcEnd = BehindNumber(BehindNumber(pcText + ulFile));
    return pcEnd[0] == ':' && pcEnd[1] == ' ' ? pcEnd + 2 : pcText;
}

uint32_t ReportSchemaFailure(const char *pcModuleName, const char *pcFile, uint32_t uiLine, const char *pcText,
                             uint32_t uiColumn, void *pvScan)
{
    if (pcModuleName == nullptr || pcText == nullptr)
        return 0;
    const auto *pstScan = static_cast<const SchemaScan *>(pvScan);
    YANGLIB_LOAD_FAILURE_S stFailure = {};
    stFailure.uiSize = sizeof(stFailure);
    stFailure.uiRefusedBy = YANGLIB_REFUSED_BY_SCHEMA;
    stFailure.uiLine = uiLine;
    stFailure.uiColumn = uiColumn;
    stFailure.pcModule = pcModuleName;
    stFailure.pcFile = pcFile;
    stFailure.pcText = pcText;
    stFailure.pcSentence = SentenceOf(pcText, pcFile);
    return pstScan->pfnCb(&stFailure, pstScan->pvCookie);
}

/* --- Failures of the library --- */

/* The node around a node, beyond an augment that adds it. */
QY_NODE *NodeAround(QY_NODE *pNode)
{
    QY_NODE *pParent = QY_NODE_GetParentNode(pNode);
    while (pParent != nullptr && QY_NODE_GetNodeType(pParent) == QY_NODE_TYPE_AUGMENT)
        pParent = QY_NODE_GetAugmentTargetNode(pParent);
    return pParent;
}

void PutPath(BackWriter *pWriter, QY_NODE *pNode)
{
    for (; pNode != nullptr; pNode = NodeAround(pNode)) {
        pWriter->Put(QY_NODE_GetNodeName(pNode));
        pWriter->Put("/", 1);
    }
}

const char *NamedBy(char cWhat, const YANGLIB_LOAD_FAILURE_S *pstFailure)
{
    switch (cWhat) {
        case 'C':
            return pstFailure->pcClass;
        case 'L':
            return pstFailure->pcLeaf;
        case 'S':
            return pstFailure->pcStatement;
        default:
            return pstFailure->pcArgument;
    }
}

void PutSentence(BackWriter *pWriter, const char *pcSentence, const YANGLIB_LOAD_FAILURE_S *pstFailure)
{
    const char *pcEnd = pcSentence + std::strlen(pcSentence);
    while (pcEnd != pcSentence) {
        --pcEnd;
        if (pcEnd != pcSentence && pcEnd[-1] == '$')
            pWriter->Put(NamedBy(*pcEnd--, pstFailure));
        else
            pWriter->Put(pcEnd, 1);
    }
}

/* The text that the function puts, in a block of its own; null without memory. */
template <typename Put>
HostPtr<char> Composed(TELMYANG_LOCAL_DATA_S *pstLocal, Put &&put)
{
    BackWriter length;
    put(&length);
    HostPtr<char> pcText(static_cast<char *>(korv::AllocCleared(pstLocal->ulModuleId, length.Length() + 1)));
    if (pcText) {
        BackWriter writer(pcText.get() + length.Length());
        put(&writer);
    }
    return pcText;
}

/* The class that a failure is about, or null. */
QY_NODE *ClassOf(const Refusal &stRefusal)
{
    if (stRefusal.eWhy == Why::AugmentNum)
        return nullptr;
    if (stRefusal.pNode != nullptr || stRefusal.pLeaf == nullptr)
        return stRefusal.pNode;
    const bool bLeaf = QY_NODE_GetNodeType(stRefusal.pLeaf) == QY_NODE_TYPE_LEAF;
    return bLeaf ? NodeAround(stRefusal.pLeaf) : stRefusal.pLeaf;
}

/* The name of the module whose statement the failure is about, or null. */
const char *ModuleOf(const Refusal &stRefusal)
{
    QY_NODE *pNode = stRefusal.pLeaf != nullptr ? stRefusal.pLeaf : stRefusal.pNode;
    QY_MOD *pMod = pNode != nullptr ? QY_NODE_GetModule(pNode) : nullptr;
    return pMod != nullptr ? QY_MOD_GetModuleName(pMod) : nullptr;
}

/* Fills what the refusal says itself; the texts that have to be composed are missing. */
YANGLIB_LOAD_FAILURE_S FailureOf(const Refusal &stRefusal, const Reason &stReason, const char *pcModuleName)
{
    YANGLIB_LOAD_FAILURE_S stFailure = {};
    stFailure.uiSize = sizeof(stFailure);
    stFailure.uiRefusedBy = YANGLIB_REFUSED_BY_LIBRARY;
    const char *pcModule = ModuleOf(stRefusal);
    stFailure.pcModule = pcModule != nullptr ? pcModule : pcModuleName;
    stFailure.pcLeaf = stRefusal.pLeaf != nullptr ? QY_NODE_GetNodeName(stRefusal.pLeaf) : nullptr;
    stFailure.pcStatement = stRefusal.pcStatement != nullptr ? stRefusal.pcStatement : stReason.pcStatement;
    stFailure.pcArgument =
        stRefusal.eWhy == Why::AugmentNum ? QY_NODE_GetNodeName(stRefusal.pNode) : stRefusal.pcArgument;
    return stFailure;
}

uint32_t ReportRefusal(TELMYANG_LOCAL_DATA_S *pstLocal, const Refusal &stRefusal, const char *pcModuleName,
                       const SchemaScan &stScan)
{
    const Reason &stReason = REASONS[static_cast<uint32_t>(stRefusal.eWhy)];
    YANGLIB_LOAD_FAILURE_S stFailure = FailureOf(stRefusal, stReason, pcModuleName);
    HostPtr<char> pcPath;
    if (QY_NODE *pClass = ClassOf(stRefusal)) {
        pcPath = Composed(pstLocal, [pClass](BackWriter *pWriter) { PutPath(pWriter, pClass); });
        if (!pcPath)
            return KORV_NO_MEMORY;
        stFailure.pcClassPath = pcPath.get();
        stFailure.pcClass = std::strrchr(pcPath.get(), '/') + 1;
    }
    const HostPtr<char> pcSentence =
        Composed(pstLocal, [&](BackWriter *pWriter) { PutSentence(pWriter, stReason.pcSentence, &stFailure); });
    if (!pcSentence)
        return KORV_NO_MEMORY;
    stFailure.pcText = pcSentence.get();
    stFailure.pcSentence = pcSentence.get();
    return stScan.pfnCb(&stFailure, stScan.pvCookie);
}

/* Goes through the library's steps once more. False: there is no memory to. */
bool Inquire(korv::Inquiry *pstInquiry, const char *pcModuleName, const char *pcRevision, QY_MOD *pMod)
{
    TELMYANG_LOCAL_DATA_S *pstLocal = &pstInquiry->stLocal;
    korv::RegistryEntry *pstEntry = korv::NewZeroed<korv::RegistryEntry>(pstLocal).release();
    const FileInfoPtr pstFile(pstEntry != nullptr ? &pstEntry->stFile : nullptr, {pstLocal});
    if (!pstFile ||
        TELMYANG_FillYangModuleInfo(pstLocal, pstFile.get(), pstLocal->ulModuleId, pcModuleName, pcRevision) != KORV_OK)
        return false;
    const uint32_t uiRet = korv::ReadAndBuild(pstLocal, pstFile.get(), pcModuleName, pcRevision, pMod);
    if (uiRet == KORV_OK)
        pstInquiry->stRefusal = {Why::NothingIsWrong, nullptr, nullptr, nullptr, nullptr};
    return pstInquiry->stRefusal.eWhy != Why::NoMemory;
}

} // namespace

uint32_t YANGLIB_ScanLoadFailures(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName, const char *pcRevision,
                                  YANGLIB_LOAD_FAILURE_PF pfnCb, void *pvCookie)
{
    if (pstLocal == nullptr || pstLocal->pstYangCtx == nullptr || pcModuleName == nullptr || pfnCb == nullptr)
        return KORV_INVALID;
    TELMYANG_YANG_CTX_S *pstYangCtx = pstLocal->pstYangCtx;
    if (pcRevision != nullptr && pcRevision[0] == '\0')
        pcRevision = nullptr;
    if (korv::FindRegistered(pstYangCtx, pcModuleName, pcRevision).pstFile != nullptr)
        return KORV_OK;
    SchemaScan stScan = {pfnCb, pvCookie};
    QY_MOD *pMod = QY_CTX_GetModuleByModName(pstYangCtx->pSchemaCtx, pcModuleName);
    if (pMod == nullptr)
        return QY_CTX_ScanAllSchemaLoadFail(pstYangCtx->pSchemaCtx, ReportSchemaFailure, &stScan);
    korv::Inquiry stInquiry = korv::NewInquiry(pstLocal);
    if (!Inquire(&stInquiry, pcModuleName, pcRevision, pMod))
        return KORV_NO_MEMORY;
    return ReportRefusal(pstLocal, stInquiry.stRefusal, pcModuleName, stScan);
}
