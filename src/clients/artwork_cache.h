// SPDX-License-Identifier: GPL-3.0-or-later
// Images on disk, so that icons are loaded once and not at every start.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace veltrix
{

/// A folder of images, one file a URL, held below a size by removing those that were used longest
/// ago. Everything that goes wrong with a file is a miss: a cache never fails its user.
class ArtworkCache
{
public:
    /// `folder` is created when the first image is kept; an empty one means no cache. `sizeLimit`
    /// is in bytes.
    ArtworkCache(QString folder, qint64 sizeLimit);

    [[nodiscard]] std::optional<QByteArray> find(const QString &url) const;
    void store(const QString &url, const QByteArray &image);

private:
    [[nodiscard]] QString pathOf(const QString &url) const;
    void measure();
    void removeOldest();

    QString m_folder;
    qint64 m_sizeLimit;
    /// Bytes in the folder; known from the first store on.
    std::optional<qint64> m_size;
};

} // namespace veltrix
