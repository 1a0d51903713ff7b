/* From the nodes of the schema to classes: their ids, and the attribute ids that keys have in them. */
#pragma once

#include <memory>
#include <optional>
#include <unordered_map>

#include "ids/model_ids.h"

namespace inspect::ids {

/* What stands for a key in a class. */
struct KeyId {
    uint32_t id;
    std::optional<uint32_t> indexMap;
    std::string path; /* of the key's leaf; "" when not known */
    QXYANG_ORIGIN_S statement = {};
};

struct ClassNode {
    ModelClass model;
    const ClassNode *above; /* the nearest class above, or null */
    bool isPart;            /* that one has the same id */
    std::vector<KeyId> ancestorKeys;
    std::vector<KeyId> ownKeys;
};

class ClassReader {
  public:
    explicit ClassReader(QY_CTX *schema) : schema_(schema) {}

    /* To be called for each node, parents first. Returns the class that the node is, or null. */
    const ClassNode *Enter(QY_NODE *node);

    /* The class that has the leaf: that of the node in which it stands directly, choices and cases passed over. Or null. */
    const ClassNode *HolderOf(QY_NODE *leaf) const;

  private:
    const ClassNode *NearestAt(QY_NODE *node) const;
    static void ReadOwnKeys(ClassNode *made);
    void ReadAncestorKeys(const std::vector<Extension> &extensions, ClassNode *made) const;
    void Map(const std::vector<Extension> &statements, const std::vector<KeyId> &keys, ClassNode *made) const;

    QY_CTX *schema_;
    std::unordered_map<QY_NODE *, std::unique_ptr<ClassNode>> classes_;
    std::unordered_map<QY_NODE *, const ClassNode *> nearest_; /* of nodes that may have others below */
};

/* The number of a leaf's attribute as the library reads it; 0: none. */
uint32_t FieldIdOf(const std::vector<Extension> &extensions, QXYANG_ORIGIN_S *statement);

/* The first statement with that keyword, or null. */
const Extension *First(const std::vector<Extension> &extensions, std::string_view keyword);

} // namespace inspect::ids
