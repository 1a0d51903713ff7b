/* Memory that is given out piece by piece and returned all at once. */
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

namespace qxyang {

/* Bump allocator. A new block is a quarter of what the arena holds already, so small modules stay small and large ones
 * need few blocks. Records must be trivially destructible, since the arena destroys none of them. */
class Arena {
  public:
    Arena() = default;
    Arena(const Arena &) = delete;
    Arena &operator=(const Arena &) = delete;
    ~Arena() { Clear(); }

    void *Allocate(size_t size, size_t alignment)
    {
        uintptr_t at = (cursor_ + alignment - 1) & ~(alignment - 1);
        if (at + size > end_)
            return AllocateInNewBlock(size);
        cursor_ = at + size;
        return reinterpret_cast<void *>(at);
    }

    template <class T, class... Args>
    T *Make(Args &&...args)
    {
        static_assert(std::is_trivially_destructible_v<T>);
        return new (Allocate(sizeof(T), alignof(T))) T{std::forward<Args>(args)...};
    }

    template <class T>
    T *MakeArray(size_t count)
    {
        static_assert(std::is_trivially_destructible_v<T>);
        return new (Allocate(sizeof(T) * count, alignof(T))) T[count]{}; // NOLINT(bugprone-sizeof-expression)
    }

    /* A zero-terminated copy. */
    const char *Text(std::string_view source)
    {
        char *copy = static_cast<char *>(Allocate(source.size() + 1, 1));
        source.copy(copy, source.size());
        copy[source.size()] = '\0';
        return copy;
    }

    void Clear()
    {
        while (blocks_ != nullptr)
            ::operator delete(std::exchange(blocks_, blocks_->previous));
        cursor_ = end_ = 0;
        reserved_ = 0;
    }

  private:
    struct alignas(16) Block {
        Block *previous;
    };

    void *AllocateInNewBlock(size_t size)
    {
        size_t room = std::max(size, std::clamp(reserved_ / 4, FIRST_BLOCK, LARGEST_BLOCK));
        void *memory = ::operator new(sizeof(Block) + room);
        blocks_ = new (memory) Block{blocks_};
        uintptr_t begin = reinterpret_cast<uintptr_t>(blocks_ + 1);
        cursor_ = begin + size;
        end_ = begin + room;
        reserved_ += room;
        return blocks_ + 1;
    }

    static constexpr size_t FIRST_BLOCK = 480;
    static constexpr size_t LARGEST_BLOCK = size_t{1} << 20;

    Block *blocks_ = nullptr;
    uintptr_t cursor_ = 0;
    uintptr_t end_ = 0;
    size_t reserved_ = 0;
};

/* Records of one type, given out one by one, which can be visited in the order in which they were made. */
template <class T>
class Slab {
  public:
    Slab() = default;
    Slab(const Slab &) = delete;
    Slab &operator=(const Slab &) = delete;
    ~Slab() { Clear(); }

    T *Make()
    {
        static_assert(std::is_trivially_destructible_v<T>);
        if (last_ == nullptr || last_->used == last_->room)
            Grow();
        return new (last_->Items() + last_->used++) T{};
    }

    template <class Visit>
    void ForEach(Visit &&visit)
    {
        for (Block *block = first_; block != nullptr; block = block->next)
            for (size_t i = 0; i < block->used; ++i)
                visit(block->Items() + i);
    }

    void Clear()
    {
        while (first_ != nullptr)
            ::operator delete(std::exchange(first_, first_->next));
        last_ = nullptr;
        total_ = 0;
    }

  private:
    struct alignas(16) Block {
        Block *next;
        size_t used;
        size_t room;

        T *Items() { return reinterpret_cast<T *>(this + 1); }
    };

    void Grow()
    {
        size_t room = std::clamp<size_t>(total_ / 4, 8, 8192);
        auto *block = new (::operator new(sizeof(Block) + room * sizeof(T))) Block{nullptr, 0, room};
        (last_ != nullptr ? last_->next : first_) = block;
        last_ = block;
        total_ += room;
    }

    Block *first_ = nullptr;
    Block *last_ = nullptr;
    size_t total_ = 0;
};

} // namespace qxyang
