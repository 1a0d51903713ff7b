/* Dump records as CSV: a heading, then a row a leaf with its node's values in front. Fields are quoted as RFC 4180 has it;
 * lines end in a line feed alone, as the tools of this system expect. */
#include <cstdio>

#include "base/csv.h"
#include "base/text.h"
#include "dump/dump_records.h"

namespace inspect {
namespace {

constexpr const char *HEADING =
    "node_path,class_id,sample_id,self_keys,ancestor_keys,leaf_path,leaf,mask,field_id,data_type,index_map,range_min,"
    "range_max\n";

std::string NodeFields(const YangDumpNodeData &record)
{
    return CsvField(record.pcXpath) + "," + std::to_string(record.uiClassId) + "," + std::to_string(record.uiSampleId) +
           "," + CsvField(JoinNumbers(KeyIds(record.aucSelfNodeKey), " ")) + "," +
           CsvField(JoinNumbers(KeyIds(record.aucAncestorKey), " "));
}

} // namespace

void WriteDumpCsv(DumpRecords records)
{
    std::fputs(HEADING, stdout);
    for (const YangDumpNodeData *record : records) {
        std::string node = NodeFields(*record);
        for (const YangDumpLeafData &leaf : DumpLeaves(record->pstLeafList)) {
            std::printf("%s,%s,%s,%u,%u,%u,%u,%llu,%llu\n", node.c_str(), CsvField(leaf.pcPath).c_str(),
                        CsvField(leaf.pcName).c_str(), leaf.ucMask, leaf.uiFieldId, leaf.uiDataType, leaf.uiIndexMap,
                        static_cast<unsigned long long>(leaf.llRangeMin),
                        static_cast<unsigned long long>(leaf.llRangeMax));
        }
    }
}

} // namespace inspect
