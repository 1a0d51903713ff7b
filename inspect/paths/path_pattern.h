/* Patterns of paths. */
#pragma once

#include <cstdint>
#include <memory>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

#include "model/path_finder.h"

namespace inspect {

/* What a step of a path may be called by. */
struct StepName {
    std::string_view name;
    std::string_view module;
    std::string_view prefix; /* that the module gives itself */
};

class PathPattern {
  public:
    /* In a pattern `*` stands for any characters of a step, `?` for one of them, and a step that is `**` for any number of
     * steps, none included. A step may have a module or prefix in front of a colon. A pattern that does not begin
     * with "/" fits the ends of paths. Throws Failure for what is no path, and for too many steps. */
    explicit PathPattern(std::string_view text);

    /* True if a step of the path has a `*` or `?`. */
    static bool HasWildcards(std::string_view path);

    /* How far paths fit that begin alike: bit n is set if the pattern's steps up to the n-th fit. */
    using Progress = uint64_t;
    Progress Begin() const { return WithoutSteps(1); }
    Progress After(Progress before, const StepName &step) const;
    bool Fits(Progress progress) const { return (progress >> steps_.size() & 1U) != 0; }

    /* The name of the last step; "" when that has wildcards. */
    std::string LastName() const;

  private:
    Progress WithoutSteps(Progress progress) const;

    std::vector<PathStep> steps_;
};

/* A regular expression of ECMAScript that is looked for in paths. */
class PathExpression {
  public:
    /* Throws Failure for what is none, and for one that would take too much. */
    explicit PathExpression(const std::string &text);

    /* Of a path of more than 4096 bytes the first ones count. */
    bool Fits(std::string_view path) const;

  private:
    std::regex expression_;
};

} // namespace inspect
