/* Paths of leafrefs: RFC 7950, 9.9. They are parsed with the type and followed when the schema is complete. */
#pragma once

#include <functional>

#include "build/build.h"

namespace qxyang {

/* Parses a path statement. Null: the failure is recorded. */
const LeafrefPath *ParseLeafrefPath(Build &build, Unit &unit, const Statement *path);

/* Puts the leafrefs in the leaf's type on the list of those that ResolveLeafrefs follows. A failure names the
 * statement. */
void AwaitTargets(Build &build, QY_NODE *leaf, Unit &unit, const Statement *statement);

/* Finds what each leafref of the load refers to, and refuses cycles. A node that a deviation removed is found as well: no
 * reader sees it as a target, and it is one again when the deviation's module goes. */
void ResolveLeafrefs(LoadState &load);

/* A leafref whose target a deviation removed. */
struct LostTarget {
    QY_NODE *leaf;
    const LeafrefPath *path;
    QY_NODE *target;
    QY_NODE *removed; /* the target, or the nearest node above it that a deviation removed */
};
using LostTargetVisitor = std::function<uint32_t(const LostTarget &)>;

/* Visits the leafrefs of all modules, those within unions included, until a call returns another value than 0, which is
 * the result. Leafs that a deviation removed count no more. */
uint32_t VisitLostTargets(const QY_CTX &context, const LostTargetVisitor &visit);

} // namespace qxyang
