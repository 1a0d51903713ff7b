/* One model file that was read alone: nothing that it imports is looked at. */
#ifndef KORV_INSPECT_MODEL_FILE_H
#define KORV_INSPECT_MODEL_FILE_H

#include <qxyang.h>

#include <memory>
#include <string>
#include <vector>

#include "base/cause.h"

namespace inspect {

class ModelFile {
  public:
    /* The file, with its comments when they are wanted. `shown` is its name in messages. */
    static ModelFile Read(const std::string &path, const std::string &shown, bool withComments = false);
    static ModelFile ReadText(const std::string &text, bool isCompact, const std::string &shown);

    QXYANG_FILE *Handle() const { return file_.get(); }
    const std::string &Shown() const { return shown_; }
    bool IsCompact() const { return QXYANG_GetFileSyntax(file_.get()) == QXYANG_SYNTAX_COMPACT; }

    /* Why the file cannot be read or is not well formed; empty when it is. */
    std::vector<Cause> Faults() const;

    /* The statement "module" or "submodule". The file is well formed. */
    QXYANG_STATEMENT_S Root() const { return Statement(0); }

    QXYANG_STATEMENT_S Statement(uint32_t index) const;

    /* Calls visit(statement) for each statement directly in the one given. */
    template <typename Visit>
    void ForEachIn(const QXYANG_STATEMENT_S &around, Visit visit) const
    {
        for (uint32_t i = around.uiFirstChild; i != QXYANG_NO_STATEMENT;) {
            const QXYANG_STATEMENT_S statement = Statement(i);
            visit(statement);
            i = statement.uiNext;
        }
    }

    /* The argument of the first statement of YANG with that keyword directly in the one given, or "". */
    std::string ArgumentIn(const QXYANG_STATEMENT_S &around, std::string_view keyword) const;

  private:
    struct Close {
        void operator()(QXYANG_FILE *file) const { QXYANG_CloseFile(file); }
    };

    ModelFile(QXYANG_FILE *file, std::string shown);

    std::unique_ptr<QXYANG_FILE, Close> file_;
    std::string shown_;
};

/* True if the statement is YANG's own one of that keyword. */
bool IsYang(const QXYANG_STATEMENT_S &statement, std::string_view keyword);

} // namespace inspect

#endif // KORV_INSPECT_MODEL_FILE_H
