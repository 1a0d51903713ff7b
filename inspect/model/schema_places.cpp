#include "model/schema_places.h"

#include <algorithm>

#include "model/schema_scan.h"

namespace inspect {
namespace {

/* The path of the leaf's own type; "" when a typedef has it. */
std::string LeafrefPath(QY_NODE *leaf, YinFiles *files)
{
    const std::optional<Position> position = FindStatement(leaf, files);
    if (!position)
        return "";
    for (const YinStatement *child : position->statement->children) {
        if (child->Is("type"))
            return std::string(ChildArgument(*child, "path"));
    }
    return "";
}

} // namespace

std::vector<WayStep> WayTo(QY_NODE *node)
{
    std::vector<WayStep> way;
    for (; node != nullptr; node = QY_NODE_GetParentNode(node)) {
        const uint32_t type = QY_NODE_GetNodeType(node);
        const char *name = QY_NODE_GetNodeName(node);
        way.push_back({name != nullptr ? name : "", ModuleNameOf(node),
                       type != QY_NODE_TYPE_CHOICE && type != QY_NODE_TYPE_CASE});
    }
    std::reverse(way.begin(), way.end());
    return way;
}

std::optional<Position> FindStatement(QY_NODE *node, YinFiles *files)
{
    QY_MOD *module = QY_NODE_GetModule(node);
    return StatementFinder(QY_MOD_GetModuleName(module), QY_MOD_GetRevision(module), files).Find(WayTo(node));
}

std::string DataPath(QY_NODE *node)
{
    std::string path;
    for (const WayStep &step : WayTo(node)) {
        if (step.named)
            path.append("/").append(step.name);
    }
    return path;
}

std::string BrokenLeafrefText(QY_NODE *leaf, YinFiles *files)
{
    if (LeadsThroughTooMany(leaf))
        return "leads through more than " + std::to_string(MAX_LEAFREF_HOPS) + " leafrefs";
    QY_NODE *broken = BrokenLeafref(leaf);
    if (broken == nullptr)
        return "";
    const std::string path = LeafrefPath(broken, files);
    const std::string quoted = path.empty() ? "" : " '" + path + "'";
    const std::string which = broken == leaf ? "is a leafref" : "leads to the leafref " + DataPath(broken) + ",";
    if (path.find("deref") != std::string::npos)
        return which + " whose path" + quoted + " cannot be followed";
    return which + " whose target" + quoted + " is not found (a deviation may have removed it)";
}

} // namespace inspect
