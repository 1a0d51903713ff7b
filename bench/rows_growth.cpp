/* What grows with the model grows no faster than it. */
#include "allocator.h"
#include "cycle.h"
#include "host.h"
#include "instruction_count.h"
#include "model_generator.h"
#include "rows.h"

namespace bench {
namespace {

constexpr char SMALL[] = "bench-growth-small";
constexpr char LARGE[] = "bench-growth-large";
constexpr uint32_t NODES = 100000;
constexpr uint32_t FACTOR = 10;

constexpr uint32_t FEW = 80;
constexpr uint32_t MANY = 1600;
constexpr uint32_t LEAVES = 40;

/* By instructions: the time also depends on whether all modules fit into the caches. No row without valgrind. */
void AddUnloadRow(const ModelFiles &files, Operation operation, const std::string &order, Rows &rows)
{
    const auto few = InstructionsOf(operation, files.Dir(), std::to_string(FEW));
    const auto many = InstructionsOf(operation, files.Dir(), std::to_string(MANY));
    if (!few || !many)
        return;
    constexpr uint32_t ROUNDS = MANY / FEW;
    rows.push_back({"unload of " + Grouped(MANY) + " modules one by one" + order,
                    std::to_string(ROUNDS) + " times the same for " + Grouped(FEW) + ", in instructions",
                    static_cast<double>(*many) / static_cast<double>(ROUNDS * *few),
                    1.15,
                    {{}, {}, many}});
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
    for (uint32_t i = 0; i < MANY; ++i)
        (void)files.Add(FlatName(i), FlatModule(FlatName(i), LEAVES));
    AddUnloadRow(files, Operation::Unloads, "", rows);
    AddUnloadRow(files, Operation::ReversedUnloads, ", the last one first", rows);
    return rows;
}

} // namespace bench
