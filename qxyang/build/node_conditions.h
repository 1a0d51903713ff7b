/* Conditions of nodes: their if-feature statements, and those of the uses and augments that brought them. */
#pragma once

#include "schema/model.h"

namespace qxyang {

/* Conditions are kept by their number, since few nodes have one. Null: the node has none. */
inline const Condition *ConditionOf(const QY_NODE *node)
{
    return node->condition == 0 ? nullptr : node->module->conditions[node->condition - 1];
}

/* Gives the node these conditions instead of its own; null changes nothing. */
void SetCondition(QY_NODE *node, const Condition *condition);

/* Puts conditions in front of those that the node has. */
void AddConditions(QY_NODE *node, const Condition *conditions);

/* Marks the module's nodes, and those that its augments added, that have a condition or stand below a node that has. */
void MarkGated(QY_MOD &module);

} // namespace qxyang
