/* The rules of `diff`: what can change, and when that breaks those who go by the old version. A rule is a row of a table. */
#pragma once

#include <span>

#include "base/named_row.h"
#include "diff/rule_rows.h"

namespace inspect::diff {

inline constexpr std::span<const RuleRow> RULE_TABLES[] = {RULE_ROWS};

/* Rule("units"). Facts are kept in the order of the rows. */
using Rule = NamedRow<RULE_TABLES>;

/* All rules with what they are about and when a change is breaking, on standard output. */
void WriteRulesText();
void WriteRulesJson();

} // namespace inspect::diff
