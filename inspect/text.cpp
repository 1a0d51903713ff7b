#include "text.h"

#include <algorithm>
#include <cstdio>

namespace inspect {
namespace {

size_t Characters(std::string_view text)
{
    return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
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
            const size_t replaced = diagonal + (left[l] == right[r] ? 0 : 1);
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

void PadTo(std::string *text, size_t width, size_t gap)
{
    const size_t length = Characters(*text);
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
    const size_t distance = EditDistance(name_, candidate);
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
