/* How much the findings of each rule count: what the rule's row says, until somebody wants it otherwise. */
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "check/findings.h"
#include "check/report/file_glob.h"

namespace inspect {

class Policy {
  public:
    /* What findings of the rule are in all files; nothing: none. What was said of the rule before counts no more, PassOver
     * included. */
    void Set(const RuleRow &rule, std::optional<Severity> level);

    /* There are no findings of the rule in files that the pattern has. */
    void PassOver(const RuleRow &rule, const std::string &pattern);

    /* What a finding of the rule is; nothing when it is none. */
    std::optional<Severity> LevelOf(const RuleRow &rule) const;
    std::optional<Severity> LevelOf(const Finding &finding) const;

  private:
    std::map<const RuleRow *, std::optional<Severity>> levels_;
    std::map<const RuleRow *, std::vector<FileGlob>> passedOver_;
};

} // namespace inspect
