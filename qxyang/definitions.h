/* Named definitions: where they are registered and how references find them. */
#pragma once

#include "build.h"

namespace qxyang {

/* Registers the typedefs, groupings, identities, features and extensions that stand directly in the module's files. */
void collectDefinitions(Build &build);

/* Registers the typedefs and groupings directly in a statement: a new scope, or the outer one when there are none. */
Scope *scopeOf(Build &build, const Statement *statement, Scope *outer);

/* The identities' bases, and no cycles among them. */
void checkIdentities(Build &build);

/* What a reference refers to, or null: the failure is recorded. */
Typedef *findTypedef(Build &build, Scope *scope, const Statement *type);
Grouping *findGrouping(Build &build, Scope *scope, const Statement *uses);
Identity *findIdentity(Build &build, Unit &unit, const Statement *base);

}  // namespace qxyang
