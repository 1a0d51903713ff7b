#include "schema/ranges.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>
#include <vector>

#include "base/text.h"

namespace qxyang {

namespace {

constexpr int64_t LARGEST = std::numeric_limits<int64_t>::max();

/* A key that orders signed and unsigned numbers alike. */
uint64_t OrderOf(int64_t number, NumberForm form)
{
    return static_cast<uint64_t>(number) ^ (form.isSigned ? uint64_t{1} << 63 : 0);
}

std::string TextOf(int64_t number, NumberForm form)
{
    if (!form.isSigned)
        return std::to_string(static_cast<uint64_t>(number));
    if (form.fractionDigits == 0)
        return std::to_string(number);
    bool negative = number < 0;
    uint64_t magnitude = negative ? ~static_cast<uint64_t>(number) + 1 : static_cast<uint64_t>(number);
    std::string digits = std::to_string(magnitude);
    if (digits.size() <= form.fractionDigits)
        digits.insert(0, form.fractionDigits + 1u - digits.size(), '0');
    digits.insert(digits.size() - form.fractionDigits, ".");
    return negative ? "-" + digits : digits;
}

/* Reads digits, with as many behind a point as the form allows, as one integer. False if they are no number or too
 * large a one. */
bool ParseMagnitude(std::string_view text, NumberForm form, uint64_t &magnitude)
{
    std::string_view fraction;
    if (size_t point = text.find('.'); point != std::string_view::npos && form.fractionDigits > 0) {
        fraction = text.substr(point + 1);
        text = text.substr(0, point);
        if (fraction.empty() || fraction.size() > form.fractionDigits)
            return false;
    }
    std::string digits(text);
    digits.append(fraction).append(form.fractionDigits - fraction.size(), '0');
    if (text.empty())
        return false;
    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), magnitude);
    return error == std::errc() && end == digits.data() + digits.size();
}

bool ParseNumber(std::string_view text, NumberForm form, int64_t &number)
{
    bool negative = text.starts_with('-');
    uint64_t magnitude = 0;
    if (!ParseMagnitude(text.substr(negative ? 1 : 0), form, magnitude))
        return false;
    if (!form.isSigned) {
        number = static_cast<int64_t>(magnitude);
        return !negative || magnitude == 0;
    }
    uint64_t limit = static_cast<uint64_t>(LARGEST) + (negative ? 1 : 0);
    number = static_cast<int64_t>(negative ? ~magnitude + 1 : magnitude);
    return magnitude <= limit;
}

/* RFC 7950, 9.2.4: the parts of a range ascend, are disjoint, and lie within what they restrict. */
class RangeParser {
  public:
    RangeParser(NumberForm form, const RangeSet &base, std::string &why) : form_(form), base_(base), why_(why) {}

    bool Parse(std::string_view text, std::vector<RangePart> &parts)
    {
        for (;;) {
            size_t end = std::min(text.find('|'), text.size());
            RangePart part{};
            if (!ParsePart(Trim(text.substr(0, end)), part))
                return false;
            if (!parts.empty() && Order(part.start) <= Order(parts.back().end))
                return Reject("its parts do not ascend: " + TextOf(part.start, form_) + " follows " +
                              TextOf(parts.back().end, form_));
            if (!IsCovered(part))
                return Reject("it leaves what it restricts, " + RangeText(base_, form_));
            parts.push_back(part);
            if (end == text.size())
                return true;
            text.remove_prefix(end + 1);
        }
    }

  private:
    bool ParsePart(std::string_view text, RangePart &part)
    {
        size_t dots = text.find("..");
        bool single = dots == std::string_view::npos;
        if (!ParseBound(Trim(text.substr(0, dots)), part.start))
            return false;
        part.end = part.start;
        if (!single && !ParseBound(Trim(text.substr(dots + 2)), part.end))
            return false;
        if (Order(part.start) > Order(part.end))
            return Reject(TextOf(part.start, form_) + " is greater than " + TextOf(part.end, form_));
        return true;
    }

