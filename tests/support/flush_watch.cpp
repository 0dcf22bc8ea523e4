// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/flush_watch.h"

// No header of the system's file calls: they are declared here, without its attributes.
#include <atomic>
#include <dlfcn.h>
#include <thread>

namespace veltrix
{

namespace
{

std::atomic<bool> watching = false;
std::thread::id watched;
std::atomic<int> own = 0;
std::atomic<int> others = 0;

void note()
{
    if (watching)
        ++(std::this_thread::get_id() == watched ? own : others);
}

} // namespace

void beginFlushWatch()
{
    watched = std::this_thread::get_id();
    own = 0;
    others = 0;
    watching = true;
}

Flushes endFlushWatch()
{
    watching = false;
    return {own, others};
}

/// Counts a call and makes it.
static int flushed(const char *name, int file)
{
    note();
    return reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, name))(file);
}

} // namespace veltrix

extern "C" int fsync(int file);
extern "C" int fsync(int file)
{
    return veltrix::flushed("fsync", file);
}

extern "C" int fdatasync(int file);
extern "C" int fdatasync(int file)
{
    return veltrix::flushed("fdatasync", file);
}

extern "C" int syncfs(int file);
extern "C" int syncfs(int file)
{
    return veltrix::flushed("syncfs", file);
}
