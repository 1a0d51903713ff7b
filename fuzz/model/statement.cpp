#include "statement.h"

#include <algorithm>

namespace fuzz {
namespace {

constexpr size_t BLANKS_A_LEVEL = 2;
constexpr size_t DEPTH = 2000;
constexpr size_t LINES = 20000;

int Digit(char c)
{
    constexpr std::string_view DIGITS = "0123456789abcdef";
    const size_t at = DIGITS.find(c);
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

std::string Escaped(std::string_view text)
{
    constexpr std::string_view DIGITS = "0123456789abcdef";
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool outerBlank = byte == ' ' && (i == 0 || i + 1 == text.size());
        if (byte == '\\')
            out += "\\\\";
        else if (byte < 0x20 || byte > 0x7e || outerBlank)
            out.append("\\x").append(1, DIGITS[byte >> 4]).append(1, DIGITS[byte & 15]);
        else
            out += text[i];
    }
    return out;
}

std::string Unescaped(std::string_view text)
{
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i];
        } else if (text[i + 1] == 'x' && i + 3 < text.size() && Digit(text[i + 2]) >= 0 && Digit(text[i + 3]) >= 0) {
            out += static_cast<char>(Digit(text[i + 2]) * 16 + Digit(text[i + 3]));
            i += 3;
        } else {
            out += text[++i];
        }
    }
    return out;
}

/* A keyword is written as it stands, so that it must hold nothing that ends it. */
std::string Keyword(std::string_view text)
{
    std::string out;
    for (const char c : text)
        out += c > 0x20 && c < 0x7f ? c : '?';
    return out;
}

void Append(const Statement &statement, size_t depth, std::string *out)
{
    out->append(depth * BLANKS_A_LEVEL, ' ').append(statement.keyword);
    if (!statement.argument.empty())
        out->append(" ").append(Escaped(statement.argument));
    *out += '\n';
    for (const Statement &child : statement.children)
        Append(child, depth + 1, out);
}

} // namespace

Statement ParseStatements(std::string_view text)
{
    Statement root;
    std::vector<Statement *> open = {&root}; /* the statement of the last line, and those above it */
    for (size_t lines = 0; !text.empty() && lines < LINES; ++lines) {
        std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        const size_t blanks = std::min(line.find_first_not_of(' '), line.size());
        line.remove_prefix(blanks);
        if (line.empty())
            continue;
        open.resize(std::min({blanks / BLANKS_A_LEVEL + 1, open.size(), DEPTH}));
        const size_t end = std::min(line.find(' '), line.size());
        const std::string_view argument = end < line.size() ? line.substr(end + 1) : std::string_view();
        open.back()->children.push_back({Keyword(line.substr(0, end)), Unescaped(argument), {}});
        open.push_back(&open.back()->children.back());
    }
    return root;
}

std::string ToText(const Statement &root)
{
    std::string out;
    for (const Statement &child : root.children)
        Append(child, 0, &out);
    return out;
}

const Statement *FindChild(const Statement &parent, std::string_view keyword)
{
    for (const Statement &child : parent.children) {
        if (child.keyword == keyword)
            return &child;
    }
    return nullptr;
}

std::string ChildArgument(const Statement &parent, std::string_view keyword)
{
    const Statement *child = FindChild(parent, keyword);
    return child != nullptr ? child->argument : std::string();
}

bool IsPseudo(const Statement &statement)
{
    return statement.keyword.front() == '%' || statement.keyword.front() == '#';
}

} // namespace fuzz
