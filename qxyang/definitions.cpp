#include "definitions.h"

#include "argument_form.h"

namespace qxyang {

namespace {

std::string_view valueOf(const Statement *statement)
{
    return statement != nullptr ? statement->argument : "";
}

/* ---- registering ----------------------------------------------------------------------------------------------- */

class Collector {
  public:
    explicit Collector(Build &build) : build_(build), arena_(build.module.records) {}

    void collect(Scope *unitScope)
    {
        QY_MOD &module = build_.module;
        for (Statement *statement = unitScope->unit->root->first; statement != nullptr; statement = statement->next) {
            switch (statement->keyword) {
                case Kw::kTypedef:
                    addTypedef(module.typedefs, statement, unitScope);
                    break;
                case Kw::kGrouping:
                    addGrouping(module.groupings, statement, unitScope);
                    break;
                case Kw::kIdentity:
                    add(module.identities, makeIdentity(statement, unitScope->unit), unitScope, statement);
                    break;
                case Kw::kFeature:
                    add(module.features, makeFeature(statement, unitScope->unit), unitScope, statement);
                    break;
                case Kw::kExtension:
                    add(module.extensionDefinitions, makeExtension(statement), unitScope, statement);
                    break;
                default:
                    break;
            }
        }
    }

    void addTypedef(NameTable<Typedef> &table, Statement *statement, Scope *scope)
    {
        if (builtinTypeNumber(statement->argument) != 0)
            return build_.fail(*scope->unit, statement,
                               "typedef " + quoted(statement->argument) + " has the name of a built-in type");
        auto *definition = arena_.make<Typedef>(statement->argument, nullptr, Progress::kUntouched, statement, scope);
        add(table, definition, scope, statement);
    }

    void addGrouping(NameTable<Grouping> &table, Statement *statement, Scope *scope)
    {
        auto *definition = arena_.make<Grouping>(statement->argument, nullptr, Progress::kUntouched, statement, scope);
        add(table, definition, scope, statement);
    }

  private:
    template<class T>
    void add(NameTable<T> &table, T *definition, Scope *scope, const Statement *statement)
    {
        if (table.insert(definition) != nullptr)
            build_.fail(*scope->unit, statement,
                        "second " + std::string(keywordOf(statement->keyword).name) + " " + quoted(definition->name));
    }

    Identity *makeIdentity(Statement *statement, Unit *unit)
    {
        return arena_.make<Identity>(statement->argument, statement, unit, 0u, false);
    }

    Feature *makeFeature(Statement *statement, Unit *unit)
    {
        return arena_.make<Feature>(statement->argument, &build_.module, nullptr, false, false, uint64_t{0}, statement,
                                    unit, 0u, false);
    }

    Extension *makeExtension(Statement *statement)
    {
        const Statement *argument = findChild(statement, Kw::kArgument);
        bool isElement = argument != nullptr && valueOf(findChild(argument, Kw::kYinElement)) == "true";
        return arena_.make<Extension>(statement->argument, argument != nullptr ? argument->argument : nullptr,
                                      isElement,
                                      build_.load.context.keepExtension(build_.module.name, statement->argument));
    }

    Build &build_;
    Arena &arena_;
};

template<class T, class Table>
bool isKnownOutside(Scope *scope, std::string_view name, NameTable<T> Scope::*nested, const Table &top)
{
    for (Scope *outer = scope; outer != nullptr; outer = outer->outer)
        if ((outer->*nested).find(name) != nullptr)
            return true;
    return top.find(name) != nullptr;
}

/* ---- identities ------------------------------------------------------------------------------------------------ */

class IdentityChecker {
  public:
    explicit IdentityChecker(Build &build) : build_(build) {}

    void check(Identity &identity)
    {
        if (identity.chain != 0)
            return;
        auto nameOf = [](const Identity *entry) { return std::string_view(entry->name); };
        if (identity.visiting)
            return build_.fail(*identity.unit, identity.statement,
                               "identity cycle: " + chainText(chain_, identity.name, nameOf));
        if (chain_.size() >= limits::kChain)
            stop(identity);
        identity.visiting = true;
        chain_.push_back(&identity);
        uint32_t longest = 0;
        for (Statement *base = identity.statement->first; base != nullptr; base = base->next) {
            if (base->keyword != Kw::kBase)
                continue;
            Identity *found = findIdentity(build_, *identity.unit, base);
            if (found == nullptr)
                continue;
            if (found->statement != nullptr)  // of this module
                check(*found);
            longest = std::max(longest, found->chain);
        }
        chain_.pop_back();
        identity.visiting = false;
        identity.chain = longest + 1;
        if (identity.chain > limits::kChain)
            stop(identity);
    }

