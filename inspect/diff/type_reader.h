/* From type statements to what they allow. */
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "diff/definitions.h"
#include "diff/model.h"
#include "diff/statement_places.h"

namespace inspect::diff {

/* The type of a leaf. */
struct LeafType {
    const char *written;   /* the argument of the leaf's type statement: "et:percent"; null: it has none */
    const TypeModel *own;  /* what that statement gives */
    const TypeModel *last; /* what holds at the end of leafrefs; their own type when the end is not found */
};

/* Reads each type statement once, however many leaves have it. */
class TypeReader {
  public:
    TypeReader(const QY_CTX *schema, FileNames *files, Version *version)
        : definitions_(schema), files_(files), version_(version)
    {
    }

    /* The type that a type statement gives; leafrefs are not followed. */
    const TypeModel *Of(const StatementRef &statement) { return Of(statement, {}); }

    /* The type of a leaf or leaf-list, behind all leafrefs; none when its statement is not known. */
    std::optional<LeafType> OfLeaf(QY_NODE *leaf);

    /* True if a type that was read leads through the typedef. */
    bool IsUsed(const StatementRef &definition) const { return used_.contains(definition); }

    Definitions *Names() { return &definitions_; }

  private:
    using Chain = std::vector<StatementRef>; /* type statements from the built-in type to the leaf's own */

    const TypeModel *Of(const StatementRef &statement, const Where &around);
    Chain ChainOf(StatementRef statement);
    Where WhereOf(const StatementRef &statement, const Where &otherwise) const;
    void ReadNumbers(const Chain &chain, TypeModel *type);
    void ReadText(const Chain &chain, TypeModel *type);
    void ReadNames(const Chain &chain, const char *keyword, const char *numberKeyword, TypeModel *type);
    void ReadReference(const Chain &chain, TypeModel *type);
    void ReadMembers(const Chain &chain, TypeModel *type);
    std::string Target(const QXYANG_FILE *file, std::string path);
    void AddFact(Rule rule, Value value, const StatementRef &statement, TypeModel *type);

    Definitions definitions_;
    FileNames *files_;
    Version *version_;
    std::map<StatementRef, const TypeModel *> known_;
    std::set<StatementRef> used_;
};

} // namespace inspect::diff
