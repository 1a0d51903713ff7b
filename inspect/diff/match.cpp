#include "diff/match.h"

#include <string_view>
#include <unordered_map>

namespace inspect::diff {
namespace {

struct Key {
    uint32_t parent;
    std::string_view step;
    bool operator==(const Key &) const = default;
};

struct KeyHash {
    size_t operator()(const Key &key) const
    {
        return std::hash<std::string_view>()(key.step) ^ (size_t{key.parent} * 0x9E3779B97F4A7C15U);
    }
};

using ItemsByKey = std::unordered_map<Key, uint32_t, KeyHash>;

ItemsByKey ByKey(const std::vector<Item> &items)
{
    ItemsByKey byKey;
    for (uint32_t i = 0; i < items.size(); ++i)
        byKey.emplace(Key{items[i].parent, items[i].step}, i);
    return byKey;
}

uint32_t Find(const ItemsByKey &items, const Key &key)
{
    auto found = items.find(key);
    return found != items.end() ? found->second : NO_ITEM;
}

/* The ids by which a host addresses an item, which differ for nodes and leaves; 0: none. */
uint64_t IdOf(const Item &item)
{
    if (!item.IsAddressable())
        return 0;
    return (uint64_t{item.classId} << 32) | item.fieldId;
}

/* New items by their ids: those whose full path no item of the old version has. Each is handed out once. */
class Wanderers {
  public:
    Wanderers(const ItemsByKey &oldByKey, const std::vector<Item> &newItems)
    {
        std::vector<uint32_t> twins(newItems.size(), NO_ITEM); /* in the old version, of the same full path */
        for (uint32_t i = 0; i < newItems.size(); ++i) {
            const Item &item = newItems[i];
            uint32_t parent = item.parent != NO_ITEM ? twins[item.parent] : NO_ITEM;
            if (item.parent == NO_ITEM || parent != NO_ITEM)
                twins[i] = Find(oldByKey, {parent, item.step});
            if (twins[i] == NO_ITEM && IdOf(item) != 0)
                byId_[IdOf(item)].items.push_back(i);
        }
    }

    /* NO_ITEM when all of them are taken. */
    uint32_t Take(uint64_t id, const std::vector<uint32_t> &oldOf)
    {
        auto found = id != 0 ? byId_.find(id) : byId_.end();
        if (found == byId_.end())
            return NO_ITEM;
        Queue &queue = found->second;
        while (queue.next < queue.items.size() && oldOf[queue.items[queue.next]] != NO_ITEM)
            ++queue.next;
        return queue.next < queue.items.size() ? queue.items[queue.next++] : NO_ITEM;
    }

  private:
    struct Queue {
        std::vector<uint32_t> items;
        size_t next = 0;
    };
    std::unordered_map<uint64_t, Queue> byId_;
};

} // namespace

Match MatchItems(const std::vector<Item> &oldItems, const std::vector<Item> &newItems)
{
    ItemsByKey newByKey = ByKey(newItems);
    Wanderers wanderers(ByKey(oldItems), newItems);
    Match match = {std::vector<uint32_t>(oldItems.size(), NO_ITEM), std::vector<uint32_t>(newItems.size(), NO_ITEM)};
    for (uint32_t i = 0; i < oldItems.size(); ++i) {
        const Item &item = oldItems[i];
        uint32_t parent = item.parent != NO_ITEM ? match.newOf[item.parent] : NO_ITEM;
        uint32_t found = NO_ITEM;
        if (item.parent == NO_ITEM || parent != NO_ITEM)
            found = Find(newByKey, {parent, item.step});
        if (found != NO_ITEM && match.oldOf[found] != NO_ITEM)
            found = NO_ITEM;
        if (found == NO_ITEM)
            found = wanderers.Take(IdOf(item), match.oldOf);
        if (found == NO_ITEM)
            continue;
        match.newOf[i] = found;
        match.oldOf[found] = i;
    }
    return match;
}

} // namespace inspect::diff
