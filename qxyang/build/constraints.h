/* Checks config, default, mandatory, min-elements and max-elements as far as one statement and the flags of nodes
 * suffice. docs/model-guide.md lists what is not checked. */
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "build/build.h"

namespace qxyang {

/* Flags of a node whose statement has these properties. */
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

/* The node's flags after a refine or deviate has set these properties, some of which the node may have had. */
uint16_t ChangedFlags(uint16_t flags, uint16_t properties);

class ConstraintChecker {
  public:
    explicit ConstraintChecker(Build &build) : build_(build) {}

    /* Checks a node that has its children. A choice of a grouping may still get its default case where it is used. */
    void CheckNode(const Statement *statement, const QY_NODE *node, Unit &unit, bool isOfGrouping)
    {
        if ((statement->properties & (SETS_CONFIG | SETS_DEFAULT | SETS_MAX_ELEMENTS)) != 0)
            CheckProperties(statement, node, unit, isOfGrouping);
    }

    /* Checks what a refine sets. The node has its new flags already. */
    void CheckRefine(const Statement *refine, const QY_NODE *node, Unit &unit);

    /* The same for a deviate. What other deviations of the module may still change is checked by Finish. */
    void CheckDeviate(const Statement *deviate, const QY_NODE *node, Unit &unit);

    /* A deviation removes a key: the failure is recorded by Finish unless one removes the list as well. */
    void AwaitListOf(const Statement *deviate, const QY_NODE *key, Unit &unit, std::string failure);

    /* Checks what augments, refines and deviations could still mend. */
    void Finish();

    /* The default statements of a typedef, leaf or leaf-list are values of its type: RFC 7950, 7.3.4, 7.6.4 and
     * 7.7.4. */
    void CheckDefaults(const Statement *statement, const QY_TYPE &type, Unit &unit);

    /* No node with config 'true' stands below one with config 'false': RFC 7950, 7.21.1. */
    void CheckConfig(const Statement *where, const QY_NODE *node, Unit &unit);

    /* No leaf or choice with a default is mandatory: RFC 7950, 7.6.4 and 7.9.3. */
    void CheckMandatory(const Statement *where, const QY_NODE *node, Unit &unit);

  private:
    enum class Rule : uint8_t {
        Config,
        DefaultCase,
        Mandatory,
        Key,
        Value
    };

    /* A rule that a node breaks so far. Rule::Value: a default that is to be checked in the end. */
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
    std::unordered_map<const QY_NODE *, const Statement *> lastDeviate_; /* of a leaf, of those with a default */
};

} // namespace qxyang
