#include "tree_builder.h"

#include "definitions.h"
#include "extensions.h"
#include "if_feature.h"
#include "schema_path.h"

namespace qxyang {

namespace {

/* The node type that a statement makes, or 0. */
uint8_t kindOf(Kw keyword)
{
    switch (keyword) {
        case Kw::kContainer:
            return QY_NODE_TYPE_CONTAINER;
        case Kw::kLeaf:
            return QY_NODE_TYPE_LEAF;
        case Kw::kLeafList:
            return QY_NODE_TYPE_LEAF_LIST;
        case Kw::kList:
            return QY_NODE_TYPE_LIST;
        case Kw::kChoice:
            return QY_NODE_TYPE_CHOICE;
        case Kw::kCase:
            return QY_NODE_TYPE_CASE;
        case Kw::kAnyxml:
            return QY_NODE_TYPE_ANYXML;
        case Kw::kAnydata:
            return QY_NODE_TYPE_ANYDATA;
        case Kw::kRpc:
        case Kw::kAction:
            return QY_NODE_TYPE_RPC;
        case Kw::kInput:
            return QY_NODE_TYPE_INPUT;
        case Kw::kOutput:
            return QY_NODE_TYPE_OUTPUT;
        case Kw::kNotification:
            return QY_NODE_TYPE_NOTIFICATION;
        default:
            return QY_NODE_TYPE_NONE;
    }
}

const char *nameOf(const Statement *statement)
{
    if (statement->keyword == Kw::kInput)
        return "input";
    return statement->keyword == Kw::kOutput ? "output" : statement->argument;
}

}  // namespace

void TreeBuilder::buildModule()
{
    for (Unit *unit : build_.units)
        compileDefinitions(unit->root, build_.unitScope(*unit));
    QY_MOD &module = build_.module;
    for (Unit *unit : build_.units) {
        addChildren(unit->root, &module.root, build_.unitScope(*unit));
        module.extensions = joinedSets(module.records, module.extensions, extensionsOf(build_, *unit, unit->root));
    }
    checkModuleNames();
}

void TreeBuilder::compileDefinitions(const Statement *statement, Scope *scope)
{
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        if (child->keyword == Kw::kTypedef) {
            auto &table = scope->outer == nullptr ? build_.module.typedefs : scope->typedefs;
            if (Typedef *definition = table.find(child->argument))
                types_.compile(*definition);
        } else if (child->keyword == Kw::kGrouping) {
            auto &table = scope->outer == nullptr ? build_.module.groupings : scope->groupings;
            if (Grouping *grouping = table.find(child->argument))
                compile(*grouping);
        }
    }
}

Scope *TreeBuilder::enterScope(const Statement *statement, Scope *outer)
{
    Scope *scope = scopeOf(build_, statement, outer);
    if (scope != outer)
        compileDefinitions(statement, scope);
    return scope;
}

void TreeBuilder::checkDepth()
{
    if (depth_ <= limits::kSchemaDepth)
        return;
    build_.fail(*unit_, statement_,
                "schema nodes are nested deeper than " + std::to_string(limits::kSchemaDepth) + " levels");
    throw LoadStopped{};
}

/* A node that needs no case of its own in a choice gets one of its name. */
QY_NODE *TreeBuilder::append(QY_NODE *parent, uint8_t kind, const char *name)
{
    if (parent->kind == QY_NODE_TYPE_CHOICE && kind != QY_NODE_TYPE_CASE)
        parent = append(parent, QY_NODE_TYPE_CASE, name);
    if (++build_.load.nodes > limits::kSchemaNodes) {
        build_.fail(*unit_, statement_,
                    "the load needs more than " + std::to_string(limits::kSchemaNodes) + " schema nodes");
        throw LoadStopped{};
    }
    QY_MOD &module = build_.module;
    QY_NODE *node = chain_.empty() ? module.nodes.make() : module.templates.make();
    node->kind = kind;
    node->name = name;
    node->module = &module;
    node->parent = parent;
    (parent->last != nullptr ? parent->last->next : parent->first) = node;
    parent->last = node;
    return node;
}

void TreeBuilder::addChildren(const Statement *statement, QY_NODE *parent, Scope *scope)
{
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        if (kindOf(child->keyword) != QY_NODE_TYPE_NONE)
            addNode(child, parent, scope);
        else if (child->keyword == Kw::kUses)
            expandUses(child, parent, scope);
    }
}

