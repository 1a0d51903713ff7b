#include <map>
#include <new>
#include <utility>
#include <vector>

#include "base/text.h"
#include "check/yang/node_rules.h"

namespace inspect {
namespace {

struct LostTargets {
    std::vector<QXYANG_LOST_TARGET_S> all;
    std::map<std::pair<const QXYANG_FILE *, uint32_t>, size_t> leafrefs; /* how many a deviate statement affects */
};

/* Exceptions do not cross the schema library. */
uint32_t OnLost(const QXYANG_LOST_TARGET_S *lost, void *cookie)
try {
    auto &found = *static_cast<LostTargets *>(cookie);
    found.all.push_back(*lost);
    ++found.leafrefs[{lost->stDeviate.pstFile, lost->stDeviate.uiStatement}];
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

std::string OthersText(size_t leafrefs)
{
    return leafrefs > 1 ? " and " + Count(leafrefs - 1, "other") : "";
}

/* A module that deviates hears of it at its deviate statement, any other at the leafref. */
void ReportLost(NodeCheck &check, const QXYANG_LOST_TARGET_S &lost, size_t leafrefs)
{
    QXYANG_ORIGIN_S leaf = OriginOf(lost.pLeaf);
    std::string from = DataPath(lost.pLeaf);
    std::string to = DataPath(lost.pTarget);
    if (check.IsOwn(lost.stDeviate))
        check.Report("removed-leafref-target",
                     "the deviation leaves out '" + to + "', to which leafref '" + from + "'" + OthersText(leafrefs) +
                         (leafrefs > 1 ? " refer" : " refers") + check.SeeText(leaf),
                     {lost.stDeviate});
    else
        check.Report("removed-leafref-target",
                     "leafref '" + from + "' refers to '" + to + "', which a deviation leaves out",
                     {lost.stDeviate, leaf, UsesOf(lost.pLeaf)});
}

} // namespace

void CheckRemovedTargets(NodeCheck &check, const QY_CTX *schema)
{
    LostTargets found;
    if (QXYANG_ScanLostTargets(schema, OnLost, &found) != 0)
        throw std::bad_alloc();
    for (const QXYANG_LOST_TARGET_S &lost : found.all)
        ReportLost(check, lost, found.leafrefs[{lost.stDeviate.pstFile, lost.stDeviate.uiStatement}]);
}

} // namespace inspect
