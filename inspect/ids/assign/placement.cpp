#include "ids/assign/placement.h"

#include "model/schema_scan.h"

namespace inspect::ids {

Placement::Placement(const Survey &survey) : survey_(survey)
{
    for (const SurveyNode &node : survey.Nodes())
        if (node.own.file != nullptr)
            ++counts_[node.own];
    const std::vector<LoadedModule> &modules = survey.Models().Modules();
    for (uint32_t i = 0; i < modules.size(); ++i)
        for (const SourceFile &source : modules[i].files)
            modules_.emplace(source.file, i);
}

bool Placement::IsOwnFile(const SurveyNode &node, const QXYANG_FILE *file) const
{
    auto found = modules_.find(file);
    return found != modules_.end() && found->second == node.module;
}

bool Placement::IsShared(uint32_t index) const
{
    auto found = counts_.find(survey_.At(index).own);
    return found != counts_.end() && found->second > 1;
}

/* Nodes of groupings belong to the module that uses them: no step needs a prefix. */
std::string Placement::PathFromUses(uint32_t index) const
{
    Spot uses = survey_.At(index).uses;
    std::string path;
    QY_NODE *node = survey_.At(index).node;
    do {
        path.insert(0, path.empty() ? NameOf(node) : NameOf(node) + "/");
        QXYANG_NODE_DETAILS_S details = {};
        node = QY_NODE_GetParentNode(node);
        if (node == nullptr || QXYANG_GetNodeDetails(node, &details) != 0 || details.stUses.pstFile != uses.file ||
            details.stUses.uiStatement != uses.statement)
            return path;
    } while (true);
}

std::optional<Target> Placement::Of(uint32_t index) const
{
    const SurveyNode &node = survey_.At(index);
    if (IsOwnFile(node, node.own.file) && !IsShared(index))
        return Target{node.own, ""};
    if (node.uses.file != nullptr && IsOwnFile(node, node.uses.file))
        return Target{node.uses, PathFromUses(index)};
    return std::nullopt;
}

} // namespace inspect::ids
