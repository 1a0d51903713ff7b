/* Augments, of the module's own text and within uses. */
#include <algorithm>
#include <unordered_set>

#include "build/extensions.h"
#include "build/if_feature.h"
#include "build/schema_path.h"
#include "build/tree_builder.h"

namespace qxyang {

namespace {

struct PlannedAugment {
    QY_NODE *node;
    const Statement *statement;
    Scope *scope;
    SchemaPath path;
};

} // namespace

void TreeBuilder::ApplyAugments()
{
    std::vector<PlannedAugment> planned;
    QY_MOD &module = build_.module;
    for (Unit *unit : build_.units) {
        for (const Statement *statement = unit->root->first; statement != nullptr; statement = statement->next) {
            if (statement->keyword != Kw::Augment)
                continue;
            SchemaPath path;
            if (!path.Parse(build_, *unit, statement, true))
                continue;
            unit_ = unit;
            statement_ = statement;
            QY_NODE *node = module.nodes.Make();
            node->kind = QY_NODE_TYPE_AUGMENT;
            node->name = statement->argument;
            node->module = &module;
            module.augments.push_back(node);
            planned.push_back({node, statement, build_.UnitScope(*unit), std::move(path)});
        }
    }
    std::stable_sort(planned.begin(), planned.end(), [](const PlannedAugment &left, const PlannedAugment &right) {
        return left.path.Steps().size() < right.path.Steps().size();
    });
    for (const PlannedAugment &augment : planned)
        ApplyAugment(augment.node, augment.statement, augment.path, augment.scope);
    CheckAdditions(0);
}

void TreeBuilder::ApplyAugment(QY_NODE *augment, const Statement *statement, const SchemaPath &path, Scope *scope)
{
    Unit &unit = *scope->unit;
    QY_NODE *target = path.Follow(build_, unit, statement);
    if (target == nullptr || !Accepts(statement, target, unit))
        return;
    augment->parent = target;
    augment->extensions = ExtensionsOf(build_, unit, statement);
    SetCondition(augment, ConditionsOf(build_, unit, statement));
    QY_NODE *before = target->last;
    depth_ = path.Steps().size();
    RunOnHeap(AddToTarget(statement, target, scope));
    depth_ = 0;
    if (target->last == before)
        return;
    augment->first = before != nullptr ? before->next : target->first;
    augment->last = target->last;
}

/* Whether the target can have what the augment adds. */
bool TreeBuilder::Accepts(const Statement *augment, const QY_NODE *target, Unit &unit)
{
    bool isParent = false;
    switch (target->kind) {
        case QY_NODE_TYPE_CONTAINER:
        case QY_NODE_TYPE_LIST:
        case QY_NODE_TYPE_CHOICE:
        case QY_NODE_TYPE_CASE:
        case QY_NODE_TYPE_INPUT:
        case QY_NODE_TYPE_OUTPUT:
        case QY_NODE_TYPE_NOTIFICATION:
            isParent = true;
            break;
        default:
            break;
    }
    if (!isParent) {
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

/* Names are checked later, once for all that is added to a target. */
OnHeap TreeBuilder::AddToTarget(const Statement *augment, QY_NODE *target, Scope *scope)
{
    const QY_NODE *before = target->last;
    co_await AddChildren(augment, target, scope);
    if (const Condition *conditions = ConditionsOf(build_, *scope->unit, augment))
        for (QY_NODE *child = before != nullptr ? before->next : target->first; child != nullptr; child = child->next)
            AddConditions(child, conditions);
    added_.push_back({target, augment, scope});
}

/* Looks for names that the additions from that index on brought a second time, in each target once. Additions to a node
 * that gets more children still wait until it has them all. */
void TreeBuilder::CheckAdditions(size_t first, const QY_NODE *unfinished)
{
    if (first == added_.size())
        return;
    std::unordered_set<const QY_NODE *> checked;
    for (size_t i = first; i < added_.size(); ++i) {
        QY_NODE *target = added_[i].target;
        QY_NODE *parent = NameScope(target);
        if (parent == unfinished)
            continue;
        const QY_NODE *twice = nullptr;
        if (target->kind == QY_NODE_TYPE_CHOICE && checked.insert(target).second)
            twice = names_.FindTwiceAmongCases(target, &build_.module);
        if (twice == nullptr && checked.insert(parent).second)
            twice = names_.FindTwice(parent, &build_.module);
        if (twice != nullptr)
            FailAddedTwice(*twice, *parent, first, i);
    }
    auto isChecked = [unfinished](const Addition &addition) { return NameScope(addition.target) != unfinished; };
    auto begin = added_.begin() + static_cast<std::ptrdiff_t>(first);
    added_.erase(std::remove_if(begin, added_.end(), isChecked), added_.end());
}

/* Reports the name at the last of the augments that bring it. A case stands twice in one choice. */
void TreeBuilder::FailAddedTwice(const QY_NODE &node, const QY_NODE &parent, size_t first, size_t met)
{
    const Addition *last = &added_[met];
    bool isCase = node.kind == QY_NODE_TYPE_CASE;
    for (size_t i = first; i < added_.size(); ++i) {
        std::vector<const Statement *> found;
        QY_NODE *target = added_[i].target;
        if (isCase ? target == node.parent : NameScope(target) == &parent)
            FindStatements(added_[i].augment, added_[i].scope, node.name, found);
        if (!found.empty())
            last = &added_[i];
    }
    FailTwice(&node, &parent, last->scope, last->augment);
}

} // namespace qxyang
