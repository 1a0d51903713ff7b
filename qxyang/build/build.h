/* What the stages that turn a module's statements into schema share. */
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/text.h"
#include "build/leafref_members.h"
#include "schema/child_finder.h"
#include "schema/context.h"
#include "schema/enum_names.h"
#include "syntax/statement.h"

namespace qxyang {

/* Where names of typedefs and groupings are looked for: those of a statement, then those of the statements around it,
 * then the module's. */
struct Scope {
    Scope *outer;
    Unit *unit;
    NameTable<Typedef> typedefs;
    NameTable<Grouping> groupings;
};

/* A leaf whose type refers to another leaf. Answered when the load is complete but for this. */
struct PendingLeafref {
    QY_NODE *leaf;
    const QY_TYPE *type;   /* the leafref: the leaf's type, or one within its union */
    const QY_TYPE *ofLeaf; /* the type that the leaf had then; a deviation may replace it */
    Unit *unit;            /* where a failure is reported */
    uint32_t offset;
};

/* A deviation of the load that leaves a node out. */
struct Removal {
    Unit *unit;
    uint32_t offset;
    std::string deviation; /* its argument */
};

/* One load call. */
struct LoadState {
    explicit LoadState(QY_CTX &owner)
        : context(owner), failures(owner.failures), files(owner.path, owner.failures.names)
    {
    }

    QY_CTX &context;
    Failures &failures;
    FileFinder files;
    ChildFinder finder;
    std::vector<PendingLeafref> leafrefs;
    LeafrefMembers leafrefMembers;
    std::unordered_map<const QY_NODE *, Removal> removals;
    EnumNames enumNames;
    size_t nodes = 0; /* made so far, those of groupings included, as are the following */
    size_t extensions = 0;
    size_t joinedExtensions = 0;
    size_t rangeParts = 0;
    size_t leafrefSteps = 0;
    size_t typesPassed = 0;  /* on the ways from leafrefs to what they lead to */
    size_t membersTried = 0; /* of unions, for defaults */

    /* Counts the parts of a leaf's range: readers visit all of them for each leaf. */
    void CountRange(Source &source, uint32_t offset, const QY_TYPE &type);

    /* Counts the types that readers pass when they follow a leafref whose target is known, and the range behind it. */
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

    /* The module that the reference's prefix stands for, or null: the failure is recorded. */
    QY_MOD *ModuleOf(Unit &unit, const Statement *statement, const Reference &reference);

    /* Records that a name is not found, with the nearest of the names that the visitor offers. A name without prefix is
     * looked for in the imported modules as well: isIn(module) tells whether one has it. */
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

    /* Records a failure about a wrong name, with the nearest of the names that the visitor offers. */
    template <class ForEachName>
    void Fail(Unit &unit, const Statement *statement, const std::string &sentence, const Reference &wrong,
              ForEachName &&forEachName)
    {
        load.failures.Add(unit.source, statement->offset, sentence, [&] { return NearestHint(wrong, forEachName); });
    }

    /* A hint at the nearest of the names that the visitor offers, or nothing. */
    template <class ForEachName>
    std::string NearestHint(const Reference &wrong, ForEachName &&forEachName)
    {
        NearestName nearest(load.failures.names, wrong.name, wrong.prefix);
        if (nearest.IsOpen())
            forEachName([&nearest](std::string_view name) { nearest.Offer(name); });
        return nearest.Hint();
    }

    /* Counts extension statements that are copied because a refine or deviation changes those of a node. */
    void CountJoined(Unit &unit, const Statement *statement, size_t count);

    /* Notes the files for those who ask which the module came from. */
    void KeepFiles();

    /* What has records only for this module's load does not outlive it. */
    void ForgetStatements();

  private:
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
