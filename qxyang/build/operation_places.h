/* Where actions and notifications may stand: RFC 7950, 7.15 and 7.16. */
#pragma once

#include "build/build.h"

namespace qxyang {

/* Checks an action or notification that its own statement made. The grammar has judged the statement around it. */
void CheckOperationPlace(Build &build, const Statement *statement, const QY_NODE *node, Unit &unit);

/* The same of a copy that a uses made of a grouping's node. What is wrong within the grouping was told there. */
void CheckCopiedOperation(Build &build, const Statement *uses, const QY_NODE *copy, const QY_NODE *from, Unit &unit);

} // namespace qxyang
