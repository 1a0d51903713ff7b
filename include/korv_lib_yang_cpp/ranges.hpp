/**
 * @file
 * Rows of views to go through. korv_lib_yang.hpp includes this header.
 */
#ifndef KORV_LIB_YANG_CPP_RANGES_HPP
#define KORV_LIB_YANG_CPP_RANGES_HPP

#include "../korv_lib_yang.h"

#include <cstddef>
#include <iterator>
#include <string_view>

namespace korv {

class Node;
class Leaf;

/** A row of views to go through, itself a view. It has what C++20 asks of a view and a borrowed range. */
template <class Cursor>
class Range {
  public:
    /** A place in the row. */
    class iterator {
      public:
        using value_type = typename Cursor::Value;          /**< a view */
        using reference = value_type;                       /**< views are handed out by value */
        using pointer = void;                               /**< there is nothing to point at */
        using difference_type = std::ptrdiff_t;             /**< not used */
        using iterator_category = std::input_iterator_tag;  /**< by the rules of C++17 */
        using iterator_concept = std::forward_iterator_tag; /**< by those of C++20 */

        iterator() noexcept = default;
        /** A place. */
        explicit iterator(Cursor cursor) noexcept : cursor_(cursor) {}

        /** What stands here. */
        value_type operator*() const noexcept { return cursor_.value(); }
        /** Goes on by one. */
        iterator &operator++() noexcept
        {
            cursor_.next();
            return *this;
        }
        /** The same; answers the place before. */
        iterator operator++(int) noexcept
        {
            iterator before = *this;
            cursor_.next();
            return before;
        }
        /** True for the same place. */
        friend bool operator==(const iterator &left, const iterator &right) noexcept
        {
            return left.cursor_.at == right.cursor_.at;
        }
        /** True for another place. */
        friend bool operator!=(const iterator &left, const iterator &right) noexcept { return !(left == right); }

      private:
        Cursor cursor_{};
    };

    Range() noexcept = default;
    /** From one place up to another. */
    Range(Cursor first, Cursor last) noexcept : first_(first), last_(last) {}

    /** The first one. */
    iterator begin() const noexcept { return iterator(first_); }
    /** Behind the last one. */
    iterator end() const noexcept { return iterator(last_); }
    /** True if there is none. */
    bool empty() const noexcept { return begin() == end(); }

  private:
    Cursor first_{};
    Cursor last_{};
};

/* Not for hosts. */
/** @cond INSIDE */
namespace detail {

/* Each says where it is (at), what stands there (value) and how to go on (next). */

struct SiblingCursor {
    using Value = Node;
    inline Node value() const noexcept;
    void next() noexcept { at = at->pstNextSibling; }

    KorvTreeNode *at = nullptr;
    TELMYANG_LOCAL_DATA_S *local = nullptr;
};

struct AncestorCursor {
    using Value = Node;
    inline Node value() const noexcept;
    void next() noexcept { at = at->pstParent; }

    KorvTreeNode *at = nullptr;
    TELMYANG_LOCAL_DATA_S *local = nullptr;
};

/* All nodes below top and top itself, parents first; without top a whole tree with all its top nodes. */
struct TreeCursor {
    using Value = Node;
    inline Node value() const noexcept;
    void next() noexcept
    {
        if (at->pstFirstChild != nullptr) {
            at = at->pstFirstChild;
            return;
        }
        while (at != nullptr && at != top && at->pstNextSibling == nullptr)
            at = at->pstParent;
        at = at != nullptr && at != top ? at->pstNextSibling : nullptr;
    }

    KorvTreeNode *at = nullptr;
    const KorvTreeNode *top = nullptr;
    TELMYANG_LOCAL_DATA_S *local = nullptr;
};

/* The entries of a vector of records, as views of them. */
template <class View, class Record>
struct VectorCursor {
    using Value = View;
    View value() const noexcept { return View(static_cast<Record *>(*at)); }
    void next() noexcept { ++at; }

    void **at = nullptr;
};

/* The entries of an array of pointers to records. */
template <class View, class Record>
struct ArrayCursor {
    using Value = View;
    View value() const noexcept { return View(*at); }
    void next() noexcept { ++at; }

    Record **at = nullptr;
};

template <class View, class Record>
Range<VectorCursor<View, Record>> Entries(const VEC_VECTOR_S *vector) noexcept
{
    if (vector == nullptr)
        return {};
    return {{vector->ppvItem}, {vector->ppvItem + vector->uiCount}};
}

struct KeyCursor {
    using Value = uint32_t;
    uint32_t value() const noexcept { return *at; }
    void next() noexcept { ++at; }

    const uint8_t *at = nullptr;
};

inline Range<KeyCursor> KeysOf(const uint8_t (&keys)[NODE_KEY_LIST_NUM]) noexcept
{
    const uint8_t *end = keys;
    while (end != keys + NODE_KEY_LIST_NUM && *end != 0)
        ++end;
    return {{keys}, {end}};
}

} // namespace detail
/** @endcond */

using Nodes = Range<detail::SiblingCursor>;                     /**< nodes of one level, in schema order */
using Ancestors = Range<detail::AncestorCursor>;                /**< the nodes around a node, nearest first */
using Tree = Range<detail::TreeCursor>;                         /**< a node and all below it, parents first */
using Leaves = Range<detail::VectorCursor<Leaf, KorvTreeLeaf>>; /**< leafs and leaf-lists, in schema order */
using Keys = Range<detail::KeyCursor>;                          /**< attribute ids, up to the first key without one */

} // namespace korv

#if defined(__cpp_lib_ranges)
/* Views of C++20. */
/** @cond INSIDE */
template <class Cursor>
inline constexpr bool std::ranges::enable_view<korv::Range<Cursor>> = true;
template <class Cursor>
inline constexpr bool std::ranges::enable_borrowed_range<korv::Range<Cursor>> = true;
/** @endcond */
#endif

#endif /* KORV_LIB_YANG_CPP_RANGES_HPP */
