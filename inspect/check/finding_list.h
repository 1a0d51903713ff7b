/* Findings while they are found. A statement of a grouping makes nodes in many places, and a tree may be looked at more than
 * once: what is one fault is one finding. */
#pragma once

#include <map>
#include <string>
#include <tuple>
#include <unordered_map>
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

    /* True if the rule has found anything in the module. */
    bool Has(Rule rule, const std::string &module) const;

    /* All findings in the order in which they were found, with the number of uses in their texts. */
    std::vector<Finding> Take();

  private:
    struct Entry {
        Finding finding;
        std::unordered_map<std::string, std::string> uses; /* texts by path */
    };
    using Place = std::tuple<const RuleRow *, std::string, uint32_t, uint32_t>;

    static Place PlaceOf(const Finding &finding);

    std::vector<Entry> entries_;
    std::map<Place, std::vector<size_t>> byPlace_; /* entries */
};

} // namespace inspect
