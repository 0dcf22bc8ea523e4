// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/theme/painting.h"

#include <QStyleOption>

namespace veltrix
{

void drawRoundedRect(QPainter &painter, const QRectF &rect, qreal radius, const QColor &fill,
                     const QColor &line, qreal lineWidth)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(fill.alpha() == 0 ? QBrush(Qt::NoBrush) : QBrush(fill));
    if (line.alpha() == 0) {
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(rect, radius, radius);
    } else {
        painter.setPen(QPen(line, lineWidth));
        const qreal half = lineWidth / 2;
        painter.drawRoundedRect(rect.adjusted(half, half, -half, -half), radius - half,
                                radius - half);
    }
    painter.restore();
}

void drawFocusRing(QPainter &painter, const QRectF &rect, qreal radius, const QColor &color)
{
    drawRoundedRect(painter, rect, radius, Qt::transparent, color, 2);
}

void drawShadow(QPainter &painter, const QRectF &rect, qreal radius, const QColor &color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    // Thin layers add up to a blur; their strength falls with the square of the distance.
    QColor layer = color;
    layer.setAlphaF(color.alphaF() / (shadowReach / 3.0F));
    painter.setBrush(layer);
    for (int reach = shadowReach; reach > 0; reach -= 2) {
        const qreal spread = double(reach) * reach / shadowReach;
        const QRectF ring = rect.adjusted(-spread, -spread, spread, spread).translated(0, 6);
        painter.drawRoundedRect(ring, radius + spread, radius + spread);
    }
    painter.restore();
}

bool showsFocus(const QStyleOption &option)
{
    constexpr QStyle::State wanted = QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange;
    return (option.state & wanted) == wanted;
}

void drawHorizontalHairline(QPainter &painter, qreal left, qreal right, qreal y,
                            const QColor &color)
{
    painter.fillRect(QRectF(left, y, right - left, 1), color);
}

} // namespace veltrix
