// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/atomic_file.h"

#include "effects/file_reader.h"
#include "effects/linux/posix_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUuid>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veltrix
{

namespace
{

/// Hexadecimal digits that tell temporary files of one path apart.
constexpr qsizetype temporaryNameLength = 8;

QString temporaryPath(const QString &target)
{
    const QFileInfo info(target);
    return QStringLiteral("%1/.%2.%3.tmp")
        .arg(info.path(), info.fileName(),
             QUuid::createUuid().toString(QUuid::Id128).left(temporaryNameLength));
}

/// `fileName` is a pattern of the names that the temporary files were to get.
void removeTemporaryFiles(QDir folder, const QString &fileName)
{
    const QRegularExpression pattern(
        QStringLiteral("^\\.%1\\.[0-9a-f]{%2}\\.tmp$").arg(fileName).arg(temporaryNameLength));
    const QStringList names = folder.entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : names.filter(pattern))
        folder.remove(name);
}

} // namespace

AtomicFileWriter::AtomicFileWriter(const QString &path)
    : m_path(path), m_target(resolveLinks(path)),
      m_temporary(QFile::encodeName(temporaryPath(m_target)))
{
    m_descriptor = untilNotInterrupted([this] {
        return ::open(m_temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    });
    if (m_descriptor < 0)
        fail();
}

AtomicFileWriter::~AtomicFileWriter()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    if (!m_placed)
        ::unlink(m_temporary.constData());
}

void AtomicFileWriter::write(QByteArrayView content)
{
    for (qsizetype done = 0; done < content.size();) {
        const ssize_t count = untilNotInterrupted([&] {
            return ::write(m_descriptor, content.data() + done, size_t(content.size() - done));
        });
        if (count < 0)
            fail();
        done += count;
    }
    m_written += content.size();
    startWriteback();
}

void AtomicFileWriter::startWriteback()
{
#ifdef __linux__
    constexpr qint64 portion = 8 * 1024 * 1024;
    if (m_written - m_handedToDisk < portion)
        return;
    // Only a hint; the flush at the end tells of failures.
    ::sync_file_range(m_descriptor, m_handedToDisk, m_written - m_handedToDisk,
                      SYNC_FILE_RANGE_WRITE);
    m_handedToDisk = m_written;
#endif
}

void AtomicFileWriter::flush()
{
    if (m_closed)
        return;
    if (::fsync(m_descriptor) != 0)
        fail();
    close();
}

void AtomicFileWriter::close()
{
    struct stat status {
    };
    // Closing may report a late write error, so it is a step like the others.
    if (::fstat(m_descriptor, &status) != 0 || ::close(std::exchange(m_descriptor, -1)) != 0)
        fail();
    m_closed = identityOf(status);
}

void AtomicFileWriter::place()
{
    if (::rename(m_temporary.constData(), QFile::encodeName(m_target).constData()) != 0)
        fail();
    m_placed = m_closed;
}

void AtomicFileWriter::commit()
{
    flush();
    place();
    flushFolder(QFileInfo(m_target).path(), m_target);
}

void AtomicFileWriter::commitUnflushed()
{
    close();
    place();
}

void AtomicFileWriter::fail() const
{
    throw FileError::unwritable(m_path, systemReason(errno));
}

void writeFileAtomically(const QString &path, QByteArrayView content)
{
    AtomicFileWriter writer(path);
    writer.write(content);
    writer.commit();
}

void writeCacheFile(const QString &path, QByteArrayView content)
{
    AtomicFileWriter writer(path);
    writer.write(content);
    writer.commitUnflushed();
}

void removeInterruptedWrites(const QString &path)
{
    try {
        const QFileInfo target(resolveLinks(path));
        removeTemporaryFiles(target.dir(), QRegularExpression::escape(target.fileName()));
    } catch (const FileError &) {
        // They cost room, no more.
    }
}

void removeInterruptedWritesIn(const QString &folder)
{
    const QDir place(folder);
    removeTemporaryFiles(place, QStringLiteral(".+"));
    // What a link points to is written where it lies.
    for (const QFileInfo &info : place.entryInfoList(QDir::Files | QDir::System)) {
        if (info.isSymLink())
            removeInterruptedWrites(info.filePath());
    }
}

QByteArray readWholeFile(const QString &path)
{
    const FileReader file(path);
    QByteArray content = file.read(0, file.size());
    file.requireUnchanged();
    return content;
}

} // namespace veltrix
