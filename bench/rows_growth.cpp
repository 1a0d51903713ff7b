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

constexpr uint32_t FEW = 200;
constexpr uint32_t MANY = 1600;
constexpr uint32_t LEAVES = 40;

/* Loads that many modules, then times that they are unloaded one by one in load order. */
void UnloadOneByOne(benchmark::State &state, const std::string &dir, const std::vector<std::string> &names,
                    uint32_t count)
{
    for (auto _ : state) {
        const Instance instance(dir);
        for (uint32_t i = 0; i < count; ++i)
            instance.Load(names[i]);
        const double start = ThreadTime();
        for (uint32_t i = 0; i < count; ++i)
            instance.Unload(names[i]);
        state.counters["unload"] = ThreadTime() - start;
    }
}

Row UnloadRow(Runner &runner, const ModelFiles &files)
{
    std::vector<std::string> names;
    for (uint32_t i = 0; i < MANY; ++i) {
        names.push_back("bench-flat-" + std::to_string(i));
        (void)files.Add(names.back(), FlatModule(names.back(), LEAVES));
    }
    runner.Add(
        "unload_few", [&](benchmark::State &state) { UnloadOneByOne(state, files.Dir(), names, FEW); }, MANY / FEW);
    runner.Add(
        "unload_many", [&](benchmark::State &state) { UnloadOneByOne(state, files.Dir(), names, MANY); }, 1);
    const KeptMemory kept;
    runner.Run();
    return {"unload of " + Grouped(MANY) + " modules one by one",
            std::to_string(MANY / FEW) + " times the same for " + Grouped(FEW),
            runner.Median("unload_many", "unload") / (MANY / FEW * runner.Median("unload_few", "unload")), 1.15};
}

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
    rows.push_back(UnloadRow(runner, files));
    return rows;
}

} // namespace bench
