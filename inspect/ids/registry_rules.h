/* What every registry keeps to. */
#pragma once

#include <string>

#include "ids/registry.h"

namespace inspect::ids {

struct RegistryFault {
    uint32_t line = 0; /* 0: none */
    std::string text;  /* "": nothing is wrong */
};

/* The first contradiction in a sorted registry. */
RegistryFault FaultOf(const Registry &registry);

/* True if the second path leads through the first one, or is the same. */
bool IsAtOrBelow(const std::string &above, const std::string &path);

} // namespace inspect::ids
