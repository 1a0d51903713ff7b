#include "model/schema_nodes.h"

#include "model/schema_scan.h"

namespace inspect {
namespace {

std::string KeyOf(const char *module, const std::string &name)
{
    return std::string(module) + ":" + name;
}

QY_NODE *FindIn(const std::unordered_map<std::string, QY_NODE *> &nodes, const KorvTreeNode &node)
{
    auto found = nodes.find(KeyOf(node.pcModuleName, node.pcName));
    return found != nodes.end() ? found->second : nullptr;
}

} // namespace

/* The module whose nodes stand at the top of the tree. */
QY_MOD *SchemaNodes::ModuleOfTree(const Place &place) const
{
    if (!place.augment)
        return QY_CTX_GetModuleByModName(instance_.Schema(), file_.pcModuleName);
    QY_NODE *augment = file_.astAugment[*place.augment].pAugNode;
    QY_NODE *target = augment != nullptr ? QY_NODE_GetAugmentTargetNode(augment) : nullptr;
    return target != nullptr ? QY_NODE_GetModule(TopOf(target)) : nullptr;
}

/* The schema's node of a top node: of an augment's self tree it stands below the augment's target. */
QY_NODE *SchemaNodes::TopAt(const Place &place, const KorvTreeNode &top)
{
    if (place.augment) {
        const TELMYANG_AUGMENT_INFO_S &augment = file_.astAugment[*place.augment];
        for (const KorvTreeNode &own : Chain(augment.pstSelfTree))
            if (&own == &top)
                return augment.pAugNode != nullptr ? FindIn(Below(augment.pAugNode), top) : nullptr;
    }
    QY_MOD *module = ModuleOfTree(place);
    return module != nullptr ? FindIn(Tops(module), top) : nullptr;
}

const SchemaNodes::Named &SchemaNodes::Tops(QY_MOD *module)
{
    auto [entry, isNew] = tops_.try_emplace(module);
    Named &named = entry->second;
    if (isNew)
        ForEachTop(module, [&named](QY_NODE *top) { named.emplace(KeyOf(ModuleNameOf(top), NameOf(top)), top); });
    return named;
}

const SchemaNodes::Named &SchemaNodes::Below(QY_NODE *node)
{
    auto [entry, isNew] = below_.try_emplace(node);
    Named &named = entry->second;
    if (isNew)
        ForEachChild(node,
                     [&named](QY_NODE *child) { named.emplace(KeyOf(ModuleNameOf(child), NameOf(child)), child); });
    return named;
}

QY_NODE *SchemaNodes::Of(const Place &place)
{
    if (place.leaf != nullptr)
        return place.leaf->pYinNode;
    QY_NODE *at = nullptr;
    for (const KorvTreeNode *node : FromTop(*place.node)) {
        auto [entry, isNew] = known_.try_emplace(node);
        if (isNew && node->pstParent != nullptr)
            entry->second = at != nullptr ? FindIn(Below(at), *node) : nullptr;
        else if (isNew)
            entry->second = TopAt(place, *node);
        at = entry->second;
    }
    return at;
}

} // namespace inspect
