/* The leafrefs within a type: itself, or members of a union and of the unions in it. */
#pragma once

#include <vector>

#include "schema/model.h"

namespace qxyang {

/* Keeps the memory that it needs from one type to the next. */
class LeafrefMembers {
  public:
    /* The leafrefs in the order of the members; those of a union that stands in several members once. They stay
     * until the next call. */
    const std::vector<const QY_TYPE *> &Of(const QY_TYPE &type);

    /* The unions that the latest call looked at. */
    size_t UnionCount() const { return seen_.size(); }

  private:
    struct Place {
        const UnionMembers *members;
        uint32_t next;
    };

    void Enter(const QY_TYPE &type);
    void Walk();

    std::vector<const QY_TYPE *> found_;
    std::vector<const UnionMembers *> seen_;
    std::vector<Place> open_; /* the unions around the one that is looked at, and itself */
};

} // namespace qxyang
