// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/heap_room.h"

#ifdef __GLIBC__
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace veltrix
{

#ifdef __GLIBC__

namespace
{

constexpr qint64 largePage = 2 * 1024 * 1024;
constexpr qint64 smallestRoom = 2 * largePage;
constexpr qint64 largestRoom = 1024 * 1024 * 1024;
/// The C library's own step.
constexpr int usualStep = 128 * 1024;
/// Blocks above this come from the system one by one. Once a step is set, the C library no longer
/// raises the limit by itself, so it gets the highest that it would have reached.
constexpr int ownMapping = 32 * 1024 * 1024;

/// Asks for large pages for what lies between a fresh block at the end of the heap and the end.
void askForLargePages(void *block)
{
    const auto start = (reinterpret_cast<std::uintptr_t>(block) + largePage - 1) & -largePage;
    const auto end = reinterpret_cast<std::uintptr_t>(::sbrk(0)) & -largePage;
    // Only a wish. A block elsewhere lies above the heap.
    if (start < end)
        ::madvise(reinterpret_cast<void *>(start), end - start, MADV_HUGEPAGE);
}

} // namespace

HeapRoom::HeapRoom(qint64 expected) : m_isMade(expected >= smallestRoom)
{
    if (!m_isMade)
        return;
    mallopt(M_MMAP_THRESHOLD, ownMapping);
    mallopt(M_TRIM_THRESHOLD, 2 * ownMapping);
    mallopt(M_TOP_PAD, int(std::min(expected, largestRoom)));
    // What the end of the heap cannot hold makes it grow.
    void *block = std::malloc(ownMapping - largePage);
    askForLargePages(block);
    std::free(block);
}

HeapRoom::~HeapRoom()
{
    if (!m_isMade)
        return;
    mallopt(M_TOP_PAD, usualStep);
    malloc_trim(0);
}

#else

HeapRoom::HeapRoom(qint64 expected)
{
    Q_UNUSED(expected);
}

HeapRoom::~HeapRoom() = default;

#endif

} // namespace veltrix
