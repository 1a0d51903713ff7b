/* tree: a module's class trees. */
#include "commands.h"
#include "instance.h"
#include "load_causes.h"
#include "path_finder.h"
#include "schema_scan.h"
#include "tree_view.h"

namespace inspect {
namespace {

TreeView EmptyView(const Instance &instance, const ModuleFile &file, const Arguments &args)
{
    TreeView view = {};
    view.module = file.pcModuleName;
    view.revision = instance.Revision(view.module);
    view.taskId = file.pModuleExtInfo != nullptr ? file.pModuleExtInfo->uiAaaTaskId : 0;
    view.depth = args.depth;
    view.full = args.full;
    return view;
}

/* Everything that the module has. */
TreeView WholeView(const Instance &instance, const ModuleFile &file, const Arguments &args)
{
    TreeView view = EmptyView(instance, file, args);
    view.whole = true;
    view.origin.first = file.pstOriginTree;
    for (uint32_t i = 0; i < file.ucAugmentNum; ++i) {
        const TELMYANG_AUGMENT_INFO_S &augment = file.astAugment[i];
        view.augments.push_back({i, augment.acAugNodeName, {augment.pstSelfTree, true}, {augment.pstTargetTree, true}});
        ForEachChild(augment.pAugNode, [&view](QY_NODE *added) { view.augments.back().added.insert(NameOf(added)); });
    }
    return view;
}

/* The node at --path, or the one that holds the leaf there. */
TreeView PathView(const Instance &instance, const ModuleFile &file, const Arguments &args)
{
    YinFiles files(args.dirs);
    const Place place = PathFinder(file, &files).Require(args.path);
    const TreePart part = {place.node, false};
    TreeView view = EmptyView(instance, file, args);
    if (place.augment)
        view.augments.push_back({*place.augment, file.astAugment[*place.augment].acAugNodeName, {}, part});
    else
        view.origin = part;
    return view;
}

} // namespace

int RunTree(const Arguments &args)
{
    Instance instance(args.dirs, args.verbose);
    LoadRequested(&instance, args);
    const ModuleFile &file = Loaded(instance, args.modules.front());
    const TreeView view = args.path.empty() ? WholeView(instance, file, args) : PathView(instance, file, args);
    if (args.format == Format::JSON)
        WriteTreeJson(view);
    else if (args.format == Format::DOT)
        WriteTreeDot(view);
    else
        WriteTreeText(view);
    return 0;
}

} // namespace inspect
