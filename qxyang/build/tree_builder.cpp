#include "build/tree_builder.h"

#include "build/definitions.h"
#include "build/extensions.h"
#include "build/if_feature.h"
#include "build/schema_path.h"

namespace qxyang {

namespace {

/* The node type that a statement makes, or 0. */
uint8_t KindOf(Kw keyword)
{
    switch (keyword) {
        case Kw::Container:
            return QY_NODE_TYPE_CONTAINER;
        case Kw::Leaf:
            return QY_NODE_TYPE_LEAF;
        case Kw::LeafList:
            return QY_NODE_TYPE_LEAF_LIST;
        case Kw::List:
            return QY_NODE_TYPE_LIST;
        case Kw::Choice:
            return QY_NODE_TYPE_CHOICE;
        case Kw::Case:
            return QY_NODE_TYPE_CASE;
        case Kw::Anyxml:
            return QY_NODE_TYPE_ANYXML;
        case Kw::Anydata:
            return QY_NODE_TYPE_ANYDATA;
        case Kw::Rpc:
        case Kw::Action:
            return QY_NODE_TYPE_RPC;
        case Kw::Input:
            return QY_NODE_TYPE_INPUT;
        case Kw::Output:
            return QY_NODE_TYPE_OUTPUT;
        case Kw::Notification:
            return QY_NODE_TYPE_NOTIFICATION;
        default:
            return QY_NODE_TYPE_NONE;
    }
}

const char *NameOf(const Statement *statement)
{
    if (statement->keyword == Kw::Input)
        return "input";
    return statement->keyword == Kw::Output ? "output" : statement->argument;
}

} // namespace

void TreeBuilder::BuildModule()
{
    for (Unit *unit : build_.units)
        RunOnHeap(CompileDefinitions(unit->root, build_.UnitScope(*unit)));
    QY_MOD &module = build_.module;
    std::vector<const ExtensionSet *> extensions;
    for (Unit *unit : build_.units) {
        RunOnHeap(AddChildren(unit->root, &module.root, build_.UnitScope(*unit)));
        extensions.push_back(ExtensionsOf(build_, *unit, unit->root));
    }
    module.extensions = JoinedSets(module.records, extensions);
    CheckAdditions(0);
    CheckModuleNames();
}

OnHeap TreeBuilder::CompileDefinitions(const Statement *statement, Scope *scope)
{
    bool isModules = scope->outer == nullptr;
    const NameTable<Typedef> *typedefs = isModules ? &build_.module.typedefs : &scope->typedefs;
    const NameTable<Grouping> *groupings = isModules ? &build_.module.groupings : &scope->groupings;
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        if (child->keyword == Kw::Typedef) {
            if (Typedef *definition = typedefs->Find(child->argument))
                types_.Compile(*definition);
        } else if (child->keyword == Kw::Grouping) {
            if (Grouping *grouping = groupings->Find(child->argument))
                co_await Compile(*grouping);
        }
    }
}

void TreeBuilder::CheckDepth()
{
    if (depth_ <= limits::SCHEMA_DEPTH)
        return;
    build_.Fail(*unit_, statement_,
                "schema nodes are nested deeper than " + std::to_string(limits::SCHEMA_DEPTH) + " levels");
    throw LoadStopped{};
}

/* A node that needs no case of its own in a choice gets one of its name. */
QY_NODE *TreeBuilder::Append(QY_NODE *parent, uint8_t kind, const char *name)
{
    if (parent->kind == QY_NODE_TYPE_CHOICE && kind != QY_NODE_TYPE_CASE)
        parent = Append(parent, QY_NODE_TYPE_CASE, name);
    if (++build_.load.nodes > limits::SCHEMA_NODES) {
        build_.Fail(*unit_, statement_,
                    "the load needs more than " + std::to_string(limits::SCHEMA_NODES) + " schema nodes");
        throw LoadStopped{};
    }
    QY_MOD &module = build_.module;
    QY_NODE *node = chain_.empty() ? module.nodes.Make() : module.templates.Make();
    node->kind = kind;
    node->name = name;
    node->module = &module;
    node->parent = parent;
    (parent->last != nullptr ? parent->last->next : parent->first) = node;
    parent->last = node;
    return node;
}

