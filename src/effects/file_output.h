// SPDX-License-Identifier: GPL-3.0-or-later
// A file that is written piece by piece while the program goes on.
#pragma once

#include "effects/task.h"

#include <QByteArray>

#include <functional>

namespace veltrix
{

/// The new version of a file. Until place() has succeeded what was there before stays there; when
/// this goes before that, nothing of the new version is left.
class FileOutput
{
public:
    FileOutput() = default;
    virtual ~FileOutput() = default;
    FileOutput(const FileOutput &) = delete;
    FileOutput &operator=(const FileOutput &) = delete;

    /// Makes a piece of the content.
    using Piece = std::function<QByteArray()>;

    /// Adds what `piece` gives, which is called on another thread and freed there. Ends when that
    /// was written, so that whoever waits for it makes no more than the disk takes. One at a time.
    /// Throws FileError, and what the piece throws.
    virtual Task<void> write(Piece piece, std::stop_token stop) = 0;
    /// Puts the new version in place, so that it outlasts a power cut. Throws FileError.
    virtual Task<void> place(std::stop_token stop) = 0;
};

} // namespace veltrix
