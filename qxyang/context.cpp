#include "context.h"

#include <string>

using namespace qxyang;

QY_CTX::~QY_CTX()
{
    ReleaseFrom(0);
}

const char *QY_CTX::KeepName(std::string_view name)
{
    if (const PooledName *known = names_.Find(name))
        return known->name;
    auto *kept = pool_.Make<PooledName>(pool_.Text(name));
    names_.Insert(kept);
    return kept->name;
}

const ExtensionName *QY_CTX::KeepExtension(std::string_view module, std::string_view keyword)
{
    std::string key = std::string(module).append(":").append(keyword);
    if (const ExtensionName *known = extensionNames_.Find(key))
        return known;
    const char *name = pool_.Text(key);
    auto *kept = pool_.Make<ExtensionName>(name, KeepName(module), name + module.size() + 1);
    extensionNames_.Insert(kept);
    return kept;
}

QY_MOD *QY_CTX::ModuleByName(std::string_view name) const
{
    for (const auto &module : modules)
        if (module->byName && name == module->name)
            return module.get();
    return nullptr;
}

QY_MOD *QY_CTX::ModuleOfRevision(std::string_view name, std::string_view revision) const
{
    for (const auto &module : modules) {
        std::string_view own = module->revision != nullptr ? module->revision : "";
        if (module->complete && name == module->name && own == revision)
            return module.get();
    }
    return nullptr;
}

QY_MOD *QY_CTX::PreferredModule(std::string_view name) const
{
    if (QY_MOD *module = ModuleByName(name))
        return module;
    for (const auto &module : modules)
        if (module->complete && module->preferred && name == module->name)
            return module.get();
    return nullptr;
}

bool QY_CTX::ReleaseUnneeded()
{
    try {
        MarkUnneeded();
        ReleaseDying(deviations.PrepareRemoval(modules));
        return true;
    } catch (const std::bad_alloc &) {
        for (const auto &module : modules)
            module->dying = false;
        return false;
    }
}

/* Marks the modules that no module loaded by name imports, nor one that it imports, and so on. */
void QY_CTX::MarkUnneeded()
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
                needed.push_back(import);
            import->dying = false;
        }
    }
}

void QY_CTX::ReleaseFrom(size_t first) noexcept
{
    for (size_t i = first; i < modules.size(); ++i)
        modules[i]->dying = true;
    ReleaseDying(deviations.PrepareRemoval(modules));
}

void QY_CTX::ReleaseDying(DeviationLog::Removal &&removal) noexcept
{
    for (auto module = modules.rbegin(); module != modules.rend(); ++module)
        if ((*module)->dying)
            FreePrivateData(**module);
    deviations.Remove(modules, removal);
    WithdrawAugments();
    std::erase_if(modules, [](const auto &module) { return module->dying; });
    ++featureEpoch;
}

void QY_CTX::FreePrivateData(QY_MOD &module) noexcept
{
    if (freePrivate == nullptr)
        return;
    module.nodes.ForEach([this](QY_NODE *node) {
        if (node->priv != nullptr)
            freePrivate(this, node, node->priv);
    });
}

namespace {

/* Takes the children that are dying out of the list. */
void UnlinkDying(QY_NODE *parent)
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

} // namespace

/* Takes the dying modules' nodes out of the targets that stay. Each target is looked through once. */
void QY_CTX::WithdrawAugments() noexcept
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
        if ((target->flags & NODE_SWEPT) == 0)
            UnlinkDying(target);
        target->flags |= NODE_SWEPT;
    });
    forEachTarget([](QY_NODE *target) { target->flags &= static_cast<uint16_t>(~NODE_SWEPT); });
}
