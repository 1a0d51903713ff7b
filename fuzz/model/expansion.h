/* What %repeat, %nest and counted names stand for. */
#ifndef KORV_FUZZ_EXPANSION_H
#define KORV_FUZZ_EXPANSION_H

#include "statement.h"

namespace fuzz {

/* The tree with everything written out and without comments. It is cut where it gets too large to be loaded in the time of
 * one run. */
Statement Expand(const Statement &root);

/* The number that the text begins with, at most `most`. */
size_t Count(const std::string &text, size_t most);

} // namespace fuzz

#endif // KORV_FUZZ_EXPANSION_H
