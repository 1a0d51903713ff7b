/* Extension statements: which extension they are of, and what is kept of them. */
#pragma once

#include "build/build.h"

namespace qxyang {

/* Finds the definition of every extension keyword that the module's files use. */
void ResolveExtensionUses(Build &build);

/* The extension statements directly in a statement, those nested in them included; null: there are none. */
const ExtensionSet *ExtensionsOf(Build &build, Unit &unit, const Statement *statement);

/* All sets in one, in their order; any may be null. */
const ExtensionSet *JoinedSets(Arena &arena, const std::vector<const ExtensionSet *> &sets);

/* A copy in one block that depends on nothing but the context; null stays null. */
OwnedSet CopyOfSet(const ExtensionSet *set);

} // namespace qxyang
