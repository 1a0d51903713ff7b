/* Class trees as a graph for Graphviz: a box a node, classes bold, choices and cases dashed. */
#include <optional>
#include <string>

#include "model/trees.h"
#include "tree/own_rows.h"
#include "tree/tree_rows.h"
#include "tree/tree_view.h"

namespace inspect {
namespace {

class DotOut {
  public:
    explicit DotOut(const TreeView &view) : view_(view) {}

    std::string Graph()
    {
        text_ = "digraph \"" + view_.module + "\" {\n  rankdir=LR;\n  node [shape=box, fontname=\"monospace\"];\n";
        Part(view_.origin);
        for (const AugmentView &augment : view_.augments)
            Augment(augment);
        return text_ + "}\n";
    }

  private:
    using Above = std::optional<uint32_t>; /* the number of the box above, if there is one */

    void Part(const TreePart &part)
    {
        for (const KorvTreeNode &node : Chain(part.first)) {
            Tree(node, {}, view_.depth);
            if (!part.withSiblings)
                break;
        }
    }

    /* As in the text: the way to the target and what the module has added there, or the whole target tree. */
    void Augment(const AugmentView &augment)
    {
        TargetWay way = view_.whole && !view_.full ? WayToTarget(augment) : TargetWay();
        if (way.nodes.empty()) {
            Part(augment.targetTree.first != nullptr && view_.own == nullptr ? augment.targetTree : augment.self);
            return;
        }
        Additions added = AdditionsOf(view_, augment);
        Above above;
        const KorvTreeNode *target = way.missing.empty() ? way.nodes.back() : nullptr;
        for (const KorvTreeNode *step : way.nodes)
            // A way has no absent steps. NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker)
            above = Box(*step, step == target ? LeafLines(added.leaves) : "", above);
        if (target == nullptr)
            return;
        for (const KorvTreeNode *node : added.nodes)
            Tree(*node, above, view_.depth);
    }

    /* Draws the node and those below it. */
    void Tree(const KorvTreeNode &node, const Above &above, uint32_t depth)
    {
        std::string leaves;
        for (const KorvTreeLeaf &leaf : Leaves(node.pstLeafList))
            if (view_.own == nullptr || view_.own->Shows(leaf))
                leaves += LeafLine(leaf);
        Above box = Box(node, leaves, above);
        bool isShown = box != above;
        if (depth == 1 && isShown)
            return;
        for (const KorvTreeNode &child : Children(node))
            if (view_.own == nullptr || view_.own->Shows(child))
                Tree(child, box, depth == 0 || !isShown ? depth : depth - 1);
    }

    /* The number of the node's box; that of the box above where the node is not to be seen. */
    Above Box(const KorvTreeNode &node, const std::string &leaves, const Above &above)
    {
        bool isClass = IsOrdinary(node) && node.uiClassId != 0;
        if (view_.classes && !isClass)
            return above;
        std::string label = node.pcName;
        std::string summary = NodeSummary(node);
        if (!summary.empty())
            label += "\\n" + summary;
        if (!leaves.empty() && !view_.classes)
            label += "\\n\\n" + leaves;
        const char *style = !IsOrdinary(node) ? "dashed" : isClass ? "bold" : "solid";
        std::string number = std::to_string(next_);
        text_ += "  n" + number + " [style=" + style + ", label=\"" + label + "\"];\n";
        if (above)
            text_ += "  n" + std::to_string(*above) + " -> n" + number + ";\n";
        return next_++;
    }

    static std::string LeafLines(const std::vector<const KorvTreeLeaf *> &leaves)
    {
        std::string text;
        for (const KorvTreeLeaf *leaf : leaves)
            text += LeafLine(*leaf);
        return text;
    }

    /* Left-justified, in the language of labels. */
    static std::string LeafLine(const KorvTreeLeaf &leaf)
    {
        std::string line = leaf.ucIsKey != 0 ? "* " : "- ";
        line += leaf.pcName;
        if (Has(leaf, KORV_MASK_FIELD_ID))
            line += "  " + std::to_string(leaf.uiFieldId);
        return line + "  " + TypeName(leaf) + "\\l";
    }

    const TreeView &view_;
    std::string text_;
    uint32_t next_ = 0;
};

} // namespace

std::string TreeDot(const TreeView &view)
{
    return DotOut(view).Graph();
}

} // namespace inspect
