#include "syntax/keywords.h"

#include <array>

namespace qxyang {

namespace {

constexpr size_t SLOTS = 256;

constexpr size_t SlotOf(std::string_view name)
{
    auto at = [name](size_t i) { return static_cast<size_t>(static_cast<unsigned char>(name[i])); };
    return (name.size() * 29 + at(0) * 7 + at(name.size() / 2) * 31 + at(name.size() - 1) * 3) % SLOTS;
}

constexpr std::array<uint8_t, SLOTS> MakeSlots()
{
    std::array<uint8_t, SLOTS> slots{};
    for (auto &slot : slots)
        slot = KEYWORD_COUNT;
    for (size_t i = 0; i < KEYWORD_COUNT; ++i) {
        size_t at = SlotOf(KEYWORDS[i].name);
        while (slots[at] != KEYWORD_COUNT)
            at = (at + 1) % SLOTS;
        slots[at] = static_cast<uint8_t>(i);
    }
    return slots;
}

constexpr std::array<uint8_t, SLOTS> KEYWORD_SLOTS = MakeSlots();

// Enumerators and rows are both in the order of the alphabet.
constexpr bool IsSorted()
{
    for (size_t i = 1; i < KEYWORD_COUNT; ++i)
        if (KEYWORDS[i].name <= KEYWORDS[i - 1].name)
            return false;
    return true;
}
static_assert(IsSorted());
static_assert(KEYWORDS[static_cast<size_t>(Kw::YinElement)].name == "yin-element");
static_assert(static_cast<size_t>(Kw::None) == KEYWORD_COUNT); // what an empty slot holds

} // namespace

Kw FindKeyword(std::string_view name)
{
    if (name.empty())
        return Kw::None;
    for (size_t at = SlotOf(name);; at = (at + 1) % SLOTS) {
        size_t keyword = KEYWORD_SLOTS[at];
        if (keyword == KEYWORD_COUNT || KEYWORDS[keyword].name == name)
            return static_cast<Kw>(keyword);
    }
}

} // namespace qxyang
