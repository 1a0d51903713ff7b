/* What `check` has to say. */
#pragma once

#include <string>

#include "base/cause.h"
#include "check/rules.h"

namespace inspect {

struct Finding {
    Rule rule;
    std::string module;
    Cause cause;
    std::string path = {}; /* of the node that it is about; "" for anything else, and where the path adds nothing */
};

} // namespace inspect
