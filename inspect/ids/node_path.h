/* How the registry names a node: the path in data, with a module's name where it is another one than above. */
#pragma once

#include <korv_platform.h>

#include <string>
#include <string_view>

namespace inspect::ids {

/* "/m:sys/ports/other:port", choices and cases left out: a leaf that moves into a case keeps its path. */
std::string PathOf(QY_NODE *node);

/* The module that defines the node: the last one that the path names. */
std::string_view ModuleOfPath(std::string_view path);

} // namespace inspect::ids
