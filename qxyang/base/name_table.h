/* Records found by their name. */
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace qxyang {

inline uint32_t HashText(std::string_view text)
{
    constexpr uint64_t FACTOR = 0x9E3779B97F4A7C15u;
    uint64_t hash = text.size() * FACTOR;
    const char *at = text.data();
    size_t left = text.size();
    for (; left >= 8; at += 8, left -= 8) {
        uint64_t word;
        std::memcpy(&word, at, 8);
        hash = (hash ^ word) * FACTOR;
        hash ^= hash >> 32;
    }
    uint64_t rest = 0;
    for (size_t i = 0; i < left; ++i)
        rest = rest << 8 | static_cast<unsigned char>(at[i]);
    hash = (hash ^ rest) * FACTOR;
    return static_cast<uint32_t>(hash >> 32);
}

/* Hash table over records that have a zero-terminated `name`. The caller owns the records. */
template <class T>
class NameTable {
  public:
    T *Find(std::string_view name) const
    {
        if (slots_.empty())
            return nullptr;
        for (size_t at = HashText(name) & Mask();; at = (at + 1) & Mask())
            if (slots_[at] == nullptr || name == slots_[at]->name)
                return slots_[at];
    }

    /* Adds the record and returns null, unless the table has one of that name: that one is returned. */
    T *Insert(T *record)
    {
        if ((count_ + 1) * 4 > slots_.size() * 3)
            Grow();
        T **slot = Place(record->name);
        if (*slot != nullptr)
            return *slot;
        *slot = record;
        ++count_;
        return nullptr;
    }

    size_t Size() const { return count_; }

    template <class Visit>
    void ForEach(Visit &&visit) const
    {
        for (T *record : slots_)
            if (record != nullptr)
                visit(*record);
    }

  private:
    size_t Mask() const { return slots_.size() - 1; }

    T **Place(std::string_view name)
    {
        size_t at = HashText(name) & Mask();
        while (slots_[at] != nullptr && name != slots_[at]->name)
            at = (at + 1) & Mask();
        return &slots_[at];
    }

    void Grow()
    {
        std::vector<T *> old(slots_.empty() ? 4 : slots_.size() * 2);
        old.swap(slots_);
        for (T *record : old)
            if (record != nullptr)
                *Place(record->name) = record;
    }

    std::vector<T *> slots_;
    size_t count_ = 0;
};

} // namespace qxyang
