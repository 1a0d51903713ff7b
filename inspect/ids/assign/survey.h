/* All nodes of a set of models, parents first, with the ids that they have. */
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "ids/assign/model_set.h"

namespace inspect::ids {

inline constexpr uint32_t NO_NODE = 0xFFFFFFFFU;

/* A statement in a file. */
struct Spot {
    const QXYANG_FILE *file = nullptr;
    uint32_t statement = QXYANG_NO_STATEMENT;

    friend bool operator==(const Spot &, const Spot &) = default;
};

struct SurveyNode {
    QY_NODE *node;
    uint32_t parent; /* NO_NODE: none */
    uint32_t child;  /* the first one */
    uint32_t next;   /* the next beside it */
    uint32_t module; /* index in the set of models; behind the last for a revision that is not among them */
    uint32_t classId = 0;
    uint32_t field = 0;     /* attribute id, that of a reference key if it has one */
    uint32_t reference = 0; /* attribute id of a reference key */
    uint32_t indexMap = 0;
    uint8_t type;                /* QY_NODE_TYPE_ value */
    bool isInTree;               /* the library reads it, and a tree holds it */
    bool isKey = false;          /* of its list */
    bool hasType = false;        /* it has a datatype-id */
    bool isLeafrefClass = false; /* it takes its statements from the class below it */
    Spot own;                    /* the statement that makes it */
    Spot uses;                   /* the outermost uses that brought it, if any */
};

/* The ancestor-key-fid statements that a class has. */
struct AncestorStatements {
    bool isList = false;                               /* one statement with the ids of this class */
    std::vector<std::pair<uint32_t, uint32_t>> keys{}; /* name of the key above, attribute id here */
    bool isInGrouping = false;                         /* they come with a grouping */
};

class Survey {
  public:
    explicit Survey(const ModelSet &models);

    const ModelSet &Models() const { return models_; }
    const std::vector<SurveyNode> &Nodes() const { return nodes_; }
    const SurveyNode &At(uint32_t index) const { return nodes_[index]; }

    /* True if the node's module is to get ids. */
    bool IsWanted(uint32_t index) const;

    /* Null for a class without such statements. */
    const AncestorStatements *AncestorsOf(uint32_t index) const;

    /* The leaves that belong to a node: its own and those of its choices and cases, in the order of the schema. */
    std::vector<uint32_t> LeavesOf(uint32_t index) const;

    /* The class above of type leafref that takes its ids from this node, or NO_NODE. */
    uint32_t TakerOf(uint32_t index) const;

    /* The keys of a list; of a node from which a list takes its ids, the leaves to which the keys of that list refer. */
    std::vector<uint32_t> KeyLeavesOf(uint32_t index) const;

  private:
    void AddTree(QY_NODE *top);
    void Link(uint32_t index, std::vector<uint32_t> *last);
    void ReadStatements(uint32_t index);
    void AddLeaves(uint32_t index, std::vector<uint32_t> *leaves) const;

    const ModelSet &models_;
    std::vector<SurveyNode> nodes_;
    std::map<uint32_t, AncestorStatements> ancestors_;
};

} // namespace inspect::ids
