/* Class trees as rows of text in columns: nodes with their ids and keys, leaves with theirs. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <korv_lib_yang.h>
#include "base/paint.h"

namespace inspect {

class OwnRows;

/* "class 0x1001  sample 0x52  keys 1 2  ancestor keys 10", what there is of it. */
std::string NodeSummary(const KorvTreeNode &node);

/* "1280..9600"; "" for none, or where it is the type's own. */
std::string RangeText(const KorvTreeLeaf &leaf);

/* Everything of a leaf beyond name, id and type. */
std::string LeafSummary(const KorvTreeLeaf &leaf);

class TreeRows {
  public:
    /* Rows of modules other than `module` say whose they are. */
    TreeRows(std::string module, const Paint &paint, const OwnRows *own = nullptr)
        : module_(std::move(module)), paint_(paint), own_(own)
    {
    }

    /* The node with `depth` levels of nodes, itself included; 0 for all. */
    void AddTree(const KorvTreeNode &node, uint32_t indent, uint32_t depth);

    /* The node alone. */
    void AddNode(const KorvTreeNode &node, uint32_t indent);
    void AddLeaf(const KorvTreeLeaf &leaf, uint32_t indent);
    void AddText(const std::string &text, uint32_t indent);

    /* Writes the rows to standard output and forgets them. */
    void Print();

  private:
    struct Row {
        std::string name;
        std::string id; /* of a leaf; these two are empty otherwise */
        std::string type;
        std::string rest;
        Tone tone; /* of the name */
    };

    std::string From(const char *module, const char *parentModule) const;

    std::string module_;
    Paint paint_;
    const OwnRows *own_; /* null: everything is shown */
    std::vector<Row> rows_;
};

} // namespace inspect
