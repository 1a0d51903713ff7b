#include "build.h"

namespace qxyang {

Build::Build(LoadState &state, QY_MOD &built, std::vector<Unit *> files)
    : load(state), module(built), units(std::move(files)), start_(state.failures.Now())
{
    for (Unit *unit : units)
        scopes_.push_back({nullptr, unit, {}, {}});
}

/* The first scopes are those of the units, in their order. */
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
        unit->bindings.clear();
        unit->prefixes = {};
        unit->statements.Clear();
    }
}

} // namespace qxyang
