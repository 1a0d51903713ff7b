/* Numbers as the library reads them from statements. */
#ifndef KORV_INSPECT_NUMBERS_H
#define KORV_INSPECT_NUMBERS_H

#include <cstdint>
#include <string>
#include <vector>

namespace inspect {

struct Number {
    bool wellFormed; /* nothing but the number */
    bool fits;       /* in 32 bits */
    uint32_t value;  /* what the library makes of it */
};

/* Decimal, or with "0x" hexadecimal, or with "0" octal. */
Number ReadNumber(const std::string &text);

/* What white space separates. */
std::vector<std::string> Words(const std::string &text);

} // namespace inspect

#endif // KORV_INSPECT_NUMBERS_H
