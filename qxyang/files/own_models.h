/* The models that are installed with this layer. */
#pragma once

#include <string>

namespace qxyang {

/* The directory of the installed models. It is found from where this library lies, so that an installed tree may be
 * moved. Empty if there is no such directory, as in a build tree. */
std::string OwnModelDirectory();

} // namespace qxyang
