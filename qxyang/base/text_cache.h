/* Texts that occur again and again are stored once. */
#pragma once

#include <array>
#include <cstring>

#include "base/arena.h"
#include "base/name_table.h"

namespace qxyang {

/* Puts texts into an arena and remembers the latest ones: a text that comes again soon is not stored again. */
class TextCache {
  public:
    explicit TextCache(Arena &arena) : arena_(arena) {}

    const char *Keep(std::string_view text)
    {
        if (text.size() > LONGEST)
            return arena_.Text(text);
        Slot &slot = slots_[HashText(text) % SLOTS];
        if (slot.text == nullptr || slot.length != text.size() || std::memcmp(slot.text, text.data(), slot.length) != 0)
            slot = {arena_.Text(text), text.size()};
        return slot.text;
    }

  private:
    struct Slot {
        const char *text;
        size_t length;
    };

    static constexpr size_t SLOTS = 256;
    static constexpr size_t LONGEST = 32;

    Arena &arena_;
    std::array<Slot, SLOTS> slots_{};
};

} // namespace qxyang
