/* The rules of YANG for the nodes that a module defines: what no single statement shows, and no load refuses. */
#pragma once

#include <vector>

#include "check/yang/node_check.h"

namespace inspect {

class LostTargets;

/* Checks all nodes and augments of the module. */
std::vector<Finding> CheckNodes(QY_CTX *schema, QY_MOD *module, Places *places, const LostTargets &lost);

/* The rules, by what they look at. Each takes any node of the kinds that the table in node_rules.cpp has for it. */
void CheckDefaults(NodeCheck &check, QY_NODE *leaf);
void CheckLeafref(NodeCheck &check, QY_NODE *leaf);
void CheckKeys(NodeCheck &check, QY_NODE *list);
void CheckUnique(NodeCheck &check, QY_NODE *list);
void CheckDefaultCase(NodeCheck &check, QY_NODE *node);
void CheckListsAbove(NodeCheck &check, QY_NODE *operation);
void CheckExpressions(NodeCheck &check, QY_NODE *node);
void CheckMandatoryAugment(NodeCheck &check, QY_NODE *augment);

void CheckAugmentCondition(NodeCheck &check, QY_NODE *augment);

} // namespace inspect