OnHeap TreeBuilder::AddChildren(const Statement *statement, QY_NODE *parent, Scope *scope)
{
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        if (child->keyword == Kw::Uses)
            co_await ExpandUses(child, parent, scope);
        if (KindOf(child->keyword) == QY_NODE_TYPE_NONE)
            continue;
        QY_NODE *node = AddNode(child, parent, scope);
        if (IsLeaf(node))
            continue;
        const size_t levels = node->parent == parent ? 1 : 2; // a node of a choice may have got a case of its own
        depth_ += levels;
        co_await FillParent(child, node, scope);
        depth_ -= levels;
    }
}

/* A node without its children; a leaf is complete. */
QY_NODE *TreeBuilder::AddNode(const Statement *statement, QY_NODE *parent, Scope *scope)
{
    unit_ = scope->unit;
    statement_ = statement;
    QY_NODE *node = Append(parent, KindOf(statement->keyword), NameOf(statement));
    ShowExtensions(node, ExtensionsOf(build_, *scope->unit, statement));
    node->flags |= FlagsOf(statement->properties);
    SetCondition(node, ConditionsOf(build_, *scope->unit, statement));
    if (IsLeaf(node))
        FillLeaf(statement, node, scope);
    return node;
}

void TreeBuilder::FillLeaf(const Statement *statement, QY_NODE *leaf, Scope *scope)
{
    const Statement *type = FindChild(statement, Kw::Type);
    leaf->type = types_.Compile(type, scope);
    build_.load.CountRange(scope->unit->source, type->offset, *leaf->type);
    if (leaf->type->refers)
        AwaitTargets(leaf, scope->unit, type);
    constraints_.CheckNode(statement, leaf, *scope->unit, !chain_.empty());
}

void TreeBuilder::AwaitTargets(QY_NODE *leaf, Unit *unit, const Statement *statement)
{
    if (!chain_.empty()) // of a grouping: where it is used matters
        return;
    if (leaf->type->builtin == QY_TYPE_LEAFREF)
        return AwaitTarget({leaf, leaf->type, unit, statement->offset, 0}, statement);
    for (uint32_t i = 0; i < leaf->type->members->count; ++i)
        if (const QY_TYPE *member = leaf->type->members->types[i]; member->builtin == QY_TYPE_LEAFREF)
            AwaitTarget({leaf, member, unit, statement->offset, i}, statement);
}

void TreeBuilder::AwaitTarget(const PendingLeafref &pending, const Statement *statement)
{
    LoadState &load = build_.load;
    if (const LeafrefPath *path = pending.type->path)
        load.leafrefSteps += path->up + path->count;
    if (load.leafrefs.size() >= limits::LEAFREFS || load.leafrefSteps > limits::LEAFREF_STEPS) {
        bool many = load.leafrefs.size() >= limits::LEAFREFS;
        build_.Fail(*pending.unit, statement,
                    "the load needs more than " + std::to_string(many ? limits::LEAFREFS : limits::LEAFREF_STEPS) +
                        (many ? " leafrefs" : " steps of leafrefs"));
        throw LoadStopped{};
    }
    load.leafrefs.push_back(pending);
}

/* Gives a node that was made extension instances that may be those of many others. */
void TreeBuilder::ShowExtensions(QY_NODE *node, const ExtensionSet *set)
{
    node->extensions = set;
    if (set == nullptr || (build_.load.extensions += set->total) <= limits::EXTENSION_STATEMENTS)
        return;
    build_.Fail(*unit_, statement_,
                "the load needs more than " + std::to_string(limits::EXTENSION_STATEMENTS) +
                    " extension statements of schema nodes");
    throw LoadStopped{};
}

OnHeap TreeBuilder::FillParent(const Statement *statement, QY_NODE *node, Scope *scope)
{
    CheckDepth();
    Scope *inner = ScopeOf(build_, statement, scope);
    if (inner != scope)
        co_await CompileDefinitions(statement, inner);
    const size_t additions = added_.size();
    co_await AddChildren(statement, node, inner);
    if (NameScope(node) == node)
        CheckAdditions(additions);
    CompleteParent(statement, node, scope, inner);
}

