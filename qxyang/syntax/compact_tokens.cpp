#include "syntax/compact_tokens.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "files/source.h"

namespace qxyang {

namespace {

constexpr uint32_t TAB_WIDTH = 8;

/* What a character means to the scans that look for it. */
enum Meaning : uint8_t {
    BLANK = 1 << 0,
    ENDS_WORD = 1 << 1,   /* ends an unquoted string, or does so together with the next character */
    STOPS_QUOTED = 1 << 2 /* ends a double-quoted string, or changes its value */
};

constexpr std::array<uint8_t, 256> MakeMeanings()
{
    std::array<uint8_t, 256> meanings{};
    auto add = [&meanings](std::string_view characters, Meaning meaning) {
        for (char c : characters)
            meanings[static_cast<unsigned char>(c)] |= meaning;
    };
    constexpr std::string_view ZERO("\0", 1);
    add(" \t\n", BLANK);
    add(" \t\r\n;{}\"'/*", ENDS_WORD);
    add(ZERO, ENDS_WORD);
    add("\"\\\n", STOPS_QUOTED);
    add(ZERO, STOPS_QUOTED);
    return meanings;
}

constexpr std::array<uint8_t, 256> MEANINGS = MakeMeanings();

inline bool Has(char c, Meaning meaning)
{
    return (MEANINGS[static_cast<unsigned char>(c)] & meaning) != 0;
}

/* Most of what stands between tokens is indentation. */
constexpr std::string_view INDENT = "        ";
static_assert(INDENT.size() <= Source::COMPACT_ROOM);

inline bool BeginsWithIndent(const char *at)
{
    return std::memcmp(at, INDENT.data(), INDENT.size()) == 0;
}

bool IsIndent(char c)
{
    return c == ' ' || c == '\t';
}

} // namespace

bool CompactTokens::Fail(const char *at, std::string_view sentence)
{
    lapse_ = {OffsetOf(at), std::string(sentence)};
    hasLapse_ = true;
    begin_ = end_ = at;
    return false;
}

void CompactTokens::Note(const char *at, std::string_view sentence)
{
    if (hasLapse_)
        return;
    lapse_ = {OffsetOf(at), std::string(sentence)};
    hasLapse_ = true;
}

CompactTokens::Kind CompactTokens::Next()
{
    hasLapse_ = false;
    if (!SkipBlank())
        return Kind::Failed;
    begin_ = at_;
    switch (*at_) {
        case '\0':
            end_ = at_;
            return Kind::End;
        case ';':
            return Punctuation(Kind::Semicolon);
        case '{':
            return Punctuation(Kind::Open);
        case '}':
            return Punctuation(Kind::Close);
        case '"':
        case '\'':
            return ReadString();
        default:
            return ReadWord();
    }
}

CompactTokens::Kind CompactTokens::Punctuation(Kind kind)
{
    end_ = ++at_;
    return kind;
}

/* ---- between tokens -------------------------------------------------------------------------------------------- */

/* Skips white space and comments: RFC 7950, 6.1.1 and 6.1.2. */
bool CompactTokens::SkipBlank()
{
    for (;;) {
        while (Has(*at_, BLANK)) {
            ++at_;
            while (BeginsWithIndent(at_))
                at_ += INDENT.size();
        }
        if (*at_ == '/' && (at_[1] == '/' || at_[1] == '*')) {
            if (!SkipComment())
                return false;
        } else if (*at_ == '\r') {
            if (at_[1] != '\n')
                return Fail(at_, "found a carriage return without a line feed; expected one in quoted strings only");
            ++at_;
        } else {
            return true;
        }
    }
}

bool CompactTokens::SkipComment()
{
    const char *begin = at_;
    size_t offset = OffsetOf(begin);
    size_t end = std::min(text_.find('\n', offset), text_.size());
    if (begin[1] == '*') {
        end = text_.find("*/", offset + 2);
        if (end == std::string_view::npos)
            return Fail(begin, "the file ends within the comment that begins here; expected '*/'");
        end += 2;
    }
    at_ = text_.data() + end;
    if (listener_ == nullptr)
        return true;
    bool endsInReturn = begin[1] == '/' && text_[end - 1] == '\r';
    std::string_view comment = text_.substr(offset, end - offset - (endsInReturn ? 1 : 0));
    listener_->OnComment({comment, OffsetOf(begin), IsAlone(begin, at_)});
    return true;
}

bool CompactTokens::IsAlone(const char *begin, const char *end) const
{
    while (begin > text_.data() && IsIndent(begin[-1]))
        --begin;
    while (IsIndent(*end) || *end == '\r')
        ++end;
    return (begin == text_.data() || begin[-1] == '\n') && (*end == '\n' || *end == '\0');
}

/* ---- unquoted strings ------------------------------------------------------------------------------------------ */

CompactTokens::Kind CompactTokens::ReadWord()
{
    const char *at = at_;
    for (;;) {
        while (!Has(*at, ENDS_WORD))
            ++at;
        if (*at == '/' && at[1] != '/' && at[1] != '*') {
            ++at;
        } else if (*at == '*') {
            if (at[1] == '/') {
                Fail(at, "found '*/'; expected it at the end of a comment only");
                return Kind::Failed;
            }
            ++at;
        } else if (*at == '"' || *at == '\'') {
            Note(at, std::string("found ") + *at +
                         " in an unquoted string; since yang-version 1.1 expected in quoted ones only");
            ++at;
        } else {
            break;
        }
    }
    value_ = {begin_, static_cast<size_t>(at - begin_)};
    at_ = end_ = at;
    return Kind::Word;
}

/* ---- quoted strings -------------------------------------------------------------------------------------------- */

/* A quoted string with those that '+' joins to it: RFC 7950, 6.1.3. */
CompactTokens::Kind CompactTokens::ReadString()
{
    const char *begin = at_;
    isJoined_ = false;
    value_ = {};
    if (!ReadPiece())
        return Kind::Failed;
    for (;;) {
        end_ = at_;
        if (Has(*at_, BLANK) || *at_ == '\r' || *at_ == '/')
            if (!SkipBlank())
                return Kind::Failed;
        if (*at_ != '+')
            break;
        const char *plus = at_++;
        if (!SkipBlank())
            return Kind::Failed;
        if (*at_ != '"' && *at_ != '\'') {
            Fail(plus, "found no string behind '+'; expected one in quotes");
            return Kind::Failed;
        }
        if (!isJoined_)
            joined_ = value_;
        isJoined_ = true;
        if (!ReadPiece())
            return Kind::Failed;
    }
    if (isJoined_)
        value_ = joined_;
    begin_ = begin;
    return Kind::String;
}

/* Reads one quoted string and adds it to those before it. The first one is not copied if its value stands in the
 * text as it is. */
bool CompactTokens::ReadPiece()
{
    const char *quote = at_;
    const char *end = quote + 1;
    bool isPlain = true;
    if (*quote == '\'') {
        size_t found = text_.find('\'', OffsetOf(end));
        if (found == std::string_view::npos)
            return Fail(quote, "the file ends within the string that begins here; expected a single quote");
        end = text_.data() + found;
    } else {
        while (!Has(*end, STOPS_QUOTED))
            ++end;
        isPlain = *end == '"';
        if (!isPlain && !FindDoubleEnd(end))
            return Fail(quote, "the file ends within the string that begins here; expected a double quote");
    }
    at_ = end + 1;
    std::string_view written(quote + 1, static_cast<size_t>(end - quote - 1));
    if (isPlain && !isJoined_) {
        value_ = written;
        return true;
    }
    if (!isJoined_)
        joined_.clear();
    isJoined_ = true;
    if (isPlain)
        joined_.append(written);
    else
        AppendLines(quote, end);
    return true;
}

bool CompactTokens::FindDoubleEnd(const char *&at)
{
    while (*at != '"') {
        if (*at == '\0')
            return false;
        at += *at == '\\' && at[1] != '\0' ? 2 : 1;
    }
    return true;
}

/* Appends the value of a double-quoted string without the white space before line breaks, and without the
 * indentation of the following lines up to the column of the quote: RFC 7950, 6.1.3. */
void CompactTokens::AppendLines(const char *quote, const char *end)
{
    const char *line = quote + 1;
    uint32_t column = 0;
    for (;;) {
        const void *found = std::memchr(line, '\n', static_cast<size_t>(end - line));
        const char *stop = found != nullptr ? static_cast<const char *>(found) : end;
        uint32_t width = 0;
        while (width < column && line < stop && IsIndent(*line))
            width += *line++ == '\t' ? TAB_WIDTH : 1;
        const char *last = stop;
        bool hasReturn = stop != end && last > line && last[-1] == '\r';
        if (hasReturn)
            --last;
        while (stop != end && last > line && IsIndent(last[-1]))
            --last;
        if (width > column && (last > line || stop == end)) // a tab that reaches beyond the column
            joined_.append(width - column, ' ');
        AppendEscaped(line, last);
        if (stop == end)
            return;
        joined_.append(hasReturn ? "\r\n" : "\n");
        if (column == 0)
            column = ColumnOf(quote);
        line = stop + 1;
    }
}

void CompactTokens::AppendEscaped(const char *at, const char *end)
{
    while (at < end) {
        const void *found = std::memchr(at, '\\', static_cast<size_t>(end - at));
        const char *stop = found != nullptr ? static_cast<const char *>(found) : end;
        joined_.append(at, stop);
        if (stop == end)
            return;
        char code = stop + 1 < end ? stop[1] : '\0';
        at = stop + 2;
        if (code == 'n') {
            joined_ += '\n';
        } else if (code == 't') {
            joined_ += '\t';
        } else if (code == '"' || code == '\\') {
            joined_ += code;
        } else { // RFC 6020, 6.1.3 does not say what it means: both characters stay
            Note(stop,
                 "found a backslash before another character; since yang-version 1.1 expected one of '\\n', '\\t', "
                 "'\\\"' and '\\\\' only");
            joined_ += '\\';
            at = stop + 1;
        }
    }
}

/* Counts from 1; a tab counts 8. */
uint32_t CompactTokens::ColumnOf(const char *at) const
{
    const char *line = at;
    while (line > text_.data() && line[-1] != '\n')
        --line;
    uint32_t column = 1;
    for (; line < at; ++line)
        column += *line == '\t' ? TAB_WIDTH : (static_cast<unsigned char>(*line) & 0xC0) != 0x80 ? 1 : 0;
    return column;
}

} // namespace qxyang
