// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/file_lock.h"

#include "effects/linux/posix_files.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace veltrix
{

FileLock::~FileLock()
{
    release();
}

FileLock::FileLock(FileLock &&other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1))
{
}

FileLock &FileLock::operator=(FileLock &&other) noexcept
{
    if (this != &other) {
        release();
        m_descriptor = std::exchange(other.m_descriptor, -1);
    }
    return *this;
}

void FileLock::release()
{
    if (m_descriptor >= 0)
        ::close(std::exchange(m_descriptor, -1));
}

FileLock::Outcome FileLock::acquire(const QString &path)
{
    release();
    const QByteArray name = QFile::encodeName(path);
    // Between the opening and the locking another may have removed the file.
    constexpr int mostAttempts = 10;
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        int descriptor = untilNotInterrupted(
            [&] { return ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600); });
        if (descriptor < 0)
            descriptor =
                untilNotInterrupted([&] { return ::open(name.constData(), O_RDONLY | O_CLOEXEC); });
        if (descriptor < 0)
            return Outcome::Unavailable;
        if (untilNotInterrupted([&] { return ::flock(descriptor, LOCK_EX | LOCK_NB); }) != 0) {
            const bool held = errno == EWOULDBLOCK;
            ::close(descriptor);
            return held ? Outcome::HeldByAnother : Outcome::Unsupported;
        }
        m_descriptor = descriptor;
        if (isStillAt(path))
            return Outcome::Acquired;
        release();
    }
    return Outcome::Unavailable;
}

bool FileLock::isStillAt(const QString &path) const
{
    struct stat locked {
    };
    struct stat there {
    };
    return m_descriptor >= 0 && ::fstat(m_descriptor, &locked) == 0 &&
           ::stat(QFile::encodeName(path).constData(), &there) == 0 &&
           locked.st_dev == there.st_dev && locked.st_ino == there.st_ino;
}

bool FileLock::write(const QByteArray &content) const
{
    return ::ftruncate(m_descriptor, 0) == 0 &&
           ::pwrite(m_descriptor, content.constData(), size_t(content.size()), 0) == content.size();
}

} // namespace veltrix
