/* Definitions that have names, and how references find them. */
#pragma once

#include "build/build.h"

namespace qxyang {

/* Registers the typedefs, groupings, identities, features and extensions that stand directly in the module's files. */
void CollectDefinitions(Build &build);

/* The scope of a statement: a new one with the typedefs and groupings directly in it, or the outer one if it has
 * none. */
Scope *ScopeOf(Build &build, const Statement *statement, Scope *outer);

/* Checks that the bases of the module's identities exist and form no cycles. */
void CheckIdentities(Build &build);

/* What a reference refers to: RFC 7950, 5.4 and 5.5. Null: the failure is recorded. */
Typedef *FindTypedef(Build &build, Scope *scope, const Statement *type);
Grouping *FindGrouping(Build &build, Scope *scope, const Statement *uses);
Identity *FindIdentity(Build &build, Unit &unit, const Statement *base);

} // namespace qxyang
