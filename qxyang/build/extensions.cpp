#include "build/extensions.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

namespace qxyang {

namespace {

/* ---- definitions ----------------------------------------------------------------------------------------------- */

class UseResolver {
  public:
    UseResolver(Build &build, Unit &unit) : build_(build), unit_(unit)
    {
        AddModule(&build.module);
        for (const PrefixBinding *binding : unit.bindings)
            AddModule(binding->module);
    }

    void Resolve(ExtensionUse &use)
    {
        if (use.resolved)
            return;
        use.resolved = true;
        if (use.above != nullptr) {
            Resolve(*use.above);
            const Extension *above = use.above->definition;
            if (above != nullptr && above->argumentIsElement && std::strcmp(above->argument, use.keyword) == 0)
                return;
        }
        Find(use);
    }

  private:
    /* Searches all modules of the namespace, since several revisions of one may be imported. */
    void Find(ExtensionUse &use)
    {
        if (!use.prefix.empty())
            return FindByPrefix(use);
        auto space = spaces_.find(use.space);
        if (space == spaces_.end())
            return build_.load.failures.Add(unit_.source, use.offset,
                                            "extension statement " + Quoted(use.keyword) + " is of namespace " +
                                                Quoted(use.space) + ", which no imported module has" +
                                                RightNamespace(use));
        const std::vector<const QY_MOD *> &modules = space->second;
        for (const QY_MOD *module : modules)
            if ((use.definition = module->extensionDefinitions.Find(use.keyword)) != nullptr)
                return;
        build_.load.failures.Add(unit_.source, use.offset,
                                 "module " + Quoted(modules.back()->name) + " has no extension " + Quoted(use.keyword),
                                 [&] {
                                     NearestName nearest(build_.load.failures.names, use.keyword);
                                     for (size_t i = 0; i < modules.size() && nearest.IsOpen(); ++i)
                                         ForEachNameIn(modules[i]->extensionDefinitions,
                                                       [&nearest](std::string_view name) { nearest.Offer(name); });
                                     return nearest.Hint();
                                 });
    }

    /* A hint if the element's prefix is one of the file's imports: which module that is, and its namespace. */
    std::string RightNamespace(const ExtensionUse &use)
    {
        std::string_view text = unit_.source.Text().substr(use.offset);
        Reference tag = SplitReference(text.substr(0, std::min(text.find_first_of(" \t\r\n/>"), text.size())));
        if (!tag.prefix.starts_with('<'))
            return {};
        std::string_view prefix = tag.prefix.substr(1);
        const QY_MOD *module = prefix.empty() ? nullptr : unit_.BoundModule(prefix);
        if (module == nullptr)
            return {};
        return "; prefix " + Quoted(prefix) + " stands for module " + Quoted(module->name) + ", whose namespace is " +
               Quoted(module->space);
    }

    void FindByPrefix(ExtensionUse &use)
    {
        const QY_MOD *module = unit_.BoundModule(use.prefix);
        if (module != nullptr)
            use.definition = module->extensionDefinitions.Find(use.keyword);
        if (use.definition != nullptr)
            return;
        auto &failures = build_.load.failures;
        if (module == nullptr)
            return failures.Add(unit_.source, use.offset,
                                "unknown prefix " + Quoted(use.prefix) + " in " + Quoted(use.name), [&] {
                                    return build_.NearestHint({{}, use.prefix}, [this](auto &&offer) {
                                        for (const PrefixBinding *binding : unit_.bindings)
                                            offer(binding->name);
                                    });
                                });
        failures.Add(unit_.source, use.offset,
                     "module " + Quoted(module->name) + " has no extension " + Quoted(use.keyword), [&] {
                         return build_.NearestHint({use.prefix, use.keyword}, [module](auto &&offer) {
                             ForEachNameIn(module->extensionDefinitions, offer);
                         });
                     });
    }

    void AddModule(const QY_MOD *module)
    {
        auto &modules = spaces_[module->space];
        if (std::find(modules.begin(), modules.end(), module) == modules.end())
            modules.push_back(module);
    }

    Build &build_;
    Unit &unit_;
    std::unordered_map<std::string_view, std::vector<const QY_MOD *>> spaces_; /* in the order of the imports */
};

/* ---- instances ------------------------------------------------------------------------------------------------- */

ExtensionSet *NewSet(Arena &arena, size_t count, bool isPlaced)
{
    return ExtensionSet::Start(arena.Allocate(ExtensionSet::Size(count, isPlaced), alignof(QY_EXT)), count, isPlaced);
}

class SetMaker {
  public:
    SetMaker(Build &build, Unit &unit) : build_(build), unit_(unit) {}

