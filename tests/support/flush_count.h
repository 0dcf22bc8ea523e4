// SPDX-License-Identifier: GPL-3.0-or-later
// Counts how often which thread has waited for a disk.
#pragma once

namespace veltrix
{

/// The flushes to a disk since this was made, by any library. A program that uses this links
/// flush_count.cpp itself: its own fsync(), fdatasync() and so on then stand before the system's.
/// One at a time.
class FlushCount
{
public:
    FlushCount();

    /// By the thread that has made this.
    [[nodiscard]] int here() const;
    [[nodiscard]] int elsewhere() const;
};

} // namespace veltrix
