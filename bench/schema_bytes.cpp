#include "schema_bytes.h"

#include <cstring>

#include "schema/model.h"

namespace bench {

void SchemaBytes::Add(QY_MOD *module)
{
    (void)QY_MOD_IterScanTopmostNode(module, AddNode, this);
}

size_t SchemaBytes::Bytes() const
{
    return m_nodes * sizeof(QY_NODE) + m_instances * sizeof(QY_EXT) + m_texts;
}

void SchemaBytes::AddText(const char *text)
{
    if (text != nullptr && m_seen.insert(text).second)
        m_texts += std::strlen(text) + 1;
}

uint32_t SchemaBytes::AddInstance(QY_EXT *instance, const char *, const char *, const char *argument, void *sum)
{
    auto *self = static_cast<SchemaBytes *>(sum);
    if (self->m_seen.insert(instance).second)
        ++self->m_instances;
    self->AddText(argument);
    return QY_EXT_ScanAllChildExtInsts(instance, AddInstance, sum);
}

uint32_t SchemaBytes::AddNode(QY_NODE *node, void *, void *sum)
{
    auto *self = static_cast<SchemaBytes *>(sum);
    if (!self->m_seen.insert(node).second)
        return 0;
    ++self->m_nodes;
    self->AddText(QY_NODE_GetNodeName(node));
    (void)QY_NODE_ScanAllExtInsts(node, AddInstance, sum);
    return QY_NODE_IterScanChildrenNode(node, AddNode, sum);
}

} // namespace bench
