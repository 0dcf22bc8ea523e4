// SPDX-License-Identifier: GPL-3.0-or-later
// A tracked app in a line: its icon, its name over its storefront, a symbol.
#pragma once

#include "model/app_profile.h"
#include "ui_kit/theme/tokens.h"

#include <QFont>
#include <QRectF>

class QPainter;

namespace veltrix
{

class ArtworkImages;

/// Icon at the leading end, two lines of text, a symbol at the trailing end.
struct AppLineGeometry {
    QRectF icon;
    QRectF name;
    QRectF country;
    QRectF mark;
};
AppLineGeometry layoutAppLine(const QRectF &rect, qreal nameHeight, qreal countryHeight,
                              qreal iconSize);

/// Paints all of it but the symbol.
void paintAppLine(QPainter &painter, const AppLineGeometry &geometry, const AppProfile &app,
                  ArtworkImages &images, const Tokens &tokens, const QFont &nameFont,
                  const QFont &countryFont);

} // namespace veltrix
