/* Finds names that two nodes of one parent have, nodes within its choices and cases included. */
#pragma once

#include <vector>

#include "schema/model.h"

namespace qxyang {

class SiblingNames {
  public:
    /* The first of the module's nodes below the parent that has the name of one before it, or null. */
    QY_NODE *FindTwice(QY_NODE *parent, const QY_MOD *module);

    /* The same for the cases of a choice. */
    QY_NODE *FindTwiceAmongCases(QY_NODE *choice, const QY_MOD *module);

  private:
    struct Slot {
        uint32_t round = 0;
        uint32_t hash = 0;
        const char *name = nullptr;
    };

    void Begin(size_t count);
    bool Add(const char *name);
    QY_NODE *AddAll(QY_NODE *parent, const QY_MOD *module);

    std::vector<Slot> slots_;
    size_t mask_ = 0;
    uint32_t round_ = 0; /* slots of other rounds are free: none has to be cleared */
};

} // namespace qxyang
