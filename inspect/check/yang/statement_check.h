/* What the rules of YANG for the statements of a module's files share. */
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "check/findings.h"
#include "check/yang/definitions.h"
#include "check/yang/own_files.h"
#include "model/schema_places.h"

namespace inspect {

class StatementCheck {
  public:
    StatementCheck(QY_CTX *schema, QY_MOD *module, Places *places)
        : schema_(schema), module_(module), places_(places), files_(OwnFilesOf(schema, module)), definitions_(files_)
    {
    }

    /* The file whose statements are looked at. */
    const OwnFile &File() const { return *file_; }
    const std::vector<OwnFile> &Files() const { return files_; }
    const Definitions &AllDefinitions() const { return definitions_; }
    QY_CTX *Schema() const { return schema_; }
    QY_MOD *Module() const { return module_; }

    /* Reports something about a statement of the file, or about its argument from that byte on. An argument that the file
     * writes in other characters, or on several lines, is pointed at where it begins. */
    void Report(Rule rule, const std::string &text, const QXYANG_STATEMENT_S &statement);
    void ReportIn(Rule rule, const std::string &text, const QXYANG_STATEMENT_S &statement, size_t offset);

    /* Where a statement of one of the module's files stands. */
    std::optional<Position> PlaceOf(const OwnFile &file, const QXYANG_STATEMENT_S &statement);
    /* " (line 12)", or " (FILE:12)" if it is another file than the one that is looked at. */
    std::string SeeText(const OwnFile &file, const QXYANG_STATEMENT_S &statement);

    /* Looks at one file after the other. */
    template <class Visit>
    void ForEachFile(Visit visit)
    {
        for (const OwnFile &file : files_) {
            file_ = &file;
            visit(file);
        }
    }

    std::vector<Finding> TakeFindings() { return std::move(findings_); }

  private:
    QY_CTX *schema_;
    QY_MOD *module_;
    Places *places_;
    std::vector<OwnFile> files_;
    Definitions definitions_;
    const OwnFile *file_ = nullptr;
    std::vector<Finding> findings_;
};

/* What is done with each statement of a keyword. */
struct KeywordRule {
    std::string_view keyword;
    void (*check)(StatementCheck &check, const QXYANG_STATEMENT_S &statement);
};

extern const std::span<const KeywordRule> ORDER_RULES;
extern const std::span<const KeywordRule> FORM_RULES;
extern const std::span<const KeywordRule> TYPE_RULES;
extern const std::span<const KeywordRule> REFERENCE_RULES;
extern const std::span<const KeywordRule> EXPRESSION_RULES;

/* "leaf 'x'" of a statement, or its keyword alone. A long argument is cut. */
std::string HeadText(const QXYANG_STATEMENT_S &statement);

/* Which module has a namespace, over all modules that are checked. */
struct NamespaceUse {
    std::string module;
    std::optional<Position> position;
};
using NamespaceUses = std::map<std::string, NamespaceUse, std::less<>>;

/* Rules for a module's files as a whole. */
void CheckNamespace(StatementCheck &check, NamespaceUses *uses);
void CheckIncludes(StatementCheck &check);
void CheckLeafrefStatus(StatementCheck &check);
void CheckExtensionPlaces(StatementCheck &check);

/* All of these rules. */
std::vector<Finding> CheckYangStatements(QY_CTX *schema, QY_MOD *module, Places *places, NamespaceUses *uses);

} // namespace inspect
