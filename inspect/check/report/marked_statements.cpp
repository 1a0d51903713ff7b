#include "check/report/marked_statements.h"

#include <algorithm>
#include <new>
#include <tuple>

namespace inspect {
namespace {

constexpr std::string_view BLANKS = " \t\r\n";

std::string_view Trimmed(std::string_view text)
{
    size_t begin = text.find_first_not_of(BLANKS);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(BLANKS) + 1 - begin);
}

} // namespace

MarkedStatements::MarkedStatements(const ModelFile &file)
{
    uint64_t size = 0;
    const char *text = QXYANG_GetFileText(file.Handle(), &size);
    if (text != nullptr)
        text_ = {text, size};
    if (QXYANG_ScanFile(file.Handle(), OnEvent, this) != 0)
        throw std::bad_alloc();
    for (size_t i = 0; i < marks_.size(); ++i) {
        marks_[i].covered = alone_[i] ? StatementBehind(places_[i]) : StatementOfLine(places_[i]);
        if (marks_[i].covered)
            marksOf_.emplace(*marks_[i].covered, i);
    }
}

uint32_t MarkedStatements::OnEvent(uint32_t event, const QXYANG_STATEMENT_S *statement, const QXYANG_COMMENT_S *comment,
                                   void *cookie)
try {
    auto &self = *static_cast<MarkedStatements *>(cookie);
    if (event == QXYANG_EVENT_COMMENT) {
        self.AddComment(*comment);
    } else if (event == QXYANG_EVENT_BEGIN) {
        const QXYANG_PLACE_S &place = statement->stPlace;
        self.statements_.push_back(
            {place.uiLine, place.uiColumn, place.uiOffset, place.uiOffset + place.uiLength, statement->uiParent});
    }
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

void MarkedStatements::AddComment(const QXYANG_COMMENT_S &comment)
{
    std::string_view text = Trimmed(comment.pcText);
    if (!text.starts_with(IGNORE_MARK))
        return;
    text.remove_prefix(IGNORE_MARK.size());
    if (!text.empty() && BLANKS.find(text.front()) == std::string_view::npos)
        return;
    size_t colon = std::min(text.find(':'), text.size());
    std::string_view reason = text.substr(std::min(colon + 1, text.size()));
    marks_.push_back({comment.stPlace.uiLine, comment.stPlace.uiColumn, std::string(Trimmed(text.substr(0, colon))),
                      std::string(Trimmed(reason)), std::nullopt});
    places_.push_back(comment.stPlace);
    alone_.push_back(comment.uiIsAlone != 0);
}

/* The last statement that begins in front of the offset. */
std::optional<uint32_t> MarkedStatements::LastBefore(uint32_t offset) const
{
    auto behind = std::partition_point(statements_.begin(), statements_.end(),
                                       [offset](const Statement &statement) { return statement.begin < offset; });
    if (behind == statements_.begin())
        return std::nullopt;
    return static_cast<uint32_t>(behind - statements_.begin()) - 1;
}

/* The next statement, unless the one around the comment ends before. */
std::optional<uint32_t> MarkedStatements::StatementBehind(const QXYANG_PLACE_S &place) const
{
    std::optional<uint32_t> last = LastBefore(place.uiOffset);
    uint32_t next = last ? *last + 1 : 0;
    uint32_t around = last.value_or(QXYANG_NO_STATEMENT);
    while (around != QXYANG_NO_STATEMENT && statements_[around].end <= place.uiOffset)
        around = statements_[around].parent;
    if (next == statements_.size() || statements_[next].parent != around)
        return std::nullopt;
    return next;
}

std::optional<uint32_t> MarkedStatements::StatementOfLine(const QXYANG_PLACE_S &place) const
{
    auto first = std::partition_point(statements_.begin(), statements_.end(),
                                      [&place](const Statement &statement) { return statement.line < place.uiLine; });
    if (first != statements_.end() && first->line == place.uiLine)
        return static_cast<uint32_t>(first - statements_.begin());
    std::optional<uint32_t> last = LastBefore(place.uiOffset);
    std::optional<uint32_t> ended;
    for (uint32_t i = last.value_or(QXYANG_NO_STATEMENT);
         i < statements_.size() && statements_[i].end <= place.uiOffset; i = statements_[i].parent)
        ended =
            text_.substr(statements_[i].end, place.uiOffset - statements_[i].end).find('\n') == std::string_view::npos
                ? i
                : ended;
    return ended;
}

std::vector<size_t> MarkedStatements::MarksAround(uint32_t line, uint32_t column) const
{
    std::vector<size_t> found;
    auto behind = std::partition_point(statements_.begin(), statements_.end(), [=](const Statement &statement) {
        return std::tie(statement.line, statement.column) <= std::tie(line, column);
    });
    uint32_t at =
        behind == statements_.begin() ? QXYANG_NO_STATEMENT : static_cast<uint32_t>(behind - statements_.begin()) - 1;
    for (at = line == 0 ? 0 : at; at < statements_.size(); at = statements_[at].parent)
        for (auto [mark, end] = marksOf_.equal_range(at); mark != end; ++mark)
            found.push_back(mark->second);
    return found;
}

} // namespace inspect
