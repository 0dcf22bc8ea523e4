// SPDX-License-Identifier: GPL-3.0-or-later
// Sees which thread lets the disk flush.
#pragma once

namespace veltrix
{

/// How many of the system's calls that wait for a disk there were.
struct Flushes {
    int onWatchedThread = 0;
    int elsewhere = 0;
};

/// From now on the calls of this process are counted, those of the calling thread by themselves. A
/// program that uses this links flush_watch.cpp itself: its own fsync() and so on then stand before
/// the system's, also for the libraries.
void beginFlushWatch();
/// Ends that.
Flushes endFlushWatch();

} // namespace veltrix
