/* What grows with the model grows no faster than it. */
#include "allocator.h"
#include "cycle.h"
#include "host.h"
#include "model_generator.h"
#include "rows.h"

namespace bench {
namespace {

constexpr char SMALL[] = "bench-growth-small";
constexpr char LARGE[] = "bench-growth-large";
constexpr uint32_t NODES = 100000;
constexpr uint32_t FACTOR = 10;

} // namespace

Rows GrowthRows(Runner &runner, const ModelFiles &files)
{
    (void)files.Add(SMALL, MixedModule(SMALL, NODES));
    (void)files.Add(LARGE, MixedModule(LARGE, NODES * FACTOR));
    runner.Add(
        "growth_small", [&](benchmark::State &state) { TimeCycles(state, files.Dir(), SMALL); }, FACTOR);
    runner.Add(
        "growth_large", [&](benchmark::State &state) { TimeCycles(state, files.Dir(), LARGE); }, 1);
    const KeptMemory kept;
    Instance(files.Dir()).Load(LARGE); /* the memory that all cycles use */
    runner.Run();
    Rows rows;
    for (const char *part : {"load", "dump", "travel", "unload"})
        rows.push_back({std::string(part) + " at " + Grouped(NODES * FACTOR) + " nodes",
                        "ten times the same at " + Grouped(NODES),
                        runner.Median("growth_large", part) / (FACTOR * runner.Median("growth_small", part)), 1.15});
    return rows;
}

} // namespace bench
