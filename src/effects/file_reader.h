// SPDX-License-Identifier: GPL-3.0-or-later
// Reads a file and knows which one it was.
#pragma once

#include "effects/file_error.h"
#include "effects/file_identity.h"

#include <QByteArray>

namespace veltrix
{

/// An open file that is read from any place. Every function throws FileError when it fails.
class FileReader
{
public:
    /// Opens a file; a folder, a pipe or a device is none, and opening one does not wait.
    explicit FileReader(const QString &path);
    ~FileReader();
    FileReader(const FileReader &) = delete;
    FileReader &operator=(const FileReader &) = delete;

    /// As it was opened.
    [[nodiscard]] const FileIdentity &identity() const { return m_identity; }
    /// Bytes.
    [[nodiscard]] qint64 size() const { return m_identity.size; }

    void read(qint64 place, char *out, qint64 count) const;
    [[nodiscard]] QByteArray read(qint64 place, qint64 count) const;

    /// Throws when the file was written since it was opened: what was read may be of two versions.
    void requireUnchanged() const;

private:
    QString m_path;
    int m_descriptor = -1;
    FileIdentity m_identity;
};

} // namespace veltrix
