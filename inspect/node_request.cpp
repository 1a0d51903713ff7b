#include "node_request.h"

namespace inspect {
namespace {

/* The form for a node in a module's own tree. The library takes a second prefix for an augment's, so a node that another
 * module has added goes by the first prefix as well. */
std::string OwnForm(const std::vector<WayStep> &way, const std::string &prefix)
{
    std::string form;
    for (const WayStep &step : way) {
        if (step.named)
            form += (form.empty() ? "" : "/") + prefix + ":" + step.name;
    }
    return form;
}

/* The augment's target path as its statement has it, the first node that the module adds with its prefix, and those below
 * it without. */
std::string AugmentForm(const ModuleFile &file, const std::vector<WayStep> &way, const Addition &addition,
                        const std::string &prefix)
{
    const char *target = file.astAugment[addition.augment].acAugNodeName;
    std::string form = target + (*target == '/' ? 1 : 0);
    bool first = true;
    for (size_t step = addition.step; step < way.size(); ++step) {
        if (!way[step].named)
            continue;
        form += "/" + (first ? prefix + ":" : "") + way[step].name;
        first = false;
    }
    return form;
}

} // namespace

std::optional<NodeRequest> MakeRequest(const ModuleFile &file, const Place &place, YinFiles *files)
{
    const std::vector<WayStep> way = WayTo(place);
    if (!way.back().named)
        return std::nullopt;
    const ModuleKey own = {file.pcModuleName, file.pcRevision != nullptr ? file.pcRevision : ""};
    if (const std::optional<Addition> addition = AdditionOf(file, place))
        return NodeRequest{own, PlainPath(place), AugmentForm(file, way, *addition, files->PrefixOf(own.name))};
    const char *top = way.front().module;
    return NodeRequest{place.augment && own.name != top ? ModuleKey{top, ""} : own, PlainPath(place),
                       OwnForm(way, files->PrefixOf(top))};
}

NodeRequest MakeHolderRequest(const ModuleFile &file, const Place &leaf, YinFiles *files)
{
    const Place holder = {leaf.augment, leaf.node, nullptr};
    if (!AdditionOf(file, holder) && AdditionOf(file, leaf)) {
        /* The holder is another module's, but only this module's copy of it has the leaf. */
        NodeRequest request = *MakeRequest(file, leaf, files);
        request.path = PlainPath(holder);
        return request;
    }
    return *MakeRequest(file, holder, files);
}

const KorvTreeNode *Ask(const Instance &instance, const NodeRequest &request)
{
    if (instance.Find(request.module) == nullptr)
        return nullptr;
    const YangPathRequest ask = request.ForLibrary();
    const YangXpathLookup lookup = {
        instance.Local(), ask.pcModuleName, ask.pcRevision, ask.pcPath, ask.pcXpathMain, 0, 0};
    const KorvTreeNode *node = TELMYANG_KorvFindTreeNodeByXpath(&lookup);
    if (node != nullptr)
        return node;
    return TELMYANG_KorvFindTreeNodeByLeafXpath(instance.Local(), ask.pcModuleName, ask.pcRevision, ask.pcPath,
                                                ask.pcXpathMain);
}

} // namespace inspect
