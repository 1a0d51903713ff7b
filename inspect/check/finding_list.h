/* Findings while they are found. A statement of a grouping makes nodes in many places, and a tree may be looked at more than
 * once: what is one fault is one finding. */
#pragma once

#include <map>
#include <string>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "check/findings.h"

namespace inspect {

class FindingList {
  public:
    /* Findings of a rule at a place that differ in the node alone, `finding.path`, become one. One that is there already
     * adds nothing. */
    void Add(Finding finding);
    void Add(std::vector<Finding> findings);

    /* The same for a finding that only another order of loads shows: it adds nothing when the rule has found something at
     * that place for the node. `order` says which order, to follow the text. */
    void AddOfOrder(Finding finding, const std::string &order);

    /* All findings in the order in which they were found. */
    std::vector<Finding> Take();

  private:
    using Place = std::tuple<const RuleRow *, std::string, uint32_t, uint32_t>;

    /* What a rule has found at a place. */
    struct Known {
        std::unordered_map<std::string, std::unordered_set<std::string>> texts; /* by path */
        std::vector<size_t> ofNodes; /* findings: the first about each node's first text, the next about its second */
    };

    static Place PlaceOf(const Finding &finding);

    std::vector<Finding> findings_;
    std::map<Place, Known> byPlace_;
};

} // namespace inspect
