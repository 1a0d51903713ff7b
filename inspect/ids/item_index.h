/* The entries of a registry, and those of models, in the form in which they are compared. */
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ids/model_ids.h"
#include "ids/registry.h"

namespace inspect::ids {

/* A class, or an attribute of one. */
struct Item {
    uint32_t scope; /* class of an attribute; 0: it is a class itself */
    uint32_t id;
    bool isAncestorKey;
    std::string_view path;
    const std::optional<std::string> *gone = nullptr; /* of the registry's alone */
    const ModelClass *modelClass = nullptr;           /* of a class of the models */
    const ModelField *modelField = nullptr;           /* of an attribute of the models */
    uint32_t sample = 0;
    uint32_t line = 0; /* in the registry */

    bool IsLive() const { return gone == nullptr || !gone->has_value(); }
};

/* The texts and entries stay with whom they were taken from. */
class ItemIndex {
  public:
    explicit ItemIndex(const Registry &registry);
    explicit ItemIndex(const ModelIds &models);

    const std::vector<Item> &All() const { return items_; }

    /* Those that have the item's id, in their order. */
    std::vector<const Item *> WithIdOf(const Item &item) const;

    /* The one that has the item's path now, whatever its id, or null. */
    const Item *AtPathOf(const Item &item) const;

    /* The one with the item's id and path, or null. */
    const Item *SameAs(const Item &item) const;

    bool HasClass(uint32_t id) const { return byId_.contains(id); }

  private:
    void Add(const Item &item);

    std::vector<Item> items_;
    std::unordered_map<uint64_t, std::vector<size_t>> byId_;
    std::unordered_map<std::string, size_t> byPath_;
};

} // namespace inspect::ids
