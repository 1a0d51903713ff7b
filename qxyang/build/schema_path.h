/* Paths of augments, deviations and refines: RFC 7950, 6.5. They lead through all schema nodes, choices and cases
 * included. */
#pragma once

#include "build/build.h"

namespace qxyang {

struct SchemaStep {
    QY_MOD *module;
    std::string_view name;
};

class SchemaPath {
  public:
    /* Parses the statement's argument, which must be absolute, with a '/' in front, or else relative to some node.
     * False: the failure is recorded. */
    bool Parse(Build &build, Unit &unit, const Statement *statement, bool absolute);

    /* The node that the path leads to; null: the failure is recorded. A path that is not absolute starts at the
     * parent. */
    QY_NODE *Follow(Build &build, Unit &unit, const Statement *statement, QY_NODE *parent = nullptr) const;

    const std::vector<SchemaStep> &Steps() const { return steps_; }

  private:
    void FailStep(Build &build, Unit &unit, const Statement *statement, QY_NODE *at, const SchemaStep &step) const;

    std::vector<SchemaStep> steps_;
    bool absolute_ = false;
};

} // namespace qxyang
