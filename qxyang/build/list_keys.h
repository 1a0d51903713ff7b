/* Keys and unique statements of lists. */
#pragma once

#include "build/build.h"

namespace qxyang {

/* Marks the keys of a list that has all its children, and checks its unique statements. */
void SetKeys(Build &build, const Statement *statement, QY_NODE *list, Unit &unit);

} // namespace qxyang
