#include "model/integer_range.h"

#include <algorithm>
#include <new>
#include <utility>

#include "model/schema_scan.h"

namespace inspect {
namespace {

constexpr uint64_t SIGNED_ZERO = uint64_t{1} << 63;

struct RangeScan {
    std::vector<std::pair<int64_t, int64_t>> parts;
    bool outOfMemory = false;
};

uint32_t OnPart(const int64_t *min, const int64_t *max, void *cookie)
{
    auto *scan = static_cast<RangeScan *>(cookie);
    try {
        scan->parts.emplace_back(*min, *max);
    } catch (const std::bad_alloc &) {
        scan->outOfMemory = true;
    }
    return 0;
}

} // namespace

IntegerRange IntegerRange::Of(QY_NODE *leaf)
{
    IntegerRange range;
    QY_TYPE *type = FinalType(leaf);
    if (type == nullptr)
        return range;
    RangeScan scan;
    (void)QY_TYPE_ScanStartEndPair(type, OnPart, &scan);
    if (scan.outOfMemory)
        throw std::bad_alloc();
    range.zero_ = QY_TYPE_GetBuiltInBaseType(type) == QY_TYPE_UINT64 ? 0 : SIGNED_ZERO;
    for (const auto &[min, max] : scan.parts) {
        Part part = {static_cast<uint64_t>(min) ^ range.zero_, static_cast<uint64_t>(max) ^ range.zero_};
        if (!range.parts_.empty() && range.parts_.back().max + 1 == part.min)
            range.parts_.back().max = part.max;
        else
            range.parts_.push_back(part);
    }
    return range;
}

bool IntegerRange::Covers(const IntegerRange &other) const
{
    return std::all_of(other.parts_.begin(), other.parts_.end(), [this](const Part &wanted) {
        return std::any_of(parts_.begin(), parts_.end(),
                           [&wanted](const Part &part) { return part.min <= wanted.min && wanted.max <= part.max; });
    });
}

std::string IntegerRange::BoundText(uint64_t bound) const
{
    return zero_ == 0 ? std::to_string(bound) : std::to_string(static_cast<int64_t>(bound ^ zero_));
}

std::string IntegerRange::Text() const
{
    std::string text;
    for (const Part &part : parts_) {
        if (!text.empty())
            text += " | ";
        text += BoundText(part.min);
        if (part.max != part.min)
            text += ".." + BoundText(part.max);
    }
    return text;
}

} // namespace inspect
