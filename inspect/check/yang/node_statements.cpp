#include "check/yang/node_statements.h"

#include <new>

#include "model/statements.h"

namespace inspect {
namespace {

using Found = std::vector<NodeStatement>;

NodeStatement StatementAtOrigin(const QXYANG_ORIGIN_S &origin)
{
    const char *argument = StatementAt(origin.pstFile, origin.uiStatement).pcArgument;
    return {origin, argument != nullptr ? argument : ""};
}

/* Exceptions do not cross the schema library. */
uint32_t OnOrigin(const QXYANG_ORIGIN_S *origin, void *cookie)
try {
    if (origin->pstFile != nullptr)
        static_cast<Found *>(cookie)->push_back(StatementAtOrigin(*origin));
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

QXYANG_NODE_DETAILS_S DetailsOf(const QY_NODE *node)
{
    QXYANG_NODE_DETAILS_S details = {};
    if (QXYANG_GetNodeDetails(node, &details) != 0)
        throw std::bad_alloc();
    return details;
}

std::optional<NodeStatement> LastOf(const Found &found)
{
    return found.empty() ? std::nullopt : std::optional(found.back());
}

} // namespace

std::vector<NodeStatement> StatementsOf(const QY_NODE *node, const char *keyword)
{
    Found found;
    if (QXYANG_ScanNodeStatements(node, keyword, OnOrigin, &found) != 0)
        throw std::bad_alloc();
    return found;
}

std::optional<NodeStatement> StatementOf(const QY_NODE *node, const char *keyword)
{
    return LastOf(StatementsOf(node, keyword));
}

std::vector<NodeStatement> StatementsWithin(const QXYANG_ORIGIN_S &around, std::string_view keyword)
{
    Found found;
    if (around.pstFile == nullptr)
        return found;
    ForEachIn(around.pstFile, StatementAt(around.pstFile, around.uiStatement),
              [&](const QXYANG_STATEMENT_S &statement) {
                  if (!IsYang(statement, keyword))
                      return;
                  QXYANG_ORIGIN_S origin = around;
                  origin.uiStatement = statement.uiIndex;
                  origin.stPlace = statement.stPlace;
                  found.push_back({origin, statement.pcArgument != nullptr ? statement.pcArgument : ""});
              });
    return found;
}

std::optional<NodeStatement> StatementWithin(const QXYANG_ORIGIN_S &around, std::string_view keyword)
{
    return LastOf(StatementsWithin(around, keyword));
}

std::vector<NodeStatement> TypedefsOf(const QY_NODE *leaf)
{
    Found found;
    if (QXYANG_ScanNodeTypedefs(leaf, OnOrigin, &found) != 0)
        throw std::bad_alloc();
    return found;
}

std::vector<NodeStatement> TypesOf(const QY_NODE *leaf)
{
    Found types;
    if (std::optional<NodeStatement> own = StatementOf(leaf, "type"))
        types.push_back(*own);
    for (const NodeStatement &definition : TypedefsOf(leaf))
        if (std::optional<NodeStatement> type = StatementWithin(definition.origin, "type"))
            types.push_back(*type);
    return types;
}

bool IsConfig(const QY_NODE *node)
{
    return DetailsOf(node).uiIsConfig != 0;
}

bool IsSameStatement(const QXYANG_ORIGIN_S &left, const QXYANG_ORIGIN_S &right)
{
    return left.pstFile == right.pstFile && left.uiStatement == right.uiStatement;
}

QXYANG_ORIGIN_S UsesOf(const QY_NODE *node)
{
    return DetailsOf(node).stUses;
}

} // namespace inspect
