/* Finds children by name without walking long lists again and again. */
#pragma once

#include <string_view>
#include <unordered_map>
#include <vector>

#include "schema/model.h"

namespace qxyang {

/* Serves one load. Parents with many children get an index. */
class ChildFinder {
  public:
    /* The child of that name and module, or null. Choices and cases are children like others. Follows children as they
     * are appended. */
    QY_NODE *SchemaChild(const QY_NODE *parent, const QY_MOD *module, std::string_view name);

    /* The same in the data tree: choices and cases are no children, theirs are. To be asked when the parent has all its
     * children. */
    QY_NODE *DataChild(const QY_NODE *parent, const QY_MOD *module, std::string_view name);

  private:
    class Index {
      public:
        void Add(QY_NODE *child);
        QY_NODE *Find(const QY_MOD *module, std::string_view name) const;

        QY_NODE *last = nullptr; /* of the children that are in it */

      private:
        QY_NODE **Place(const QY_MOD *module, std::string_view name);

        std::vector<QY_NODE *> slots_;
        size_t count_ = 0;
    };

    std::unordered_map<const QY_NODE *, Index> schemaIndexes_;
    std::unordered_map<const QY_NODE *, Index> dataIndexes_;
};

} // namespace qxyang
