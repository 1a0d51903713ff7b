/* The rules of `check` for the extension statements themselves: what the library passes over in silence. */
#ifndef KORV_INSPECT_STATEMENT_RULES_H
#define KORV_INSPECT_STATEMENT_RULES_H

#include <string>
#include <vector>

#include "check/findings.h"
#include "model/schema_scan.h"
#include "model/statement_finder.h"

namespace inspect {

class StatementRules {
  public:
    StatementRules(QY_MOD *module, const StatementFinder &finder) : module_(module), finder_(finder) {}

    /* Of all nodes that the module defines. */
    std::vector<Finding> Check();

  private:
    using Extensions = std::vector<Extension>;

    void CheckModule();
    void CheckNode(QY_NODE *node);
    void CheckNumbers(const Extensions &extensions);
    void CheckNumber(const std::string &keyword, const std::string &argument);
    void CheckAncestorKeyNumbers(const Extension &extension);
    void CheckRange(const std::string &keyword, const std::string &word);
    void CheckRepeated(const Extensions &extensions);
    void CheckEffect(QY_NODE *node, const Extensions &extensions);
    void CheckLeafrefClass(QY_NODE *node);
    void CheckAncestorKeys(QY_NODE *node, const Extensions &extensions);
    void CheckKeys(QY_NODE *node);
    void Report(const char *name, const std::string &text);

    QY_MOD *module_;
    const StatementFinder &finder_;
    std::string subject_;              /* what is being checked: "leaf 'x'" */
    std::optional<Position> position_; /* and where it is */
    std::vector<Finding> findings_;
};

} // namespace inspect

#endif // KORV_INSPECT_STATEMENT_RULES_H
