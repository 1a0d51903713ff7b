/* Paths of leafrefs: RFC 7950, 9.9. They are parsed with the type and followed when the schema is complete. */
#pragma once

#include "build/build.h"

namespace qxyang {

/* Parses a path statement. Null: the failure is recorded. */
const LeafrefPath *ParseLeafrefPath(Build &build, Unit &unit, const Statement *path);

/* Puts the leafrefs in the leaf's type on the list of those that ResolveLeafrefs follows. A failure names the
 * statement. */
void AwaitTargets(Build &build, QY_NODE *leaf, Unit &unit, const Statement *statement);

/* Finds what each leafref of the load refers to, and refuses cycles. */
void ResolveLeafrefs(LoadState &load);

} // namespace qxyang
