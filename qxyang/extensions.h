/* Extension statements: which extension they are of, and what is kept of them. */
#pragma once

#include "build.h"

namespace qxyang {

/* Finds the definition of every extension keyword that the module's files use. */
void resolveExtensionUses(Build &build);

/* The extension statements directly in a statement, those nested in them included; null: there are none. */
const ExtensionSet *extensionsOf(Build &build, Unit &unit, const Statement *statement);

/* Both sets in one, the first one's instances first; either may be null. */
const ExtensionSet *joinedSets(Arena &arena, const ExtensionSet *first, const ExtensionSet *second);

/* A copy in one block that depends on nothing but the context; null stays null. */
OwnedSet copyOfSet(const ExtensionSet *set);

}  // namespace qxyang
