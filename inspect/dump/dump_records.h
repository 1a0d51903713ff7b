/* The records of a dump, and how each format writes them. */
#pragma once

#include <optional>
#include <span>
#include <vector>

#include <korv_lib_yang.h>
#include "model/tree_places.h"
#include "model/trees.h"

namespace inspect {

using DumpRecords = std::span<YangDumpNodeData *const>;
using DumpLeaves = Items<YangDumpLeafData>;

/* The nodes that a dump of these trees has records of, in its order. */
std::vector<const KorvTreeNode *> NodesInDumpOrder(const KorvTreeNode *first);

/* What the records do not tell: the nodes of which they are, each with its place, and their module's task id. */
struct DumpSource {
    uint32_t taskId; /* 0: none */
    std::vector<const KorvTreeNode *> nodes;
    std::optional<uint32_t> augment; /* whose tree it is; none: the module's own */
    TreePlaces *places;
};

void WriteDumpText(DumpRecords records);
void WriteDumpJson(DumpRecords records, const DumpSource &source);
void WriteDumpCsv(DumpRecords records);

} // namespace inspect
