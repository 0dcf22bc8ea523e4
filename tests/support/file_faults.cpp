// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/file_faults.h"

// No header of the system's file calls: they are declared here, without its attributes.
#include <cerrno>
#include <cstdarg>
#include <dlfcn.h>

namespace veltrix
{

namespace
{

bool counting = false;
FileFault current;
int calls = 0;
const char *failedCall = "";
char trace[512];
int traced = 0;

bool fails(const char *name)
{
    if (!counting)
        return false;
    ++calls;
    const bool hit = current.call > 0 &&
                     (calls == current.call ||
                      (calls > current.call && current.lasts == FileFault::Lasts::FromThenOn));
    if (!hit)
        return false;
    if (!*failedCall)
        failedCall = name;
    errno = current.code;
    return true;
}

void note(char step, int result)
{
    if (counting && result == 0 && traced < int(sizeof(trace)) - 1)
        trace[traced++] = step;
}

template <class Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

void beginFileFaults(const FileFault &fault)
{
    current = fault;
    calls = 0;
    failedCall = "";
    for (char &step : trace)
        step = 0;
    traced = 0;
    counting = true;
}

int endFileFaults()
{
    counting = false;
    return calls;
}

const char *failedFileCall()
{
    return failedCall;
}

const char *durabilityTrace()
{
    return trace;
}

} // namespace veltrix

using Size = unsigned long;
using Offset = long;

#define FAULTY(Result, name, parameters, arguments)                                                \
    extern "C" Result name parameters;                                                             \
    extern "C" Result name parameters                                                              \
    {                                                                                              \
        static const auto real = veltrix::next<Result(*) parameters>(#name);                       \
        if (veltrix::fails(#name))                                                                 \
            return Result(-1);                                                                     \
        return real arguments;                                                                     \
    }

#define FAULTY_TRACED(step, name, parameters, arguments)                                           \
    extern "C" int name parameters;                                                                \
    extern "C" int name parameters                                                                 \
    {                                                                                              \
        static const auto real = veltrix::next<int(*) parameters>(#name);                          \
        if (veltrix::fails(#name))                                                                 \
            return -1;                                                                             \
        const int result = real arguments;                                                         \
        veltrix::note(step, result);                                                               \
        return result;                                                                             \
    }

// The mode is passed on whether or not the caller gave one; the system reads it only if it should.
#define FAULTY_OPEN(name)                                                                          \
    extern "C" int name(const char *path, int flags, ...);                                         \
    extern "C" int name(const char *path, int flags, ...)                                          \
    {                                                                                              \
        static const auto real = veltrix::next<int (*)(const char *, int, ...)>(#name);            \
        va_list rest;                                                                              \
        va_start(rest, flags);                                                                     \
        const unsigned mode = va_arg(rest, unsigned);                                              \
        va_end(rest);                                                                              \
        if (veltrix::fails(#name))                                                                 \
            return -1;                                                                             \
        return real(path, flags, mode);                                                            \
    }

FAULTY_OPEN(open)
FAULTY_OPEN(open64)
FAULTY(int, stat, (const char *path, void *status), (path, status))
FAULTY(int, stat64, (const char *path, void *status), (path, status))
FAULTY(int, lstat, (const char *path, void *status), (path, status))
FAULTY(int, lstat64, (const char *path, void *status), (path, status))
FAULTY(int, fstat, (int file, void *status), (file, status))
FAULTY(int, fstat64, (int file, void *status), (file, status))
FAULTY(int, fstatat, (int folder, const char *path, void *status, int flags),
       (folder, path, status, flags))
FAULTY(int, fstatat64, (int folder, const char *path, void *status, int flags),
       (folder, path, status, flags))
FAULTY(int, statx, (int folder, const char *path, int flags, unsigned mask, void *status),
       (folder, path, flags, mask, status))
FAULTY(int, access, (const char *path, int mode), (path, mode))
FAULTY(Offset, readlink, (const char *path, char *target, Size size), (path, target, size))
FAULTY(Offset, read, (int file, void *bytes, Size count), (file, bytes, count))
FAULTY(Offset, pread, (int file, void *bytes, Size count, Offset place),
       (file, bytes, count, place))
FAULTY(Offset, pread64, (int file, void *bytes, Size count, Offset place),
       (file, bytes, count, place))
FAULTY(Offset, write, (int file, const void *bytes, Size count), (file, bytes, count))
FAULTY(Offset, pwrite, (int file, const void *bytes, Size count, Offset place),
       (file, bytes, count, place))
FAULTY(Offset, pwrite64, (int file, const void *bytes, Size count, Offset place),
       (file, bytes, count, place))
FAULTY(int, ftruncate, (int file, Offset size), (file, size))
FAULTY(int, ftruncate64, (int file, Offset size), (file, size))
FAULTY(int, fdatasync, (int file), (file))
FAULTY(int, flock, (int file, int operation), (file, operation))
FAULTY(int, mkdir, (const char *path, unsigned mode), (path, mode))
FAULTY(int, unlink, (const char *path), (path))
FAULTY_TRACED('f', fsync, (int file), (file))
FAULTY_TRACED('s', syncfs, (int file), (file))
FAULTY_TRACED('l', link, (const char *from, const char *to), (from, to))
FAULTY_TRACED('r', rename, (const char *from, const char *to), (from, to))

extern "C" void *opendir(const char *path);
extern "C" void *opendir(const char *path)
{
    static const auto real = veltrix::next<void *(*)(const char *)>("opendir");
    return veltrix::fails("opendir") ? nullptr : real(path);
}

extern "C" void *readdir64(void *folder);
extern "C" void *readdir64(void *folder)
{
    static const auto real = veltrix::next<void *(*)(void *)>("readdir64");
    return veltrix::fails("readdir64") ? nullptr : real(folder);
}

extern "C" int close(int file);
extern "C" int close(int file)
{
    static const auto real = veltrix::next<int (*)(int)>("close");
    // A close that fails has closed all the same.
    const bool failing = veltrix::fails("close");
    const int code = errno;
    const int result = real(file);
    if (!failing)
        return result;
    errno = code;
    return -1;
}
