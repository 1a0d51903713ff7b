/* Ranges of numeric types and lengths of texts. */
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model.h"

namespace qxyang {

/* How the numbers of a type's range or length are written and ordered. */
struct NumberForm {
    bool isSigned;
    uint8_t fractionDigits; /* numbers are scaled by ten to its power */

    static NumberForm of(const QY_TYPE &type);
};

inline constexpr RangePart kBuiltinParts[] = {
    {INT8_MIN, INT8_MAX}, {INT16_MIN, INT16_MAX}, {INT32_MIN, INT32_MAX}, {INT64_MIN, INT64_MAX},
    {0, UINT8_MAX},       {0, UINT16_MAX},        {0, UINT32_MAX},        {0, -1 /* the same 64 bits */},
};

inline constexpr RangeSet kBuiltinRanges[] = {
    {1, &kBuiltinParts[0]}, {1, &kBuiltinParts[1]}, {1, &kBuiltinParts[2]}, {1, &kBuiltinParts[3]},
    {1, &kBuiltinParts[4]}, {1, &kBuiltinParts[5]}, {1, &kBuiltinParts[6]}, {1, &kBuiltinParts[7]},
};

/* The full range of a built-in type; null: it has none. */
constexpr const RangeSet *builtinRange(uint8_t builtin)
{
    switch (builtin) {
        case QY_TYPE_INT8:
        case QY_TYPE_INT16:
        case QY_TYPE_INT32:
        case QY_TYPE_INT64:
            return &kBuiltinRanges[builtin - QY_TYPE_INT8];
        case QY_TYPE_DECIMAL64:
            return &kBuiltinRanges[3];
        case QY_TYPE_UINT8:
        case QY_TYPE_UINT16:
        case QY_TYPE_UINT32:
        case QY_TYPE_UINT64:
            return &kBuiltinRanges[4 + builtin - QY_TYPE_UINT8];
        case QY_TYPE_STRING:
        case QY_TYPE_BINARY:
            return &kBuiltinRanges[7];
        default:
            return nullptr;
    }
}

/* Parses the parts of a range that restricts another. The set, or null: then `why` says what is wrong. */
const RangeSet *parseRange(std::string_view text, NumberForm form, const RangeSet &base, Arena &arena,
                           std::string &why);

}  // namespace qxyang
