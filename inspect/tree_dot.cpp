/* Class trees as a graph for Graphviz: a box a node, choices and cases dashed. */
#include <cstdio>

#include "model.h"
#include "text.h"
#include "tree_rows.h"
#include "tree_view.h"

namespace inspect {
namespace {

class DotOut {
  public:
    void Part(const TreePart &part, uint32_t depth)
    {
        for (const KorvTreeNode &node : Chain(part.first)) {
            Node(node, depth);
            if (!part.withSiblings)
                break;
        }
    }

  private:
    static std::string Label(const KorvTreeNode &node)
    {
        std::string label = node.pcName;
        const std::string summary = NodeSummary(node);
        if (!summary.empty())
            label += "\\n" + summary;
        const Leaves leaves(node.pstLeafList);
        if (leaves.Size() != 0)
            label += "\\n\\n";
        for (const KorvTreeLeaf &leaf : leaves) {
            const char *type = TypeName(leaf.ucBaseType);
            label += leaf.ucIsKey != 0 ? "* " : "- ";
            label += leaf.pcName;
            if (Has(leaf, KORV_MASK_FIELD_ID))
                label += "  " + std::to_string(leaf.uiFieldId);
            label += std::string("  ") + (type != nullptr ? type : "?") + "\\l";
        }
        return label;
    }

    /* Writes the node and those below it; the node's number in the graph. */
    uint32_t Node(const KorvTreeNode &node, uint32_t depth)
    {
        const uint32_t number = next_++;
        const char *style = IsOrdinary(node) ? (node.uiClassId != 0 ? "bold" : "solid") : "dashed";
        std::printf("  n%u [style=%s, label=\"%s\"];\n", number, style, Label(node).c_str());
        if (depth == 1)
            return number;
        for (const KorvTreeNode &child : Children(node))
            std::printf("  n%u -> n%u;\n", number, Node(child, depth == 0 ? 0 : depth - 1));
        return number;
    }

    uint32_t next_ = 0;
};

}  // namespace

void WriteTreeDot(const TreeView &view)
{
    std::printf("digraph \"%s\" {\n  rankdir=LR;\n  node [shape=box, fontname=\"monospace\"];\n", view.module.c_str());
    DotOut out;
    out.Part(view.origin, view.depth);
    for (const AugmentView &augment : view.augments) {
        if (view.full || augment.targetTree.first == nullptr || !view.whole) {
            out.Part(augment.targetTree.first != nullptr ? augment.targetTree : augment.self, view.depth);
            continue;
        }
        out.Part(augment.self, view.depth);
    }
    std::printf("}\n");
}

}  // namespace inspect
