/* What has changed from one type to another. */
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "diff/model.h"

namespace inspect::diff {

struct TypeChange {
    Rule rule;
    bool breaking; /* where it is felt */
    Value before;
    Value after;
    Where oldWhere;
    Where newWhere;
};

/* Compares each pair of types once, however many leaves have it. */
class TypeComparison {
  public:
    const std::vector<TypeChange> &Compare(const TypeModel &before, const TypeModel &after);

  private:
    std::map<std::pair<const TypeModel *, const TypeModel *>, std::vector<TypeChange>> known_;
};

} // namespace inspect::diff
