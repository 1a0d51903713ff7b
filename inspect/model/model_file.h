/* One model file that was read alone: nothing that it imports is looked at. */
#pragma once

#include <qxyang.h>

#include <memory>
#include <string>
#include <vector>

#include "base/cause.h"
#include "model/statements.h"

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

    /* True if the file has any statement. */
    bool HasRoot() const { return StatementAt(file_.get(), 0).pcKeyword != nullptr; }

    /* Its outermost statement: "module" or "submodule" in a file that is right. */
    QXYANG_STATEMENT_S Root() const { return Statement(0); }

    QXYANG_STATEMENT_S Statement(uint32_t index) const { return StatementAt(file_.get(), index); }

    /* Calls visit(statement) for each statement directly in the one given. */
    template <class Visit>
    void ForEachIn(const QXYANG_STATEMENT_S &around, Visit visit) const
    {
        inspect::ForEachIn(file_.get(), around, visit);
    }

    /* The argument of the first statement of YANG with that keyword directly in the one given, or "". */
    std::string ArgumentIn(const QXYANG_STATEMENT_S &around, std::string_view keyword) const
    {
        return inspect::ArgumentIn(file_.get(), around, keyword);
    }

  private:
    struct Close {
        void operator()(QXYANG_FILE *file) const { QXYANG_CloseFile(file); }
    };

    ModelFile(QXYANG_FILE *file, std::string shown);

    std::unique_ptr<QXYANG_FILE, Close> file_;
    std::string shown_;
};

} // namespace inspect
