#include "check/report/policy.h"

#include <algorithm>

#include "base/failure.h"

namespace inspect {

const RuleRow &Policy::RuleNamed(std::string_view name)
{
    const RuleRow *rule = FindRule(name);
    if (rule == nullptr)
        throw Failure(NoRuleText(name), EXIT_USAGE);
    return *rule;
}

void Policy::SwitchOff(std::string_view text)
{
    size_t colon = text.find(':');
    const RuleRow &rule = RuleNamed(text.substr(0, colon));
    if (colon == std::string_view::npos)
        levels_[&rule] = std::nullopt;
    else
        passedOver_[&rule].emplace_back(std::string(text.substr(colon + 1)));
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
