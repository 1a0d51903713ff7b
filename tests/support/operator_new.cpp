#include "support/operator_new.h"

#include <new>

void *operator new(std::size_t size)
{
    if (void *memory = test::New(size))
        return memory;
    throw std::bad_alloc();
}

void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    return test::New(size);
}

void operator delete(void *memory) noexcept
{
    test::Delete(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    test::Delete(memory);
}
