/* The models that are installed with this layer. */
#pragma once

#include <string>

namespace qxyang {

/* The directory of the installed models, found from where this library lies, so that an installed tree may be moved. Empty
 * when there is none, as in a build tree. */
std::string OwnModelDirectory();

} // namespace qxyang
