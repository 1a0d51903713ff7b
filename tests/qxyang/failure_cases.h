/* Tables of models that do not load. */
#pragma once

#include <string>
#include <vector>

namespace test {

struct FailureCase {
    std::string text;     /* of the body of module 'm', which begins on line 2 */
    const char *failures; /* a line each; '@' stands for "m.yin:2:" */
};

/* Loads module 'm' of each case, which imports a module 'other', and compares its failures. */
void ExpectFailures(const std::vector<FailureCase> &cases);

} // namespace test
