#include "ids/assign/class_ids.h"

#include <algorithm>

#include "base/failure.h"
#include "base/text.h"

namespace inspect::ids {
namespace {

std::string RangesText(const std::vector<RangeEntry> &ranges)
{
    std::string text;
    for (const RangeEntry &range : ranges)
        text += (text.empty() ? "" : ", ") + Hex(range.first) + ".." + Hex(range.last);
    return text;
}

} // namespace

ClassIds::ClassIds(const Registry &registry, uint32_t first) : registry_(registry), first_(first), taken_{0}
{
    for (const ClassEntry &entry : registry.classes)
        taken_.insert(entry.id);
}

void ClassIds::Take(uint32_t id, const std::string &module)
{
    taken_.insert(id);
    if (!module.empty())
        own_[module].push_back(id);
}

ClassIds::Supply *ClassIds::SupplyOf(const std::string &module)
{
    auto [entry, isNew] = supplies_.try_emplace(module);
    Supply *supply = &entry->second;
    if (!isNew)
        return supply;
    supply->ranges = registry_.RangesOf(module);
    if (supply->ranges.empty())
        supply->ranges.push_back({module, first_, LAST_CLASS_ID, 0});
    supply->next = supply->ranges.front().first;
    uint64_t behind = 0;
    for (size_t i = 0; i < supply->ranges.size(); ++i)
        for (uint32_t id : own_[module])
            if (id >= supply->ranges[i].first && id <= supply->ranges[i].last && id >= behind) {
                behind = uint64_t{id} + 1;
                supply->range = i;
                supply->next = behind;
            }
    return supply;
}

/* Goes to the next range; behind the last one to the first, once. */
bool ClassIds::Advance(Supply *supply) const
{
    if (++supply->range == supply->ranges.size()) {
        if (supply->isAgain)
            return false;
        supply->isAgain = true;
        supply->range = 0;
    }
    supply->next = supply->ranges[supply->range].first;
    return true;
}

uint32_t ClassIds::Next(const std::string &module)
{
    Supply *supply = SupplyOf(module);
    for (;;) {
        if (supply->range >= supply->ranges.size() ||
            (supply->next > supply->ranges[supply->range].last && !Advance(supply))) {
            supply->range = supply->ranges.size();
            throw Failure("module '" + module + "' has no class id left in " + RangesText(supply->ranges) +
                          ": give it a further range; nothing is written");
        }
        auto id = static_cast<uint32_t>(supply->next++);
        const RangeEntry *range = registry_.RangeAt(id);
        if (range != nullptr && range->module != module)
            supply->next = uint64_t{range->last} + 1;
        else if (taken_.insert(id).second)
            return id;
    }
}

void FieldIds::Take(uint32_t id)
{
    if (id == 0 || id > LAST)
        return;
    used_.set(id);
    highest_ = std::max<size_t>(highest_, id);
}

uint32_t FieldIds::Next()
{
    size_t id = highest_ + 1;
    if (id > LAST)
        for (id = 1; id <= LAST && used_.test(id);)
            ++id;
    if (id > LAST)
        return 0;
    Take(static_cast<uint32_t>(id));
    return static_cast<uint32_t>(id);
}

} // namespace inspect::ids
