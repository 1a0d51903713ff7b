#include "tree/tree_view.h"

#include <string_view>

namespace inspect {
namespace {

/* The names of a target path without their prefixes. */
std::vector<std::string_view> NamesOf(std::string_view target)
{
    std::vector<std::string_view> names;
    while (!target.empty()) {
        if (target.front() == '/')
            target.remove_prefix(1);
        std::string_view step = target.substr(0, target.find('/'));
        target.remove_prefix(step.size());
        names.push_back(step.substr(step.find(':') + 1));
    }
    return names;
}

} // namespace

TargetWay WayToTarget(const AugmentView &augment)
{
    TargetWay way;
    const KorvTreeNode *first = augment.targetTree.first;
    for (const std::string_view name : NamesOf(augment.target)) {
        const KorvTreeNode *found = first;
        while (found != nullptr && name != found->pcName)
            found = found->pstNextSibling;
        if (found == nullptr) {
            way.missing = name;
            break;
        }
        way.nodes.push_back(found);
        first = found->pstFirstChild;
    }
    return way;
}

bool IsAdded(const TreeView &view, const AugmentView &augment, const char *name, const char *module)
{
    return view.module == module && augment.added.contains(name);
}

} // namespace inspect
