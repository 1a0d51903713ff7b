#include "tree/own_rows.h"

#include "model/trees.h"

namespace inspect {
namespace {

std::string PathOf(const std::vector<const KorvTreeNode *> &way)
{
    std::string path;
    for (const KorvTreeNode *node : way)
        path.append("/").append(node->pcName);
    return path;
}

/* The leaves of the node and of the choices and cases in it. */
template <class Visit>
void ForEachCaseLeaf(const KorvTreeNode &node, const Visit &visit)
{
    for (const KorvTreeLeaf &leaf : Leaves(node.pstLeafList))
        visit(leaf);
    for (const KorvTreeNode &child : Children(node))
        if (!IsOrdinary(child))
            ForEachCaseLeaf(child, visit);
}

} // namespace

OwnRows::OwnRows(const TreeView &view) : module_(view.module)
{
    std::vector<const KorvTreeNode *> targets;
    for (const AugmentView &augment : view.augments) {
        TargetWay way = WayToTarget(augment);
        if (way.nodes.empty() || !way.missing.empty())
            continue;
        added_[PathOf(way.nodes)].insert(augment.added.begin(), augment.added.end());
        targets.push_back(way.nodes.back());
    }
    SchemaLeaves unused;
    for (const KorvTreeNode &top : Chain(view.origin.first))
        Look(top, std::string("/") + top.pcName, &unused);
    for (const KorvTreeNode *target : targets) {
        std::string path = PathOf(FromTop(*target));
        for (const KorvTreeNode &child : Children(*target))
            if (IsOwn(child.pcModuleName) && added_[path].contains(child.pcName))
                Look(child, path + "/" + child.pcName, &unused);
    }
}

/* Finds what is hidden below a node that is shown. `inCases` receives the hidden leaves of cases. */
void OwnRows::Look(const KorvTreeNode &node, const std::string &path, SchemaLeaves *inCases)
{
    auto here = added_.find(path);
    auto isAdded = [&](const char *module, const char *name) {
        return here != added_.end() && IsOwn(module) && here->second.contains(name);
    };
    SchemaLeaves own;
    SchemaLeaves *hidden = IsOrdinary(node) ? &own : inCases;
    for (const KorvTreeLeaf &leaf : Leaves(node.pstLeafList))
        if (isAdded(leaf.pcModuleName, leaf.pcName)) {
            hidden_.insert(&leaf);
            hidden->insert(leaf.pYinNode);
        }
    for (const KorvTreeNode &child : Children(node))
        if (isAdded(child.pcModuleName, child.pcName))
            Hide(child, hidden);
        else if (IsOwn(child.pcModuleName))
            Look(child, path + "/" + child.pcName, hidden);
    for (const KorvTreeLeaf &leaf : Leaves(node.pstCaseLeafList))
        if (own.contains(leaf.pYinNode))
            hidden_.insert(&leaf);
}

void OwnRows::Hide(const KorvTreeNode &node, SchemaLeaves *inCases)
{
    hidden_.insert(&node);
    if (!IsOrdinary(node))
        ForEachCaseLeaf(node, [&](const KorvTreeLeaf &leaf) { inCases->insert(leaf.pYinNode); });
}

uint64_t OwnRows::CountBelow(const KorvTreeNode &node) const
{
    uint64_t count = 0;
    for (const KorvTreeNode &child : Children(node))
        count += Shows(child) ? 1 + CountBelow(child) : 0;
    return count;
}

Additions AdditionsOf(const TreeView &view, const AugmentView &augment)
{
    Additions added;
    TargetWay way = WayToTarget(augment);
    if (way.nodes.empty() || !way.missing.empty()) {
        for (const KorvTreeNode &node : Chain(augment.self.first))
            added.nodes.push_back(&node);
        return added;
    }
    const KorvTreeNode *target = way.nodes.back();
    std::unordered_set<const void *> inCases;
    auto note = [&](const KorvTreeLeaf &leaf) { inCases.insert(leaf.pYinNode); };
    for (const KorvTreeLeaf &leaf : Leaves(target->pstLeafList))
        if (IsAdded(view, augment, leaf.pcName, leaf.pcModuleName)) {
            added.leaves.push_back(&leaf);
            if (!IsOrdinary(*target))
                note(leaf);
        }
    for (const KorvTreeNode &child : Children(*target))
        if (IsAdded(view, augment, child.pcName, child.pcModuleName)) {
            added.nodes.push_back(&child);
            if (!IsOrdinary(child))
                ForEachCaseLeaf(child, note);
        }
    const KorvTreeNode *holder = target;
    while (holder != nullptr && !IsOrdinary(*holder))
        holder = holder->pstParent;
    for (const KorvTreeLeaf &leaf : Leaves(holder != nullptr ? holder->pstCaseLeafList : nullptr))
        if (inCases.contains(leaf.pYinNode))
            added.caseLeaves.push_back(&leaf);
    return added;
}

} // namespace inspect
