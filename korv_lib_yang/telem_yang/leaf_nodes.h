/* The registry borrows schema nodes: leaf descriptors and augment entries point at them. A module that is unloaded can take
 * away nodes that other modules' records show: the nodes that it added to their trees, nodes of a module that it alone
 * imported, or all of them when the module was registered under another revision as well.
 *
 * A record is marked when it is registered: most have no such node, and those that follow the last marked one are never
 * looked at. So unloading modules one by one takes no memory, and time in proportion to what they hold, as long as few of
 * the others are marked: the trees of those are looked through at each unload. */
#ifndef KORV_LEAF_NODES_H
#define KORV_LEAF_NODES_H

#include "telem_yang/telem_yang.h"

namespace korv {

/* Marks a record that has just been registered. bTwin: its module is registered under another revision as well, so that
 * the unload of either takes all nodes of the other. */
void MarkBorrower(TELMYANG_YANG_CTX_S *pstYangCtx, TELMYANG_YANG_FILE_INFO_S *pstFile, bool bTwin);

/* What the private slot of a watched node points at. Like every record in a slot it begins with its magic. */
struct WatchRecord {
    uint64_t ulMagic;
    TELMYANG_YANG_CTX_S *pstYangCtx;
};

/* While it lives, a schema node that is released is taken out of all registered records first: what pointed at it is null
 * then. No extension data may be read meanwhile. */
class LeafNodeWatch {
  public:
    explicit LeafNodeWatch(TELMYANG_YANG_CTX_S *pstYangCtx);
    ~LeafNodeWatch();
    LeafNodeWatch(const LeafNodeWatch &) = delete;
    LeafNodeWatch &operator=(const LeafNodeWatch &) = delete;

  private:
    WatchRecord m_stRecord;
};

/* Takes the module of a node that is being released out of all registered records; false when the node's private data is
 * no watch's. */
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
