#include "build/augments.h"

#include <algorithm>
#include <utility>

#include "build/extensions.h"
#include "build/if_feature.h"
#include "build/node_conditions.h"
#include "build/node_kinds.h"

namespace qxyang {

void Augments::ApplyAll()
{
    std::vector<Planned> planned = Plan();
    std::stable_sort(planned.begin(), planned.end(), [](const Planned &left, const Planned &right) {
        return left.path.Steps().size() < right.path.Steps().size();
    });
    for (const Planned &augment : planned)
        Apply(augment);
    names_.CheckAdditions(0);
}

/* Gives the module's augments their nodes, in statement order. */
std::vector<Augments::Planned> Augments::Plan()
{
    std::vector<Planned> planned;
    QY_MOD &module = build_.module;
    for (Unit *unit : build_.units) {
        for (const Statement *statement = unit->root->first; statement != nullptr; statement = statement->next) {
            if (statement->keyword != Kw::Augment)
                continue;
            SchemaPath path;
            if (!path.Parse(build_, *unit, statement, true))
                continue;
            QY_NODE *node = module.nodes.Make();
            node->kind = QY_NODE_TYPE_AUGMENT;
            node->name = statement->argument;
            node->module = &module;
            build_.NoteOrigin(node, *unit, statement);
            module.augments.push_back(node);
            planned.push_back({node, statement, build_.UnitScope(*unit), std::move(path)});
        }
    }
    return planned;
}

void Augments::Apply(const Planned &augment)
{
    Unit &unit = *augment.scope->unit;
    QY_NODE *target = augment.path.Follow(build_, unit, augment.statement);
    if (target == nullptr || !Accepts(augment.statement, target, unit))
        return;
    QY_NODE *node = augment.node;
    node->parent = target;
    node->extensions = ExtensionsOf(build_, unit, augment.statement);
    SetCondition(node, ConditionsOf(build_, unit, augment.statement));
    QY_NODE *before = target->last;
    auto depth = static_cast<uint32_t>(augment.path.Steps().size());
    RunOnHeap(AddTo(target, augment.statement, {augment.scope, depth, false}));
    if (target->last == before)
        return;
    node->first = before != nullptr ? before->next : target->first;
    node->last = target->last;
}

namespace {

/* RFC 7950, 7.17: the types of nodes that augments may add to. */
bool TakesNodes(uint8_t kind)
{
    switch (kind) {
        case QY_NODE_TYPE_CONTAINER:
        case QY_NODE_TYPE_LIST:
        case QY_NODE_TYPE_CHOICE:
        case QY_NODE_TYPE_CASE:
        case QY_NODE_TYPE_INPUT:
        case QY_NODE_TYPE_OUTPUT:
        case QY_NODE_TYPE_NOTIFICATION:
            return true;
        default:
            return false;
    }
}

} // namespace

/* RFC 7950, 7.17: cases are for choices only, actions and notifications for containers and lists. */
bool Augments::Accepts(const Statement *augment, const QY_NODE *target, Unit &unit)
{
    if (!TakesNodes(target->kind)) {
        build_.Fail(unit, augment,
                    "augment " + Quoted(augment->argument) + ": " + DescribeNode(target) + " can have no nodes added");
        return false;
    }
    bool takesOperations = target->kind == QY_NODE_TYPE_CONTAINER || target->kind == QY_NODE_TYPE_LIST;
    for (const Statement *child = augment->first; child != nullptr; child = child->next) {
        bool isCase = child->keyword == Kw::Case && target->kind != QY_NODE_TYPE_CHOICE;
        bool isOperation = (child->keyword == Kw::Action || child->keyword == Kw::Notification) && !takesOperations;
        if (!isCase && !isOperation)
            continue;
        build_.Fail(unit, child,
                    Quoted(KeywordOf(child->keyword).name) + " cannot be added to " + DescribeNode(target));
        return false;
    }
    return true;
}

OnHeap Augments::AddTo(QY_NODE *target, const Statement *augment, Site site)
{
    const QY_NODE *before = target->last;
    co_await children_.AddChildren(augment, target, site);
    if (const Condition *conditions = ConditionsOf(build_, site.File(), augment))
        for (QY_NODE *child = before != nullptr ? before->next : target->first; child != nullptr; child = child->next)
            AddConditions(child, conditions);
    names_.NoteAddition(target, augment, site.scope);
}

} // namespace qxyang
