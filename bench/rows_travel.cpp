/* Travelling a tree, against a bare walk along the same pointers with the same callback. */
#include "model_generator.h"
#include "queries.h"
#include "rows.h"
#include "tree_copy.h"

namespace bench {
namespace {

constexpr char NAME[] = "bench-travel";
constexpr uint32_t TREE_NODES = 100000;

uint64_t BareWalk(KorvTreeNode *top, YANGLIB_TRAVEL_PF callback)
{
    uint64_t sum = 0;
    for (const KorvTreeNode *node = top; node != nullptr; node = NextInTree(node)) {
        if (callback(&sum, const_cast<KorvTreeNode *>(node)) != 0)
            break;
    }
    return sum;
}

} // namespace

Rows TravelRows(Runner &runner, const ModelFiles &files)
{
    (void)files.Add(NAME, MixedModule(NAME, MixedNodes(TREE_NODES)));
    const Instance instance(files.Dir());
    instance.Load(NAME);
    KorvTreeNode *top = instance.Tree(NAME);
    if (Travel(instance, NAME) != BareWalk(top, AddClassId))
        Fail("travel and walk differ");
    runner.Add("travel", [&](benchmark::State &state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(Travel(instance, NAME));
    });
    runner.Add("travel_bare", [&](benchmark::State &state) {
        YANGLIB_TRAVEL_PF callback = AddClassId;
        benchmark::DoNotOptimize(callback);
        for (auto _ : state)
            benchmark::DoNotOptimize(BareWalk(top, callback));
    });
    runner.Run();
    return {{"travel of " + Grouped(TREE_NODES) + " nodes", "bare pre-order walk with the same callback",
             runner.Ratio("travel", "travel_bare"), 1.3, CountsOf([&] { (void)Travel(instance, NAME); })}};
}

} // namespace bench
