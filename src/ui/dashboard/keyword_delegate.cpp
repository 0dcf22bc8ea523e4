// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dashboard/keyword_delegate.h"

#include "ui/dashboard/keyword_table_model.h"
#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"
#include "ui_kit/widgets/artwork_images.h"
#include "ui_kit/widgets/badge.h"
#include "ui_kit/widgets/overlapping_icons.h"
#include "ui_kit/widgets/position_badge.h"
#include "ui_kit/widgets/score_ring.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

void drawLine(QPainter &painter, const QRectF &rect, const QString &text, const QFont &font,
              const QColor &color)
{
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(rect, Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetricsF(font).elidedText(text, Qt::ElideRight, rect.width()));
}

} // namespace

QRectF cellContent(const QRectF &cell)
{
    return cell.adjusted(spacing::m, 0, -spacing::s, 0);
}

KeywordCellGeometry layoutKeywordCell(const QRectF &content, const QFontMetricsF &title,
                                      const QFontMetricsF &subtitle, qreal reserved)
{
    const qreal upper = std::ceil(title.height());
    const qreal lower = std::ceil(subtitle.height());
    const qreal top = std::round(content.center().y() - (upper + lower) / 2);
    const qreal width = std::max(0.0, content.width() - reserved);
    return {QRectF(content.x(), top, width, upper), QRectF(content.x(), top + upper, width, lower)};
}

KeywordDelegate::KeywordDelegate(ArtworkImages &images, QObject *parent)
    : QStyledItemDelegate(parent), m_images(images)
{
}

void KeywordDelegate::setButtonsAt(int row, qreal reserved)
{
    m_buttonsRow = row;
    m_reserved = reserved;
}

qreal KeywordDelegate::iconSize(const QFont &body)
{
    return std::round(controlHeight(body) * 24.0 / 30.0);
}

void KeywordDelegate::paintKeyword(QPainter &painter, const QRectF &content,
                                   const KeywordEntry &entry, const QString &updated,
                                   const Tokens &tokens, const QFont &base, qreal reserved) const
{
    const QFont title = fontFor(TextStyle::BodyMedium, base);
    const QFont subtitle = fontFor(TextStyle::Secondary, base);
    const KeywordCellGeometry geometry =
        layoutKeywordCell(content, QFontMetricsF(title), QFontMetricsF(subtitle), reserved);
    drawLine(painter, geometry.title, entry.row.keyword, title, tokens[Token::Text]);
    QRectF line = geometry.subtitle;
    if (!entry.unmeasurable.isEmpty()) {
        const qreal size = std::round(line.height() * 0.85);
        drawSymbol(painter, QRectF(line.x(), std::round(line.center().y() - size / 2), size, size),
                   QStringLiteral("exclamationmark.triangle"), tokens[Token::Orange]);
        line.setLeft(line.left() + size + spacing::xs);
    }
    drawLine(painter, line, updated, subtitle, tokens[Token::Secondary]);
}

void KeywordDelegate::paintRanking(QPainter &painter, const QRectF &content,
                                   const KeywordEntry &entry, const Tokens &tokens,
                                   const QFont &base) const
{
    if (entry.row.awaitingMetrics) {
        drawLine(painter, content, keywordColumnInfo(KeywordColumn::Position).text(entry),
                 fontFor(TextStyle::Secondary, base), tokens[Token::Secondary]);
        return;
    }
    // Movement is told only with a rank, but leaving the results is news too.
    const bool tellsMovement =
        entry.row.position ||
        (entry.movement && entry.movement->kind() == RankMovement::Kind::Left);
    paintPosition(painter, content, {entry.row.position},
                  tellsMovement ? entry.movement : std::nullopt, tokens, base);
}

void KeywordDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                            const QModelIndex &index) const
{
    const auto *model = static_cast<const KeywordTableModel *>(index.model());
    const KeywordEntry &entry = model->entryAt(index.row());
    const Tokens tokens = Tokens::of(option.palette);
    const QRectF content = cellContent(option.rect);
    painter->save();
    painter->setClipRect(option.rect);
    switch (static_cast<KeywordColumn>(index.column())) {
    case KeywordColumn::Keyword:
        paintKeyword(*painter, content, entry, model->updatedText(entry), tokens, option.font,
                     index.row() == m_buttonsRow ? m_reserved : 0);
        break;
    case KeywordColumn::Target:
        paintBadge(*painter, content, targetBadge(entry.row.opportunity), tokens, option.font);
        break;
    case KeywordColumn::Popularity:
        paintScoreRing(*painter, content, {entry.row.popularity, ScoreRing::Mode::Popularity},
                       tokens, option.font);
        break;
    case KeywordColumn::Difficulty:
        paintScoreRing(*painter, content, {entry.row.difficulty, ScoreRing::Mode::Difficulty},
                       tokens, option.font);
        break;
    case KeywordColumn::Position:
        paintRanking(*painter, content, entry, tokens, option.font);
        break;
    case KeywordColumn::Apps: {
        const bool selected = option.state & QStyle::State_Selected;
        const Token under = selected                      ? Token::Selected
                            : index.row() == m_hoveredRow ? Token::Hover
                                                          : Token::Surface;
        paintOverlappingIcons(*painter, content, iconSize(option.font), entry.row.appsInRanking,
                              m_images, tokens, tokens[under]);
        break;
    }
    }
    painter->restore();
}

QSize KeywordDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return {keywordColumns()[size_t(index.column())].defaultWidth, twoLineRowHeight(option.font)};
}

} // namespace veltrix
