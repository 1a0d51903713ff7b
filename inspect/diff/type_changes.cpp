#include "diff/type_changes.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "diff/fact_pairs.h"

namespace inspect::diff {
namespace {

using Changes = std::vector<TypeChange>;

std::string TextOf(const NamedNumber &name)
{
    return name.name + " " + std::to_string(name.number);
}

class Comparison {
  public:
    Comparison(const TypeModel &before, const TypeModel &after, Changes *changes)
        : before_(before), after_(after), changes_(changes)
    {
    }

    void Run()
    {
        if (before_.signature == after_.signature)
            return;
        if (before_.base != after_.base) {
            Add("type", before_.base, after_.base, before_.where, after_.where);
            return;
        }
        CompareFacts();
        if (!hasOtherDigits_)
            CompareLimits("range", before_.range.get(), after_.range.get());
        CompareLimits("length", before_.length.get(), after_.length.get());
        CompareNames(before_.base == "bits" ? Rule("bit") : Rule("enum"));
        CompareMembers();
    }

  private:
    using Members = std::vector<const TypeModel *>;

    void Add(Rule rule, Value before, Value after, const Where &oldWhere, const Where &newWhere)
    {
        bool breaking = IsBreaking(*rule, before, after);
        changes_->push_back({rule, breaking, WithAbsent(rule, std::move(before)), WithAbsent(rule, std::move(after)),
                             oldWhere, newWhere});
    }

    /* A leafref that the leaf itself is was compared before: it refers to something else then. */
    void CompareFacts()
    {
        for (const auto &[before, after] : DifferentFacts(before_.facts, after_.facts)) {
            Rule rule = before != nullptr ? before->rule : after->rule;
            hasOtherDigits_ |= rule == Rule("fraction-digits");
            Add(rule, before != nullptr ? before->value : Value(), after != nullptr ? after->value : Value(),
                before != nullptr ? before->where : before_.where, after != nullptr ? after->where : after_.where);
        }
    }

    void CompareLimits(Rule rule, const Limits *before, const Limits *after)
    {
        if (before == nullptr && after == nullptr)
            return;
        if (before != nullptr && after != nullptr && before->range == after->range)
            return;
        Add(rule, before != nullptr ? Value(before->range.Text()) : Value(),
            after != nullptr ? Value(after->range.Text()) : Value(), before != nullptr ? before->where : before_.where,
            after != nullptr ? after->where : after_.where);
        changes_->back().breaking = after != nullptr && (before == nullptr || !after->range.Covers(before->range));
    }

    void CompareNames(Rule rule)
    {
        auto index = [](const std::vector<NamedNumber> &names) {
            std::unordered_map<std::string_view, const NamedNumber *> byName;
            for (const NamedNumber &name : names)
                byName.emplace(name.name, &name);
            return byName;
        };
        auto oldNames = index(before_.names);
        auto newNames = index(after_.names);
        for (const NamedNumber &name : before_.names) {
            auto same = newNames.find(name.name);
            if (same == newNames.end()) {
                Add(rule, TextOf(name), {}, name.where, after_.where);
                continue;
            }
            if (same->second->number != name.number)
                Add(rule, TextOf(name), TextOf(*same->second), name.where, same->second->where);
            for (const auto &[before, after] : DifferentFacts(name.facts, same->second->facts))
                Add(before != nullptr ? before->rule : after->rule, Of(rule, name, before), Of(rule, name, after),
                    before != nullptr ? before->where : name.where,
                    after != nullptr ? after->where : same->second->where);
        }
        for (const NamedNumber &name : after_.names)
            if (!oldNames.contains(name.name))
                Add(rule, {}, TextOf(name), before_.where, name.where);
    }

    /* "enum red: fast" */
    static Value Of(Rule rule, const NamedNumber &name, const Fact *fact)
    {
        if (fact == nullptr)
            return {};
        return std::string(rule->name) + " " + name.name + ": " + ValueText(fact->value);
    }

    /* Members of the same kind are paired in their order: equal ones first, then those of one built-in type. */
    void CompareMembers()
    {
        std::vector<size_t> partner(before_.members.size(), NONE);
        std::vector<bool> taken(after_.members.size(), false);
        Pair([](const TypeModel &type) -> std::string_view { return type.signature; }, &partner, &taken);
        Pair([](const TypeModel &type) -> std::string_view { return type.base; }, &partner, &taken);
        bool isOrdered = true;
        size_t last = 0;
        for (size_t i = 0; i < partner.size(); ++i) {
            const TypeModel &member = *before_.members[i];
            if (partner[i] == NONE) {
                Add("member", member.base, {}, member.where, after_.where);
                continue;
            }
            isOrdered &= partner[i] >= last;
            last = partner[i];
            Comparison(member, *after_.members[partner[i]], changes_).Run();
        }
        for (size_t i = 0; i < taken.size(); ++i)
            if (!taken[i])
                Add("member", {}, after_.members[i]->base, before_.where, after_.members[i]->where);
        if (!isOrdered)
            Add("member-order", BasesOf(before_.members), BasesOf(after_.members), before_.where, after_.where);
    }

    template <class KeyOf>
    void Pair(KeyOf keyOf, std::vector<size_t> *partner, std::vector<bool> *taken) const
    {
        std::unordered_map<std::string_view, std::vector<size_t>> free; /* last one first */
        for (size_t i = after_.members.size(); i-- > 0;)
            if (!(*taken)[i])
                free[keyOf(*after_.members[i])].push_back(i);
        for (size_t i = 0; i < partner->size(); ++i) {
            auto found = (*partner)[i] == NONE ? free.find(keyOf(*before_.members[i])) : free.end();
            if (found == free.end() || found->second.empty())
                continue;
            (*partner)[i] = found->second.back();
            (*taken)[found->second.back()] = true;
            found->second.pop_back();
        }
    }

    static std::string BasesOf(const Members &members)
    {
        std::string text;
        for (const TypeModel *member : members)
            text += (text.empty() ? "" : " ") + member->base;
        return text;
    }

    static constexpr size_t NONE = static_cast<size_t>(-1);

    const TypeModel &before_;
    const TypeModel &after_;
    Changes *changes_;
    bool hasOtherDigits_ = false;
};

} // namespace

const std::vector<TypeChange> &TypeComparison::Compare(const TypeModel &before, const TypeModel &after)
{
    auto [entry, isNew] = known_.try_emplace({&before, &after});
    if (isNew)
        Comparison(before, after, &entry->second).Run();
    return entry->second;
}

} // namespace inspect::diff
