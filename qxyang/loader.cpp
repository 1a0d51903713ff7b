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

std::string WrongRevision(const Unit &unit, std::string_view wanted)
{
    std::string text = "revision " + Quoted(wanted) + " is wanted; " + Quoted(unit.source.Path());
    return text + (unit.revision == nullptr ? " has none" : " has revision " + Quoted(unit.revision));
}

const char *VersionOf(const Unit &unit)
{
    return unit.isVersion11 ? "1.1" : "1";
}

std::string_view WordFor(Kw keyword)
{
    return keyword == Kw::Module ? "module" : "submodule";
}

} // namespace

Loader::~Loader()
{
    if (done_)
        return;
    for (QY_MOD *module : preferred_)
        module->preferred = false;
}

QY_MOD *Loader::Load(std::string_view name, std::string_view revision)
{
    if (!IsIdentifier(name))
        failures_.Add(name, Quoted(name) + " is no module name; expected an identifier");
    else if (!revision.empty() && !IsDate(revision))
        failures_.Add(name, Quoted(revision) + " is no revision; expected a date of the form YYYY-MM-DD");
    if (failures_.Any())
        return nullptr;
    if (QY_MOD *loaded = context_.ModuleByName(name)) {
        if (revision.empty() || revision == OrEmpty(loaded->revision))
            return loaded;
        failures_.Add(name,
                      "module " + Quoted(name) + " is loaded already, with another revision than " + Quoted(revision));
        return nullptr;
    }
    Outcome outcome = Obtain(name, revision);
    if (outcome.module != nullptr && !failures_.Any())
        ResolveLeafrefs(state_);
    if (outcome.module == nullptr && !failures_.Any())
        failures_.Add(name, "cannot load module " + Quoted(name) + ": " + outcome.why);
    if (failures_.Any())
        return nullptr;
    done_ = true;
    return outcome.module;
}

/* ---- modules --------------------------------------------------------------------------------------------------- */

Loader::Outcome Loader::Obtain(std::string_view name, std::string_view revision)
{
    QY_MOD *known = revision.empty() ? context_.PreferredModule(name) : context_.ModuleOfRevision(name, revision);
    if (known != nullptr)
        return {known, {}};
    for (const Running *running : chain_) {
        if (name != running->module->name || (!revision.empty() && revision != OrEmpty(running->module->revision)))
            continue;
        auto nameOf = [](const Running *entry) { return std::string_view(entry->module->name); };
        return {nullptr, "import cycle: " + ChainText(chain_, name, nameOf)};
    }
    if (chain_.size() >= limits::CHAIN)
        return {nullptr, "the chain of imports is longer than " + std::to_string(limits::CHAIN) + " modules"};
    std::string key = std::string(name).append("@").append(revision);
    auto failed = failed_.find(key);
    if (failed != failed_.end())
        return {nullptr, failed->second};
    Outcome outcome = Read(name, revision);
    if (outcome.module == nullptr)
        failed_.emplace(std::move(key), outcome.why);
    return outcome;
}

Loader::Outcome Loader::Read(std::string_view name, std::string_view revision)
{
    std::string other;
    for (const std::string &path : state_.files.Candidates(name, revision)) {
        auto module = std::make_unique<QY_MOD>();
        module->context = &context_;
        module->name = context_.KeepName(name);
        module->root.module = module.get();
        Failures::Mark before = failures_.Now();
        std::string why;
        std::unique_ptr<Unit> unit = Parse(path, name, module.get(), why);
        if (unit == nullptr)
            return {nullptr, why};
        units_.push_back(std::move(unit));
        Unit &own = *units_.back();
        if (!ReadHeader(own, name, Kw::Module))
            return {nullptr, failures_.FirstSince(before)};
        std::string_view found = OrEmpty(own.revision);
        if (!revision.empty() && found != revision) {
            other = WrongRevision(own, revision);
            continue;
        }
        if (QY_MOD *known = context_.ModuleOfRevision(name, found)) {
            Prefer(known);
            return {known, {}};
        }
        module->revision = own.revision;
        module->preferred = revision.empty();
        context_.modules.push_back(std::move(module));
        return Complete(*context_.modules.back(), own);
    }
    if (!other.empty())
        return {nullptr, other + state_.files.OtherRevisions(name, revision)};
    return {nullptr, state_.files.Missing(name, revision)};
}

/* A module that came by its revision is found to be the one that an import without a revision gets as well. */
void Loader::Prefer(QY_MOD *module)
{
    if (module->preferred)
        return;
    preferred_.push_back(module);
    module->preferred = true;
}

std::unique_ptr<Unit> Loader::Parse(const std::string &path, std::string_view name, QY_MOD *module, std::string &why)
{
    auto unit = std::make_unique<Unit>(path, std::string(name), module);
    why = unit->source.Read();
    if (!why.empty()) {
        why = Quoted(path) + " " + why;
        return nullptr;
    }
    Failures::Mark before = failures_.Now();
    ParseYin(*unit, failures_);
    if (!failures_.AnySince(before))
        return unit;
    why = failures_.FirstSince(before);
    return nullptr;
}

