/* expat's memory, taken from operator new like everything else of this layer. */
#pragma once

#include <expat.h>

namespace qxyang {

extern const XML_Memory_Handling_Suite XML_MEMORY;

} // namespace qxyang
