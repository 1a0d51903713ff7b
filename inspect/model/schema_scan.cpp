#include "model/schema_scan.h"

#include <array>
#include <cstring>
#include <exception>
#include <new>
#include <unordered_set>

namespace inspect {
namespace {

constexpr const char *EXTENSION_MODULE = "quelvo-mim-extensions";

/* A visitor as the cookie of a scan. Exceptions do not cross the schema library: they wait until the scan is over. */
template <class Visitor>
struct Scan {
    Visitor visit;
    std::exception_ptr thrown = nullptr;

    template <class... Args>
    void Visit(Args... args)
    try {
        visit(args...);
    } catch (...) {
        thrown = std::current_exception();
    }

    void End() const
    {
        if (thrown != nullptr)
            std::rethrow_exception(thrown);
    }
};

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

using ExtensionVisitor = std::function<void(const Extension &)>;

bool IsOurs(const char *module)
{
    return module != nullptr && std::strcmp(module, EXTENSION_MODULE) == 0;
}

uint32_t OnExtension(QY_EXT *instance, const char *module, const char *keyword, const char *argument,
                     const QXYANG_ORIGIN_S *origin, void *cookie)
{
    if (IsOurs(module))
        static_cast<Scan<ExtensionVisitor> *>(cookie)->Visit(
            Extension{instance, keyword, argument != nullptr ? argument : "", *origin});
    return 0;
}

/* What scanAll(callback, cookie) reports. */
template <class ScanAll>
std::vector<Extension> Collect(ScanAll scanAll)
{
    std::vector<Extension> found;
    Scan<ExtensionVisitor> scan = {[&found](const Extension &extension) { found.push_back(extension); }};
    if (scanAll(OnExtension, &scan) != 0)
        throw std::bad_alloc();
    scan.End();
    return found;
}

using TextVisitor = std::function<void(const char *, const char *)>;

uint32_t OnArgument(QY_EXT *, const char *module, const char *keyword, const char *argument, void *cookie)
{
    if (IsOurs(module))
        static_cast<Scan<TextVisitor> *>(cookie)->Visit(keyword, argument != nullptr ? argument : "");
    return 0;
}

uint32_t OnType(void *, void *, QY_TYPE *type, void *cookie)
{
    *static_cast<QY_TYPE **>(cookie) = type; /* the last one is the leaf's own */
    return 0;
}

/* By QY_NODE_TYPE_ value. */
constexpr std::array<const char *, 15> KINDS = {"node",   "container", "leaf",   "leaf-list",    "list",
                                                "choice", "case",      "anyxml", "anydata",      "node",
                                                "rpc",    "input",     "output", "notification", "augment"};

/* True if a node of the module stands above, so that the walk from there comes by. */
bool IsBelowOwn(QY_NODE *node, const QY_MOD *module)
{
    while (node != nullptr && QY_NODE_GetModule(node) != module)
        node = QY_NODE_GetParentNode(node);
    return node != nullptr;
}

} // namespace

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

void ForEachAugment(QY_MOD *module, const NodeVisitor &visit)
{
    Scan<NodeVisitor> scan = {visit};
    (void)QY_MOD_IterScanAugmentNode(module, OnNode, &scan);
    scan.End();
}

void ForEachBelow(QY_NODE *node, const NodeVisitor &visit)
{
    Scan<NodeVisitor> scan = {visit};
    (void)QY_NODE_TreeScanAllNode(node, OnTreeNode, &scan);
    scan.End();
}

void ForEachNode(std::span<QY_MOD *const> modules, const NodeVisitor &visit)
{
    std::vector<QY_NODE *> tops;
    for (QY_MOD *module : modules) {
        ForEachTop(module, [&tops](QY_NODE *top) { tops.push_back(top); });
        ForEachAugment(module, [&tops](QY_NODE *augment) {
            if (QY_NODE *target = QY_NODE_GetAugmentTargetNode(augment))
                tops.push_back(TopOf(target));
        });
    }
    std::unordered_set<QY_NODE *> seen;
    for (QY_NODE *top : tops)
        if (seen.insert(top).second)
            ForEachBelow(top, visit);
}

/* What the module adds to others is reached through its augments: nothing else of theirs is looked at. */
void ForEachOwnNode(QY_MOD *module, const NodeVisitor &visit)
{
    NodeVisitor visitOwn = [&](QY_NODE *node) {
        if (QY_NODE_GetModule(node) == module)
            visit(node);
    };
    std::vector<QY_NODE *> tops;
    ForEachTop(module, [&tops](QY_NODE *top) { tops.push_back(top); });
    ForEachAugment(module, [&](QY_NODE *augment) {
        if (!IsBelowOwn(QY_NODE_GetAugmentTargetNode(augment), module))
            ForEachChild(augment, [&tops](QY_NODE *child) { tops.push_back(child); });
    });
    for (QY_NODE *top : tops)
        ForEachBelow(top, visitOwn);
}

QY_NODE *TopOf(QY_NODE *node)
{
    while (QY_NODE *above = QY_NODE_GetParentNode(node))
        node = above;
    return node;
}

std::string NameOf(QY_NODE *node)
{
    const char *name = QY_NODE_GetNodeName(node);
    return name != nullptr ? name : "";
}

const char *ModuleNameOf(QY_NODE *node)
{
    return QY_MOD_GetModuleName(QY_NODE_GetModule(node));
}

const char *KindOf(QY_NODE *node)
{
    uint32_t type = QY_NODE_GetNodeType(node);
    if (type == QY_NODE_TYPE_RPC && QY_NODE_GetParentNode(node) != nullptr)
        return "action";
    return type < KINDS.size() ? KINDS[type] : KINDS[0];
}

std::string Described(QY_NODE *node)
{
    return std::string(KindOf(node)) + " '" + NameOf(node) + "'";
}

std::vector<Extension> ExtensionsOf(QY_NODE *node)
{
    return Collect([node](auto callback, void *cookie) { return QXYANG_ScanNodeExtInsts(node, callback, cookie); });
}

std::vector<Extension> ExtensionsOf(QY_MOD *module)
{
    return Collect(
        [module](auto callback, void *cookie) { return QXYANG_ScanModuleExtInsts(module, callback, cookie); });
}

std::vector<Extension> ExtensionsWithin(QY_CTX *schema, QY_EXT *instance)
{
    return Collect(
        [=](auto callback, void *cookie) { return QXYANG_ScanChildExtInsts(schema, instance, callback, cookie); });
}

std::vector<std::string> ExtensionArguments(QY_NODE *node, const std::string &keyword)
{
    std::vector<std::string> arguments;
    Scan<TextVisitor> scan = {[&](const char *found, const char *argument) {
        if (keyword == found)
            arguments.emplace_back(argument);
    }};
    (void)QY_NODE_ScanAllExtInsts(node, OnArgument, &scan);
    scan.End();
    return arguments;
}

QY_TYPE *OwnType(QY_NODE *leaf)
{
    QY_TYPE *type = nullptr;
    return QY_NODE_ScanDerivedType(leaf, OnType, &type) == 0 ? type : nullptr;
}

QY_NODE *LeafrefEnd(QY_NODE *leaf)
{
    for (int hop = 0; hop <= MAX_LEAFREF_HOPS; ++hop) {
        QY_TYPE *type = OwnType(leaf);
        if (type == nullptr || QY_TYPE_GetBuiltInBaseType(type) != QY_TYPE_LEAFREF)
            return leaf;
        if (hop == MAX_LEAFREF_HOPS)
            break;
        QY_NODE *target = QY_NODE_GetLeafrefTargetNode(leaf, 1);
        if (target == nullptr)
            return leaf;
        leaf = target;
    }
    return nullptr;
}

QY_TYPE *FinalType(QY_NODE *leaf)
{
    QY_NODE *end = LeafrefEnd(leaf);
    QY_TYPE *type = end != nullptr ? OwnType(end) : nullptr;
    return type != nullptr && QY_TYPE_GetBuiltInBaseType(type) != QY_TYPE_LEAFREF ? type : nullptr;
}

bool LeadsThroughTooMany(QY_NODE *leaf)
{
    return LeafrefEnd(leaf) == nullptr;
}

QY_NODE *BrokenLeafref(QY_NODE *leaf)
{
    QY_NODE *end = LeafrefEnd(leaf);
    QY_TYPE *type = end != nullptr ? OwnType(end) : nullptr;
    return type != nullptr && QY_TYPE_GetBuiltInBaseType(type) == QY_TYPE_LEAFREF ? end : nullptr;
}

} // namespace inspect
