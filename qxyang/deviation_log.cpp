#include "deviation_log.h"

#include <algorithm>
#include <cstring>

namespace qxyang {

namespace {

/* The node's extension instances, apart from those that replaced them on request. */
const ExtensionSet *&ownExtensions(QY_NODE *node)
{
    if ((node->flags & kNodeOwnSet) == 0)
        return node->extensions;
    return node->module->replacedSets.find(node)->second.own;
}

size_t countOf(const ExtensionSet *set)
{
    return set != nullptr ? set->count : 0;
}

bool isSameArgument(const char *left, const char *right)
{
    if (left == nullptr || right == nullptr)
        return left == right;
    return std::strcmp(left, right) == 0;
}

/* Whether the change takes the instance away. */
bool takesAway(const Deviation &change, const QY_EXT &instance)
{
    if (change.kind == Deviation::Kind::kAddExtensions)
        return false;
    return std::any_of(change.operand->begin(), change.operand->end(), [&](const QY_EXT &named) {
        bool replaced = change.kind == Deviation::Kind::kReplaceExtensions;
        return named.name == instance.name && (replaced || isSameArgument(named.argument, instance.argument));
    });
}

}  // namespace

bool DeviationLog::changesExtensions(const Deviation &change)
{
    return change.kind != Deviation::Kind::kRemove && change.kind != Deviation::Kind::kType;
}

/* The set after the change: instances taken away leave their place to nobody, added ones follow at the end. */
OwnedSet DeviationLog::changed(const ExtensionSet *set, const Deviation &change)
{
    bool adds = change.kind != Deviation::Kind::kDeleteExtensions;
    size_t room = countOf(set) + (adds ? change.operand->count : 0);
    OwnedSet result(new (::operator new(sizeof(ExtensionSet) + room * sizeof(QY_EXT))) ExtensionSet{0});
    if (set != nullptr)
        for (const QY_EXT &instance : *set)
            if (!takesAway(change, instance))
                result->begin()[result->count++] = instance;
    if (adds)
        for (const QY_EXT &instance : *change.operand)
            result->begin()[result->count++] = instance;
    return result;
}

const ExtensionSet *DeviationLog::Deviated::effectiveExtensions() const
{
    for (auto change = changes.rbegin(); change != changes.rend(); ++change)
        if (changesExtensions(*change))
            return change->result.get();
    return extensions;
}

const Deviation *DeviationLog::Deviated::typeChange() const
{
    for (auto change = changes.rbegin(); change != changes.rend(); ++change)
        if (change->kind == Deviation::Kind::kType)
            return &*change;
    return nullptr;
}

bool DeviationLog::Deviated::isRemoved() const
{
    return std::any_of(changes.begin(), changes.end(),
                       [](const Deviation &change) { return change.kind == Deviation::Kind::kRemove; });
}

void DeviationLog::apply(QY_NODE *node, Deviation change)
{
    QY_MOD *by = change.by;
    by->deviated.push_back(node);
    try {
        Deviated &deviated = deviatedNode(node);
        if (changesExtensions(change))
            change.result = changed(deviated.effectiveExtensions(), change);
        deviated.changes.push_back(std::move(change));
        show(node, deviated);
    } catch (...) {
        by->deviated.pop_back();
        throw;
    }
}

/* The node's entry: a new one, which may stay without changes, holds what the node is without deviations. */
DeviationLog::Deviated &DeviationLog::deviatedNode(QY_NODE *node)
{
    auto entry = nodes_.try_emplace(node).first;
    Deviated &deviated = entry->second;
    if (deviated.changes.empty()) {
        deviated.extensions = ownExtensions(node);
        deviated.type = isLeaf(node) ? node->type : nullptr;
        deviated.target = isLeaf(node) ? node->target : nullptr;
    }
    return deviated;
}

void DeviationLog::setTarget(QY_NODE *leaf, const QY_TYPE *type, QY_NODE *target)
{
    auto entry = nodes_.find(leaf);
    if (entry == nodes_.end())
        return;
    if (entry->second.type == type)
        entry->second.target = target;
    for (Deviation &change : entry->second.changes)
        if (change.kind == Deviation::Kind::kType && change.type == type)
            change.target = target;
}

/* Makes the node look as its changes say. */
void DeviationLog::show(QY_NODE *node, const Deviated &deviated)
{
    ownExtensions(node) = deviated.effectiveExtensions();
    setRemoved(node, deviated.isRemoved());
    if (!isLeaf(node))
        return;
    const Deviation *change = deviated.typeChange();
    node->type = change != nullptr ? change->type : deviated.type;
    node->target = change != nullptr ? change->target : deviated.target;
}

void DeviationLog::setRemoved(QY_NODE *node, bool removed)
{
    if (((node->flags & kNodeRemoved) != 0) == removed)
        return;
    node->flags ^= kNodeRemoved;
    if ((node->flags & kNodeIsKey) == 0)
        return;
    if (removed)
        --node->parent->keyCount;
    else
        ++node->parent->keyCount;
}

DeviationLog::Removal DeviationLog::prepareRemoval(const std::vector<std::unique_ptr<QY_MOD>> &modules)
{
    Removal removal;
    for (const auto &module : modules) {
        if (!module->dying)
            continue;
        for (QY_NODE *node : module->deviated) {
            auto entry = nodes_.find(node);
            if (entry == nodes_.end())
                continue;
            const ExtensionSet *below = entry->second.extensions;
            bool stale = false;
            for (Deviation &change : entry->second.changes) {
                if (!changesExtensions(change))
                    continue;
                if (change.by->dying) {
                    stale = true;
                    continue;
                }
                if (stale) {
                    OwnedSet result = changed(below, change);
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

void DeviationLog::remove(const std::vector<std::unique_ptr<QY_MOD>> &modules, Removal removal) noexcept
{
    for (auto &[change, result] : removal.results_)
        change->result.swap(result);
    for (const auto &module : modules) {
        if (!module->dying)
            continue;
        for (QY_NODE *node : module->deviated) {
            auto entry = nodes_.find(node);
            if (entry == nodes_.end())
                continue;
            Deviated &deviated = entry->second;
            std::erase_if(deviated.changes, [](const Deviation &change) { return change.by->dying; });
            show(node, deviated);
            if (deviated.changes.empty())
                nodes_.erase(entry);
        }
        module->deviated.clear();
    }
}

}  // namespace qxyang
