#include "model/node_request.h"

#include <cstring>

namespace inspect {
namespace {

/* The form for a node that the tree's own module defines. */
std::string OwnForm(const std::vector<WayStep> &way, const std::string &prefix)
{
    std::string form;
    for (const WayStep &step : way)
        if (step.named)
            form += (form.empty() ? "" : "/") + prefix + ":" + step.name;
    return form;
}

/* The key under which a module is loaded, or under which it would be. */
ModuleKey KeyOf(const Instance &instance, const std::string &module)
{
    for (const ModuleFile *file : instance.Registered())
        if (module == file->pcModuleName)
            return {module, file->pcRevision != nullptr ? file->pcRevision : ""};
    return {module, ""};
}

/* The target path of the module's augment of that node, as the statement has it; "" when it has none. */
std::string TargetOf(const Instance &instance, const ModuleKey &module, const std::string &names)
{
    if (const ModuleFile *file = instance.Find(module)) {
        for (uint32_t i = 0; i < file->ucAugmentNum; ++i)
            if (BareNames(file->astAugment[i].acAugNodeName) == names)
                return file->astAugment[i].acAugNodeName;
    }
    return Prefixes(instance.Schema()).TargetOf(module.name, names);
}

/* The augment's target path as its statement has it, the first node that the module adds with its prefix, and those below
 * it without. "" when there is no such augment. */
std::string AugmentForm(const Instance &instance, const std::vector<WayStep> &way, const ModuleKey &module)
{
    size_t step = 0;
    std::string names;
    for (; module.name != way[step].module; ++step)
        names += std::string("/") + way[step].name;
    std::string form = TargetOf(instance, module, names);
    if (form.empty())
        return form;
    form.erase(0, form.front() == '/' ? 1 : 0);
    std::string prefix = Prefixes(instance.Schema()).Of(module.name) + ":";
    for (; step < way.size(); ++step) {
        if (!way[step].named)
            continue;
        form += "/" + prefix + way[step].name;
        prefix.clear();
    }
    return form;
}

} // namespace

std::optional<NodeRequest> MakeRequest(const Instance &instance, const Place &place)
{
    std::vector<WayStep> way = WayTo(place);
    if (!way.back().named)
        return std::nullopt;
    ModuleKey top = KeyOf(instance, way.front().module);
    ModuleKey module = KeyOf(instance, way.back().module);
    std::string form = module.name != top.name ? AugmentForm(instance, way, module) : "";
    if (!form.empty())
        return NodeRequest{module, PlainPath(place), form};
    return NodeRequest{top, PlainPath(place), OwnForm(way, Prefixes(instance.Schema()).Of(top.name))};
}

std::optional<NodeRequest> MakeHolderRequest(const Instance &instance, const Place &leaf)
{
    Place holder = {leaf.augment, OrdinaryAt(*leaf.node), nullptr};
    if (holder.node == nullptr)
        return std::nullopt;
    if (std::strcmp(leaf.leaf->pcModuleName, holder.node->pcModuleName) != 0) {
        /* The holder is another module's, but only this module's copy of it is sure to have the leaf. */
        NodeRequest request = *MakeRequest(instance, leaf);
        request.path = PlainPath(holder);
        return request;
    }
    return MakeRequest(instance, holder);
}

const KorvTreeNode *Ask(const Instance &instance, const NodeRequest &request)
{
    if (instance.Find(request.module) == nullptr)
        return nullptr;
    YangPathRequest ask = request.ForLibrary();
    YangXpathLookup lookup = {instance.Local(), ask.pcModuleName, ask.pcRevision, ask.pcPath, ask.pcXpathMain, 0, 0};
    const KorvTreeNode *node = TELMYANG_KorvFindTreeNodeByXpath(&lookup);
    if (node != nullptr)
        return node;
    return TELMYANG_KorvFindTreeNodeByLeafXpath(instance.Local(), ask.pcModuleName, ask.pcRevision, ask.pcPath,
                                                ask.pcXpathMain);
}

} // namespace inspect
