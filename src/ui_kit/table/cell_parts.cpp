// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/table/cell_parts.h"

#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/badge.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

constexpr qreal codeGap = 7;
constexpr int iconSide = 20;

} // namespace

void paintTextWithCode(const CellPainting &cell, const QString &text, const QString &code)
{
    const QFont font = fontFor(TextStyle::Body, cell.base());
    const QSizeF badge = codeBadgeSize(code, cell.base());
    const qreal room = std::max(0.0, cell.content.width() - badge.width() - codeGap);
    QRectF place = cell.content;
    place.setWidth(std::min(std::ceil(QFontMetricsF(font).horizontalAdvance(text)), room));
    paintCellText(cell, place, text, font, cell.tokens[Token::Text]);
    const QPointF corner(place.right() + codeGap,
                         std::round(place.center().y() - badge.height() / 2));
    paintCodeBadge(cell.painter, QRectF(corner, badge), code, cell.tokens, cell.base());
}

void paintIconWithText(const CellPainting &cell, const std::optional<Url> &icon,
                       const QString &text, Token token)
{
    const int side = scaledToFont(iconSide, cell.base());
    const QRectF place(cell.content.x(), std::round(cell.content.center().y() - side / 2.0), side,
                       side);
    const QImage image = icon ? cell.images->image(*icon) : QImage();
    paintArtwork(cell.painter, place, image, QStringLiteral("app.dashed"), cell.tokens);
    QRectF rest = cell.content;
    rest.setLeft(std::min(rest.right(), place.right() + spacing::s));
    paintCellText(cell, rest, text, fontFor(TextStyle::Body, cell.base()), cell.tokens[token]);
}

} // namespace veltrix
