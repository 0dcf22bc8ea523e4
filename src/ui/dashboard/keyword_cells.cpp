// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_cells.h"

#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/overlapping_icons.h"
#include "ui_kit/widgets/position_badge.h"

#include <cmath>

namespace veltrix
{

KeywordCellGeometry layoutKeywordCell(const QRectF &content, const QFontMetricsF &title,
                                      const QFontMetricsF &subtitle)
{
    const qreal upper = std::ceil(title.height());
    const qreal lower = std::ceil(subtitle.height());
    const qreal top = std::round(content.center().y() - (upper + lower) / 2);
    return {QRectF(content.x(), top, content.width(), upper),
            QRectF(content.x(), top + upper, content.width(), lower)};
}

void paintKeywordCell(const CellPainting &cell, const KeywordEntry &entry)
{
    const QFont title = fontFor(TextStyle::BodyMedium, cell.base());
    const QFont subtitle = fontFor(TextStyle::Secondary, cell.base());
    const KeywordCellGeometry geometry =
        layoutKeywordCell(cell.content, QFontMetricsF(title), QFontMetricsF(subtitle));
    paintCellText(cell, geometry.title, entry.row.keyword, title, cell.tokens[Token::Text]);
    QRectF line = geometry.subtitle;
    if (!entry.unmeasurable.isEmpty()) {
        const qreal size = std::round(line.height() * 0.85);
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
    // Movement is told only with a rank, but leaving the results is news too.
    const bool tellsMovement =
        entry.row.position ||
        (entry.movement && entry.movement->kind() == RankMovement::Kind::Left);
    paintPosition(cell.painter, cell.content, {entry.row.position},
                  tellsMovement ? entry.movement : std::nullopt, cell.tokens, cell.base());
}

void paintAppsCell(const CellPainting &cell, const KeywordEntry &entry)
{
    const qreal side = std::round(controlHeight(cell.base()) * 24.0 / 30.0);
    paintOverlappingIcons(cell.painter, cell.content, side, entry.row.appsInRanking, *cell.images,
                          cell.tokens, cell.under);
}

} // namespace veltrix
