/* What statements say of nodes that no tree shows: config, default, mandatory, numbers of elements. It is checked as far
 * as one statement and flags of the nodes suffice; docs/model-guide.md lists what is not. */
#pragma once

#include <unordered_map>

#include "build.h"

namespace qxyang {

/* Flags of a node that has these properties. Each is enough to learn later whether the node has one. */
uint16_t FlagsOfAny(uint16_t properties);
inline uint16_t FlagsOf(uint16_t properties)
{
    constexpr uint16_t NONE = SETS_TYPE | SETS_PRESENCE | HAS_DEFINITIONS | HAS_TEXT; // most nodes have no other
    return (properties & ~NONE) == 0 ? 0 : FlagsOfAny(properties);
}

/* The node's flags after a statement set properties that it may have had before. */
uint16_t ChangedFlags(uint16_t flags, uint16_t properties);

class ConstraintChecker {
  public:
    explicit ConstraintChecker(Build &build) : build_(build) {}

    /* What a node's statement says, once its children are there. */
    void CheckNode(const Statement *statement, const QY_NODE *node, Unit &unit)
    {
        if ((statement->properties & (SETS_CONFIG | SETS_DEFAULT | SETS_MAX_ELEMENTS)) != 0)
            CheckProperties(statement, node, unit);
    }

    /* What a refine or deviate sets on a node whose flags tell of it already. */
    void CheckChange(const Statement *change, const QY_NODE *node, Unit &unit);

    /* The default statements of a typedef, leaf or leaf-list. */
    void CheckDefaults(const Statement *statement, const QY_TYPE &type, Unit &unit);

    /* That a node of configuration stands below no state. */
    void CheckConfig(const Statement *where, const QY_NODE *node, Unit &unit);

    /* That a node with a default is not mandatory. */
    void CheckMandatory(const Statement *where, const QY_NODE *node, Unit &unit);

  private:
    void CheckProperties(const Statement *statement, const QY_NODE *node, Unit &unit);
    void CheckCounts(const Statement *statement, Unit &unit);
    void CheckDefaultCase(const Statement *value, const QY_NODE *choice, Unit &unit);
    std::string WhyNot(std::string_view text, const QY_TYPE &type, size_t &members);
    std::string WhyNotNumber(std::string_view text, const QY_TYPE &type);
    std::string WhyNotNamed(std::string_view name, const QY_TYPE &type);
    std::string WhyNotOfUnion(std::string_view text, const QY_TYPE &type, size_t &members);
    const EnumValue *FindValue(std::string_view name, const EnumSet &set);

    Build &build_;
    std::unordered_map<const EnumSet *, NameTable<EnumValue>> names_; /* of types with many values */
};

} // namespace qxyang
