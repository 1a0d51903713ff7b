#include "ids/assign/placement.h"

#include "model/schema_scan.h"

namespace inspect::ids {

Placement::Placement(const Survey &survey) : survey_(survey)
{
    auto note = [](std::vector<bool> *statements, uint32_t index) {
        if (statements->size() <= index)
            statements->resize(index + size_t{1});
        bool isNew = !(*statements)[index];
        (*statements)[index] = true;
        return isNew;
    };
    for (const SurveyNode &node : survey.Nodes())
        if (node.own.file != nullptr && !note(&once_[node.own.file], node.own.statement))
            (void)note(&again_[node.own.file], node.own.statement);
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
    Spot own = survey_.At(index).own;
    auto found = again_.find(own.file);
    return found != again_.end() && own.statement < found->second.size() && found->second[own.statement];
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
