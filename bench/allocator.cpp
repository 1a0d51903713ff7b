#include "allocator.h"

#include <malloc.h>

#include <limits>

namespace bench {
namespace {

constexpr int FIRST_THRESHOLD = 128 * 1024;
constexpr int FIRST_MMAP_MAX = 65536;
constexpr int FIRST_FAST_SIZE = 128;

} // namespace

void UseFreshMemory()
{
    mallopt(M_MMAP_MAX, FIRST_MMAP_MAX);
    mallopt(M_MMAP_THRESHOLD, FIRST_THRESHOLD);
    mallopt(M_TRIM_THRESHOLD, FIRST_THRESHOLD);
    mallopt(M_MXFAST, FIRST_FAST_SIZE);
}

KeptMemory::KeptMemory()
{
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    mallopt(M_MXFAST, 0);
}

KeptMemory::~KeptMemory()
{
    UseFreshMemory();
    malloc_trim(0);
}

} // namespace bench
