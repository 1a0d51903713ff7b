/* The rules of `check`. A rule is a row of a table in check/rows/, which holds those of one capability each. */
#pragma once

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "base/named_row.h"
#include "check/rows/class_rows.h"
#include "check/rows/comment_rows.h"
#include "check/rows/load_rows.h"
#include "check/rows/node_rows.h"
#include "check/rows/statement_rows.h"
#include "check/rows/yang_rows.h"

namespace inspect {

/* In the order of the help and of the document. */
inline constexpr std::span<const RuleRow> RULE_TABLES[] = {
    LOAD_ROWS, CLASS_ROWS, STATEMENT_ROWS, COMMENT_ROWS, YANG_ROWS, NODE_ROWS,
};

/* Rule("bad-number") */
using Rule = NamedRow<RULE_TABLES>;

/* Characters of the longest name. */
inline constexpr size_t MAX_RULE_NAME = [] {
    size_t longest = 0;
    for (std::span<const RuleRow> table : RULE_TABLES)
        for (const RuleRow &row : table)
            longest = std::max(longest, std::string_view(row.name).size());
    return longest;
}();

/* The rule of that name, or null. */
const RuleRow *FindRule(std::string_view name);

/* "there is no rule 'x': did you mean 'y'?" */
std::string NoRuleText(std::string_view name);

/* Calls visit(row) for each rule, in the order of the help. */
template <class Visit>
void ForEachRule(Visit visit)
{
    for (std::span<const RuleRow> table : RULE_TABLES)
        for (const RuleRow &row : table)
            visit(row);
}

/* "RFC 7950, 7.8.2", or "" for a rule that is the tool's own. */
std::string SectionText(const RuleRow &row);

/* The names and purposes of all rules for the help. */
std::string RulesText();

} // namespace inspect
