#include "support/failing_malloc.h"

#include <cstddef>
#include <cstdlib>
#include <new>

extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_realloc(void* memory, std::size_t size);

using kestrel::test::Allocations;

bool Allocations::fails()
{
    return isCounting && ++counted == failing;
}

extern "C" void* malloc(std::size_t size)
{
    return Allocations::fails() ? nullptr : __libc_malloc(size);
}

extern "C" void* realloc(void* memory, std::size_t size)
{
    return Allocations::fails() ? nullptr : __libc_realloc(memory, size);
}

void* operator new(std::size_t size)
{
    if (void* const memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}
