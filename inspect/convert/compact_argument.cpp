/* Arguments in compact syntax, so that versions 1 and 1.1 read the same from them. */
#include <algorithm>
#include <string_view>

#include "convert/writers.h"

namespace inspect {
namespace {

bool IsWord(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-' ||
               c == '.' || c == ':';
    });
}

/* Single quotes keep everything as it is, but have no escapes. */
bool IsForSingleQuotes(std::string_view text)
{
    return text.find_first_of("\"\\") != std::string_view::npos &&
           text.find_first_of("'\n\r\t") == std::string_view::npos;
}

void AppendEscaped(std::string_view line, std::string *out)
{
    for (const char c : line) {
        if (c == '\t') {
            *out += "\\t";
            continue;
        }
        if (c == '"' || c == '\\')
            *out += '\\';
        *out += c;
    }
}

/* What indents the lines of a double-quoted string, up to the column of its quote, is no part of it; nor are blanks before
 * a line break: a line that ends with some ends with an escape, and its string with it. */
std::string DoubleQuoted(std::string_view text, size_t column)
{
    std::string out = "\"";
    size_t indent = column + 1;
    for (;;) {
        size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        AppendEscaped(line, &out);
        if (end == std::string_view::npos)
            return out + '"';
        text.remove_prefix(end + 1);
        if (!line.empty() && (line.back() == ' ' || line.back() == '\r')) {
            out += "\\n\"\n" + std::string(column, ' ') + "+ \"";
            indent = column + 3;
        } else {
            out += '\n';
            if (text.empty())
                out.append(indent - 1, ' ');
            else if (text.front() != '\n')
                out.append(indent, ' ');
        }
    }
}

} // namespace

std::string CompactArgument(const OutlineItem &item, size_t column)
{
    std::string_view text = *item.argument;
    if (!item.isText && IsWord(text))
        return std::string(text);
    if (IsForSingleQuotes(text))
        return "'" + std::string(text) + "'";
    return DoubleQuoted(text, column);
}

} // namespace inspect
