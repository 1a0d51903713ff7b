#include "loader.h"

#include <algorithm>

#include "definitions.h"
#include "deviations.h"
#include "extensions.h"
#include "if_feature.h"
#include "leafref_path.h"
#include "tree_builder.h"
#include "yin_parser.h"

namespace qxyang {

namespace {

std::string_view argumentOf(const Statement *statement, Kw child)
{
    const Statement *found = findChild(statement, child);
    return found != nullptr ? found->argument : std::string_view();
}

std::string_view orEmpty(const char *text)
{
    return text != nullptr ? text : std::string_view();
}

std::string wrongRevision(const Unit &unit, std::string_view wanted)
{
    std::string text = "revision " + quoted(wanted) + " is wanted; " + quoted(unit.source.path());
    return text + (unit.revision == nullptr ? " has none" : " has revision " + quoted(unit.revision));
}

std::string_view wordFor(Kw keyword)
{
    return keyword == Kw::kModule ? "module" : "submodule";
}

}  // namespace

Loader::~Loader()
{
    if (done_)
        return;
    for (QY_MOD *module : preferred_)
        module->preferred = false;
}

QY_MOD *Loader::load(std::string_view name, std::string_view revision)
{
    if (!isIdentifier(name))
        failures_.add(name, quoted(name) + " is no module name; expected an identifier");
    else if (!revision.empty() && !isDate(revision))
        failures_.add(name, quoted(revision) + " is no revision; expected a date of the form YYYY-MM-DD");
    if (failures_.count() > 0)
        return nullptr;
    if (QY_MOD *loaded = context_.moduleByName(name)) {
        if (revision.empty() || revision == orEmpty(loaded->revision))
            return loaded;
        failures_.add(name,
                      "module " + quoted(name) + " is loaded already, with another revision than " + quoted(revision));
        return nullptr;
    }
    Outcome outcome = obtain(name, revision);
    if (outcome.module != nullptr && failures_.count() == 0)
        resolveLeafrefs(state_);
    if (outcome.module == nullptr && failures_.count() == 0)
        failures_.add(name, "cannot load module " + quoted(name) + ": " + outcome.why);
    if (failures_.count() > 0)
        return nullptr;
    done_ = true;
    return outcome.module;
}

/* ---- modules --------------------------------------------------------------------------------------------------- */

Loader::Outcome Loader::obtain(std::string_view name, std::string_view revision)
{
    QY_MOD *known = revision.empty() ? context_.preferredModule(name) : context_.moduleOfRevision(name, revision);
    if (known != nullptr)
        return {known, {}};
    for (const Running *running : chain_) {
        if (name != running->module->name || (!revision.empty() && revision != orEmpty(running->module->revision)))
            continue;
        auto nameOf = [](const Running *entry) { return std::string_view(entry->module->name); };
        return {nullptr, "import cycle: " + chainText(chain_, name, nameOf)};
    }
    if (chain_.size() >= limits::kChain)
        return {nullptr, "the chain of imports is longer than " + std::to_string(limits::kChain) + " modules"};
    std::string key = std::string(name).append("@").append(revision);
    auto failed = failed_.find(key);
    if (failed != failed_.end())
        return {nullptr, failed->second};
    Outcome outcome = read(name, revision);
    if (outcome.module == nullptr)
        failed_.emplace(std::move(key), outcome.why);
    return outcome;
}

Loader::Outcome Loader::read(std::string_view name, std::string_view revision)
{
    std::string other;
    for (const std::string &path : state_.files.candidates(name, revision)) {
        auto module = std::make_unique<QY_MOD>();
        module->context = &context_;
        module->name = context_.keepName(name);
        module->root.module = module.get();
        size_t before = failures_.count();
        std::string why;
        std::unique_ptr<Unit> unit = parse(path, name, module.get(), why);
        if (unit == nullptr)
            return {nullptr, why};
        units_.push_back(std::move(unit));
        Unit &own = *units_.back();
        if (!readHeader(own, name, Kw::kModule))
            return {nullptr, firstFailure(before)};
        std::string_view found = orEmpty(own.revision);
        if (!revision.empty() && found != revision) {
            other = wrongRevision(own, revision);
            continue;
        }
        if (QY_MOD *known = context_.moduleOfRevision(name, found)) {
            prefer(known);
            return {known, {}};
        }
        module->revision = own.revision;
        module->preferred = revision.empty();
        return complete(std::move(module), own);
    }
    if (!other.empty())
        return {nullptr, other};
    return {nullptr, state_.files.missing(name, revision)};
}

/* A module that came by its revision is found to be the one that an import without a revision gets as well. */
void Loader::prefer(QY_MOD *module)
{
    if (module->preferred)
        return;
    preferred_.push_back(module);
    module->preferred = true;
}

std::unique_ptr<Unit> Loader::parse(const std::string &path, std::string_view name, QY_MOD *module, std::string &why)
{
    auto unit = std::make_unique<Unit>(path, std::string(name), module);
    why = unit->source.read();
    if (!why.empty()) {
        why = quoted(path) + " " + why;
        return nullptr;
    }
    size_t before = failures_.count();
    parseYin(*unit, failures_);
    if (failures_.count() == before)
        return unit;
    why = firstFailure(before);
    return nullptr;
}

/* What the beginning of the file says of itself. */
bool Loader::readHeader(Unit &unit, std::string_view name, Kw expected)
{
    const Statement *root = unit.root;
    QY_MOD *module = unit.module;
    if (root->keyword != expected || name != root->argument) {
        failures_.add(unit.source, root->offset,
                      "the file holds " + std::string(wordFor(root->keyword)) + " " + quoted(root->argument) +
                          ", not " + std::string(wordFor(expected)) + " " + quoted(name));
        return false;
    }
    std::string_view latest;
    for (const Statement *child = root->first; child != nullptr; child = child->next)
        if (child->keyword == Kw::kRevision && child->argument > latest)
            latest = child->argument;
    if (!latest.empty())
        unit.revision = module->texts.text(latest);
    if (expected == Kw::kModule) {
        module->space = module->texts.text(argumentOf(root, Kw::kNamespace));
        bind(unit, findChild(root, Kw::kPrefix), module);
        return true;
    }
    const Statement *owner = findChild(root, Kw::kBelongsTo);
    if (std::string_view(module->name) != owner->argument) {
        failures_.add(unit.source, owner->offset,
                      "submodule " + quoted(name) + " belongs to module " + quoted(owner->argument) + ", not to " +
                          quoted(module->name));
        return false;
    }
    bind(unit, findChild(owner, Kw::kPrefix), module);
    return true;
}

Loader::Outcome Loader::complete(std::unique_ptr<QY_MOD> owned, Unit &unit)
{
    size_t before = failures_.count();
    QY_MOD &module = *owned;
    context_.modules.push_back(std::move(owned));
    Running running{&module, {}, {unit.name()}};
    chain_.push_back(&running);
    link(running, unit);
    chain_.pop_back();
    running.units.push_back(&unit);
    if (failures_.count() != before)
        return {nullptr, firstFailure(before)};

    Build build(state_, module, std::move(running.units));
    collectDefinitions(build);
    if (!build.failed()) {
        TreeBuilder builder(build);
        resolveExtensionUses(build);
        compileFeatures(build);
        checkIdentities(build);
        builder.buildModule();
        if (!build.failed()) {
            builder.applyAugments();
            applyDeviations(build, builder);
        }
        if (!build.failed())
            builder.markGated();
    }
    if (build.failed())
        return {nullptr, firstFailure(before)};
    build.forgetStatements();
    module.complete = true;
    return {&module, {}};
}

/* ---- imports and includes -------------------------------------------------------------------------------------- */

void Loader::link(Running &running, Unit &unit)
{
    for (const Statement *statement = unit.root->first; statement != nullptr; statement = statement->next) {
        if (statement->keyword == Kw::kImport)
            import(running, unit, statement);
        else if (statement->keyword == Kw::kInclude)
            include(running, unit, statement);
    }
}

void Loader::bind(Unit &unit, const Statement *statement, QY_MOD *module)
{
    std::string_view prefix = statement->argument;
    for (const PrefixBinding &binding : unit.bindings)
        if (binding.prefix == prefix)
            return failures_.add(
                unit.source, statement->offset,
                "prefix " + quoted(prefix) + " stands for module " + quoted(binding.module->name) + " already");
    unit.bindings.push_back({prefix, module});
}

void Loader::import(Running &running, Unit &unit, const Statement *statement)
{
    Outcome outcome = obtain(statement->argument, argumentOf(statement, Kw::kRevisionDate));
    if (outcome.module == nullptr)
        return failures_.add(unit.source, statement->offset,
                             "cannot import module " + quoted(statement->argument) + ": " + outcome.why);
    bind(unit, findChild(statement, Kw::kPrefix), outcome.module);
    auto &imports = running.module->imports;
    if (std::find(imports.begin(), imports.end(), outcome.module) == imports.end())
        imports.push_back(outcome.module);
}

void Loader::include(Running &running, Unit &unit, const Statement *statement)
{
    std::string_view name = statement->argument;
    auto isIt = [name](const Unit *included) { return included->name() == name; };
    if (std::any_of(running.units.begin(), running.units.end(), isIt))
        return;
    auto fail = [&](std::string_view why) {
        failures_.add(unit.source, statement->offset,
                      "cannot include submodule " + quoted(name) + ": " + std::string(why));
    };
    auto &including = running.including;
    if (std::find(including.begin(), including.end(), name) != including.end())
        return fail("include cycle: " + chainText(including, name, [](std::string_view entry) { return entry; }));
    if (including.size() >= limits::kChain)
        return fail("the chain of includes is longer than " + std::to_string(limits::kChain) + " submodules");

    size_t before = failures_.count();
    std::string why;
    Unit *submodule = readSubmodule(*running.module, name, argumentOf(statement, Kw::kRevisionDate), why);
    if (submodule == nullptr)
        return fail(why);
    including.push_back(submodule->name());
    link(running, *submodule);
    including.pop_back();
    running.units.push_back(submodule);
    if (failures_.count() != before)
        fail(firstFailure(before));
}

/* The submodule's file, parsed; null: `why` says why there is none. */
Unit *Loader::readSubmodule(QY_MOD &module, std::string_view name, std::string_view revision, std::string &why)
{
    for (const std::string &path : state_.files.candidates(name, revision)) {
        size_t before = failures_.count();
        std::unique_ptr<Unit> unit = parse(path, name, &module, why);
        if (unit == nullptr)
            return nullptr;
        units_.push_back(std::move(unit));
        Unit &submodule = *units_.back();
        if (!readHeader(submodule, name, Kw::kSubmodule)) {
            why = firstFailure(before);
            return nullptr;
        }
        if (revision.empty() || revision == orEmpty(submodule.revision))
            return &submodule;
        why = wrongRevision(submodule, revision);
    }
    if (why.empty())
        why = state_.files.missing(name, revision);
    return nullptr;
}

/* The first failure recorded since there were so many: the cause of those that followed from it. */
std::string Loader::firstFailure(size_t before) const
{
    const auto &recorded = failures_.recorded();
    return before < recorded.size() ? recorded[before].text : "it has failures";
}

}  // namespace qxyang
