#include "check/report/policy.h"

#include <algorithm>

namespace inspect {

void Policy::Set(const RuleRow &rule, std::optional<Severity> level)
{
    levels_[&rule] = level;
    passedOver_.erase(&rule);
}

void Policy::PassOver(const RuleRow &rule, const std::string &pattern)
{
    passedOver_[&rule].emplace_back(pattern);
}

std::optional<Severity> Policy::LevelOf(const RuleRow &rule) const
{
    auto level = levels_.find(&rule);
    return level != levels_.end() ? level->second : rule.severity;
}

std::optional<Severity> Policy::LevelOf(const Finding &finding) const
{
    auto globs = passedOver_.find(&*finding.rule);
    if (globs != passedOver_.end() && !finding.cause.file.empty() &&
        std::any_of(globs->second.begin(), globs->second.end(),
                    [&](const FileGlob &glob) { return glob.Matches(finding.cause.file); }))
        return std::nullopt;
    return LevelOf(*finding.rule);
}

} // namespace inspect
