#include "xml_memory.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>

namespace qxyang {

namespace {

/* Stands before each block, since a block that grows must know how much to copy. */
struct alignas(std::max_align_t) Header {
    size_t size;
};

Header *headerOf(void *block)
{
    return static_cast<Header *>(block) - 1;
}

void *take(size_t size)
{
    if (size > SIZE_MAX - sizeof(Header))
        return nullptr;
    void *memory = ::operator new(sizeof(Header) + size, std::nothrow);
    return memory == nullptr ? nullptr : new (memory) Header{size} + 1;
}

void give(void *block)
{
    if (block != nullptr)
        ::operator delete(headerOf(block));
}

void *resize(void *block, size_t size)
{
    void *larger = take(size);
    if (larger == nullptr || block == nullptr)
        return larger;
    std::memcpy(larger, block, std::min(size, headerOf(block)->size));
    give(block);
    return larger;
}

}  // namespace

const XML_Memory_Handling_Suite kXmlMemory = {take, resize, give};

}  // namespace qxyang
