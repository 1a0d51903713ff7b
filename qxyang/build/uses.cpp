/* Groupings and what uses make of them. */
#include <algorithm>
#include <functional>

#include "build/definitions.h"
#include "build/extensions.h"
#include "build/if_feature.h"
#include "build/schema_path.h"
#include "build/tree_builder.h"
#include "syntax/grammar.h"

namespace qxyang {

/* True when the grouping is to be compiled now: it has become the last of the chain. */
bool TreeBuilder::StartGrouping(Grouping &grouping)
{
    if (grouping.progress == Progress::Done || grouping.progress == Progress::Failed)
        return false;
    Unit &unit = *grouping.scope->unit;
    auto nameOf = [](const Grouping *entry) { return std::string_view(entry->name); };
    if (grouping.progress == Progress::Running) {
        build_.Fail(unit, grouping.statement, "grouping cycle: " + ChainText(chain_, grouping.name, nameOf));
        return false;
    }
    if (chain_.size() >= limits::CHAIN) {
        build_.Fail(unit, grouping.statement,
                    "grouping " + Quoted(grouping.name) + " is at the end of a chain of more than " +
                        std::to_string(limits::CHAIN) + " groupings");
        throw LoadStopped{};
    }
    grouping.progress = Progress::Running;
    chain_.push_back(&grouping);
    return true;
}

/* Gives the grouping its hidden root. It has none afterwards when it cannot be used: why is recorded. */
OnHeap TreeBuilder::Compile(Grouping &grouping)
{
    if (!StartGrouping(grouping))
        co_return;
    QY_NODE *root = build_.module.templates.Make();
    root->kind = ROOT_KIND;
    root->name = grouping.name;
    root->module = &build_.module;
    Scope *inner = ScopeOf(build_, grouping.statement, grouping.scope);
    if (inner != grouping.scope)
        co_await CompileDefinitions(grouping.statement, inner);
    const size_t additions = added_.size();
    co_await AddChildren(grouping.statement, root, inner);
    CheckAdditions(additions);
    CheckNames(root, grouping.statement, inner);
    chain_.pop_back();
    grouping.root = root;
    grouping.progress = Progress::Done;
}

OnHeap TreeBuilder::ExpandUses(const Statement *uses, QY_NODE *parent, Scope *scope)
{
    Grouping *grouping = FindGrouping(build_, scope, uses);
    if (grouping == nullptr)
        co_return;
    co_await Compile(*grouping);
    const QY_NODE *root = grouping->root;
    if (root == nullptr)
        co_return;
    unit_ = scope->unit;
    statement_ = uses;
    if (chain_.empty()) {
        outermostUse_ = uses;
        outermostUnit_ = scope->unit;
    }
    const QY_NODE *before = parent->last;
    for (const QY_NODE *child = root->first; child != nullptr; child = child->next)
        CopyTree(child, parent);
    if (const Condition *conditions = ConditionsOf(build_, *scope->unit, uses))
        for (QY_NODE *child = before != nullptr ? before->next : parent->first; child != nullptr; child = child->next)
            AddConditions(child, conditions);
    if (uses->first != nullptr)
        co_await ChangeUse(uses, root, parent, scope);
}

/* Copies the node with all that is below it. The way back up follows the parents of both trees. */
void TreeBuilder::CopyTree(const QY_NODE *top, QY_NODE *parent)
{
    for (const QY_NODE *from = top;; from = from->next) {
        ++depth_;
        CheckDepth();
        QY_NODE *copy = CopyNode(from, parent);
        for (const QY_NODE *child = FirstChild(from); child != nullptr; child = FirstChild(from)) {
            from = child;
            parent = copy;
            ++depth_;
            CheckDepth();
            copy = CopyNode(from, parent);
        }
        for (--depth_; from != top && from->next == nullptr; --depth_) {
            from = from->parent;
            parent = parent->parent;
        }
        if (from == top)
            return;
    }
}

/* Copies share what never changes: names, types and extension instances. */
QY_NODE *TreeBuilder::CopyNode(const QY_NODE *from, QY_NODE *parent)
{
    QY_NODE *node = Append(parent, from->kind, from->name);
    ShowExtensions(node, from->extensions);
    node->keyCount = from->keyCount;
    node->flags = from->flags;
    if (from->module == node->module)
        node->condition = from->condition;
    else
        SetCondition(node, ConditionOf(from));
    constraints_.CheckConfig(statement_, node, *unit_);
    if (!IsLeaf(from))
        return node;
    node->type = from->type;
    build_.load.CountRange(unit_->source, statement_->offset, *node->type);
    if (node->type->refers)
        AwaitTargets(node, outermostUnit_, outermostUse_);
    return node;
}

/* The refine and augment statements of a uses. Their paths begin at a node that the grouping brought. */
OnHeap TreeBuilder::ChangeUse(const Statement *uses, const QY_NODE *grouping, QY_NODE *parent, Scope *scope)
{
    Unit &unit = *scope->unit;
    size_t additions = added_.size();
    size_t refines = refined_.size();
    for (const Statement *child = uses->first; child != nullptr; child = child->next) {
        if (child->keyword != Kw::Refine && child->keyword != Kw::Augment)
            continue;
        QY_NODE *node = FindChanged(child, grouping, parent, unit);
        if (node == nullptr)
            continue;
        if (child->keyword == Kw::Refine)
            Refine(child, node, unit);
        if (child->keyword == Kw::Refine || !Accepts(child, node, unit))
            continue;
        size_t levels = 0;
        for (const QY_NODE *above = node; above != parent; above = above->parent)
            ++levels;
        depth_ += levels;
        co_await AddToTarget(child, node, scope);
        depth_ -= levels;
    }
    JoinRefined(refines, unit);
    CheckAdditions(additions, NameScope(parent));
}

/* The node that a refine or augment names, or null: the failure is recorded. */
QY_NODE *TreeBuilder::FindChanged(const Statement *change, const QY_NODE *grouping, QY_NODE *parent, Unit &unit)
{
    SchemaPath path;
    if (!path.Parse(build_, unit, change, false))
        return nullptr;
    std::string_view first = path.Steps().front().name;
    if (build_.load.finder.SchemaChild(grouping, grouping->module, first) == nullptr) {
        build_.Fail(unit, change,
                    std::string(KeywordOf(change->keyword).name) + " " + Quoted(change->argument) + ": " +
                        DescribeNode(grouping) + " has no node " + Quoted(first),
                    {{}, first}, [grouping](auto &&offer) {
                        for (const QY_NODE *node = grouping->first; node != nullptr; node = node->next)
                            offer(node->name);
                    });
        return nullptr;
    }
    QY_NODE *start =
        parent->kind == QY_NODE_TYPE_CHOICE ? build_.load.finder.SchemaChild(parent, &build_.module, first) : parent;
    return path.Follow(build_, unit, change, start);
}

namespace {

/* What a refine may set on a node of that type. */
uint16_t RefinableOn(uint8_t kind)
{
    constexpr uint16_t ANY = SETS_CONFIG;
    switch (kind) {
        case QY_NODE_TYPE_CONTAINER:
            return ANY | SETS_PRESENCE | SETS_MUST;
        case QY_NODE_TYPE_LEAF:
            return ANY | SETS_DEFAULT | SETS_MANDATORY | SETS_MUST;
        case QY_NODE_TYPE_LEAF_LIST:
            return ANY | SETS_DEFAULT | SETS_MIN_ELEMENTS | SETS_MAX_ELEMENTS | SETS_MUST;
        case QY_NODE_TYPE_LIST:
            return ANY | SETS_MIN_ELEMENTS | SETS_MAX_ELEMENTS | SETS_MUST;
        case QY_NODE_TYPE_CHOICE:
            return ANY | SETS_DEFAULT | SETS_MANDATORY;
        case QY_NODE_TYPE_ANYXML:
        case QY_NODE_TYPE_ANYDATA:
            return ANY | SETS_MANDATORY | SETS_MUST;
        default:
            return 0;
    }
}

} // namespace

void TreeBuilder::Refine(const Statement *statement, QY_NODE *node, Unit &unit)
{
    const uint16_t refinable = RefinableOn(node->kind);
    for (const Statement *child = statement->first; child != nullptr; child = child->next)
        if ((PropertyOf(child->keyword) & ~refinable) != 0)
            return build_.Fail(unit, child,
                               "refine " + Quoted(statement->argument) + ": " + DescribeNode(node) + " can have no " +
                                   Quoted(KeywordOf(child->keyword).name));
    node->flags = ChangedFlags(node->flags, statement->properties);
    constraints_.CheckRefine(statement, node, unit);
    if (const ExtensionSet *set = ExtensionsOf(build_, unit, statement))
        refined_.push_back({node, set, statement});
    if (const Condition *conditions = ConditionsOf(build_, unit, statement))
        AddConditions(node, conditions);
}

/* Each refined node gets all that its refines add at once. */
void TreeBuilder::JoinRefined(size_t first, Unit &unit)
{
    if (first == refined_.size())
        return;
    std::stable_sort(refined_.begin() + static_cast<std::ptrdiff_t>(first), refined_.end(),
                     [](const auto &left, const auto &right) { return std::less<>()(left.node, right.node); });
    std::vector<const ExtensionSet *> sets;
    for (size_t i = first; i < refined_.size();) {
        QY_NODE *node = refined_[i].node;
        sets.assign(1, node->extensions);
        for (; i < refined_.size() && refined_[i].node == node; ++i)
            sets.push_back(refined_[i].set);
        const ExtensionSet *joined = JoinedSets(build_.module.records, sets);
        build_.CountJoined(unit, refined_[i - 1].refine, joined->count);
        ShowExtensions(node, joined);
    }
    refined_.resize(first);
}

} // namespace qxyang
