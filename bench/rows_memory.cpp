/* Memory as the C runtime's allocator counts it, so with what it adds to each block. */
#include <malloc.h>

#include <cstring>
#include <unordered_set>

#include "host.h"
#include "model_generator.h"
#include "rows.h"

namespace bench {
namespace {

constexpr char NAME[] = "bench-memory";
constexpr uint32_t NODES = 100000;

size_t BytesInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

size_t ListSize(const VEC_VECTOR_S *leaves)
{
    if (leaves == nullptr)
        return 0;
    size_t size = sizeof(VEC_VECTOR_S) + leaves->uiCount * sizeof(void *);
    for (uint32_t i = 0; i < leaves->uiCount; ++i)
        size += sizeof(KorvTreeLeaf) + std::strlen(static_cast<const KorvTreeLeaf *>(leaves->ppvItem[i])->pcName) + 1;
    return size;
}

/* Records and texts of one node. */
uint32_t AddSize(void *sum, KorvTreeNode *node)
{
    *static_cast<size_t *>(sum) += sizeof(KorvTreeNode) + std::strlen(node->pcName) + 1 + ListSize(node->pstLeafList) +
                                   ListSize(node->pstCaseLeafList);
    return 0;
}

/* Every text that a module's schema shows, each once however many nodes share it. */
struct SchemaTexts {
    std::unordered_set<const char *> seen;
    size_t bytes = 0;
    uint32_t nodes = 0;

    void Add(const char *text)
    {
        if (text != nullptr && seen.insert(text).second)
            bytes += std::strlen(text) + 1;
    }
};

uint32_t AddInstance(QY_EXT *instance, const char *, const char *, const char *argument, void *texts)
{
    static_cast<SchemaTexts *>(texts)->Add(argument);
    return QY_EXT_ScanAllChildExtInsts(instance, AddInstance, texts);
}

uint32_t AddNode(QY_NODE *node, void *, void *texts)
{
    auto *all = static_cast<SchemaTexts *>(texts);
    ++all->nodes;
    all->Add(QY_NODE_GetNodeName(node));
    (void)QY_NODE_ScanAllExtInsts(node, AddInstance, texts);
    return QY_NODE_IterScanChildrenNode(node, AddNode, texts);
}

} // namespace

Rows MemoryRows(Runner &, const ModelFiles &files)
{
    (void)files.Add(NAME, MixedModule(NAME, NODES));
    const Instance instance(files.Dir());
    const size_t atFirst = BytesInUse();
    instance.LoadSchema(NAME);
    const size_t withSchema = BytesInUse();
    instance.Load(NAME);
    const size_t trees = BytesInUse() - withSchema - sizeof(TELMYANG_YANG_FILE_INFO_S);

    size_t records = 0;
    (void)YANGLIB_TravelYangModuleSubTree(instance.Local(), instance.Tree(NAME), &records, nullptr, AddSize);
    SchemaTexts texts;
    (void)QY_MOD_IterScanTopmostNode(QY_CTX_GetModuleByModName(instance.Local()->pstYangCtx->pSchemaCtx, NAME), AddNode,
                                     &texts);
    return {
        {"memory of the trees", "their records and texts", static_cast<double>(trees) / static_cast<double>(records),
         1.4},
        {"memory of the schema layer a node, texts aside", "bytes",
         static_cast<double>(withSchema - atFirst - texts.bytes) / texts.nodes, 200},
    };
}

} // namespace bench
