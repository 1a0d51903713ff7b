#include "check/finding_list.h"

#include <utility>

namespace inspect {

/* Without a place, the module tells findings apart. */
FindingList::Place FindingList::PlaceOf(const Finding &finding)
{
    const Cause &cause = finding.cause;
    return {&*finding.rule, cause.file.empty() ? finding.module : cause.file, cause.line, cause.column};
}

void FindingList::Add(Finding finding)
{
    Known &known = byPlace_[PlaceOf(finding)];
    std::unordered_set<std::string> &texts = known.texts[finding.path];
    size_t number = texts.size(); /* of what is known of the node */
    if (!texts.insert(finding.cause.text).second)
        return;
    bool isOfNode = finding.cause.line != 0 && !finding.path.empty();
    if (isOfNode && number < known.ofNodes.size()) {
        ++findings_[known.ofNodes[number]].places;
        return;
    }
    if (isOfNode)
        known.ofNodes.push_back(findings_.size());
    findings_.push_back(std::move(finding));
}

void FindingList::Add(std::vector<Finding> findings)
{
    for (Finding &finding : findings)
        Add(std::move(finding));
}

void FindingList::AddOfOrder(Finding finding, const std::string &order)
{
    auto known = byPlace_.find(PlaceOf(finding));
    if (known != byPlace_.end() && known->second.texts.contains(finding.path))
        return;
    finding.cause.text += order;
    Add(std::move(finding));
}

std::vector<Finding> FindingList::Take()
{
    byPlace_.clear();
    return std::exchange(findings_, {});
}

} // namespace inspect
