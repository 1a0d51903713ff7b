#pragma once

#include "tree.h"

namespace korv_python {

/* Names of the built-in types and kinds of nodes, as korv-inspect writes them. */
const char *TypeName(const KorvTreeLeaf &leaf);
const char *KindName(const KorvTreeNode &node);
/* The used entries of a list of keys. */
py::tuple Keys(const uint8_t (&keys)[NODE_KEY_LIST_NUM]);
/* Bounds of the unsigned types that have a range, or None. */
py::object Range(const KorvTreeLeaf &leaf);
/* Names and values of an enumeration. */
py::dict EnumValues(const Leaf &leaf);

/* A dict for each leaf of the module. */
void AddRows(const ModulePtr &module, py::list *rows);
/* The library's dump of the module's own tree: a dict for each node. */
py::list Dump(const LoadedModule &module);

} // namespace korv_python
