// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/position_badge.h"

#include "ui_kit/theme/symbols.h"
#include "ui_kit/theme/typography.h"

#include <QCoreApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

constexpr qreal trophyGap = 6;

TextStyle rankStyle(const PositionBadge &badge)
{
    return badge.position ? TextStyle::BodySemibold : TextStyle::Body;
}

} // namespace

QString PositionBadge::text() const
{
    if (!position)
        return QCoreApplication::translate("PositionBadge", "Not ranked");
    switch (*position) {
    case 1:
        return QCoreApplication::translate("PositionBadge", "1st");
    case 2:
        return QCoreApplication::translate("PositionBadge", "2nd");
    case 3:
        return QCoreApplication::translate("PositionBadge", "3rd");
    default:
        return QStringLiteral("# ") + QString::number(*position);
    }
}

QString PositionBadge::accessibleText() const
{
    if (!position)
        return QCoreApplication::translate("PositionBadge",
                                           "Absent from returned search results (up to 100 apps)");
    return QCoreApplication::translate("PositionBadge", "Rank %1").arg(*position);
}

Token movementToken(const RankMovement &movement)
{
    switch (movement.kind()) {
    case RankMovement::Kind::Improved:
    case RankMovement::Kind::Entered:
        return Token::Green;
    case RankMovement::Kind::Declined:
    case RankMovement::Kind::Left:
        return Token::Red;
    case RankMovement::Kind::First:
    case RankMovement::Kind::Unchanged:
    case RankMovement::Kind::StillUnranked:
        return Token::Secondary;
    }
    Q_UNREACHABLE();
}

QString movementSentence(const RankMovement &movement)
{
    switch (movement.kind()) {
    case RankMovement::Kind::Improved:
        return QCoreApplication::translate("RankMovement", "up %1").arg(movement.places());
    case RankMovement::Kind::Declined:
        return QCoreApplication::translate("RankMovement", "down %1").arg(movement.places());
    default:
        return movement.label();
    }
}

PositionGeometry layoutPosition(const QRectF &rect, const QFontMetricsF &rank,
                                const PositionBadge &badge)
{
    PositionGeometry geometry;
    const qreal baseline = std::round(rect.center().y() + (rank.ascent() - rank.descent()) / 2);
    qreal x = rect.x();
    if (badge.hasTrophy()) {
        const qreal size = std::round(rank.height());
        geometry.trophy = QRectF(x, std::round(rect.center().y() - size / 2), size, size);
        x += size + trophyGap;
    }
    geometry.baseline = QPointF(x, baseline);
    x += tabularWidth(rank, badge.text()) + spacing::s;
    geometry.movementBaseline = QPointF(x, baseline);
    geometry.movementWidth = std::max(0.0, rect.right() - x);
    return geometry;
}

void paintPosition(QPainter &painter, const QRectF &rect, const PositionBadge &badge,
                   const std::optional<RankMovement> &movement, const Tokens &tokens,
                   const QFont &base)
{
    const QFont rank = fontFor(rankStyle(badge), base);
    const QFont moved = fontFor(TextStyle::SecondaryMedium, base);
    const QFontMetricsF movedMetrics(moved);
    const PositionGeometry geometry = layoutPosition(rect, QFontMetricsF(rank), badge);
    painter.save();
    if (badge.hasTrophy())
        drawSymbol(painter, geometry.trophy, QStringLiteral("trophy.fill"), tokens[Token::Yellow]);
    painter.setFont(rank);
    painter.setPen(tokens[badge.position ? Token::Text : Token::Secondary]);
    drawTabularText(painter, geometry.baseline, badge.text());
    if (movement) {
        painter.setFont(moved);
        painter.setPen(tokens[movementToken(*movement)]);
        painter.drawText(
            geometry.movementBaseline,
            movedMetrics.elidedText(movement->label(), Qt::ElideRight, geometry.movementWidth));
    }
    painter.restore();
}

} // namespace veltrix
