/* How much the findings of each rule count: what the rule's row says, until somebody wants it otherwise. */
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/findings.h"
#include "check/report/file_glob.h"

namespace inspect {

class Policy {
  public:
    /* Each takes the name of a rule and throws Failure when there is none; the latest one about a rule holds. */
    void MakeErrors(std::string_view rule) { levels_[&RuleNamed(rule)] = Severity::Error; }
    void MakeWarnings(std::string_view rule) { levels_[&RuleNamed(rule)] = Severity::Warning; }

    /* "RULE", or "RULE:PATH" for the findings in files that the pattern has. */
    void SwitchOff(std::string_view text);

    /* What a finding of the rule is; nothing when it is none. */
    std::optional<Severity> LevelOf(const RuleRow &rule) const;
    std::optional<Severity> LevelOf(const Finding &finding) const;

  private:
    static const RuleRow &RuleNamed(std::string_view name);

    std::map<const RuleRow *, std::optional<Severity>> levels_;
    std::map<const RuleRow *, std::vector<FileGlob>> passedOver_;
};

} // namespace inspect
