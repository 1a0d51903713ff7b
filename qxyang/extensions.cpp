#include "extensions.h"

#include <algorithm>
#include <cstring>

namespace qxyang {

namespace {

/* ---- definitions ----------------------------------------------------------------------------------------------- */

class UseResolver {
  public:
    UseResolver(Build &build, Unit &unit) : build_(build), unit_(unit) {}

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
    /* Looks among all modules of the namespace: several revisions of one may be imported. */
    void Find(ExtensionUse &use)
    {
        NearestName nearest(use.keyword);
        const char *module = nullptr;
        auto look = [&](const QY_MOD *candidate) {
            if (use.definition != nullptr || use.space != candidate->space)
                return;
            module = candidate->name;
            use.definition = candidate->extensionDefinitions.Find(use.keyword);
            ForEachNameIn(candidate->extensionDefinitions, [&nearest](std::string_view name) { nearest.Offer(name); });
        };
        look(&build_.module);
        for (const PrefixBinding &binding : unit_.bindings)
            look(binding.module);
        if (use.definition != nullptr)
            return;
        std::string keyword = Quoted(use.keyword);
        if (module == nullptr)
            return Fail(use, "extension statement " + keyword + " is of namespace " + Quoted(use.space) +
                                 ", which no imported module has");
        Fail(use, "module " + Quoted(module) + " has no extension " + keyword + nearest.Hint());
    }

    void Fail(const ExtensionUse &use, std::string_view sentence)
    {
        build_.load.failures.Add(unit_.source, use.offset, sentence);
    }

    Build &build_;
    Unit &unit_;
};

/* ---- instances ------------------------------------------------------------------------------------------------- */

class SetMaker {
  public:
    SetMaker(Build &build, Unit &unit) : build_(build), unit_(unit) {}

    /* `around` is the extension that the statement is an instance of, or null: its argument element is no instance. */
    const ExtensionSet *Make(const Statement *statement, const Extension *around)
    {
        uint64_t count = 0;
        for (Statement *child = statement->first; child != nullptr; child = child->next)
            count += IsInstance(child, around) ? 1 : 0;
        if (count == 0)
            return nullptr;
        void *memory = build_.module.records.Allocate(sizeof(ExtensionSet) + count * sizeof(QY_EXT), alignof(QY_EXT));
        auto *set = new (memory) ExtensionSet{count};
        QY_EXT *instance = set->begin();
        for (Statement *child = statement->first; child != nullptr; child = child->next)
            if (IsInstance(child, around))
                new (instance++) QY_EXT(MakeInstance(*AsExtension(child)));
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
    size.records += sizeof(ExtensionSet) + set.count * sizeof(QY_EXT);
    for (const QY_EXT &instance : set) {
        if (instance.argument != nullptr)
            size.texts += std::strlen(instance.argument) + 1;
        if (instance.nested != nullptr)
            Measure(*instance.nested, size);
    }
}

ExtensionSet *Copy(const ExtensionSet &set, char *&records, char *&texts)
{
    auto *made = new (records) ExtensionSet{set.count};
    records += sizeof(ExtensionSet) + set.count * sizeof(QY_EXT);
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

const ExtensionSet *JoinedSets(Arena &arena, const ExtensionSet *first, const ExtensionSet *second)
{
    if (first == nullptr || second == nullptr)
        return first != nullptr ? first : second;
    uint64_t count = first->count + second->count;
    void *memory = arena.Allocate(sizeof(ExtensionSet) + count * sizeof(QY_EXT), alignof(QY_EXT));
    auto *joined = new (memory) ExtensionSet{count};
    std::copy(second->begin(), second->end(), std::copy(first->begin(), first->end(), joined->begin()));
    return joined;
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
