/* Names and the words of failure texts. */
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/schema_limits.h"

namespace qxyang {

/* A name as a model refers to it: "prefix:name", the prefix empty when there is none. */
struct Reference {
    std::string_view prefix;
    std::string_view name;
};

Reference SplitReference(std::string_view text);

/* RFC 7950, 6.2. */
bool IsIdentifier(std::string_view text);

/* An identifier, with or without a prefix and a colon before it. */
bool IsReference(std::string_view text);

/* A day of the calendar as YYYY-MM-DD: RFC 7950, 7.1.9. */
bool IsDate(std::string_view text);

/* Takes the next word off a text whose words are separated by white space. Empty when there is none. */
std::string_view TakeWord(std::string_view &text);

std::string_view Trim(std::string_view text);

/* True if every quote and bracket of an expression has its counterpart. */
bool HasCounterparts(std::string_view text);

inline std::string_view OrEmpty(const char *text)
{
    return text != nullptr ? text : std::string_view();
}

inline bool IsSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}
inline bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/* The text between single quotes, on one line and shortened when it is long. */
std::string Quoted(std::string_view text);

/* "a -> b -> a": a cycle, from the entry with the closing name to the end, and then that name again. */
template <class Names, class GetName>
std::string ChainText(const Names &names, std::string_view closing, GetName &&nameOf)
{
    std::string text;
    for (const auto &entry : names) {
        if (text.empty() && nameOf(entry) != closing)
            continue;
        text.append(nameOf(entry)).append(" -> ");
    }
    return text.append(closing);
}

/* How many names a load may still compare with wrong ones to find the nearest. */
struct NameBudget {
    size_t left = limits::NAMES_COMPARED;
};

/* What a hint begins with. */
inline constexpr std::string_view HINT = "; did you mean ";

/* "; did you mean 'prefix:name'?" */
std::string PrefixHint(std::string_view prefix, std::string_view name);

/* Finds the name that is nearest to a wrong one, and probably meant. */
class NearestName {
  public:
    /* For lists of names whose length no model decides. */
    explicit NearestName(std::string_view wanted);

    /* The budget pays for each name that is offered. The hint has the prefix, if any, in front of the name. */
    NearestName(NameBudget &budget, std::string_view wanted, std::string_view prefix = {});

    /* False if no name needs to be offered: none can be near, or the budget is spent. A search that has begun goes
     * on when the budget is spent, so that its hint does not depend on the order of the names. */
    bool IsOpen() const { return distance_ != 0; }

    void Offer(std::string_view candidate);

    /* "; did you mean 'x'?", or nothing when no candidate was near. */
    std::string Hint() const;

  private:
    NameBudget *budget_ = nullptr;
    std::string wanted_;
    std::string prefix_;
    std::string best_;
    size_t distance_; /* of the best name; before there is one, the largest that counts as near, or 0 if none does */
};

} // namespace qxyang
