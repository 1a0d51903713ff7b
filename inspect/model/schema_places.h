/* From a node of the schema to its statement. */
#ifndef KORV_INSPECT_SCHEMA_PLACES_H
#define KORV_INSPECT_SCHEMA_PLACES_H

#include <optional>
#include <string>

#include <korv_platform.h>
#include "model/statement_finder.h"

namespace inspect {

/* The way from its module's top, choices and cases included. */
std::vector<WayStep> WayTo(QY_NODE *node);

/* Where the node's statement stands, in whichever module. */
std::optional<Position> FindStatement(QY_NODE *node, YinFiles *files);

/* "/sys/ports/port", choices and cases left out. */
std::string DataPath(QY_NODE *node);

/* What is wrong with a leafref leaf that has no final type, to follow its name: "is a leafref whose target is not found
 * (...)", or "leads through more than 64 leafrefs". "" for any other leaf. */
std::string BrokenLeafrefText(QY_NODE *leaf, YinFiles *files);

} // namespace inspect

#endif // KORV_INSPECT_SCHEMA_PLACES_H
