/* Mandatory nodes where none may be, and operations below lists without key. */
#include "check/yang/node_rules.h"
#include "model/schema_scan.h"

namespace inspect {
namespace {

bool IsOwnNode(NodeCheck &check, QY_NODE *node)
{
    return QY_NODE_GetModule(node) == check.Module();
}

/* What another augment of the module adds under a condition is no part of this one. */
bool IsAddedConfig(NodeCheck &check, QY_NODE *node)
{
    return IsOwnNode(check, node) && !check.conditional.contains(node) && IsConfig(node);
}

} // namespace

/* RFC 7950, 7.9.3. */
void CheckDefaultCase(NodeCheck &check, QY_NODE *node)
{
    QY_NODE *parent = QY_NODE_GetParentNode(node);
    const QXYANG_ORIGIN_S *origin = parent != nullptr ? check.DefaultOfCase(parent) : nullptr;
    if (origin == nullptr)
        return;
    if (std::optional<Mandatory> found = NodeCheck::MandatoryIn(check, node, IsOwnNode))
        check.Report("mandatory-default-case",
                     Described(found->node) + " is mandatory in '" + NameOf(parent) + "', the default case of " +
                         Described(QY_NODE_GetParentNode(parent)),
                     {found->statement.origin, OriginOf(found->node), *origin});
}

/* RFC 7950, 7.17. */
void CheckMandatoryAugment(NodeCheck &check, QY_NODE *augment)
{
    QY_NODE *target = QY_NODE_GetAugmentTargetNode(augment);
    QXYANG_ORIGIN_S origin = OriginOf(augment);
    if (target == nullptr || IsOwnNode(check, target) || check.WhenIn(origin))
        return;
    std::optional<Mandatory> found;
    ForEachChild(augment, [&](QY_NODE *node) {
        if (!found)
            found = NodeCheck::MandatoryIn(check, node, IsAddedConfig);
    });
    if (found)
        check.Report("augment-mandatory",
                     "the augment adds " + Described(found->node) + ", which is mandatory, to module '" +
                         ModuleNameOf(target) + "' and has no 'when'",
                     {origin});
}

/* RFC 7950, 7.15 and 7.16. */
void CheckListsAbove(NodeCheck &check, QY_NODE *operation)
{
    for (QY_NODE *above = QY_NODE_GetParentNode(operation); above != nullptr; above = QY_NODE_GetParentNode(above)) {
        if (QY_NODE_GetNodeType(above) != QY_NODE_TYPE_LIST || StatementOf(above, "key"))
            continue;
        check.Report("action-below-keyless-list",
                     Described(operation) + " stands below " + Described(above) + ", which has no key",
                     {OriginOf(operation), OriginOf(above), UsesOf(operation)});
        return;
    }
}

} // namespace inspect
