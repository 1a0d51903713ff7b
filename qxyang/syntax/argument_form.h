/* Forms of statement arguments, and the names of the built-in types. */
#pragma once

#include <string_view>

#include "syntax/keywords.h"

namespace qxyang {

/* True if the argument has that form. */
bool HasForm(ArgumentForm form, std::string_view argument);

/* What the form expects, as the end of a sentence: "'true' or 'false'". */
const char *ExpectedOf(ArgumentForm form);

/* Number of the built-in type of that name, or 0. */
uint8_t BuiltinTypeNumber(std::string_view name);

/* Name of the built-in type of that number. */
std::string_view BuiltinTypeName(uint8_t number);

} // namespace qxyang
