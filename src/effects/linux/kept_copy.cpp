// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/kept_copy.h"

#include "effects/linux/posix_files.h"

#include <QFile>
#include <QFileInfo>

#include <unistd.h>

namespace veltrix
{

namespace
{

QString datedName(const QString &path, QStringView label, Date now, int attempt)
{
    const QFileInfo info(path);
    QString date = formatInternetDateTime(now).left(19);
    date.replace(u':', u'-');
    QString name =
        QStringLiteral("%1/%2.%3-%4Z").arg(info.path(), info.completeBaseName(), label, date);
    if (attempt > 1)
        name += QStringLiteral("-%1").arg(attempt);
    if (!info.suffix().isEmpty())
        name += u'.' + info.suffix();
    return name;
}

/// Copies where there are no links; never over another file.
bool copyTo(const QString &from, const QString &name)
{
    const FileLook look = lookAtFile(name);
    if (std::holds_alternative<FileIdentity>(look))
        return false;
    if (const auto *unknown = std::get_if<UnknownFile>(&look))
        throw FileError::unwritable(name, unknown->reason);
    AtomicFileWriter copy(name);
    copy.write(readWholeFile(from));
    try {
        copy.commit();
    } catch (const FileError &) {
        // Not sure to last, so the next attempt makes its own.
        if (copy.placed())
            QFile::remove(name);
        throw;
    }
    return true;
}

/// False when the name is taken.
bool giveName(const QString &from, const QString &name)
{
    const QByteArray path = QFile::encodeName(name);
    if (::link(QFile::encodeName(from).constData(), path.constData()) != 0)
        return errno == EEXIST ? false : copyTo(from, name);
    try {
        flushFolder(QFileInfo(name).path(), name);
    } catch (const FileError &) {
        ::unlink(path.constData());
        throw;
    }
    return true;
}

} // namespace

QString keepUnderDatedName(const QString &path, QStringView label, Date now)
{
    constexpr int mostNames = 1000;
    const QString target = resolveLinks(path);
    for (int attempt = 1; attempt <= mostNames; ++attempt) {
        QString name = datedName(target, label, now, attempt);
        if (giveName(target, name))
            return name;
    }
    throw FileError(
        QStringLiteral("The file “%1” could not be kept under another name.").arg(path));
}

OverwriteGuard::Found OverwriteGuard::look() const
{
    // A link to a file that is yet to be written is no file.
    const FileLook look = lookAtFile(resolveLinks(m_path));
    if (const auto *unknown = std::get_if<UnknownFile>(&look))
        throw FileError::unwritable(m_path, unknown->reason);
    const auto *identity = std::get_if<FileIdentity>(&look);
    if (!identity)
        return m_known ? Found::Gone : Found::Nothing;
    return m_known == *identity ? Found::Known : Found::Foreign;
}

QString OverwriteGuard::keep(QStringView label, Date now)
{
    const FileLook look = lookAtFile(m_path);
    QString name = keepUnderDatedName(m_path, label, now);
    if (const auto *identity = std::get_if<FileIdentity>(&look))
        m_known = *identity;
    return name;
}

void OverwriteGuard::replace(AtomicFileWriter &file)
{
    file.flush();
    if (look() == Found::Foreign) {
        throw FileError::unwritable(m_path,
                                    QStringLiteral("Something else has written it meanwhile"));
    }
    try {
        file.commit();
    } catch (const FileError &) {
        if (file.placed())
            m_known = file.placed();
        throw;
    }
    m_known = file.placed();
}

} // namespace veltrix
