/* Dumping a tree and releasing the dump, against making and releasing the same blocks with the same texts: those that the
 * caller gets, and those that the dump needs on its way, which hold each node's path twice. */
#include <algorithm>
#include <cstring>

#include "blocks.h"
#include "model_generator.h"
#include "queries.h"
#include "rows.h"

namespace bench {
namespace {

constexpr char NAME[] = "bench-dump";
constexpr uint32_t TREE_NODES = 100000;

/* Blocks that a dump makes on its way, with their sizes. */
struct QueueEntry {
    void *links[3];
};
struct LevelEntry {
    LevelEntry *next;
    char rest[16 + 257]; /* another link, the node, the path */
};
static_assert(offsetof(LevelEntry, rest) == 8);
constexpr size_t LEVEL_ENTRY_SIZE = 281;

YangDumpNodeData *MakeRecord(const YangDumpNodeData &from)
{
    YangDumpNodeData *record = MakeCopy(from);
    record->pcName = MakeText(from.pcName);
    record->pcXpath = MakeText(from.pcXpath);
    if (from.pstLeafList == nullptr)
        return record;
    record->pstLeafList = VEC_VectorInit_F(1, from.pstLeafList->uiCount, __FILE__, __LINE__);
    for (uint32_t i = 0; i < from.pstLeafList->uiCount; ++i) {
        const auto &fromLeaf = *static_cast<const YangDumpLeafData *>(from.pstLeafList->ppvItem[i]);
        YangDumpLeafData *leaf = MakeCopy(fromLeaf);
        leaf->pcName = MakeText(fromLeaf.pcName);
        leaf->pcPath = MakeText(fromLeaf.pcPath);
        (void)VEC_VectorSet(record->pstLeafList, leaf);
    }
    return record;
}

void ReleaseRecord(YangDumpNodeData *record)
{
    Release(record->pcXpath);
    Release(record->pcName);
    if (record->pstLeafList != nullptr) {
        for (uint32_t i = 0; i < record->pstLeafList->uiCount; ++i) {
            auto *leaf = static_cast<YangDumpLeafData *>(record->pstLeafList->ppvItem[i]);
            Release(leaf->pcName);
            Release(leaf->pcPath);
            Release(leaf);
        }
        (void)VEC_VectorFree_F(record->pstLeafList);
    }
    Release(record);
}

/* The entries of one level, each with its node's path; in front of the list hangs the last one. */
LevelEntry *MakeEntries(YangDumpNodeData *const *begin, YangDumpNodeData *const *end)
{
    LevelEntry *list = nullptr;
    for (auto *record = begin; record != end; ++record) {
        auto *entry = static_cast<LevelEntry *>(Make(LEVEL_ENTRY_SIZE));
        entry->next = list;
        std::strcpy(entry->rest + 16, (*record)->pcXpath);
        list = entry;
    }
    return list;
}

void ReleaseFirst(LevelEntry **list)
{
    LevelEntry *entry = *list;
    *list = entry->next;
    Release(entry);
}

/* A finished dump cut into the levels of its tree. */
struct Levels {
    std::vector<YangDumpNodeData *const *> bounds;

    explicit Levels(const DumpResult &dump)
    {
        ptrdiff_t depth = -1;
        for (auto *record = dump.records; record != dump.records + dump.count; ++record) {
            const char *path = (*record)->pcXpath;
            const ptrdiff_t own = std::count(path, path + std::strlen(path), '/');
            if (own != depth)
                bounds.push_back(record);
            depth = own;
        }
        bounds.push_back(dump.records + dump.count);
    }
};

void SameBlocks(const DumpResult &from, const Levels &levels)
{
    for (uint32_t i = 0; i < from.count; ++i)
        Release(Make(sizeof(QueueEntry)));
    auto **records = static_cast<YangDumpNodeData **>(Make(from.count * sizeof(YangDumpNodeData *)));
    YangDumpNodeData **made = records;
    for (size_t level = 0; level + 1 < levels.bounds.size(); ++level) {
        const auto begin = levels.bounds[level];
        const auto end = levels.bounds[level + 1];
        LevelEntry *next = MakeEntries(begin, end);
        LevelEntry *current = MakeEntries(begin, end);
        for (auto record = begin; record != end; ++record)
            ReleaseFirst(&next);
        for (auto record = begin; record != end; ++record) {
            *made++ = MakeRecord(**record);
            ReleaseFirst(&current);
        }
    }
    for (uint32_t i = 0; i < from.count; ++i)
        ReleaseRecord(records[i]);
    Release(records);
}

} // namespace

Rows DumpRows(Runner &runner, const ModelFiles &files)
{
    (void)files.Add(NAME, MixedModule(NAME, MixedNodes(TREE_NODES)));
    const Instance instance(files.Dir());
    instance.Load(NAME);
    const DumpResult finished = Dump(instance.Local(), NAME);
    const Levels levels(finished);
    const auto dump = [&] { Dump(instance.Local(), NAME).Free(); };
    const auto bare = [&] { SameBlocks(finished, levels); };
    const Counts counts = CountsOf(dump);
    /* The dump's own entry for the node over the top nodes is made twice. */
    if (*counts.allocations != *CountsOf(bare).allocations + 2)
        Fail("dump makes " + Grouped(*counts.allocations) + " blocks, the comparison " +
             Grouped(*CountsOf(bare).allocations));
    runner.Add("dump", [&](benchmark::State &state) {
        for (auto _ : state)
            dump();
    });
    runner.Add("dump_bare", [&](benchmark::State &state) {
        for (auto _ : state)
            bare();
    });
    runner.Run();
    finished.Free();
    return {{"dump and release of " + Grouped(TREE_NODES) + " nodes with 8 leaves each",
             "making and freeing the same blocks and texts", runner.Ratio("dump", "dump_bare"), 1.3, counts}};
}

} // namespace bench
