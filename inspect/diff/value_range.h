/* The values that a number may have, or a text's length: every part of its range. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace inspect::diff {

class ValueRange {
  public:
    /* All values of a built-in type of numbers, "length" for lengths. A decimal64 has that many digits behind the point.
     * None for any other type. */
    static std::optional<ValueRange> Of(std::string_view type, unsigned digits = 0);

    /* Leaves the values that the argument of a range or length statement allows. "min" and "max" are the bounds so far. */
    void Restrict(std::string_view argument);

    /* True if this range has every value of the other one. Both count in the same digits. */
    bool Covers(const ValueRange &other) const;
    bool operator==(const ValueRange &) const = default;

    /* "1..1024 | 4096" */
    std::string Text() const;

  private:
    /* Bounds in an order that holds for signed and unsigned numbers alike: as if 0 were the lowest number. */
    struct Part {
        uint64_t min;
        uint64_t max;
        bool operator==(const Part &) const = default;
    };

    uint64_t Bound(std::string_view text) const;
    std::string BoundText(uint64_t bound) const;

    std::vector<Part> parts_; /* in their order; adjacent ones are one */
    uint64_t zero_ = 0;       /* what stands for the number 0 */
    unsigned digits_ = 0;     /* numbers are counted in so many digits behind the point */
};

} // namespace inspect::diff
