/* The statements of a file that comments of this program are about. */
#pragma once

#include <qxyang.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/model_file.h"

namespace inspect {

/* What such a comment begins with. */
constexpr std::string_view IGNORE_MARK = "korv-inspect off";

struct IgnoreMark {
    uint32_t line;
    uint32_t column;
    std::string rule;                /* as it is written, or "" */
    std::string reason;              /* or "" */
    std::optional<uint32_t> covered; /* index of the statement that the comment is about */
};

class MarkedStatements {
  public:
    /* Looks at a file that was read with its comments. */
    explicit MarkedStatements(const ModelFile &file);

    const std::vector<IgnoreMark> &Marks() const { return marks_; }

    /* The indexes of the marks that are about a statement around that place; line 0 stands for the whole file. */
    std::vector<size_t> MarksAround(uint32_t line, uint32_t column) const;

  private:
    struct Statement {
        uint32_t line;
        uint32_t column;
        uint32_t begin; /* offsets */
        uint32_t end;
        uint32_t parent;
    };

    static uint32_t OnEvent(uint32_t event, const QXYANG_STATEMENT_S *statement, const QXYANG_COMMENT_S *comment,
                            void *cookie);
    void AddComment(const QXYANG_COMMENT_S &comment);
    std::optional<uint32_t> StatementBehind(const QXYANG_PLACE_S &place) const;
    std::optional<uint32_t> StatementOfLine(const QXYANG_PLACE_S &place) const;
    std::optional<uint32_t> LastBefore(uint32_t offset) const;

    std::string_view text_;
    std::vector<Statement> statements_;  /* by their indexes */
    std::vector<QXYANG_PLACE_S> places_; /* of the marks */
    std::vector<bool> alone_;
    std::vector<IgnoreMark> marks_;
    std::multimap<uint32_t, size_t> marksOf_; /* indexes of the marks by that of the statement that they are about */
};

} // namespace inspect
