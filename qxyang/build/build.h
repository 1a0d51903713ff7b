/* What the stages share that make a module's schema from its statements. */
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "build/leafref_members.h"
#include "schema/child_finder.h"
#include "schema/context.h"
#include "schema/enum_names.h"
#include "syntax/statement.h"

namespace qxyang {

/* The typedefs and groupings directly in a statement. A name is looked for in a scope, then in the scopes around it,
 * and then in the module: RFC 7950, 5.5. */
struct Scope {
    Scope *outer;
    Unit *unit;
    NameTable<Typedef> typedefs;
    NameTable<Grouping> groupings;
};

/* A leaf whose type is a leafref. What it refers to is found at the end of the load. */
struct PendingLeafref {
    QY_NODE *leaf;
    const QY_TYPE *type;   /* the leafref: the leaf's type, or one within its union */
    const QY_TYPE *ofLeaf; /* the type that the leaf had then; a deviation may replace it */
    Unit *unit;            /* where a failure is reported */
    uint32_t offset;
};

/* One load call. */
struct LoadState {
    explicit LoadState(QY_CTX &owner)
        : context(owner), failures(owner.failures), files(owner.path, owner.failures.names, owner.listings.get())
    {
    }

    QY_CTX &context;
    Failures &failures;
    FileFinder files;
    ChildFinder finder;
    std::vector<PendingLeafref> leafrefs;
    LeafrefMembers leafrefMembers;
    EnumNames enumNames;
    size_t nodes = 0; /* made so far; all these numbers include groupings */
    size_t extensions = 0;
    size_t joinedExtensions = 0;
    size_t rangeParts = 0;
    size_t leafrefSteps = 0;
    size_t typesPassed = 0;  /* types of the leaves on the ways of leafrefs, with those that they are derived from */
    size_t membersTried = 0; /* members of unions that were tried for defaults */

    /* Counts the parts of a leaf's range, since readers visit all of them for each leaf. */
    void CountRange(Source &source, uint32_t offset, const QY_TYPE &type);

    /* Counts the types that readers pass when they follow a leafref whose target is known, and the range at its end. */
    void CountLeafref(const PendingLeafref &pending);

  private:
    [[noreturn]] void StopAtLimit(Source &source, uint32_t offset, size_t limit, std::string_view what);
};

/* One module that is being built, its submodules included. */
class Build {
  public:
    Build(LoadState &load, QY_MOD &module, std::vector<Unit *> units);

    LoadState &load;
    QY_MOD &module;
    std::vector<Unit *> units; /* in the order of textual inclusion: the module's own file comes last */

    Scope *UnitScope(const Unit &unit);

    Scope *NewScope(Scope *outer);

    void Fail(Unit &unit, const Statement *statement, std::string_view sentence)
    {
        load.failures.Add(unit.source, statement->offset, sentence);
    }

    bool Failed() const { return load.failures.AnySince(start_); }

    /* The module that the reference's prefix stands for: RFC 7950, 7.1.4. Null: the failure is recorded. */
    QY_MOD *ModuleOf(Unit &unit, const Statement *statement, const Reference &reference);

    /* Records that a name is unknown. The hint is a prefix, if the name has none and isIn(module) is true for an
     * imported module, or else the nearest of the names that forEachName(offer) offers. */
    template <class ForEachName, class IsIn>
    void FailUnknown(Unit &unit, const Statement *statement, std::string_view what, std::string_view text,
                     ForEachName &&forEachName, IsIn &&isIn)
    {
        Reference reference = SplitReference(text);
        load.failures.Add(unit.source, statement->offset, "unknown " + std::string(what) + " " + Quoted(text), [&] {
            for (const PrefixBinding *binding : unit.bindings)
                if (reference.prefix.empty() && isIn(*binding->module))
                    return PrefixHint(binding->name, reference.name);
            return NearestHint(reference, forEachName);
        });
    }

    /* Records a failure about a wrong name. The hint is the nearest of the names that forEachName(offer) offers. */
    template <class ForEachName>
    void Fail(Unit &unit, const Statement *statement, const std::string &sentence, const Reference &wrong,
              ForEachName &&forEachName)
    {
        load.failures.Add(unit.source, statement->offset, sentence, [&] { return NearestHint(wrong, forEachName); });
    }

    /* The hint at the nearest of the names that forEachName(offer) offers; empty if none is near. */
    template <class ForEachName>
    std::string NearestHint(const Reference &wrong, ForEachName &&forEachName)
    {
        NearestName nearest(load.failures.names, wrong.name, wrong.prefix);
        if (nearest.IsOpen())
            forEachName([&nearest](std::string_view name) { nearest.Offer(name); });
        return nearest.Hint();
    }

    /* For tools, if the context keeps it: the statement that makes a node, one that changes a node, of whatever module, or
     * one that makes a type. */
    void NoteOrigin(const QY_NODE *node, const Unit &unit, const Statement *statement)
    {
        if (module.details != nullptr)
            KeepOrigin(node, SpotOf(unit, statement));
    }
    void NoteChange(const QY_NODE *node, const Unit &unit, const Statement *change)
    {
        if (module.details != nullptr)
            KeepChange(node, SpotOf(unit, change));
    }
    void NoteType(const QY_TYPE *type, const Unit &unit, const Statement *definition)
    {
        if (module.details != nullptr)
            KeepType(type, SpotOf(unit, definition));
    }

    /* Notes where a node comes from that a uses copies. The case that a choice makes for the copy has the same origin; `parent`
     * tells whether there is one. */
    void NoteCopy(const QY_NODE *copy, const QY_NODE *from, const QY_NODE *parent, const Unit &unit,
                  const Statement *uses)
    {
        if (module.details != nullptr)
            KeepCopy(copy, from, parent, SpotOf(unit, uses));
    }

    /* Counts extension statements that are copied because a refine or deviation changes those of a node. */
    void CountJoined(Unit &unit, const Statement *statement, size_t count);

    /* Notes in the module which files it came from. */
    void KeepFiles();

    /* Releases the statements, and what else is needed only while the module is built. */
    void ForgetStatements();

  private:
    static Spot SpotOf(const Unit &unit, const Statement *statement) { return {unit.keptFile, statement->offset}; }
    [[gnu::noinline]] void KeepOrigin(const QY_NODE *node, Spot statement);
    [[gnu::noinline]] void KeepChange(const QY_NODE *node, Spot change);
    [[gnu::noinline]] void KeepType(const QY_TYPE *type, Spot definition);
    [[gnu::noinline]] void KeepCopy(const QY_NODE *copy, const QY_NODE *from, const QY_NODE *parent, Spot uses);

    std::deque<Scope> scopes_;
    Failures::Mark start_;
};

/* Counts a recursion for as long as it lasts. */
class Depth {
  public:
    explicit Depth(size_t &depth) : depth_(depth) { ++depth_; }
    Depth(const Depth &) = delete;
    Depth &operator=(const Depth &) = delete;
    ~Depth() { --depth_; }

  private:
    size_t &depth_;
};

/* Visits the names of a table's records. */
template <class T, class Visit>
void ForEachNameIn(const NameTable<T> &table, Visit &&visit)
{
    table.ForEach([&visit](const T &record) { visit(std::string_view(record.name)); });
}

} // namespace qxyang
