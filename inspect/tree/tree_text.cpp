/* Class trees as text. */
#include <cstdio>
#include <cstring>

#include "model/trees.h"
#include "tree/own_rows.h"
#include "tree/tree_rows.h"
#include "tree/tree_view.h"

namespace inspect {
namespace {

void AddPart(TreeRows *rows, const TreePart &part, uint32_t indent, uint32_t depth)
{
    for (const KorvTreeNode &node : Chain(part.first)) {
        rows->AddTree(node, indent, depth);
        if (!part.withSiblings)
            break;
    }
}

/* The way to the target and what the module has added there. */
bool AddAdditions(TreeRows *rows, const TreeView &view, const AugmentView &augment)
{
    TargetWay way = WayToTarget(augment);
    if (way.nodes.empty())
        return false;
    uint32_t indent = 1;
    for (const KorvTreeNode *step : way.nodes)
        rows->AddNode(*step, indent++);
    if (!way.missing.empty()) {
        rows->AddText("... what it adds is in no tree: none holds '" + way.missing + "'", indent);
        return true;
    }
    Additions added = AdditionsOf(view, augment);
    for (const KorvTreeLeaf *leaf : added.leaves)
        rows->AddLeaf(*leaf, indent);
    for (const KorvTreeNode *node : added.nodes)
        rows->AddTree(*node, indent, view.depth);
    return true;
}

void AddAugment(TreeRows *rows, const TreeView &view, const AugmentView &augment)
{
    rows->AddText("", 0);
    rows->AddText("augment " + std::to_string(augment.index) + " of " + augment.target, 0);
    if (augment.targetTree.first == nullptr && augment.self.first == nullptr) {
        rows->AddText("no tree: what it adds stands in no container", 1);
        return;
    }
    if (view.whole && !view.full && AddAdditions(rows, view, augment))
        return;
    if (augment.targetTree.first != nullptr && view.own == nullptr)
        AddPart(rows, augment.targetTree, 1, view.depth);
    else
        AddPart(rows, augment.self, 1, view.depth);
}

std::string Heading(const TreeView &view)
{
    std::string text = "module " + view.module;
    if (view.revision != nullptr)
        text += std::string(", revision ") + view.revision;
    if (view.taskId != 0)
        text += ", task id " + std::to_string(view.taskId);
    return text + "\n";
}

} // namespace

void WriteTreeText(const TreeView &view)
{
    std::fputs(Heading(view).c_str(), stdout);
    TreeRows rows(view.module, view.paint, view.own.get());
    if (view.whole || view.origin.first != nullptr)
        rows.AddText("", 0);
    AddPart(&rows, view.origin, 0, view.depth);
    if (view.whole && view.origin.first == nullptr)
        rows.AddText("no tree of its own: no container stands at the module's top", 0);
    for (const AugmentView &augment : view.augments)
        AddAugment(&rows, view, augment);
    rows.Print();
}

} // namespace inspect
