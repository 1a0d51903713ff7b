/* Augments: those of a module, and those within uses. */
#pragma once

#include "build/node_names.h"
#include "build/schema_path.h"
#include "build/site.h"

namespace qxyang {

class Augments {
  public:
    Augments(Build &build, NodeNames &names, ChildAdder &children) : build_(build), names_(names), children_(children)
    {
    }

    /* Applies the module's augments: first those of nodes near the top, so that augments of augmented nodes find
     * them. */
    void ApplyAll();

    /* True if the target can have what the augment adds; otherwise the failure is recorded. */
    bool Accepts(const Statement *augment, const QY_NODE *target, Unit &unit);

    /* Adds what the augment holds to a target that accepts it. The names are not checked yet. */
    OnHeap AddTo(QY_NODE *target, const Statement *augment, Site site);

  private:
    /* An augment of the module that has its node, but is not applied yet. */
    struct Planned {
        QY_NODE *node;
        const Statement *statement;
        Scope *scope;
        SchemaPath path;
    };

    std::vector<Planned> Plan();
    void Apply(const Planned &augment);

    Build &build_;
    NodeNames &names_;
    ChildAdder &children_;
};

} // namespace qxyang
