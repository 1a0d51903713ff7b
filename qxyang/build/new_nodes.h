/* New schema nodes. A load that would need too many of them, or too deep ones, ends here. */
#pragma once

#include "build/site.h"

namespace qxyang {

/* Appends a node to the parent; a failure names the statement. A node that needs no case of its own in a choice gets
 * one of its name. */
QY_NODE *AppendNode(Build &build, const Statement *statement, const Site &site, QY_NODE *parent, uint8_t kind,
                    const char *name);

/* Gives a new node extension instances, which it may share with many others. */
void ShowExtensions(Build &build, const Statement *statement, const Site &site, QY_NODE *node, const ExtensionSet *set);

[[noreturn]] void FailDepth(Build &build, const Statement *statement, Unit &unit);

/* Ends the load when the nodes at the site would be too deep. */
inline void CheckDepth(Build &build, const Statement *statement, const Site &site)
{
    if (site.depth > limits::SCHEMA_DEPTH)
        FailDepth(build, statement, site.File());
}

} // namespace qxyang
