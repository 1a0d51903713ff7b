/* The life of a module: loaded, dumped, travelled and unloaded, each part timed by itself. */
#ifndef KORV_BENCH_CYCLE_H
#define KORV_BENCH_CYCLE_H

#include <benchmark/benchmark.h>

#include <string>

namespace bench {

/* One iteration a cycle; the parts' times are its counters "load", "dump", "travel" and "unload". */
void TimeCycles(benchmark::State &state, const std::string &dir, const std::string &name);

} // namespace bench

#endif // KORV_BENCH_CYCLE_H
