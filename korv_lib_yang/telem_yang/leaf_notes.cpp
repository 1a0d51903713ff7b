/* The index of noted leaves: modules by name, and the notes of each. It is made with the first note of a registry and
 * goes with the last record. */
#include "telem_yang/leaf_notes.h"

#include "telem_yang/name_index.h"
#include "telem_yang_lib/host_memory.h"

namespace {

constexpr uint32_t BUCKET_NUM = 256;
constexpr uint32_t FIRST_CAPACITY = 8;
constexpr uint32_t LAST_CAPACITY = 512;

/* A zero-filled record and what is wanted behind it, or null: without a note a record's trees are looked through, which
 * nobody needs to be told. */
template <typename T>
T *NewRecord(const TELMYANG_LOCAL_DATA_S *pstLocal, uint64_t ulMore = 0, uint32_t uiLine = __builtin_LINE())
{
    return static_cast<T *>(korv::AllocCleared(pstLocal->ulModuleId, sizeof(T) + ulMore, __FILE__, uiLine));
}

} // namespace

namespace korv {

struct LeafIndex {
    uint32_t uiEntries; /* of the registry */
    NotedModule *pstFirstThatMayGo;
    NotedModule *apstBucket[BUCKET_NUM];
};

} // namespace korv

namespace {

using korv::LeafIndex;
using korv::LeafNote;
using korv::NotedModule;
using korv::RegistryEntry;

LeafIndex *IndexOf(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    const RegistryEntry *pstEntry = korv::FirstEntry(pstYangCtx);
    return pstEntry != nullptr ? pstEntry->pstIndex : nullptr;
}

LeafIndex *NewIndex(const TELMYANG_LOCAL_DATA_S *pstLocal)
{
    auto *pstIndex = NewRecord<LeafIndex>(pstLocal);
    if (pstIndex == nullptr)
        return nullptr;
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = korv::ListEnd(pstLocal->pstYangCtx);
    for (auto *pstFile = pstLocal->pstYangCtx->stYangFileList.pstNext; pstFile != pstEnd; pstFile = pstFile->pstNext) {
        RegistryEntry *pstEntry = korv::EntryOf(pstFile);
        if (pstEntry == nullptr)
            continue;
        pstEntry->pstIndex = pstIndex;
        ++pstIndex->uiEntries;
    }
    return pstIndex;
}

NotedModule *FindModule(const LeafIndex *pstIndex, const char *pcName, uint32_t uiHash)
{
    NotedModule *pstModule = pstIndex->apstBucket[uiHash % BUCKET_NUM];
    while (pstModule != nullptr && (pstModule->uiHash != uiHash || !korv::IsSameName(pstModule->pcName, pcName)))
        pstModule = pstModule->pstNextInBucket;
    return pstModule;
}

void LinkThatMayGo(LeafIndex *pstIndex, NotedModule *pstModule)
{
    pstModule->bStays = false;
    pstModule->pstPrevThatMayGo = nullptr;
    pstModule->pstNextThatMayGo = pstIndex->pstFirstThatMayGo;
    if (pstIndex->pstFirstThatMayGo != nullptr)
        pstIndex->pstFirstThatMayGo->pstPrevThatMayGo = pstModule;
    pstIndex->pstFirstThatMayGo = pstModule;
}

void UnlinkThatMayGo(LeafIndex *pstIndex, NotedModule *pstModule)
{
    pstModule->bStays = true;
    NotedModule *pstNext = pstModule->pstNextThatMayGo;
    if (pstModule->pstPrevThatMayGo != nullptr)
        pstModule->pstPrevThatMayGo->pstNextThatMayGo = pstNext;
    else
        pstIndex->pstFirstThatMayGo = pstNext;
    if (pstNext != nullptr)
        pstNext->pstPrevThatMayGo = pstModule->pstPrevThatMayGo;
}

bool IsKept(TELMYANG_YANG_CTX_S *pstYangCtx, const char *pcName)
{
    return korv::AnyOfName(pstYangCtx, pcName, [](const RegistryEntry *pstEntry) {
        return pstEntry->stFile.ucBorrows != korv::BORROWS_ALL;
    });
}

NotedModule *NewModule(const TELMYANG_LOCAL_DATA_S *pstLocal, LeafIndex *pstIndex, const char *pcName, uint32_t uiHash)
{
    auto *pstModule = NewRecord<NotedModule>(pstLocal);
    if (pstModule == nullptr)
        return nullptr;
    pstModule->pcName = pcName;
    pstModule->uiHash = uiHash;
    pstModule->bStays = true;
    pstModule->pstNextInBucket = pstIndex->apstBucket[uiHash % BUCKET_NUM];
    pstIndex->apstBucket[uiHash % BUCKET_NUM] = pstModule;
    if (!IsKept(pstLocal->pstYangCtx, pcName))
        LinkThatMayGo(pstIndex, pstModule);
    return pstModule;
}

void ReleaseModule(LeafIndex *pstIndex, NotedModule *pstModule)
{
    if (!pstModule->bStays)
        UnlinkThatMayGo(pstIndex, pstModule);
    NotedModule **ppstLink = &pstIndex->apstBucket[pstModule->uiHash % BUCKET_NUM];
    while (*ppstLink != pstModule)
        ppstLink = &(*ppstLink)->pstNextInBucket;
    *ppstLink = pstModule->pstNextInBucket;
    korv::HostFree(pstModule);
}

LeafNote *NewNote(const TELMYANG_LOCAL_DATA_S *pstLocal, NotedModule *pstModule, RegistryEntry *pstEntry,
                  uint32_t uiCapacity)
{
    auto *pstNote = NewRecord<LeafNote>(pstLocal, uiCapacity * sizeof(KorvTreeLeaf *));
    if (pstNote == nullptr)
        return nullptr;
    pstNote->pstModule = pstModule;
    pstNote->pstEntry = pstEntry;
    pstNote->uiCapacity = uiCapacity;
    pstNote->pstPrev = pstModule->pstLast;
    (pstModule->pstLast != nullptr ? pstModule->pstLast->pstNext : pstModule->pstFirst) = pstNote;
    pstModule->pstLast = pstNote;
    pstNote->pstNextOfRecord = pstEntry->pstNotes;
    pstEntry->pstNotes = pstNote;
    return pstNote;
}

/* Notes leaves of one entry, mostly many of a module one after the other. */
class NoteTaker {
  public:
    NoteTaker(const TELMYANG_LOCAL_DATA_S *pstLocal, RegistryEntry *pstEntry)
        : m_pstLocal(pstLocal), m_pstEntry(pstEntry)
    {
    }

