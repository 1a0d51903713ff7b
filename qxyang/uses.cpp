/* Groupings and what uses make of them. */
#include "definitions.h"
#include "extensions.h"
#include "if_feature.h"
#include "schema_path.h"
#include "tree_builder.h"

namespace qxyang {

/* The grouping's hidden root, or null: it cannot be used, and why is recorded. */
QY_NODE *TreeBuilder::compile(Grouping &grouping)
{
    if (grouping.progress == Progress::kDone || grouping.progress == Progress::kFailed)
        return grouping.root;
    Unit &unit = *grouping.scope->unit;
    auto nameOf = [](const Grouping *entry) { return std::string_view(entry->name); };
    if (grouping.progress == Progress::kRunning) {
        build_.fail(unit, grouping.statement, "grouping cycle: " + chainText(chain_, grouping.name, nameOf));
        return nullptr;
    }
    if (chain_.size() >= limits::kChain) {
        build_.fail(unit, grouping.statement,
                    "grouping " + quoted(grouping.name) + " is at the end of a chain of more than " +
                        std::to_string(limits::kChain) + " groupings");
        throw LoadStopped{};
    }
    grouping.progress = Progress::kRunning;
    chain_.push_back(&grouping);
    QY_NODE *root = build_.module.templates.make();
    root->kind = kRootKind;
    root->name = grouping.name;
    root->module = &build_.module;
    Scope *inner = enterScope(grouping.statement, grouping.scope);
    addChildren(grouping.statement, root, inner);
    checkNames(root, grouping.statement, inner);
    chain_.pop_back();
    grouping.root = root;
    grouping.progress = Progress::kDone;
    return root;
}

void TreeBuilder::expandUses(const Statement *uses, QY_NODE *parent, Scope *scope)
{
    Grouping *grouping = findGrouping(build_, scope, uses);
    const QY_NODE *root = grouping != nullptr ? compile(*grouping) : nullptr;
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
        copyNode(child, parent);
    if (const Condition *conditions = conditionsOf(build_, *scope->unit, uses))
        for (QY_NODE *child = before != nullptr ? before->next : parent->first; child != nullptr; child = child->next)
            addConditions(child, conditions);
    changeUse(uses, root, parent, scope);
}

/* Copies share what never changes: names, types and extension instances. */
void TreeBuilder::copyNode(const QY_NODE *from, QY_NODE *parent)
{
    Depth depth(depth_);
    checkDepth();
    QY_NODE *node = append(parent, from->kind, from->name);
    node->extensions = from->extensions;
    node->keyCount = from->keyCount;
    node->flags = from->flags;
    if (from->module == node->module)
        node->condition = from->condition;
    else
        setCondition(node, conditionOf(from));
    if (!isLeaf(from)) {
        for (const QY_NODE *child = from->first; child != nullptr; child = child->next)
            copyNode(child, node);
        return;
    }
    node->type = from->type;
    if (node->type->refers)
        awaitTargets(node, outermostUnit_, outermostUse_);
}

/* The refine and augment statements of a uses. Their paths begin at a node that the grouping brought. */
void TreeBuilder::changeUse(const Statement *uses, const QY_NODE *grouping, QY_NODE *parent, Scope *scope)
{
    Unit &unit = *scope->unit;
    size_t additions = added_.size();
    for (const Statement *child = uses->first; child != nullptr; child = child->next) {
        if (child->keyword != Kw::kRefine && child->keyword != Kw::kAugment)
            continue;
        SchemaPath path;
        if (!path.parse(build_, unit, child, false))
            continue;
        std::string_view first = path.steps().front().name;
        if (build_.load.finder.schemaChild(grouping, grouping->module, first) == nullptr) {
            NearestName nearest(first);
            for (const QY_NODE *node = grouping->first; node != nullptr; node = node->next)
                nearest.offer(node->name);
            build_.fail(unit, child,
                        std::string(keywordOf(child->keyword).name) + " " + quoted(child->argument) + ": " +
                            describeNode(grouping) + " has no node " + quoted(first) + nearest.hint());
            continue;
        }
        QY_NODE *start = parent->kind == QY_NODE_TYPE_CHOICE
                             ? build_.load.finder.schemaChild(parent, &build_.module, first)
                             : parent;
        QY_NODE *node = path.follow(build_, unit, child, start);
        if (node == nullptr)
            continue;
        if (child->keyword == Kw::kRefine)
            refine(child, node, unit);
        else if (accepts(child, node, unit))
            addToTarget(child, node, scope);
    }
    checkAdditions(additions);
}

namespace {

/* What a refine may set on a node of that type. */
uint16_t refinableOn(uint8_t kind)
{
    constexpr uint16_t kAny = kSetsConfig;
    switch (kind) {
        case QY_NODE_TYPE_CONTAINER:
            return kAny | kSetsPresence | kSetsMust;
        case QY_NODE_TYPE_LEAF:
            return kAny | kSetsDefault | kSetsMandatory | kSetsMust;
        case QY_NODE_TYPE_LEAF_LIST:
            return kAny | kSetsDefault | kSetsMinElements | kSetsMaxElements | kSetsMust;
        case QY_NODE_TYPE_LIST:
            return kAny | kSetsMinElements | kSetsMaxElements | kSetsMust;
        case QY_NODE_TYPE_CHOICE:
            return kAny | kSetsDefault | kSetsMandatory;
        case QY_NODE_TYPE_ANYXML:
        case QY_NODE_TYPE_ANYDATA:
            return kAny | kSetsMandatory | kSetsMust;
        default:
            return 0;
    }
}

}  // namespace

void TreeBuilder::refine(const Statement *statement, QY_NODE *node, Unit &unit)
{
    if ((statement->properties & ~refinableOn(node->kind)) != 0)
        build_.fail(unit, statement,
                    "refine " + quoted(statement->argument) + " sets what a " + std::string(kindName(node->kind)) +
                        " does not have");
    node->extensions = joinedSets(build_.module.records, node->extensions, extensionsOf(build_, unit, statement));
    if (const Condition *conditions = conditionsOf(build_, unit, statement))
        addConditions(node, conditions);
}

}  // namespace qxyang
