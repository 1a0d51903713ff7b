/* What a sentence repeats of a long text. */
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace inspect {

/* The bytes of an argument that a finding repeats. */
inline constexpr size_t MAX_SHOWN = 120;

/* The text, or, if it has more bytes than that, its beginning of whole characters and "...". */
inline std::string Shortened(std::string_view text, size_t most)
{
    if (text.size() <= most)
        return std::string(text);
    while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xC0U) == 0x80U)
        --most;
    return std::string(text.substr(0, most)) + "...";
}

/* Where the reading of a text fails: "ends too early", or "cannot be read from 'b' on". */
inline std::string UnreadableText(std::string_view text, size_t offset)
{
    std::string rest = Shortened(text.substr(offset), 32);
    return rest.empty() ? "ends too early" : "cannot be read from '" + rest + "' on";
}

} // namespace inspect
