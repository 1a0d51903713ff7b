#include "diff/diff_compare.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>

#include "base/text.h"

namespace inspect {
namespace {

/* The ids by which a host addresses an item; 0: none. */
uint64_t IdOf(const DiffNode &node)
{
    return node.classId;
}

uint64_t IdOf(const DiffLeaf &leaf)
{
    return leaf.Addressable() ? (uint64_t{leaf.classId} << 32) | leaf.fieldId : 0;
}

/* Pairs the items of the new version with those of the old one: first those with the same key under the same node, then
 * those with the same ids, which have moved or changed their name. */
template <class Item>
class Matching {
  public:
    Matching(const std::vector<Item> &oldItems, const std::vector<Item> &newItems)
    {
        for (const Item &item : oldItems)
            oldKeys_.insert(item.key);
        for (const Item &item : newItems) {
            newByKey_.emplace(item.key, &item);
            newById_[IdOf(item)].push_back(&item);
        }
    }

    const Item *ByKey(const std::string &key) const
    {
        auto found = newByKey_.find(key);
        return found != newByKey_.end() && !taken_.contains(found->second) ? found->second : nullptr;
    }

    /* The first item with these ids whose key no item of the old version has. */
    const Item *ById(uint64_t id) const
    {
        auto found = newById_.find(id);
        if (id == 0 || found == newById_.end())
            return nullptr;
        for (const Item *item : found->second)
            if (!oldKeys_.contains(item->key) && !taken_.contains(item))
                return item;
        return nullptr;
    }

    void Match(const Item &oldItem, const Item *newItem)
    {
        if (newItem == nullptr)
            return;
        taken_.insert(newItem);
        newOf_.emplace(&oldItem, newItem);
        newKeyOf_.emplace(oldItem.key, newItem->key);
    }

    const Item *NewOf(const Item &oldItem) const
    {
        auto found = newOf_.find(&oldItem);
        return found != newOf_.end() ? found->second : nullptr;
    }

    /* The key in the new version of what has this key in the old one. */
    std::string NewKeyOf(const std::string &oldKey) const
    {
        auto found = newKeyOf_.find(oldKey);
        return found != newKeyOf_.end() ? found->second : oldKey;
    }

    bool IsTaken(const Item &newItem) const { return taken_.contains(&newItem); }

  private:
    std::unordered_set<std::string> oldKeys_;
    std::unordered_map<std::string, const Item *> newByKey_;
    std::unordered_map<uint64_t, std::vector<const Item *>> newById_;
    std::unordered_map<const Item *, const Item *> newOf_;
    std::unordered_map<std::string, std::string> newKeyOf_;
    std::unordered_set<const Item *> taken_;
};

std::string IdText(uint32_t id, bool hex)
{
    if (id == 0)
        return "";
    return hex ? Hex(id) : std::to_string(id);
}

std::string LastStep(const std::string &key)
{
    return key.substr(key.rfind('/'));
}

class Comparison {
  public:
    Comparison(const DiffModel &oldModel, const DiffModel &newModel)
        : old_(oldModel), new_(newModel), nodes_(old_.nodes, new_.nodes), leaves_(old_.leaves, new_.leaves)
    {
    }

    std::vector<Change> Run()
    {
        if (old_.taskId != new_.taskId)
            Add(false, "task-id", "", IdText(old_.taskId, false), IdText(new_.taskId, false));
        MatchNodes();
        MatchLeaves();
        for (const DiffNode &node : old_.nodes)
            CompareNode(node, nodes_.NewOf(node));
        for (const DiffLeaf &leaf : old_.leaves)
            CompareLeaf(leaf, leaves_.NewOf(leaf));
        AddAdditions();
        return std::move(changes_);
    }

  private:
    void Add(bool breaking, const char *what, const std::string &path, const std::string &before,
             const std::string &after)
    {
        changes_.push_back({breaking, what, path, before, after});
    }

    void AddIfChanged(bool breaking, const char *what, const std::string &path, const std::string &before,
                      const std::string &after)
    {
        if (before != after)
            Add(breaking, what, path, before, after);
    }

    /* Parents first, so that what stands below a node that has moved is looked for at its new place. */
    void MatchNodes()
    {
        for (const DiffNode &node : old_.nodes) {
            const DiffNode *same = nodes_.ByKey(nodes_.NewKeyOf(node.above) + LastStep(node.key));
            nodes_.Match(node, same != nullptr ? same : nodes_.ById(IdOf(node)));
        }
    }

