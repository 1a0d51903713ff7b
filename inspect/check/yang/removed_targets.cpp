#include "check/yang/node_rules.h"

namespace inspect {
namespace {

/* A module that deviates hears of it at its deviate statement, any other at the leafref. */
uint32_t ReportLost(const QXYANG_LOST_TARGET_S *lost, void *cookie)
{
    NodeCheck &check = *static_cast<NodeCheck *>(cookie);
    QXYANG_ORIGIN_S leaf = OriginOf(lost->pLeaf);
    std::string from = DataPath(lost->pLeaf);
    std::string to = DataPath(lost->pTarget);
    if (check.IsOwn(lost->stDeviate))
        check.Report(
            "removed-leafref-target",
            "the deviation leaves out '" + to + "', to which leafref '" + from + "' refers" + check.SeeText(leaf),
            {lost->stDeviate});
    else
        check.Report("removed-leafref-target",
                     "leafref '" + from + "' refers to '" + to + "', which a deviation leaves out",
                     {lost->stDeviate, leaf, UsesOf(lost->pLeaf)});
    return 0;
}

} // namespace

void CheckRemovedTargets(NodeCheck &check, const QY_CTX *schema)
{
    (void)QXYANG_ScanLostTargets(schema, ReportLost, &check);
}

} // namespace inspect
