/* The values that an integer leaf may have: every part of its type's range. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <korv_platform.h>

namespace inspect {

class IntegerRange {
  public:
    /* Empty for a leaf of another type, and for a leafref without target. Leafrefs are followed. */
    static IntegerRange Of(QY_NODE *leaf);

    bool IsEmpty() const { return parts_.empty(); }

    /* True if this range has every value of the other one. */
    bool Covers(const IntegerRange &other) const;
    bool operator==(const IntegerRange &) const = default;

    /* "1..1024 | 4096" */
    std::string Text() const;

  private:
    /* Bounds in an order that holds for signed and unsigned types alike: as if 0 were the lowest number. */
    struct Part {
        uint64_t min;
        uint64_t max;

        bool operator==(const Part &) const = default;
    };

    std::string BoundText(uint64_t bound) const;

    uint64_t zero_ = 0;       /* where 0 is in that order */
    std::vector<Part> parts_; /* rising, and none begins where the one before it ends */
};

} // namespace inspect
