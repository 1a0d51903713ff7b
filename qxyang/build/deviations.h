/* Deviation statements. */
#pragma once

#include "build/tree_builder.h"

namespace qxyang {

/* Applies the module's deviations in statement order. */
void ApplyDeviations(Build &build, TreeBuilder &builder);

} // namespace qxyang
