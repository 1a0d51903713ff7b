/* The registry borrows schema nodes: leaf descriptors and augment entries point at them. A module that is unloaded can
 * take away nodes that other modules' records show: the nodes that it added to their trees, nodes of a module that it
 * alone imported, or all of them when the module was registered under another revision as well.
 *
 * When a record is registered, the leaves that may go before it are noted by module (leaf_notes.h). So an unload looks
 * at the descriptors of the modules that it may take away, and at no others: those of the unloaded module, and those of
 * modules that came only by import. The trees of two kinds of records are looked through at each unload: those whose
 * module is registered under several revisions, and those for whose notes there was no memory. */
#ifndef KORV_LEAF_NODES_H
#define KORV_LEAF_NODES_H

#include "telem_yang/leaf_notes.h"

namespace korv {

/* Marks an entry that has just been put into the registry's list. bTwin: its module is registered under another
 * revision as well, so that the unload of either takes all nodes of the other. */
void MarkBorrower(TELMYANG_LOCAL_DATA_S *pstLocal, RegistryEntry *pstEntry, bool bTwin);

/* The host releases a tree that may be a record's: no note is relied on any more, and unloads look through the trees of all
 * records that had some. */
void GiveNotesUp(TELMYANG_LOCAL_DATA_S *pstLocal);

/* What the private slot of a watched node points at. Like every record in a slot it begins with its magic. */
struct WatchRecord {
    uint64_t ulMagic;
    TELMYANG_YANG_CTX_S *pstYangCtx;
};

/* While it lives, a schema node that is released is taken out of all registered records first: what pointed at it is
 * null then. No extension data may be read, and no record registered or removed meanwhile. */
class LeafNodeWatch {
  public:
    /* pstFile: the record whose module is unloaded, or null. */
    LeafNodeWatch(TELMYANG_YANG_CTX_S *pstYangCtx, TELMYANG_YANG_FILE_INFO_S *pstFile);
    ~LeafNodeWatch();
    LeafNodeWatch(const LeafNodeWatch &) = delete;
    LeafNodeWatch &operator=(const LeafNodeWatch &) = delete;

  private:
    WatchRecord m_stRecord;
    RegistryEntry *m_pstGoing; /* its module stays when the schema library refuses; or null */
};

/* Takes the module of a node that is being released out of all registered records; false when the node's private data
 * is no watch's. */
bool ReleaseWatchedModule(QY_NODE *pNode, void *pvPrivate);

/* Takes every schema node out of all registered records. */
void ForgetSchemaNodes(TELMYANG_YANG_CTX_S *pstYangCtx);

/* Hides the augment nodes of a record while its module leaves the schema context. */
class HiddenAugments {
  public:
    explicit HiddenAugments(TELMYANG_YANG_FILE_INFO_S *pstFile);
    HiddenAugments(const HiddenAugments &) = delete;
    HiddenAugments &operator=(const HiddenAugments &) = delete;

    /* The module stays: the record shows them again. */
    void Show();

  private:
    TELMYANG_YANG_FILE_INFO_S *m_pstFile;
    QY_NODE *m_apAugNode[KORV_AUGMENT_NUM] = {};
};

} // namespace korv

#endif // KORV_LEAF_NODES_H