    void operator()(KorvTreeLeaf *pstLeaf)
    {
        if (!m_bComplete)
            return;
        LeafNote *pstNote = NoteFor(pstLeaf);
        if (pstNote != nullptr)
            pstNote->Leaves()[pstNote->uiNum++] = pstLeaf;
        m_pstLast = pstNote;
        m_bComplete = pstNote != nullptr;
    }

    bool IsComplete() const { return m_bComplete; }

  private:
    /* A note with room for one more leaf of that module, or null. */
    LeafNote *NoteFor(const KorvTreeLeaf *pstLeaf)
    {
        QY_MOD *pMod = QY_NODE_GetModule(pstLeaf->pYinNode);
        if (m_pstLast == nullptr || m_pstLast->pMod != pMod) {
            NotedModule *pstModule = ModuleOf(pstLeaf->pcModuleName);
            if (pstModule == nullptr)
                return nullptr;
            m_pstLast = pstModule->pstLast;
            if (m_pstLast == nullptr || m_pstLast->pstEntry != m_pstEntry || m_pstLast->pMod != pMod)
                return NoteOf(pstModule, pMod, FIRST_CAPACITY);
        }
        if (m_pstLast->uiNum < m_pstLast->uiCapacity)
            return m_pstLast;
        const uint32_t uiMore = m_pstLast->uiCapacity < LAST_CAPACITY ? m_pstLast->uiCapacity * 2 : LAST_CAPACITY;
        return NoteOf(m_pstLast->pstModule, pMod, uiMore);
    }

    LeafNote *NoteOf(NotedModule *pstModule, const QY_MOD *pMod, uint32_t uiCapacity)
    {
        LeafNote *pstNote = NewNote(m_pstLocal, pstModule, m_pstEntry, uiCapacity);
        if (pstNote != nullptr)
            pstNote->pMod = pMod;
        else if (pstModule->pstFirst == nullptr)
            ReleaseModule(m_pstEntry->pstIndex, pstModule);
        return pstNote;
    }

