#include "load/loader.h"

#include <algorithm>
#include <utility>

#include "build/definitions.h"
#include "build/deviations.h"
#include "build/extensions.h"
#include "build/if_feature.h"
#include "build/leafref_path.h"
#include "build/node_conditions.h"
#include "build/tree_builder.h"
#include "syntax/compact_recording.h"
#include "syntax/yin_parser.h"

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

/* Completes the module and all that it imports. It goes one statement of one file at a time, so that a chain of
 * imports needs no call stack. */
Loader::Outcome Loader::Obtain(std::string_view name, std::string_view revision)
{
    Outcome outcome;
    if (!Start(name, revision, outcome))
        return outcome;
    for (;;) {
        while (Step(*chain_.back()))
            continue;
        outcome = Finish(*chain_.back());
        chain_.pop_back();
        if (chain_.empty())
            return outcome;
        Import(*chain_.back(), outcome);
    }
}

/* True if the module has become the last of the chain; otherwise the outcome is known. RFC 7950, 5.1: there are no
 * circular chains of imports. */
bool Loader::Start(std::string_view name, std::string_view revision, Outcome &outcome)
{
    QY_MOD *known = revision.empty() ? context_.PreferredModule(name) : context_.ModuleOfRevision(name, revision);
    if (known != nullptr) {
        outcome = {known, {}};
        return false;
    }
    for (const auto &running : chain_) {
        if (name != running->module->name || (!revision.empty() && revision != OrEmpty(running->module->revision)))
            continue;
        auto nameOf = [](const auto &entry) { return std::string_view(entry->module->name); };
        outcome = {nullptr, "import cycle: " + ChainText(chain_, name, nameOf)};
        return false;
    }
    if (chain_.size() >= limits::CHAIN) {
        outcome = {nullptr, "the chain of imports is longer than " + std::to_string(limits::CHAIN) + " modules"};
        return false;
    }
    std::string key = std::string(name).append("@").append(revision);
    auto failed = failed_.find(key);
    if (failed != failed_.end()) {
        outcome = {nullptr, failed->second};
        return false;
    }
    std::string kept = key;
    if (Read(name, revision, std::move(key), outcome))
        return true;
    if (outcome.module == nullptr)
        failed_.emplace(std::move(kept), outcome.why);
    return false;
}

/* True if the module's file is read and its linking begins; otherwise the outcome is known. RFC 7950, 7.1.5: the
 * revision must be the wanted one. */
bool Loader::Read(std::string_view name, std::string_view revision, std::string &&key, Outcome &outcome)
{
    std::string other;
    for (const std::string &path : state_.files.Candidates(name, revision)) {
        auto module = std::make_unique<QY_MOD>();
        module->context = &context_;
        module->name = context_.KeepName(name);
        module->root.module = module.get();
        Failures::Mark before = failures_.Now();
        std::unique_ptr<Unit> unit = Parse(path, name, module.get(), outcome.why);
        if (unit == nullptr)
            return false;
        units_.push_back(std::move(unit));
        Unit &own = *units_.back();
        if (!ReadHeader(own, name, Kw::Module)) {
            outcome.why = failures_.FirstSince(before);
            return false;
        }
        std::string_view found = OrEmpty(own.revision);
        if (!revision.empty() && found != revision) {
            other = WrongRevision(own, revision);
            continue;
        }
        if (QY_MOD *known = context_.ModuleOfRevision(name, found)) {
            Prefer(known);
            outcome.module = known;
            return false;
        }
        module->revision = own.revision;
        module->preferred = revision.empty();
        OpenModule(context_.Add(std::move(module)), own, std::move(key));
        return true;
    }
    outcome.why =
        !other.empty() ? other + state_.files.OtherRevisions(name, revision) : state_.files.Missing(name, revision);
    return false;
}

/* Makes a module that was loaded by its revision the one that imports without a revision get. */
void Loader::Prefer(QY_MOD *module)
{
    if (module->preferred)
        return;
    preferred_.push_back(module);
    module->preferred = true;
}

/* The file with all its statements. Null: `why` says why it cannot be used. */
std::unique_ptr<Unit> Loader::Parse(const std::string &path, std::string_view name, QY_MOD *module, std::string &why)
{
    Failures::Mark before = failures_.Now();
    auto unit = std::make_unique<Unit>(path, std::string(name), module);
    why = unit->source.Read();
    if (!why.empty()) {
        why = Quoted(path) + " " + why;
        return nullptr;
    }
    unit->hints = &hints_;
    if (unit->source.IsCompact() ? ParseCompact(*unit, failures_) : ParseYin(*unit, failures_))
        return unit;
    why = failures_.FirstSince(before);
    return nullptr;
}

/* Reads what the file says it is: its name, revision, namespace and prefix, or module (RFC 7950, 7.2.2). False: that
 * is not what is expected. */
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

/* ---- imports and includes -------------------------------------------------------------------------------------- */

void Loader::OpenModule(QY_MOD &module, Unit &unit, std::string &&key)
{
    auto running = std::make_unique<Running>();
    running->module = &module;
    running->key = std::move(key);
    running->start = failures_.Now();
    running->files.push_back({&unit, unit.root->first, nullptr, running->start});
    chain_.push_back(std::move(running));
}

/* Handles the next statement of the file that is open innermost. A module that it imports may become the last of the
 * chain, which is completed first. False: all files of the module are linked. */
