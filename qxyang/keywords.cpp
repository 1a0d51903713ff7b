#include "keywords.h"

#include <array>

namespace qxyang {

namespace {

constexpr size_t kSlots = 256;

constexpr size_t slotOf(std::string_view name)
{
    auto at = [name](size_t i) { return static_cast<size_t>(static_cast<unsigned char>(name[i])); };
    return (name.size() * 29 + at(0) * 7 + at(name.size() / 2) * 31 + at(name.size() - 1) * 3) % kSlots;
}

constexpr std::array<uint8_t, kSlots> makeSlots()
{
    std::array<uint8_t, kSlots> slots{};
    for (auto &slot : slots)
        slot = kKeywordCount;
    for (size_t i = 0; i < kKeywordCount; ++i) {
        size_t at = slotOf(kKeywords[i].name);
        while (slots[at] != kKeywordCount)
            at = (at + 1) % kSlots;
        slots[at] = static_cast<uint8_t>(i);
    }
    return slots;
}

constexpr std::array<uint8_t, kSlots> kKeywordSlots = makeSlots();

// The enumeration follows the alphabet, as the table does.
constexpr bool isSorted()
{
    for (size_t i = 1; i < kKeywordCount; ++i)
        if (kKeywords[i].name <= kKeywords[i - 1].name)
            return false;
    return true;
}
static_assert(isSorted());
static_assert(kKeywords[static_cast<size_t>(Kw::kYinElement)].name == "yin-element");

}  // namespace

Kw findKeyword(std::string_view name)
{
    if (name.empty())
        return Kw::kStatements;
    for (size_t at = slotOf(name);; at = (at + 1) % kSlots) {
        size_t keyword = kKeywordSlots[at];
        if (keyword == kKeywordCount || kKeywords[keyword].name == name)
            return static_cast<Kw>(keyword);
    }
}

}  // namespace qxyang
