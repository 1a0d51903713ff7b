#include "check/number_faults.h"

#include <cstdlib>

#include "base/numbers.h"
#include "base/text.h"

namespace inspect {
namespace {

bool IsHexadecimal(const std::string &keyword)
{
    return keyword == "class-id" || keyword == "tlmt-sample-id";
}

bool IsAttributeId(const std::string &keyword)
{
    return keyword == "field-id" || keyword == "ref-id-key-fid";
}

} // namespace

std::string ValueText(const std::string &keyword, const std::string &argument)
{
    Number number = ReadNumber(argument);
    if (number.refused)
        return "absent";
    if (IsHexadecimal(keyword))
        return Hex(number.value);
    return std::to_string(IsAttributeId(keyword) ? number.value & MAX_FIELD_ID : number.value);
}

std::string NoNumberText(const std::string &keyword, const std::string &argument)
{
    return keyword + " '" + argument + "' counts as absent: it is the number that stands for none";
}

bool IsOctal(const std::string &argument)
{
    Number number = ReadNumber(argument);
    size_t first = argument.find_first_not_of(" \t\r\n+");
    bool isOctal =
        first != std::string::npos && argument[first] == '0' && argument.find_first_of("xX") == std::string::npos;
    return number.wellFormed && isOctal && std::strtoull(argument.c_str(), nullptr, 10) != number.value;
}

std::optional<NumberFault> FaultOf(const std::string &keyword, const std::string &argument)
{
    Number number = ReadNumber(argument);
    std::string statement = keyword + " '" + argument + "'";
    std::string value = ValueText(keyword, argument);
    if (!number.wellFormed)
        return NumberFault{"bad-number", statement + " is no number: it counts as " + value};
    if (!number.fits && (!IsAttributeId(keyword) || number.refused)) // large attribute ids: field-id-range
        return NumberFault{"bad-number", statement +
                                             (number.refused ? " has more than 64 bits" : " has more than 32 bits") +
                                             ": it counts as " + value};
    if (number.fits && number.value == 0)
        return NumberFault{"misleading-number", statement + " counts as absent: leave it out, or write another number"};
    if (number.fits && number.value == NO_NUMBER && !IsHexadecimal(keyword) && keyword != "aaa-task-id")
        return NumberFault{"misleading-number", NoNumberText(keyword, argument)};
    if (IsOctal(argument))
        return NumberFault{"misleading-number",
                           statement + " is octal and counts as " + value + ": write it without the 0 in front"};
    return std::nullopt;
}

} // namespace inspect
