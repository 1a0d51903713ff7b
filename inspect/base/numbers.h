/* Numbers as the library reads them from statements. */
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

struct Number {
    bool wellFormed; /* nothing but the number */
    bool fits;       /* in 32 bits */
    bool refused;    /* the library refuses it: -1, and what has more than 64 bits */
    uint32_t value;  /* what the library makes of it, unless it refuses it */
};

/* Decimal, or with "0x" hexadecimal, or with "0" octal. */
Number ReadNumber(const std::string &text);

/* The same text for all ways to write a value of YANG; defaults may be hexadecimal or octal (RFC 7950, 9.2.1). */
std::string IntegerText(std::string_view text);
std::string DecimalText(std::string_view text);

/* The words between white space. */
std::vector<std::string> Words(const std::string &text);

} // namespace inspect
