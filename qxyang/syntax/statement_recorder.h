/* Makes the statement records of a file in either syntax, and checks which statements there are, where they stand
 * and what their arguments look like. */
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/text_cache.h"
#include "files/failures.h"
#include "syntax/compact_parser.h"
#include "syntax/grammar.h"
#include "syntax/statement.h"

namespace qxyang {

class StatementRecorder {
  public:
    StatementRecorder(Unit &unit, Failures &failures);

    /* Attributes are pairs of name and value with a null behind; names in a namespace have it in front, followed by
     * NAMESPACE_SEPARATOR. `offset` is where the element begins in the file. */
    void StartStatement(std::string_view name, const char **attributes, uint32_t offset);
    void StartExtension(std::string_view space, std::string_view name, const char **attributes, uint32_t offset);

    /* The same in compact syntax: the keyword may have a prefix. */
    void StartCompact(const CompactStatement &statement);

    /* Skips an element with all that stands in it. Records the failure unless the element stands in a skipped one. */
    void SkipElement(uint32_t offset, std::string_view sentence);

    /* The end of the statement or element that is open innermost. */
    void End();

    /* Text within the element that is open innermost. */
    void AddText(std::string_view text) { text_.append(text); }

    /* True if the text of the element that is open innermost may be an argument. */
    bool WantsText() const { return textWanted_; }

    /* True if the element that is open innermost is a statement of YANG. */
    bool IsInStatement() const { return skipped_ == 0 && !frames_.empty() && frames_.back().keyword != Kw::Instance; }

    size_t Depth() const { return skipped_ + frames_.size(); }

    /* "container 'x'": the element that is open innermost; empty if there is none, or a skipped one. */
    std::string DescribeOpen() const;

    void Fail(uint32_t offset, std::string_view sentence) { failures_.Add(unit_.source, offset, sentence); }

  private:
    /* An element that is open. */
    struct Frame {
        Kw keyword;
        bool hasArgument = false; /* its argument element was met; true from the start where the syntax has none */
        bool hasChild = false;    /* of an extension statement */
        uint32_t offset;
        Statement *statement = nullptr; /* null: not recorded */
        Statement **tail = nullptr;     /* where the next recorded child is linked */
        ExtensionUse *use = nullptr;    /* of an extension statement */
        KeywordSet seen = {};
    };

    /* An argument; its data are null if the statement has none. */
    using Argument = std::string_view;

    Kw Place(Kw keyword, std::string_view name, bool isArgument, uint32_t offset);
    void Push(Kw keyword, Argument argument, uint32_t offset);
    Argument CompactArgumentOf(const Keyword &keyword, const CompactStatement &statement);
    void StartCompactExtension(const CompactStatement &statement);
    bool IsArgumentElement(Frame &parent, std::string_view name, uint32_t offset);
    bool IsPlaced(Frame *parent, Kw keyword, uint32_t offset);
    bool IsPlacedInDeviate(const Frame &deviate, Kw keyword) const;
    Argument ArgumentOf(const Keyword &keyword, const char **attributes, uint32_t offset);
    void FailAttribute(std::string_view name, const Keyword &keyword, uint32_t offset);
    void Record(Frame &frame, Argument argument);
    ExtensionStatement *RecordInstance(Frame &frame);
    void SetAttribute(ExtensionStatement &statement, const char **attributes);
    bool IsInstanceKept(const Frame &parent) const;
    ExtensionUse *CompactUseOf(std::string_view keyword, uint32_t offset);
    const char *KeptAttribute(ExtensionUse &use, const char *name);
    void Link(const Frame &frame);
    ExtensionUse *UseOf(std::string_view space, std::string_view name, const Frame &parent, uint32_t offset);
    void CountStatement(uint32_t offset);
    void EndStatement(const Frame &frame);
    void EndExtension(const Frame &frame);
    std::string Describe(const Frame &frame) const;

    Unit &unit_;
    Failures &failures_;
    TextCache names_;
    std::vector<Frame> frames_;
    std::string text_; /* of the extension statement that is open innermost */
    std::string key_;
    size_t skipped_ = 0; /* open elements that are skipped */
    size_t statements_ = 0;
    bool textWanted_ = false;
};

} // namespace qxyang
