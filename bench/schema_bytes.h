/* What the schema layer holds of modules: nodes, extension instances and texts, each once however many nodes share it. */
#ifndef KORV_BENCH_SCHEMA_BYTES_H
#define KORV_BENCH_SCHEMA_BYTES_H

#include <cstddef>
#include <cstdint>
#include <unordered_set>

#include "korv_platform.h"

namespace bench {

class SchemaBytes {
  public:
    void Add(QY_MOD *module);

    uint32_t Nodes() const { return m_nodes; }
    size_t Texts() const { return m_texts; }
    /* Records of nodes and instances, and texts. */
    size_t Bytes() const;

  private:
    static uint32_t AddInstance(QY_EXT *instance, const char *module, const char *keyword, const char *argument,
                                void *sum);
    static uint32_t AddNode(QY_NODE *node, void *, void *sum);
    void AddText(const char *text);

    std::unordered_set<const void *> m_seen;
    size_t m_texts = 0;
    size_t m_instances = 0;
    uint32_t m_nodes = 0;
};

} // namespace bench

#endif // KORV_BENCH_SCHEMA_BYTES_H
