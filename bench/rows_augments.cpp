/* A small module whose augments copy a large tree: what its load makes, against making the same blocks, and what showing
 * it costs. */
#include <memory>

#include "host.h"
#include "instruction_count.h"
#include "model_generator.h"
#include "process_time.h"
#include "rows.h"
#include "tree_copy.h"

namespace bench {
namespace {

constexpr char BASE[] = "bench-tree";
constexpr char NAME[] = "bench-extending";
constexpr uint32_t LISTS = 25000;
constexpr uint32_t AUGMENTS = 20;
constexpr int REPETITIONS = 5;
constexpr int64_t ITERATIONS = 1; /* half a gigabyte each */

void LoadTrees(benchmark::State &state, const std::string &dir)
{
    for (auto _ : state) {
        state.PauseTiming();
        {
            const Instance instance(dir);
            instance.LoadSchema(NAME);
            state.ResumeTiming();
            instance.Load(NAME);
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

void SameBlocks(benchmark::State &state, const Instance &instance)
{
    for (auto _ : state) {
        auto copy = std::make_unique<TreeCopy>(instance.File(NAME));
        state.PauseTiming();
        copy.reset();
        state.ResumeTiming();
    }
}

} // namespace

Rows AugmentRows(Runner &runner, const ModelFiles &files)
{
    (void)files.Add(BASE, TreeModule(BASE, LISTS));
    (void)files.Add(NAME, ExtendingModule(NAME, BASE, AUGMENTS));
    Counts counts;
    {
        const Instance instance(files.Dir());
        instance.LoadSchema(NAME);
        counts = CountsOf([&] { instance.Load(NAME); });
        runner.Add(
            "augments", [&](benchmark::State &state) { LoadTrees(state, files.Dir()); }, ITERATIONS);
        runner.Add(
            "augments_bare", [&](benchmark::State &state) { SameBlocks(state, instance); }, ITERATIONS);
        runner.Run();
    }
    counts.instructions = InstructionsOf(Operation::OwnLoad, files.Dir(), NAME);
    const Command tree = {Beside("korv-inspect"), "tree", NAME, "-d", files.Dir()};
    const std::string trees = std::to_string(AUGMENTS) + " augments of one tree of " + Grouped(LISTS) + " nodes";
    return {{"own part of the load of " + trees, "making the blocks of the trees",
             runner.Ratio("augments", "augments_bare"), 1.3, counts},
            {"korv-inspect tree of it, whole process", "a process that loads it",
             ProcessTimes::Ratio(tree, OperationCommand("load", files.Dir(), NAME), REPETITIONS), 1.5}};
}

} // namespace bench
