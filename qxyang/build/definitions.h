/* Named definitions: where they are registered and how references find them. */
#pragma once

#include "build/build.h"

namespace qxyang {

/* Registers the typedefs, groupings, identities, features and extensions that stand directly in the module's files. */
void CollectDefinitions(Build &build);

/* Registers the typedefs and groupings directly in a statement: a new scope, or the outer one when there are none. */
Scope *ScopeOf(Build &build, const Statement *statement, Scope *outer);

/* The identities' bases, and no cycles among them. */
void CheckIdentities(Build &build);

/* What a reference refers to, or null: the failure is recorded. */
Typedef *FindTypedef(Build &build, Scope *scope, const Statement *type);
Grouping *FindGrouping(Build &build, Scope *scope, const Statement *uses);
Identity *FindIdentity(Build &build, Unit &unit, const Statement *base);

} // namespace qxyang
