// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/flush_count.h"

#include <atomic>
#include <dlfcn.h>
#include <thread>

namespace veltrix
{

namespace
{

std::atomic<std::thread::id> counted;
std::atomic<int> flushesHere;
std::atomic<int> flushesElsewhere;

void note()
{
    ++(std::this_thread::get_id() == counted.load() ? flushesHere : flushesElsewhere);
}

template <class Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

FlushCount::FlushCount()
{
    counted = std::this_thread::get_id();
    flushesHere = 0;
    flushesElsewhere = 0;
}

int FlushCount::here() const
{
    return flushesHere;
}

int FlushCount::elsewhere() const
{
    return flushesElsewhere;
}

} // namespace veltrix

// No header of the system's file calls: they are declared here, without its attributes.
#define COUNTED(name)                                                                              \
    extern "C" int name(int file);                                                                 \
    extern "C" int name(int file)                                                                  \
    {                                                                                              \
        static const auto real = veltrix::next<int (*)(int)>(#name);                               \
        veltrix::note();                                                                           \
        return real(file);                                                                         \
    }

COUNTED(fsync)
COUNTED(fdatasync)
COUNTED(syncfs)

extern "C" void sync();
extern "C" void sync()
{
    static const auto real = veltrix::next<void (*)()>("sync");
    veltrix::note();
    real();
}
