/* Looking a deep node up, against a bare walk over the same siblings and the two allocations that the lookup makes. */
#include <cstring>

#include "host.h"
#include "instruction_count.h"
#include "lookup_path.h"
#include "model_generator.h"
#include "rows.h"

namespace bench {
namespace {

const KorvTreeNode *BareWalk(const KorvTreeNode *start, const std::vector<std::string> &names)
{
    const KorvTreeNode *node = nullptr;
    for (const std::string &name : names) {
        for (node = start; node != nullptr && std::strcmp(node->pcName, name.c_str()) != 0;)
            node = node->pstNextSibling;
        if (node == nullptr)
            return nullptr;
        start = node->pstFirstChild;
    }
    return node;
}

void Bare(benchmark::State &state, const Instance &instance)
{
    const LookupPath path;
    const KorvTreeNode *top = instance.Tree(LookupPath::MODULE);
    for (auto _ : state) {
        void *first = ZOR_Malloc_F(1, g_aucZorMemPt[0], path.qualified.size() + 2, __FILE__, __LINE__);
        void *second = ZOR_Malloc_F(1, g_aucZorMemPt[0], path.plain.size() + 2, __FILE__, __LINE__);
        benchmark::DoNotOptimize(BareWalk(top, path.names));
        ZOR_Free_F(second, __FILE__, __LINE__);
        ZOR_Free_F(first, __FILE__, __LINE__);
    }
}

template <typename Path>
void Lookup(benchmark::State &state, const Instance &instance)
{
    const Path path;
    const YangXpathLookup lookup = path.Of(instance.Local());
    for (auto _ : state)
        benchmark::DoNotOptimize(TELMYANG_KorvFindTreeNodeByXpath(&lookup));
}

} // namespace

Rows LookupRows(Runner &runner, const ModelFiles &files)
{
    const LookupPath path;
    const AugmentPath augmentPath;
    (void)files.Add(LookupPath::MODULE, NestModule(LookupPath::MODULE, LookupPath::LEVELS));
    (void)files.Add(AugmentPath::AUGMENT, AugmentModule(AugmentPath::AUGMENT, LookupPath::MODULE, augmentPath.target));
    const Instance instance(files.Dir());
    instance.Load(LookupPath::MODULE);
    instance.Load(AugmentPath::AUGMENT);
    const YangXpathLookup lookup = path.Of(instance.Local());
    const YangXpathLookup augment = augmentPath.Of(instance.Local());
    if (TELMYANG_KorvFindTreeNodeByXpath(&lookup) != BareWalk(instance.Tree(LookupPath::MODULE), path.names) ||
        TELMYANG_KorvFindTreeNodeByXpath(&augment) == nullptr)
        Fail("lookup and walk differ");
    runner.Add("lookup", [&](benchmark::State &state) { Lookup<LookupPath>(state, instance); });
    runner.Add("lookup_augment", [&](benchmark::State &state) { Lookup<AugmentPath>(state, instance); });
    runner.Add("lookup_bare", [&](benchmark::State &state) { Bare(state, instance); });
    runner.Run();
    const auto countsOf = [&](const YangXpathLookup &what, Operation operation, const char *module) {
        Counts counts = CountsOf([&] { (void)TELMYANG_KorvFindTreeNodeByXpath(&what); });
        counts.instructions = InstructionsOf(operation, files.Dir(), module);
        return counts;
    };
    return {{"lookup of a path of " + std::to_string(LookupPath::LEVELS) + " components",
             "bare walk with string compares, two blocks", runner.Ratio("lookup", "lookup_bare"), 1.5,
             countsOf(lookup, Operation::Lookup, LookupPath::MODULE)},
            {"lookup of as many components in an augment", "the lookup above", runner.Ratio("lookup_augment", "lookup"),
             1.5, countsOf(augment, Operation::AugmentLookup, AugmentPath::AUGMENT)}};
}

} // namespace bench
