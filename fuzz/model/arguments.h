/* Arguments at and beyond what their statements allow. */
#ifndef KORV_FUZZ_ARGUMENTS_H
#define KORV_FUZZ_ARGUMENTS_H

#include <string>

#include "random.h"

namespace fuzz {

/* How many links a chain gets: mostly few, sometimes around the limits that a reader may have, sometimes far more. */
size_t ChainLength(Random *random);

std::string ExtremeNumber(Random *random);
std::string ExtremeText(Random *random);

/* An argument that the statement may have, or that looks like one. */
std::string ArgumentFor(const std::string &keyword, Random *random);

} // namespace fuzz

#endif // KORV_FUZZ_ARGUMENTS_H
