#include "tree.h"

#include <exception>
#include <set>

namespace korv_python {
namespace {

/* What a scan of the library reports. No exception may go through the library. */
template <class T>
struct Collector {
    std::vector<T> items;
    std::exception_ptr error;

    static uint32_t Add(T item, void *collector)
    {
        auto *self = static_cast<Collector *>(collector);
        try {
            self->items.push_back(item);
            return 0;
        } catch (...) {
            self->error = std::current_exception();
            return 1;
        }
    }
    std::vector<T> Take()
    {
        if (error)
            std::rethrow_exception(error);
        return std::move(items);
    }
};

/* The next node of a walk, parents first; null behind the last one below `top`. */
KorvTreeNode *Next(KorvTreeNode *node, const KorvTreeNode *top)
{
    if (node->pstFirstChild != nullptr)
        return node->pstFirstChild;
    while (node != nullptr && node != top) {
        if (node->pstNextSibling != nullptr)
            return node->pstNextSibling;
        node = node->pstParent;
    }
    return nullptr;
}

/* All that stands in one tree of a module: its top nodes and everything below them. */
std::vector<KorvTreeNode *> Tree(KorvTreeNode *firstTop)
{
    std::vector<KorvTreeNode *> nodes;
    for (KorvTreeNode *top = firstTop; top != nullptr; top = top->pstNextSibling)
        AddBelow(top, &nodes);
    return nodes;
}

/* A name of the node among all nodes of an instance, choices and cases included. */
std::string FullName(const KorvTreeNode *node)
{
    std::string name;
    for (; node != nullptr; node = node->pstParent)
        name += std::string("/") + node->pcModuleName + ":" + node->pcName;
    return name;
}

/* The trees that a module's augments extend may show the same node twice: it counts where it comes first. */
class Once {
  public:
    bool IsNew(const KorvTreeNode *node, const char *leaf = "")
    {
        return seen_.insert(FullName(node) + "/" + leaf).second;
    }

  private:
    std::set<std::string> seen_;
};

template <class F>
void ForEachTree(const LoadedModule &module, const F &visit)
{
    const TELMYANG_YANG_FILE_INFO_S &file = module.File();
    visit(Tree(file.pstOriginTree), false);
    for (size_t i = 0; i < file.ucAugmentNum; ++i)
        visit(Tree(file.astAugment[i].pstTargetTree), true);
}

/* The text that a function of the library writes into a buffer. */
template <class F>
std::string Written(const F &write)
{
    std::string text(128, '\0');
    YANGLIB_TEXT_S buffer = {text.data(), static_cast<uint32_t>(text.size()), 0};
    uint32_t result = write(&buffer);
    if (result == KORV_BUFFER_TOO_SMALL) {
        text.resize(buffer.uiNeeded);
        buffer = {text.data(), buffer.uiNeeded, 0};
        result = write(&buffer);
    }
    if (result != KORV_OK)
        Raise("Error", "the library cannot tell the path");
    text.resize(buffer.uiNeeded - 1);
    return text;
}

bool IsOf(const char *definedBy, const LoadedModule &module)
{
    return module.Name() == definedBy;
}

} // namespace

void AddBelow(KorvTreeNode *top, std::vector<KorvTreeNode *> *nodes)
{
    for (KorvTreeNode *node = top; node != nullptr; node = Next(node, top))
        nodes->push_back(node);
}

std::vector<KorvTreeNode *> NodesOf(const LoadedModule &module)
{
    std::vector<KorvTreeNode *> all;
    Once once;
    ForEachTree(module, [&](const std::vector<KorvTreeNode *> &nodes, bool isTarget) {
        for (KorvTreeNode *node : nodes)
            if (IsOf(node->pcModuleName, module) && (!isTarget || once.IsNew(node)))
                all.push_back(node);
    });
    return all;
}

std::vector<Leaf> LeavesOf(const ModulePtr &module)
{
    std::vector<Leaf> all;
    Once once;
    ForEachTree(*module, [&](const std::vector<KorvTreeNode *> &nodes, bool isTarget) {
        for (KorvTreeNode *node : nodes) {
            if (node->ucNodeType != KORV_NODE_ORDINARY)
                continue; /* the node around it has its leaves */
            for (KorvTreeLeaf *leaf : LeavesOf(*node, BOTH))
                if (IsOf(leaf->pcModuleName, *module) && (!isTarget || once.IsNew(node, leaf->pcName)))
                    all.push_back({module, node, leaf});
        }
    });
    return all;
}

std::vector<Leaf> AttributesOf(const std::vector<ModulePtr> &modules)
{
    std::vector<Leaf> attributes;
    for (const ModulePtr &module : modules)
        for (Leaf &leaf : LeavesOf(module))
            if (leaf.leaf->uiFieldId != 0)
                attributes.push_back(std::move(leaf));
    return attributes;
}

std::vector<KorvTreeLeaf *> LeavesOf(const KorvTreeNode &node, Which which)
{
    Collector<KorvTreeLeaf *> leaves;
    (void)YANGLIB_ScanLeaves(&node, which, Collector<KorvTreeLeaf *>::Add, &leaves);
    return leaves.Take();
}

std::vector<KorvTreeNode *> ChildrenOf(const KorvTreeNode &node)
{
    Collector<KorvTreeNode *> children;
    (void)YANGLIB_ScanNodes(&node, Collector<KorvTreeNode *>::Add, &children);
    return children.Take();
}

std::vector<Node> Siblings(const ModulePtr &module, KorvTreeNode *first)
{
    std::vector<Node> nodes;
    for (KorvTreeNode *node = first; node != nullptr; node = node->pstNextSibling)
        nodes.push_back({module, node});
    return nodes;
}

std::string PathOf(const Node &node, uint32_t form)
{
    return Written(
        [&](YANGLIB_TEXT_S *text) { return YANGLIB_GetNodePath(node.module->Local(), &node.There(), form, text); });
}

std::string PathOf(const Leaf &leaf, uint32_t form)
{
    return Written([&](YANGLIB_TEXT_S *text) {
        return YANGLIB_GetLeafPath(leaf.module->Local(), leaf.node, &leaf.There(), form, text);
    });
}

} // namespace korv_python
