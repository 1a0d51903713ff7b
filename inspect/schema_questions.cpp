#include "schema_questions.h"

#include <cstring>
#include <functional>
#include <new>

#include "korv_lib_yang.h"

namespace inspect {
namespace {

constexpr const char *EXTENSION_MODULE = "quelvo-mim-extensions";
constexpr int MAX_LEAFREF_HOPS = 64;

/* A visitor as the cookie of a scan. Exceptions do not cross the schema library: they wait until the scan is over. */
template <typename Visitor>
struct Scan {
    Visitor visit;
    bool outOfMemory = false;

    template <typename... Args>
    void Visit(Args... args)
    try {
        visit(args...);
    } catch (const std::bad_alloc &) {
        outOfMemory = true;
    }

    void End() const
    {
        if (outOfMemory)
            throw std::bad_alloc();
    }
};

using NodeVisitor = std::function<void(QY_NODE *)>;

uint32_t OnNode(QY_NODE *node, void *, void *cookie)
{
    static_cast<Scan<NodeVisitor> *>(cookie)->Visit(node);
    return 0;
}

uint32_t OnTreeNode(QY_NODE *node, uint32_t travType, void *cookie)
{
    if (travType != QY_TRAV_RETURN)
        static_cast<Scan<NodeVisitor> *>(cookie)->Visit(node);
    return 0;
}

void ForEachTop(QY_MOD *module, const NodeVisitor &visit)
{
    Scan<NodeVisitor> scan = {visit};
    (void)QY_MOD_IterScanTopmostNode(module, OnNode, &scan);
    scan.End();
}

void ForEachChild(QY_NODE *node, const NodeVisitor &visit)
{
    Scan<NodeVisitor> scan = {visit};
    (void)QY_NODE_IterScanChildrenNode(node, OnNode, &scan);
    scan.End();
}

/* Nodes from which everything that the module defines can be reached: its top nodes, and what its augments add. */
void ForEachRoot(QY_MOD *module, const NodeVisitor &visit)
{
    ForEachTop(module, visit);
    Scan<NodeVisitor> scan = {[&visit](QY_NODE *augment) { ForEachChild(augment, visit); }};
    (void)QY_MOD_IterScanAugmentNode(module, OnNode, &scan);
    scan.End();
}

/* The node and everything below it. */
void ForEachBelow(QY_NODE *node, const NodeVisitor &visit)
{
    Scan<NodeVisitor> scan = {visit};
    (void)QY_NODE_TreeScanAllNode(node, OnTreeNode, &scan);
    scan.End();
}

struct ArgumentScan {
    const std::string &keyword;
    std::vector<std::string> found;
    bool outOfMemory = false;
};

uint32_t OnExtension(QY_EXT *, const char *module, const char *keyword, const char *argument, void *cookie)
{
    auto *scan = static_cast<ArgumentScan *>(cookie);
    try {
        if (module != nullptr && keyword != nullptr && std::strcmp(module, EXTENSION_MODULE) == 0 &&
            scan->keyword == keyword)
            scan->found.emplace_back(argument != nullptr ? argument : "");
    } catch (const std::bad_alloc &) {
        scan->outOfMemory = true;
    }
    return 0;
}

uint32_t OnType(void *, void *, QY_TYPE *type, void *cookie)
{
    *static_cast<QY_TYPE **>(cookie) = type; /* the last one is the leaf's own */
    return 0;
}

bool HasAttributeId(QY_NODE *leaf)
{
    return !ExtensionArguments(leaf, "field-id").empty() || !ExtensionArguments(leaf, "ref-id-key-fid").empty();
}

std::string NameOf(QY_NODE *node)
{
    const char *name = QY_NODE_GetNodeName(node);
    return name != nullptr ? name : "";
}

} // namespace

QY_TYPE *FinalType(QY_NODE *leaf)
{
    for (int hop = 0; leaf != nullptr && hop < MAX_LEAFREF_HOPS; ++hop) {
        QY_TYPE *type = nullptr;
        if (QY_NODE_ScanDerivedType(leaf, OnType, &type) != 0 || type == nullptr)
            return nullptr;
        if (QY_TYPE_GetBuiltInBaseType(type) != QY_TYPE_LEAFREF)
            return type;
        leaf = QY_NODE_GetLeafrefTargetNode(leaf, 1);
    }
    return nullptr;
}

std::vector<std::string> ExtensionArguments(QY_NODE *node, const std::string &keyword)
{
    ArgumentScan scan = {keyword, {}};
    (void)QY_NODE_ScanAllExtInsts(node, OnExtension, &scan);
    if (scan.outOfMemory)
        throw std::bad_alloc();
    return scan.found;
}

std::vector<std::string> LeavesWithoutDatatype(QY_MOD *module, const std::string &node, uint32_t type)
{
    std::vector<std::string> leaves;
    const NodeVisitor visitLeaf = [&](QY_NODE *leaf) {
        if (QY_NODE_GetNodeType(leaf) != QY_NODE_TYPE_LEAF || !HasAttributeId(leaf) ||
            !ExtensionArguments(leaf, "datatype-id").empty())
            return;
        QY_TYPE *final = FinalType(leaf);
        if (final != nullptr && QY_TYPE_GetBuiltInBaseType(final) == type)
            leaves.push_back(NameOf(leaf));
    };
    ForEachRoot(module, [&](QY_NODE *root) {
        ForEachBelow(root, [&](QY_NODE *below) {
            if (NameOf(below) == node)
                ForEachChild(below, visitLeaf);
        });
    });
    return leaves;
}

std::vector<std::string> ListsWithTooManyKeys(QY_MOD *module)
{
    std::vector<std::string> lists;
    ForEachRoot(module, [&](QY_NODE *root) {
        ForEachBelow(root, [&](QY_NODE *below) {
            if (QY_NODE_GetNodeType(below) == QY_NODE_TYPE_LIST && QY_NODE_GetNodeKeyNum(below) > NODE_KEY_LIST_NUM &&
                !ExtensionArguments(below, "class-id").empty())
                lists.push_back(NameOf(below));
        });
    });
    return lists;
}

std::vector<std::string> ClassesWithoutTree(QY_MOD *module)
{
    std::vector<std::string> names;
    ForEachTop(module, [&](QY_NODE *top) {
        if (QY_NODE_GetNodeType(top) == QY_NODE_TYPE_CONTAINER)
            return;
        bool holdsClass = false;
        ForEachBelow(top, [&](QY_NODE *below) { holdsClass |= !ExtensionArguments(below, "class-id").empty(); });
        if (holdsClass)
            names.push_back(NameOf(top));
    });
    return names;
}

} // namespace inspect
