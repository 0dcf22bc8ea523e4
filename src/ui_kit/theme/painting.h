// SPDX-License-Identifier: GPL-3.0-or-later
// The few shapes that everything is drawn with.
#pragma once

#include "ui_kit/theme/tokens.h"

#include <QPainter>
#include <QRectF>

class QStyleOption;

namespace veltrix
{

/// A rectangle with round corners, filled, with a one-pixel line inside its edge. Either colour may
/// be transparent.
void drawRoundedRect(QPainter &painter, const QRectF &rect, qreal radius, const QColor &fill,
                     const QColor &line = Qt::transparent, qreal lineWidth = 1);

/// The ring around what has the keyboard focus, inside `rect`.
void drawFocusRing(QPainter &painter, const QRectF &rect, qreal radius, const QColor &color);

/// A soft shadow around a card with round corners. It reaches `shadowReach` pixels past `rect`.
inline constexpr int shadowReach = 24;
void drawShadow(QPainter &painter, const QRectF &rect, qreal radius, const QColor &color);

/// True when the focus came by keyboard, so that it has to be seen.
bool showsFocus(const QStyleOption &option);

/// A one-pixel horizontal or vertical line at whole device pixels.
void drawHorizontalHairline(QPainter &painter, qreal left, qreal right, qreal y,
                            const QColor &color);

} // namespace veltrix
