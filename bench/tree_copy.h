/* The blocks of a module's trees made once more: what generating the trees costs at the least. */
#ifndef KORV_BENCH_TREE_COPY_H
#define KORV_BENCH_TREE_COPY_H

#include <vector>

#include "korv_lib_yang.h"

namespace bench {

/* Makes the nodes, names, leaf lists and leaf descriptors of a record's trees, with the same texts, and releases them. */
class TreeCopy {
  public:
    explicit TreeCopy(const TELMYANG_YANG_FILE_INFO_S &file);
    ~TreeCopy();
    TreeCopy(const TreeCopy &) = delete;
    TreeCopy &operator=(const TreeCopy &) = delete;

  private:
    void Add(const KorvTreeNode *root);

    std::vector<KorvTreeNode *> m_roots; /* each with its siblings behind it */
};

/* What the copies hold, in bytes. */
size_t TreeBytes(const TELMYANG_YANG_FILE_INFO_S &file);

/* The node that follows in a chain of top nodes and everything below them; null at the end. */
const KorvTreeNode *NextInTree(const KorvTreeNode *node);

} // namespace bench

#endif // KORV_BENCH_TREE_COPY_H
