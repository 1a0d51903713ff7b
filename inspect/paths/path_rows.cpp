#include "paths/path_rows.h"

#include <array>
#include <new>

#include "model/schema_scan.h"
#include "model/trees.h"

namespace inspect {
namespace {

/* By QXYANG_STATUS_ value. */
constexpr std::array<const char *, 3> STATUS_NAMES = {"current", "deprecated", "obsolete"};

} // namespace

PathRow PathRowReader::Read(const PathNode &node)
{
    QXYANG_NODE_DETAILS_S details = {};
    if (QXYANG_GetNodeDetails(node.node, &details) != 0)
        throw std::bad_alloc();
    PathRow row = {};
    row.node = &node;
    row.module = ModuleNameOf(node.node);
    row.kind = KindOf(node.node);
    row.isConfig = details.uiIsConfig != 0;
    row.status = STATUS_NAMES.at(details.uiStatus);
    row.where = files_.Of(details.stStatement);
    if (details.pcDescription != nullptr)
        row.description = diff::Smoothed(details.pcDescription);
    if (node.IsLeaf()) {
        row.type = types_.Of(node.node);
        row.isKey = node.IsKey();
        row.units = details.pcUnits;
        row.defaults = diff::DefaultsOf(node.node);
    } else if (node.place.node != nullptr) {
        row.selfKeys = KeyIds(node.place.node->aucSelfNodeKey);
        row.ancestorKeys = KeyIds(node.place.node->aucAncestorKey);
    }
    return row;
}

} // namespace inspect