void TreeBuilder::addNode(const Statement *statement, QY_NODE *parent, Scope *scope)
{
    unit_ = scope->unit;
    statement_ = statement;
    QY_NODE *node = append(parent, kindOf(statement->keyword), nameOf(statement));
    node->extensions = extensionsOf(build_, *scope->unit, statement);
    setCondition(node, conditionsOf(build_, *scope->unit, statement));
    if (isLeaf(node))
        return fillLeaf(statement, node, scope);
    Depth depth(depth_);
    checkDepth();
    fillParent(statement, node, scope);
}

void TreeBuilder::fillLeaf(const Statement *statement, QY_NODE *leaf, Scope *scope)
{
    const Statement *type = findChild(statement, Kw::kType);
    leaf->type = types_.compile(type, scope);
    if (leaf->type->refers)
        awaitTargets(leaf, scope->unit, type);
}

void TreeBuilder::awaitTargets(QY_NODE *leaf, Unit *unit, const Statement *statement)
{
    if (!chain_.empty())  // of a grouping: where it is used matters
        return;
    auto &pending = build_.load.leafrefs;
    if (leaf->type->builtin == QY_TYPE_LEAFREF) {
        pending.push_back({leaf, leaf->type, unit, statement->offset});
        return;
    }
    for (uint32_t i = 0; i < leaf->type->members->count; ++i)
        if (const QY_TYPE *member = leaf->type->members->types[i]; member->builtin == QY_TYPE_LEAFREF)
            pending.push_back({leaf, member, unit, statement->offset});
}

void TreeBuilder::fillParent(const Statement *statement, QY_NODE *node, Scope *scope)
{
    Scope *inner = enterScope(statement, scope);
    addChildren(statement, node, inner);
    if (node->kind == QY_NODE_TYPE_LIST)
        setKeys(statement, node, *scope->unit);
    if (node->kind == QY_NODE_TYPE_RPC)
        addMissingBranches(node);
    if (node->kind == QY_NODE_TYPE_CHOICE) {
        if (const QY_NODE *twice = names_.findTwiceAmongCases(node, &build_.module))
            failTwice(twice, node, scope, statement);
    } else if (node->kind != QY_NODE_TYPE_CASE) {
        checkNames(node, statement, inner);
    }
}

void TreeBuilder::addMissingBranches(QY_NODE *operation)
{
    bool hasInput = false;
    bool hasOutput = false;
    for (const QY_NODE *child = operation->first; child != nullptr; child = child->next) {
        hasInput = hasInput || child->kind == QY_NODE_TYPE_INPUT;
        hasOutput = hasOutput || child->kind == QY_NODE_TYPE_OUTPUT;
    }
    if (!hasInput)
        append(operation, QY_NODE_TYPE_INPUT, "input")->flags |= kNodeImplicit;
    if (!hasOutput)
        append(operation, QY_NODE_TYPE_OUTPUT, "output")->flags |= kNodeImplicit;
}

/* ---- keys ------------------------------------------------------------------------------------------------------ */

void TreeBuilder::setKeys(const Statement *statement, QY_NODE *list, Unit &unit)
{
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        if (child->keyword == Kw::kUnique)
            checkUnique(child, list, unit);
        if (child->keyword != Kw::kKey)
            continue;
        std::string_view rest = child->argument;
        for (std::string_view key = takeWord(rest); !key.empty(); key = takeWord(rest))
            setKey(child, key, list, unit);
    }
}

void TreeBuilder::setKey(const Statement *key, std::string_view text, QY_NODE *list, Unit &unit)
{
    Reference reference = splitReference(text);
    QY_MOD *module = build_.moduleOf(unit, key, reference);
    if (module == nullptr)
        return;
    QY_NODE *leaf = build_.load.finder.schemaChild(list, module, reference.name);
    std::string title = "key " + quoted(text) + " of list " + quoted(list->name);
    if (leaf == nullptr) {
        NearestName nearest(reference.name);
        for (QY_NODE *child = list->first; child != nullptr; child = child->next)
            if (child->kind == QY_NODE_TYPE_LEAF)
                nearest.offer(child->name);
        return build_.fail(unit, key, title + " is no leaf of it" + nearest.hint());
    }
    if (leaf->kind != QY_NODE_TYPE_LEAF)
        return build_.fail(unit, key, title + " is a " + std::string(kindName(leaf->kind)) + ", not a leaf");
    if ((leaf->flags & kNodeIsKey) != 0)
        return build_.fail(unit, key, title + " is named twice");
    if (list->keyCount == limits::kListKeys)
        return build_.fail(
            unit, key, "list " + quoted(list->name) + " has more than " + std::to_string(limits::kListKeys) + " keys");
    leaf->flags |= kNodeIsKey;
    ++list->keyCount;
}

