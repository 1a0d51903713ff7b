#include "tree/tree_json.h"

#include "model/trees.h"
#include "tree/own_rows.h"

namespace inspect {

void TreeJson::WriteLeaves(const char *name, const VEC_VECTOR_S *leaves)
{
    out_.Key(name);
    out_.Array();
    for (const KorvTreeLeaf &leaf : Leaves(leaves))
        if (own_ == nullptr || own_->Shows(leaf))
            Write(leaf);
    out_.EndArray();
}

void TreeJson::WritePart(const char *name, const TreePart &part, uint32_t depth)
{
    out_.Key(name);
    out_.Array();
    for (const KorvTreeNode &node : Chain(part.first)) {
        if (own_ == nullptr || own_->Shows(node))
            WriteNode(node, depth);
        if (!part.withSiblings)
            break;
    }
    out_.EndArray();
}

void TreeJson::Write(const KorvTreeLeaf &leaf)
{
    out_.Object();
    out_.Member("name", leaf.pcName);
    out_.Member("module", leaf.pcModuleName);
    out_.Member("key", leaf.ucIsKey != 0);
    out_.Member("base_type", TypeName(leaf));
    out_.Member("mask", leaf.ucMask);
    out_.Member("class_id", leaf.uiClassId);
    out_.Member("field_id", leaf.uiFieldId);
    out_.Member("data_type", leaf.uiDataType);
    out_.Member("ref_id_key_fid", leaf.uiRefIdKeyFid);
    out_.Member("name2id_key_fid", leaf.uiName2IdKeyFid);
    out_.Key("range");
    if (HasRange(leaf))
        out_.Range(leaf.llRangeMin, leaf.llRangeMax);
    else
        out_.Null();
    WritePlace(&out_, places_.Of({std::nullopt, nullptr, &leaf}));
    out_.EndObject();
}

void TreeJson::Write(const KorvTreeNode &node, const std::optional<uint32_t> &augment, uint32_t depth)
{
    augment_ = augment;
    WriteNode(node, depth);
}

void TreeJson::WriteNode(const KorvTreeNode &node, uint32_t depth)
{
    out_.Object();
    out_.Member("name", node.pcName);
    out_.Member("module", node.pcModuleName);
    out_.Member("kind", KindName(node));
    out_.Member("class_id", node.uiClassId);
    out_.Member("sample_id", node.uiSampleId);
    out_.Key("self_keys");
    out_.Numbers(KeyIds(node.aucSelfNodeKey));
    out_.Key("ancestor_keys");
    out_.Numbers(KeyIds(node.aucAncestorKey));
    WritePlace(&out_, places_.Of({augment_, &node, nullptr}));
    WriteLeaves("leaves", node.pstLeafList);
    WriteLeaves("case_leaves", node.pstCaseLeafList);
    TreePart below = {depth != 1 ? node.pstFirstChild : nullptr, true};
    WritePart("children", below, depth == 0 ? 0 : depth - 1);
    out_.EndObject();
}

/* What the augment adds, in the place of its trees: the nodes as `self`, and the leaves directly below its target. Leaves of
 * cases come once more as the target's class has them, with its class id. */
void TreeJson::WriteAdditions(const TreeView &view, const AugmentView &augment)
{
    Additions added = AdditionsOf(view, augment);
    out_.Key("self");
    out_.Array();
    for (const KorvTreeNode *node : added.nodes)
        WriteNode(*node, view.depth);
    out_.EndArray();
    out_.Key("target_tree");
    out_.Array();
    out_.EndArray();
    for (const auto &[name, leaves] :
         {std::pair("leaves", &added.leaves), std::pair("case_leaves", &added.caseLeaves)}) {
        out_.Key(name);
        out_.Array();
        for (const KorvTreeLeaf *leaf : *leaves)
            Write(*leaf);
        out_.EndArray();
    }
}

void TreeJson::WriteAugment(const TreeView &view, const AugmentView &augment)
{
    augment_ = augment.index;
    out_.Object();
    out_.Member("target", augment.target);
    WritePlace(&out_, places_.OfAugment(augment.index));
    if (own_ != nullptr) {
        WriteAdditions(view, augment);
    } else {
        WritePart("self", augment.self, view.depth);
        WritePart("target_tree", augment.targetTree, view.depth);
    }
    out_.EndObject();
}

void TreeJson::Write(const TreeView &view)
{
    own_ = view.own.get();
    augment_ = std::nullopt;
    out_.Object();
    out_.Member("module", view.module);
    out_.Member("revision", view.revision);
    out_.NumberOrNull("task_id", view.taskId);
    WritePlace(&out_, places_.OfModule());
    WritePart("origin", view.origin, view.depth);
    out_.Key("augments");
    out_.Array();
    for (const AugmentView &augment : view.augments)
        WriteAugment(view, augment);
    out_.EndArray();
    out_.EndObject();
}

} // namespace inspect
