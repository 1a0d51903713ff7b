/* What a module itself adds to trees: each of its nodes and leaves once, however many copies the trees have. */
#pragma once

#include <map>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include "tree/tree_view.h"

namespace inspect {

/* The nodes and leaves of a view that are shown where they stand. Those of other modules are not, and what an augment of the
 * module adds is shown with the augment alone. */
class OwnRows {
  public:
    explicit OwnRows(const TreeView &view);

    bool Shows(const KorvTreeNode &node) const { return IsOwn(node.pcModuleName) && !hidden_.contains(&node); }
    bool Shows(const KorvTreeLeaf &leaf) const { return IsOwn(leaf.pcModuleName) && !hidden_.contains(&leaf); }

    /* Nodes below the node that are shown. */
    uint64_t CountBelow(const KorvTreeNode &node) const;

  private:
    using SchemaLeaves = std::unordered_set<const void *>;

    bool IsOwn(const char *module) const { return module_ == module; }
    void Look(const KorvTreeNode &node, const std::string &path, SchemaLeaves *inCases);
    void Hide(const KorvTreeNode &node, SchemaLeaves *inCases);

    std::string module_;
    std::map<std::string, std::set<std::string>> added_; /* names that augments add, by the path of their target */
    std::unordered_set<const void *> hidden_;
};

/* What an augment puts below its target. */
struct Additions {
    std::vector<const KorvTreeNode *> nodes;
    std::vector<const KorvTreeLeaf *> leaves;
    std::vector<const KorvTreeLeaf *> caseLeaves; /* those of its cases as the class above the target has them */
};
Additions AdditionsOf(const TreeView &view, const AugmentView &augment);

} // namespace inspect
