/* What statements say of nodes that no tree shows: config, default, mandatory, numbers of elements. It is checked as far
 * as one statement and flags of the nodes suffice; docs/model-guide.md lists what is not. */
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "build/build.h"

namespace qxyang {

/* Flags of a node that has these properties: they tell later whether the node has one. */
constexpr uint16_t FlagsOf(uint16_t properties)
{
    constexpr uint16_t OF_ANY_NODE =
        SETS_CONFIG | IS_STATE | SETS_DEFAULT | SETS_MANDATORY | IS_MANDATORY | SETS_UNITS | SETS_MUST;
    constexpr uint16_t OF_LISTS = SETS_UNIQUE | SETS_MIN_ELEMENTS | SETS_MAX_ELEMENTS;
    return static_cast<uint16_t>((properties & OF_ANY_NODE) << 8 | (properties & OF_LISTS) << 3);
}
static_assert(FlagsOf(SETS_CONFIG) == NODE_HAS_CONFIG && FlagsOf(IS_STATE) == NODE_IS_STATE);
static_assert(FlagsOf(SETS_DEFAULT) == NODE_HAS_DEFAULT && FlagsOf(SETS_UNIQUE) == NODE_HAS_UNIQUE);
static_assert(FlagsOf(SETS_MANDATORY) == NODE_HAS_MANDATORY && FlagsOf(SETS_MIN_ELEMENTS) == NODE_HAS_MIN_ELEMENTS);
static_assert(FlagsOf(IS_MANDATORY) == NODE_IS_MANDATORY && FlagsOf(SETS_MAX_ELEMENTS) == NODE_HAS_MAX_ELEMENTS);
static_assert(FlagsOf(SETS_UNITS) == NODE_HAS_UNITS && FlagsOf(SETS_MUST) == NODE_HAS_MUST);
static_assert(FlagsOf(SETS_PRESENCE | SETS_TYPE | HAS_DEFINITIONS | HAS_TEXT) == 0);

/* The node's flags after a statement set properties that it may have had before. */
uint16_t ChangedFlags(uint16_t flags, uint16_t properties);

class ConstraintChecker {
  public:
    explicit ConstraintChecker(Build &build) : build_(build) {}

    /* What a node's statement says, once its children are there. What a grouping lacks may come with its use. */
    void CheckNode(const Statement *statement, const QY_NODE *node, Unit &unit, bool isOfGrouping)
    {
        if ((statement->properties & (SETS_CONFIG | SETS_DEFAULT | SETS_MAX_ELEMENTS)) != 0)
            CheckProperties(statement, node, unit, isOfGrouping);
    }

    /* What a refine sets on a node whose flags tell of it already. */
    void CheckRefine(const Statement *refine, const QY_NODE *node, Unit &unit);

    /* The same for a deviate: what all deviations of the module together leave is checked, in the end. */
    void CheckDeviate(const Statement *deviate, const QY_NODE *node, Unit &unit);

    /* A key that a deviation leaves out: its list must go as well. */
    void AwaitListOf(const Statement *deviate, const QY_NODE *key, Unit &unit, std::string failure);

    /* Looks once more at what augments, refines and deviations could still mend. */
    void Finish();

    /* The default statements of a typedef, leaf or leaf-list. */
    void CheckDefaults(const Statement *statement, const QY_TYPE &type, Unit &unit);

    /* That a node of configuration stands below no state. */
    void CheckConfig(const Statement *where, const QY_NODE *node, Unit &unit);

    /* That a node with a default is not mandatory. */
    void CheckMandatory(const Statement *where, const QY_NODE *node, Unit &unit);

  private:
    enum class Rule : uint8_t {
        Config,
        DefaultCase,
        Mandatory,
        Key,
        Value
    };

    /* A rule that a node breaks so far, or, of a value, may break. */
    struct Pending {
        Rule rule;
        const Statement *where;
        const QY_NODE *node;
        Unit *unit;
        std::string failure; /* of a key */
    };

    void CheckProperties(const Statement *statement, const QY_NODE *node, Unit &unit, bool isOfGrouping);
    void CheckSetting(const Statement *change, const QY_NODE *node, Unit &unit);
    void Await(Pending pending);
    bool IsBroken(const Pending &pending);
    std::string WhyBroken(const Pending &pending);
    bool HasDefaultCase(const Statement *value, const QY_NODE *choice, Unit &unit);
    std::string NoDefaultCase(const Statement *value, const QY_NODE *choice, Unit &unit);
    void CheckCounts(const Statement *statement, Unit &unit);
    std::string WhyNot(std::string_view text, const QY_TYPE &type);
    std::string WhyNotNumber(std::string_view text, const QY_TYPE &type);
    std::string WhyNotNamed(std::string_view name, const QY_TYPE &type);
    std::string WhyNotOfUnion(std::string_view text, const QY_TYPE &type);

    Build &build_;
    std::vector<Pending> pending_;
    std::unordered_map<const QY_NODE *, const Statement *> lastDeviate_; /* with a default, of a leaf */
};

} // namespace qxyang
