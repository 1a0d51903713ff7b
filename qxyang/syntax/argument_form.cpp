#include "syntax/argument_form.h"

#include <korv_platform.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <initializer_list>

#include "base/text.h"

namespace qxyang {

namespace {

template <class Number>
bool IsNumber(std::string_view text, Number &value)
{
    if (text.size() > 1 && text[0] == '-' && !IsDigit(text[1]))
        return false;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

bool IsInteger(std::string_view text)
{
    int32_t value;
    return IsNumber(text, value);
}

bool IsPosition(std::string_view text)
{
    uint32_t value;
    return IsNumber(text, value);
}

/* Of any size. */
bool IsCount(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

bool IsMaximum(std::string_view text)
{
    return text == "unbounded" || (IsCount(text) && text.find_first_not_of('0') != std::string_view::npos);
}

bool IsFractionDigits(std::string_view text)
{
    uint32_t value;
    return IsNumber(text, value) && value >= 1 && value <= 18;
}

bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> words)
{
    for (std::string_view word : words)
        if (text == word)
            return true;
    return false;
}

constexpr std::string_view BUILTIN_TYPES[] = {
    "",       "binary", "bits",  "boolean", "decimal64", "empty",  "enumeration", "identityref", "instance-identifier",
    "int8",   "int16",  "int32", "int64",   "leafref",   "string", "uint8",       "uint16",      "uint32",
    "uint64", "union",
};
static_assert(std::size(BUILTIN_TYPES) == QY_TYPE_UNION + 1);
static_assert(BUILTIN_TYPES[QY_TYPE_LEAFREF] == "leafref" && BUILTIN_TYPES[QY_TYPE_UNION] == "union");

} // namespace

bool HasForm(ArgumentForm form, std::string_view argument)
{
    switch (form) {
        case ArgumentForm::None:
        case ArgumentForm::Text:
            return true;
        case ArgumentForm::Identifier:
            return IsIdentifier(argument);
        case ArgumentForm::Reference:
            return IsReference(argument);
        case ArgumentForm::Boolean:
            return IsOneOf(argument, {"true", "false"});
        case ArgumentForm::Date:
            return IsDate(argument);
        case ArgumentForm::Status:
            return IsOneOf(argument, {"current", "deprecated", "obsolete"});
        case ArgumentForm::OrderedBy:
            return IsOneOf(argument, {"system", "user"});
        case ArgumentForm::YangVersion:
            return IsOneOf(argument, {"1", "1.1"});
        case ArgumentForm::DeviateKind:
            return IsOneOf(argument, {"not-supported", "add", "replace", "delete"});
        case ArgumentForm::Modifier:
            return argument == "invert-match";
        case ArgumentForm::Integer:
            return IsInteger(argument);
        case ArgumentForm::Position:
            return IsPosition(argument);
        case ArgumentForm::Count:
            return IsCount(argument);
        case ArgumentForm::Maximum:
            return IsMaximum(argument);
        case ArgumentForm::FractionDigits:
            return IsFractionDigits(argument);
        case ArgumentForm::EnumName:
            return !argument.empty() && Trim(argument).size() == argument.size();
        case ArgumentForm::NonEmpty:
            return !Trim(argument).empty();
        case ArgumentForm::Condition:
            return !Trim(argument).empty() && HasCounterparts(argument);
    }
    return false;
}

const char *ExpectedOf(ArgumentForm form)
{
    switch (form) {
        case ArgumentForm::None:
        case ArgumentForm::Text:
            return "a text";
        case ArgumentForm::Identifier:
            return "an identifier";
        case ArgumentForm::Reference:
            return "an identifier, or a prefix, a colon and an identifier";
        case ArgumentForm::Boolean:
            return "'true' or 'false'";
        case ArgumentForm::Date:
            return "a date of the form YYYY-MM-DD";
        case ArgumentForm::Status:
            return "'current', 'deprecated' or 'obsolete'";
        case ArgumentForm::OrderedBy:
            return "'system' or 'user'";
        case ArgumentForm::YangVersion:
            return "'1' or '1.1'";
        case ArgumentForm::DeviateKind:
            return "'not-supported', 'add', 'replace' or 'delete'";
        case ArgumentForm::Modifier:
            return "'invert-match'";
        case ArgumentForm::Integer:
            return "a number from -2147483648 to 2147483647";
        case ArgumentForm::Position:
            return "a number from 0 to 4294967295";
        case ArgumentForm::Count:
            return "a number";
        case ArgumentForm::Maximum:
            return "a number above 0, or 'unbounded'";
        case ArgumentForm::FractionDigits:
            return "a number from 1 to 18";
        case ArgumentForm::EnumName:
            return "a text without white space around it";
        case ArgumentForm::NonEmpty:
            return "a text that is not empty";
        case ArgumentForm::Condition:
            return "an XPath expression whose quotes and brackets match";
    }
    return "";
}

uint8_t BuiltinTypeNumber(std::string_view name)
{
    for (uint8_t number = 1; number <= QY_TYPE_UNION; ++number)
        if (BUILTIN_TYPES[number] == name)
            return number;
    return 0;
}

std::string_view BuiltinTypeName(uint8_t number)
{
    return BUILTIN_TYPES[number];
}

} // namespace qxyang
