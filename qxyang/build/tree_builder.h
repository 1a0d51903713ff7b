/* Expands a module's statements into schema nodes. */
#pragma once

#include "build/augments.h"
#include "build/groupings.h"

namespace qxyang {

class TreeBuilder final : private ChildAdder {
  public:
    TreeBuilder(Build &build, TypeCompiler &types, ConstraintChecker &constraints)
        : build_(build),
          types_(types),
          constraints_(constraints),
          names_(build),
          augments_(build, names_, *this),
          groupings_(build, types, constraints, names_, augments_, *this)
    {
    }

    /* The module's typedefs, groupings and data tree. */
    void BuildModule();

    void ApplyAugments() { augments_.ApplyAll(); }

  private:
    OnHeap AddChildren(const Statement *statement, QY_NODE *parent, Site site) override;
    QY_NODE *AddNode(const Statement *statement, QY_NODE *parent, const Site &site);
    void FillLeaf(const Statement *statement, QY_NODE *leaf, const Site &site);
    OnHeap FillParent(const Statement *statement, QY_NODE *node, Site site);
    void CompleteParent(const Statement *statement, QY_NODE *node, const Site &site);
    void AddMissingBranches(const Statement *statement, QY_NODE *operation, const Site &site);

    Build &build_;
    TypeCompiler &types_;
    ConstraintChecker &constraints_;
    NodeNames names_;
    Augments augments_;
    Groupings groupings_;
};

} // namespace qxyang
