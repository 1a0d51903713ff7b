#include "deviation_log.h"

#include <algorithm>
#include <cstring>

namespace qxyang {

namespace {

/* The node's extension instances, apart from those that replaced them on request. */
const ExtensionSet *&OwnExtensions(QY_NODE *node)
{
    if ((node->flags & NODE_OWN_SET) == 0)
        return node->extensions;
    return node->module->replacedSets.find(node)->second.own;
}

size_t CountOf(const ExtensionSet *set)
{
    return set != nullptr ? set->count : 0;
}

bool IsSameArgument(const char *left, const char *right)
{
    if (left == nullptr || right == nullptr)
        return left == right;
    return std::strcmp(left, right) == 0;
}

/* Whether the instance is one that the change names: replacing looks at the extension alone. */
bool Names(const Deviation &change, const QY_EXT &named, const QY_EXT &instance)
{
    bool isReplaced = change.kind == Deviation::Kind::ReplaceExtensions;
    return named.name == instance.name && (isReplaced || IsSameArgument(named.argument, instance.argument));
}

bool TakesAway(const Deviation &change, const QY_EXT &instance)
{
    return change.kind != Deviation::Kind::AddExtensions &&
           std::any_of(change.operand->begin(), change.operand->end(),
                       [&](const QY_EXT &named) { return Names(change, named, instance); });
}

} // namespace

bool DeviationLog::ChangesExtensions(const Deviation &change)
{
    return change.kind >= Deviation::Kind::AddExtensions;
}

/* The set after the change: instances taken away leave their place to nobody, added ones follow at the end. */
OwnedSet DeviationLog::Changed(const ExtensionSet *set, const Deviation &change)
{
    bool adds = change.kind != Deviation::Kind::DeleteExtensions;
    size_t room = CountOf(set) + (adds ? change.operand->count : 0);
    OwnedSet result(new (::operator new(sizeof(ExtensionSet) + room * sizeof(QY_EXT))) ExtensionSet{0});
    if (set != nullptr)
        for (const QY_EXT &instance : *set)
            if (!TakesAway(change, instance))
                result->begin()[result->count++] = instance;
    if (adds)
        for (const QY_EXT &instance : *change.operand)
            result->begin()[result->count++] = instance;
    return result;
}

const ExtensionSet *DeviationLog::Deviated::EffectiveExtensions() const
{
    for (auto change = changes.rbegin(); change != changes.rend(); ++change)
        if (ChangesExtensions(*change))
            return change->result.get();
    return extensions;
}

const Deviation *DeviationLog::Deviated::TypeChange() const
{
    for (auto change = changes.rbegin(); change != changes.rend(); ++change)
        if (change->kind == Deviation::Kind::Type)
            return &*change;
    return nullptr;
}

uint16_t DeviationLog::Deviated::Properties() const
{
    uint16_t flags = properties;
    for (const Deviation &change : changes)
        flags = static_cast<uint16_t>((flags & ~change.cleared) | change.set);
    return flags;
}

const QY_MOD *DeviationLog::Deviated::Remover() const
{
    auto removal = std::find_if(changes.begin(), changes.end(),
                                [](const Deviation &change) { return change.kind == Deviation::Kind::Remove; });
    return removal != changes.end() ? removal->by : nullptr;
}

const QY_MOD *DeviationLog::RemoverOf(QY_NODE *node) const
{
    auto entry = nodes_.find(node);
    return entry != nodes_.end() ? entry->second.Remover() : nullptr;
}

void DeviationLog::Apply(QY_NODE *node, Deviation change)
{
    QY_MOD *by = change.by;
    by->deviated.push_back(node);
    try {
        Deviated &deviated = DeviatedNode(node);
        if (ChangesExtensions(change))
            change.result = Changed(deviated.EffectiveExtensions(), change);
        deviated.changes.push_back(std::move(change));
        Show(node, deviated);
    } catch (...) {
        by->deviated.pop_back();
        throw;
    }
}

/* The node's entry: a new one, which may stay without changes, holds what the node is without deviations. */
DeviationLog::Deviated &DeviationLog::DeviatedNode(QY_NODE *node)
{
    auto entry = nodes_.try_emplace(node).first;
    Deviated &deviated = entry->second;
    if (deviated.changes.empty()) {
        deviated.extensions = OwnExtensions(node);
        deviated.type = IsLeaf(node) ? node->type : nullptr;
        deviated.target = IsLeaf(node) ? node->target : nullptr;
        deviated.properties = node->flags & NODE_PROPERTIES;
    }
    return deviated;
}

bool DeviationLog::HasInstance(QY_NODE *node, const Deviation &change, const QY_EXT &named) const
{
    const ExtensionSet *set = OwnExtensions(node);
    return set != nullptr && std::any_of(set->begin(), set->end(),
                                         [&](const QY_EXT &instance) { return Names(change, named, instance); });
}

void DeviationLog::SetTarget(QY_NODE *leaf, const QY_TYPE *type, QY_NODE *target)
{
    auto entry = nodes_.find(leaf);
    if (entry == nodes_.end())
        return;
    if (entry->second.type == type)
        entry->second.target = target;
    for (Deviation &change : entry->second.changes)
        if (change.kind == Deviation::Kind::Type && change.type == type)
            change.target = target;
}

/* Makes the node look as its changes say. */
void DeviationLog::Show(QY_NODE *node, const Deviated &deviated)
{
    OwnExtensions(node) = deviated.EffectiveExtensions();
    node->flags = static_cast<uint16_t>((node->flags & ~(NODE_PROPERTIES | NODE_REMOVED)) | deviated.Properties() |
                                        (deviated.Remover() != nullptr ? NODE_REMOVED : 0));
    if (!IsLeaf(node))
        return;
    const Deviation *change = deviated.TypeChange();
    node->type = change != nullptr ? change->type : deviated.type;
    node->target = change != nullptr ? change->target : deviated.target;
}

DeviationLog::Removal DeviationLog::PrepareRemoval(QY_MOD *first)
{
    Removal removal;
    for (QY_MOD *module = first; module != nullptr; module = module->nextDying) {
        for (QY_NODE *node : module->deviated) {
            auto entry = nodes_.find(node);
            if (entry == nodes_.end())
                continue;
            const ExtensionSet *below = entry->second.extensions;
            bool stale = false;
            for (Deviation &change : entry->second.changes) {
                if (!ChangesExtensions(change))
                    continue;
                if (change.by->dying) {
                    stale = true;
                    continue;
                }
                if (stale) {
                    OwnedSet result = Changed(below, change);
                    below = result.get();
                    removal.results_.emplace_back(&change, std::move(result));
                } else {
                    below = change.result.get();
                }
            }
        }
    }
    return removal;
}

void DeviationLog::Remove(QY_MOD *first, Removal &removal) noexcept
{
    for (auto &[change, result] : removal.results_)
        change->result.swap(result);
    for (QY_MOD *module = first; module != nullptr; module = module->nextDying) {
        for (QY_NODE *node : module->deviated) {
            auto entry = nodes_.find(node);
            if (entry == nodes_.end())
                continue;
            Deviated &deviated = entry->second;
            std::erase_if(deviated.changes, [](const Deviation &change) { return change.by->dying; });
            Show(node, deviated);
            if (deviated.changes.empty())
                nodes_.erase(entry);
        }
        module->deviated.clear();
    }
}

} // namespace qxyang
