/* Keeping registered records from pointing at released schema nodes.
 *
 * The nodes of a module go together, and the schema layer says so of each node whose private slot is set before it
 * releases it. While a module is unloaded, the slot of every node that may go points at the watch. The first node of a
 * module that is announced takes all nodes of that module out of the records. */
#include "telem_yang/leaf_nodes.h"

#include <cstring>

#include "telem_yang/id_index.h"
#include "telem_yang/name_index.h"

namespace {

constexpr uint64_t WATCH_MAGIC = 0x4B4F525657415443u;

/* A visitor of schema nodes gets each one that a record shows; its answer takes the node's place. */
QY_NODE *VisitPointer(QY_NODE *pNode, auto &visit)
{
    return pNode != nullptr ? visit(pNode) : nullptr;
}

template <typename Visit>
void VisitAllNodes(TELMYANG_YANG_FILE_INFO_S *pstFile, Visit &visit)
{
    auto visitLeaf = [&visit](KorvTreeLeaf *pstLeaf) { pstLeaf->pYinNode = visit(pstLeaf->pYinNode); };
    korv::VisitTree(pstFile->pstOriginTree, visitLeaf);
    for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
        TELMYANG_AUGMENT_INFO_S *pstAugment = &pstFile->astAugment[uiLoop];
        korv::VisitTree(pstAugment->pstTargetTree, visitLeaf);
        korv::VisitTree(pstAugment->pstSelfTree, visitLeaf);
        pstAugment->pAugNode = VisitPointer(pstAugment->pAugNode, visit);
        pstAugment->pFirstChild = VisitPointer(pstAugment->pFirstChild, visit);
    }
}

/* True when an unload of another module looks through the record's trees. */
bool IsLookedThrough(const TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    return pstFile->ucBorrows == korv::BORROWS_FOREIGN || pstFile->ucBorrows == korv::BORROWS_ALL;
}

/* The nodes of the records that are looked through. */
template <typename Visit>
void VisitRecords(TELMYANG_YANG_CTX_S *pstYangCtx, Visit &visit)
{
    auto visitLeaf = [&visit](KorvTreeLeaf *pstLeaf) { pstLeaf->pYinNode = visit(pstLeaf->pYinNode); };
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = korv::ListEnd(pstYangCtx);
    for (auto *pstFile = pstYangCtx->stYangFileList.pstNext; pstFile != pstEnd && pstFile->ucBorrowsBehind != 0;
         pstFile = pstFile->pstNext) {
        if (pstFile->ucBorrows == korv::BORROWS_FOREIGN)
            korv::VisitForeignLeaves(pstFile, visitLeaf);
        else if (pstFile->ucBorrows == korv::BORROWS_ALL)
            VisitAllNodes(pstFile, visit);
    }
}

template <typename Visit>
void VisitNoted(korv::LeafNote *pstNote, Visit &visit)
{
    for (uint32_t uiLoop = 0; uiLoop < pstNote->uiNum; ++uiLoop) {
        KorvTreeLeaf *pstLeaf = pstNote->Leaves()[uiLoop];
        pstLeaf->pYinNode = VisitPointer(pstLeaf->pYinNode, visit);
    }
}

/* The nodes that may go while the watch lives. */
template <typename Visit>
void VisitWatched(TELMYANG_YANG_CTX_S *pstYangCtx, Visit &&visit)
{
    VisitRecords(pstYangCtx, visit);
    korv::VisitNotes(pstYangCtx, [&visit](korv::LeafNote *pstNote) { VisitNoted(pstNote, visit); });
}

/* The node whose slot stands for this one: an augment has none of its own, but goes together with what it adds. Null:
 * the augment adds nothing, and nobody would say when it goes. */
QY_NODE *SlotHolder(QY_NODE *pNode)
{
    return QY_NODE_GetNodeType(pNode) < QY_NODE_TYPE_AUGMENT ? pNode : TELMYANG_BSC_FindFirstChild(pNode);
}

/* Lets unloads look through the record's trees. Records that have such a one behind them are marked themselves, so that
 * the marked ones come first. */
void SetBorrows(TELMYANG_YANG_CTX_S *pstYangCtx, TELMYANG_YANG_FILE_INFO_S *pstFile, korv::Borrows eBorrows)
{
    pstFile->ucBorrows = eBorrows;
    for (; pstFile != korv::ListEnd(pstYangCtx) && pstFile->ucBorrowsBehind == 0; pstFile = pstFile->pstPrev)
        pstFile->ucBorrowsBehind = 1;
}

/* Forgets the marks behind the last record that is looked through: others that were are gone. */
void TrimMarks(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = korv::ListEnd(pstYangCtx);
    auto *pstBehindLast = pstYangCtx->stYangFileList.pstNext;
    for (auto *pstFile = pstBehindLast; pstFile != pstEnd && pstFile->ucBorrowsBehind != 0;
         pstFile = pstFile->pstNext) {
        if (IsLookedThrough(pstFile))
            pstBehindLast = pstFile->pstNext;
    }
    for (; pstBehindLast != pstEnd && pstBehindLast->ucBorrowsBehind != 0; pstBehindLast = pstBehindLast->pstNext)
        pstBehindLast->ucBorrowsBehind = 0;
}

/* The module is registered under several revisions: the unload of one takes the nodes of all. */
void MarkTwins(TELMYANG_YANG_CTX_S *pstYangCtx, const char *pcModuleName)
{
    (void)korv::AnyOfName(pstYangCtx, pcModuleName, [pstYangCtx](korv::RegistryEntry *pstEntry) {
        SetBorrows(pstYangCtx, &pstEntry->stFile, korv::BORROWS_ALL);
        return false;
    });
}

} // namespace

