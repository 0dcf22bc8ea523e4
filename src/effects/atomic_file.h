// SPDX-License-Identifier: GPL-3.0-or-later
// Whole files, written so that a reader or a power cut never meets half of one.
#pragma once

#include "effects/file_error.h"
#include "effects/file_identity.h"

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace veltrix
{

/// Writes a new version of the file at `path`, piece by piece, into a temporary file in the same
/// folder. Until commit() has succeeded the old version stays in place; without a commit() the
/// temporary file is removed. A symbolic link stays, and what it points to is written.
class AtomicFileWriter
{
public:
    /// Throws FileError, as the other functions do, when the step fails.
    explicit AtomicFileWriter(const QString &path);
    ~AtomicFileWriter();
    AtomicFileWriter(const AtomicFileWriter &) = delete;
    AtomicFileWriter &operator=(const AtomicFileWriter &) = delete;

    /// Adds to the new version. The disk begins to write it before the end is there, so that the
    /// flush of a large file has little left to wait for.
    void write(QByteArrayView content);

    /// Flushes the new version to the disk, so that only its name is left to give.
    void flush();

    /// Flushes, renames the new version over the old one, and flushes the folder.
    void commit();

    /// Renames the new version over the old one and leaves it to the system when it is on the disk.
    /// A process that is killed loses nothing; after a power cut the file may be cut off.
    void commitUnflushed();

    /// The new version, once it has taken the old one's place: also when commit() has failed after
    /// that, and it is only not certain to outlast a power cut.
    [[nodiscard]] const std::optional<FileIdentity> &placed() const { return m_placed; }

private:
    void startWriteback();
    void close();
    void place();
    [[noreturn]] void fail() const;

    QString m_path;
    /// The path behind its links.
    QString m_target;
    QByteArray m_temporary;
    /// -1 once it is closed.
    int m_descriptor = -1;
    qint64 m_written = 0;
    qint64 m_handedToDisk = 0;
    /// The new version, once it is closed.
    std::optional<FileIdentity> m_closed;
    std::optional<FileIdentity> m_placed;
};

/// Replaces the file at `path` by `content`, as an AtomicFileWriter does. Throws FileError when any
/// step fails; the old file is then still in place and the temporary one is removed.
void writeFileAtomically(const QString &path, QByteArrayView content);

/// The same for what can be had again: it waits for no disk, as commitUnflushed() does not.
void writeCacheFile(const QString &path, QByteArrayView content);

/// Removes the temporary files that writes of this path left when the process or the machine
/// stopped in the middle. Only for whoever alone writes the path; failures are ignored.
void removeInterruptedWrites(const QString &path);

/// The same for every path in a folder.
void removeInterruptedWritesIn(const QString &folder);

/// The whole content of a file. Throws FileError when it cannot be read.
QByteArray readWholeFile(const QString &path);

} // namespace veltrix
