/* Nodes that options name by their paths. */
#pragma once

#include <string>
#include <vector>

#include "ids/assign/survey.h"

namespace inspect::ids {

class PathChoice {
  public:
    /* Paths as the registry has them, or without the modules' names. Throws Failure, with the option's name, for one that is
     * no node's. */
    PathChoice(const Survey &survey, const std::vector<std::string> &paths, const char *option);

    bool Has(uint32_t index) const { return !chosen_.empty() && chosen_[index]; }

    /* True if the node or one above it is chosen. */
    bool HasAbove(uint32_t index) const;

  private:
    const Survey &survey_;
    std::vector<bool> chosen_;
};

} // namespace inspect::ids
