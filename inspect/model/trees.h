/* Reading the library's class trees: chains, leaves, keys and type names. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <korv_lib_yang.h>

namespace inspect {

/* A node and the siblings that follow it, for a range-based loop; null is an empty chain. */
class Chain {
  public:
    class Iterator {
      public:
        explicit Iterator(const KorvTreeNode *node) : node_(node) {}
        const KorvTreeNode &operator*() const { return *node_; }
        Iterator &operator++()
        {
            node_ = node_->pstNextSibling;
            return *this;
        }
        bool operator!=(const Iterator &other) const { return node_ != other.node_; }

      private:
        const KorvTreeNode *node_;
    };

    explicit Chain(const KorvTreeNode *first) : first_(first) {}
    Iterator begin() const { return Iterator(first_); }
    Iterator end() const { return Iterator(nullptr); }

  private:
    const KorvTreeNode *first_;
};

inline Chain Children(const KorvTreeNode &node)
{
    return Chain(node.pstFirstChild);
}

/* The entries of a vector of the host's, for a range-based loop; null is an empty one. */
template <class Item>
class Items {
  public:
    class Iterator {
      public:
        explicit Iterator(void **item) : item_(item) {}
        const Item &operator*() const { return *static_cast<const Item *>(*item_); }
        Iterator &operator++()
        {
            ++item_;
            return *this;
        }
        bool operator!=(const Iterator &other) const { return item_ != other.item_; }

      private:
        void **item_;
    };

    explicit Items(const VEC_VECTOR_S *vector)
        : first_(vector != nullptr ? vector->ppvItem : nullptr), count_(vector != nullptr ? vector->uiCount : 0)
    {
    }
    Iterator begin() const { return Iterator(first_); }
    Iterator end() const { return Iterator(first_ + count_); }
    uint32_t Size() const { return count_; }

  private:
    void **first_;
    uint32_t count_;
};

using Leaves = Items<KorvTreeLeaf>;

inline bool IsOrdinary(const KorvTreeNode &node)
{
    return node.ucNodeType == KORV_NODE_ORDINARY;
}

inline bool Has(const KorvTreeLeaf &leaf, uint32_t maskBit)
{
    return (leaf.ucMask & maskBit) != 0;
}

/* The library keeps the range of unsigned types of 16 bits and more only. */
inline bool HasRange(const KorvTreeLeaf &leaf)
{
    return leaf.ucBaseType == QY_TYPE_UINT16 || leaf.ucBaseType == QY_TYPE_UINT32 || leaf.ucBaseType == QY_TYPE_UINT64;
}

/* A key array without the zeros at its end. */
std::vector<uint32_t> KeyIds(const uint8_t (&keys)[NODE_KEY_LIST_NUM]);

/* "uint32"; null for no type. */
const char *TypeName(uint32_t baseType);

/* The type that the leaf has in the end; "leafref" for one that leads nowhere. */
const char *TypeName(const KorvTreeLeaf &leaf);

const char *KindName(const KorvTreeNode &node);

/* The node and those above it, topmost first. */
std::vector<const KorvTreeNode *> FromTop(const KorvTreeNode &node);

/* The node, or the container or list around it when it is a choice or case; null: there is none. */
const KorvTreeNode *OrdinaryAt(const KorvTreeNode &node);

/* The choices and cases between a node and a leaf that stands in one of its cases; empty for a leaf of its own. */
std::vector<const KorvTreeNode *> CasesAbove(const KorvTreeNode &holder, const KorvTreeLeaf &leaf);

/* "/sys/ports/port": the names of FromTop, choices and cases left out. */
std::string DataPath(const KorvTreeNode &node);

/* Nodes and leaves of the trees of a chain. */
struct TreeSize {
    uint64_t nodes = 0;
    uint64_t classes = 0; /* nodes that are a class of their own: no choice, no case */
    uint64_t leaves = 0;
};
TreeSize SizeOf(Chain trees);

} // namespace inspect
