#include "build.h"

namespace qxyang {

Build::Build(LoadState &state, QY_MOD &built, std::vector<Unit *> files)
    : load(state), module(built), units(std::move(files)), failuresBefore_(state.failures.count())
{
    for (Unit *unit : units)
        scopes_.push_back({nullptr, unit, {}, {}});
}

/* The first scopes are those of the units, in their order. */
Scope *Build::unitScope(const Unit &unit)
{
    size_t i = 0;
    while (units[i] != &unit)
        ++i;
    return &scopes_[i];
}

Scope *Build::newScope(Scope *outer)
{
    scopes_.push_back({outer, outer->unit, {}, {}});
    return &scopes_.back();
}

QY_MOD *Build::moduleOf(Unit &unit, const Statement *statement, const Reference &reference)
{
    QY_MOD *found = unit.boundModule(reference.prefix);
    if (found != nullptr)
        return found;
    NearestName nearest(reference.prefix);
    for (const PrefixBinding &binding : unit.bindings)
        nearest.offer(binding.prefix);
    std::string text = std::string(reference.prefix) + ":" + std::string(reference.name);
    fail(unit, statement, "unknown prefix " + quoted(reference.prefix) + " in " + quoted(text) + nearest.hint());
    return nullptr;
}

void Build::forgetStatements()
{
    auto forget = [](auto &record) { record.statement = nullptr; };
    module.typedefs.forEach(forget);
    module.groupings.forEach(forget);
    module.identities.forEach(forget);
    module.features.forEach(forget);
    for (Unit *unit : units) {
        unit->root = nullptr;
        unit->extensionUses = {};
        unit->bindings.clear();
        unit->statements.clear();
    }
}

}  // namespace qxyang
