#include "base/characters.h"

#include <algorithm>
#include <cstdint>

namespace qxyang {

namespace {

/* The length of the well-formed UTF-8 character of several bytes that the text begins with, and its code; 0 when the
 * text begins with none. */
size_t LongCharacter(std::string_view text, uint32_t &code)
{
    auto byte = [text](size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : uint32_t{0}; };
    auto isNext = [&byte](size_t i) { return (byte(i) & 0xC0) == 0x80; };
    uint32_t first = byte(0);
    if (first >= 0xC2 && first <= 0xDF && isNext(1)) {
        code = (first & 0x1F) << 6 | (byte(1) & 0x3F);
        return 2;
    }
    if ((first & 0xF0) == 0xE0 && isNext(1) && isNext(2)) {
        code = (first & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F);
        bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
        return code >= 0x800 && !isSurrogate ? 3 : 0;
    }
    if (first >= 0xF0 && first <= 0xF4 && isNext(1) && isNext(2) && isNext(3)) {
        code = (first & 0x07) << 18 | (byte(1) & 0x3F) << 12 | (byte(2) & 0x3F) << 6 | (byte(3) & 0x3F);
        return code >= 0x10000 && code <= 0x10FFFF ? 4 : 0;
    }
    return 0;
}

bool IsNoncharacter(uint32_t code)
{
    return (code & 0xFFFE) == 0xFFFE || (code >= 0xFDD0 && code <= 0xFDEF);
}

constexpr unsigned char PLAIN_FROM = 0x20;
constexpr unsigned char PLAIN_TO = 0x7F;

/* True for all control characters except tab, line feed and carriage return. */
bool IsControl(unsigned char c)
{
    return c < PLAIN_FROM && c != '\t' && c != '\n' && c != '\r';
}

/* Most of a file is blocks of plain ASCII characters. The compiler turns the loop over a block into vector
 * instructions. */
constexpr size_t BLOCK = 64;

bool IsPlainBlock(const char *block)
{
    unsigned char odd = 0;
    for (size_t i = 0; i < BLOCK; ++i) {
        auto c = static_cast<unsigned char>(block[i]);
        bool isOdd = (c > PLAIN_TO) | ((c < PLAIN_FROM) & (c != '\n'));
        odd = static_cast<unsigned char>(odd | isOdd);
    }
    return odd == 0;
}

} // namespace

CharacterCheck CheckCharacters(std::string_view text)
{
    CharacterCheck check;
    for (size_t at = 0; at < text.size();) {
        if (text.size() - at >= BLOCK && IsPlainBlock(text.data() + at)) {
            at += BLOCK;
            continue;
        }
        for (size_t end = std::min(at + BLOCK, text.size()); at < end;) {
            auto c = static_cast<unsigned char>(text[at]);
            uint32_t code = c;
            size_t size = c <= PLAIN_TO ? !IsControl(c) : LongCharacter(text.substr(at), code);
            if (size == 0) {
                check.illegal = at;
                return check;
            }
            if (IsNoncharacter(code) && check.noncharacter == std::string_view::npos)
                check.noncharacter = at;
            at += size;
        }
    }
    return check;
}

std::string DescribeIllegal(std::string_view text, size_t at)
{
    constexpr std::string_view DIGITS = "0123456789ABCDEF";
    auto c = static_cast<unsigned char>(text[at]);
    std::string number = {'0', 'x', DIGITS[c >> 4], DIGITS[c & 15]};
    if (c <= PLAIN_TO)
        return "the control character " + number;
    return "the byte " + number + ", which is no UTF-8 here";
}

} // namespace qxyang
