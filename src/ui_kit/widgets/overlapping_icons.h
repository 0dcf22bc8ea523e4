// SPDX-License-Identifier: GPL-3.0-or-later
// The top apps of a search as a row of overlapping icons.
#pragma once

#include "model/url.h"
#include "ui_kit/theme/tokens.h"

#include <QList>
#include <QRectF>

#include <vector>

class QPainter;

namespace veltrix
{

class ArtworkImages;

/// At most this many icons are drawn.
inline constexpr int mostOverlappingIcons = 5;
/// From the end of one icon to the start of the next.
inline constexpr qreal iconSpacing = -6;

/// The square of each icon, first to last, at the leading end of `rect`; at most five, each
/// overlapping the one before. `iconSize` is the side of a square.
std::vector<QRectF> layoutOverlappingIcons(const QRectF &rect, qreal iconSize, qsizetype count);

/// `under` is the colour that lies under the row: it parts an icon from the one before.
void paintOverlappingIcons(QPainter &painter, const QRectF &rect, qreal iconSize,
                           const QList<Url> &urls, ArtworkImages &images, const Tokens &tokens,
                           const QColor &under);

} // namespace veltrix
