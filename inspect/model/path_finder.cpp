#include "model/path_finder.h"

#include <cstring>
#include <map>

#include "base/failure.h"
#include "base/text.h"

namespace inspect {
namespace {

/* The end of the step that begins at `begin`: a "/" within a predicate does not count. */
size_t StepEnd(std::string_view path, size_t begin)
{
    int brackets = 0;
    char quote = 0;
    for (size_t at = begin; at < path.size(); ++at) {
        char c = path[at];
        if (quote != 0)
            quote = c == quote ? '\0' : quote;
        else if (brackets > 0 && (c == '"' || c == '\''))
            quote = c;
        else if (c == '[')
            ++brackets;
        else if (c == ']')
            --brackets;
        else if (c == '/' && brackets == 0)
            return at;
    }
    return path.size();
}

PathStep ToStep(std::string_view text)
{
    text = text.substr(0, text.find('['));
    size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        return {"", std::string(text)};
    return {std::string(text.substr(0, colon)), std::string(text.substr(colon + 1))};
}

std::string StepsText(const std::vector<PathStep> &steps, size_t num)
{
    std::string text;
    for (size_t i = 0; i < num; ++i)
        text += "/" + (steps[i].prefix.empty() ? "" : steps[i].prefix + ":") + steps[i].name;
    return text;
}

/* Names that a step may have at this level: choices and cases are looked through. */
void OfferNames(NearestName *nearest, Chain chain)
{
    for (const KorvTreeNode &node : chain)
        if (IsOrdinary(node))
            nearest->Offer(node.pcName);
        else
            OfferNames(nearest, Children(node));
}

bool StandsWhereAdded(const ModuleFile &file, const Place &place)
{
    std::optional<Addition> addition = AdditionOf(file, place);
    return addition && addition->augment == place.augment;
}

/* The place of a leaf. A leaf of a case is shown as the class above has it: only there it carries the class id. */
Place AtClass(std::optional<uint32_t> augment, const KorvTreeNode &holder, const KorvTreeLeaf &leaf)
{
    const KorvTreeNode *node = OrdinaryAt(holder);
    if (node == nullptr || node == &holder)
        return {augment, &holder, &leaf};
    for (const KorvTreeLeaf &caseLeaf : Leaves(node->pstCaseLeafList))
        if (caseLeaf.pYinNode == leaf.pYinNode)
            return {augment, node, &caseLeaf};
    return {augment, &holder, &leaf};
}

} // namespace

std::vector<PathStep> ParsePath(std::string_view path)
{
    std::vector<PathStep> steps;
    size_t begin = path.starts_with("/") ? 1 : 0;
    std::string_view whole = path.size() > 1 && path.ends_with("/") ? path.substr(0, path.size() - 1) : path;
    while (begin <= whole.size()) {
        size_t end = StepEnd(whole, begin);
        steps.push_back(ToStep(whole.substr(begin, end - begin)));
        if (steps.back().name.empty())
            throw Failure("'" + std::string(path) + "' is no path: a step is empty", EXIT_USAGE);
        begin = end + 1;
    }
    return steps;
}

std::string BareNames(std::string_view target)
{
    std::string names;
    for (const PathStep &step : ParsePath(target))
        names += "/" + step.name;
    return names;
}

struct PathFinder::Search {
    const std::vector<PathStep> &steps;
    bool namedChoices;
    std::optional<uint32_t> augment;
    std::vector<Place> *places;
};

bool PathFinder::Means(const PathStep &step, const char *name, const char *module) const
{
    if (step.name != name)
        return false;
    if (step.prefix.empty() || step.prefix == module)
        return true;
    std::string imported = prefixes_.ModuleOf(file_.pcModuleName, step.prefix);
    return imported.empty() ? prefixes_.Of(module) == step.prefix : imported == module;
}

void PathFinder::MatchLeaf(Search *search, const KorvTreeNode &holder, size_t step) const
{
    for (const VEC_VECTOR_S *list : {holder.pstLeafList, holder.pstCaseLeafList}) {
        for (const KorvTreeLeaf &leaf : Leaves(list))
            if (Means(search->steps[step], leaf.pcName, leaf.pcModuleName))
                search->places->push_back(AtClass(search->augment, holder, leaf));
    }
    /* A leaf-list of a case stands there alone. */
    for (const KorvTreeNode &child : Children(holder))
        if (!IsOrdinary(child))
            MatchLeaf(search, child, step);
}

void PathFinder::Match(Search *search, Chain chain, size_t step) const
{
    bool last = step + 1 == search->steps.size();
    for (const KorvTreeNode &node : chain) {
        if (!IsOrdinary(node))
            Match(search, Children(node), step);
        if (!IsOrdinary(node) && !search->namedChoices)
            continue;
        if (!Means(search->steps[step], node.pcName, node.pcModuleName))
            continue;
        if (last) {
            search->places->push_back({search->augment, &node, nullptr});
            continue;
        }
        Match(search, Children(node), step + 1);
        if (step + 2 == search->steps.size())
            MatchLeaf(search, node, step + 1);
    }
}

std::vector<Place> PathFinder::FindOnce(const std::vector<PathStep> &steps, bool namedChoices) const
{
    std::vector<Place> found;
    Search search = {steps, namedChoices, std::nullopt, &found};
    Match(&search, Chain(file_.pstOriginTree), 0);
    for (uint32_t i = 0; i < file_.ucAugmentNum; ++i) {
        search.augment = i;
        Match(&search, Chain(file_.astAugment[i].pstTargetTree), 0);
    }
    std::vector<Place> distinct;
    std::map<std::string, size_t> known;
    for (const Place &place : found) {
        const auto [entry, isNew] = known.emplace(QualifiedPath(place), distinct.size());
        if (isNew)
            distinct.push_back(place);
        else if (StandsWhereAdded(file_, place))
            distinct[entry->second] = place;
    }
    return distinct;
}

std::vector<Place> PathFinder::Find(const std::vector<PathStep> &steps) const
{
    std::vector<Place> places = FindOnce(steps, false);
    return places.empty() ? FindOnce(steps, true) : places;
}

std::string PathFinder::WhyNot(const std::vector<PathStep> &steps) const
{
    size_t known = steps.size() - 1;
    std::vector<Place> places;
    for (; known > 0 && places.empty(); --known)
        places = Find({steps.begin(), steps.begin() + static_cast<ptrdiff_t>(known)});
    if (!places.empty())
        ++known;
    const PathStep &missing = steps[known];
    NearestName nearest(missing.name);
    if (places.empty()) {
        OfferNames(&nearest, Chain(file_.pstOriginTree));
        for (uint32_t i = 0; i < file_.ucAugmentNum; ++i)
            OfferNames(&nearest, Chain(file_.astAugment[i].pstTargetTree));
        return "no node " + StepsText(steps, 1) + " in the trees of '" + file_.pcModuleName + "'" + nearest.Hint();
    }
    const Place &above = places.front();
    if (above.leaf != nullptr)
        return StepsText(steps, known) + " is a leaf: nothing is below it";
    OfferNames(&nearest, Children(*above.node));
    for (const VEC_VECTOR_S *list : {above.node->pstLeafList, above.node->pstCaseLeafList})
        for (const KorvTreeLeaf &leaf : Leaves(list))
            nearest.Offer(leaf.pcName);
    std::string name = (missing.prefix.empty() ? "" : missing.prefix + ":") + missing.name;
    return "no '" + name + "' below " + StepsText(steps, known) + nearest.Hint();
}

Place PathFinder::Require(const std::string &path, const Notes &notes) const
{
    std::vector<PathStep> steps = ParsePath(path);
    std::vector<Place> places = Find(steps);
    if (places.empty())
        throw Failure(WhyNot(steps));
    for (size_t i = 1; i < places.size(); ++i)
        notes.Say("'" + path + "' may mean " + QualifiedPath(places[i]) + " as well");
    return places.front();
}

std::vector<WayStep> WayTo(const Place &place)
{
    std::vector<const KorvTreeNode *> nodes = FromTop(*place.node);
    if (place.leaf != nullptr) {
        std::vector<const KorvTreeNode *> cases = CasesAbove(*place.node, *place.leaf);
        nodes.insert(nodes.end(), cases.begin(), cases.end());
    }
    std::vector<WayStep> way;
    way.reserve(nodes.size() + 1);
    for (const KorvTreeNode *node : nodes)
        way.push_back({node->pcName, node->pcModuleName, IsOrdinary(*node)});
    if (place.leaf != nullptr)
        way.push_back({place.leaf->pcName, place.leaf->pcModuleName, true});
    return way;
}

std::optional<Addition> AdditionOf(const ModuleFile &file, const Place &place)
{
    if (!place.augment)
        return std::nullopt;
    std::string above;
    std::vector<WayStep> way = WayTo(place);
    size_t step = 0;
    for (; step < way.size() && std::strcmp(way[step].module, file.pcModuleName) != 0; ++step)
        above += std::string("/") + way[step].name;
    if (step == way.size())
        return std::nullopt;
    for (uint32_t i = 0; i < file.ucAugmentNum; ++i)
        if (BareNames(file.astAugment[i].acAugNodeName) == above)
            return Addition{i, step};
    return std::nullopt;
}

std::string QualifiedPath(const Place &place)
{
    std::string path;
    for (const KorvTreeNode *step : FromTop(*place.node))
        if (IsOrdinary(*step) || (step == place.node && place.leaf == nullptr))
            path += std::string("/") + step->pcModuleName + ":" + step->pcName;
    if (place.leaf != nullptr)
        path += std::string("/") + place.leaf->pcModuleName + ":" + place.leaf->pcName;
    return path;
}

std::string PlainPath(const Place &place)
{
    std::string path = DataPath(*place.node);
    if (place.leaf != nullptr)
        path.append("/").append(place.leaf->pcName);
    else if (!IsOrdinary(*place.node))
        path.append("/").append(place.node->pcName);
    return path;
}

} // namespace inspect
