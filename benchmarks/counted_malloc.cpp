// SPDX-License-Identifier: GPL-3.0-or-later
#include "counted_malloc.h"

#include <atomic>

namespace
{

std::atomic<size_t> allocations{0};
std::atomic<size_t> bytes{0};

void count(size_t size)
{
    allocations.fetch_add(1, std::memory_order_relaxed);
    bytes.fetch_add(size, std::memory_order_relaxed);
}

} // namespace

// The names by which glibc offers its own functions to those that stand before them.
extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t number, size_t size);
void *__libc_realloc(void *block, size_t size);

void *malloc(size_t size)
{
    count(size);
    return __libc_malloc(size);
}

void *calloc(size_t number, size_t size)
{
    count(number * size);
    return __libc_calloc(number, size);
}

void *realloc(void *block, size_t size)
{
    count(size);
    return __libc_realloc(block, size);
}
}

namespace veltrix
{

HeapUse heapUse()
{
    return {.allocations = allocations.load(), .bytes = bytes.load()};
}

} // namespace veltrix
