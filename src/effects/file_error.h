// SPDX-License-Identifier: GPL-3.0-or-later
// Failures of reading and writing files.
#pragma once

#include "model/error.h"

namespace veltrix
{

/// A file could not be read or written. The description names the file and says why.
class FileError final : public Error
{
public:
    using Error::Error;

    static FileError unreadable(const QString &path, const QString &reason);
    static FileError unwritable(const QString &path, const QString &reason);
};

} // namespace veltrix
