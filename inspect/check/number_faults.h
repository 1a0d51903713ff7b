/* Numbers of extension statements that do not say what they count as. */
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include "check/rules.h"

namespace inspect {

inline constexpr uint32_t MAX_FIELD_ID = 255; /* attribute ids have 8 bits */

struct NumberFault {
    Rule rule;
    std::string text;
};

/* What is wrong with the number that a statement has, or nothing. Attribute ids beyond 255 are no fault here. */
std::optional<NumberFault> FaultOf(const std::string &keyword, const std::string &argument);

/* The number that stands for none, and what is said where it does. */
inline constexpr uint32_t NO_NUMBER = std::numeric_limits<uint32_t>::max();
std::string NoNumberText(const std::string &keyword, const std::string &argument);

/* True if the number is octal and means another one than its digits say. */
bool IsOctal(const std::string &argument);

/* What the library makes of the number, in the form that the statement's numbers have. */
std::string ValueText(const std::string &keyword, const std::string &argument);

} // namespace inspect
