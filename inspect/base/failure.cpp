#include "base/failure.h"

namespace inspect {

const char *KindName(const Failure &failure)
{
    if (dynamic_cast<const BrokenRun *>(&failure) != nullptr)
        return "failed";
    switch (failure.exitCode) {
        case EXIT_USAGE:
            return "usage";
        case EXIT_NOT_LOADED:
            return "not-loaded";
        default:
            return "not-found";
    }
}

} // namespace inspect
