#include "model/enum_values.h"

#include <new>

namespace inspect {
namespace {

struct Scan {
    std::vector<EnumValue> values;
    bool outOfMemory = false;
};

uint32_t AddValue(const char *name, int32_t value, void *cookie)
{
    auto *scan = static_cast<Scan *>(cookie);
    try {
        scan->values.push_back({name, value});
    } catch (const std::bad_alloc &) {
        scan->outOfMemory = true;
    }
    return 0;
}

} // namespace

std::vector<EnumValue> EnumValues(const KorvTreeLeaf &leaf)
{
    Scan scan;
    if (YANGLIB_IsEnumLeaf(&leaf) == 1)
        (void)YANGLIB_ScanNameValuePair(&leaf, AddValue, &scan);
    if (scan.outOfMemory)
        throw std::bad_alloc();
    return scan.values;
}

} // namespace inspect
