/* What a rule of `check` is. */
#pragma once

#include <cstdint>

namespace inspect {

enum class Severity : uint8_t {
    Error, /* the module, or what deviates from it, cannot be loaded */
    Warning
};

struct RuleRow {
    const char *name; /* short; stays the same from release to release */
    Severity severity;
    const char *section;  /* of the RFC that has the rule; null: the rule is the tool's own */
    const char *purpose;  /* what a finding of the rule means */
    uint32_t rfc = 7950U; /* number of that RFC */
    bool isOfAll = false; /* other modules decide: a module that is checked alone may lack findings of the rule */
};

} // namespace inspect
