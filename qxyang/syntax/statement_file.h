/* The statements of one file as tools read them. Only the syntax is checked. */
#pragma once

#include <qxyang.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/arena.h"
#include "base/text_cache.h"
#include "files/failures.h"
#include "files/source.h"

struct QXYANG_FILE {
    QXYANG_FILE(std::string path, uint32_t chosen) : source(std::move(path), {}), options(chosen), names(texts) {}

    qxyang::Source source;
    uint32_t options;
    qxyang::Failures failures;
    qxyang::Arena texts;
    qxyang::TextCache names;
    std::vector<QXYANG_STATEMENT_S> statements; /* in the order in which they begin */
    std::vector<QXYANG_COMMENT_S> comments;     /* in the order of the file */
};

namespace qxyang {

/* Builds the list of a file's statements from what its reader tells. */
class StatementList {
  public:
    explicit StatementList(QXYANG_FILE &file) : file_(file) {}

    /* A statement begins. A prefix whose data are null means that it has none. */
    QXYANG_STATEMENT_S &Start(std::string_view prefix, std::string_view keyword, uint32_t offset);

    /* The text of an element's namespace, stored once. */
    const char *KeepSpace(std::string_view space);

    /* An xmlns attribute binds the prefix. For each prefix, the first one counts. */
    void AddNamespace(std::string_view prefix, std::string_view space) { declared_.emplace(prefix, KeepSpace(space)); }

    /* Gives the statement its argument, which stands from `begin` to `end`. Both are 0 if the place is not known. */
    void SetArgument(QXYANG_STATEMENT_S &statement, std::string_view argument, uint32_t form, uint32_t begin,
                     uint32_t end);

    /* The end of the statement that is open innermost. */
    void End(uint32_t end);

    void AddComment(std::string_view text, uint32_t begin, uint32_t end, bool isAlone);

    /* The statement that is open innermost, or null. */
    QXYANG_STATEMENT_S *Open();

    size_t Depth() const { return open_.size(); }

    void Fail(uint32_t offset, std::string_view sentence) { file_.failures.Add(file_.source, offset, sentence); }

    /* Ends the statements that are still open, and finds the places of comments and the modules of statements. */
    void Finish();

  private:
    std::string_view ArgumentOfChild(uint32_t parent, std::string_view keyword) const;
    void BindModules();

    QXYANG_FILE &file_;
    std::map<std::string_view, const char *> spaces_;           /* what KeepSpace has stored */
    std::map<std::string, const char *, std::less<>> declared_; /* namespaces by their prefixes */
    std::vector<uint32_t> open_;
    std::vector<uint32_t> lastChild_; /* of each open statement, then of the file */
};

/* Reads the text of the file's source, in either syntax. */
void ReadStatements(QXYANG_FILE &file);

/* The same for YIN only. */
void ReadYinStatements(QXYANG_FILE &file, StatementList &list);

} // namespace qxyang
