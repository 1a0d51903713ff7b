#include "build/tree_builder.h"

#include "build/definitions.h"
#include "build/extensions.h"
#include "build/if_feature.h"
#include "build/leafref_path.h"
#include "build/list_keys.h"
#include "build/new_nodes.h"
#include "build/node_conditions.h"
#include "build/node_kinds.h"
#include "build/operation_places.h"

namespace qxyang {

void TreeBuilder::BuildModule()
{
    for (Unit *unit : build_.units)
        RunOnHeap(groupings_.CompileDefinitions(unit->root, {build_.UnitScope(*unit), 0, false}));
    QY_MOD &module = build_.module;
    std::vector<const ExtensionSet *> extensions;
    for (Unit *unit : build_.units) {
        RunOnHeap(AddChildren(unit->root, &module.root, {build_.UnitScope(*unit), 0, false}));
        extensions.push_back(ExtensionsOf(build_, *unit, unit->root));
    }
    module.extensions = JoinedSets(module.records, extensions);
    names_.CheckAdditions(0);
    names_.CheckModule();
}

OnHeap TreeBuilder::AddChildren(const Statement *statement, QY_NODE *parent, Site site)
{
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        if (child->keyword == Kw::Uses)
            co_await groupings_.Expand(child, parent, site);
        if (KindOf(child->keyword) == QY_NODE_TYPE_NONE)
            continue;
        QY_NODE *node = AddNode(child, parent, site);
        if (IsLeaf(node))
            continue;
        uint32_t levels = node->parent == parent ? 1 : 2; // a node of a choice may have got a case of its own
        co_await FillParent(child, node, site.Below(levels));
    }
}

/* A node without its children; a leaf is complete. */
QY_NODE *TreeBuilder::AddNode(const Statement *statement, QY_NODE *parent, const Site &site)
{
    QY_NODE *node = AppendNode(build_, statement, site, parent, KindOf(statement->keyword), NodeNameOf(statement));
    ShowExtensions(build_, statement, site, node, ExtensionsOf(build_, site.File(), statement));
    node->flags |= FlagsOf(statement->properties);
    SetCondition(node, ConditionsOf(build_, site.File(), statement));
    if (IsLeaf(node))
        FillLeaf(statement, node, site);
    else if (IsOperation(node))
        CheckOperationPlace(build_, statement, node, site.File());
    return node;
}

void TreeBuilder::FillLeaf(const Statement *statement, QY_NODE *leaf, const Site &site)
{
    const Statement *type = FindChild(statement, Kw::Type);
    leaf->type = types_.Compile(type, site.scope);
    build_.load.CountRange(site.File().source, type->offset, *leaf->type);
    if (leaf->type->refers && !site.isOfGrouping) // what a grouping's leaf refers to depends on where it is used
        AwaitTargets(build_, leaf, site.File(), type);
    constraints_.CheckNode(statement, leaf, site.File(), site.isOfGrouping);
}

/* Adds the node's children, of which the site tells. Their scope is the node's own if its statement makes one. */
OnHeap TreeBuilder::FillParent(const Statement *statement, QY_NODE *node, Site site)
{
    CheckDepth(build_, statement, site);
    const Scope *outer = site.scope;
    site.scope = ScopeOf(build_, statement, site.scope);
    if (site.scope != outer)
        co_await groupings_.CompileDefinitions(statement, site);
    size_t additions = names_.Additions();
    co_await AddChildren(statement, node, site);
    if (NameScope(node) == node)
        names_.CheckAdditions(additions);
    CompleteParent(statement, node, site);
}

/* What can be said of a node when it has its children. */
void TreeBuilder::CompleteParent(const Statement *statement, QY_NODE *node, const Site &site)
{
    if (node->kind == QY_NODE_TYPE_LIST)
        SetKeys(build_, statement, node, site.File());
    if (node->kind == QY_NODE_TYPE_RPC)
        AddMissingBranches(statement, node, site);
    if (node->kind == QY_NODE_TYPE_CHOICE)
        names_.CheckCases(node, statement, site.scope);
    else if (node->kind != QY_NODE_TYPE_CASE)
        names_.CheckChildren(node, statement, site.scope);
    constraints_.CheckNode(statement, node, site.File(), site.isOfGrouping);
}

/* RFC 7950, 7.14: each operation has an input and an output node, whether its statement has such statements or not. */
void TreeBuilder::AddMissingBranches(const Statement *statement, QY_NODE *operation, const Site &site)
{
    bool hasInput = false;
    bool hasOutput = false;
    for (const QY_NODE *child = operation->first; child != nullptr; child = child->next) {
        hasInput = hasInput || child->kind == QY_NODE_TYPE_INPUT;
        hasOutput = hasOutput || child->kind == QY_NODE_TYPE_OUTPUT;
    }
    auto add = [&](uint8_t kind, const char *name) {
        AppendNode(build_, statement, site, operation, kind, name)->flags |= NODE_IMPLICIT;
    };
    if (!hasInput)
        add(QY_NODE_TYPE_INPUT, "input");
    if (!hasOutput)
        add(QY_NODE_TYPE_OUTPUT, "output");
}

} // namespace qxyang
