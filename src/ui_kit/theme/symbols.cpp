// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/theme/symbols.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

QString resourcePath(const QString &name)
{
    return QStringLiteral(":/symbols/%1.svg").arg(name);
}

class SymbolIconEngine final : public QIconEngine
{
public:
    SymbolIconEngine(QString name, Token token) : m_name(std::move(name)), m_token(token) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const Tokens tokens = Tokens::of(QApplication::palette());
        drawSymbol(*painter, rect, m_name,
                   tokens[mode == QIcon::Disabled ? Token::Secondary : m_token]);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override
    {
        Q_UNUSED(scale) // `size` is in device pixels already.
        return pixmap(size, mode, state);
    }

    [[nodiscard]] QIconEngine *clone() const override
    {
        return new SymbolIconEngine(m_name, m_token);
    }

private:
    QString m_name;
    Token m_token;
};

} // namespace

QPixmap symbolPixmap(const QString &name, int size, const QColor &color, qreal devicePixelRatio)
{
    const int pixels = std::max(1, int(std::ceil(size * devicePixelRatio)));
    const QString key = QStringLiteral("symbol/%1/%2/%3").arg(name).arg(pixels).arg(color.rgba());
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        QSvgRenderer renderer(resourcePath(name));
        if (!renderer.isValid())
            return {};
        QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        renderer.render(&painter, QRectF(0, 0, pixels, pixels));
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), color);
        painter.end();
        pixmap = QPixmap::fromImage(image);
        QPixmapCache::insert(key, pixmap);
    }
    pixmap.setDevicePixelRatio(double(pixels) / size);
    return pixmap;
}

void drawSymbol(QPainter &painter, const QRectF &rect, const QString &name, const QColor &color)
{
    const int size = int(std::floor(std::min(rect.width(), rect.height())));
    if (size <= 0)
        return;
    const qreal scale = painter.device()->devicePixelRatioF();
    const QPixmap pixmap = symbolPixmap(name, size, color, scale);
    // Whole device pixels keep the strokes sharp.
    const auto snapped = [scale](qreal value) {
        return std::round(value * scale) / scale;
    };
    const QPointF corner(snapped(rect.x() + (rect.width() - size) / 2),
                         snapped(rect.y() + (rect.height() - size) / 2));
    painter.drawPixmap(corner, pixmap);
}

QIcon symbolIcon(const QString &name, Token token)
{
    return QIcon(new SymbolIconEngine(name, token));
}

} // namespace veltrix
