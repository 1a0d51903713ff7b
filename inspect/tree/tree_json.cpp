/* Class trees as JSON. */
#include "base/json_out.h"
#include "model/trees.h"
#include "tree/tree_view.h"

namespace inspect {
namespace {

void WriteLeaves(JsonOut *out, const char *name, const VEC_VECTOR_S *leaves)
{
    out->Key(name);
    out->Array();
    for (const KorvTreeLeaf &leaf : Leaves(leaves))
        WriteLeafJson(out, leaf);
    out->EndArray();
}

void WritePart(JsonOut *out, const char *name, const TreePart &part, uint32_t depth)
{
    out->Key(name);
    out->Array();
    for (const KorvTreeNode &node : Chain(part.first)) {
        WriteNodeJson(out, node, depth);
        if (!part.withSiblings)
            break;
    }
    out->EndArray();
}

} // namespace

void WriteLeafJson(JsonOut *out, const KorvTreeLeaf &leaf)
{
    out->Object();
    out->Member("name", leaf.pcName);
    out->Member("module", leaf.pcModuleName);
    out->Member("key", leaf.ucIsKey != 0);
    out->Member("base_type", TypeName(leaf));
    out->Member("mask", leaf.ucMask);
    out->Member("class_id", leaf.uiClassId);
    out->Member("field_id", leaf.uiFieldId);
    out->Member("data_type", leaf.uiDataType);
    out->Member("ref_id_key_fid", leaf.uiRefIdKeyFid);
    out->Member("name2id_key_fid", leaf.uiName2IdKeyFid);
    out->Key("range");
    out->Range(leaf.llRangeMin, leaf.llRangeMax);
    out->EndObject();
}

void WriteNodeJson(JsonOut *out, const KorvTreeNode &node, uint32_t depth)
{
    out->Object();
    out->Member("name", node.pcName);
    out->Member("module", node.pcModuleName);
    out->Member("kind", KindName(node));
    out->Member("class_id", node.uiClassId);
    out->Member("sample_id", node.uiSampleId);
    out->Key("self_keys");
    out->Numbers(KeyIds(node.aucSelfNodeKey));
    out->Key("ancestor_keys");
    out->Numbers(KeyIds(node.aucAncestorKey));
    WriteLeaves(out, "leaves", node.pstLeafList);
    WriteLeaves(out, "case_leaves", node.pstCaseLeafList);
    out->Key("children");
    out->Array();
    if (depth != 1)
        for (const KorvTreeNode &child : Children(node))
            WriteNodeJson(out, child, depth == 0 ? 0 : depth - 1);
    out->EndArray();
    out->EndObject();
}

void WriteTreeJson(JsonOut *out, const TreeView &view)
{
    out->Object();
    out->Member("module", view.module);
    out->Member("revision", view.revision);
    out->Key("task_id");
    if (view.taskId != 0)
        out->Value(view.taskId);
    else
        out->Null();
    WritePart(out, "origin", view.origin, view.depth);
    out->Key("augments");
    out->Array();
    for (const AugmentView &augment : view.augments) {
        out->Object();
        out->Member("target", augment.target);
        WritePart(out, "self", augment.self, view.depth);
        WritePart(out, "target_tree", augment.targetTree, view.depth);
        out->EndObject();
    }
    out->EndArray();
    out->EndObject();
}

} // namespace inspect
