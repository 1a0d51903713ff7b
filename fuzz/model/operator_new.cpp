/* The memory of the schema layer, and of everything else in the program while no fault is armed. */
#include <cstdlib>
#include <new>

#include "host_memory.h"

namespace {

void *New(std::size_t size)
{
    return fuzz::Fails(fuzz::Memory::Schema) ? nullptr : std::malloc(size != 0 ? size : 1);
}

} // namespace

void *operator new(std::size_t size)
{
    if (void *memory = New(size))
        return memory;
    throw std::bad_alloc();
}

void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    return New(size);
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, const std::nothrow_t &) noexcept
{
    std::free(memory);
}
