/* The registry with what the models say. */
#pragma once

#include "ids/comparison.h"

namespace inspect::ids {

/* What the models have is in the result, and what they have no more is reserved. */
Registry Locked(const Sides &sides);

} // namespace inspect::ids
