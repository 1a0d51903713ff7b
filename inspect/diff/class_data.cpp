#include "diff/class_data.h"

#include <cstring>

namespace inspect::diff {

ClassData::ClassData(const Instance &instance, const ModuleFile &file) : module_(file.pcModuleName)
{
    SchemaNodes schema(instance, file);
    Read(&schema, Chain(file.pstOriginTree), std::nullopt);
    for (uint32_t i = 0; i < file.ucAugmentNum; ++i)
        Read(&schema, Chain(file.astAugment[i].pstTargetTree), i);
}

void ClassData::Read(SchemaNodes *schema, Chain chain, std::optional<uint32_t> augment)
{
    for (const KorvTreeNode &node : chain) {
        if (IsOrdinary(node))
            ReadNode(schema, node, augment);
        Read(schema, Children(node), augment);
    }
}

void ClassData::ReadNode(SchemaNodes *schema, const KorvTreeNode &node, std::optional<uint32_t> augment)
{
    if (!augment || std::strcmp(node.pcModuleName, module_) == 0)
        if (QY_NODE *found = schema->Of({augment, &node, nullptr}))
            nodes_.emplace(found, &node);
    for (const VEC_VECTOR_S *list : {node.pstLeafList, node.pstCaseLeafList})
        for (const KorvTreeLeaf &leaf : Leaves(list))
            if (!augment || std::strcmp(leaf.pcModuleName, module_) == 0)
                leaves_.emplace(leaf.pYinNode, &leaf);
}

const KorvTreeNode *ClassData::NodeOf(QY_NODE *node) const
{
    auto found = nodes_.find(node);
    return found != nodes_.end() ? found->second : nullptr;
}

const KorvTreeLeaf *ClassData::LeafOf(QY_NODE *node) const
{
    auto found = leaves_.find(node);
    return found != leaves_.end() ? found->second : nullptr;
}

} // namespace inspect::diff
