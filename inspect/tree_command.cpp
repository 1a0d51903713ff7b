/* tree: a module's class trees. */
#include "commands.h"
#include "instance.h"
#include "tree_view.h"

namespace inspect {
namespace {

TreeView ViewOf(const Instance &instance, const ModuleFile &file, const Arguments &args)
{
    TreeView view = {};
    view.module = file.pcModuleName;
    view.revision = instance.Revision(view.module);
    view.taskId = file.pModuleExtInfo != nullptr ? file.pModuleExtInfo->uiAaaTaskId : 0;
    view.depth = args.depth;
    view.full = args.full;
    view.whole = true;
    view.origin.first = file.pstOriginTree;
    for (uint32_t i = 0; i < file.ucAugmentNum; ++i) {
        const TELMYANG_AUGMENT_INFO_S &augment = file.astAugment[i];
        view.augments.push_back({i, augment.acAugNodeName, {augment.pstSelfTree, true}, {augment.pstTargetTree, true}});
    }
    return view;
}

}  // namespace

int RunTree(const Arguments &args)
{
    Instance instance(args.dirs, args.verbose);
    LoadRequested(&instance, args);
    const TreeView view = ViewOf(instance, Loaded(instance, args.modules.front()), args);
    if (args.format == Format::JSON)
        WriteTreeJson(view);
    else if (args.format == Format::DOT)
        WriteTreeDot(view);
    else
        WriteTreeText(view);
    return 0;
}

}  // namespace inspect
