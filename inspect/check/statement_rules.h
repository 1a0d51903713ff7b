/* The rules of `check` for the extension statements themselves: what the library passes over in silence. */
#pragma once

#include <string>
#include <vector>

#include "check/findings.h"
#include "check/statement_uses.h"
#include "model/schema_places.h"
#include "model/schema_scan.h"

namespace inspect {

class StatementRules {
  public:
    StatementRules(QY_CTX *schema, QY_MOD *module, Places *places, StatementUses *uses)
        : schema_(schema), module_(module), places_(places), uses_(uses)
    {
    }

    /* Checks the module and all nodes that it defines. Findings that depend on the other nodes of a statement are left to
     * `uses`. */
    std::vector<Finding> Check();

  private:
    using Extensions = std::vector<Extension>;

    void CheckModule();
    void CheckNode(QY_NODE *node);
    void CheckNumbers(const Extensions &extensions);
    void CheckNumber(const Extension &extension);
    void CheckAncestorKeyNumbers(const Extension &extension);
    void CheckRange(const std::string &keyword, const std::string &word, const Extension &extension);
    void CheckRepeated(const Extensions &extensions);
    void CheckClassNum();
    bool WritesClasses() const;

    /* Statements that nothing reads: statement_effect.cpp. */
    void CheckEffect(QY_NODE *node, const Extensions &extensions);
    void CheckTree(QY_NODE *node, QY_NODE *out, const Extensions &extensions);
    void CheckLeafrefClass(QY_NODE *node);
    void CheckClassStatements(const Extensions &extensions);

    /* Keys: key_statements.cpp. */
    void CheckAncestorKeys(QY_NODE *node, const Extensions &extensions);
    void CheckAncestorKeyForms(const Extensions &keys, bool nested);
    void CheckKeys(QY_NODE *node);
    void CheckIndexMaps(QY_NODE *list);
    bool HasMappingBelow(QY_NODE *list);

    /* Reports something about what is being checked, or about one of its statements. */
    Finding FindingAt(Rule rule, const std::string &text, const std::optional<Position> &position) const;
    void Report(Rule rule, const std::string &text);
    void Report(Rule rule, const std::string &text, const Extension &extension);
    void Report(Rule rule, const std::string &text, const std::optional<Position> &position);
    void ReportUnread(Rule rule, const std::string &text, const Extension &extension);

    QY_CTX *schema_;
    QY_MOD *module_;
    Places *places_;
    StatementUses *uses_;
    QY_NODE *node_ = nullptr;     /* what is being checked; null: the module */
    std::string subject_;         /* "leaf 'x'" */
    QXYANG_ORIGIN_S origin_ = {}; /* its statement */
    size_t nodes_ = 0;            /* that the module defines */
    size_t classes_ = 0;          /* of them, and attributes that it gives to others */
    bool isInTrees_ = false;      /* whether any of the nodes is */
    bool hasTask_ = false;        /* whether the module has a task id */
    std::vector<Finding> findings_;
};

} // namespace inspect
