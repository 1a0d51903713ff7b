/* The class trees of modules as records of the page's data. Each node comes once: in the tree of the module that defines it, or
 * with the augment that adds it.
 *
 * A leaf:  [name, type, attribute id, flags, line, file, text, datatype, index map, reference key, remarks]
 * A node:  [name, kind, class id, sample id, [own keys], [ancestor keys], [leaves], [nodes], flags, line, file, text, remarks]
 *
 * name, file and text are numbers of texts; file 0 is the module's own. type and remarks are numbers of records, remarks
 * counted from 1. Datatype, index map and reference key are one more than they are, so that 0 says that there is none. */
#pragma once

#include <set>
#include <unordered_map>
#include <unordered_set>

#include "model/instance.h"
#include "model/trees.h"
#include "page/finding_places.h"
#include "page/records.h"
#include "page/type_records.h"

namespace inspect::page {

constexpr uint32_t FLAG_KEY = 1;
constexpr uint32_t FLAG_LEAF_LIST = 2;
constexpr uint32_t FLAG_STATE = 4;
constexpr uint32_t FLAG_MANDATORY = 8;
constexpr uint32_t FLAG_DEPRECATED = 16;
constexpr uint32_t FLAG_OBSOLETE = 32;

/* Numbers of records. */
struct RecordLists {
    std::vector<uint32_t> nodes;
    std::vector<uint32_t> leaves;
};

class NodeRecords {
  public:
    /* `shown` are the modules of the page: each of them brings its own nodes. */
    NodeRecords(std::set<const QY_MOD *> shown, FindingPlaces *findings, diff::FileNames *files, TypeRecords *types,
                Tables *tables)
        : shown_(std::move(shown)), findings_(findings), files_(files), types_(types), tables_(tables)
    {
    }

    /* The next module whose nodes are read, and how the library sees it. */
    void Begin(QY_MOD *module, const ModuleFile &file);

    std::vector<uint32_t> OwnTrees();
    RecordLists AddedBy(uint32_t augment);

    /* What the page repeats of a description: without the blanks by which its lines are indented. */
    uint32_t TextOf(const char *description);

    /* The number of a file's name, 0 for that of the module's own file. */
    uint32_t FileOf(const diff::Where &where);

    /* Of what stands in a node's statement beside that which has a place of its own. */
    uint32_t RemarksOf(QY_NODE *node, const QXYANG_NODE_DETAILS_S &details);

  private:
    bool IsLeftOut(QY_NODE *node) const;
    uint32_t Leaf(QY_NODE *node, const KorvTreeLeaf &leaf);
    uint32_t Node(QY_NODE *node, const KorvTreeNode &made);
    RecordLists Below(QY_NODE *node, const KorvTreeNode &made);

    std::set<const QY_MOD *> shown_;
    FindingPlaces *findings_;
    diff::FileNames *files_;
    TypeRecords *types_;
    Tables *tables_;

    QY_MOD *module_ = nullptr;
    const ModuleFile *file_ = nullptr;
    const std::string *ownFile_ = nullptr;
    std::unordered_set<const QY_NODE *> added_; /* what the module's own augments add */
};

} // namespace inspect::page
