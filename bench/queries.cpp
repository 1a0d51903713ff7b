#include "queries.h"

namespace bench {

void DumpResult::Free() const
{
    YANGLIB_FreeDumpDataEx(records, count);
    ZOR_Free_F(records, __FILE__, __LINE__);
}

DumpResult Dump(TELMYANG_LOCAL_DATA_S *local, const std::string &name)
{
    const YangDumpRequest request = {local, name.c_str(), nullptr, nullptr, 0};
    DumpResult result = {};
    if (YANGLIB_DumpYangModuleDataEx(&request, &result.records, &result.count) != 0 || result.count == 0)
        Fail("cannot dump " + name);
    return result;
}

uint32_t AddClassId(void *sum, KorvTreeNode *node)
{
    *static_cast<uint64_t *>(sum) += node->uiClassId;
    return 0;
}

uint64_t Travel(const Instance &instance, const std::string &name)
{
    uint64_t sum = 0;
    if (YANGLIB_TravelYangModuleSubTree(instance.Local(), instance.Tree(name), &sum, nullptr, AddClassId) != 0)
        Fail("cannot travel " + name);
    return sum;
}

} // namespace bench