/* Nobody asks for unique statements; that they name leaves below the list is worth knowing all the same. */
void TreeBuilder::checkUnique(const Statement *statement, QY_NODE *list, Unit &unit)
{
    std::string_view rest = statement->argument;
    for (std::string_view tag = takeWord(rest); !tag.empty(); tag = takeWord(rest)) {
        QY_NODE *at = list;
        for (std::string_view left = tag; at != nullptr && !left.empty();) {
            size_t end = std::min(left.find('/'), left.size());
            Reference reference = splitReference(left.substr(0, end));
            QY_MOD *module = build_.moduleOf(unit, statement, reference);
            if (module == nullptr)
                return;
            at = build_.load.finder.schemaChild(at, module, reference.name);
            left.remove_prefix(std::min(end + 1, left.size()));
        }
        if (at == nullptr || at->kind != QY_NODE_TYPE_LEAF)
            build_.fail(unit, statement, "unique " + quoted(tag) + " is no leaf below list " + quoted(list->name));
    }
}

/* ---- names ----------------------------------------------------------------------------------------------------- */

void TreeBuilder::checkNames(QY_NODE *parent, const Statement *statement, Scope *scope)
{
    if (const QY_NODE *twice = names_.findTwice(parent, &build_.module))
        failTwice(twice, parent, scope, statement);
}

void TreeBuilder::checkModuleNames()
{
    QY_NODE &root = build_.module.root;
    const QY_NODE *twice = names_.findTwice(&root, &build_.module);
    if (twice == nullptr)
        return;
    Unit *where = build_.units.back();
    for (Unit *unit : build_.units) {
        std::vector<const Statement *> found;
        findStatements(unit->root, build_.unitScope(*unit), twice->name, found);
        if (!found.empty())
            where = unit;
    }
    failTwice(twice, &root, build_.unitScope(*where), where->root);
}

/* Reports the name at the second of the statements that bring it, or at the only one, or at the one around. */
void TreeBuilder::failTwice(const QY_NODE *node, const QY_NODE *parent, Scope *scope, const Statement *where)
{
    std::vector<const Statement *> found;
    findStatements(where, scope, node->name, found);
    if (!found.empty())
        where = found[std::min<size_t>(1, found.size() - 1)];
    build_.fail(*scope->unit, where, "second node " + quoted(node->name) + " in " + describeNode(parent));
}

/* The statements directly in a statement, or in choices and cases there, that make or bring a node of that name. */
void TreeBuilder::findStatements(const Statement *statement, Scope *scope, std::string_view name,
                                 std::vector<const Statement *> &found)
{
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        if (child->keyword == Kw::kUses) {
            const Grouping *grouping = findGrouping(build_, scope, child);
            if (grouping != nullptr && grouping->root != nullptr &&
                build_.load.finder.dataChild(grouping->root, grouping->root->module, name) != nullptr)
                found.push_back(child);
            continue;
        }
        if (kindOf(child->keyword) == QY_NODE_TYPE_NONE)
            continue;
        if (name == nameOf(child))
            found.push_back(child);
        else if (child->keyword == Kw::kChoice || child->keyword == Kw::kCase)
            findStatements(child, scope, name, found);
    }
}

/* ---- conditions ------------------------------------------------------------------------------------------------ */

namespace {

void markBelow(QY_NODE *node, bool gated)
{
    gated = gated || node->condition != 0;
    if (gated)
        node->flags |= kNodeGated;
    for (QY_NODE *child = firstChild(node); child != nullptr; child = child->next)
        markBelow(child, gated);
}

bool isGated(const QY_NODE *node)
{
    return (node->flags & kNodeGated) != 0;
}

}  // namespace

void TreeBuilder::markGated()
{
    QY_MOD &module = build_.module;
    if (!module.conditions.empty())
        markBelow(&module.root, false);
    for (QY_NODE *augment : module.augments) {
        bool gated = isGated(augment->parent) || augment->condition != 0;
        if (gated)
            augment->flags |= kNodeGated;
        if (augment->first == nullptr || (module.conditions.empty() && !gated))
            continue;
        for (QY_NODE *child = augment->first;; child = child->next) {
            markBelow(child, gated);
            if (child == augment->last)
                break;
        }
    }
}

void addConditions(QY_NODE *node, const Condition *conditions)
{
    const Condition *list = conditionOf(node);
    if (list == nullptr)
        return setCondition(node, conditions);
    for (; conditions != nullptr; conditions = conditions->next)
        list = node->module->records.make<Condition>(list, conditions->expression);
    setCondition(node, list);
}

}  // namespace qxyang
