/* Where the enum statements of an enumeration leaf stand. */
#pragma once

#include <map>
#include <string>

#include "model/schema_places.h"

namespace inspect {

/* By name. Leafrefs and typedefs are followed: of several types that have enum statements, the leaf's nearest one restricts
 * the others. */
std::map<std::string, Position> EnumPlaces(QY_NODE *leaf, Places *places);

} // namespace inspect
