// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/artwork_images.h"

#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/symbols.h"

#include <QPainterPath>

#include <algorithm>
#include <utility>

namespace veltrix
{

namespace
{

/// Kibibytes of decoded images that are kept; an icon of 100 pixels takes 39.
constexpr int cacheKibibytes = 48 * 1024;
/// Longest side that is kept; nothing is ever shown larger.
constexpr int largestSide = 2048;

int costOf(const QImage &image)
{
    return int(std::max<qsizetype>(1, image.sizeInBytes() / 1024));
}

} // namespace

ArtworkImages::ArtworkImages(ArtworkLoading &loading, QObject *parent)
    : QObject(parent), m_loading(loading), m_images(cacheKibibytes)
{
}

ArtworkImages::~ArtworkImages() = default;

QImage ArtworkImages::image(const Url &url)
{
    const QString &key = url.text();
    if (const QImage *known = m_images.object(key))
        return *known;
    if (!m_loadingNow.contains(key) && !m_failed.contains(key)) {
        begin(url);
        // A loader that answers at once has filled the cache by now.
        if (const QImage *loaded = m_images.object(key))
            return *loaded;
    }
    return {};
}

void ArtworkImages::begin(const Url &url)
{
    m_loadingNow.insert(url.text());
    if (m_isHeld)
        m_held.append(url);
    else
        m_tasks.own(load(url, m_tasks.token()));
}

void ArtworkImages::release()
{
    m_isHeld = false;
    for (const Url &url : std::exchange(m_held, {}))
        m_tasks.own(load(url, m_tasks.token()));
}

Task<void> ArtworkImages::load(Url url, std::stop_token stop)
{
    QImage decoded;
    try {
        const QByteArray bytes = co_await m_loading.load(url, stop);
        decoded = QImage::fromData(bytes);
    } catch (const Error &) {
        // The placeholder stays; artwork is never worth a message.
    }
    m_loadingNow.remove(url.text());
    if (decoded.isNull()) {
        m_failed.insert(url.text());
    } else {
        if (std::max(decoded.width(), decoded.height()) > largestSide)
            decoded = decoded.scaled(largestSide, largestSide, Qt::KeepAspectRatio,
                                     Qt::SmoothTransformation);
        decoded = std::move(decoded).convertToFormat(QImage::Format_ARGB32_Premultiplied);
        m_images.insert(url.text(), new QImage(decoded), costOf(decoded));
    }
    Q_EMIT ready(url.text());
}

qreal artworkRadius(qreal size)
{
    return size * 0.225;
}

void paintArtwork(QPainter &painter, const QRectF &rect, const QImage &image,
                  const QString &placeholder, const Tokens &tokens)
{
    const qreal corner = artworkRadius(std::min(rect.width(), rect.height()));
    if (image.isNull()) {
        drawRoundedRect(painter, rect, corner, tokens[Token::Hover], tokens[Token::Hairline]);
        const qreal inset = std::min(rect.width(), rect.height()) * 0.26;
        drawSymbol(painter, rect.adjusted(inset, inset, -inset, -inset), placeholder,
                   tokens[Token::Gray]);
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    QPainterPath shape;
    shape.addRoundedRect(rect, corner, corner);
    // A brush is cut at the antialiased edge; a clip path would be jagged.
    const qreal scale = painter.device()->devicePixelRatioF();
    const QSize pixels = (rect.size() * scale).toSize();
    QImage fitted = image.scaled(pixels, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    fitted = fitted.copy((fitted.width() - pixels.width()) / 2,
                         (fitted.height() - pixels.height()) / 2, pixels.width(), pixels.height());
    QBrush brush(fitted);
    QTransform transform;
    transform.translate(rect.x(), rect.y());
    transform.scale(rect.width() / fitted.width(), rect.height() / fitted.height());
    brush.setTransform(transform);
    painter.fillPath(shape, brush);
    painter.restore();
}

} // namespace veltrix
