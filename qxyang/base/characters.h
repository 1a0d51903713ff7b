/* Which characters a module in compact syntax may have: RFC 7950, 6. */
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qxyang {

struct CharacterCheck {
    /* Where the first byte stands that belongs to no character which a module may have. */
    size_t illegal = std::string_view::npos;

    /* Where the first character stands that YANG 1 allows and YANG 1.1 does not. */
    size_t noncharacter = std::string_view::npos;
};

/* Checks the text up to the first illegal byte. */
CharacterCheck CheckCharacters(std::string_view text);

/* Names the illegal byte at that place: "the control character 0x07", "the byte 0xC3, which is no UTF-8 here". */
std::string DescribeIllegal(std::string_view text, size_t at);

} // namespace qxyang
