// SPDX-License-Identifier: GPL-3.0-or-later
// A lock between processes.
#pragma once

#include <QByteArray>
#include <QString>

namespace veltrix
{

/// Locks a file as a whole. The lock belongs to the open file: however the process ends, the kernel
/// frees it, and nothing stale is left.
class FileLock
{
public:
    /// What came of an attempt to lock.
    enum class Outcome {
        /// This object's until it is released or destroyed.
        Acquired,
        /// Another has it.
        HeldByAnother,
        /// The disk has no locks.
        Unsupported,
        /// There is no file to lock: its folder is missing, closed or read-only.
        Unavailable,
    };

    FileLock() = default;
    ~FileLock();
    FileLock(FileLock &&other) noexcept;
    FileLock &operator=(FileLock &&other) noexcept;

    /// Creates the file when it is missing, and tries to lock it.
    Outcome acquire(const QString &path);
    void release();
    [[nodiscard]] bool isHeld() const { return m_descriptor >= 0; }

    /// Whether the locked file is still the one at the path. When it was removed, or its folder
    /// moved, another process can lock the next file of that name.
    [[nodiscard]] bool isStillAt(const QString &path) const;

    /// Replaces the content of the locked file; false when that failed.
    [[nodiscard]] bool write(const QByteArray &content) const;

private:
    int m_descriptor = -1;
};

} // namespace veltrix
