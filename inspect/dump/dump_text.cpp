/* Dump records as text: a line a node, and below it a line a leaf. */
#include <algorithm>
#include <cstdio>

#include "base/text.h"
#include "dump/dump_records.h"

namespace inspect {
namespace {

std::string KeysText(const char *label, const uint8_t (&keys)[NODE_KEY_LIST_NUM])
{
    std::vector<uint32_t> ids = KeyIds(keys);
    return ids.empty() ? "" : std::string("  ") + label + " " + JoinNumbers(ids, " ");
}

void PrintNode(const YangDumpNodeData &record)
{
    std::printf("%s  class %s  sample %s%s%s\n", record.pcXpath, Hex(record.uiClassId).c_str(),
                Hex(record.uiSampleId).c_str(), KeysText("keys", record.aucSelfNodeKey).c_str(),
                KeysText("ancestor keys", record.aucAncestorKey).c_str());
}

void PrintLeaf(const YangDumpLeafData &leaf, size_t width)
{
    std::string name = leaf.pcName;
    PadTo(&name, width);
    std::printf("  %s  mask 0x%02x  field %3u  datatype %3u  index map %3u  range %llu..%llu\n", name.c_str(),
                leaf.ucMask, leaf.uiFieldId, leaf.uiDataType, leaf.uiIndexMap,
                static_cast<unsigned long long>(leaf.llRangeMin), static_cast<unsigned long long>(leaf.llRangeMax));
}

} // namespace

void WriteDumpText(DumpRecords records)
{
    size_t width = 0;
    for (const YangDumpNodeData *record : records)
        for (const YangDumpLeafData &leaf : DumpLeaves(record->pstLeafList))
            width = std::max(width, std::string_view(leaf.pcName).size());
    for (const YangDumpNodeData *record : records) {
        PrintNode(*record);
        for (const YangDumpLeafData &leaf : DumpLeaves(record->pstLeafList))
            PrintLeaf(leaf, width);
    }
}

} // namespace inspect
