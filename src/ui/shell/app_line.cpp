// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/app_line.h"

#include "ui_kit/text/shown_text.h"
#include "ui_kit/text/storefronts.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/artwork_images.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

constexpr qreal markSize = 14;

}

AppLineGeometry layoutAppLine(const QRectF &rect, qreal nameHeight, qreal countryHeight,
                              qreal iconSize)
{
    AppLineGeometry geometry;
    const qreal middle = rect.center().y();
    const qreal top = std::round(middle - (nameHeight + countryHeight) / 2);
    geometry.icon = QRectF(rect.x(), std::round(middle - iconSize / 2), iconSize, iconSize);
    geometry.mark =
        QRectF(rect.right() - markSize, std::round(middle - markSize / 2), markSize, markSize);
    const qreal left = geometry.icon.right() + 10;
    const qreal width = std::max(0.0, geometry.mark.x() - spacing::s - left);
    geometry.name = QRectF(left, top, width, nameHeight);
    geometry.country = QRectF(left, top + nameHeight, width, countryHeight);
    return geometry;
}

void paintAppLine(QPainter &painter, const AppLineGeometry &geometry, const AppProfile &app,
                  ArtworkImages &images, const Tokens &tokens, const QFont &nameFont,
                  const QFont &countryFont)
{
    paintArtwork(painter, geometry.icon, app.iconURL ? images.image(*app.iconURL) : QImage(),
                 QStringLiteral("app.fill"), tokens);
    painter.setFont(nameFont);
    painter.setPen(tokens[Token::Text]);
    painter.drawText(geometry.name, Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetricsF(nameFont).elidedText(shownLine(app.appName), Qt::ElideRight,
                                                        geometry.name.width()));
    painter.setFont(countryFont);
    painter.setPen(tokens[Token::Secondary]);
    painter.drawText(
        geometry.country, Qt::AlignVCenter | Qt::TextSingleLine,
        QFontMetricsF(countryFont)
            .elidedText(storefrontName(app.country), Qt::ElideRight, geometry.country.width()));
}

} // namespace veltrix
