/* Comparing what statements of one keyword say before and after. */
#pragma once

#include <span>
#include <vector>

#include "diff/model.h"

namespace inspect::diff {

/* Facts of one rule that differ: both, or one and null. */
struct FactPair {
    const Fact *before;
    const Fact *after;
};

/* The facts of both sides, sorted by rule, that the other side does not have: of each rule first those that have changed,
 * paired in their order, then those that are gone or new. */
std::vector<FactPair> DifferentFacts(std::span<const Fact> before, std::span<const Fact> after);

/* The value, or what holds without a statement. */
Value WithAbsent(Rule rule, Value value);

/* True if the change is breaking where it is felt. Ranges, and what is new as a whole, are judged by who compares them. */
bool IsBreaking(const RuleRow &row, const Value &before, const Value &after);

} // namespace inspect::diff
