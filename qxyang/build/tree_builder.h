/* Expands a module's statements into schema nodes. */
#pragma once

#include "base/heap_frames.h"
#include "build/build.h"
#include "build/constraints.h"
#include "build/types.h"
#include "schema/sibling_names.h"

namespace qxyang {

class SchemaPath;

class TreeBuilder {
  public:
    explicit TreeBuilder(Build &build) : build_(build), constraints_(build), types_(build, constraints_) {}

    /* The module's typedefs, groupings and data tree. */
    void BuildModule();

    /* The module's augments: first those of nodes near the top, so that augments of augmented nodes find them. */
    void ApplyAugments();

    /* Marks nodes that have a condition or stand below one that has. */
    void MarkGated();

    TypeCompiler &Types() { return types_; }
    ConstraintChecker &Constraints() { return constraints_; }

    /* Remembers what the leaf's type refers to until the load is otherwise complete. */
    void AwaitTargets(QY_NODE *leaf, Unit *unit, const Statement *statement);

  private:
    /* nodes */
    void CheckDepth();
    QY_NODE *Append(QY_NODE *parent, uint8_t kind, const char *name);
    OnHeap AddChildren(const Statement *statement, QY_NODE *parent, Scope *scope);
    QY_NODE *AddNode(const Statement *statement, QY_NODE *parent, Scope *scope);
    void FillLeaf(const Statement *statement, QY_NODE *leaf, Scope *scope);
    OnHeap FillParent(const Statement *statement, QY_NODE *node, Scope *scope);
    void CompleteParent(const Statement *statement, QY_NODE *node, Scope *scope, Scope *inner);
    void SetKeys(const Statement *statement, QY_NODE *list, Unit &unit);
    void SetKey(const Statement *key, std::string_view text, QY_NODE *list, Unit &unit);
    void CheckUnique(const Statement *statement, QY_NODE *list, Unit &unit);
    void AddMissingBranches(QY_NODE *operation);
    OnHeap CompileDefinitions(const Statement *statement, Scope *scope);
    void AwaitTarget(const PendingLeafref &pending, const Statement *statement);
    void ShowExtensions(QY_NODE *node, const ExtensionSet *set);

    /* groupings */
    struct RefinedExtensions {
        QY_NODE *node;
        const ExtensionSet *set;
        const Statement *refine;
    };
    bool StartGrouping(Grouping &grouping);
    OnHeap Compile(Grouping &grouping);
    OnHeap ExpandUses(const Statement *uses, QY_NODE *parent, Scope *scope);
    void CopyTree(const QY_NODE *top, QY_NODE *parent);
    QY_NODE *CopyNode(const QY_NODE *from, QY_NODE *parent);
    QY_NODE *FindChanged(const Statement *change, const QY_NODE *grouping, QY_NODE *parent, Unit &unit);
    OnHeap ChangeUse(const Statement *uses, const QY_NODE *grouping, QY_NODE *parent, Scope *scope);
    void Refine(const Statement *statement, QY_NODE *node, Unit &unit);
    void JoinRefined(size_t first, Unit &unit);

    /* augments */
    struct Addition {
        QY_NODE *target;
        const Statement *augment;
        Scope *scope;
    };
    void CheckAdditions(size_t first, const QY_NODE *unfinished = nullptr);
    void FailAddedTwice(const QY_NODE &node, const QY_NODE &parent, size_t first, size_t met);
    OnHeap AddToTarget(const Statement *augment, QY_NODE *target, Scope *scope);
    bool Accepts(const Statement *augment, const QY_NODE *target, Unit &unit);
    void ApplyAugment(QY_NODE *augment, const Statement *statement, const SchemaPath &path, Scope *scope);

    /* names */
    void CheckNames(QY_NODE *parent, const Statement *statement, Scope *scope);
    void CheckModuleNames();
    void FailTwice(const QY_NODE *node, const QY_NODE *parent, Scope *scope, const Statement *where);
    void FindStatements(const Statement *statement, Scope *scope, std::string_view name,
                        std::vector<const Statement *> &found);

    Build &build_;
    ConstraintChecker constraints_;
    TypeCompiler types_;
    SiblingNames names_;
    std::vector<Grouping *> chain_;          /* groupings being compiled, each using the next */
    std::vector<Addition> added_;            /* whose names are not checked yet */
    std::vector<RefinedExtensions> refined_; /* of the uses being changed, not joined yet */
    size_t depth_ = 0;                       /* of the node being built */
    Unit *unit_ = nullptr;                   /* where the statement being expanded stands */
    const Statement *statement_ = nullptr;
    const Statement *outermostUse_ = nullptr; /* that copies nodes into the tree, and where it stands */
    Unit *outermostUnit_ = nullptr;
};

/* Puts conditions in front of those that the node has. */
void AddConditions(QY_NODE *node, const Condition *conditions);

} // namespace qxyang
