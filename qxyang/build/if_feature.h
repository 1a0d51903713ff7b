/* if-feature: expressions over features, compiled when a module is built and evaluated when somebody asks. */
#pragma once

#include "build/build.h"

namespace qxyang {

/* Compiles all if-feature statements directly in a statement and puts them in front of a list. Wrong ones are recorded
 * and left out. */
const Condition *ConditionsOf(Build &build, Unit &unit, const Statement *statement, const Condition *list = nullptr);

/* Compiles the conditions of the module's own features and refuses cycles. */
void CompileFeatures(Build &build);

bool Holds(const Condition *condition);

} // namespace qxyang
