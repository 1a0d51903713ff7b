/* Numbers as the library reads them from statements. */
#pragma once

#include <cstdint>
#include <string>
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

/* The words between white space. */
std::vector<std::string> Words(const std::string &text);

} // namespace inspect
