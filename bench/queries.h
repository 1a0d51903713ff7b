/* The queries that several rows time. */
#ifndef KORV_BENCH_QUERIES_H
#define KORV_BENCH_QUERIES_H

#include <cstdint>
#include <string>

#include "host.h"

namespace bench {

/* A finished dump of a module's own tree; its owner frees it. */
struct DumpResult {
    YangDumpNodeData **records;
    uint32_t count;

    void Free() const;
};

DumpResult Dump(TELMYANG_LOCAL_DATA_S *local, const std::string &name);

/* What the travel rows' callback adds up, so that each node is read. */
uint32_t AddClassId(void *sum, KorvTreeNode *node);

/* Travels from the module's first top node; the sum of class ids. */
uint64_t Travel(const Instance &instance, const std::string &name);

} // namespace bench

#endif // KORV_BENCH_QUERIES_H
