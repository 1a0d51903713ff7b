#include "schema/deviation_log.h"

#include <algorithm>

namespace qxyang {

namespace {

/* The node's extension instances; if a request replaced them, those that it gets back. */
const ExtensionSet *&OwnExtensions(QY_NODE *node)
{
    if ((node->flags & NODE_OWN_SET) == 0)
        return node->extensions;
    return node->module->replacedSets.find(node)->second.own;
}

} // namespace

const ExtensionSet *DeviationLog::ExtensionsOf(QY_NODE *node)
{
    return OwnExtensions(node);
}

const ExtensionSet *DeviationLog::Deviated::EffectiveExtensions() const
{
    for (auto change = changes.rbegin(); change != changes.rend(); ++change)
        if (change->result != nullptr)
            return change->result.get();
    return extensions;
}

const Deviation *DeviationLog::Deviated::TypeChange() const
{
    for (auto change = changes.rbegin(); change != changes.rend(); ++change)
        if (change->type != nullptr)
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

bool DeviationLog::Deviated::IsRemoved() const
{
    return std::any_of(changes.begin(), changes.end(), [](const Deviation &change) { return change.removes; });
}

bool DeviationLog::HasExtensionsOf(QY_NODE *node) const
{
    auto entry = nodes_.find(node);
    return entry != nodes_.end() && entry->second.EffectiveExtensions() != entry->second.extensions;
}

bool DeviationLog::RemovesNodes() const
{
    return std::any_of(nodes_.begin(), nodes_.end(), [](const auto &entry) { return entry.second.IsRemoved(); });
}

/* Calls change(deviation) with the record of what the module changes on the node, and shows the result on the node. */
template <class Change>
void DeviationLog::Apply(QY_NODE *node, QY_MOD *by, Change &&change)
{
    Deviated &deviated = DeviatedNode(node);
    if (deviated.changes.empty() || deviated.changes.back().by != by) {
        by->deviated.push_back(node);
        try {
            deviated.changes.emplace_back();
            deviated.changes.back().by = by;
        } catch (...) {
            by->deviated.pop_back();
            throw;
        }
    }
    change(deviated.changes.back());
    Show(node, deviated);
}

void DeviationLog::Remove(QY_NODE *node, QY_MOD *by)
{
    Apply(node, by, [](Deviation &deviation) { deviation.removes = true; });
}

void DeviationLog::SetType(QY_NODE *node, QY_MOD *by, const QY_TYPE *type)
{
    Apply(node, by, [type](Deviation &deviation) {
        deviation.type = type;
        deviation.target = nullptr;
    });
}

void DeviationLog::SetProperties(QY_NODE *node, QY_MOD *by, uint16_t properties)
{
    uint16_t before = node->flags & NODE_PROPERTIES;
    Apply(node, by, [before, properties](Deviation &deviation) {
        auto set = static_cast<uint16_t>(properties & ~before);
        auto cleared = static_cast<uint16_t>(before & ~properties);
        deviation.set = static_cast<uint16_t>((deviation.set & ~cleared) | set);
        deviation.cleared = static_cast<uint16_t>((deviation.cleared & ~set) | cleared);
    });
}

void DeviationLog::SetExtensions(QY_NODE *node, QY_MOD *by, std::vector<ExtensionChange> changes, OwnedSet result)
{
    Apply(node, by, [&](Deviation &deviation) {
        deviation.extensions = std::move(changes);
        deviation.result = std::move(result);
    });
}

/* The node's entry. A new one holds what the node has without deviations; it stays empty if recording a change
 * fails. */
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

void DeviationLog::SetTarget(QY_NODE *leaf, const QY_TYPE *type, QY_NODE *target)
{
    auto entry = nodes_.find(leaf);
    if (entry == nodes_.end())
        return;
    if (entry->second.type == type)
        entry->second.target = target;
    for (Deviation &change : entry->second.changes)
        if (change.type == type)
            change.target = target;
}

/* Gives the node what its entry and all changes in it result in. */
void DeviationLog::Show(QY_NODE *node, const Deviated &deviated)
{
    OwnExtensions(node) = deviated.EffectiveExtensions();
    node->flags = static_cast<uint16_t>((node->flags & ~(NODE_PROPERTIES | NODE_REMOVED)) | deviated.Properties() |
                                        (deviated.IsRemoved() ? NODE_REMOVED : 0));
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
                if (change.result == nullptr)
                    continue;
                if (change.by->dying) {
                    stale = true;
                    continue;
                }
                if (stale) {
                    ExtensionEdit edit(below);
                    for (const ExtensionChange &step : change.extensions)
                        edit.Apply(step);
                    OwnedSet result = edit.Result();
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
