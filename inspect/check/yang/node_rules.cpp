#include "check/yang/node_rules.h"

#include "check/yang/removed_targets.h"
#include "model/schema_scan.h"

namespace inspect {
namespace {

using NodeRule = void (*)(NodeCheck &check, QY_NODE *node);

constexpr uint32_t Kind(uint32_t type)
{
    return 1U << type;
}

constexpr uint32_t LEAVES = Kind(QY_NODE_TYPE_LEAF) | Kind(QY_NODE_TYPE_LEAF_LIST);
constexpr uint32_t LISTS = Kind(QY_NODE_TYPE_LIST);
constexpr uint32_t OPERATIONS = Kind(QY_NODE_TYPE_RPC) | Kind(QY_NODE_TYPE_NOTIFICATION);
constexpr uint32_t ALL = ~0U;

struct RuleOfKinds {
    uint32_t kinds;
    NodeRule check;
};

constexpr RuleOfKinds NODE_RULES[] = {
    {LEAVES, CheckDefaults}, {LEAVES, CheckLeafref},        {LISTS, CheckKeys},      {LISTS, CheckUnique},
    {ALL, CheckDefaultCase}, {OPERATIONS, CheckListsAbove}, {ALL, CheckExpressions},
};

constexpr NodeRule AUGMENT_RULES[] = {CheckMandatoryAugment, CheckAugmentCondition};

void CheckNode(NodeCheck &check, QY_NODE *node)
{
    uint32_t kind = Kind(QY_NODE_GetNodeType(node));
    check.Look(node);
    for (const RuleOfKinds &rule : NODE_RULES)
        if ((rule.kinds & kind) != 0)
            rule.check(check, node);
}

} // namespace

std::vector<Finding> CheckNodes(QY_CTX *schema, QY_MOD *module, Places *places, const LostTargets &lost)
{
    NodeCheck check(schema, module, places);
    ForEachAugment(module, [&check](QY_NODE *augment) {
        if (check.WhenIn(OriginOf(augment)))
            ForEachChild(augment, [&check](QY_NODE *node) { check.conditional.insert(node); });
    });
    ForEachAugment(module, [&check](QY_NODE *augment) {
        for (NodeRule rule : AUGMENT_RULES)
            rule(check, augment);
    });
    ForEachOwnNode(module, [&check](QY_NODE *node) { CheckNode(check, node); });
    check.Look(nullptr);
    lost.Report(check);
    return check.TakeFindings();
}

} // namespace inspect
