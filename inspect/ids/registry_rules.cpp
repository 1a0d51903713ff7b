#include "ids/registry_rules.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

#include "base/text.h"

namespace inspect::ids {
namespace {

/* Two entries that contradict each other: the text names the line of the upper one. */
template <class Entry>
RegistryFault Against(const Entry &entry, const Entry &other, const std::string &text)
{
    uint32_t upper = std::min(entry.line, other.line);
    return {std::max(entry.line, other.line), text + (upper != 0 ? " (line " + std::to_string(upper) + ")" : "")};
}

RegistryFault RangeFault(const Registry &registry)
{
    const RangeEntry *before = nullptr;
    for (const RangeEntry &range : registry.ranges) {
        if (before != nullptr && range.first <= before->last)
            return Against(range, *before,
                           "the ranges " + Hex(before->first) + ".." + Hex(before->last) + " of '" + before->module +
                               "' and " + Hex(range.first) + ".." + Hex(range.last) + " of '" + range.module +
                               "' overlap");
        before = &range;
    }
    return {};
}

/* The entries of one class id: a node has it once, and the nodes that have it now are parts of one. */
class ClassRules {
  public:
    RegistryFault Look(const ClassEntry &entry)
    {
        if (before_ != nullptr && before_->id == entry.id && before_->path == entry.path)
            return Against(entry, *before_, "class id " + Hex(entry.id) + " stands twice for " + entry.path);
        if (before_ == nullptr || before_->id != entry.id)
            top_ = nullptr;
        before_ = &entry;
        if (entry.gone)
            return {};
        auto [other, isNew] = byPath_.try_emplace(entry.path, &entry);
        if (!isNew)
            return Against(entry, *other->second,
                           entry.path + " has the class ids " + Hex(other->second->id) + " and " + Hex(entry.id));
        /* Of the paths of a class the topmost is the first in their order. */
        if (top_ != nullptr && !IsAtOrBelow(top_->path, entry.path))
            return Against(entry, *top_,
                           "class id " + Hex(entry.id) + " stands for " + top_->path + " and for " + entry.path);
        top_ = top_ != nullptr ? top_ : &entry;
        return {};
    }

  private:
    const ClassEntry *before_ = nullptr;
    const ClassEntry *top_ = nullptr;
    std::map<std::string_view, const ClassEntry *> byPath_;
};

RegistryFault ClassFault(const Registry &registry)
{
    ClassRules rules;
    for (const ClassEntry &entry : registry.classes)
        if (RegistryFault fault = rules.Look(entry); !fault.text.empty())
            return fault;
    return {};
}

std::string Named(const FieldEntry &entry)
{
    return "attribute id " + std::to_string(entry.id) + " of class " + Hex(entry.classId);
}

/* The entries of one attribute id: a leaf has it once, and one leaf at most has it now. */
class FieldRules {
  public:
    explicit FieldRules(const Registry &registry)
    {
        for (const ClassEntry &entry : registry.classes)
            (entry.gone ? &reserved_ : &live_)->insert(entry.id);
    }

    RegistryFault Look(const FieldEntry &entry)
    {
        if (!live_.contains(entry.classId) && !reserved_.contains(entry.classId))
            return {entry.line, Named(entry) + " has no class: no line says what the class stands for"};
        const FieldEntry *before = before_;
        before_ = &entry;
        if (before != nullptr && before->classId == entry.classId && before->id == entry.id &&
            before->path == entry.path && before->isAncestorKey == entry.isAncestorKey)
            return Against(entry, *before, Named(entry) + " stands twice for " + entry.path);
        if (entry.gone)
            return {};
        if (!live_.contains(entry.classId))
            return {entry.line, Named(entry) + " is in use, but its class is reserved"};
        auto [same, isNew] = byId_.try_emplace({entry.classId, entry.id}, &entry);
        if (!isNew)
            return Against(entry, *same->second,
                           Named(entry) + " stands for " + same->second->path + " and for " + entry.path);
        auto [other, isNewPath] = byPath_.try_emplace({entry.classId, entry.isAncestorKey, entry.path}, &entry);
        if (!isNewPath && !entry.path.empty())
            return Against(entry, *other->second,
                           entry.path + " has the attribute ids " + std::to_string(other->second->id) + " and " +
                               std::to_string(entry.id) + " in class " + Hex(entry.classId));
        return {};
    }

  private:
    std::set<uint32_t> live_;
    std::set<uint32_t> reserved_;
    std::map<std::pair<uint32_t, uint32_t>, const FieldEntry *> byId_;
    std::map<std::tuple<uint32_t, bool, std::string_view>, const FieldEntry *> byPath_;
    const FieldEntry *before_ = nullptr;
};

RegistryFault FieldFault(const Registry &registry)
{
    FieldRules rules(registry);
    for (const FieldEntry &entry : registry.fields)
        if (RegistryFault fault = rules.Look(entry); !fault.text.empty())
            return fault;
    return {};
}

} // namespace

bool IsAtOrBelow(const std::string &above, const std::string &path)
{
    return path.starts_with(above) && (path.size() == above.size() || path[above.size()] == '/');
}

RegistryFault FaultOf(const Registry &registry)
{
    for (auto rules : {RangeFault, ClassFault, FieldFault})
        if (RegistryFault fault = rules(registry); !fault.text.empty())
            return fault;
    return {};
}

} // namespace inspect::ids
