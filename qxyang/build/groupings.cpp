#include "build/groupings.h"

#include <algorithm>
#include <functional>

#include "build/definitions.h"
#include "build/extensions.h"
#include "build/if_feature.h"
#include "build/leafref_path.h"
#include "build/new_nodes.h"
#include "build/node_conditions.h"
#include "build/node_kinds.h"
#include "build/operation_places.h"
#include "build/schema_path.h"
#include "syntax/grammar.h"

namespace qxyang {

OnHeap Groupings::CompileDefinitions(const Statement *statement, Site site)
{
    const Scope &scope = *site.scope;
    bool isModules = scope.outer == nullptr;
    const NameTable<Typedef> &typedefs = isModules ? build_.module.typedefs : scope.typedefs;
    const NameTable<Grouping> &groupings = isModules ? build_.module.groupings : scope.groupings;
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        if (child->keyword == Kw::Typedef) {
            if (Typedef *definition = typedefs.Find(child->argument))
                types_.Compile(*definition);
        } else if (child->keyword == Kw::Grouping) {
            if (Grouping *grouping = groupings.Find(child->argument); grouping != nullptr && Start(*grouping))
                co_await Compile(*grouping, site.depth);
        }
    }
}

/* True when the grouping is to be compiled now: it has become the last of the chain. */
bool Groupings::Start(Grouping &grouping)
{
    if (grouping.progress == Progress::Done || grouping.progress == Progress::Failed)
        return false;
    Unit &unit = *grouping.scope->unit;
    auto nameOf = [](const Grouping *entry) { return std::string_view(entry->name); };
    if (grouping.progress == Progress::Running) { // RFC 7950, 7.12: no grouping refers to itself
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

/* Gives a grouping that was started its hidden root. The depth is that of the statement that needs the grouping. */
OnHeap Groupings::Compile(Grouping &grouping, uint32_t depth)
{
    QY_NODE *root = build_.module.templates.Make();
    root->kind = ROOT_KIND;
    root->name = grouping.name;
    root->module = &build_.module;
    Site site{ScopeOf(build_, grouping.statement, grouping.scope), depth, true};
    if (site.scope != grouping.scope)
        co_await CompileDefinitions(grouping.statement, site);
    size_t additions = names_.Additions();
    co_await children_.AddChildren(grouping.statement, root, site);
    names_.CheckAdditions(additions);
    names_.CheckChildren(root, grouping.statement, site.scope);
    chain_.pop_back();
    grouping.root = root;
    grouping.progress = Progress::Done;
}

OnHeap Groupings::Expand(const Statement *uses, QY_NODE *parent, Site site)
{
    Grouping *grouping = FindGrouping(build_, site.scope, uses);
    if (grouping == nullptr)
        co_return;
    if (Start(*grouping))
        co_await Compile(*grouping, site.depth);
    const QY_NODE *root = grouping->root;
    if (root == nullptr) // what is wrong with the grouping is recorded
        co_return;
    const QY_NODE *before = parent->last;
    for (const QY_NODE *child = root->first; child != nullptr; child = child->next)
        CopyTree(child, {uses, parent, site});
    if (const Condition *conditions = ConditionsOf(build_, site.File(), uses))
        for (QY_NODE *child = before != nullptr ? before->next : parent->first; child != nullptr; child = child->next)
            AddConditions(child, conditions);
    if (uses->first != nullptr)
        co_await Change({uses, parent, site}, root);
}

/* Copies the node with all that is below it. The way back up follows the parents of both trees. */
void Groupings::CopyTree(const QY_NODE *top, Use use)
{
    auto copyDeeper = [this, &use](const QY_NODE *from) {
        ++use.site.depth;
        CheckDepth(build_, use.statement, use.site);
        return CopyNode(from, use);
    };
    for (const QY_NODE *from = top;; from = from->next) {
        QY_NODE *copy = copyDeeper(from);
        for (const QY_NODE *child = FirstChild(from); child != nullptr; child = FirstChild(from)) {
            from = child;
            use.parent = copy;
            copy = copyDeeper(from);
        }
        for (--use.site.depth; from != top && from->next == nullptr; --use.site.depth) {
            from = from->parent;
            use.parent = use.parent->parent;
        }
        if (from == top)
            return;
    }
}

/* Copies share what never changes: names, types and extension instances. */
QY_NODE *Groupings::CopyNode(const QY_NODE *from, const Use &use)
{
    QY_NODE *node = AppendNode(build_, use.statement, use.site, use.parent, from->kind, from->name);
    build_.NoteCopy(node, from, use.parent, use.site.File(), use.statement);
    ShowExtensions(build_, use.statement, use.site, node, from->extensions);
    node->keyCount = from->keyCount;
    node->flags = from->flags;
    if (IsOperation(from))
        CheckCopiedOperation(build_, use.statement, node, from, use.site.File());
    if (from->module == node->module)
        node->condition = from->condition;
    else
        SetCondition(node, ConditionOf(from));
    Unit &unit = use.site.File();
    constraints_.CheckConfig(use.statement, node, unit);
    if (!IsLeaf(from))
        return node;
    node->type = from->type;
    build_.load.CountRange(unit.source, use.statement->offset, *node->type);
    if (node->type->refers && !use.site.isOfGrouping)
        AwaitTargets(build_, node, unit, use.statement);
    return node;
}

/* Does what the refine and augment statements of a uses say. Their paths begin at a node that the grouping brought. */
OnHeap Groupings::Change(Use use, const QY_NODE *grouping)
{
    Unit &unit = use.site.File();
    size_t additions = names_.Additions();
    std::vector<Refinement> refined;
    for (const Statement *child = use.statement->first; child != nullptr; child = child->next) {
        if (child->keyword != Kw::Refine && child->keyword != Kw::Augment)
            continue;
        QY_NODE *node = FindChanged(child, grouping, use);
        if (node == nullptr)
            continue;
        if (child->keyword == Kw::Refine) {
            if (const ExtensionSet *set = Refine(child, node, unit))
                refined.push_back({node, set, child});
            continue;
        }
        if (!augments_.Accepts(child, node, unit))
            continue;
        uint32_t levels = 0;
        for (const QY_NODE *above = node; above != use.parent; above = above->parent)
            ++levels;
        co_await augments_.AddTo(node, child, use.site.Below(levels));
    }
    if (!refined.empty())
        GiveRefined(refined, use);
    names_.CheckAdditions(additions, NameScope(use.parent));
}

/* The node that a refine or augment names, or null: the failure is recorded. */
QY_NODE *Groupings::FindChanged(const Statement *change, const QY_NODE *grouping, const Use &use)
{
    Unit &unit = use.site.File();
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
    bool isInChoice = use.parent->kind == QY_NODE_TYPE_CHOICE;
    QY_NODE *start = isInChoice ? build_.load.finder.SchemaChild(use.parent, &build_.module, first) : use.parent;
    return path.Follow(build_, unit, change, start);
}

namespace {

/* What a refine may set on a node of that type: RFC 7950, 7.13.2. */
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

/* The extension instances in the refine, which the node gets later with those of other refines; null: none. */
const ExtensionSet *Groupings::Refine(const Statement *refine, QY_NODE *node, Unit &unit)
{
    uint16_t refinable = RefinableOn(node->kind);
    for (const Statement *child = refine->first; child != nullptr; child = child->next) {
        if ((PropertyOf(child->keyword) & ~refinable) == 0)
            continue;
        build_.Fail(unit, child,
                    "refine " + Quoted(refine->argument) + ": " + DescribeNode(node) + " can have no " +
                        Quoted(KeywordOf(child->keyword).name));
        return nullptr;
    }
    build_.NoteChange(node, unit, refine);
    node->flags = ChangedFlags(node->flags, refine->properties);
    constraints_.CheckRefine(refine, node, unit);
    const ExtensionSet *set = ExtensionsOf(build_, unit, refine);
    if (const Condition *conditions = ConditionsOf(build_, unit, refine))
        AddConditions(node, conditions);
    return set;
}

/* Each refined node gets what all its refines make of its extension instances at once: those of a refine take the place of
 * all of the same extensions, as those of a deviate 'replace' do. */
void Groupings::GiveRefined(std::vector<Refinement> &refined, const Use &use)
{
    std::stable_sort(refined.begin(), refined.end(), [](const Refinement &left, const Refinement &right) {
        return std::less<>()(left.node, right.node);
    });
    std::vector<const ExtensionSet *> sets;
    for (size_t i = 0; i < refined.size();) {
        QY_NODE *node = refined[i].node;
        sets.assign(1, node->extensions);
        size_t count = node->extensions != nullptr ? node->extensions->count : 0;
        for (; i < refined.size() && refined[i].node == node; ++i) {
            sets.push_back(refined[i].set);
            count += refined[i].set->count;
        }
        build_.CountJoined(use.site.File(), refined[i - 1].refine, count);
        ShowExtensions(build_, use.statement, use.site, node, RefinedSet(build_.module.records, sets));
    }
}

} // namespace qxyang