    void MatchLeaves()
    {
        for (const DiffLeaf &leaf : old_.leaves) {
            const DiffLeaf *same = leaves_.ByKey(nodes_.NewKeyOf(leaf.above) + LastStep(leaf.key));
            leaves_.Match(leaf, same != nullptr ? same : leaves_.ById(IdOf(leaf)));
        }
    }

    /* A host does not see that a node has moved together with the one above it. */
    template <class Item>
    void CompareKeys(const Item &before, const Item &after, const char *what)
    {
        if (nodes_.NewKeyOf(before.above) + LastStep(before.key) != after.key)
            Add(false, what, before.path, before.path, after.path);
    }

    void CompareNode(const DiffNode &before, const DiffNode *after)
    {
        bool isClass = before.classId != 0;
        if (after == nullptr) {
            Add(isClass, isClass ? "class-removed" : "node-removed", before.path, IdText(before.classId, true), "");
            return;
        }
        CompareKeys(before, *after, isClass ? "class-moved" : "node-moved");
        AddIfChanged(isClass, "class-id", before.path, IdText(before.classId, true), IdText(after->classId, true));
        AddIfChanged(before.sampleId != 0, "sample-id", before.path, IdText(before.sampleId, true),
                     IdText(after->sampleId, true));
        AddIfChanged(isClass, "keys", before.path, JoinNumbers(before.selfKeys, " "),
                     JoinNumbers(after->selfKeys, " "));
        AddIfChanged(isClass, "ancestor-keys", before.path, JoinNumbers(before.ancestorKeys, " "),
                     JoinNumbers(after->ancestorKeys, " "));
    }

    void CompareLeaf(const DiffLeaf &before, const DiffLeaf *after)
    {
        bool breaking = before.Addressable();
        const std::string &path = before.path;
        if (after == nullptr) {
            Add(breaking, "leaf-removed", path, IdText(before.fieldId, false), "");
            return;
        }
        CompareKeys(before, *after, "leaf-moved");
        AddIfChanged(breaking, "field-id", path, IdText(before.fieldId, false), IdText(after->fieldId, false));
        AddIfChanged(breaking, "kind", path, before.isList ? "leaf-list" : "leaf",
                     after->isList ? "leaf-list" : "leaf");
        AddIfChanged(breaking, "type", path, before.type, after->type);
        AddIfChanged(breaking, "datatype", path, IdText(before.dataType, false), IdText(after->dataType, false));
        AddIfChanged(breaking, "index-map", path, IdText(before.indexMap, false), IdText(after->indexMap, false));
        AddIfChanged(breaking, "reference-key", path, IdText(before.referenceKey, false),
                     IdText(after->referenceKey, false));
        if (before.type == after->type) {
            if (before.range != after->range)
                Add(breaking && !after->range.Covers(before.range), "range", path, before.range.Text(),
                    after->range.Text());
            CompareEnums(before, *after);
        }
    }

    void CompareEnums(const DiffLeaf &before, const DiffLeaf &after)
    {
        auto find = [](const std::vector<EnumValue> &values, const EnumValue &wanted) {
            return std::find_if(values.begin(), values.end(),
                                [&](const EnumValue &value) { return value.name == wanted.name; });
        };
        auto text = [](const EnumValue &value) { return value.name + " " + std::to_string(value.value); };
        for (const EnumValue &value : before.enums) {
            auto same = find(after.enums, value);
            AddIfChanged(before.Addressable(), "enum", before.path, text(value),
                         same != after.enums.end() ? text(*same) : "");
        }
        for (const EnumValue &value : after.enums)
            if (find(before.enums, value) == before.enums.end())
                Add(false, "enum", before.path, "", text(value));
    }

    void AddAdditions()
    {
        for (const DiffNode &node : new_.nodes)
            if (!nodes_.IsTaken(node))
                Add(false, node.classId != 0 ? "class-added" : "node-added", node.path, "", IdText(node.classId, true));
        for (const DiffLeaf &leaf : new_.leaves)
            if (!leaves_.IsTaken(leaf))
                Add(false, "leaf-added", leaf.path, "", IdText(leaf.fieldId, false));
    }

    const DiffModel &old_;
    const DiffModel &new_;
    Matching<DiffNode> nodes_;
    Matching<DiffLeaf> leaves_;
    std::vector<Change> changes_;
};

} // namespace

std::vector<Change> Compare(const DiffModel &oldModel, const DiffModel &newModel)
{
    return Comparison(oldModel, newModel).Run();
}

} // namespace inspect
