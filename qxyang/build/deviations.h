/* Deviation statements: RFC 7950, 7.20.3. */
#pragma once

#include "build/constraints.h"
#include "build/types.h"

namespace qxyang {

/* Applies the module's deviations in statement order. */
void ApplyDeviations(Build &build, TypeCompiler &types, ConstraintChecker &constraints);

} // namespace qxyang
