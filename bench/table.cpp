#include "table.h"

#include <algorithm>
#include <cstdio>

namespace bench {
namespace {

std::string Shown(const std::optional<uint64_t> &count)
{
    return count ? Grouped(*count) : "";
}

size_t Widest(const Rows &rows, std::string Row::*text, size_t least)
{
    for (const Row &row : rows)
        least = std::max(least, (row.*text).size());
    return least;
}

} // namespace

std::string Grouped(uint64_t number)
{
    std::string text = std::to_string(number);
    for (size_t at = text.size(); at > 3;)
        text.insert(at -= 3, 1, ',');
    return text;
}

void PrintTable(const Rows &rows)
{
    const int measure = static_cast<int>(Widest(rows, &Row::measure, 7));
    const int against = static_cast<int>(Widest(rows, &Row::against, 7));
    std::printf("\n%-*s  %-*s  %7s  %8s  %-4s  %12s  %12s  %15s\n", measure, "measure", against, "against", "ratio",
                "to reach", "", "allocations", "hook calls", "instructions");
    for (const Row &row : rows)
        std::printf("%-*s  %-*s  %7.2f  %8.2f  %-4s  %12s  %12s  %15s\n", measure, row.measure.c_str(), against,
                    row.against.c_str(), row.value, row.bound, row.Reached() ? "ok" : "over",
                    Shown(row.counts.allocations).c_str(), Shown(row.counts.hookCalls).c_str(),
                    Shown(row.counts.instructions).c_str());
    std::printf("\nTimes are processor times, a ratio is one of medians of repetitions taken in turn.\n");
}

} // namespace bench