/* What can be said of a node when it has its children. */
void TreeBuilder::CompleteParent(const Statement *statement, QY_NODE *node, Scope *scope, Scope *inner)
{
    if (node->kind == QY_NODE_TYPE_LIST)
        SetKeys(statement, node, *scope->unit);
    if (node->kind == QY_NODE_TYPE_RPC)
        AddMissingBranches(node);
    if (node->kind == QY_NODE_TYPE_CHOICE) {
        if (const QY_NODE *twice = names_.FindTwiceAmongCases(node, &build_.module))
            FailTwice(twice, node, scope, statement);
    } else if (node->kind != QY_NODE_TYPE_CASE) {
        CheckNames(node, statement, inner);
    }
    constraints_.CheckNode(statement, node, *scope->unit, !chain_.empty());
}

void TreeBuilder::AddMissingBranches(QY_NODE *operation)
{
    bool hasInput = false;
    bool hasOutput = false;
    for (const QY_NODE *child = operation->first; child != nullptr; child = child->next) {
        hasInput = hasInput || child->kind == QY_NODE_TYPE_INPUT;
        hasOutput = hasOutput || child->kind == QY_NODE_TYPE_OUTPUT;
    }
    if (!hasInput)
        Append(operation, QY_NODE_TYPE_INPUT, "input")->flags |= NODE_IMPLICIT;
    if (!hasOutput)
        Append(operation, QY_NODE_TYPE_OUTPUT, "output")->flags |= NODE_IMPLICIT;
}

/* ---- keys ------------------------------------------------------------------------------------------------------ */

void TreeBuilder::SetKeys(const Statement *statement, QY_NODE *list, Unit &unit)
{
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        if (child->keyword == Kw::Unique)
            CheckUnique(child, list, unit);
        if (child->keyword != Kw::Key)
            continue;
        std::string_view rest = child->argument;
        for (std::string_view key = TakeWord(rest); !key.empty(); key = TakeWord(rest))
            SetKey(child, key, list, unit);
    }
}

void TreeBuilder::SetKey(const Statement *key, std::string_view text, QY_NODE *list, Unit &unit)
{
    Reference reference = SplitReference(text);
    QY_MOD *module = build_.ModuleOf(unit, key, reference);
    if (module == nullptr)
        return;
    QY_NODE *leaf = build_.load.finder.SchemaChild(list, module, reference.name);
    auto fail = [&](std::string_view what) {
        build_.Fail(unit, key, "key " + Quoted(text) + " of list " + Quoted(list->name) + std::string(what));
    };
    if (leaf == nullptr) {
        return build_.Fail(unit, key, "key " + Quoted(text) + " of list " + Quoted(list->name) + " is no leaf of it",
                           reference, [list](auto &&offer) {
                               for (QY_NODE *child = list->first; child != nullptr; child = child->next)
                                   if (child->kind == QY_NODE_TYPE_LEAF)
                                       offer(child->name);
                           });
    }
    if (leaf->kind != QY_NODE_TYPE_LEAF)
        return fail(" is " + DescribeNode(leaf) + ", not a leaf");
    if (leaf->condition != 0 && unit.isVersion11)
        return fail(" has an 'if-feature', which no key may have");
    if ((leaf->flags & NODE_IS_KEY) != 0)
        return fail(" is named twice");
    if (list->keyCount == limits::LIST_KEYS)
        return fail(" is more than the " + std::to_string(limits::LIST_KEYS) + " that a list can have");
    leaf->flags |= NODE_IS_KEY;
    ++list->keyCount;
}

/* Nobody asks for unique statements; that they name leaves below the list is worth knowing all the same. */
void TreeBuilder::CheckUnique(const Statement *statement, QY_NODE *list, Unit &unit)
{
    std::string_view rest = statement->argument;
    for (std::string_view tag = TakeWord(rest); !tag.empty(); tag = TakeWord(rest)) {
        QY_NODE *at = list;
        for (std::string_view left = tag; at != nullptr && !left.empty();) {
            size_t end = std::min(left.find('/'), left.size());
            Reference reference = SplitReference(left.substr(0, end));
            QY_MOD *module = build_.ModuleOf(unit, statement, reference);
            if (module == nullptr)
                return;
            at = build_.load.finder.SchemaChild(at, module, reference.name);
            left.remove_prefix(std::min(end + 1, left.size()));
        }
        if (at == nullptr || at->kind != QY_NODE_TYPE_LEAF)
            // NOLINTNEXTLINE(clang-analyzer-core.NullDereference)
            build_.Fail(unit, statement, "unique " + Quoted(tag) + " is no leaf below list " + Quoted(list->name));
    }
}

