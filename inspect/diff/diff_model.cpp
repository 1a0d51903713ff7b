#include "diff/diff_model.h"

#include <cstring>

#include "model/class_model.h"
#include "model/trees.h"

namespace inspect {
namespace {

std::string KeyAbove(const KorvTreeNode &node)
{
    const KorvTreeNode *above = node.pstParent;
    while (above != nullptr && !IsOrdinary(*above))
        above = above->pstParent;
    return above != nullptr ? QualifiedPath({std::nullopt, above, nullptr}) : "";
}

DiffNode ToNode(const Place &place)
{
    const KorvTreeNode &node = *place.node;
    return {QualifiedPath(place),
            KeyAbove(node),
            DataPath(node),
            node.uiClassId,
            node.uiSampleId,
            KeyIds(node.aucSelfNodeKey),
            KeyIds(node.aucAncestorKey)};
}

DiffLeaf ToLeaf(const Place &place)
{
    const KorvTreeLeaf &leaf = *place.leaf;
    DiffLeaf diff = {};
    diff.key = QualifiedPath(place);
    diff.above = QualifiedPath({place.augment, place.node, nullptr});
    diff.path = PlainPath(place);
    diff.classId = leaf.uiClassId;
    diff.fieldId = leaf.uiFieldId;
    diff.dataType = leaf.uiDataType;
    diff.indexMap = leaf.uiName2IdKeyFid;
    diff.referenceKey = leaf.uiRefIdKeyFid;
    diff.isList = QY_NODE_GetNodeType(leaf.pYinNode) == QY_NODE_TYPE_LEAF_LIST;
    diff.type = TypeName(leaf);
    diff.range = IntegerRange::Of(leaf.pYinNode); /* the library's record has the last part of some types only */
    diff.enums = EnumValues(leaf);
    return diff;
}

void AddLeaves(const ModelNode &node, const char *module, std::vector<DiffLeaf> *leaves)
{
    Place place = node.place;
    for (const VEC_VECTOR_S *list : {place.node->pstLeafList, place.node->pstCaseLeafList}) {
        for (const KorvTreeLeaf &leaf : Leaves(list)) {
            if (place.augment && std::strcmp(leaf.pcModuleName, module) != 0)
                continue;
            place.leaf = &leaf;
            leaves->push_back(ToLeaf(place));
        }
    }
}

} // namespace

DiffModel MakeDiffModel(const Instance &instance, const ModuleFile &file)
{
    const char *revision = instance.Revision(file.pcModuleName);
    DiffModel model = {revision != nullptr ? revision : "",
                       file.pModuleExtInfo != nullptr ? file.pModuleExtInfo->uiAaaTaskId : 0,
                       {},
                       {}};
    for (const ModelNode &node : NodesOf(file)) {
        if (!IsOrdinary(*node.place.node))
            continue;
        if (node.own || !node.place.augment)
            model.nodes.push_back(ToNode(node.place));
        AddLeaves(node, file.pcModuleName, &model.leaves);
    }
    return model;
}

} // namespace inspect
