/* Extension statements: RFC 7950, 6.3.1 and 7.19. Which extension each of them is of, and the instances made of
 * them. */
#pragma once

#include "build/build.h"

namespace qxyang {

/* Finds the definition of every extension keyword that the module's files use. */
void ResolveExtensionUses(Build &build);

/* Instances of the extension statements directly in a statement, with those nested in them; null: there are none. */
const ExtensionSet *ExtensionsOf(Build &build, Unit &unit, const Statement *statement);

/* One set with the instances of all these sets, in their order. Null stands for an empty set. */
const ExtensionSet *JoinedSets(Arena &arena, const std::vector<const ExtensionSet *> &sets);

/* What refines make of a node's instances: those of each set take the place of all that the sets before it have of the same
 * extensions. The first set is the node's, or null; none of the others is. */
const ExtensionSet *RefinedSet(Arena &arena, const std::vector<const ExtensionSet *> &sets);

/* A copy in one block, which needs the context and no module; null for null. */
OwnedSet CopyOfSet(const ExtensionSet *set);

} // namespace qxyang
