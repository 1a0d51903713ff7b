#include "paths/path_pattern.h"

#include <algorithm>

#include "base/failure.h"

namespace inspect {
namespace {

constexpr std::string_view ANY_STEPS = "**";
constexpr size_t MAX_STEPS = 60; /* fewer than a Progress has bits */

constexpr size_t MAX_EXPRESSION = 256;
constexpr size_t MAX_PATH = 4096;
constexpr uint64_t MAX_REPEATS = 100;

/* `*` and `?` in one step: after a difference, the latest star takes one character more. */
bool FitsStep(std::string_view pattern, std::string_view name)
{
    size_t at = 0;
    size_t in = 0;
    size_t star = std::string_view::npos;
    size_t taken = 0;
    while (in < name.size()) {
        if (at < pattern.size() && pattern[at] == '*') {
            star = at++;
            taken = in;
        } else if (at < pattern.size() && (pattern[at] == '?' || pattern[at] == name[in])) {
            ++at;
            ++in;
        } else if (star != std::string_view::npos) {
            at = star + 1;
            in = ++taken;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', at) == std::string_view::npos;
}

bool IsWild(std::string_view text)
{
    return text.find_first_of("*?") != std::string_view::npos;
}

/* How often a part of an expression may be repeated at most by numbers in braces, which are expanded: as if each pair stood
 * around the one before. */
uint64_t RepeatsOf(std::string_view text)
{
    uint64_t repeats = 1;
    for (size_t at = text.find('{'); at != std::string_view::npos; at = text.find('{', at + 1)) {
        uint64_t most = 1;
        uint64_t number = 0;
        for (size_t i = at + 1; i < text.size() && text[i] != '}' && number <= MAX_REPEATS; ++i) {
            bool isDigit = text[i] >= '0' && text[i] <= '9';
            number = isDigit ? number * 10 + static_cast<uint64_t>(text[i] - '0') : 0;
            most = std::max(most, number);
        }
        repeats = std::min(repeats * most, MAX_REPEATS + 1);
    }
    return repeats;
}

/* libstdc++ tries one way after the other by default, which can take for ever; this one goes all ways at once. */
constexpr std::regex::flag_type FLAGS = std::regex::ECMAScript | std::regex::optimize
#ifdef __GLIBCXX__
                                        | std::regex_constants::__polynomial
#endif
    ;

std::regex Compiled(const std::string &text)
try {
    return std::regex(text, FLAGS);
} catch (const std::regex_error &) {
    throw Failure("'" + text + "' is no regular expression that can be used here", EXIT_USAGE);
}

} // namespace

PathPattern::PathPattern(std::string_view text) : steps_(ParsePath(text))
{
    if (!text.starts_with("/"))
        steps_.insert(steps_.begin(), {"", std::string(ANY_STEPS)});
    if (steps_.size() > MAX_STEPS)
        throw Failure("a pattern has at most " + std::to_string(MAX_STEPS - 1) + " steps", EXIT_USAGE);
}

bool PathPattern::HasWildcards(std::string_view path)
{
    std::vector<PathStep> steps = ParsePath(path);
    return std::any_of(steps.begin(), steps.end(),
                       [](const PathStep &step) { return IsWild(step.name) || IsWild(step.prefix); });
}

PathPattern::Progress PathPattern::WithoutSteps(Progress progress) const
{
    for (size_t i = 0; i < steps_.size(); ++i)
        if ((progress >> i & 1U) != 0 && steps_[i].name == ANY_STEPS)
            progress |= Progress{1} << (i + 1);
    return progress;
}

PathPattern::Progress PathPattern::After(Progress before, const StepName &step) const
{
    Progress after = 0;
    for (size_t i = 0; i < steps_.size(); ++i) {
        if ((before >> i & 1U) == 0)
            continue;
        const PathStep &wanted = steps_[i];
        bool isOfModule =
            wanted.prefix.empty() || FitsStep(wanted.prefix, step.module) || FitsStep(wanted.prefix, step.prefix);
        if (wanted.name == ANY_STEPS)
            after |= Progress{1} << i;
        else if (isOfModule && FitsStep(wanted.name, step.name))
            after |= Progress{1} << (i + 1);
    }
    return WithoutSteps(after);
}

std::string PathPattern::LastName() const
{
    return IsWild(steps_.back().name) ? "" : steps_.back().name;
}

PathExpression::PathExpression(const std::string &text)
{
    if (text.size() > MAX_EXPRESSION)
        throw Failure("a regular expression has at most " + std::to_string(MAX_EXPRESSION) + " bytes", EXIT_USAGE);
    if (RepeatsOf(text) > MAX_REPEATS)
        throw Failure("'" + text + "' repeats too much: the numbers in its braces make more than " +
                          std::to_string(MAX_REPEATS) + " when they are multiplied",
                      EXIT_USAGE);
    expression_ = Compiled(text);
}

bool PathExpression::Fits(std::string_view path) const
{
    path = path.substr(0, MAX_PATH);
    return std::regex_search(path.begin(), path.end(), expression_);
}

} // namespace inspect
