/* What a model says somewhere, before or after a change. */
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "base/json_out.h"

namespace inspect::diff {

/* An id that texts show as a hexadecimal number. */
struct HexId {
    uint32_t number;
    auto operator<=>(const HexId &) const = default;
};

/* Nothing, a text, a number, an id, or attribute ids. */
using Value = std::variant<std::monostate, std::string, int64_t, HexId, std::vector<uint32_t>>;

inline bool IsNone(const Value &value)
{
    return std::holds_alternative<std::monostate>(value);
}

/* "" for nothing. */
std::string ValueText(const Value &value);

/* Numbers are numbers, ids decimal ones; nothing is null. */
void WriteValue(JsonOut *out, const Value &value);

} // namespace inspect::diff