    NotedModule *ModuleOf(const char *pcName)
    {
        LeafIndex *pstIndex = m_pstEntry->pstIndex != nullptr ? m_pstEntry->pstIndex : NewIndex(m_pstLocal);
        if (pstIndex == nullptr)
            return nullptr;
        const uint32_t uiHash = korv::HashOf(pcName);
        NotedModule *pstModule = FindModule(pstIndex, pcName, uiHash);
        return pstModule != nullptr ? pstModule : NewModule(m_pstLocal, pstIndex, pcName, uiHash);
    }

    const TELMYANG_LOCAL_DATA_S *m_pstLocal;
    RegistryEntry *m_pstEntry;
    LeafNote *m_pstLast = nullptr;
    bool m_bComplete = true;
};

} // namespace

void korv::JoinIndex(TELMYANG_YANG_CTX_S *pstYangCtx, RegistryEntry *pstEntry)
{
    pstEntry->pstIndex = IndexOf(pstYangCtx);
    if (pstEntry->pstIndex != nullptr)
        ++pstEntry->pstIndex->uiEntries;
}

void korv::LeaveIndex(RegistryEntry *pstEntry)
{
    DropNotes(&pstEntry->stFile);
    (void)SetStays(pstEntry, false);
    LeafIndex *pstIndex = pstEntry->pstIndex;
    pstEntry->pstIndex = nullptr;
    if (pstIndex != nullptr && --pstIndex->uiEntries == 0)
        HostFree(pstIndex);
}

bool korv::NoteForeignLeaves(TELMYANG_LOCAL_DATA_S *pstLocal, RegistryEntry *pstEntry)
{
    NoteTaker takeNote(pstLocal, pstEntry);
    VisitForeignLeaves(&pstEntry->stFile, takeNote);
    if (!takeNote.IsComplete())
        DropNotes(&pstEntry->stFile);
    return takeNote.IsComplete();
}

void korv::DropNotes(TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    RegistryEntry *pstEntry = EntryOf(pstFile);
    while (pstEntry != nullptr && pstEntry->pstNotes != nullptr) {
        LeafNote *pstNote = pstEntry->pstNotes;
        NotedModule *pstModule = pstNote->pstModule;
        pstEntry->pstNotes = pstNote->pstNextOfRecord;
        if (pstModule != nullptr)
            UnlinkNote(pstNote);
        HostFree(pstNote);
        if (pstModule != nullptr && pstModule->pstFirst == nullptr)
            ReleaseModule(pstEntry->pstIndex, pstModule);
    }
}

bool korv::SetStays(RegistryEntry *pstEntry, bool bStays)
{
    LeafIndex *pstIndex = pstEntry->pstIndex;
    const char *pcName = pstEntry->stFile.pcModuleName;
    NotedModule *pstModule = pstIndex != nullptr ? FindModule(pstIndex, pcName, HashOf(pcName)) : nullptr;
    if (pstModule == nullptr || pstModule->bStays == bStays)
        return false;
    if (bStays)
        UnlinkThatMayGo(pstIndex, pstModule);
    else
        LinkThatMayGo(pstIndex, pstModule);
    return true;
}

korv::NotedModule *korv::FirstThatMayGo(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    const LeafIndex *pstIndex = IndexOf(pstYangCtx);
    return pstIndex != nullptr ? pstIndex->pstFirstThatMayGo : nullptr;
}

void korv::UnlinkNote(LeafNote *pstNote)
{
    NotedModule *pstModule = pstNote->pstModule;
    (pstNote->pstPrev != nullptr ? pstNote->pstPrev->pstNext : pstModule->pstFirst) = pstNote->pstNext;
    (pstNote->pstNext != nullptr ? pstNote->pstNext->pstPrev : pstModule->pstLast) = pstNote->pstPrev;
    pstNote->pstModule = nullptr;
}

void korv::ReleaseUnnoted(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    LeafIndex *pstIndex = IndexOf(pstYangCtx);
    NotedModule *pstModule = pstIndex != nullptr ? pstIndex->pstFirstThatMayGo : nullptr;
    while (pstModule != nullptr) {
        NotedModule *pstNext = pstModule->pstNextThatMayGo;
        if (pstModule->pstFirst == nullptr)
            ReleaseModule(pstIndex, pstModule);
        pstModule = pstNext;
    }
}
