/* How a host asks the library for a node: the two path forms, derived from where the node stands. */
#ifndef KORV_INSPECT_NODE_REQUEST_H
#define KORV_INSPECT_NODE_REQUEST_H

#include <optional>
#include <string>

#include "model/path_finder.h"

namespace inspect {

struct NodeRequest {
    ModuleKey module; /* the one to ask: the module that defines the node, be it by an augment */
    std::string path;
    std::string xpathMain;

    YangPathRequest ForLibrary() const
    {
        return {module.name.c_str(), module.revision.c_str(), path.c_str(), xpathMain.c_str()};
    }
};

/* None for a choice or case, which no path names. */
std::optional<NodeRequest> MakeRequest(const Instance &instance, const Place &place, YinFiles *files);

/* The request for a leaf's holder, where the leaf itself is out of the library's reach: the paths find a leaf of a case,
 * or one that an augment adds to a node with children, by way of its holder only. */
NodeRequest MakeHolderRequest(const Instance &instance, const Place &leaf, YinFiles *files);

/* The library's answer to a request: the node, or the holder of the leaf that it names; null when it finds none, or the
 * module to ask is not loaded. */
const KorvTreeNode *Ask(const Instance &instance, const NodeRequest &request);

} // namespace inspect

#endif // KORV_INSPECT_NODE_REQUEST_H
