/* Finds children by their names. Long lists are walked once. */
#pragma once

#include <string_view>
#include <unordered_map>
#include <vector>

#include "schema/model.h"

namespace qxyang {

/* Made for one load. A parent with many children gets an index when it is first searched. */
class ChildFinder {
  public:
    /* The child of that name and module in the schema tree, or null. Children may be appended between two calls. */
    QY_NODE *SchemaChild(const QY_NODE *parent, const QY_MOD *module, std::string_view name);

    /* The same in the data tree, where the nodes within choices and cases are children of the parent. It must have
     * all its children before the first call. */
    QY_NODE *DataChild(const QY_NODE *parent, const QY_MOD *module, std::string_view name);

  private:
    class Index {
      public:
        void Add(QY_NODE *child);
        QY_NODE *Find(const QY_MOD *module, std::string_view name) const;

        QY_NODE *last = nullptr; /* of the children in the index */

      private:
        QY_NODE **Place(const QY_MOD *module, std::string_view name);

        std::vector<QY_NODE *> slots_;
        size_t count_ = 0;
    };

    std::unordered_map<const QY_NODE *, Index> schemaIndexes_;
    std::unordered_map<const QY_NODE *, Index> dataIndexes_;
};

} // namespace qxyang
