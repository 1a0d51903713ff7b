/* What the rules of YANG for the nodes of a module share. */
#pragma once

#include <initializer_list>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "check/findings.h"
#include "check/yang/file_names.h"
#include "check/yang/node_statements.h"
#include "model/schema_places.h"

namespace inspect {

/* A choice's default case. */
struct DefaultCase {
    std::string module;
    std::string name;
    QXYANG_ORIGIN_S origin; /* of the default statement */
};

/* What makes a node a mandatory one (RFC 7950, 3). */
struct Mandatory {
    QY_NODE *node; /* itself, or one in the containers below it */
    NodeStatement statement;
};

/* How far the paths of an expression climb. */
struct Climbs {
    size_t fromContext = 0; /* steps above the context node */
    bool fromRoot = false;  /* above the root itself */

    bool Any() const { return fromContext != 0 || fromRoot; }
};

/* The statement that makes the node itself a mandatory one; of containers, none does. */
std::optional<NodeStatement> WhyMandatory(QY_NODE *node);

class NodeCheck {
  public:
    NodeCheck(QY_CTX *schema, QY_MOD *module, Places *places);

    /* The node that the rules look at, or null. */
    void Look(const QY_NODE *node) { node_ = node; }

    /* Reports what these statements do together, at the first of them that stands in the module's own files; if none does, at
     * the module's `uses` that brings the node. Without one the fault is another module's, and nothing is said. A statement
     * gets one finding of a rule, however many nodes it makes. */
    void Report(Rule rule, const std::string &text, std::initializer_list<QXYANG_ORIGIN_S> statements);

    /* Paths of the module's files, its submodules' included. */
    const std::unordered_set<std::string> &OwnFiles() const { return ownFiles_; }

    /* True if the statement stands in the module's own files. */
    bool IsOwn(const QXYANG_ORIGIN_S &origin) const;

    /* " (see FILE:12)", or "" when the statement's place is not known. */
    std::string SeeText(const QXYANG_ORIGIN_S &statement);

    QY_MOD *Module() const { return module_; }
    const FileNames &NamesOf(const NodeStatement &statement) { return files_.Of(statement.origin.pstFile); }
    Identities &AllIdentities() { return identities_; }

    /* The child of that module and name, or null. */
    QY_NODE *ChildOf(QY_NODE *node, const std::string &module, std::string_view name);

    /* The default statement of the choice whose default case the node is; null for any other node. */
    const QXYANG_ORIGIN_S *DefaultOfCase(QY_NODE *node);

    /* The node, or the first one in it, that makes it mandatory. Nodes for which counts(node) is false are passed over with
     * all that they hold. */
    using Filter = bool (*)(NodeCheck &check, QY_NODE *node);
    static std::optional<Mandatory> MandatoryIn(NodeCheck &check, QY_NODE *node, Filter counts);

    /* Nodes that augments of the module with a `when` add. */
    std::unordered_set<const QY_NODE *> conditional;

    /* Names of the enums and bits in a type statement that have an if-feature. */
    const std::unordered_set<std::string_view> &ConditionalNamesIn(const NodeStatement &type);

    const Climbs &ClimbsOf(const NodeStatement &expression);

    /* The paths in a type statement, and in the member types that it writes out, that climb at all. */
    const std::vector<NodeStatement> &ClimbingPathsIn(const NodeStatement &type);

    /* The `when` that stands in a uses or augment statement. */
    const std::optional<NodeStatement> &WhenIn(const QXYANG_ORIGIN_S &around);

    std::vector<Finding> TakeFindings() { return std::move(findings_); }

  private:
    using Named = std::unordered_map<std::string, QY_NODE *>; /* by "module:name" */
    using StatementKey = std::pair<const QXYANG_FILE *, uint32_t>;

    const DefaultCase &DefaultOf(QY_NODE *choice);
    QXYANG_ORIGIN_S UsesOfNode() const;

    QY_MOD *module_;
    const QY_NODE *node_ = nullptr;
    Places *places_;
    FileNameTable files_;
    Identities identities_;
    std::unordered_set<std::string> ownFiles_; /* paths */
    std::set<std::pair<const RuleRow *, StatementKey>> reported_;
    std::unordered_map<QY_NODE *, Named> children_;
    std::unordered_map<QY_NODE *, DefaultCase> defaults_; /* by choice */
    std::map<StatementKey, std::unordered_set<std::string_view>> conditionalNames_;
    /* What is asked for each node that a statement makes is read from the statement once. */
    std::map<StatementKey, Climbs> climbs_;
    std::map<StatementKey, std::vector<NodeStatement>> climbingPaths_;
    std::map<StatementKey, std::optional<NodeStatement>> whens_;
    std::vector<Finding> findings_;
};

} // namespace inspect
