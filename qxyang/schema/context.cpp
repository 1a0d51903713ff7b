#include "schema/context.h"

#include <iterator>
#include <string>
#include <utility>

using namespace qxyang;

QY_CTX::~QY_CTX()
{
    ReleaseAfter(nullptr);
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
    const PooledName *known = names_.Find(name);
    return known != nullptr ? known->loaded : nullptr;
}

template <class Visit>
QY_MOD *QY_CTX::FindOfName(const PooledName *name, Visit &&visit)
{
    QY_MOD *module = name != nullptr ? name->first : nullptr;
    while (module != nullptr && !visit(*module))
        module = module->nextOfName;
    return module;
}

QY_MOD *QY_CTX::ModuleOfRevision(std::string_view name, std::string_view revision) const
{
    return FindOfName(names_.Find(name), [revision](const QY_MOD &module) {
        std::string_view own = module.revision != nullptr ? module.revision : "";
        return module.complete && own == revision;
    });
}

QY_MOD *QY_CTX::PreferredModule(std::string_view name) const
{
    const PooledName *known = names_.Find(name);
    if (known != nullptr && known->loaded != nullptr)
        return known->loaded;
    return FindOfName(known, [](const QY_MOD &module) { return module.complete && module.preferred; });
}

void QY_CTX::Promote(QY_MOD *module) noexcept
{
    module->byName = true;
    names_.Find(module->name)->loaded = module;
    ++featureEpoch;
}

namespace {

/* Marks the module as dying if nothing needs it, then each module that only dying modules import. The result is the
 * first of the dying modules, which nextDying links; null if there are none. */
QY_MOD *MarkUnneeded(QY_MOD *module)
{
    if (module->byName || module->importers != 0)
        return nullptr;
    module->dying = true;
    QY_MOD *last = module;
    for (QY_MOD *dying = module; dying != nullptr; dying = dying->nextDying) {
        for (QY_MOD *import : dying->imports) {
            if (--import->importers != 0 || import->byName)
                continue;
            import->dying = true;
            last->nextDying = import;
            last = import;
        }
    }
    return module;
}

void UnmarkAll(QY_MOD *first)
{
    while (first != nullptr) {
        QY_MOD *next = first->nextDying;
        first->dying = false;
        first->nextDying = nullptr;
        for (QY_MOD *import : first->imports)
            ++import->importers;
        first = next;
    }
}

} // namespace

bool QY_CTX::Unload(QY_MOD *module) noexcept
{
    module->byName = false;
    QY_MOD *first = MarkUnneeded(module);
    PooledName *name = names_.Find(module->name);
    try {
        DeviationLog::Removal removal = deviations.PrepareRemoval(first);
        name->loaded = nullptr;
        ReleaseDying(first, std::move(removal));
        return true;
    } catch (const std::bad_alloc &) {
        UnmarkAll(first);
        module->byName = true;
        return false;
    }
}

QY_MOD &QY_CTX::Add(std::unique_ptr<QY_MOD> module)
{
    modules.push_back(std::move(module));
    QY_MOD &added = *modules.back();
    added.place = std::prev(modules.end());
    QY_MOD **link = &names_.Find(added.name)->first;
    while (*link != nullptr)
        link = &(*link)->nextOfName;
    *link = &added;
    return added;
}

/* Takes the module out of those of its name. */
void QY_CTX::Unlink(QY_MOD *module) noexcept
{
    QY_MOD **link = &names_.Find(module->name)->first;
    while (*link != module)
        link = &(*link)->nextOfName;
    *link = module->nextOfName;
}

void QY_CTX::ReleaseAfter(QY_MOD *last) noexcept
{
    QY_MOD *first = nullptr;
    for (auto module = modules.rbegin(); module != modules.rend() && module->get() != last; ++module) {
        (*module)->dying = true;
        (*module)->nextDying = first;
        first = module->get();
        for (QY_MOD *import : first->imports)
            --import->importers;
    }
    ReleaseDying(first, deviations.PrepareRemoval(first));
}

namespace {

/* Unlinks the children that belong to dying modules. */
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

/* Unlinks the nodes that augments of the dying modules added to nodes of other modules. Each target is searched
 * once. */
void WithdrawAugments(QY_MOD *first)
{
    auto forEachTarget = [first](auto &&visit) {
        for (QY_MOD *module = first; module != nullptr; module = module->nextDying)
            for (QY_NODE *augment : module->augments)
                if (QY_NODE *target = AugmentTarget(augment); target != nullptr && !target->module->dying)
                    visit(target);
    };
    forEachTarget([](QY_NODE *target) {
        if ((target->flags & NODE_SWEPT) == 0)
            UnlinkDying(target);
        target->flags |= NODE_SWEPT;
    });
    forEachTarget([](QY_NODE *target) { target->flags &= static_cast<uint16_t>(~NODE_SWEPT); });
}

} // namespace

void QY_CTX::ReleaseDying(QY_MOD *first, DeviationLog::Removal &&removal) noexcept
{
    for (QY_MOD *module = first; module != nullptr; module = module->nextDying)
        FreePrivateData(*module);
    deviations.Remove(first, removal);
    WithdrawAugments(first);
    if (details != nullptr)
        details->ForgetDying(first);
    while (first != nullptr) {
        QY_MOD *next = first->nextDying;
        Unlink(first);
        modules.erase(first->place);
        first = next;
    }
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
