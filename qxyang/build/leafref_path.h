/* Paths of leafrefs: parsed with the type, followed once the schema is complete. */
#pragma once

#include "build/build.h"

namespace qxyang {

/* Parses a path statement. Null: the failure is recorded. */
const LeafrefPath *ParseLeafrefPath(Build &build, Unit &unit, const Statement *path);

/* Remembers what the leaf's type refers to until the load is otherwise complete. A failure names the statement. */
void AwaitTargets(Build &build, QY_NODE *leaf, Unit &unit, const Statement *statement);

/* Finds what every pending leafref of the load refers to and refuses cycles. */
void ResolveLeafrefs(LoadState &load);

/* Whether a deviation removed the node or one above it. */
bool IsRemoved(const QY_NODE *node);

} // namespace qxyang
