#include "base/text.h"

#include <algorithm>
#include <cstdio>

namespace inspect {
namespace {

struct Character {
    uint32_t code;
    size_t size; /* in bytes, 0: no UTF-8 */
};

Character FirstCharacter(std::string_view text)
{
    static constexpr uint32_t LEAST[] = {0, 0, 0x80, 0x800, 0x10000}; /* that needs so many bytes */
    auto first = static_cast<uint8_t>(text.front());
    size_t size = first < 0x80 ? 1 : first < 0xC0 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF8 ? 4 : 0;
    if (size < 2 || size > text.size())
        return {first, size == 1 ? size : 0};
    uint32_t code = first & (0x7FU >> size);
    for (size_t i = 1; i < size; ++i) {
        auto next = static_cast<uint8_t>(text[i]);
        if ((next & 0xC0) != 0x80)
            return {first, 0};
        code = code << 6 | (next & 0x3FU);
    }
    bool isSurrogate = code >= 0xD800 && code < 0xE000;
    return {code, code < LEAST[size] || isSurrogate || code > 0x10FFFF ? 0 : size};
}

bool IsControl(uint32_t code)
{
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029;
}

/* Changes the direction in which a terminal shows what follows. */
bool IsDirection(uint32_t code)
{
    return code == 0x061C || code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

std::string Escaped(const Character &character)
{
    if (character.size != 0 && character.code == '\n')
        return "\\n";
    char text[16];
    std::snprintf(text, sizeof(text), character.code < 0x100 ? "\\x%02x" : "\\u%04x", character.code);
    return text;
}

/* Insertions, deletions and replacements that make one text from the other. */
size_t EditDistance(std::string_view left, std::string_view right)
{
    std::vector<size_t> row(right.size() + 1);
    for (size_t i = 0; i < row.size(); ++i)
        row[i] = i;
    for (size_t l = 0; l < left.size(); ++l) {
        size_t diagonal = row[0]++;
        for (size_t r = 0; r < right.size(); ++r) {
            size_t replaced = diagonal + (left[l] == right[r] ? 0 : 1);
            diagonal = row[r + 1];
            row[r + 1] = std::min({replaced, row[r] + 1, diagonal + 1});
        }
    }
    return row.back();
}

} // namespace

std::string Hex(uint32_t value)
{
    char text[16];
    std::snprintf(text, sizeof(text), "0x%x", value);
    return text;
}

std::string Join(const std::vector<std::string> &words, std::string_view separator)
{
    std::string text;
    for (const std::string &word : words) {
        if (!text.empty())
            text += separator;
        text += word;
    }
    return text;
}

std::string JoinNumbers(const std::vector<uint32_t> &numbers, std::string_view separator)
{
    std::string text;
    for (const uint32_t number : numbers) {
        if (!text.empty())
            text += separator;
        text += std::to_string(number);
    }
    return text;
}

std::string Printable(std::string_view text)
{
    if (std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; }))
        return std::string(text);
    std::string printable;
    while (!text.empty()) {
        Character character = FirstCharacter(text);
        size_t size = std::max<size_t>(character.size, 1);
        if (character.size == 0 || IsControl(character.code) || IsDirection(character.code))
            printable += Escaped(character);
        else
            printable += text.substr(0, size);
        text.remove_prefix(size);
    }
    return printable;
}

bool IsAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<uint8_t>(c) < 0x80; });
}

std::string ValidUtf8(std::string_view text)
{
    if (IsAscii(text))
        return std::string(text);
    std::string valid;
    while (!text.empty()) {
        size_t size = FirstCharacter(text).size;
        valid += size != 0 ? text.substr(0, size) : "\xEF\xBF\xBD";
        text.remove_prefix(std::max<size_t>(size, 1));
    }
    return valid;
}

size_t Characters(std::string_view text)
{
    return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

void PadTo(std::string *text, size_t width, size_t gap)
{
    size_t length = Characters(*text);
    text->append(std::max(width > length ? width - length : 0, gap), ' ');
}

std::string Count(uint64_t number, std::string_view noun)
{
    std::string text = std::to_string(number) + " ";
    if (number == 1)
        return text += noun;
    if (noun.ends_with("f")) /* leaf */
        return text.append(noun.substr(0, noun.size() - 1)) + "ves";
    return text.append(noun) + (noun.ends_with("s") ? "es" : "s");
}

NearestName::NearestName(std::string_view name) : name_(name), distance_(1 + name.size() / 3) {}

void NearestName::Offer(std::string_view candidate)
{
    size_t distance = EditDistance(name_, candidate);
    if (distance > distance_ || (distance == distance_ && !nearest_.empty()))
        return;
    distance_ = distance;
    nearest_ = candidate;
}

std::string NearestName::Hint() const
{
    return nearest_.empty() ? "" : ": did you mean '" + nearest_ + "'?";
}

} // namespace inspect
