/* Expressions that climb above the root: RFC 7950, 6.4.1. */
#include <algorithm>

#include "base/text.h"
#include "check/yang/node_rules.h"
#include "model/schema_scan.h"

namespace inspect {
namespace {

/* How many steps lead from the node, or the nearest one above it that data have, to the root of the data. An operation and a
 * notification stand there as a node, input and output do not. */
size_t StepsToRoot(QY_NODE *node)
{
    size_t steps = 0;
    for (; node != nullptr; node = QY_NODE_GetParentNode(node)) {
        uint32_t type = QY_NODE_GetNodeType(node);
        bool isInData = type != QY_NODE_TYPE_CHOICE && type != QY_NODE_TYPE_CASE && type != QY_NODE_TYPE_INPUT &&
                        type != QY_NODE_TYPE_OUTPUT;
        steps += isInData ? 1 : 0;
    }
    return steps;
}

/* Looks at an expression with that context node, which is null for the root. */
void CheckExpression(NodeCheck &check, const char *keyword, const NodeStatement &expression, QY_NODE *context,
                     const QXYANG_ORIGIN_S &uses)
{
    const Climbs &climbs = check.ClimbsOf(expression);
    if (climbs.fromContext == 0 && !climbs.fromRoot)
        return;
    size_t most = StepsToRoot(context);
    if (!climbs.fromRoot && climbs.fromContext <= most)
        return;
    std::string from = context != nullptr ? Described(context) : "the root";
    check.Report("xpath-root",
                 std::string(keyword) + " '" + std::string(expression.argument) + "' climbs above the root" +
                     (climbs.fromRoot ? ""
                                      : ": " + Count(climbs.fromContext, "step") + " up from " + from + ", " +
                                            std::to_string(most) + " at most"),
                 {expression.origin, uses});
}

/* The condition of the uses statement that puts the node where it is. */
void CheckUsesCondition(NodeCheck &check, QY_NODE *node, const QXYANG_ORIGIN_S &uses)
{
    QY_NODE *parent = QY_NODE_GetParentNode(node);
    if (parent != nullptr && IsSameStatement(UsesOf(parent), uses))
        return;
    if (std::optional<NodeStatement> when = StatementWithin(uses, "when"))
        CheckExpression(check, "when", *when, parent, uses);
}

/* The paths of a type and of the members that its statement names. */
void CheckPaths(NodeCheck &check, QY_NODE *leaf, const QXYANG_ORIGIN_S &uses)
{
    std::vector<NodeStatement> rest = TypesOf(leaf);
    while (!rest.empty()) {
        NodeStatement type = rest.back();
        rest.pop_back();
        if (std::optional<NodeStatement> path = StatementWithin(type.origin, "path"))
            CheckExpression(check, "path", *path, leaf, uses);
        for (const NodeStatement &member : StatementsWithin(type.origin, "type"))
            rest.push_back(member);
    }
}

} // namespace

void CheckExpressions(NodeCheck &check, QY_NODE *node)
{
    QXYANG_ORIGIN_S uses = UsesOf(node);
    for (const char *keyword : {"must", "when"})
        for (const NodeStatement &expression : StatementsOf(node, keyword))
            CheckExpression(check, keyword, expression, node, uses);
    if (uses.pstFile != nullptr)
        CheckUsesCondition(check, node, uses);
    uint32_t type = QY_NODE_GetNodeType(node);
    if (type == QY_NODE_TYPE_LEAF || type == QY_NODE_TYPE_LEAF_LIST)
        CheckPaths(check, node, uses);
}

/* RFC 7950, 7.21.5: the context of its condition is the augment's target. */
void CheckAugmentCondition(NodeCheck &check, QY_NODE *augment)
{
    if (std::optional<NodeStatement> when = StatementWithin(OriginOf(augment), "when"))
        CheckExpression(check, "when", *when, QY_NODE_GetAugmentTargetNode(augment), when->origin);
}

} // namespace inspect
