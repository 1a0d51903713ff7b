#include "build/definitions.h"

#include <algorithm>
#include <type_traits>

#include "syntax/argument_form.h"

namespace qxyang {

namespace {

/* ---- registering ----------------------------------------------------------------------------------------------- */

class Collector {
  public:
    explicit Collector(Build &build) : build_(build), arena_(build.module.records) {}

    void Collect(Scope *unitScope)
    {
        QY_MOD &module = build_.module;
        for (Statement *statement = unitScope->unit->root->first; statement != nullptr; statement = statement->next) {
            switch (statement->keyword) {
                case Kw::Typedef:
                    AddTypedef(module.typedefs, statement, unitScope);
                    break;
                case Kw::Grouping:
                    AddGrouping(module.groupings, statement, unitScope);
                    break;
                case Kw::Identity:
                    Add(module.identities, MakeIdentity(statement, unitScope->unit), unitScope, statement);
                    break;
                case Kw::Feature:
                    Add(module.features, MakeFeature(statement, unitScope->unit), unitScope, statement);
                    break;
                case Kw::Extension:
                    Add(module.extensionDefinitions, MakeExtension(statement), unitScope, statement);
                    break;
                default:
                    break;
            }
        }
    }

    /* RFC 7950, 7.3: no typedef has the name of a built-in type. */
    void AddTypedef(NameTable<Typedef> &table, Statement *statement, Scope *scope)
    {
        if (BuiltinTypeNumber(statement->argument) != 0)
            return build_.Fail(*scope->unit, statement,
                               "typedef " + Quoted(statement->argument) + " has the name of a built-in type");
        auto *definition = arena_.Make<Typedef>(statement->argument, nullptr, Progress::Untouched, statement, scope);
        Add(table, definition, scope, statement);
    }

    void AddGrouping(NameTable<Grouping> &table, Statement *statement, Scope *scope)
    {
        auto *definition = arena_.Make<Grouping>(statement->argument, nullptr, Progress::Untouched, statement, scope);
        Add(table, definition, scope, statement);
    }

  private:
    /* RFC 7950, 6.2.1: definitions of one kind have different names. */
    template <class T>
    void Add(NameTable<T> &table, T *definition, Scope *scope, const Statement *statement)
    {
        if (table.Insert(definition) != nullptr)
            build_.Fail(*scope->unit, statement,
                        "second " + std::string(KeywordOf(statement->keyword).name) + " " + Quoted(definition->name));
    }

    Identity *MakeIdentity(Statement *statement, Unit *unit)
    {
        return arena_.Make<Identity>(statement->argument, statement, unit, 0u, false);
    }

    Feature *MakeFeature(Statement *statement, Unit *unit)
    {
        return arena_.Make<Feature>(statement->argument, &build_.module, nullptr, false, false, uint64_t{0}, statement,
                                    unit, 0u, false);
    }

    Extension *MakeExtension(Statement *statement)
    {
        const Statement *argument = FindChild(statement, Kw::Argument);
        bool isElement = argument != nullptr && ArgumentOf(argument, Kw::YinElement) == "true";
        return arena_.Make<Extension>(statement->argument, argument != nullptr ? argument->argument : nullptr,
                                      isElement,
                                      build_.load.context.KeepExtension(build_.module.name, statement->argument));
    }

    Build &build_;
    Arena &arena_;
};

template <class T, class Table>
bool IsKnownOutside(Scope *scope, std::string_view name, NameTable<T> Scope::*nested, const Table &top)
{
    for (Scope *outer = scope; outer != nullptr; outer = outer->outer)
        if ((outer->*nested).Find(name) != nullptr)
            return true;
    return top.Find(name) != nullptr;
}

/* ---- identities ------------------------------------------------------------------------------------------------ */

/* RFC 7950, 7.18.2: no identity refers to itself, directly or through others. */
class IdentityChecker {
  public:
    explicit IdentityChecker(Build &build) : build_(build) {}

    void Check(Identity &identity)
    {
        if (identity.chain != 0)
            return;
        auto nameOf = [](const Identity *entry) { return std::string_view(entry->name); };
        if (identity.visiting)
            return build_.Fail(*identity.unit, identity.statement,
                               "identity cycle: " + ChainText(chain_, identity.name, nameOf));
        if (chain_.size() >= limits::CHAIN)
            Stop(identity);
        identity.visiting = true;
        chain_.push_back(&identity);
        uint32_t longest = 0;
        for (Statement *base = identity.statement->first; base != nullptr; base = base->next) {
            if (base->keyword != Kw::Base)
                continue;
            Identity *found = FindIdentity(build_, *identity.unit, base);
            if (found == nullptr)
                continue;
            if (found->statement != nullptr) // of this module
                Check(*found);
            longest = std::max(longest, found->chain);
        }
        chain_.pop_back();
        identity.visiting = false;
        identity.chain = longest + 1;
        if (identity.chain > limits::CHAIN)
            Stop(identity);
    }