    bool ParseBound(std::string_view text, int64_t &number)
    {
        if (text == "min")
            number = base_.parts[0].start;
        else if (text == "max")
            number = base_.parts[base_.count - 1].end;
        else if (!ParseNumber(text, form_, number))
            return Reject(Quoted(text) + " is no number of the type");
        return true;
    }

    /* True if every number of the part is in the base. Parts of the base that adjoin count as one. */
    bool IsCovered(const RangePart &part)
    {
        const RangePart *end = base_.parts + base_.count;
        const RangePart *first = std::partition_point(
            base_.parts, end, [&](const RangePart &candidate) { return Order(candidate.end) < Order(part.start); });
        return first != end && Order(first->start) <= Order(part.start) && Order(first->reach) >= Order(part.end);
    }

    bool Reject(std::string why)
    {
        why_ = std::move(why);
        return false;
    }

    uint64_t Order(int64_t number) const { return OrderOf(number, form_); }

    NumberForm form_;
    const RangeSet &base_;
    std::string &why_;
};

} // namespace

NumberForm NumberForm::Of(const QY_TYPE &type)
{
    bool isSigned =
        (type.builtin >= QY_TYPE_INT8 && type.builtin <= QY_TYPE_INT64) || type.builtin == QY_TYPE_DECIMAL64;
    return {isSigned, type.fractionDigits};
}

std::string RangeText(const RangeSet &set, NumberForm form)
{
    std::string text;
    for (uint32_t i = 0; i < set.count && text.size() < 100; ++i) {
        text.append(i == 0 ? "" : "|").append(TextOf(set.parts[i].start, form));
        if (set.parts[i].start != set.parts[i].end)
            text.append("..").append(TextOf(set.parts[i].end, form));
    }
    return text;
}

bool Contains(const RangeSet &set, int64_t number, NumberForm form)
{
    const RangePart *end = set.parts + set.count;
    const RangePart *part = std::partition_point(set.parts, end, [number, form](const RangePart &candidate) {
        return OrderOf(candidate.end, form) < OrderOf(number, form);
    });
    return part != end && OrderOf(part->start, form) <= OrderOf(number, form);
}

bool ParseValue(std::string_view text, NumberForm form, int64_t &number)
{
    bool isNegative = text.starts_with('-');
    std::string_view digits = text.substr(isNegative || text.starts_with('+') ? 1 : 0);
    if (form.fractionDigits > 0 || digits.size() < 2 || digits[0] != '0')
        return ParseNumber(isNegative ? text : digits, form, number);
    bool isHexadecimal = digits[1] == 'x' || digits[1] == 'X';
    digits.remove_prefix(isHexadecimal ? 2 : 1);
    uint64_t magnitude = 0;
    auto [at, error] = std::from_chars(digits.data(), digits.data() + digits.size(), magnitude, isHexadecimal ? 16 : 8);
    if (error != std::errc() || at != digits.data() + digits.size())
        return false;
    return ParseNumber((isNegative ? "-" : "") + std::to_string(magnitude), form, number);
}

const RangeSet *ParseRange(std::string_view text, NumberForm form, const RangeSet &base, Arena &arena, std::string &why)
{
    std::vector<RangePart> parts;
    if (!RangeParser(form, base, why).Parse(text, parts))
        return nullptr;
    auto *kept = arena.MakeArray<RangePart>(parts.size());
    std::copy(parts.begin(), parts.end(), kept);
    for (size_t i = parts.size(); i-- > 0;) {
        bool adjoins = i + 1 < parts.size() && OrderOf(kept[i + 1].start, form) == OrderOf(kept[i].end, form) + 1;
        kept[i].reach = adjoins ? kept[i + 1].reach : kept[i].end;
    }
    return arena.Make<RangeSet>(static_cast<uint32_t>(parts.size()), kept);
}

} // namespace qxyang
