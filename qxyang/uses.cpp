/* Groupings and what uses make of them. */
#include "definitions.h"
#include "extensions.h"
#include "grammar.h"
#include "if_feature.h"
#include "schema_path.h"
#include "tree_builder.h"

namespace qxyang {

/* The grouping's hidden root, or null: it cannot be used, and why is recorded. */
QY_NODE *TreeBuilder::Compile(Grouping &grouping)
{
    if (grouping.progress == Progress::Done || grouping.progress == Progress::Failed)
        return grouping.root;
    Unit &unit = *grouping.scope->unit;
    auto nameOf = [](const Grouping *entry) { return std::string_view(entry->name); };
    if (grouping.progress == Progress::Running) {
        build_.Fail(unit, grouping.statement, "grouping cycle: " + ChainText(chain_, grouping.name, nameOf));
        return nullptr;
    }
    if (chain_.size() >= limits::CHAIN) {
        build_.Fail(unit, grouping.statement,
                    "grouping " + Quoted(grouping.name) + " is at the end of a chain of more than " +
                        std::to_string(limits::CHAIN) + " groupings");
        throw LoadStopped{};
    }
    grouping.progress = Progress::Running;
    chain_.push_back(&grouping);
    QY_NODE *root = build_.module.templates.Make();
    root->kind = ROOT_KIND;
    root->name = grouping.name;
    root->module = &build_.module;
    Scope *inner = EnterScope(grouping.statement, grouping.scope);
    AddChildren(grouping.statement, root, inner);
    CheckNames(root, grouping.statement, inner);
    chain_.pop_back();
    grouping.root = root;
    grouping.progress = Progress::Done;
    return root;
}

void TreeBuilder::ExpandUses(const Statement *uses, QY_NODE *parent, Scope *scope)
{
    Grouping *grouping = FindGrouping(build_, scope, uses);
    const QY_NODE *root = grouping != nullptr ? Compile(*grouping) : nullptr;
    if (root == nullptr)
        return;
    unit_ = scope->unit;
    statement_ = uses;
    if (chain_.empty()) {
        outermostUse_ = uses;
        outermostUnit_ = scope->unit;
    }
    const QY_NODE *before = parent->last;
    for (const QY_NODE *child = root->first; child != nullptr; child = child->next)
        CopyNode(child, parent);
    if (const Condition *conditions = ConditionsOf(build_, *scope->unit, uses))
        for (QY_NODE *child = before != nullptr ? before->next : parent->first; child != nullptr; child = child->next)
            AddConditions(child, conditions);
    ChangeUse(uses, root, parent, scope);
}

/* Copies share what never changes: names, types and extension instances. */
void TreeBuilder::CopyNode(const QY_NODE *from, QY_NODE *parent)
{
    Depth depth(depth_);
    CheckDepth();
    QY_NODE *node = Append(parent, from->kind, from->name);
    node->extensions = from->extensions;
    node->keyCount = from->keyCount;
    node->flags = from->flags;
    if (from->module == node->module)
        node->condition = from->condition;
    else
        SetCondition(node, ConditionOf(from));
    constraints_.CheckConfig(statement_, node, *unit_);
    if (!IsLeaf(from)) {
        for (const QY_NODE *child = from->first; child != nullptr; child = child->next)
            CopyNode(child, node);
        return;
    }
    node->type = from->type;
    if (node->type->refers)
        AwaitTargets(node, outermostUnit_, outermostUse_);
}

/* The refine and augment statements of a uses. Their paths begin at a node that the grouping brought. */
void TreeBuilder::ChangeUse(const Statement *uses, const QY_NODE *grouping, QY_NODE *parent, Scope *scope)
{
    Unit &unit = *scope->unit;
    size_t additions = added_.size();
    for (const Statement *child = uses->first; child != nullptr; child = child->next) {
        if (child->keyword != Kw::Refine && child->keyword != Kw::Augment)
            continue;
        SchemaPath path;
        if (!path.Parse(build_, unit, child, false))
            continue;
        std::string_view first = path.Steps().front().name;
        if (build_.load.finder.SchemaChild(grouping, grouping->module, first) == nullptr) {
            NearestName nearest(first);
            for (const QY_NODE *node = grouping->first; node != nullptr; node = node->next)
                nearest.Offer(node->name);
            build_.Fail(unit, child,
                        std::string(KeywordOf(child->keyword).name) + " " + Quoted(child->argument) + ": " +
                            DescribeNode(grouping) + " has no node " + Quoted(first) + nearest.Hint());
            continue;
        }
        QY_NODE *start = parent->kind == QY_NODE_TYPE_CHOICE
                             ? build_.load.finder.SchemaChild(parent, &build_.module, first)
                             : parent;
        QY_NODE *node = path.Follow(build_, unit, child, start);
        if (node == nullptr)
            continue;
        if (child->keyword == Kw::Refine)
            Refine(child, node, unit);
        else if (Accepts(child, node, unit))
            AddToTarget(child, node, scope);
    }
    CheckAdditions(additions);
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
    node->extensions = JoinedSets(build_.module.records, node->extensions, ExtensionsOf(build_, unit, statement));
    if (const Condition *conditions = ConditionsOf(build_, unit, statement))
        AddConditions(node, conditions);
}

} // namespace qxyang
