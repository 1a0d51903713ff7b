/* Names of nodes: which have to differ, and where a failure says that two do not. */
#pragma once

#include "build/build.h"
#include "schema/sibling_names.h"

namespace qxyang {

class NodeNames {
  public:
    explicit NodeNames(Build &build) : build_(build) {}

    /* The names below a node that has all its children; the statement made the node, in whose scope it refers to
     * groupings. */
    void CheckChildren(QY_NODE *parent, const Statement *statement, Scope *scope);

    /* The names of the cases of a choice that has all its cases: RFC 7950, 7.9.2. */
    void CheckCases(QY_NODE *choice, const Statement *statement, Scope *scope);

    /* The names of the module's top-level nodes. */
    void CheckModule();

    /* An augment has added nodes to a target. Their names are checked later, once for all that is added to it. */
    void NoteAddition(QY_NODE *target, const Statement *augment, Scope *scope)
    {
        added_.push_back({target, augment, scope});
    }

    /* A point in time, from which CheckAdditions goes on. */
    size_t Additions() const { return added_.size(); }

    /* Checks what was added since, in each target once: RFC 7950, 7.17. Additions wait on whose names count below a
     * node that gets more children still. */
    void CheckAdditions(size_t since, const QY_NODE *unfinished = nullptr);

  private:
    struct Addition {
        QY_NODE *target;
        const Statement *augment;
        Scope *scope;
    };

    void FailTwice(const QY_NODE *node, const QY_NODE *parent, Scope *scope, const Statement *where);
    void FailAddedTwice(const QY_NODE &node, const QY_NODE &parent, size_t first, size_t met);
    void FindStatements(const Statement *statement, Scope *scope, std::string_view name,
                        std::vector<const Statement *> &found);

    Build &build_;
    SiblingNames names_;
    std::vector<Addition> added_; /* whose names are not checked yet */
};

} // namespace qxyang
