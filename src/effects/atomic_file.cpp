// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/atomic_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUuid>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veltrix
{

namespace
{

/// Hexadecimal digits that tell temporary files of one path apart.
constexpr qsizetype temporaryNameLength = 8;

QString reason(int code)
{
    return QString::fromLocal8Bit(std::strerror(code));
}

/// Makes a rename in the folder durable. Some file systems refuse it; the rename itself stands.
void flushFolder(const QByteArray &folder)
{
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

} // namespace

AtomicFileWriter::AtomicFileWriter(const QString &path) : m_path(path)
{
    const QFileInfo info(path);
    const QString temporary =
        QStringLiteral("%1/.%2.%3.tmp")
            .arg(info.path(), info.fileName(),
                 QUuid::createUuid().toString(QUuid::Id128).left(temporaryNameLength));
    m_temporary = QFile::encodeName(temporary);
    m_descriptor = ::open(m_temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (m_descriptor < 0)
        fail();
}

AtomicFileWriter::~AtomicFileWriter()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    if (!m_isCommitted)
        ::unlink(m_temporary.constData());
}

void AtomicFileWriter::write(QByteArrayView content)
{
    qsizetype done = 0;
    while (done < content.size()) {
        const ssize_t count =
            ::write(m_descriptor, content.data() + done, size_t(content.size() - done));
        if (count < 0 && errno != EINTR)
            fail();
        done += std::max<ssize_t>(count, 0);
    }
    m_written += done;
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

void AtomicFileWriter::commit()
{
    // Closing may report a late write error, so it is a step like the others.
    if (::fsync(m_descriptor) != 0 || ::close(std::exchange(m_descriptor, -1)) != 0 ||
        ::rename(m_temporary.constData(), QFile::encodeName(m_path).constData()) != 0)
        fail();
    m_isCommitted = true;
    flushFolder(QFile::encodeName(QFileInfo(m_path).path()));
}

void AtomicFileWriter::fail() const
{
    throw FileError(
        QStringLiteral("The file “%1” could not be written: %2.").arg(m_path, reason(errno)));
}

void writeFileAtomically(const QString &path, QByteArrayView content)
{
    AtomicFileWriter writer(path);
    writer.write(content);
    writer.commit();
}

void removeInterruptedWrites(const QString &path)
{
    const QFileInfo info(path);
    const QRegularExpression pattern(QStringLiteral("^\\.%1\\.[0-9a-f]{%2}\\.tmp$")
                                         .arg(QRegularExpression::escape(info.fileName()))
                                         .arg(temporaryNameLength));
    QDir folder(info.path());
    const QStringList names = folder.entryList(QDir::Files | QDir::Hidden);
    for (const QString &name : names.filter(pattern))
        folder.remove(name);
}

QByteArray readWholeFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw FileError(
            QStringLiteral("The file “%1” could not be read: %2.").arg(path, file.errorString()));
    }
    QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        throw FileError(
            QStringLiteral("The file “%1” could not be read: %2.").arg(path, file.errorString()));
    }
    return content;
}

} // namespace veltrix
