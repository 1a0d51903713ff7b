#include "check/finding_list.h"

#include <algorithm>
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
    std::vector<size_t> &known = byPlace_[PlaceOf(finding)];
    for (size_t index : known) {
        Entry &entry = entries_[index];
        auto use = entry.uses.find(finding.path);
        if (use != entry.uses.end() && use->second == finding.cause.text)
            return;
        if (use == entry.uses.end() && finding.cause.line != 0 && !finding.path.empty() &&
            !entry.finding.path.empty()) {
            entry.uses.emplace(finding.path, finding.cause.text);
            return;
        }
    }
    known.push_back(entries_.size());
    std::unordered_map<std::string, std::string> uses = {{finding.path, finding.cause.text}};
    entries_.push_back({std::move(finding), std::move(uses)});
}

void FindingList::Add(std::vector<Finding> findings)
{
    for (Finding &finding : findings)
        Add(std::move(finding));
}

void FindingList::AddOfOrder(Finding finding, const std::string &order)
{
    for (size_t index : byPlace_[PlaceOf(finding)])
        if (entries_[index].uses.contains(finding.path))
            return;
    finding.cause.text += order;
    Add(std::move(finding));
}

bool FindingList::Has(Rule rule, const std::string &module) const
{
    return std::any_of(entries_.begin(), entries_.end(), [&](const Entry &entry) {
        return entry.finding.rule == rule && entry.finding.module == module;
    });
}

std::vector<Finding> FindingList::Take()
{
    std::vector<Finding> findings;
    for (Entry &entry : entries_) {
        if (entry.uses.size() > 1)
            entry.finding.cause.text +=
                " (in " + std::to_string(entry.uses.size()) + " places, first " + entry.finding.path + ")";
        findings.push_back(std::move(entry.finding));
    }
    entries_.clear();
    byPlace_.clear();
    return findings;
}

} // namespace inspect
