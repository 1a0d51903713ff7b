/* if-feature: expressions over features, compiled when a module is built, evaluated when a reader asks. */
#pragma once

#include "build/build.h"

namespace qxyang {

/* Compiles all if-feature statements directly in a statement and puts them in front of a list. A wrong one is left
 * out, and its failure is recorded. */
const Condition *ConditionsOf(Build &build, Unit &unit, const Statement *statement, const Condition *list = nullptr);

/* Compiles the conditions of the module's features, and refuses cycles. */
void CompileFeatures(Build &build);

/* True if all expressions of the list hold; null is an empty list. */
bool Holds(const Condition *condition);

} // namespace qxyang
