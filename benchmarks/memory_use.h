// SPDX-License-Identifier: GPL-3.0-or-later
// How much memory this process has, as the kernel counts it.
#pragma once

#include <cstdio>
#include <cstring>
#include <malloc.h>

namespace veltrix
{

/// A line of /proc/self/status such as "VmRSS:", in bytes; 0 where there is none.
inline double statusBytes(const char *key)
{
    std::FILE *status = std::fopen("/proc/self/status", "r");
    if (!status)
        return 0;
    double kilobytes = 0;
    char line[256];
    while (std::fgets(line, sizeof line, status)) {
        if (std::strncmp(line, key, std::strlen(key)) == 0)
            std::sscanf(line + std::strlen(key), "%lf", &kilobytes);
    }
    std::fclose(status);
    return kilobytes * 1024;
}

inline double residentBytes()
{
    return statusBytes("VmRSS:");
}

/// The most that was resident since the start, or since resetPeakResident().
inline double peakResidentBytes()
{
    return statusBytes("VmHWM:");
}

/// Lets the peak start again from what is resident now, without what the allocator holds unused.
inline void resetPeakResident()
{
    malloc_trim(0);
    if (std::FILE *file = std::fopen("/proc/self/clear_refs", "w")) {
        std::fputs("5", file);
        std::fclose(file);
    }
}

} // namespace veltrix
