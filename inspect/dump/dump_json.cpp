/* Dump records as JSON. */
#include "base/json_out.h"
#include "dump/dump_records.h"

namespace inspect {
namespace {

void WriteLeaf(JsonOut *out, const YangDumpLeafData &leaf)
{
    out->Object();
    out->Member("name", leaf.pcName);
    out->Member("path", leaf.pcPath);
    out->Member("mask", leaf.ucMask);
    out->Member("field_id", leaf.uiFieldId);
    out->Member("data_type", leaf.uiDataType);
    out->Member("index_map", leaf.uiIndexMap);
    out->Key("range");
    out->Range(leaf.llRangeMin, leaf.llRangeMax);
    out->EndObject();
}

} // namespace

void WriteDumpJson(DumpRecords records)
{
    JsonOut out;
    out.Array();
    for (const YangDumpNodeData *record : records) {
        out.Object();
        out.Member("name", record->pcName);
        out.Member("path", record->pcXpath);
        out.Member("class_id", record->uiClassId);
        out.Member("sample_id", record->uiSampleId);
        out.Key("self_keys");
        out.Numbers(KeyIds(record->aucSelfNodeKey));
        out.Key("ancestor_keys");
        out.Numbers(KeyIds(record->aucAncestorKey));
        out.Key("leaves");
        out.Array();
        for (const YangDumpLeafData &leaf : DumpLeaves(record->pstLeafList))
            WriteLeaf(&out, leaf);
        out.EndArray();
        out.EndObject();
    }
    out.EndArray();
}

} // namespace inspect