void korv::MarkBorrower(TELMYANG_LOCAL_DATA_S *pstLocal, RegistryEntry *pstEntry, bool bTwin)
{
    TELMYANG_YANG_CTX_S *pstYangCtx = pstLocal->pstYangCtx;
    DropIds(pstYangCtx);
    pstEntry->stFile.ucBorrows = BORROWS_NOTHING;
    JoinNames(pstYangCtx, pstEntry);
    JoinIndex(pstYangCtx, pstEntry);
    if (bTwin) {
        MarkTwins(pstYangCtx, pstEntry->stFile.pcModuleName);
        return;
    }
    (void)SetStays(pstEntry, true);
    if (!NoteForeignLeaves(pstLocal, pstEntry))
        SetBorrows(pstYangCtx, &pstEntry->stFile, BORROWS_FOREIGN);
    else if (pstEntry->pstNotes != nullptr)
        pstEntry->stFile.ucBorrows = BORROWS_NOTED;
}

void korv::GiveNotesUp(TELMYANG_LOCAL_DATA_S *pstLocal)
{
    TELMYANG_YANG_CTX_S *pstYangCtx = pstLocal != nullptr ? pstLocal->pstYangCtx : nullptr;
    if (pstYangCtx == nullptr)
        return;
    if (pstYangCtx->stYangFileList.pstNext != nullptr)
        DropIds(pstYangCtx);
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = ListEnd(pstYangCtx);
    for (auto *pstFile = pstYangCtx->stYangFileList.pstNext; pstFile != nullptr && pstFile != pstEnd;
         pstFile = pstFile->pstNext) {
        DropNotes(pstFile);
        if (pstFile->ucBorrows == BORROWS_NOTED)
            SetBorrows(pstYangCtx, pstFile, BORROWS_FOREIGN);
    }
}

korv::LeafNodeWatch::LeafNodeWatch(TELMYANG_YANG_CTX_S *pstYangCtx, TELMYANG_YANG_FILE_INFO_S *pstFile)
    : m_stRecord{WATCH_MAGIC, pstYangCtx}, m_pstGoing(pstFile != nullptr ? EntryOf(pstFile) : nullptr)
{
    TrimMarks(pstYangCtx);
    if (m_pstGoing != nullptr && !SetStays(m_pstGoing, false))
        m_pstGoing = nullptr;
    VisitWatched(pstYangCtx, [this](QY_NODE *pNode) -> QY_NODE * {
        QY_NODE *pHolder = SlotHolder(pNode);
        if (pHolder == nullptr)
            return nullptr;
        if (QY_NODE_GetPrivate(pHolder) == nullptr)
            QY_NODE_SetPrivate(pHolder, &m_stRecord);
        return pNode;
    });
}

korv::LeafNodeWatch::~LeafNodeWatch()
{
    VisitWatched(m_stRecord.pstYangCtx, [this](QY_NODE *pNode) {
        QY_NODE *pHolder = SlotHolder(pNode);
        if (pHolder != nullptr && QY_NODE_GetPrivate(pHolder) == &m_stRecord)
            QY_NODE_SetPrivate(pHolder, nullptr);
        return pNode;
    });
    ReleaseUnnoted(m_stRecord.pstYangCtx);
    if (m_pstGoing != nullptr)
        (void)SetStays(m_pstGoing, true);
}

bool korv::ReleaseWatchedModule(QY_NODE *pNode, void *pvPrivate)
{
    uint64_t ulMagic = 0;
    std::memcpy(&ulMagic, pvPrivate, sizeof(ulMagic));
    if (ulMagic != WATCH_MAGIC)
        return false;
    TELMYANG_YANG_CTX_S *pstYangCtx = static_cast<const WatchRecord *>(pvPrivate)->pstYangCtx;
    const QY_MOD *pMod = QY_NODE_GetModule(pNode);
    QY_NODE_SetPrivate(pNode, nullptr);
    auto forget = [pvPrivate](QY_NODE *pOther) -> QY_NODE * {
        if (QY_NODE_GetPrivate(pOther) == pvPrivate)
            QY_NODE_SetPrivate(pOther, nullptr);
        return nullptr;
    };
    auto forgetOfModule = [=](QY_NODE *pOther) {
        return pOther == pNode || QY_NODE_GetModule(pOther) == pMod ? forget(pOther) : pOther;
    };
    VisitRecords(pstYangCtx, forgetOfModule);
    VisitNotes(pstYangCtx, [&forget, pMod](LeafNote *pstNote) {
        if (pstNote->pMod != pMod)
            return;
        VisitNoted(pstNote, forget);
        UnlinkNote(pstNote);
    });
    return true;
}

void korv::ForgetSchemaNodes(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    auto forget = [](QY_NODE *) -> QY_NODE * { return nullptr; };
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = ListEnd(pstYangCtx);
    for (auto *pstFile = pstYangCtx->stYangFileList.pstNext; pstFile != pstEnd; pstFile = pstFile->pstNext)
        VisitAllNodes(pstFile, forget);
}

korv::HiddenAugments::HiddenAugments(TELMYANG_YANG_FILE_INFO_S *pstFile) : m_pstFile(pstFile)
{
    for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
        m_apAugNode[uiLoop] = pstFile->astAugment[uiLoop].pAugNode;
        pstFile->astAugment[uiLoop].pAugNode = nullptr;
    }
}

void korv::HiddenAugments::Show()
{
    for (uint32_t uiLoop = 0; uiLoop < m_pstFile->ucAugmentNum; ++uiLoop)
        m_pstFile->astAugment[uiLoop].pAugNode = m_apAugNode[uiLoop];
}
