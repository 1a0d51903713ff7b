#include "build/build.h"

#include <memory>
#include <utility>

#include "schema/ranges.h"

namespace qxyang {

void LoadState::CountRange(Source &source, uint32_t offset, const QY_TYPE &type)
{
    if (type.base == nullptr || BuiltinRange(type.builtin) == nullptr || type.range->count == 1)
        return;
    rangeParts += type.range->count;
    if (rangeParts > limits::RANGE_PARTS)
        StopAtLimit(source, offset, limits::RANGE_PARTS, "parts of ranges of leaves");
}

void LoadState::CountLeafref(const PendingLeafref &pending)
{
    const QY_NODE *leaf = pending.leaf;
    for (size_t i = 0; leaf != nullptr && i < limits::CHAIN; ++i) {
        typesPassed += leaf->type->depth + size_t{1};
        if (leaf->type->builtin != QY_TYPE_LEAFREF)
            break;
        leaf = leaf->target;
    }
    if (typesPassed > limits::LEAFREF_TYPES)
        StopAtLimit(pending.unit->source, pending.offset, limits::LEAFREF_TYPES, "types on the ways of leafrefs");
    if (leaf != nullptr)
        CountRange(pending.unit->source, pending.offset, *leaf->type);
}

void LoadState::StopAtLimit(Source &source, uint32_t offset, size_t limit, std::string_view what)
{
    failures.Add(source, offset, "the load needs more than " + std::to_string(limit) + " " + std::string(what));
    throw LoadStopped{};
}

Build::Build(LoadState &state, QY_MOD &built, std::vector<Unit *> files)
    : load(state), module(built), units(std::move(files)), start_(state.failures.Now())
{
    for (Unit *unit : units)
        scopes_.push_back({nullptr, unit, {}, {}});
    if (load.context.details == nullptr)
        return;
    module.details = std::make_unique<ModuleDetails>();
    for (Unit *unit : units)
        unit->keptFile = load.context.details->AddFile(module, unit->Name(), unit->source.Path(), unit->source.Text());
}

void Build::KeepOrigin(const QY_NODE *node, Spot statement)
{
    module.details->nodes[node].statement = statement;
}

void Build::KeepChange(const QY_NODE *node, Spot change)
{
    std::vector<Spot> &changes = node->module->details->nodes[node].changes;
    std::vector<const QY_NODE *> &changed = module.details->changed;
    if (node->module != &module && (changed.empty() || changed.back() != node))
        changed.push_back(node);
    changes.push_back(change);
}

void Build::KeepType(const QY_TYPE *type, Spot definition)
{
    module.details->typedefs.push_back(type);
    load.context.details->typedefs[type] = definition;
}

void Build::KeepCopy(const QY_NODE *copy, const QY_NODE *from, const QY_NODE *parent, Spot uses)
{
    NodeOrigin origin = from->module->details->nodes[from];
    origin.uses = uses;
    if (copy->parent != parent)
        module.details->nodes[copy->parent] = {origin.statement, uses, {}};
    module.details->nodes[copy] = std::move(origin);
}

/* The scopes of the units come first, in the order of the units. */
Scope *Build::UnitScope(const Unit &unit)
{
    size_t i = 0;
    while (units[i] != &unit)
        ++i;
    return &scopes_[i];
}

Scope *Build::NewScope(Scope *outer)
{
    scopes_.push_back({outer, outer->unit, {}, {}});
    return &scopes_.back();
}

QY_MOD *Build::ModuleOf(Unit &unit, const Statement *statement, const Reference &reference)
{
    QY_MOD *found = unit.BoundModule(reference.prefix);
    if (found != nullptr)
        return found;
    std::string text = std::string(reference.prefix) + ":" + std::string(reference.name);
    Fail(unit, statement, "unknown prefix " + Quoted(reference.prefix) + " in " + Quoted(text), {{}, reference.prefix},
         [&unit](auto &&offer) {
             for (const PrefixBinding *binding : unit.bindings)
                 offer(binding->name);
         });
    return nullptr;
}

void Build::CountJoined(Unit &unit, const Statement *statement, size_t count)
{
    load.joinedExtensions += count;
    if (load.joinedExtensions <= limits::JOINED_STATEMENTS)
        return;
    Fail(unit, statement,
         "the load needs more than " + std::to_string(limits::JOINED_STATEMENTS) +
             " extension statements of nodes that are refined or deviated");
    throw LoadStopped{};
}

void Build::KeepFiles()
{
    for (const Unit *unit : units)
        module.files.push_back(
            {module.texts.Text(unit->Name()), module.texts.Text(unit->source.Path()), unit->source.IsCompact()});
}

void Build::ForgetStatements()
{
    auto forget = [](auto &record) { record.statement = nullptr; };
    module.typedefs.ForEach(forget);
    module.groupings.ForEach(forget);
    module.identities.ForEach(forget);
    module.features.ForEach(forget);
    for (Unit *unit : units) {
        unit->root = nullptr;
        unit->extensionUses = {};
        unit->prefixes = {};
        unit->statements.Clear();
    }
}

} // namespace qxyang
