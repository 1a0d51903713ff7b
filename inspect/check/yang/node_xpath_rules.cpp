/* Expressions that climb above the root: RFC 7950, 6.4.1. */
#include <algorithm>

#include "base/excerpt.h"
#include "base/text.h"
#include "check/yang/node_rules.h"
#include "model/schema_scan.h"

namespace inspect {
namespace {

/* True if data have such a node. They have one for an operation or notification, and none for its input or output. */
bool IsInData(QY_NODE *node)
{
    uint32_t type = QY_NODE_GetNodeType(node);
    return type != QY_NODE_TYPE_CHOICE && type != QY_NODE_TYPE_CASE && type != QY_NODE_TYPE_INPUT &&
           type != QY_NODE_TYPE_OUTPUT;
}

/* The node, or the nearest one above it that data have; null: the root. */
QY_NODE *ContextOf(QY_NODE *node)
{
    while (node != nullptr && !IsInData(node))
        node = QY_NODE_GetParentNode(node);
    return node;
}

size_t StepsToRoot(QY_NODE *context)
{
    size_t steps = 0;
    for (QY_NODE *node = context; node != nullptr; node = ContextOf(QY_NODE_GetParentNode(node)))
        ++steps;
    return steps;
}

/* The statements behind a node, read once for all its expressions. */
struct Maker {
    QXYANG_ORIGIN_S statement;
    QXYANG_ORIGIN_S uses;
};

/* Looks at an expression of a node. Its context is the place, or the nearest node above that data have. */
void CheckExpression(NodeCheck &check, const char *keyword, const NodeStatement &expression, const Maker &maker,
                     QY_NODE *place)
{
    const Climbs &climbs = check.ClimbsOf(expression);
    if (!climbs.Any())
        return;
    QY_NODE *context = ContextOf(place);
    size_t most = StepsToRoot(context);
    if (!climbs.fromRoot && climbs.fromContext <= most)
        return;
    std::string way = ", where it starts";
    if (!climbs.fromRoot && context != nullptr)
        way = ": " + Count(climbs.fromContext, "step") + " up from " + Described(context) + ", " +
              std::to_string(most) + " at most";
    check.Report(
        "xpath-root",
        std::string(keyword) + " '" + Shortened(expression.argument, MAX_SHOWN) + "' climbs above the root" + way,
        {expression.origin, maker.statement, maker.uses});
}

/* The condition of the uses statement that puts the node where it is. */
void CheckUsesCondition(NodeCheck &check, QY_NODE *node, const Maker &maker)
{
    const QXYANG_ORIGIN_S &uses = maker.uses;
    QY_NODE *parent = QY_NODE_GetParentNode(node);
    if (uses.pstFile == nullptr || (parent != nullptr && IsSameStatement(UsesOf(parent), uses)))
        return;
    if (const std::optional<NodeStatement> &when = check.WhenIn(uses))
        CheckExpression(check, "when", *when, maker, parent);
}

} // namespace

void CheckExpressions(NodeCheck &check, QY_NODE *node)
{
    Maker maker = {OriginOf(node), UsesOf(node)};
    for (const char *keyword : {"must", "when"})
        for (const NodeStatement &expression : StatementsOf(node, keyword))
            CheckExpression(check, keyword, expression, maker, node);
    CheckUsesCondition(check, node, maker);
    uint32_t type = QY_NODE_GetNodeType(node);
    if (type == QY_NODE_TYPE_LEAF || type == QY_NODE_TYPE_LEAF_LIST)
        for (const NodeStatement &own : TypesOf(node))
            for (const NodeStatement &path : check.ClimbingPathsIn(own))
                CheckExpression(check, "path", path, maker, node);
}

/* RFC 7950, 7.21.5: the context of its condition is the augment's target. */
void CheckAugmentCondition(NodeCheck &check, QY_NODE *augment)
{
    Maker maker = {OriginOf(augment), UsesOf(augment)};
    if (const std::optional<NodeStatement> &when = check.WhenIn(maker.statement))
        CheckExpression(check, "when", *when, maker, QY_NODE_GetAugmentTargetNode(augment));
}

} // namespace inspect
