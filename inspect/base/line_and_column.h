/* Where an offset stands in a text. */
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace inspect {

/* Both from 1 on, in bytes. */
struct LineAndColumn {
    uint32_t line;
    uint32_t column;
};

inline LineAndColumn PlaceIn(std::string_view text, size_t offset)
{
    std::string_view before = text.substr(0, offset);
    size_t lineBegin = before.rfind('\n') + 1; /* 0 on the first line */
    return {static_cast<uint32_t>(std::count(before.begin(), before.end(), '\n')) + 1,
            static_cast<uint32_t>(before.size() - lineBegin) + 1};
}

} // namespace inspect
