#include "diff/fact_pairs.h"

#include <algorithm>
#include <limits>
#include <set>

namespace inspect::diff {
namespace {

using Facts = std::span<const Fact>;

/* The facts of the first rule in the span, which loses them. */
Facts TakeRule(Facts *facts, Rule rule)
{
    size_t count = 0;
    while (count < facts->size() && (*facts)[count].rule == rule)
        ++count;
    Facts taken = facts->first(count);
    *facts = facts->subspan(count);
    return taken;
}

/* The facts whose values the other side has not, or not as often. */
std::vector<const Fact *> OnlyIn(Facts facts, Facts others)
{
    std::vector<const Fact *> only;
    if (facts.size() == 1 && others.size() == 1) { /* most rules have one */
        if (facts[0].value != others[0].value)
            only.push_back(&facts[0]);
        return only;
    }
    std::multiset<Value> rest;
    for (const Fact &other : others)
        rest.insert(other.value);
    for (const Fact &fact : facts)
        if (auto found = rest.find(fact.value); found != rest.end())
            rest.erase(found);
        else
            only.push_back(&fact);
    return only;
}

int64_t NumberOr(const Value &value, int64_t absent)
{
    const auto *number = std::get_if<int64_t>(&value);
    return number != nullptr ? *number : absent;
}

} // namespace

std::vector<FactPair> DifferentFacts(Facts before, Facts after)
{
    std::vector<FactPair> pairs;
    while (!before.empty() || !after.empty()) {
        bool isOldNext = after.empty() || (!before.empty() && !(after[0].rule < before[0].rule));
        Rule rule = isOldNext ? before[0].rule : after[0].rule;
        Facts oldFacts = TakeRule(&before, rule);
        Facts newFacts = TakeRule(&after, rule);
        std::vector<const Fact *> gone = OnlyIn(oldFacts, newFacts);
        std::vector<const Fact *> added = OnlyIn(newFacts, oldFacts);
        for (size_t i = 0; i < std::max(gone.size(), added.size()); ++i)
            pairs.push_back({i < gone.size() ? gone[i] : nullptr, i < added.size() ? added[i] : nullptr});
    }
    return pairs;
}

Value WithAbsent(Rule rule, Value value)
{
    if (!IsNone(value) || rule->absent == nullptr)
        return value;
    if (rule == Rule("min-elements"))
        return int64_t{0};
    return std::string(rule->absent);
}

bool IsBreaking(const RuleRow &row, const Value &before, const Value &after)
{
    constexpr int64_t UNBOUNDED = std::numeric_limits<int64_t>::max();
    switch (row.breaks) {
        case Always:
            return true;
        case WhenGone:
            return !IsNone(before);
        case WhenNew:
            return !IsNone(after);
        case WhenComesOrGoes:
            return IsNone(before) != IsNone(after);
        case WhenLarger:
            return NumberOr(before, 0) < NumberOr(after, 0);
        case WhenSmaller:
            return NumberOr(before, UNBOUNDED) > NumberOr(after, UNBOUNDED);
        case Never:
        case WhenNarrower:
        case WhenRequired:
            break;
    }
    return false;
}

} // namespace inspect::diff
