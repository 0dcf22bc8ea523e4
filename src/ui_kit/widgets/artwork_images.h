// SPDX-License-Identifier: GPL-3.0-or-later
// Decoded artwork for painting: asked for by address, there now or announced later.
#pragma once

#include "effects/artwork_loading.h"
#include "effects/task_scope.h"

#include <QCache>
#include <QImage>
#include <QObject>
#include <QPixmap>
#include <QSet>

namespace veltrix
{

/// Keeps decoded images in memory and asks the loader for the ones that are missing. Views call
/// image() while painting and repaint when ready() names an address they show.
class ArtworkImages final : public QObject
{
    Q_OBJECT

public:
    explicit ArtworkImages(ArtworkLoading &loading, QObject *parent = nullptr);
    ~ArtworkImages() override;

    /// The image, or a null one that is being loaded from now on. An address that failed is not
    /// asked for again by this object.
    QImage image(const Url &url);
    /// Loads nothing until release(): what is asked for meanwhile is loaded then. For a window that
    /// is painted for the first time, which has no time for a disk or the network.
    void hold() { m_isHeld = true; }
    void release();
    /// Lets addresses that failed be tried once more, for example when the user refreshes.
    void retryFailed() { m_failed.clear(); }

Q_SIGNALS:
    void ready(const QString &url);

private:
    void begin(const Url &url);
    Task<void> load(Url url, std::stop_token stop);

    ArtworkLoading &m_loading;
    QCache<QString, QImage> m_images;
    QSet<QString> m_loadingNow;
    /// Wanted while held.
    QList<Url> m_held;
    bool m_isHeld = false;
    QSet<QString> m_failed;
    TaskScope m_tasks;
};

/// Draws artwork in a rounded square, or `placeholder` on a quiet background while there is none.
/// `image` may be null.
void paintArtwork(QPainter &painter, const QRectF &rect, const QImage &image,
                  const QString &placeholder, const class Tokens &tokens);

/// The corner radius of artwork of that size, as app icons have it.
qreal artworkRadius(qreal size);

} // namespace veltrix
