// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/overlapping_icons.h"

#include "ui_kit/theme/painting.h"
#include "ui_kit/widgets/artwork_images.h"

#include <algorithm>
#include <cmath>

namespace veltrix
{

std::vector<QRectF> layoutOverlappingIcons(const QRectF &rect, qreal iconSize, qsizetype count)
{
    std::vector<QRectF> squares;
    const qreal top = std::round(rect.center().y() - iconSize / 2);
    qreal x = rect.x();
    for (qsizetype i = 0; i < std::min<qsizetype>(count, mostOverlappingIcons); ++i) {
        squares.emplace_back(x, top, iconSize, iconSize);
        x += iconSize + iconSpacing;
    }
    return squares;
}

void paintOverlappingIcons(QPainter &painter, const QRectF &rect, qreal iconSize,
                           const QList<Url> &urls, ArtworkImages &images, const Tokens &tokens,
                           const QColor &under)
{
    const auto squares = layoutOverlappingIcons(rect, iconSize, urls.size());
    for (size_t i = 0; i < squares.size(); ++i) {
        const QRectF &square = squares[i];
        if (i > 0)
            drawRoundedRect(painter, square.adjusted(-1, -1, 1, 1), artworkRadius(iconSize) + 1,
                            under);
        paintArtwork(painter, square, images.image(urls[qsizetype(i)]), QStringLiteral("app.fill"),
                     tokens);
    }
}

} // namespace veltrix
