/* What a few operations execute, compared with what they executed when a file was written. */
#ifndef KORV_BENCH_COMPARE_H
#define KORV_BENCH_COMPARE_H

#include <string>

namespace bench {

/* Prints each operation with both numbers. False when one of them has grown by more than 3 %, or cannot be counted. */
bool CompareInstructions(const std::string &file);

/* Writes the file with what the operations execute now. */
bool WriteInstructions(const std::string &file);

} // namespace bench

#endif // KORV_BENCH_COMPARE_H