    /* `around` is the extension that the statement is an instance of, or null. The element that is its argument
     * makes no instance: RFC 7950, 7.19.2.2. */
    const ExtensionSet *Make(const Statement *statement, const Extension *around)
    {
        uint32_t count = 0;
        for (Statement *child = statement->first; child != nullptr; child = child->next)
            count += IsInstance(child, around) ? 1 : 0;
        if (count == 0)
            return nullptr;
        ExtensionSet *set = NewSet(build_.module.records, count, build_.module.details != nullptr);
        set->AddToTotal(count);
        QY_EXT *instance = set->begin();
        for (Statement *child = statement->first; child != nullptr; child = child->next) {
            if (!IsInstance(child, around))
                continue;
            if (set->isPlaced != 0)
                set->Spots()[instance - set->begin()] = {unit_.keptFile, child->offset};
            new (instance) QY_EXT(MakeInstance(*AsExtension(child)));
            set->AddToTotal(TotalOf((instance++)->nested));
        }
        return set;
    }

  private:
    static bool IsArgument(const ExtensionStatement &statement, const Extension *around)
    {
        return around != nullptr && around->argumentIsElement && statement.use->above != nullptr &&
               std::strcmp(around->argument, statement.use->keyword) == 0;
    }

    static bool IsInstance(Statement *statement, const Extension *around)
    {
        return statement->keyword == Kw::Instance && AsExtension(statement)->use->definition != nullptr &&
               !IsArgument(*AsExtension(statement), around);
    }

    QY_EXT MakeInstance(const ExtensionStatement &statement)
    {
        const Extension *definition = statement.use->definition;
        return {definition->published, ArgumentOf(statement, *definition), Make(&statement, definition)};
    }

    const char *ArgumentOf(const ExtensionStatement &statement, const Extension &definition)
    {
        if (unit_.source.IsCompact())
            return CompactArgumentOf(statement, definition);
        if (definition.argument != nullptr && definition.argumentIsElement)
            return ElementArgumentOf(statement, definition);
        bool expected = definition.argument != nullptr;
        bool given = statement.attribute != nullptr;
        if (given && (!expected || std::strcmp(statement.attribute, definition.argument) != 0)) {
            NearestName nearest(statement.attribute);
            if (expected)
                nearest.Offer(definition.argument);
            Fail(statement, "unknown attribute " + Quoted(statement.attribute) + " of extension statement " +
                                Quoted(definition.name) + nearest.Hint());
            return nullptr;
        }
        if (expected && !given)
            Fail(statement,
                 "extension statement " + Quoted(definition.name) + " has no attribute " + Quoted(definition.argument));
        return given ? statement.argument : nullptr;
    }

    const char *CompactArgumentOf(const ExtensionStatement &statement, const Extension &definition)
    {
        bool isGiven = statement.argument != nullptr;
        bool isExpected = definition.argument != nullptr;
        if (isGiven && !isExpected)
            Fail(statement, "extension statement " + Quoted(definition.name) + " takes no argument");
        else if (isExpected && !isGiven)
            Fail(statement, "extension statement " + Quoted(definition.name) + " has no argument");
        return isExpected ? statement.argument : nullptr;
    }

    const char *ElementArgumentOf(const ExtensionStatement &statement, const Extension &definition)
    {
        for (Statement *child = statement.first; child != nullptr; child = child->next)
            if (child->keyword == Kw::Instance && IsArgument(*AsExtension(child), &definition))
                return (child->properties & HAS_TEXT) != 0 ? child->argument : "";
        Fail(statement,
             "extension statement " + Quoted(definition.name) + " has no element " + Quoted(definition.argument));
        return nullptr;
    }

    void Fail(const ExtensionStatement &statement, std::string_view sentence)
    {
        build_.Fail(unit_, &statement, sentence);
    }

