/* Questions to the schema that the class trees do not answer. */
#ifndef KORV_INSPECT_SCHEMA_QUESTIONS_H
#define KORV_INSPECT_SCHEMA_QUESTIONS_H

#include <string>
#include <vector>

#include "korv_platform.h"

namespace inspect {

/* Arguments of the leaf's or node's statements of the extension module with this keyword, in their order. */
std::vector<std::string> ExtensionArguments(QY_NODE *node, const std::string &keyword);

/* The type that a leaf's values have, with leafrefs followed to their end; null when a target is missing. */
QY_TYPE *FinalType(QY_NODE *leaf);

/* Names of the leaves with an attribute id but no datatype-id, of this built-in type at the end of all leafrefs, in the
 * module's nodes of that name. */
std::vector<std::string> LeavesWithoutDatatype(QY_MOD *module, const std::string &node, uint32_t type);

/* Names of the module's lists with more keys than the library takes. */
std::vector<std::string> ListsWithTooManyKeys(QY_MOD *module);

/* Names of the module's top nodes that are no containers but hold or are classes: the library gives them no tree. */
std::vector<std::string> ClassesWithoutTree(QY_MOD *module);

} // namespace inspect

#endif // KORV_INSPECT_SCHEMA_QUESTIONS_H
