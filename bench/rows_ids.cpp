/* Finding classes and attributes by their ids, against standard hash tables of as many entries. The ids are asked for in a
 * random order, so that neither side profits from what was asked before. */
#include <algorithm>
#include <random>
#include <unordered_map>
#include <utility>

#include "host.h"
#include "model_generator.h"
#include "rows.h"

namespace bench {
namespace {

constexpr char NAME[] = "bench-ids";
constexpr uint32_t CLASSES = 10000;

struct Ids {
    uint32_t classId;
    uint32_t fieldId;
};

struct Found {
    KorvTreeNode *node;
    KorvTreeLeaf *leaf;
};

/* What a host would keep itself: every node of a class, and the leaf of an attribute. */
struct Tables {
    std::unordered_multimap<uint32_t, YANGLIB_PLACE_S> classes;
    std::unordered_map<uint64_t, Found> attributes;
    std::vector<Ids> ids; /* of all attributes, shuffled */
};

uint64_t KeyOf(const Ids &ids)
{
    return uint64_t{ids.classId} << 32 | ids.fieldId;
}

uint32_t AddNode(void *tables, KorvTreeNode *node)
{
    auto &all = *static_cast<Tables *>(tables);
    if (node->uiClassId == 0)
        return 0;
    all.classes.emplace(node->uiClassId, YANGLIB_PLACE_S{sizeof(YANGLIB_PLACE_S), 0, 0, 1, node, nullptr});
    for (uint32_t i = 0; node->pstLeafList != nullptr && i < node->pstLeafList->uiCount; ++i) {
        auto *leaf = static_cast<KorvTreeLeaf *>(node->pstLeafList->ppvItem[i]);
        const Ids ids = {node->uiClassId, leaf->uiFieldId};
        if (all.attributes.try_emplace(KeyOf(ids), Found{node, leaf}).second)
            all.ids.push_back(ids);
    }
    return 0;
}

uint32_t TakeNode(const YANGLIB_PLACE_S *place, void *node)
{
    *static_cast<KorvTreeNode **>(node) = place->pstNode;
    return 0;
}

KorvTreeNode *FindClass(const Instance &instance, uint32_t classId)
{
    KorvTreeNode *node = nullptr;
    (void)YANGLIB_FindClass(instance.Local(), classId, TakeNode, &node);
    return node;
}

KorvTreeNode *FindInTable(const Tables &tables, uint32_t classId, YANGLIB_PLACE_PF callback)
{
    KorvTreeNode *node = nullptr;
    const auto [first, end] = tables.classes.equal_range(classId);
    for (auto entry = first; entry != end; ++entry) {
        if (callback(&entry->second, &node) != 0)
            break;
    }
    return node;
}

Found FindAttribute(const Instance &instance, const Ids &ids)
{
    Found found = {};
    (void)YANGLIB_FindAttribute(instance.Local(), ids.classId, ids.fieldId, &found.node, &found.leaf);
    return found;
}

template <typename Find>
void EachInTurn(benchmark::State &state, const std::vector<Ids> &ids, Find &&find)
{
    size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(find(ids[next]));
        next = next + 1 == ids.size() ? 0 : next + 1;
    }
}

} // namespace

Rows IdRows(Runner &runner, const ModelFiles &files)
{
    (void)files.Add(NAME, MixedModule(NAME, MixedNodes(CLASSES)));
    const Instance instance(files.Dir());
    instance.Load(NAME);
    Tables tables;
    (void)YANGLIB_TravelYangModuleSubTree(instance.Local(), instance.Tree(NAME), &tables, nullptr, AddNode);
    std::shuffle(tables.ids.begin(), tables.ids.end(), std::mt19937(1));
    for (const Ids &ids : tables.ids) {
        if (FindClass(instance, ids.classId) != FindInTable(tables, ids.classId, TakeNode) ||
            FindAttribute(instance, ids).leaf != tables.attributes.at(KeyOf(ids)).leaf)
            Fail("index and tables differ");
    }
    const auto add = [&](const char *name, auto find) {
        runner.Add(name, [&tables, find](benchmark::State &state) { EachInTurn(state, tables.ids, find); });
    };
    add("class", [&](const Ids &ids) { return FindClass(instance, ids.classId); });
    YANGLIB_PLACE_PF callback = TakeNode;
    benchmark::DoNotOptimize(callback);
    add("class_table", [&](const Ids &ids) { return FindInTable(tables, ids.classId, callback); });
    add("attribute", [&](const Ids &ids) { return FindAttribute(instance, ids); });
    add("attribute_table", [&](const Ids &ids) { return tables.attributes.find(KeyOf(ids))->second; });
    runner.Run();
    const Ids first = tables.ids.front();
    const std::string classes = Grouped(tables.classes.size());
    return {{"lookup by id among " + classes + " classes", "standard hash table of as many entries",
             runner.Ratio("class", "class_table"), 1.5, CountsOf([&] { (void)FindClass(instance, first.classId); })},
            {"lookup by ids among " + Grouped(tables.attributes.size()) + " attributes of them",
             "standard hash table of as many entries", runner.Ratio("attribute", "attribute_table"), 1.5,
             CountsOf([&] { (void)FindAttribute(instance, first); })},
            {"lookup by id among them", "nanoseconds", runner.Median("class"), 100},
            {"lookup by ids among them", "nanoseconds", runner.Median("attribute"), 100}};
}

} // namespace bench
