// SPDX-License-Identifier: GPL-3.0-or-later
// Makes the system's file calls fail, one after the other.
#pragma once

namespace veltrix
{

/// Which calls fail.
struct FileFault {
    /// The first that fails, counted from 1; 0 for none.
    int call = 0;
    /// What it fails with.
    int code = 0;
    enum class Lasts { Once, FromThenOn };
    Lasts lasts = Lasts::Once;
};

/// From now on the calls of this process that have to do with files are counted and fail as told. A
/// program that uses this links file_faults.cpp itself: its own open(), write() and so on then
/// stand before the system's, also for the libraries.
void beginFileFaults(const FileFault &fault);

/// Ends that. Returns how many calls there were.
int endFileFaults();

/// The name of the first call that has failed; empty when none has.
const char *failedFileCall();

/// The calls since the begin that make a save last and that have succeeded, a letter each: "f"
/// fsync, "s" syncfs, "l" link, "r" rename.
const char *durabilityTrace();

} // namespace veltrix
