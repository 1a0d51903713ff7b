/* Forms of statement arguments. */
#pragma once

#include <string_view>

#include "keywords.h"

namespace qxyang {

bool hasForm(ArgumentForm form, std::string_view argument);

/* What the form expects, as the end of a sentence: "'true' or 'false'". */
const char *expectedOf(ArgumentForm form);

/* Number of the built-in type of that name, or 0. */
uint8_t builtinTypeNumber(std::string_view name);

/* Name of the built-in type of that number. */
std::string_view builtinTypeName(uint8_t number);

}  // namespace qxyang
