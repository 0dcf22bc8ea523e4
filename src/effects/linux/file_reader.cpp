// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/file_reader.h"

#include "effects/linux/posix_files.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veltrix
{

namespace
{

struct stat statusOf(int descriptor, const QString &path)
{
    struct stat status {
    };
    if (::fstat(descriptor, &status) != 0)
        throw FileError::unreadable(path, systemReason(errno));
    return status;
}

} // namespace

FileReader::FileReader(const QString &path) : m_path(path)
{
    const QByteArray name = QFile::encodeName(path);
    m_descriptor = untilNotInterrupted(
        [&] { return ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); });
    if (m_descriptor < 0)
        throw FileError::unreadable(path, systemReason(errno));
    try {
        const struct stat status = statusOf(m_descriptor, path);
        if (!S_ISREG(status.st_mode))
            throw FileError::unreadable(path, QStringLiteral("It is not a file"));
        m_identity = identityOf(status);
    } catch (const FileError &) {
        ::close(m_descriptor);
        throw;
    }
}

FileReader::~FileReader()
{
    ::close(m_descriptor);
}

void FileReader::read(qint64 place, char *out, qint64 count) const
{
    for (qint64 filled = 0; filled < count;) {
        const ssize_t step = untilNotInterrupted([&] {
            return ::pread(m_descriptor, out + filled, size_t(count - filled), place + filled);
        });
        if (step < 0)
            throw FileError::unreadable(m_path, systemReason(errno));
        if (step == 0)
            throw FileError::unreadable(m_path, QStringLiteral("It was shortened"));
        filled += step;
    }
}

QByteArray FileReader::read(qint64 place, qint64 count) const
{
    QByteArray bytes(count, Qt::Uninitialized);
    read(place, bytes.data(), count);
    return bytes;
}

void FileReader::requireUnchanged() const
{
    if (identityOf(statusOf(m_descriptor, m_path)) != m_identity)
        throw FileError::unreadable(m_path, QStringLiteral("It was changed while it was read"));
}

} // namespace veltrix
