/* The very nodes that are at fault when the library refuses a module: it names them, and the schema knows where they are
 * and what is wrong with them. */
#pragma once

#include <string>
#include <vector>

#include <korv_platform.h>
#include "model/message_text.h"

namespace inspect {

/* Leaves with an attribute id but no datatype-id, of this built-in type (0: leafrefs that lead nowhere), in the classes
 * of that name. */
std::vector<QY_NODE *> LeavesWithoutDatatype(QY_MOD *module, const std::string &node, uint32_t type);

/* Lists with more keys than the library takes. */
std::vector<QY_NODE *> ListsWithTooManyKeys(QY_MOD *module);

/* Classes that name more ancestor keys than the library takes. */
std::vector<QY_NODE *> ClassesWithTooManyAncestorKeys(QY_MOD *module);

/* The first augment of the module that is one too many, or null. */
QY_NODE *SurplusAugment(QY_MOD *module);

/* The nodes that the explanation may mean, the likeliest only: the module's own rather than others, and those that have
 * the statement that it quotes. */
std::vector<QY_NODE *> NodesMeant(QY_MOD *module, const Explanation &why);

} // namespace inspect
