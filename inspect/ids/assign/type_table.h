/* Datatypes for leaves whose type has none by default. */
#pragma once

#include <map>
#include <optional>
#include <string>

#include "ids/assign/model_set.h"

namespace inspect::ids {

/* "union", "identityref"; "leafref" for a leafref that leads nowhere. */
std::string TypeNameOf(QY_NODE *leaf);

/* What has to be written for a leaf: "" when its type has a datatype by default, nothing when it needs one and the table has
 * no entry. The nearest typedef that the table has counts, then the built-in type. */
std::optional<std::string> DatatypeFor(QY_NODE *leaf, const std::map<std::string, std::string> &table);

/* Why an entry of the table for MODULE:TYPEDEF has no effect on these models; "" when it may have one, as those of modules that
 * are not loaded. */
std::string TypeFault(const ModelSet &models, const std::string &type);

/* True if the word is a type that needs an entry, or could be a typedef's name. */
bool IsTableType(const std::string &word);

} // namespace inspect::ids
