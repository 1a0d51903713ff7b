/* Where a node's new statements go: into its own statement, or into a refine of the uses that brings it. */
#pragma once

#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "ids/assign/survey.h"

namespace inspect::ids {

struct Target {
    Spot spot;          /* the node's statement, or the uses */
    std::string refine; /* path from the uses to the node; "": no refine */
};

class Placement {
  public:
    explicit Placement(const Survey &survey);

    /* Nothing when no file of the node's module can say anything of it. */
    std::optional<Target> Of(uint32_t index) const;

    /* True if the node's statement makes other nodes, too: all of them have what stands in it. */
    bool IsShared(uint32_t index) const;

  private:
    bool IsOwnFile(const SurveyNode &node, const QXYANG_FILE *file) const;
    std::string PathFromUses(uint32_t index) const;

    const Survey &survey_;
    std::unordered_map<const QXYANG_FILE *, std::vector<bool>> once_;  /* by statement: it makes a node */
    std::unordered_map<const QXYANG_FILE *, std::vector<bool>> again_; /* it makes a further one */
    std::unordered_map<const QXYANG_FILE *, uint32_t> modules_;
};

} // namespace inspect::ids