/* What the beginning of the file says of itself. */
bool Loader::ReadHeader(Unit &unit, std::string_view name, Kw expected)
{
    const Statement *root = unit.root;
    QY_MOD *module = unit.module;
    if (root->keyword != expected || name != root->argument) {
        failures_.Add(unit.source, root->offset,
                      "the file holds " + std::string(WordFor(root->keyword)) + " " + Quoted(root->argument) +
                          ", not " + std::string(WordFor(expected)) + " " + Quoted(name));
        return false;
    }
    std::string_view latest;
    for (const Statement *child = root->first; child != nullptr; child = child->next)
        if (child->keyword == Kw::Revision && child->argument > latest)
            latest = child->argument;
    if (!latest.empty())
        unit.revision = module->texts.Text(latest);
    if (expected == Kw::Module) {
        module->space = module->texts.Text(ArgumentOf(root, Kw::Namespace));
        Bind(unit, FindChild(root, Kw::Prefix), module);
        return true;
    }
    const Statement *owner = FindChild(root, Kw::BelongsTo);
    if (std::string_view(module->name) != owner->argument) {
        failures_.Add(unit.source, owner->offset,
                      "submodule " + Quoted(name) + " belongs to module " + Quoted(owner->argument) + ", not to " +
                          Quoted(module->name));
        return false;
    }
    Bind(unit, FindChild(owner, Kw::Prefix), module);
    return true;
}

/* Links and builds a module whose file is parsed. */
Loader::Outcome Loader::Complete(QY_MOD &module, Unit &unit)
{
    Failures::Mark before = failures_.Now();
    Running running{&module, {}, {unit.Name()}};
    chain_.push_back(&running);
    Link(running, unit);
    chain_.pop_back();
    running.units.push_back(&unit);
    if (failures_.AnySince(before))
        return {nullptr, failures_.FirstSince(before)};

    Build build(state_, module, std::move(running.units));
    CollectDefinitions(build);
    if (!build.Failed()) {
        TreeBuilder builder(build);
        ResolveExtensionUses(build);
        CompileFeatures(build);
        CheckIdentities(build);
        builder.BuildModule();
        if (!build.Failed()) {
            builder.ApplyAugments();
            ApplyDeviations(build, builder);
        }
        if (!build.Failed())
            builder.Constraints().Finish();
        if (!build.Failed())
            builder.MarkGated();
    }
    if (build.Failed())
        return {nullptr, failures_.FirstSince(before)};
    build.ForgetStatements();
    module.complete = true;
    return {&module, {}};
}

/* ---- imports and includes -------------------------------------------------------------------------------------- */

void Loader::Link(Running &running, Unit &unit)
{
    for (const Statement *statement = unit.root->first; statement != nullptr; statement = statement->next) {
        if (statement->keyword == Kw::Import)
            Import(running, unit, statement);
        else if (statement->keyword == Kw::Include)
            Include(running, unit, statement);
    }
}

void Loader::Bind(Unit &unit, const Statement *statement, QY_MOD *module)
{
    std::string_view prefix = statement->argument;
    for (const PrefixBinding &binding : unit.bindings)
        if (binding.prefix == prefix)
            return failures_.Add(
                unit.source, statement->offset,
                "prefix " + Quoted(prefix) + " stands for module " + Quoted(binding.module->name) + " already");
    unit.bindings.push_back({prefix, module});
}

void Loader::Import(Running &running, Unit &unit, const Statement *statement)
{
    Outcome outcome = Obtain(statement->argument, ArgumentOf(statement, Kw::RevisionDate));
    if (outcome.module == nullptr)
        return failures_.Add(unit.source, statement->offset,
                             "cannot import module " + Quoted(statement->argument) + ": " + outcome.why);
    Bind(unit, FindChild(statement, Kw::Prefix), outcome.module);
    auto &imports = running.module->imports;
    if (std::find(imports.begin(), imports.end(), outcome.module) == imports.end())
        imports.push_back(outcome.module);
}

void Loader::Include(Running &running, Unit &unit, const Statement *statement)
{
    std::string_view name = statement->argument;
    auto isIt = [name](const Unit *included) { return included->Name() == name; };
    if (std::any_of(running.units.begin(), running.units.end(), isIt))
        return;
    auto fail = [&](std::string_view why) {
        failures_.Add(unit.source, statement->offset,
                      "cannot include submodule " + Quoted(name) + ": " + std::string(why));
    };
    auto &including = running.including;
    if (std::find(including.begin(), including.end(), name) != including.end())
        return fail("include cycle: " + ChainText(including, name, [](std::string_view entry) { return entry; }));
    if (including.size() >= limits::CHAIN)
        return fail("the chain of includes is longer than " + std::to_string(limits::CHAIN) + " submodules");

    Failures::Mark before = failures_.Now();
    std::string why;
    Unit *submodule = ReadSubmodule(*running.module, name, ArgumentOf(statement, Kw::RevisionDate), why);
    if (submodule == nullptr)
        return fail(why);
    if (submodule->isVersion11 != unit.isVersion11)
        return fail(std::string("it is of YANG version ") + VersionOf(*submodule) + ", what includes it of " +
                    VersionOf(unit));
    including.push_back(submodule->Name());
    Link(running, *submodule);
    including.pop_back();
    running.units.push_back(submodule);
    if (failures_.AnySince(before))
        fail(failures_.FirstSince(before));
}

/* The submodule's file, parsed; null: `why` says why there is none. */
Unit *Loader::ReadSubmodule(QY_MOD &module, std::string_view name, std::string_view revision, std::string &why)
{
    for (const std::string &path : state_.files.Candidates(name, revision)) {
        Failures::Mark before = failures_.Now();
        std::unique_ptr<Unit> unit = Parse(path, name, &module, why);
        if (unit == nullptr)
            return nullptr;
        units_.push_back(std::move(unit));
        Unit &submodule = *units_.back();
        if (!ReadHeader(submodule, name, Kw::Submodule)) {
            why = failures_.FirstSince(before);
            return nullptr;
        }
        if (revision.empty() || revision == OrEmpty(submodule.revision))
            return &submodule;
        why = WrongRevision(submodule, revision);
    }
    why = why.empty() ? state_.files.Missing(name, revision) : why + state_.files.OtherRevisions(name, revision);
    return nullptr;
}

} // namespace qxyang