  private:
    void stop(const Identity &identity)
    {
        build_.fail(*identity.unit, identity.statement,
                    "identity " + quoted(identity.name) + " is derived from a chain of more than " +
                        std::to_string(limits::kChain) + " identities");
        throw LoadStopped{};
    }

    Build &build_;
    std::vector<Identity *> chain_;
};

/* ---- finding --------------------------------------------------------------------------------------------------- */

/* The definition that the statement's argument names: in the scopes around when it is of this module, and then in the
 * module's own table. */
template<class T>
T *findDefinition(Build &build, Scope *scope, const Statement *statement, NameTable<T> Scope::*nested,
                  NameTable<T> QY_MOD::*top, std::string_view what)
{
    Unit &unit = *scope->unit;
    Reference reference = splitReference(statement->argument);
    QY_MOD *module = build.moduleOf(unit, statement, reference);
    if (module == nullptr)
        return nullptr;
    Scope *innermost = module == &build.module ? scope : nullptr;
    for (Scope *around = innermost; around != nullptr; around = around->outer)
        if (T *found = (around->*nested).find(reference.name))
            return found;
    if (T *found = (module->*top).find(reference.name))
        return found;
    build.failUnknown(unit, statement, what, statement->argument, [&](auto &&offer) {
        for (Scope *around = innermost; around != nullptr; around = around->outer)
            forEachNameIn(around->*nested, offer);
        forEachNameIn(module->*top, offer);
        for (uint8_t type = 1; std::is_same_v<T, Typedef> && type <= QY_TYPE_UNION; ++type)
            offer(builtinTypeName(type));
    });
    return nullptr;
}

}  // namespace

void collectDefinitions(Build &build)
{
    Collector collector(build);
    for (Unit *unit : build.units)
        collector.collect(build.unitScope(*unit));
}

Scope *scopeOf(Build &build, const Statement *statement, Scope *outer)
{
    if ((statement->properties & kHasDefinitions) == 0)
        return outer;
    Collector collector(build);
    Scope *scope = build.newScope(outer);
    auto failShadowing = [&](const Statement *child) {
        build.fail(*scope->unit, child,
                   std::string(keywordOf(child->keyword).name) + " " + quoted(child->argument) +
                       " has the name of one defined around it");
    };
    for (Statement *child = statement->first; child != nullptr; child = child->next) {
        if (child->keyword == Kw::kTypedef) {
            if (isKnownOutside(outer, child->argument, &Scope::typedefs, build.module.typedefs))
                failShadowing(child);
            collector.addTypedef(scope->typedefs, child, scope);
        } else if (child->keyword == Kw::kGrouping) {
            if (isKnownOutside(outer, child->argument, &Scope::groupings, build.module.groupings))
                failShadowing(child);
            collector.addGrouping(scope->groupings, child, scope);
        }
    }
    return scope;
}

void checkIdentities(Build &build)
{
    IdentityChecker checker(build);
    for (Unit *unit : build.units)
        for (Statement *statement = unit->root->first; statement != nullptr; statement = statement->next)
            if (statement->keyword == Kw::kIdentity)
                if (Identity *identity = build.module.identities.find(statement->argument))
                    checker.check(*identity);
}

Typedef *findTypedef(Build &build, Scope *scope, const Statement *type)
{
    return findDefinition(build, scope, type, &Scope::typedefs, &QY_MOD::typedefs, "type");
}

Grouping *findGrouping(Build &build, Scope *scope, const Statement *uses)
{
    return findDefinition(build, scope, uses, &Scope::groupings, &QY_MOD::groupings, "grouping");
}

Identity *findIdentity(Build &build, Unit &unit, const Statement *base)
{
    Reference reference = splitReference(base->argument);
    QY_MOD *module = build.moduleOf(unit, base, reference);
    if (module == nullptr)
        return nullptr;
    Identity *identity = module->identities.find(reference.name);
    if (identity == nullptr)
        build.failUnknown(unit, base, "identity", base->argument,
                          [module](auto &&offer) { forEachNameIn(module->identities, offer); });
    return identity;
}

}  // namespace qxyang
