/* Which characters a module in compact syntax may have: RFC 7950 section 6. */
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qxyang {

struct CharacterCheck {
    size_t illegal = std::string_view::npos; /* where the first byte stands that is no part of an allowed character */
    size_t noncharacter = std::string_view::npos; /* where one stands that only YANG 1.1 does not allow */
};

/* Looks at the text up to the first illegal byte. */
CharacterCheck CheckCharacters(std::string_view text);

/* "the control character 0x07", "the byte 0xC3, which begins no UTF-8 character": what stands there. */
std::string DescribeIllegal(std::string_view text, size_t at);

} // namespace qxyang
