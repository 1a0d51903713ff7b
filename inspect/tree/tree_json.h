/* Class trees as JSON. */
#pragma once

#include <cstdint>
#include <optional>

#include "base/json_out.h"
#include "model/tree_places.h"
#include "tree/tree_view.h"

namespace inspect {

class TreeJson {
  public:
    TreeJson(JsonOut *out, TreePlaces *places) : out_(*out), places_(*places) {}

    /* Everything that the view shows. */
    void Write(const TreeView &view);

    /* The node, in the tree of an augment or the module's own, with `depth` levels, itself included; 0 for all. */
    void Write(const KorvTreeNode &node, const std::optional<uint32_t> &augment, uint32_t depth);

    void Write(const KorvTreeLeaf &leaf);

  private:
    void WriteNode(const KorvTreeNode &node, uint32_t depth);
    void WriteLeaves(const char *name, const VEC_VECTOR_S *leaves);
    void WritePart(const char *name, const TreePart &part, uint32_t depth);
    void WriteAugment(const TreeView &view, const AugmentView &augment);
    void WriteAdditions(const TreeView &view, const AugmentView &augment);

    JsonOut &out_;
    TreePlaces &places_;
    const OwnRows *own_ = nullptr;    /* of the view that is written: null shows all */
    std::optional<uint32_t> augment_; /* in whose tree the nodes stand that are written; none: in the module's own */
};

} // namespace inspect
