#include "check/class_trees.h"

#include <set>
#include <string>

#include "model/schema_scan.h"
#include "model/trees.h"

namespace inspect {
namespace {

std::string KeyOf(const KorvTreeNode &top)
{
    return std::string(top.pcModuleName) + ":" + top.pcName;
}

/* The top of the tree that an augment adds to. The containers behind it in the target tree are shown without their
 * statements: their own module has them right. Null when no tree begins there. */
const KorvTreeNode *TopOfTarget(const TELMYANG_AUGMENT_INFO_S &augment)
{
    QY_NODE *target = augment.pAugNode != nullptr ? QY_NODE_GetAugmentTargetNode(augment.pAugNode) : nullptr;
    if (target == nullptr || augment.pstTargetTree == nullptr)
        return nullptr;
    QY_NODE *top = TopOf(target);
    const KorvTreeNode *first = augment.pstTargetTree;
    return NameOf(top) == first->pcName && std::string(ModuleNameOf(top)) == first->pcModuleName ? first : nullptr;
}

} // namespace

std::vector<ClassTree> TreesOf(const std::vector<const ModuleFile *> &files)
{
    std::vector<ClassTree> trees;
    std::set<std::string> known;
    for (const ModuleFile *file : files)
        for (const KorvTreeNode &top : Chain(file->pstOriginTree)) {
            known.insert(KeyOf(top));
            trees.push_back({file, std::nullopt, &top});
        }
    for (const ModuleFile *file : files)
        for (uint32_t i = 0; i < file->ucAugmentNum; ++i) {
            const KorvTreeNode *top = TopOfTarget(file->astAugment[i]);
            if (top != nullptr && known.insert(KeyOf(*top)).second)
                trees.push_back({file, i, top});
        }
    return trees;
}

} // namespace inspect
