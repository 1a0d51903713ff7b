#include "model/class_model.h"

#include <unordered_set>

namespace inspect {
namespace {

class Collector {
  public:
    explicit Collector(const ModuleFile &file) : module_(file.pcModuleName) {}

    void Add(Chain chain, std::optional<uint32_t> augment, const std::string &path, const std::string &key)
    {
        for (const KorvTreeNode &node : chain) {
            std::string nodePath = path + "/" + node.pcName;
            std::string nodeKey = key + "/" + node.pcModuleName + ":" + node.pcName;
            if (known_.insert(nodeKey).second)
                nodes.push_back({{augment, &node, nullptr}, nodePath, module_ == node.pcModuleName});
            Add(Children(node), augment, nodePath, nodeKey);
        }
    }

    std::vector<ModelNode> nodes;

  private:
    std::string module_;
    std::unordered_set<std::string> known_;
};

} // namespace

std::vector<ModelNode> NodesOf(const ModuleFile &file)
{
    Collector collector(file);
    collector.Add(Chain(file.pstOriginTree), std::nullopt, "", "");
    for (uint32_t i = 0; i < file.ucAugmentNum; ++i)
        collector.Add(Chain(file.astAugment[i].pstTargetTree), i, "", "");
    return std::move(collector.nodes);
}

bool IsClass(const KorvTreeNode &node)
{
    return IsOrdinary(node) && node.uiClassId != 0;
}

const KorvTreeNode *ClassAbove(const KorvTreeNode &node)
{
    const KorvTreeNode *above = node.pstParent;
    while (above != nullptr && !IsClass(*above))
        above = above->pstParent;
    return above;
}

const KorvTreeNode &ClassTop(const KorvTreeNode &node)
{
    const KorvTreeNode *top = &node;
    for (const KorvTreeNode *above = ClassAbove(*top); above != nullptr && above->uiClassId == top->uiClassId;
         above = ClassAbove(*top))
        top = above;
    return *top;
}

} // namespace inspect
