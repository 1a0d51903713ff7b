#include "files/xml_memory.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>

namespace qxyang {

namespace {

/* Stands before each block: Resize must know how much to copy. */
struct alignas(std::max_align_t) Header {
    size_t size;
};

Header *HeaderOf(void *block)
{
    return static_cast<Header *>(block) - 1;
}

void *Take(size_t size)
{
    if (size > SIZE_MAX - sizeof(Header))
        return nullptr;
    void *memory = ::operator new(sizeof(Header) + size, std::nothrow);
    return memory == nullptr ? nullptr : new (memory) Header{size} + 1;
}

void Give(void *block)
{
    if (block != nullptr)
        ::operator delete(HeaderOf(block));
}

void *Resize(void *block, size_t size)
{
    void *larger = Take(size);
    if (larger == nullptr || block == nullptr)
        return larger;
    std::memcpy(larger, block, std::min(size, HeaderOf(block)->size));
    Give(block);
    return larger;
}

} // namespace

const XML_Memory_Handling_Suite XML_MEMORY = {Take, Resize, Give};

} // namespace qxyang
