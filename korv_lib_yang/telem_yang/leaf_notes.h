/* Notes of the leaves that a record shows of other modules, so that an unload finds the descriptors of what goes
 * without looking through trees: where many modules augment one tree, each of them shows what those before it added.
 *
 * The notes of a registry stand in one index by module. A record adds its notes when it is registered, and takes them
 * along when its trees go. */
#ifndef KORV_LEAF_NOTES_H
#define KORV_LEAF_NOTES_H

#include "telem_yang/telem_yang.h"

namespace korv {

struct IdIndex;
struct LeafIndex;
struct NotedModule;
struct RegistryEntry;

/* TELMYANG_YANG_FILE_INFO_S::ucBorrows */
enum Borrows : uint8_t {
    BORROWS_UNKNOWN, /* no load has registered the record: it is no RegistryEntry */
    BORROWS_NOTHING,
    BORROWS_NOTED,   /* leaves of modules that the record's own one need not import; all of them are noted */
    BORROWS_FOREIGN, /* the same without notes, since there was no memory for them: its trees are looked through */
    BORROWS_ALL,     /* nodes of its own module as well: it is registered under another revision, too */
};

/* Descriptors of one record whose leaves are of one module. Their addresses stand behind the note. */
struct LeafNote {
    NotedModule *pstModule;    /* null once the module's nodes are gone */
    LeafNote *pstNext;         /* of the module */
    LeafNote *pstPrev;         /* of the module */
    LeafNote *pstNextOfRecord; /* of the record */
    RegistryEntry *pstEntry;
    const QY_MOD *pMod;
    uint32_t uiNum;
    uint32_t uiCapacity;

    KorvTreeLeaf **Leaves() { return reinterpret_cast<KorvTreeLeaf **>(this + 1); }
};

/* A module whose leaves are noted. */
struct NotedModule {
    const char *pcName; /* the schema library's, may be null */
    uint32_t uiHash;
    bool bStays; /* a record of it is registered: its nodes go with no unload but its own */
    NotedModule *pstNextInBucket;
    NotedModule *pstNextThatMayGo; /* of the modules that do not stay */
    NotedModule *pstPrevThatMayGo;
    LeafNote *pstFirst;
    LeafNote *pstLast;
};

/* What a load allocates for a record; hosts know its first member. */
struct RegistryEntry {
    TELMYANG_YANG_FILE_INFO_S stFile;
    uint32_t uiNameHash : 31;
    uint32_t bBehindOthers : 1; /* records that no load has registered stand in the list before it */
    LeafIndex *pstIndex;        /* null until a record of the registry has notes; every entry has the same */
    LeafNote *pstNotes;
    RegistryEntry *pstAbove; /* this, the next one, uiNameHash and bBehindOthers: name_index.h */
    RegistryEntry *apstBelow[2];
    IdIndex *pstIds; /* of the registry's first entry, once a host has asked for an id: id_index.h */
};
static_assert(sizeof(void *) != 8 || sizeof(RegistryEntry) == 6184,
              "a host that asks for no id pays nothing for pstIds");

inline RegistryEntry *EntryOf(TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    return pstFile->ucBorrows != BORROWS_UNKNOWN ? reinterpret_cast<RegistryEntry *>(pstFile) : nullptr;
}

/* Makes an entry that is in the registry's list known to its index. */
void JoinIndex(TELMYANG_YANG_CTX_S *pstYangCtx, RegistryEntry *pstEntry);

/* The reverse, for an entry that is about to leave the list: its notes go, its module does not stay. */
void LeaveIndex(RegistryEntry *pstEntry);

/* Notes the leaves that may go before the entry's record. False when there was no memory: nothing is noted then. */
bool NoteForeignLeaves(TELMYANG_LOCAL_DATA_S *pstLocal, RegistryEntry *pstEntry);

/* Takes the notes of a record out of the index; a record without any may be given. */
void DropNotes(TELMYANG_YANG_FILE_INFO_S *pstFile);

/* bStays: a record of the entry's module is registered, and its nodes go with no unload but its own. False when nothing
 * changes: that was known, or no leaf of the module is noted. */
bool SetStays(RegistryEntry *pstEntry, bool bStays);

/* The first of the noted modules that do not stay, or null. */
NotedModule *FirstThatMayGo(TELMYANG_YANG_CTX_S *pstYangCtx);

/* Takes a note out of its module's: what it lists is gone. The note goes with its record. */
void UnlinkNote(LeafNote *pstNote);

/* Releases the modules that do not stay and have no notes any more. */
void ReleaseUnnoted(TELMYANG_YANG_CTX_S *pstYangCtx);

/* The notes of all modules that do not stay. The visitor may unlink the note that it gets. */
template <typename Visit>
void VisitNotes(TELMYANG_YANG_CTX_S *pstYangCtx, Visit &&visit)
{
    for (NotedModule *pstModule = FirstThatMayGo(pstYangCtx); pstModule != nullptr;
         pstModule = pstModule->pstNextThatMayGo) {
        for (LeafNote *pstNote = pstModule->pstFirst; pstNote != nullptr;) {
            LeafNote *pstNext = pstNote->pstNext;
            visit(pstNote);
            pstNote = pstNext;
        }
    }
}

} // namespace korv

#endif // KORV_LEAF_NOTES_H
