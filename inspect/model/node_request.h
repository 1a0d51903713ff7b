/* How a host asks the library for a node: the two path forms, derived from where the node stands. */
#pragma once

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

/* Nothing for a choice or case: no path names these. */
std::optional<NodeRequest> MakeRequest(const Instance &instance, const Place &place);

/* The request for the node that holds the leaf. The library finds a leaf of a case, and one that an augment adds to a node
 * with children, only through that node: the one around the choice when the leaf is in a case's own list alone. Nothing when no node is around it. */
std::optional<NodeRequest> MakeHolderRequest(const Instance &instance, const Place &leaf);

/* The library's answer to a request: the node, or the holder of the leaf that it names; null when it finds none, or the
 * module to ask is not loaded. */
const KorvTreeNode *Ask(const Instance &instance, const NodeRequest &request);

} // namespace inspect
