#include "check/yang/removed_targets.h"

#include <new>
#include <set>

#include "base/text.h"

namespace inspect {
namespace {

std::string OthersText(size_t leafrefs)
{
    return leafrefs > 1 ? " and " + Count(leafrefs - 1, "other") : "";
}

} // namespace

/* Exceptions do not cross the schema library. */
uint32_t LostTargets::OnLost(const QXYANG_LOST_TARGET_S *lost, void *targets)
try {
    static_cast<std::vector<Target> *>(targets)->push_back({*lost, {}, {}});
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

LostTargets::LostTargets(const QY_CTX *schema)
{
    if (QXYANG_ScanLostTargets(schema, OnLost, &targets_) != 0)
        throw std::bad_alloc();
    for (size_t i = 0; i < targets_.size(); ++i) {
        Target &target = targets_[i];
        target.leaf = OriginOf(target.lost.pLeaf);
        target.uses = UsesOf(target.lost.pLeaf);
        ++leafrefs_[{target.lost.stDeviate.pstFile, target.lost.stDeviate.uiStatement}];
        for (const QXYANG_ORIGIN_S *origin : {&target.lost.stDeviate, &target.leaf, &target.uses})
            if (origin->pcFile != nullptr)
                in_[origin->pcFile].push_back(i);
    }
}

/* A module that deviates hears of it at its deviate statement, any other at the leafref. */
void LostTargets::ReportOne(NodeCheck &check, const Target &target) const
{
    const QXYANG_ORIGIN_S &deviate = target.lost.stDeviate;
    size_t leafrefs = leafrefs_.at({deviate.pstFile, deviate.uiStatement});
    std::string from = DataPath(target.lost.pLeaf);
    std::string to = DataPath(target.lost.pTarget);
    if (check.IsOwn(deviate))
        check.Report("removed-leafref-target",
                     "the deviation leaves out '" + to + "', to which leafref '" + from + "'" + OthersText(leafrefs) +
                         (leafrefs > 1 ? " refer" : " refers") + check.SeeText(target.leaf),
                     {deviate});
    else
        check.Report("removed-leafref-target",
                     "leafref '" + from + "' refers to '" + to + "', which a deviation leaves out",
                     {deviate, target.leaf, target.uses});
}

void LostTargets::Report(NodeCheck &check) const
{
    std::set<size_t> own;
    for (const std::string &path : check.OwnFiles())
        if (auto found = in_.find(path); found != in_.end())
            own.insert(found->second.begin(), found->second.end());
    for (size_t index : own)
        ReportOne(check, targets_[index]);
}

} // namespace inspect
