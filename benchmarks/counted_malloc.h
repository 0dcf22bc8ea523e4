// SPDX-License-Identifier: GPL-3.0-or-later
// Counts what the whole process takes from the heap.
#pragma once

#include <cstddef>

namespace veltrix
{

struct HeapUse {
    size_t allocations = 0;
    /// Bytes asked for, freed ones included.
    size_t bytes = 0;
};

/// What was asked for since the start, in every library: the program's own malloc, calloc and
/// realloc stand before those of the C library, to which they pass everything on.
HeapUse heapUse();

} // namespace veltrix
