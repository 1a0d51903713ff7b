/* Memory as the C runtime's allocator counts it, so with what it adds to each block. */
#include <malloc.h>

#include "host.h"
#include "model_generator.h"
#include "rows.h"
#include "schema_bytes.h"
#include "tree_copy.h"

namespace bench {
namespace {

constexpr char NAME[] = "bench-memory";
constexpr uint32_t NODES = 100000;

size_t BytesInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
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

    const size_t records = TreeBytes(instance.File(NAME));
    SchemaBytes schema;
    schema.Add(QY_CTX_GetModuleByModName(instance.Local()->pstYangCtx->pSchemaCtx, NAME));
    return {
        {"memory of the trees", "their records and texts", static_cast<double>(trees) / static_cast<double>(records),
         1.4},
        {"memory of the schema layer a node, texts aside", "bytes",
         static_cast<double>(withSchema - atFirst - schema.Texts()) / schema.Nodes(), 200},
    };
}

} // namespace bench
