#include "model/schema_places.h"

#include <new>
#include <vector>

#include "model/instance.h"
#include "model/schema_scan.h"
#include "model/statements.h"

namespace inspect {
namespace {

/* The path of the leaf's own type; "" when a typedef has it. */
std::string LeafrefPath(QY_NODE *leaf)
{
    QXYANG_ORIGIN_S origin = OriginOf(leaf);
    std::string path;
    if (origin.pstFile != nullptr)
        ForEachIn(origin.pstFile, StatementAt(origin.pstFile, origin.uiStatement),
                  [&](const QXYANG_STATEMENT_S &statement) {
                      if (IsYang(statement, "type"))
                          path = ArgumentIn(origin.pstFile, statement, "path");
                  });
    return path;
}

} // namespace

bool IsOfNode(const QXYANG_ORIGIN_S &extension, const QXYANG_ORIGIN_S &node)
{
    if (extension.pstFile == nullptr)
        return false;
    uint32_t parent = StatementAt(extension.pstFile, extension.uiStatement).uiParent;
    if (extension.pstFile == node.pstFile && parent == node.uiStatement)
        return true;
    QXYANG_STATEMENT_S around = StatementAt(extension.pstFile, parent);
    return IsYang(around, "refine") || IsYang(around, "deviate");
}

void PlaceAt(const std::optional<Position> &position, Cause *cause)
{
    if (!position)
        return;
    cause->file = position->file;
    cause->line = position->line;
    cause->column = position->column;
}

std::string SeeText(const std::optional<Position> &place, const std::optional<Position> &from)
{
    if (!place)
        return "";
    std::string line = std::to_string(place->line);
    return from && from->file == place->file ? " (line " + line + ")" : " (" + place->file + ":" + line + ")";
}

const std::string &Places::Shown(const std::string &file)
{
    auto [entry, isNew] = shown_.try_emplace(file);
    if (isNew)
        entry->second = ShownPath(dirs_, file);
    return entry->second;
}

std::optional<Position> Places::Of(const QXYANG_ORIGIN_S &origin)
{
    if (origin.pcFile == nullptr)
        return std::nullopt;
    return Position{Shown(origin.pcFile), origin.stPlace.uiLine, origin.stPlace.uiColumn, origin};
}

std::optional<Position> Places::Of(QY_NODE *node)
{
    return Of(OriginOf(node));
}

std::optional<Position> Places::Of(QY_MOD *module)
{
    QXYANG_ORIGIN_S origin = {};
    if (QXYANG_GetModuleOrigin(module, &origin) != 0)
        throw std::bad_alloc();
    return Of(origin);
}

std::optional<Position> Places::OfExtension(QY_NODE *node, std::span<const char *const> keywords)
{
    QXYANG_ORIGIN_S own = OriginOf(node);
    std::vector<Extension> extensions = ExtensionsOf(node);
    for (const char *keyword : keywords)
        for (const Extension &extension : extensions)
            if (extension.keyword == keyword && IsOfNode(extension.origin, own))
                return Of(extension.origin);
    return Of(own);
}

std::optional<Position> Places::OfExtension(QY_NODE *node, const std::string &keyword, const std::string &argument)
{
    QXYANG_ORIGIN_S own = OriginOf(node);
    for (const Extension &extension : ExtensionsOf(node))
        if (extension.keyword == keyword && extension.argument == argument && IsOfNode(extension.origin, own))
            return Of(extension.origin);
    return Of(own);
}

std::optional<Position> Places::OfStatement(QY_NODE *node, const char *keyword)
{
    QXYANG_ORIGIN_S last = {};
    auto keep = [](const QXYANG_ORIGIN_S *origin, void *cookie) -> uint32_t {
        *static_cast<QXYANG_ORIGIN_S *>(cookie) = *origin;
        return 0;
    };
    if (QXYANG_ScanNodeStatements(node, keyword, keep, &last) != 0)
        throw std::bad_alloc();
    return last.pcFile != nullptr ? Of(last) : Of(node);
}

QXYANG_ORIGIN_S OriginOf(QY_NODE *node)
{
    QXYANG_NODE_DETAILS_S details = {};
    if (QXYANG_GetNodeDetails(node, &details) != 0)
        throw std::bad_alloc();
    return details.stStatement;
}

std::string DataPath(QY_NODE *node)
{
    std::string path;
    for (; node != nullptr; node = QY_NODE_GetParentNode(node)) {
        uint32_t type = QY_NODE_GetNodeType(node);
        if (type != QY_NODE_TYPE_CHOICE && type != QY_NODE_TYPE_CASE)
            path.insert(0, "/" + NameOf(node));
    }
    return path;
}

std::string BrokenLeafrefText(QY_NODE *leaf)
{
    if (LeadsThroughTooMany(leaf))
        return "leads through more than " + std::to_string(MAX_LEAFREF_HOPS) + " leafrefs";
    QY_NODE *broken = BrokenLeafref(leaf);
    if (broken == nullptr)
        return "";
    std::string path = LeafrefPath(broken);
    std::string quoted = path.empty() ? "" : " '" + path + "'";
    std::string which = broken == leaf ? "is a leafref" : "leads to the leafref " + DataPath(broken) + ",";
    if (path.find("deref") != std::string::npos)
        return which + " whose path" + quoted + " cannot be followed";
    return which + " whose target" + quoted + " is not found (a deviation may have removed it)";
}

} // namespace inspect
