/* Statements of YANG's compact syntax: RFC 7950, 6.3 and 14. */
#pragma once

#include <vector>

#include "files/source.h"
#include "syntax/compact_tokens.h"

namespace qxyang {

struct CompactStatement {
    std::string_view keyword;  /* with its prefix, if any */
    std::string_view argument; /* its data are null if there is none; valid until the next event */
    uint32_t offset;
    uint32_t argumentBegin; /* the argument as it is written, quotes included */
    uint32_t argumentEnd;
};

/* Is told what stands in the file, in the order of the file. */
class CompactSink : public CompactTokens::Listener {
  public:
    virtual void Start(const CompactStatement &statement) = 0;
    virtual void Head(bool hasBlock) = 0; /* the statement's ';' or '{' was read */
    virtual void End(uint32_t end) = 0;   /* `end` is behind the ';' or '}' */
    virtual void Fail(uint32_t offset, std::string_view sentence) = 0;

  protected:
    ~CompactSink() = default;
};

/* Reads up to the end of the file or the first failure of syntax. Nested statements need no call stack. */
class CompactParser {
  public:
    CompactParser(Source &source, CompactSink &sink, bool wantsComments)
        : source_(source), sink_(sink), tokens_(source.Text(), source.Start(), wantsComments ? &sink : nullptr)
    {
    }

    void Run();

  private:
    using Kind = CompactTokens::Kind;

    /* A statement whose block is open. */
    struct Level {
        std::string_view head; /* keyword and argument as they are written */
        uint32_t offset;
    };

    bool CheckText();
    bool Step();
    bool ReadStatement();
    bool Close();
    bool CheckEnd();
    bool FailHead(const CompactStatement &statement, bool isWord, bool endsAtComment, Kind found);
    bool Fail(uint32_t offset, std::string_view sentence);
    bool FailToken(std::string_view expected);
    void NoteLapse();
    void ReadVersion(const CompactStatement &statement);

    Source &source_;
    CompactSink &sink_;
    CompactTokens tokens_;
    std::vector<Level> levels_;
    bool hasRoot_ = false;
    bool isVersion11_ = false;
    bool hasEarlyLapse_ = false;
    CompactTokens::Lapse earlyLapse_{}; /* the first thing before yang-version that version 1.1 does not allow */
    CompactTokens::Lapse noncharacter_{};
};

} // namespace qxyang
