#include "cycle.h"

#include "host.h"
#include "queries.h"
#include "runner.h"

namespace bench {
namespace {

/* Adds the time that the call takes to one of the iteration's parts. */
template <typename Call>
void TimePart(benchmark::State &state, const char *part, Call call)
{
    const double start = ThreadTime();
    call();
    benchmark::Counter &counter = state.counters[part];
    counter.value += ThreadTime() - start;
    counter.flags = benchmark::Counter::kAvgIterations;
}

} // namespace

void TimeCycles(benchmark::State &state, const std::string &dir, const std::string &name)
{
    for (auto _ : state) {
        const Instance instance(dir);
        TimePart(state, "load", [&] { instance.Load(name); });
        TimePart(state, "dump", [&] { Dump(instance.Local(), name).Free(); });
        TimePart(state, "travel", [&] { (void)Travel(instance, name); });
        TimePart(state, "unload", [&] { instance.Unload(name); });
    }
}

} // namespace bench
