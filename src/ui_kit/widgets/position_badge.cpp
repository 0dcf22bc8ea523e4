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

TextStyle rankStyle(const PositionBadge &badge, PositionWeight weight)
{
    return badge.position && weight == PositionWeight::Strong ? TextStyle::BodySemibold
                                                              : TextStyle::Body;
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
                                const PositionBadge &badge, const QFontMetricsF &moved,
                                qreal movement)
{
    PositionGeometry geometry;
    const qreal trophy = badge.hasTrophy() ? std::round(rank.height()) : 0;
    const qreal start = rect.x() + (trophy > 0 ? trophy + trophyGap : 0);
    const qreal beside = start + tabularWidth(rank, badge.text()) + spacing::s;
    const qreal bothLines = std::ceil(rank.height()) + std::ceil(moved.height());
    const bool goesBelow =
        movement > std::max(0.0, rect.right() - beside) && bothLines <= rect.height();
    const QRectF line(rect.x(), rect.center().y() - (goesBelow ? bothLines : rect.height()) / 2,
                      rect.width(), goesBelow ? std::ceil(rank.height()) : rect.height());
    const qreal baseline = std::round(line.center().y() + (rank.ascent() - rank.descent()) / 2);
    if (trophy > 0)
        geometry.trophy =
            QRectF(rect.x(), std::round(line.center().y() - trophy / 2), trophy, trophy);
    geometry.baseline = QPointF(start, baseline);
    geometry.movementBaseline = goesBelow
                                    ? QPointF(rect.x(), std::round(line.bottom() + moved.ascent()))
                                    : QPointF(beside, baseline);
    geometry.movementWidth = std::max(0.0, rect.right() - geometry.movementBaseline.x());
    return geometry;
}

void paintPosition(QPainter &painter, const QRectF &rect, const PositionBadge &badge,
                   const std::optional<RankMovement> &movement, const Tokens &tokens,
                   const QFont &base, PositionWeight weight)
{
    const QFont rank = fontFor(rankStyle(badge, weight), base);
    const QFont moved = fontFor(TextStyle::SecondaryMedium, base);
    const QFontMetricsF movedMetrics(moved);
    const QString label = movement ? movement->label() : QString();
    const PositionGeometry geometry = layoutPosition(rect, QFontMetricsF(rank), badge, movedMetrics,
                                                     movedMetrics.horizontalAdvance(label));
    painter.save();
    if (badge.hasTrophy())
        drawSymbol(painter, geometry.trophy, QStringLiteral("trophy.fill"), tokens[Token::Yellow]);
    painter.setFont(rank);
    painter.setPen(tokens[badge.position ? Token::Text : Token::Secondary]);
    drawTabularText(painter, geometry.baseline, badge.text());
    if (movement) {
        painter.setFont(moved);
        painter.setPen(tokens[movementToken(*movement)]);
        painter.drawText(geometry.movementBaseline,
                         movedMetrics.elidedText(label, Qt::ElideRight, geometry.movementWidth));
    }
    painter.restore();
}

} // namespace veltrix
