/* The benchmarks' result: one table of ratios, and beside them what a load or a query costs on any machine. */
#ifndef KORV_BENCH_TABLE_H
#define KORV_BENCH_TABLE_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bench {

/* What does not depend on the machine, where a row has it. */
struct Counts {
    std::optional<uint64_t> allocations;
    std::optional<uint64_t> hookCalls;
    std::optional<uint64_t> instructions;
};

struct Row {
    std::string measure;
    std::string against;
    double value; /* a ratio of medians, or bytes */
    double bound;
    Counts counts = {};

    bool Reached() const { return value <= bound; }
};

using Rows = std::vector<Row>;

void PrintTable(const Rows &rows);

/* False when the file cannot be written. */
bool WriteJson(const Rows &rows, const std::string &path);

/* "1234567" as "1,234,567". */
std::string Grouped(uint64_t number);

} // namespace bench

#endif // KORV_BENCH_TABLE_H
