/* Tokens of YANG's compact syntax: RFC 7950, 6.1 for version 1.1, and RFC 6020, 6.1 for version 1. */
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qxyang {

/* A comment as it stands in the file. */
struct CompactComment {
    std::string_view text; /* with its slashes and asterisks, without the line's end */
    uint32_t offset;
    bool isAlone; /* nothing else stands on its lines */
};

class CompactTokens {
  public:
    enum class Kind : uint8_t {
        End,
        Word,   /* unquoted: a keyword or an argument */
        String, /* quoted, with all that '+' joins to it */
        Semicolon,
        Open,
        Close,
        Failed /* Why() says why; there is no next token */
    };

    /* Something wrong, or allowed in version 1 only. */
    struct Lapse {
        uint32_t offset;
        std::string sentence;
    };

    /* Is told of the comments. A reader that needs none passes no listener. */
    class Listener {
      public:
        virtual void OnComment(const CompactComment &comment) = 0;

      protected:
        ~Listener() = default;
    };

    /* The text must be checked UTF-8 without control characters, with Source::COMPACT_ROOM bytes behind it, the
     * first of which is zero. */
    CompactTokens(std::string_view text, uint32_t start, Listener *listener)
        : text_(text), at_(text.data() + start), begin_(at_), end_(at_), listener_(listener)
    {
    }

    Kind Next();

    /* The text of the latest word or string; valid until the next token is read. */
    std::string_view Value() const { return value_; }

    /* Where the latest token stands, quotes included. */
    uint32_t Begin() const { return OffsetOf(begin_); }
    uint32_t End() const { return OffsetOf(end_); }

    /* The token as it is written. */
    std::string_view Written() const { return {begin_, static_cast<size_t>(end_ - begin_)}; }

    /* True when a comment begins where the latest token ends. */
    bool EndsAtComment() const { return end_[0] == '/' && (end_[1] == '/' || end_[1] == '*'); }

    /* Why the latest token failed, or else the first thing in it that only version 1 allows. */
    const Lapse &Why() const { return lapse_; }
    bool HasLapse() const { return hasLapse_; }

  private:
    uint32_t OffsetOf(const char *at) const { return static_cast<uint32_t>(at - text_.data()); }
    bool SkipBlank();
    bool SkipComment();
    bool IsAlone(const char *begin, const char *end) const;
    Kind Punctuation(Kind kind);
    Kind ReadWord();
    Kind ReadString();
    bool ReadPiece();
    bool FindDoubleEnd(const char *&at);
    void AppendLines(const char *quote, const char *end);
    void AppendEscaped(const char *at, const char *end);
    uint32_t ColumnOf(const char *at) const;
    bool Fail(const char *at, std::string_view sentence);
    void Note(const char *at, std::string_view sentence);

    std::string_view text_;
    const char *at_; /* behind the latest token, perhaps behind white space and comments that follow it as well */
    const char *begin_;
    const char *end_;
    std::string_view value_;
    std::string joined_; /* value of a string that the text does not have in one piece */
    bool isJoined_ = false;
    bool hasLapse_ = false;
    Lapse lapse_{};
    Listener *listener_;
};

} // namespace qxyang
