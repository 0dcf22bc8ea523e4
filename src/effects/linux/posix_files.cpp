// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/linux/posix_files.h"

#include <QFile>

#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace veltrix
{

FileError FileError::unreadable(const QString &path, const QString &reason)
{
    return FileError(QStringLiteral("The file “%1” could not be read: %2.").arg(path, reason));
}

FileError FileError::unwritable(const QString &path, const QString &reason)
{
    return FileError(QStringLiteral("The file “%1” could not be written: %2.").arg(path, reason));
}

QString systemReason(int code)
{
    return QString::fromLocal8Bit(std::strerror(code));
}

void flushFolder(const QString &folder, const QString &path)
{
    const auto open = [](const QString &name, int flags) {
        return untilNotInterrupted([&] {
            return ::open(QFile::encodeName(name).constData(), O_RDONLY | O_CLOEXEC | flags);
        });
    };
    int descriptor = open(folder, O_DIRECTORY);
    bool flushed = descriptor >= 0 && ::fsync(descriptor) == 0;
    if (!flushed) {
        // Some folders may be written but not opened, and some disks know no flush of a folder;
        // then all of the disk is flushed.
        if (descriptor < 0)
            descriptor = open(path, 0);
        flushed = descriptor >= 0 && ::syncfs(descriptor) == 0;
    }
    const int code = errno;
    if (descriptor >= 0)
        ::close(descriptor);
    if (!flushed)
        throw FileError::unwritable(path, systemReason(code));
}

} // namespace veltrix
