#include "ids/item_index.h"

namespace inspect::ids {
namespace {

uint64_t IdKey(const Item &item)
{
    return static_cast<uint64_t>(item.scope) << 32U | item.id;
}

/* Ancestor keys of which no leaf is known are told by their ids. */
std::string PathKey(const Item &item)
{
    std::string key = std::to_string(item.scope) + (item.isAncestorKey ? "^" : " ");
    return item.path.empty() ? key + std::to_string(item.id) : key.append(item.path);
}

} // namespace

void ItemIndex::Add(const Item &item)
{
    byId_[IdKey(item)].push_back(items_.size());
    if (item.IsLive())
        byPath_.try_emplace(PathKey(item), items_.size());
    items_.push_back(item);
}

ItemIndex::ItemIndex(const Registry &registry)
{
    for (const ClassEntry &entry : registry.classes)
        Add({0, entry.id, false, entry.path, &entry.gone, nullptr, nullptr, entry.sample, entry.line});
    for (const FieldEntry &entry : registry.fields)
        Add({entry.classId, entry.id, entry.isAncestorKey, entry.path, &entry.gone, nullptr, nullptr, 0, entry.line});
}

ItemIndex::ItemIndex(const ModelIds &models)
{
    for (const ModelClass &found : models.classes)
        Add({0, found.id, false, found.path, nullptr, &found, nullptr, found.sample, 0});
    for (const ModelField &found : models.fields)
        Add({found.classId, found.id, found.isAncestorKey, found.path, nullptr, nullptr, &found, 0, 0});
}

std::vector<const Item *> ItemIndex::WithIdOf(const Item &item) const
{
    std::vector<const Item *> found;
    if (auto places = byId_.find(IdKey(item)); places != byId_.end())
        for (size_t place : places->second)
            found.push_back(&items_[place]);
    return found;
}

const Item *ItemIndex::AtPathOf(const Item &item) const
{
    auto found = byPath_.find(PathKey(item));
    return found != byPath_.end() ? &items_[found->second] : nullptr;
}

const Item *ItemIndex::SameAs(const Item &item) const
{
    for (const Item *other : WithIdOf(item))
        if (other->path == item.path && other->isAncestorKey == item.isAncestorKey)
            return other;
    return nullptr;
}

} // namespace inspect::ids
