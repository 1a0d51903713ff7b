#include "diff/value_range.h"

#include <algorithm>
#include <utility>

namespace inspect::diff {
namespace {

constexpr uint64_t SIGNED_ZERO = uint64_t{1} << 63;

struct NumberType {
    std::string_view name;
    bool isSigned;
    unsigned bits;
};

constexpr NumberType NUMBER_TYPES[] = {
    {"int8", true, 8},     {"int16", true, 16},   {"int32", true, 32},   {"int64", true, 64},   {"uint8", false, 8},
    {"uint16", false, 16}, {"uint32", false, 32}, {"uint64", false, 64}, {"length", false, 64}, {"decimal64", true, 64},
};

std::string_view Trimmed(std::string_view text)
{
    constexpr std::string_view BLANKS = " \t\r\n";
    size_t first = text.find_first_not_of(BLANKS);
    return first == std::string_view::npos ? "" : text.substr(first, text.find_last_not_of(BLANKS) - first + 1);
}

/* The part of the text in front of the separator, which is removed with it. */
std::string_view TakeUntil(std::string_view *text, std::string_view separator)
{
    size_t end = text->find(separator);
    std::string_view taken = text->substr(0, end);
    text->remove_prefix(end == std::string_view::npos ? text->size() : end + separator.size());
    return Trimmed(taken);
}

} // namespace

std::optional<ValueRange> ValueRange::Of(std::string_view type, unsigned digits)
{
    for (const NumberType &known : NUMBER_TYPES) {
        if (known.name != type)
            continue;
        ValueRange range;
        range.digits_ = digits;
        range.zero_ = known.isSigned ? SIGNED_ZERO : 0;
        uint64_t half = uint64_t{1} << (known.bits - 1);
        range.parts_ = {known.isSigned ? Part{SIGNED_ZERO - half, SIGNED_ZERO + (half - 1)} : Part{0, half - 1 + half}};
        return range;
    }
    return std::nullopt;
}

/* A load has read the number before: it is well formed and fits. */
uint64_t ValueRange::Bound(std::string_view text) const
{
    if (text == "min")
        return parts_.front().min;
    if (text == "max")
        return parts_.back().max;
    bool isNegative = text.starts_with('-');
    uint64_t number = 0;
    unsigned behind = 0;
    bool hasPoint = false;
    for (char c : text) {
        hasPoint |= c == '.';
        if (c < '0' || c > '9' || (hasPoint && behind == digits_))
            continue;
        number = number * 10 + static_cast<uint64_t>(c - '0');
        behind += hasPoint ? 1 : 0;
    }
    for (; behind < digits_; ++behind)
        number *= 10;
    return isNegative ? zero_ - number : zero_ + number;
}

void ValueRange::Restrict(std::string_view argument)
{
    std::vector<Part> parts;
    while (!argument.empty()) {
        std::string_view text = TakeUntil(&argument, "|");
        uint64_t min = Bound(TakeUntil(&text, ".."));
        uint64_t max = text.empty() ? min : Bound(Trimmed(text));
        if (!parts.empty() && parts.back().max + 1 == min)
            parts.back().max = max;
        else
            parts.push_back({min, max});
    }
    if (!parts.empty())
        parts_ = std::move(parts);
}

bool ValueRange::Covers(const ValueRange &other) const
{
    auto part = parts_.begin();
    for (const Part &wanted : other.parts_) {
        while (part != parts_.end() && part->max < wanted.max)
            ++part;
        if (part == parts_.end() || part->min > wanted.min)
            return false;
    }
    return true;
}

std::string ValueRange::BoundText(uint64_t bound) const
{
    bool isNegative = bound < zero_;
    std::string text = std::to_string(isNegative ? zero_ - bound : bound - zero_);
    if (digits_ != 0) {
        if (text.size() <= digits_)
            text.insert(0, digits_ + 1 - text.size(), '0');
        text.insert(text.size() - digits_, ".");
        text.erase(std::max(text.find_last_not_of('0') + 1, text.find('.') + 2));
    }
    return (isNegative ? "-" : "") + text;
}

std::string ValueRange::Text() const
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

} // namespace inspect::diff
