#include "ids/assign/path_choice.h"

#include <set>

#include "base/failure.h"
#include "base/text.h"
#include "ids/node_path.h"
#include "model/schema_places.h"

namespace inspect::ids {

PathChoice::PathChoice(const Survey &survey, const std::vector<std::string> &paths, const char *option)
    : survey_(survey)
{
    if (paths.empty())
        return;
    std::set<std::string> wanted(paths.begin(), paths.end());
    std::set<std::string> missed = wanted;
    chosen_.resize(survey.Nodes().size());
    for (uint32_t i = 0; i < chosen_.size(); ++i) {
        uint8_t type = survey.At(i).type;
        if (type == QY_NODE_TYPE_CHOICE || type == QY_NODE_TYPE_CASE)
            continue;
        for (const std::string &path : {PathOf(survey.At(i).node), DataPath(survey.At(i).node)})
            if (wanted.contains(path)) {
                chosen_[i] = true;
                missed.erase(path);
            }
    }
    if (missed.empty())
        return;
    NearestName nearest(*missed.begin());
    for (uint32_t i = 0; i < chosen_.size(); ++i)
        nearest.Offer(DataPath(survey.At(i).node));
    throw Failure(std::string(option) + ": the models have no node " + *missed.begin() + nearest.Hint(), EXIT_USAGE);
}

bool PathChoice::HasAbove(uint32_t index) const
{
    if (chosen_.empty())
        return false;
    for (; index != NO_NODE; index = survey_.At(index).parent)
        if (chosen_[index])
            return true;
    return false;
}

} // namespace inspect::ids
