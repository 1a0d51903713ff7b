/* Contract functions that walk over nodes and extension instances. They are called for each node of large models, so
 * they only follow links and call the callback. */
#include "schema/model.h"

using namespace qxyang;

namespace {

QY_NODE *FirstInScans(QY_NODE *node)
{
    while (node != nullptr && !InScans(node))
        node = node->next;
    return node;
}

/* A node's first and last child; both null if it has none. An augment's children are some of its target's. */
struct Children {
    QY_NODE *first = nullptr;
    QY_NODE *last = nullptr;
};

Children ChildrenOf(QY_NODE *node)
{
    if (IsLeaf(node) || node->first == nullptr)
        return {};
    if (node->kind == QY_NODE_TYPE_AUGMENT && IsRemoved(AugmentTarget(node)))
        return {};
    return {node->first, node->last};
}

QY_NODE *FirstChildInScans(QY_NODE *node)
{
    return IsLeaf(node) ? nullptr : FirstInScans(node->first);
}

uint32_t ScanChildren(Children children, QY_NODE_SCAN_PF callback, void *cookie)
{
    for (QY_NODE *node = children.first; node != nullptr;) {
        QY_NODE *next = node != children.last ? node->next : nullptr;
        if (InScans(node))
            if (uint32_t result = callback(node, nullptr, cookie); result != 0)
                return result;
        node = next;
    }
    return 0;
}

/* Calls the callback for each step of a walk below one node. The way back up follows the parents, so the walk needs no
 * memory, however deep it goes. */
class TreeWalk {
  public:
    TreeWalk(QY_TREE_SCAN_PF callback, void *cookie) : callback_(callback), cookie_(cookie) {}

    /* `arrival` is how the walk reached the node. */
    uint32_t Below(QY_NODE *top, uint32_t arrival)
    {
        QY_NODE *node = top;
        for (;;) {
            uint32_t result = callback_(node, arrival, cookie_);
            if (result != 0 && result != KORV_TREE_SCAN_SKIP)
                return result;
            if (QY_NODE *child = result == 0 ? FirstChildInScans(node) : nullptr) {
                node = child;
                arrival = QY_TRAV_CHILD;
                continue;
            }
            QY_NODE *sibling = nullptr;
            while (node != top && (sibling = FirstInScans(node->next)) == nullptr) {
                node = node->parent;
                if (result = Back(node); result != 0)
                    return result;
            }
            if (node == top)
                return 0;
            node = sibling;
            arrival = QY_TRAV_SIBLING;
        }
    }

    uint32_t Back(QY_NODE *node)
    {
        uint32_t result = callback_(node, QY_TRAV_RETURN, cookie_);
        return result == KORV_TREE_SCAN_SKIP ? 0 : result;
    }

  private:
    QY_TREE_SCAN_PF callback_;
    void *cookie_;
};

/* An augment's children have another parent, so each of them is walked on its own. */
uint32_t WalkAugment(QY_NODE *augment, QY_TREE_SCAN_PF callback, void *cookie)
{
    TreeWalk walk(callback, cookie);
    uint32_t result = callback(augment, QY_TRAV_START, cookie);
    if (result != 0)
        return result == KORV_TREE_SCAN_SKIP ? 0 : result;
    Children children = ChildrenOf(augment);
    uint32_t arrival = QY_TRAV_CHILD;
    for (QY_NODE *node = children.first; node != nullptr;) {
        if (InScans(node)) {
            if (result = walk.Below(node, arrival); result != 0)
                return result;
            arrival = QY_TRAV_SIBLING;
        }
        node = node != children.last ? node->next : nullptr;
    }
    return arrival == QY_TRAV_SIBLING ? walk.Back(augment) : 0;
}

uint32_t ScanExtensions(const ExtensionSet *set, QY_EXT_SCAN_PF callback, void *cookie)
{
    if (set == nullptr)
        return 0;
    for (const QY_EXT &instance : *set) {
        uint32_t result = callback(const_cast<QY_EXT *>(&instance), instance.name->module, instance.name->keyword,
                                   instance.argument, cookie);
        if (result != 0)
            return result;
    }
    return 0;
}

} // namespace

uint32_t QY_MOD_IterScanTopmostNode(QY_MOD *pMod, QY_NODE_SCAN_PF pfnCb, void *pvCookie)
{
    return ScanChildren({pMod->root.first, pMod->root.last}, pfnCb, pvCookie);
}

uint32_t QY_MOD_IterScanAugmentNode(QY_MOD *pMod, QY_NODE_SCAN_PF pfnCb, void *pvCookie)
{
    for (QY_NODE *augment : pMod->augments)
        if (uint32_t result = pfnCb(augment, nullptr, pvCookie); result != 0)
            return result;
    return 0;
}

uint32_t QY_MOD_ScanAllExtInsts(QY_MOD *pMod, QY_EXT_SCAN_PF pfnCb, void *pvCookie)
{
    return ScanExtensions(pMod->extensions, pfnCb, pvCookie);
}

uint32_t QY_NODE_IterScanChildrenNode(QY_NODE *pNode, QY_NODE_SCAN_PF pfnCb, void *pvCookie)
{
    return ScanChildren(ChildrenOf(pNode), pfnCb, pvCookie);
}

uint32_t QY_NODE_IterScanSiblingNode(QY_NODE *pNode, QY_NODE_SCAN_PF pfnCb, void *pvCookie)
{
    for (QY_NODE *node = pNode; node != nullptr; node = FirstInScans(node->next))
        if (uint32_t result = pfnCb(node, nullptr, pvCookie); result != 0)
            return result;
    return 0;
}

uint32_t QY_NODE_TreeScanAllNode(QY_NODE *pNode, QY_TREE_SCAN_PF pfnCb, void *pvCookie)
{
    if (pNode->kind == QY_NODE_TYPE_AUGMENT)
        return WalkAugment(pNode, pfnCb, pvCookie);
    return TreeWalk(pfnCb, pvCookie).Below(pNode, QY_TRAV_START);
}

uint32_t QY_NODE_ScanAllExtInsts(QY_NODE *pNode, QY_EXT_SCAN_PF pfnCb, void *pvCookie)
{
    return ScanExtensions(pNode->extensions, pfnCb, pvCookie);
}

uint32_t QY_EXT_ScanAllChildExtInsts(QY_EXT *pExt, QY_EXT_SCAN_PF pfnCb, void *pvCookie)
{
    return ScanExtensions(pExt->nested, pfnCb, pvCookie);
}
