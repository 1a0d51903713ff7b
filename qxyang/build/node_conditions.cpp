#include "build/node_conditions.h"

namespace qxyang {

namespace {

bool IsGated(const QY_NODE *node)
{
    return (node->flags & NODE_GATED) != 0;
}

/* Marks the node and those below it; `isAboveGated` tells of what stands above the node. */
void MarkBelow(QY_NODE *top, bool isAboveGated)
{
    auto all = [](const QY_NODE *) { return true; };
    for (QY_NODE *node = top; node != nullptr; node = NextBelow(top, node, all))
        if (node->condition != 0 || (node == top ? isAboveGated : IsGated(node->parent)))
            node->flags |= NODE_GATED;
}

} // namespace

void SetCondition(QY_NODE *node, const Condition *condition)
{
    if (condition == nullptr)
        return;
    node->module->conditions.push_back(condition);
    node->condition = static_cast<uint32_t>(node->module->conditions.size());
}

void AddConditions(QY_NODE *node, const Condition *conditions)
{
    if (const Condition *list = ConditionOf(node))
        conditions = node->module->records.Make<Condition>(list, conditions);
    SetCondition(node, conditions);
}

void MarkGated(QY_MOD &module)
{
    if (!module.conditions.empty())
        MarkBelow(&module.root, false);
    for (QY_NODE *augment : module.augments) {
        bool isAugmentGated = IsGated(AugmentTarget(augment)) || augment->condition != 0;
        if (isAugmentGated)
            augment->flags |= NODE_GATED;
        if (augment->first == nullptr || (module.conditions.empty() && !isAugmentGated))
            continue;
        for (QY_NODE *child = augment->first;; child = child->next) {
            MarkBelow(child, isAugmentGated);
            if (child == augment->last)
                break;
        }
    }
}

} // namespace qxyang
