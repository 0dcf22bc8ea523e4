// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/artwork_cache.h"

#include "clients/image_wholeness.h"
#include "effects/atomic_file.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>

namespace veltrix
{

ArtworkCache::ArtworkCache(QString folder, qint64 sizeLimit)
    : m_folder(std::move(folder)), m_sizeLimit(sizeLimit)
{
}

std::optional<QByteArray> ArtworkCache::find(const QString &url) const
{
    if (m_folder.isEmpty())
        return std::nullopt;
    QFile file(pathOf(url));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray image = file.readAll();
    // Nobody has waited until it was on the disk, so a power cut may have cut it off.
    if (file.error() != QFileDevice::NoError || image.isEmpty() || !isWholeImage(image))
        return std::nullopt;
    // The modification time says when an image was last wanted.
    file.setFileTime(QDateTime::currentDateTimeUtc(), QFileDevice::FileModificationTime);
    return image;
}

void ArtworkCache::store(const QString &url, const QByteArray &image)
{
    if (m_folder.isEmpty() || image.size() > m_sizeLimit)
        return;
    try {
        QDir().mkpath(m_folder);
        writeCacheFile(pathOf(url), image);
    } catch (const FileError &) {
        return;
    }
    if (m_size)
        *m_size += image.size();
    else
        measure();
    if (*m_size > m_sizeLimit)
        removeOldest();
}

QString ArtworkCache::pathOf(const QString &url) const
{
    const QByteArray name =
        QCryptographicHash::hash(url.toUtf8(), QCryptographicHash::Sha256).toHex();
    return m_folder + u'/' + QString::fromLatin1(name);
}

void ArtworkCache::measure()
{
    m_size = 0;
    for (const QFileInfo &file : QDir(m_folder).entryInfoList(QDir::Files))
        *m_size += file.size();
}

void ArtworkCache::removeOldest()
{
    // Files that were written twice were counted twice, so the truth is measured first; then a
    // tenth is freed at once, so that the next image does not sort the folder again.
    measure();
    const qint64 goal = m_sizeLimit - m_sizeLimit / 10;
    const QFileInfoList oldestFirst =
        QDir(m_folder).entryInfoList(QDir::Files, QDir::Time | QDir::Reversed);
    for (const QFileInfo &file : oldestFirst) {
        if (*m_size <= goal)
            break;
        if (QFile::remove(file.filePath()))
            *m_size -= file.size();
    }
}

} // namespace veltrix
