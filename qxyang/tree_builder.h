/* Expands a module's statements into schema nodes. */
#pragma once

#include "build.h"
#include "sibling_names.h"
#include "types.h"

namespace qxyang {

class SchemaPath;

class TreeBuilder {
  public:
    explicit TreeBuilder(Build &build) : build_(build), types_(build) {}

    /* The module's typedefs, groupings and data tree. */
    void buildModule();

    /* The module's augments: first those of nodes near the top, so that augments of augmented nodes find them. */
    void applyAugments();

    /* Marks nodes that have a condition or stand below one that has. */
    void markGated();

    TypeCompiler &types() { return types_; }

    /* Remembers what the leaf's type refers to until the load is otherwise complete. */
    void awaitTargets(QY_NODE *leaf, Unit *unit, const Statement *statement);

  private:
    /* nodes */
    void checkDepth();
    QY_NODE *append(QY_NODE *parent, uint8_t kind, const char *name);
    void addChildren(const Statement *statement, QY_NODE *parent, Scope *scope);
    void addNode(const Statement *statement, QY_NODE *parent, Scope *scope);
    void fillLeaf(const Statement *statement, QY_NODE *leaf, Scope *scope);
    void fillParent(const Statement *statement, QY_NODE *node, Scope *scope);
    void setKeys(const Statement *statement, QY_NODE *list, Unit &unit);
    void setKey(const Statement *key, std::string_view text, QY_NODE *list, Unit &unit);
    void checkUnique(const Statement *statement, QY_NODE *list, Unit &unit);
    void addMissingBranches(QY_NODE *operation);
    Scope *enterScope(const Statement *statement, Scope *outer);
    void compileDefinitions(const Statement *statement, Scope *scope);

    /* groupings */
    QY_NODE *compile(Grouping &grouping);
    void expandUses(const Statement *uses, QY_NODE *parent, Scope *scope);
    void copyNode(const QY_NODE *from, QY_NODE *parent);
    void changeUse(const Statement *uses, const QY_NODE *grouping, QY_NODE *parent, Scope *scope);
    void refine(const Statement *statement, QY_NODE *node, Unit &unit);

    /* augments */
    struct Addition {
        QY_NODE *target;
        const Statement *augment;
        Scope *scope;
    };
    void checkAdditions(size_t first);
    void failAddedTwice(const QY_NODE &node, const QY_NODE &parent, size_t first);
    void addToTarget(const Statement *augment, QY_NODE *target, Scope *scope);
    bool accepts(const Statement *augment, const QY_NODE *target, Unit &unit);
    void applyAugment(QY_NODE *augment, const Statement *statement, const SchemaPath &path, Scope *scope);

    /* names */
    void checkNames(QY_NODE *parent, const Statement *statement, Scope *scope);
    void checkModuleNames();
    void failTwice(const QY_NODE *node, const QY_NODE *parent, Scope *scope, const Statement *where);
    void findStatements(const Statement *statement, Scope *scope, std::string_view name,
                        std::vector<const Statement *> &found);

    Build &build_;
    TypeCompiler types_;
    SiblingNames names_;
    std::vector<Grouping *> chain_; /* groupings being compiled, each using the next */
    std::vector<Addition> added_;   /* whose names are not checked yet */
    size_t depth_ = 0;              /* of the node being built */
    Unit *unit_ = nullptr;          /* where the statement being expanded stands */
    const Statement *statement_ = nullptr;
    const Statement *outermostUse_ = nullptr; /* that copies nodes into the tree, and where it stands */
    Unit *outermostUnit_ = nullptr;
};

/* Puts conditions in front of those that the node has. */
void addConditions(QY_NODE *node, const Condition *conditions);

}  // namespace qxyang
