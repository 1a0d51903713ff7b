/* Forms of statements and of their arguments. */
#include <algorithm>
#include <array>
#include <cctype>

#include "check/yang/statement_check.h"

namespace inspect {
namespace {

constexpr std::string_view BLANKS = " \t\r\n";

template <size_t N>
bool IsOneOf(const std::array<std::string_view, N> &words, std::string_view word)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

constexpr std::array<std::string_view, 8> DATA = {"anydata", "anyxml",    "choice", "container",
                                                  "leaf",    "leaf-list", "list",   "uses"};
constexpr std::array<std::string_view, 3> ADDED = {"action", "case", "notification"};

void CheckEmpty(StatementCheck &check, const QXYANG_STATEMENT_S &statement)
{
    bool isAugment = IsYang(statement, "augment");
    bool defines = false;
    ForEachIn(check.File().file, statement, [&](const QXYANG_STATEMENT_S &child) {
        defines |= child.pcPrefix == nullptr &&
                   (IsOneOf(DATA, child.pcKeyword) || (isAugment && IsOneOf(ADDED, child.pcKeyword)));
    });
    if (!defines)
        check.Report("empty-statement", HeadText(statement) + " defines no node", statement);
}

bool HasLeadingZero(std::string_view number)
{
    if (number.starts_with('-'))
        number.remove_prefix(1);
    return number.size() > 1 && number[0] == '0' && number[1] >= '0' && number[1] <= '9';
}

void CheckNumber(StatementCheck &check, const QXYANG_STATEMENT_S &statement)
{
    if (HasLeadingZero(ArgumentOf(statement)))
        check.Report("leading-zero", HeadText(statement) + " begins with 0", statement);
}

/* Numbers are the words between blanks, bars and pairs of dots; the dot of a decimal number has a digit behind it. */
void CheckBounds(StatementCheck &check, const QXYANG_STATEMENT_S &statement)
{
    std::string_view rest = ArgumentOf(statement);
    while (!rest.empty()) {
        size_t end = 0;
        while (end < rest.size() && BLANKS.find(rest[end]) == std::string_view::npos && rest[end] != '|' &&
               !rest.substr(end).starts_with(".."))
            ++end;
        if (HasLeadingZero(rest.substr(0, end))) {
            check.Report("leading-zero",
                         HeadText(statement) + ": " + std::string(rest.substr(0, end)) + " begins with 0", statement);
            return;
        }
        rest.remove_prefix(std::min(rest.size(), end + (rest.substr(end).starts_with("..") ? 2 : 1)));
    }
}

void CheckPathBlanks(StatementCheck &check, const QXYANG_STATEMENT_S &statement)
{
    if (ArgumentOf(statement).find_first_of(BLANKS) != std::string_view::npos)
        check.Report("schema-path-blanks", HeadText(statement) + " has blanks in its path", statement);
}

void CheckName(StatementCheck &check, const QXYANG_STATEMENT_S &statement)
{
    constexpr std::string_view REFUSED = "xml";
    std::string_view begin = ArgumentOf(statement).substr(0, REFUSED.size());
    auto isSame = [](char left, char right) { return (left | 0x20) == right; };
    if (!check.File().names.isVersion11 &&
        std::equal(begin.begin(), begin.end(), REFUSED.begin(), REFUSED.end(), isSame))
        check.Report("xml-name", "the name of " + HeadText(statement) + " begins with 'xml'", statement);
}

/* What RFC 3986 allows behind the scheme; the order of it is not looked at. */
bool IsUriCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 ||
           std::string_view("-._~:/?#[]@!$&'()*+,;=%").find(c) != std::string_view::npos;
}

bool IsSchemeCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '+' || c == '-' || c == '.';
}

void CheckNamespaceForm(StatementCheck &check, const QXYANG_STATEMENT_S &statement)
{
    std::string_view uri = ArgumentOf(statement);
    std::string_view scheme = uri.substr(0, uri.find(':'));
    bool hasScheme = scheme.size() < uri.size() && !scheme.empty() &&
                     std::isalpha(static_cast<unsigned char>(scheme[0])) != 0 &&
                     std::all_of(scheme.begin(), scheme.end(), IsSchemeCharacter);
    if (!hasScheme)
        check.Report("relative-namespace", HeadText(statement) + " is no absolute URI: it has no scheme, as in 'urn:'",
                     statement);
    else if (!std::all_of(uri.begin(), uri.end(), IsUriCharacter))
        check.Report("relative-namespace", HeadText(statement) + " has characters that no URI has", statement);
}

constexpr KeywordRule RULES[] = {
    {"input", CheckEmpty},
    {"output", CheckEmpty},
    {"list", CheckEmpty},
    {"augment", CheckEmpty},
    {"min-elements", CheckNumber},
    {"max-elements", CheckNumber},
    {"position", CheckNumber},
    {"value", CheckNumber},
    {"fraction-digits", CheckNumber},
    {"range", CheckBounds},
    {"length", CheckBounds},
    {"augment", CheckPathBlanks},
    {"refine", CheckPathBlanks},
    {"deviation", CheckPathBlanks},
    {"namespace", CheckNamespaceForm},
    /* what RFC 6020 calls an identifier */
    {"module", CheckName},
    {"submodule", CheckName},
    {"prefix", CheckName},
    {"extension", CheckName},
    {"argument", CheckName},
    {"identity", CheckName},
    {"feature", CheckName},
    {"typedef", CheckName},
    {"grouping", CheckName},
    {"bit", CheckName},
    {"container", CheckName},
    {"leaf", CheckName},
    {"leaf-list", CheckName},
    {"list", CheckName},
    {"choice", CheckName},
    {"case", CheckName},
    {"anyxml", CheckName},
    {"rpc", CheckName},
    {"notification", CheckName},
};

} // namespace

constinit const std::span<const KeywordRule> FORM_RULES = RULES;

} // namespace inspect
