/* What the statements of one node say, as facts. */
#pragma once

#include <qxyang.h>

#include "diff/class_data.h"
#include "diff/model.h"
#include "diff/type_reader.h"

namespace inspect::diff {

class NodeFacts {
  public:
    NodeFacts(const ClassData &classes, FileNames *files, TypeReader *types)
        : classes_(classes), files_(files), types_(types)
    {
    }

    /* Fills in the item's ids, place, facts and type. `above` is the uses statement that brought the node above. */
    void Read(QY_NODE *node, const QXYANG_NODE_DETAILS_S &details, const QXYANG_ORIGIN_S &above, Item *item);

  private:
    void AddIds(QY_NODE *node, Item *item);
    void AddLeafIds(QY_NODE *node, Item *item);
    void AddStatements(QY_NODE *node, Rule rule, Item *item);
    void AddNumber(QY_NODE *node, Rule rule, Item *item);
    void AddConditions(const QXYANG_ORIGIN_S &around, Item *item);
    void AddInherited(QY_NODE *node, const char *keyword, Rule rule, const std::vector<std::string> &values,
                      Item *item);
    void AddType(QY_NODE *node, Item *item);
    void AddMemberLeafrefs(const std::string &leaf, const TypeModel &type, Item *item);
    void AddLeafref(QY_NODE *leaf, const TypeModel &type, Item *item);
    void AddState(QY_NODE *node, const QXYANG_NODE_DETAILS_S &details, Item *item);
    void AddConditionsAround(const QXYANG_NODE_DETAILS_S &details, const QXYANG_ORIGIN_S &above, Item *item);
    void AddList(QY_NODE *node, Item *item);

    const ClassData &classes_;
    FileNames *files_;
    TypeReader *types_;
};

} // namespace inspect::diff
