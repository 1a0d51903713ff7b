/* The rules of `diff`: what can change, and when that breaks those who go by the old version. A rule is a row of a table. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "diff/rule_rows.h"

namespace inspect::diff {

/* A rule, by its name: Rule("units"). A name that no row has does not compile. */
class Rule {
  public:
    consteval Rule(const char *name) : row_(Find(name)) {}

    const RuleRow *operator->() const { return row_; }
    const RuleRow &operator*() const { return *row_; }
    bool operator==(const Rule &other) const = default;

    /* Facts are kept in the order of the rows. */
    bool operator<(const Rule &other) const { return row_ < other.row_; }

  private:
    static consteval const RuleRow *Find(std::string_view name)
    {
        for (const RuleRow &row : RULE_ROWS)
            if (row.name == name)
                return &row;
        throw "no rule has this name";
    }

    const RuleRow *row_;
};

/* All rules with what they are about and when a change is breaking, a line or more each. */
std::string RulesText();

} // namespace inspect::diff