    Build &build_;
    Unit &unit_;
};

/* ---- copies ---------------------------------------------------------------------------------------------------- */

struct CopySize {
    size_t records = 0; /* bytes of sets and instances */
    size_t texts = 0;
};

void Measure(const ExtensionSet &set, CopySize &size)
{
    size.records += ExtensionSet::Size(set.count, set.isPlaced != 0);
    for (const QY_EXT &instance : set) {
        if (instance.argument != nullptr)
            size.texts += std::strlen(instance.argument) + 1;
        if (instance.nested != nullptr)
            Measure(*instance.nested, size);
    }
}

ExtensionSet *Copy(const ExtensionSet &set, char *&records, char *&texts)
{
    ExtensionSet *made = ExtensionSet::Start(records, set.count, set.isPlaced != 0);
    made->AddToTotal(set.total);
    records += ExtensionSet::Size(set.count, set.isPlaced != 0);
    if (set.isPlaced != 0)
        std::copy_n(set.Spots(), set.count, made->Spots());
    QY_EXT *target = made->begin();
    for (const QY_EXT &instance : set) {
        const char *argument = nullptr;
        if (instance.argument != nullptr) {
            size_t size = std::strlen(instance.argument) + 1;
            argument = static_cast<const char *>(std::memcpy(texts, instance.argument, size));
            texts += size;
        }
        const ExtensionSet *nested = instance.nested != nullptr ? Copy(*instance.nested, records, texts) : nullptr;
        new (target++) QY_EXT{instance.name, argument, nested};
    }
    return made;
}

} // namespace

void ResolveExtensionUses(Build &build)
{
    for (Unit *unit : build.units) {
        std::vector<ExtensionUse *> uses; // in file order, as their failures are
        unit->extensionUses.ForEach([&uses](ExtensionUse &use) { uses.push_back(&use); });
        std::sort(uses.begin(), uses.end(), [](auto *left, auto *right) { return left->offset < right->offset; });
        UseResolver resolver(build, *unit);
        for (ExtensionUse *use : uses)
            resolver.Resolve(*use);
    }
}

const ExtensionSet *ExtensionsOf(Build &build, Unit &unit, const Statement *statement)
{
    return SetMaker(build, unit).Make(statement, nullptr);
}

const ExtensionSet *JoinedSets(Arena &arena, const std::vector<const ExtensionSet *> &sets)
{
    const ExtensionSet *only = nullptr;
    size_t instances = 0;
    size_t several = 0;
    for (const ExtensionSet *set : sets) {
        if (set == nullptr)
            continue;
        only = set;
        instances += set->count;
        ++several;
    }
    if (several < 2)
        return only;
    ExtensionSet *joined = NewSet(arena, instances, only->isPlaced != 0);
    QY_EXT *end = joined->begin();
    for (const ExtensionSet *set : sets) {
        if (set == nullptr)
            continue;
        if (joined->isPlaced != 0)
            std::copy_n(set->Spots(), set->count, joined->Spots() + (end - joined->begin()));
        end = std::copy(set->begin(), set->end(), end);
        joined->AddToTotal(set->total);
    }
    return joined;
}

const ExtensionSet *RefinedSet(Arena &arena, const std::vector<const ExtensionSet *> &sets)
{
    if (sets.front() == nullptr && sets.size() == 2)
        return sets.back();
    std::unordered_map<const ExtensionName *, size_t> lastOf; // the last of the refines' sets that has the extension
    for (size_t i = 1; i < sets.size(); ++i)
        for (const QY_EXT &instance : *sets[i])
            lastOf[instance.name] = i;
    auto forEachLeft = [&](auto &&visit) {
        for (size_t i = sets.front() != nullptr ? 0 : 1; i < sets.size(); ++i)
            for (const QY_EXT &instance : *sets[i])
                if (auto last = lastOf.find(instance.name); last == lastOf.end() || last->second == i)
                    visit(*sets[i], instance);
    };
    size_t count = 0;
    forEachLeft([&count](const ExtensionSet &, const QY_EXT &) { ++count; });
    ExtensionSet *refined = NewSet(arena, count, sets.back()->isPlaced != 0);
    size_t at = 0;
    forEachLeft([&](const ExtensionSet &set, const QY_EXT &instance) {
        if (refined->isPlaced != 0)
            refined->Spots()[at] = set.Spots()[&instance - set.begin()];
        refined->begin()[at++] = instance;
        refined->AddToTotal(1 + TotalOf(instance.nested));
    });
    return refined;
}

OwnedSet CopyOfSet(const ExtensionSet *set)
{
    if (set == nullptr)
        return nullptr;
    CopySize size;
    Measure(*set, size);
    char *records = static_cast<char *>(::operator new(size.records + size.texts));
    char *texts = records + size.records;
    return OwnedSet(Copy(*set, records, texts));
}

} // namespace qxyang
