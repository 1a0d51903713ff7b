/* Groupings, and the copies of their nodes that uses statements make. */
#pragma once

#include "build/augments.h"
#include "build/constraints.h"
#include "build/node_names.h"
#include "build/site.h"
#include "build/types.h"

namespace qxyang {

class Groupings {
  public:
    Groupings(Build &build, TypeCompiler &types, ConstraintChecker &constraints, NodeNames &names, Augments &augments,
              ChildAdder &children)
        : build_(build),
          types_(types),
          constraints_(constraints),
          names_(names),
          augments_(augments),
          children_(children)
    {
    }

    /* The typedefs and groupings directly in a statement, used or not: what is wrong with them is to be told. */
    OnHeap CompileDefinitions(const Statement *statement, Site site);

    /* Adds the nodes of the grouping that a uses statement names, as its refine and augment statements change them. */
    OnHeap Expand(const Statement *uses, QY_NODE *parent, Site site);

  private:
    /* Extension instances that a node gets from a refine. */
    struct Refinement {
        QY_NODE *node;
        const ExtensionSet *set;
        const Statement *refine;
    };

    /* One uses statement: where its nodes are added. */
    struct Use {
        const Statement *statement;
        QY_NODE *parent;
        Site site;
    };

    bool Start(Grouping &grouping);
    OnHeap Compile(Grouping &grouping, uint32_t depth);
    void CopyTree(const QY_NODE *top, Use use);
    QY_NODE *CopyNode(const QY_NODE *from, const Use &use);
    OnHeap Change(Use use, const QY_NODE *grouping);
    QY_NODE *FindChanged(const Statement *change, const QY_NODE *grouping, const Use &use);
    const ExtensionSet *Refine(const Statement *refine, QY_NODE *node, Unit &unit);
    void GiveRefined(std::vector<Refinement> &refined, const Use &use);

    Build &build_;
    TypeCompiler &types_;
    ConstraintChecker &constraints_;
    NodeNames &names_;
    Augments &augments_;
    ChildAdder &children_;
    std::vector<Grouping *> chain_; /* groupings being compiled, each using the next */
};

} // namespace qxyang