  private:
    void Stop(const Identity &identity)
    {
        build_.Fail(*identity.unit, identity.statement,
                    "identity " + Quoted(identity.name) + " is derived from a chain of more than " +
                        std::to_string(limits::CHAIN) + " identities");
        throw LoadStopped{};
    }

    Build &build_;
    std::vector<Identity *> chain_;
};

/* ---- finding --------------------------------------------------------------------------------------------------- */

/* The definition that the statement's argument names. It is looked for in the scopes around the statement if the
 * prefix stands for this module, and then among the module's own. */
template <class T>
T *FindDefinition(Build &build, Scope *scope, const Statement *statement, NameTable<T> Scope::*nested,
                  NameTable<T> QY_MOD::*top, std::string_view what)
{
    Unit &unit = *scope->unit;
    Reference reference = SplitReference(statement->argument);
    QY_MOD *module = build.ModuleOf(unit, statement, reference);
    if (module == nullptr)
        return nullptr;
    Scope *innermost = module == &build.module ? scope : nullptr;
    for (Scope *around = innermost; around != nullptr; around = around->outer)
        if (T *found = (around->*nested).Find(reference.name))
            return found;
    if (T *found = (module->*top).Find(reference.name))
        return found;
    build.FailUnknown(
        unit, statement, what, statement->argument,
        [&](auto &&offer) {
            for (Scope *around = innermost; around != nullptr; around = around->outer)
                ForEachNameIn(around->*nested, offer);
            ForEachNameIn(module->*top, offer);
            if (!std::is_same_v<T, Typedef> || !reference.prefix.empty())
                return;
            for (uint8_t type = 1; type <= QY_TYPE_UNION; ++type)
                offer(BuiltinTypeName(type));
        },
        [&](const QY_MOD &imported) { return (imported.*top).Find(reference.name) != nullptr; });
    return nullptr;
}

} // namespace

void CollectDefinitions(Build &build)
{
    Collector collector(build);
    for (Unit *unit : build.units)
        collector.Collect(build.UnitScope(*unit));
}

/* RFC 7950, 5.5: no definition has the name of one in a scope around it. */
Scope *ScopeOf(Build &build, const Statement *statement, Scope *outer)
{
    if ((statement->properties & HAS_DEFINITIONS) == 0)
        return outer;
    Collector collector(build);
    Scope *scope = build.NewScope(outer);
    auto failShadowing = [&](const Statement *child) {
        build.Fail(*scope->unit, child,
                   std::string(KeywordOf(child->keyword).name) + " " + Quoted(child->argument) +
                       " has the name of one defined around it");
    };
    for (Statement *child = statement->first; child != nullptr; child = child->next) {
        if (child->keyword == Kw::Typedef) {
            if (IsKnownOutside(outer, child->argument, &Scope::typedefs, build.module.typedefs))
                failShadowing(child);
            collector.AddTypedef(scope->typedefs, child, scope);
        } else if (child->keyword == Kw::Grouping) {
            if (IsKnownOutside(outer, child->argument, &Scope::groupings, build.module.groupings))
                failShadowing(child);
            collector.AddGrouping(scope->groupings, child, scope);
        }
    }
    return scope;
}

void CheckIdentities(Build &build)
{
    IdentityChecker checker(build);
    for (Unit *unit : build.units)
        for (Statement *statement = unit->root->first; statement != nullptr; statement = statement->next)
            if (statement->keyword == Kw::Identity)
                if (Identity *identity = build.module.identities.Find(statement->argument))
                    checker.Check(*identity);
}

Typedef *FindTypedef(Build &build, Scope *scope, const Statement *type)
{
    return FindDefinition(build, scope, type, &Scope::typedefs, &QY_MOD::typedefs, "type");
}

Grouping *FindGrouping(Build &build, Scope *scope, const Statement *uses)
{
    return FindDefinition(build, scope, uses, &Scope::groupings, &QY_MOD::groupings, "grouping");
}

Identity *FindIdentity(Build &build, Unit &unit, const Statement *base)
{
    Reference reference = SplitReference(base->argument);
    QY_MOD *module = build.ModuleOf(unit, base, reference);
    if (module == nullptr)
        return nullptr;
    Identity *identity = module->identities.Find(reference.name);
    if (identity == nullptr)
        build.FailUnknown(
            unit, base, "identity", base->argument,
            [module](auto &&offer) { ForEachNameIn(module->identities, offer); },
            [&](const QY_MOD &imported) { return imported.identities.Find(reference.name) != nullptr; });
    return identity;
}

} // namespace qxyang
