// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/heap_room.h"

#ifdef __GLIBC__
#include <algorithm>
#include <malloc.h>
#endif

namespace veltrix
{

#ifdef __GLIBC__

namespace
{

constexpr qint64 smallestRoom = 4 * 1024 * 1024;
constexpr qint64 largestRoom = 1024 * 1024 * 1024;
/// The C library's own step.
constexpr int usualStep = 128 * 1024;
/// Blocks above this come from the system one by one. Once a step is set, the C library no longer
/// raises the limit by itself, so it gets the highest that it would have reached.
constexpr int ownMapping = 32 * 1024 * 1024;

} // namespace

HeapRoom::HeapRoom(qint64 expected) : m_isMade(expected >= smallestRoom)
{
    if (!m_isMade)
        return;
    mallopt(M_MMAP_THRESHOLD, ownMapping);
    mallopt(M_TRIM_THRESHOLD, 2 * ownMapping);
    mallopt(M_TOP_PAD, int(std::min(expected, largestRoom)));
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
