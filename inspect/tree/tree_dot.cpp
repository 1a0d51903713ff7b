/* Class trees as a graph for Graphviz: a box a node, classes bold, choices and cases dashed. */
#include <cstdio>

#include "model/trees.h"
#include "tree/own_rows.h"
#include "tree/tree_rows.h"
#include "tree/tree_view.h"

namespace inspect {
namespace {

class DotOut {
  public:
    explicit DotOut(const TreeView &view) : view_(view) {}

    void Write()
    {
        std::printf("digraph \"%s\" {\n  rankdir=LR;\n  node [shape=box, fontname=\"monospace\"];\n",
                    view_.module.c_str());
        Part(view_.origin);
        for (const AugmentView &augment : view_.augments)
            Augment(augment);
        std::printf("}\n");
    }

  private:
    void Part(const TreePart &part)
    {
        for (const KorvTreeNode &node : Chain(part.first)) {
            Tree(node, view_.depth);
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
        uint32_t above = 0;
        const KorvTreeNode *target = way.missing.empty() ? way.nodes.back() : nullptr;
        for (const KorvTreeNode *step : way.nodes) {
            // A way has no absent steps. NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker)
            uint32_t number = Box(*step, step == target ? LeafLines(added.leaves) : "");
            if (step != way.nodes.front())
                Edge(above, number);
            above = number;
        }
        if (target == nullptr)
            return;
        for (const KorvTreeNode *node : added.nodes)
            Edge(above, Tree(*node, view_.depth));
    }

    /* Draws the node and those below it; the node's number in the graph. */
    uint32_t Tree(const KorvTreeNode &node, uint32_t depth)
    {
        std::string leaves;
        for (const KorvTreeLeaf &leaf : Leaves(node.pstLeafList))
            if (view_.own == nullptr || view_.own->Shows(leaf))
                leaves += LeafLine(leaf);
        uint32_t number = Box(node, leaves);
        if (depth == 1)
            return number;
        for (const KorvTreeNode &child : Children(node))
            if (view_.own == nullptr || view_.own->Shows(child))
                Edge(number, Tree(child, depth == 0 ? 0 : depth - 1));
        return number;
    }

    uint32_t Box(const KorvTreeNode &node, const std::string &leaves)
    {
        std::string label = node.pcName;
        std::string summary = NodeSummary(node);
        if (!summary.empty())
            label += "\\n" + summary;
        if (!leaves.empty())
            label += "\\n\\n" + leaves;
        const char *style = !IsOrdinary(node) ? "dashed" : node.uiClassId != 0 ? "bold" : "solid";
        std::printf("  n%u [style=%s, label=\"%s\"];\n", next_, style, label.c_str());
        return next_++;
    }

    static void Edge(uint32_t from, uint32_t to) { std::printf("  n%u -> n%u;\n", from, to); }

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
    uint32_t next_ = 0;
};

} // namespace

void WriteTreeDot(const TreeView &view)
{
    DotOut(view).Write();
}

} // namespace inspect
