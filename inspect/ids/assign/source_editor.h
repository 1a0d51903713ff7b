/* New statements in a model file, in its own syntax and layout. All that is there stays, byte by byte. */
#pragma once

#include <qxyang.h>

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ids/assign/plan.h"
#include "ids/assign/source_text.h"
#include "model/statements.h"

namespace inspect::ids {

/* Text that takes the place of some bytes. */
struct Edit {
    size_t offset;
    size_t length;
    std::string text;
};

/* New statements for a node that a uses brings. */
struct Refinement {
    std::string path;
    std::span<const NewStatement> statements;
};

class SourceEditor {
  public:
    /* `shown` is the file's name in messages. */
    SourceEditor(const QXYANG_FILE *file, std::string shown);

    void Insert(uint32_t statement, std::span<const NewStatement> added);

    /* A node that has a refine already gets its statements there. */
    void Refine(uint32_t uses, const std::vector<Refinement> &refinements);

    /* Sorted by offset. Adds the import of the extension module where it is missing. Throws Failure when the file cannot
     * name that module. */
    std::vector<Edit> Finish();

    const SourceText &Text() const { return text_; }

  private:
    /* A line of new text and how far it stands in. */
    struct Line {
        size_t level;
        std::string text;
    };
    using Lines = std::vector<Line>;

    /* Where a statement's block begins, or where it would. */
    struct Opening {
        size_t offset; /* behind "{" or the start tag; of a statement without block, of its end mark */
        size_t length; /* of the end mark; 0 for a block */
    };

    Opening OpeningOf(const QXYANG_STATEMENT_S &statement) const;
    size_t BehindBlanks(size_t offset, bool onLine) const;
    size_t BehindComment(size_t offset) const;
    size_t LineBehind(size_t offset) const;
    std::string ChildIndent(const QXYANG_STATEMENT_S &statement, size_t opening) const;
    std::string NameAt(size_t offset) const;

    void Render(const NewStatement &added, size_t level, Lines *lines) const;
    void RenderRefine(const Refinement &refinement, const std::string &uses, Lines *lines) const;
    void Put(const QXYANG_STATEMENT_S &statement, const Lines &lines);
    std::string AsBlock(const Lines &lines, const std::string &indent) const;
    std::string AsInline(const Lines &lines) const;

    void ChoosePrefix();
    void AddImport();
    void AddNamespace();
    template <class Visit>
    void ForEachBinding(const std::string &prefix, Visit visit) const;
    bool IsBoundToAnother(const std::string &prefix) const;
    bool IsBound(const std::string &prefix) const;

    const QXYANG_FILE *file_;
    std::string shown_;
    SourceText text_;
    bool isCompact_;
    std::string prefix_;
    std::string step_ = "  ";
    bool isImported_ = false;
    std::vector<Edit> edits_;
};

} // namespace inspect::ids
