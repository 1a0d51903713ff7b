#include "context.h"

#include <string>

using namespace qxyang;

QY_CTX::~QY_CTX()
{
    releaseFrom(0);
}

const char *QY_CTX::keepName(std::string_view name)
{
    if (const PooledName *known = names_.find(name))
        return known->name;
    auto *kept = pool_.make<PooledName>(pool_.text(name));
    names_.insert(kept);
    return kept->name;
}

const ExtensionName *QY_CTX::keepExtension(std::string_view module, std::string_view keyword)
{
    std::string key = std::string(module).append(":").append(keyword);
    if (const ExtensionName *known = extensionNames_.find(key))
        return known;
    const char *name = pool_.text(key);
    auto *kept = pool_.make<ExtensionName>(name, keepName(module), name + module.size() + 1);
    extensionNames_.insert(kept);
    return kept;
}

QY_MOD *QY_CTX::moduleByName(std::string_view name) const
{
    for (const auto &module : modules)
        if (module->byName && name == module->name)
            return module.get();
    return nullptr;
}

QY_MOD *QY_CTX::moduleOfRevision(std::string_view name, std::string_view revision) const
{
    for (const auto &module : modules) {
        std::string_view own = module->revision != nullptr ? module->revision : "";
        if (module->complete && name == module->name && own == revision)
            return module.get();
    }
    return nullptr;
}

QY_MOD *QY_CTX::preferredModule(std::string_view name) const
{
    if (QY_MOD *module = moduleByName(name))
        return module;
    for (const auto &module : modules)
        if (module->complete && module->preferred && name == module->name)
            return module.get();
    return nullptr;
}

bool QY_CTX::releaseUnneeded()
{
    std::vector<QY_MOD *> needed;
    needed.reserve(modules.size());
    for (const auto &module : modules) {
        module->dying = !module->byName;
        if (module->byName)
            needed.push_back(module.get());
    }
    for (size_t i = 0; i < needed.size(); ++i) {
        for (QY_MOD *import : needed[i]->imports) {
            if (import->dying)
                needed.push_back(import);  // within what is reserved: each module once
            import->dying = false;
        }
    }
    try {
        releaseDying(deviations.prepareRemoval(modules));
        return true;
    } catch (const std::bad_alloc &) {
        for (const auto &module : modules)
            module->dying = false;
        return false;
    }
}

void QY_CTX::releaseFrom(size_t first) noexcept
{
    for (size_t i = first; i < modules.size(); ++i)
        modules[i]->dying = true;
    releaseDying(deviations.prepareRemoval(modules));
}

void QY_CTX::releaseDying(DeviationLog::Removal removal) noexcept
{
    for (auto module = modules.rbegin(); module != modules.rend(); ++module)
        if ((*module)->dying)
            freePrivateData(**module);
    deviations.remove(modules, std::move(removal));
    withdrawAugments();
    std::erase_if(modules, [](const auto &module) { return module->dying; });
    ++featureEpoch;
}

void QY_CTX::freePrivateData(QY_MOD &module) noexcept
{
    if (freePrivate == nullptr)
        return;
    module.nodes.forEach([this](QY_NODE *node) {
        if (node->priv != nullptr)
            freePrivate(this, node, node->priv);
    });
}

namespace {

/* Takes the children that are dying out of the list. */
void unlinkDying(QY_NODE *parent)
{
    QY_NODE *last = nullptr;
    QY_NODE **link = &parent->first;
    while (*link != nullptr) {
        if ((*link)->module->dying) {
            *link = (*link)->next;
            continue;
        }
        last = *link;
        link = &last->next;
    }
    parent->last = last;
}

}  // namespace

/* Takes the dying modules' nodes out of the targets that stay. Each target is looked through once. */
void QY_CTX::withdrawAugments() noexcept
{
    auto forEachTarget = [this](auto &&visit) {
        for (const auto &module : modules) {
            if (!module->dying)
                continue;
            for (QY_NODE *augment : module->augments)
                if (augment->parent != nullptr && !augment->parent->module->dying)
                    visit(augment->parent);
        }
    };
    forEachTarget([](QY_NODE *target) {
        if ((target->flags & kNodeSwept) == 0)
            unlinkDying(target);
        target->flags |= kNodeSwept;
    });
    forEachTarget([](QY_NODE *target) { target->flags &= static_cast<uint16_t>(~kNodeSwept); });
}
