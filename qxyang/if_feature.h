/* if-feature: expressions over features, compiled when a module is built and evaluated when somebody asks. */
#pragma once

#include "build.h"

namespace qxyang {

/* Compiles all if-feature statements directly in a statement and puts them in front of a list. Wrong ones are recorded
 * and left out. */
const Condition *conditionsOf(Build &build, Unit &unit, const Statement *statement, const Condition *list = nullptr);

/* Compiles the conditions of the module's own features and refuses cycles. */
void compileFeatures(Build &build);

bool holds(const Condition *condition);

/* Node conditions are kept by their number, since few nodes have one. */
inline const Condition *conditionOf(const QY_NODE *node)
{
    return node->condition == 0 ? nullptr : node->module->conditions[node->condition - 1];
}

void setCondition(QY_NODE *node, const Condition *condition);

}  // namespace qxyang
