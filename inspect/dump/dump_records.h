/* The records of a dump, and how each format writes them. */
#pragma once

#include <span>

#include <korv_lib_yang.h>
#include "model/trees.h"

namespace inspect {

using DumpRecords = std::span<YangDumpNodeData *const>;
using DumpLeaves = Items<YangDumpLeafData>;

void WriteDumpText(DumpRecords records);
void WriteDumpJson(DumpRecords records);
void WriteDumpCsv(DumpRecords records);

} // namespace inspect
