/* Numbers of extension statements that do not say what they count as. */
#pragma once

#include <optional>
#include <string>

#include "check/rules.h"

namespace inspect {

struct NumberFault {
    Rule rule;
    std::string text;
};

/* What is wrong with the number that a statement has, or nothing. Attribute ids beyond 255 are no fault here. */
std::optional<NumberFault> FaultOf(const std::string &keyword, const std::string &argument);

/* True if the number is octal and means another one than its digits say. */
bool IsOctal(const std::string &argument);

/* What the library makes of the number, in the form that the statement's numbers have. */
std::string ValueText(const std::string &keyword, const std::string &argument);

} // namespace inspect
