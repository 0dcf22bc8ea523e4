// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/file_identity.h"

#include "effects/linux/posix_files.h"

#include <QFile>
#include <QFileInfo>

#include <climits>
#include <sys/stat.h>
#include <unistd.h>

namespace veltrix
{

namespace
{

/// Links that lead to links; the system's own limit.
constexpr int mostLinks = 40;

/// Where a symbolic link points; none when the path is something else or nothing.
std::optional<QString> linkTarget(const QString &path)
{
    char target[PATH_MAX];
    const ssize_t length = ::readlink(QFile::encodeName(path).constData(), target, sizeof(target));
    if (length >= 0)
        return QFile::decodeName(QByteArray(target, length));
    const int code = errno;
    // Not a link, or nothing there. A link that seems to be none would be replaced, so this asks
    // twice.
    struct stat status {
    };
    const bool isLink =
        ::lstat(QFile::encodeName(path).constData(), &status) == 0 && S_ISLNK(status.st_mode);
    if ((code == EINVAL || code == ENOENT) && !isLink)
        return std::nullopt;
    throw FileError::unwritable(path, systemReason(code));
}

/// Why there is no file at a path whose look-up has said so.
FileLook lookAtFolder(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status {
    };
    if (::lstat(name.constData(), &status) == 0)
        return UnknownFile{QStringLiteral("It is a link to a file that is not there")};
    if (errno != ENOENT)
        return UnknownFile{systemReason(errno)};
    const QString folder = QFileInfo(path).path();
    if (::stat(QFile::encodeName(folder).constData(), &status) == 0)
        return NoFile{};
    if (errno == ENOENT)
        return UnknownFile{QStringLiteral("The folder “%1” is not there").arg(folder)};
    return UnknownFile{systemReason(errno)};
}

} // namespace

FileIdentity identityOf(const struct stat &status)
{
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
            status.st_mtim.tv_nsec};
}

FileLook lookAtFile(const QString &path)
{
    struct stat status {
    };
    if (::stat(QFile::encodeName(path).constData(), &status) == 0)
        return identityOf(status);
    if (errno == ENOENT)
        return lookAtFolder(path);
    return UnknownFile{systemReason(errno)};
}

std::optional<FolderIdentity> identityOfFolder(const QString &path)
{
    struct stat status {
    };
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    return FolderIdentity{status.st_dev, status.st_ino};
}

QString resolveLinks(const QString &path)
{
    QString resolved = path;
    for (int i = 0; i < mostLinks; ++i) {
        const auto target = linkTarget(resolved);
        if (!target)
            return resolved;
        // A relative target starts at the link's own folder.
        resolved = target->startsWith(u'/') ? *target : QFileInfo(resolved).path() + u'/' + *target;
    }
    throw FileError::unwritable(path, systemReason(ELOOP));
}

} // namespace veltrix
