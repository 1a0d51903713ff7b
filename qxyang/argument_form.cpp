#include "argument_form.h"

#include <korv_platform.h>

#include <charconv>
#include <cstdint>

#include "text.h"

namespace qxyang {

namespace {

template<class Number>
bool isNumber(std::string_view text, Number &value)
{
    if (text.size() > 1 && text[0] == '-' && !isDigit(text[1]))
        return false;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

bool isInteger(std::string_view text)
{
    int32_t value;
    return isNumber(text, value);
}

bool isCount(std::string_view text)
{
    uint32_t value;
    return isNumber(text, value);
}

bool isMaximum(std::string_view text)
{
    uint32_t value;
    return text == "unbounded" || (isNumber(text, value) && value > 0);
}

bool isFractionDigits(std::string_view text)
{
    uint32_t value;
    return isNumber(text, value) && value >= 1 && value <= 18;
}

bool isOneOf(std::string_view text, std::initializer_list<std::string_view> words)
{
    for (std::string_view word : words)
        if (text == word)
            return true;
    return false;
}

constexpr std::string_view kBuiltinTypes[] = {
    "",       "binary", "bits",  "boolean", "decimal64", "empty",  "enumeration", "identityref", "instance-identifier",
    "int8",   "int16",  "int32", "int64",   "leafref",   "string", "uint8",       "uint16",      "uint32",
    "uint64", "union",
};
static_assert(std::size(kBuiltinTypes) == QY_TYPE_UNION + 1);
static_assert(kBuiltinTypes[QY_TYPE_LEAFREF] == "leafref" && kBuiltinTypes[QY_TYPE_UNION] == "union");

}  // namespace

bool hasForm(ArgumentForm form, std::string_view argument)
{
    switch (form) {
        case ArgumentForm::kNone:
        case ArgumentForm::kText:
            return true;
        case ArgumentForm::kIdentifier:
            return isIdentifier(argument);
        case ArgumentForm::kReference:
            return isReference(argument);
        case ArgumentForm::kBoolean:
            return isOneOf(argument, {"true", "false"});
        case ArgumentForm::kDate:
            return isDate(argument);
        case ArgumentForm::kStatus:
            return isOneOf(argument, {"current", "deprecated", "obsolete"});
        case ArgumentForm::kOrderedBy:
            return isOneOf(argument, {"system", "user"});
        case ArgumentForm::kYangVersion:
            return isOneOf(argument, {"1", "1.1"});
        case ArgumentForm::kDeviateKind:
            return isOneOf(argument, {"not-supported", "add", "replace", "delete"});
        case ArgumentForm::kModifier:
            return argument == "invert-match";
        case ArgumentForm::kInteger:
            return isInteger(argument);
        case ArgumentForm::kCount:
            return isCount(argument);
        case ArgumentForm::kMaximum:
            return isMaximum(argument);
        case ArgumentForm::kFractionDigits:
            return isFractionDigits(argument);
        case ArgumentForm::kEnumName:
            return !argument.empty() && trim(argument).size() == argument.size();
        case ArgumentForm::kNonEmpty:
            return !trim(argument).empty();
    }
    return false;
}

const char *expectedOf(ArgumentForm form)
{
    switch (form) {
        case ArgumentForm::kNone:
        case ArgumentForm::kText:
            return "a text";
        case ArgumentForm::kIdentifier:
            return "an identifier";
        case ArgumentForm::kReference:
            return "an identifier, or a prefix, a colon and an identifier";
        case ArgumentForm::kBoolean:
            return "'true' or 'false'";
        case ArgumentForm::kDate:
            return "a date of the form YYYY-MM-DD";
        case ArgumentForm::kStatus:
            return "'current', 'deprecated' or 'obsolete'";
        case ArgumentForm::kOrderedBy:
            return "'system' or 'user'";
        case ArgumentForm::kYangVersion:
            return "'1' or '1.1'";
        case ArgumentForm::kDeviateKind:
            return "'not-supported', 'add', 'replace' or 'delete'";
        case ArgumentForm::kModifier:
            return "'invert-match'";
        case ArgumentForm::kInteger:
            return "a number from -2147483648 to 2147483647";
        case ArgumentForm::kCount:
            return "a number from 0 to 4294967295";
        case ArgumentForm::kMaximum:
            return "a number from 1 to 4294967295, or 'unbounded'";
        case ArgumentForm::kFractionDigits:
            return "a number from 1 to 18";
        case ArgumentForm::kEnumName:
            return "a text without white space around it";
        case ArgumentForm::kNonEmpty:
            return "a text that is not empty";
    }
    return "";
}

uint8_t builtinTypeNumber(std::string_view name)
{
    for (uint8_t number = 1; number < std::size(kBuiltinTypes); ++number)
        if (kBuiltinTypes[number] == name)
            return number;
    return 0;
}

std::string_view builtinTypeName(uint8_t number)
{
    return kBuiltinTypes[number];
}

}  // namespace qxyang
