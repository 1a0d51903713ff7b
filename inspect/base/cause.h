/* Something that is wrong with a model, and where. */
#pragma once

#include <cstdint>
#include <string>

namespace inspect {

struct Cause {
    std::string file;    /* as the command line names its directory; empty: not known */
    uint32_t line = 0;   /* 0: not known */
    uint32_t column = 0; /* 0: not known */
    std::string text;
    std::string module = {}; /* in whose file; empty: not known */
};

/* "FILE:LINE:COLUMN: " or what of it is known, else the module's name and ": ". */
std::string PlaceText(const Cause &cause, const std::string &module);

} // namespace inspect
