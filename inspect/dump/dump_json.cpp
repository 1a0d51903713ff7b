/* Dump records as JSON. */
#include "base/json_out.h"
#include "dump/dump_records.h"

namespace inspect {
namespace {

void WriteLeaf(JsonOut *out, const YangDumpLeafData &leaf, const KorvTreeLeaf &source,
               const std::optional<Position> &position)
{
    out->Object();
    out->Member("name", leaf.pcName);
    out->Member("path", leaf.pcPath);
    out->Member("mask", leaf.ucMask);
    out->Member("field_id", leaf.uiFieldId);
    out->Member("data_type", leaf.uiDataType);
    out->Member("index_map", leaf.uiIndexMap);
    out->Key("range");
    if (HasRange(source))
        out->Range(leaf.llRangeMin, leaf.llRangeMax);
    else
        out->Null();
    WritePlace(out, position);
    out->EndObject();
}

/* A record's leaves are those of its node, in the same order. */
void WriteLeaves(JsonOut *out, const YangDumpNodeData &record, const KorvTreeNode &node, const DumpSource &source)
{
    Leaves leaves(node.pstLeafList);
    auto leaf = leaves.begin();
    out->Key("leaves");
    out->Array();
    for (const YangDumpLeafData &entry : DumpLeaves(record.pstLeafList)) {
        WriteLeaf(out, entry, *leaf, source.places->Of({source.augment, &node, &*leaf}));
        ++leaf;
    }
    out->EndArray();
}

} // namespace

std::vector<const KorvTreeNode *> NodesInDumpOrder(const KorvTreeNode *first)
{
    std::vector<const KorvTreeNode *> nodes;
    for (const KorvTreeNode &node : Chain(first))
        nodes.push_back(&node);
    for (size_t i = 0; i < nodes.size(); ++i)
        for (const KorvTreeNode &child : Children(*nodes[i]))
            nodes.push_back(&child);
    return nodes;
}

void WriteDumpJson(DumpRecords records, const DumpSource &source)
{
    JsonOut out;
    out.Array();
    for (size_t i = 0; i < records.size(); ++i) {
        const YangDumpNodeData &record = *records[i];
        const KorvTreeNode &node = *source.nodes.at(i);
        out.Object();
        out.Member("name", record.pcName);
        out.Member("path", record.pcXpath);
        out.Member("class_id", record.uiClassId);
        out.Member("sample_id", record.uiSampleId);
        out.Key("self_keys");
        out.Numbers(KeyIds(record.aucSelfNodeKey));
        out.Key("ancestor_keys");
        out.Numbers(KeyIds(record.aucAncestorKey));
        WriteLeaves(&out, record, node, source);
        out.NumberOrNull("task_id", source.taskId);
        WritePlace(&out, source.places->Of({source.augment, &node, nullptr}));
        out.EndObject();
    }
    out.EndArray();
}

} // namespace inspect
