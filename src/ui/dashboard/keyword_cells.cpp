// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_cells.h"

#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/badge.h"
#include "ui_kit/widgets/overlapping_icons.h"
#include "ui_kit/widgets/position_badge.h"

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

constexpr qreal storefrontGap = 7;

/// Of the symbol before a second line.
qreal symbolSide(qreal lineHeight)
{
    return std::round(lineHeight * 0.85);
}

} // namespace

KeywordCellGeometry layoutKeywordCell(const QRectF &content, const QFontMetricsF &title,
                                      const QFontMetricsF &subtitle, qreal titleWidth,
                                      const QSizeF &storefront)
{
    const qreal upper = std::ceil(title.height());
    const qreal lower = std::ceil(subtitle.height());
    const qreal top = std::round(content.center().y() - (upper + lower) / 2);
    KeywordCellGeometry geometry;
    geometry.title = QRectF(content.x(), top, content.width(), upper);
    geometry.subtitle = QRectF(content.x(), top + upper, content.width(), lower);
    if (storefront.isEmpty())
        return geometry;
    const qreal left = content.width() - storefront.width() - storefrontGap;
    geometry.title.setWidth(std::clamp(std::ceil(titleWidth), 0.0, std::max(0.0, left)));
    const QPointF corner(geometry.title.right() + storefrontGap,
                         std::round(geometry.title.center().y() - storefront.height() / 2));
    geometry.storefront = QRectF(corner, storefront);
    return geometry;
}

qreal keywordCellWidth(const KeywordEntry &entry, const QFont &base)
{
    const QFontMetricsF title(fontFor(TextStyle::BodyMedium, base));
    const QFontMetricsF subtitle(fontFor(TextStyle::Secondary, base));
    qreal upper = title.horizontalAdvance(entry.row.keyword);
    if (entry.surroundings->hasSeveralStorefronts)
        upper += storefrontGap + codeBadgeSize(entry.row.country, base).width();
    qreal lower = subtitle.horizontalAdvance(updatedText(entry));
    if (!entry.unmeasurable.isEmpty())
        lower += symbolSide(std::ceil(subtitle.height())) + spacing::xs;
    return std::ceil(std::max(upper, lower));
}

void paintKeywordCell(const CellPainting &cell, const KeywordEntry &entry)
{
    const QFont title = fontFor(TextStyle::BodyMedium, cell.base());
    const QFont subtitle = fontFor(TextStyle::Secondary, cell.base());
    const QFontMetricsF titleMetrics(title);
    const bool tellsStorefront = entry.surroundings->hasSeveralStorefronts;
    const KeywordCellGeometry geometry = layoutKeywordCell(
        cell.content, titleMetrics, QFontMetricsF(subtitle),
        titleMetrics.horizontalAdvance(entry.row.keyword),
        tellsStorefront ? codeBadgeSize(entry.row.country, cell.base()) : QSizeF());
    paintCellText(cell, geometry.title, entry.row.keyword, title, cell.tokens[Token::Text]);
    if (tellsStorefront)
        paintCodeBadge(cell.painter, geometry.storefront, entry.row.country, cell.tokens,
                       cell.base());
    QRectF line = geometry.subtitle;
    if (!entry.unmeasurable.isEmpty()) {
        const qreal size = symbolSide(line.height());
        drawSymbol(cell.painter,
                   QRectF(line.x(), std::round(line.center().y() - size / 2), size, size),
                   QStringLiteral("exclamationmark.triangle"), cell.tokens[Token::Orange]);
        line.setLeft(line.left() + size + spacing::xs);
    }
    paintCellText(cell, line, updatedText(entry), subtitle, cell.tokens[Token::Secondary]);
}

void paintRankingCell(const CellPainting &cell, const KeywordEntry &entry, const QString &pending)
{
    if (entry.row.awaitingMetrics) {
        paintCellText(cell, cell.content, pending, fontFor(TextStyle::Secondary, cell.base()),
                      cell.tokens[Token::Secondary]);
        return;
    }
    // Movement is told only beside a rank; the tool tip says that the app has left.
    paintPosition(cell.painter, cell.content, {entry.row.position},
                  entry.row.position ? entry.movement : std::nullopt, cell.tokens, cell.base());
}

void paintAppsCell(const CellPainting &cell, const KeywordEntry &entry)
{
    const qreal side = std::round(controlHeight(cell.base()) * 24.0 / 30.0);
    paintOverlappingIcons(cell.painter, cell.content, side, entry.row.appsInRanking, *cell.images,
                          cell.tokens, cell.under);
}

} // namespace veltrix
