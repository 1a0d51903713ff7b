#include "base/text.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/schema_limits.h"

namespace qxyang {

namespace {

constexpr std::array<bool, 256> MakeNameCharacters(bool first)
{
    std::array<bool, 256> table{};
    for (char c = 'a'; c <= 'z'; ++c)
        table[static_cast<unsigned char>(c)] = true;
    for (char c = 'A'; c <= 'Z'; ++c)
        table[static_cast<unsigned char>(c)] = true;
    table['_'] = true;
    if (first)
        return table;
    for (char c = '0'; c <= '9'; ++c)
        table[static_cast<unsigned char>(c)] = true;
    table['-'] = table['.'] = true;
    return table;
}

constexpr std::array<bool, 256> FIRST_CHARACTERS = MakeNameCharacters(true);
constexpr std::array<bool, 256> NAME_CHARACTERS = MakeNameCharacters(false);

/* How many single-character edits lead from one name to the other; swapping two neighbours is one edit. Any number
 * above the limit stands for more than the limit. Only cells of the table that are near its diagonal can stay below
 * the limit. */
size_t EditDistance(std::string_view left, std::string_view right, size_t limit)
{
    constexpr size_t MAX = 64;
    if (left.size() > MAX || right.size() > MAX)
        return limit + 1;
    std::array<std::array<size_t, MAX + 1>, 3> rows;
    size_t *before = rows[0].data();
    size_t *previous = rows[1].data();
    size_t *current = rows[2].data();
    for (size_t j = 0; j <= std::min(right.size(), limit + 1); ++j)
        previous[j] = j;
    for (size_t i = 1; i <= left.size(); ++i) {
        size_t first = i > limit ? i - limit : 1;
        size_t last = std::min(right.size(), i + limit);
        size_t least = current[first - 1] = first == 1 ? i : limit + 1;
        for (size_t j = first; j <= last; ++j) {
            size_t change = previous[j - 1] + (left[i - 1] == right[j - 1] ? 0 : 1);
            current[j] = std::min({change, previous[j] + 1, current[j - 1] + 1});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1])
                current[j] = std::min(current[j], before[j - 2] + 1);
            least = std::min(least, current[j]);
        }
        if (least > limit)
            return limit + 1;
        if (last < right.size())
            current[last + 1] = limit + 1;
        std::swap(before, previous);
        std::swap(previous, current);
    }
    return previous[right.size()];
}

/* Writes a control character as an escape, so that the text stays on one line. */
void AppendPrintable(std::string &text, char c)
{
    auto code = static_cast<unsigned char>(c);
    if (c == '\n')
        text += "\\n";
    else if (code < 0x20 || code == 0x7F)
        text.append("\\x").append(1, "0123456789ABCDEF"[code >> 4]).append(1, "0123456789ABCDEF"[code & 15]);
    else
        text += c;
}

} // namespace

Reference SplitReference(std::string_view text)
{
    size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        return {{}, text};
    return {text.substr(0, colon), text.substr(colon + 1)};
}

bool IsIdentifier(std::string_view text)
{
    if (text.empty() || text.size() > limits::NAME_LENGTH || !FIRST_CHARACTERS[static_cast<unsigned char>(text[0])])
        return false;
    for (char c : text)
        if (!NAME_CHARACTERS[static_cast<unsigned char>(c)])
            return false;
    return true;
}

bool IsReference(std::string_view text)
{
    Reference reference = SplitReference(text);
    bool unprefixed = reference.name.size() == text.size();
    return IsIdentifier(reference.name) && (unprefixed || IsIdentifier(reference.prefix));
}

bool IsDate(std::string_view text)
{
    constexpr std::string_view FORM = "dddd-dd-dd";
    if (text.size() != FORM.size())
        return false;
    for (size_t i = 0; i < FORM.size(); ++i)
        if (FORM[i] == 'd' ? !IsDigit(text[i]) : text[i] != '-')
            return false;
    auto number = [text](size_t at) { return (text[at] - '0') * 10 + (text[at + 1] - '0'); };
    int month = number(5);
    int day = number(8);
    bool isLeap = number(2) % 4 == 0 && (number(2) != 0 || number(0) % 4 == 0);
    constexpr int DAYS[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month >= 1 && month <= 12 && day >= 1 && day <= DAYS[month - 1] + (month == 2 && isLeap ? 1 : 0);
}

std::string_view TakeWord(std::string_view &text)
{
    size_t begin = 0;
    while (begin < text.size() && IsSpace(text[begin]))
        ++begin;
    size_t end = begin;
    while (end < text.size() && !IsSpace(text[end]))
        ++end;
    std::string_view word = text.substr(begin, end - begin);
    text.remove_prefix(end);
    return word;
}

std::string_view Trim(std::string_view text)
{
    while (!text.empty() && IsSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

bool HasCounterparts(std::string_view text)
{
    std::string open; // brackets that wait for their counterparts
    char quote = '\0';
    for (char c : text) {
        if (quote != '\0') {
            quote = c == quote ? '\0' : quote;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '(' || c == '[') {
            open += c;
        } else if (c == ')' || c == ']') {
            if (open.empty() || open.back() != (c == ')' ? '(' : '['))
                return false;
            open.pop_back();
        }
    }
    return open.empty() && quote == '\0';
}

std::string Quoted(std::string_view text)
{
    size_t end = std::min(text.size(), limits::QUOTED_LENGTH);
    while (end > 0 && end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) // within a character
        --end;
    std::string quoted = "'";
    for (char c : text.substr(0, end))
        AppendPrintable(quoted, c);
    return quoted.append(end < text.size() ? "...'" : "'");
}

std::string PrefixHint(std::string_view prefix, std::string_view name)
{
    return std::string(HINT) + Quoted(std::string(prefix).append(":").append(name)) + "?";
}

/* No name is near one of one or two letters: a single edit makes it another word. */
NearestName::NearestName(std::string_view wanted) : wanted_(wanted.substr(0, limits::QUOTED_LENGTH)), distance_(0)
{
    if (wanted.size() >= 3)
        distance_ = std::clamp<size_t>(wanted.size() / 3, 1, 4);
}

NearestName::NearestName(NameBudget &budget, std::string_view wanted, std::string_view prefix) : NearestName(wanted)
{
    budget_ = &budget;
    prefix_ = prefix;
    if (budget.left == 0)
        distance_ = 0;
}

void NearestName::Offer(std::string_view candidate)
{
    if (budget_ != nullptr && budget_->left > 0)
        --budget_->left;
    size_t difference =
        wanted_.size() > candidate.size() ? wanted_.size() - candidate.size() : candidate.size() - wanted_.size();
    if (distance_ == 0 || difference > distance_ || candidate.empty() || candidate == wanted_)
        return;
    size_t distance = EditDistance(wanted_, candidate, distance_);
    // The alphabet decides between names that are equally near, so that the order of the offers does not matter.
    bool better = distance < distance_ || (distance == distance_ && (best_.empty() || candidate < best_));
    if (!better)
        return;
    best_ = candidate;
    distance_ = distance;
}

std::string NearestName::Hint() const
{
    if (best_.empty())
        return {};
    return std::string(HINT) + Quoted(prefix_.empty() ? best_ : prefix_ + ":" + best_) + "?";
}

} // namespace qxyang
