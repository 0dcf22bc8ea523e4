// SPDX-License-Identifier: GPL-3.0-or-later
// Line drawings by name, tinted by colour and crisp at every scale.
#pragma once

#include "ui_kit/theme/tokens.h"

#include <QIcon>
#include <QPixmap>
#include <QString>

class QPainter;

namespace veltrix
{

/// The drawing `name` ("magnifyingglass") in one colour, `size` logical pixels square, rendered for
/// `devicePixelRatio`. A null pixmap when there is no such symbol.
QPixmap symbolPixmap(const QString &name, int size, const QColor &color, qreal devicePixelRatio);

/// Draws a symbol centred in `rect`, as large as its shorter side, for the painter's own scale.
void drawSymbol(QPainter &painter, const QRectF &rect, const QString &name, const QColor &color);

/// An icon for actions and menus that follows the palette in use.
QIcon symbolIcon(const QString &name, Token token = Token::Text);

} // namespace veltrix
