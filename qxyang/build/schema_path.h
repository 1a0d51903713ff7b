/* Paths of augments, deviations and refines: they lead through every schema node, choices and cases included. */
#pragma once

#include "build/build.h"

namespace qxyang {

struct SchemaStep {
    QY_MOD *module;
    std::string_view name;
};

class SchemaPath {
  public:
    /* Parses the statement's argument: absolute with a '/' at its beginning, or below some node. False: the failure is
     * recorded. */
    bool Parse(Build &build, Unit &unit, const Statement *statement, bool absolute);

    /* The node that the path leads to, from the parent that it starts at (ignored when it is absolute); null: the
     * failure is recorded. */
    QY_NODE *Follow(Build &build, Unit &unit, const Statement *statement, QY_NODE *parent = nullptr) const;

    const std::vector<SchemaStep> &Steps() const { return steps_; }

  private:
    void FailStep(Build &build, Unit &unit, const Statement *statement, QY_NODE *at, const SchemaStep &step) const;

    std::vector<SchemaStep> steps_;
    bool absolute_ = false;
};

} // namespace qxyang