/* ---- names ----------------------------------------------------------------------------------------------------- */

void TreeBuilder::CheckNames(QY_NODE *parent, const Statement *statement, Scope *scope)
{
    if (const QY_NODE *twice = names_.FindTwice(parent, &build_.module))
        FailTwice(twice, parent, scope, statement);
}

void TreeBuilder::CheckModuleNames()
{
    QY_NODE &root = build_.module.root;
    const QY_NODE *twice = names_.FindTwice(&root, &build_.module);
    if (twice == nullptr)
        return;
    Unit *where = build_.units.back();
    for (Unit *unit : build_.units) {
        std::vector<const Statement *> found;
        FindStatements(unit->root, build_.UnitScope(*unit), twice->name, found);
        if (!found.empty())
            where = unit;
    }
    FailTwice(twice, &root, build_.UnitScope(*where), where->root);
}

/* Reports the name at the second of the statements that bring it, or at the only one, or at the one around. */
void TreeBuilder::FailTwice(const QY_NODE *node, const QY_NODE *parent, Scope *scope, const Statement *where)
{
    std::vector<const Statement *> found;
    FindStatements(where, scope, node->name, found);
    if (!found.empty())
        where = found[std::min<size_t>(1, found.size() - 1)];
    build_.Fail(*scope->unit, where, "second node " + Quoted(node->name) + " in " + DescribeNode(parent));
}

/* The statements directly in a statement, or in choices and cases there, that make or bring a node of that name. */
void TreeBuilder::FindStatements(const Statement *statement, Scope *scope, std::string_view name,
                                 std::vector<const Statement *> &found)
{
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        if (child->keyword == Kw::Uses) {
            const Grouping *grouping = FindGrouping(build_, scope, child);
            if (grouping != nullptr && grouping->root != nullptr &&
                build_.load.finder.DataChild(grouping->root, grouping->root->module, name) != nullptr)
                found.push_back(child);
            continue;
        }
        if (KindOf(child->keyword) == QY_NODE_TYPE_NONE)
            continue;
        if (name == NameOf(child))
            found.push_back(child);
        else if (child->keyword == Kw::Choice || child->keyword == Kw::Case)
            FindStatements(child, scope, name, found);
    }
}

/* ---- conditions ------------------------------------------------------------------------------------------------ */

namespace {

bool IsGated(const QY_NODE *node)
{
    return (node->flags & NODE_GATED) != 0;
}

/* Marks the node and those below it; `gated` is what stands above the node. */
void MarkBelow(QY_NODE *top, bool gated)
{
    auto all = [](const QY_NODE *) { return true; };
    for (QY_NODE *node = top; node != nullptr; node = NextBelow(top, node, all))
        if (node->condition != 0 || (node == top ? gated : IsGated(node->parent)))
            node->flags |= NODE_GATED;
}

} // namespace

void TreeBuilder::MarkGated()
{
    QY_MOD &module = build_.module;
    if (!module.conditions.empty())
        MarkBelow(&module.root, false);
    for (QY_NODE *augment : module.augments) {
        bool gated = IsGated(augment->parent) || augment->condition != 0;
        if (gated)
            augment->flags |= NODE_GATED;
        if (augment->first == nullptr || (module.conditions.empty() && !gated))
            continue;
        for (QY_NODE *child = augment->first;; child = child->next) {
            MarkBelow(child, gated);
            if (child == augment->last)
                break;
        }
    }
}

void AddConditions(QY_NODE *node, const Condition *conditions)
{
    if (const Condition *list = ConditionOf(node))
        conditions = node->module->records.Make<Condition>(list, conditions);
    SetCondition(node, conditions);
}

} // namespace qxyang
