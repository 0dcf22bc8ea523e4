// SPDX-License-Identifier: GPL-3.0-or-later
// What the file effects share of the system's own calls.
#pragma once

#include "effects/file_error.h"

#include <QString>

#include <cerrno>

struct stat;

namespace veltrix
{

struct FileIdentity;

/// The system's words for an error number.
QString systemReason(int code);

/// Repeats a call that a signal has interrupted.
template <class Call>
auto untilNotInterrupted(Call call)
{
    for (;;) {
        const auto result = call();
        if (result != -1 || errno != EINTR)
            return result;
    }
}

/// The identity of the file of which the system says this.
FileIdentity identityOf(const struct stat &status);

/// Makes names that were given or taken away in a folder durable. Throws FileError about `path`
/// when neither the folder nor, where it refuses, its whole file system can be flushed.
void flushFolder(const QString &folder, const QString &path);

} // namespace veltrix
