#include "base/cause.h"

namespace inspect {

std::string PlaceText(const Cause &cause, const std::string &module)
{
    if (cause.file.empty())
        return module + ": ";
    std::string place = cause.file + ":";
    if (cause.line != 0)
        place += std::to_string(cause.line) + ":";
    if (cause.column != 0)
        place += std::to_string(cause.column) + ":";
    return place + " ";
}

} // namespace inspect
