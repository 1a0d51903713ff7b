/* Ranges of numeric types and lengths of texts: RFC 7950, 9.2.4 and 9.4.4. */
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "schema/model.h"

namespace qxyang {

/* How the numbers of a type's range or length are written and ordered. */
struct NumberForm {
    bool isSigned;
    uint8_t fractionDigits; /* of decimal64: numbers are kept as integers, multiplied by ten to the power of this */

    static NumberForm Of(const QY_TYPE &type);
};

constexpr RangePart SinglePart(int64_t start, int64_t end)
{
    return {start, end, end};
}

inline constexpr RangePart BUILTIN_PARTS[] = {
    SinglePart(INT8_MIN, INT8_MAX),   SinglePart(INT16_MIN, INT16_MAX),
    SinglePart(INT32_MIN, INT32_MAX), SinglePart(INT64_MIN, INT64_MAX),
    SinglePart(0, UINT8_MAX),         SinglePart(0, UINT16_MAX),
    SinglePart(0, UINT32_MAX),        SinglePart(0, -1 /* the same 64 bits */),
};

inline constexpr RangeSet BUILTIN_RANGES[] = {
    {1, &BUILTIN_PARTS[0]}, {1, &BUILTIN_PARTS[1]}, {1, &BUILTIN_PARTS[2]}, {1, &BUILTIN_PARTS[3]},
    {1, &BUILTIN_PARTS[4]}, {1, &BUILTIN_PARTS[5]}, {1, &BUILTIN_PARTS[6]}, {1, &BUILTIN_PARTS[7]},
};

/* The full range of a built-in type; null: it has none. */
constexpr const RangeSet *BuiltinRange(uint8_t builtin)
{
    switch (builtin) {
        case QY_TYPE_INT8:
        case QY_TYPE_INT16:
        case QY_TYPE_INT32:
        case QY_TYPE_INT64:
            return &BUILTIN_RANGES[builtin - QY_TYPE_INT8];
        case QY_TYPE_DECIMAL64:
            return &BUILTIN_RANGES[3];
        case QY_TYPE_UINT8:
        case QY_TYPE_UINT16:
        case QY_TYPE_UINT32:
        case QY_TYPE_UINT64:
            return &BUILTIN_RANGES[4 + builtin - QY_TYPE_UINT8];
        case QY_TYPE_STRING:
        case QY_TYPE_BINARY:
            return &BUILTIN_RANGES[7];
        default:
            return nullptr;
    }
}

/* "1..5|7" */
std::string RangeText(const RangeSet &set, NumberForm form);

/* True if the number is in one of the set's parts. */
bool Contains(const RangeSet &set, int64_t number, NumberForm form);

/* Parses a number as default statements write it, hexadecimal and octal ones included: RFC 7950, 9.2.1 and 9.3.1.
 * False if it is no number or too large a one. */
bool ParseValue(std::string_view text, NumberForm form, int64_t &number);

/* Parses a range that restricts another one, the base. Null: `why` says what is wrong. */
const RangeSet *ParseRange(std::string_view text, NumberForm form, const RangeSet &base, Arena &arena,
                           std::string &why);

} // namespace qxyang