bool Loader::Step(Running &running)
{
    OpenFile &file = running.files.back();
    const Statement *statement = file.next;
    if (statement == nullptr) {
        CloseInclude(running);
        return !running.files.empty();
    }
    file.next = statement->next;
    file.current = statement;
    if (statement->keyword == Kw::Include) {
        Include(running);
    } else if (statement->keyword == Kw::Import) {
        Outcome outcome;
        if (!Start(statement->argument, ArgumentOf(statement, Kw::RevisionDate), outcome))
            Import(running, outcome);
    }
    return true;
}

/* The file that is open innermost is linked. If a submodule failed, its include statement fails as well. */
void Loader::CloseInclude(Running &running)
{
    OpenFile closed = running.files.back();
    running.files.pop_back();
    running.units.push_back(closed.unit);
    running.included.insert(closed.unit->Name());
    if (!running.files.empty() && failures_.AnySince(closed.start))
        FailInclude(running.files.back(), failures_.FirstSince(closed.start));
}

/* Builds the module when all its files are linked. */
Loader::Outcome Loader::Finish(Running &running)
{
    Outcome outcome;
    if (failures_.AnySince(running.start) || !BuildModule(running))
        outcome.why = failures_.FirstSince(running.start);
    else
        outcome.module = running.module;
    if (outcome.module == nullptr)
        failed_.emplace(std::move(running.key), outcome.why);
    return outcome;
}

bool Loader::BuildModule(Running &running)
{
    Build build(state_, *running.module, std::move(running.units));
    CollectDefinitions(build);
    if (!build.Failed()) {
        ConstraintChecker constraints(build);
        TypeCompiler types(build, constraints);
        TreeBuilder builder(build, types, constraints);
        ResolveExtensionUses(build);
        CompileFeatures(build);
        CheckIdentities(build);
        builder.BuildModule();
        if (!build.Failed()) {
            builder.ApplyAugments();
            ApplyDeviations(build, types, constraints);
        }
        if (!build.Failed())
            constraints.Finish();
        if (!build.Failed())
            MarkGated(build.module);
    }
    if (build.Failed())
        return false;
    build.KeepFiles();
    build.ForgetStatements();
    running.module->complete = true;
    return true;
}

/* RFC 7950, 7.1.4: the prefixes of a file are unique. */
void Loader::Bind(Unit &unit, const Statement *statement, QY_MOD *module)
{
    std::string_view prefix = unit.module->texts.Text(statement->argument);
    auto *binding = unit.module->records.Make<PrefixBinding>(prefix, module);
    if (const PrefixBinding *known = unit.prefixes.Insert(binding))
        return failures_.Add(
            unit.source, statement->offset,
            "prefix " + Quoted(prefix) + " stands for module " + Quoted(known->module->name) + " already");
    unit.bindings.push_back(binding);
}

/* The import statement that the innermost file waits for has this outcome. */
void Loader::Import(Running &running, const Outcome &outcome)
{
    Unit &unit = *running.files.back().unit;
    const Statement *statement = running.files.back().current;
    if (outcome.module == nullptr)
        return failures_.Add(unit.source, statement->offset,
                             "cannot import module " + Quoted(statement->argument) + ": " + outcome.why);
    Bind(unit, FindChild(statement, Kw::Prefix), outcome.module);
    auto &imports = running.module->imports;
    if (std::find(imports.begin(), imports.end(), outcome.module) != imports.end())
        return;
    imports.push_back(outcome.module);
    ++outcome.module->importers;
}

void Loader::FailInclude(const OpenFile &file, std::string_view why)
{
    failures_.Add(file.unit->source, file.current->offset,
                  "cannot include submodule " + Quoted(file.current->argument) + ": " + std::string(why));
}

/* Opens the submodule that the innermost file includes, unless it is part of the module already. RFC 7950, 12: both
 * are of one version. */
void Loader::Include(Running &running)
{
    const OpenFile &file = running.files.back();
    std::string_view name = file.current->argument;
    if (running.included.contains(name))
        return;
    for (const OpenFile &open : running.files)
        if (open.unit->Name() == name && (!file.unit->isVersion11 || open.unit->root->keyword == Kw::Submodule))
            return IncludeOpen(running, *open.unit);
    if (running.files.size() >= limits::CHAIN)
        return FailInclude(file,
                           "the chain of includes is longer than " + std::to_string(limits::CHAIN) + " submodules");

    Failures::Mark before = failures_.Now();
    std::string why;
    Unit *submodule = ReadSubmodule(*running.module, name, ArgumentOf(file.current, Kw::RevisionDate), why);
    if (submodule == nullptr)
        return FailInclude(file, why);
    if (submodule->isVersion11 != file.unit->isVersion11)
        return FailInclude(file, std::string("it is of YANG version ") + VersionOf(*submodule) +
                                     ", what includes it of " + VersionOf(*file.unit));
    running.files.push_back({submodule, submodule->root->first, nullptr, before});
}

/* A file that is open includes itself again, through others or not. RFC 6020, 5.1, forbids circular chains of includes;
 * RFC 7950 lets submodules include one another. 7.1.6: they are of one revision. */
void Loader::IncludeOpen(const Running &running, const Unit &open)
{
    const OpenFile &file = running.files.back();
    auto nameOf = [](const OpenFile &entry) { return std::string_view(entry.unit->Name()); };
    if (!file.unit->isVersion11)
        return FailInclude(file, "include cycle: " + ChainText(running.files, open.Name(), nameOf));
    std::string_view wanted = ArgumentOf(file.current, Kw::RevisionDate);
    if (!wanted.empty() && wanted != OrEmpty(open.revision))
        FailInclude(file, WrongRevision(open, wanted));
}

/* The submodule's file with all its statements. Null: `why` says why there is none. */
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
