/* Where nodes are added, and what adds them: what uses and augments know of the tree builder. */
#pragma once

#include <cstdint>

#include "base/heap_frames.h"
#include "build/build.h"

namespace qxyang {

/* Where the nodes of some statements are added. */
struct Site {
    Scope *scope;      /* where names are looked for that the statements refer to; its unit is their file */
    uint32_t depth;    /* levels of nodes above those that are added */
    bool isOfGrouping; /* the nodes are templates, which each use of the grouping copies */

    Unit &File() const { return *scope->unit; }

    /* The same, so many levels deeper. */
    Site Below(uint32_t levels) const { return {scope, depth + levels, isOfGrouping}; }
};

/* Adds nodes for all data definition statements directly in a statement. */
class ChildAdder {
  public:
    virtual OnHeap AddChildren(const Statement *statement, QY_NODE *parent, Site site) = 0;

  protected:
    ~ChildAdder() = default;
};

} // namespace qxyang
