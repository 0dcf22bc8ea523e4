// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/small_line.h"

#include <QPainter>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr qreal dotRadius = 2.5;
constexpr qreal crossRadius = 2.5;
constexpr qreal lineWidth = 1.4;

} // namespace

std::optional<std::pair<double, double>> SmallLine::ends() const
{
    std::optional<std::pair<double, double>> found;
    for (const Check &check : checks) {
        if (check.rank)
            found = {found ? found->first : *check.rank, *check.rank};
    }
    return found;
}

SmallLineGeometry layoutSmallLine(const QRectF &rect, const SmallLine &line)
{
    SmallLineGeometry geometry;
    if (line.checks.empty())
        return geometry;
    // What stands at the ends keeps inside.
    const QRectF area = rect.adjusted(dotRadius, dotRadius, -dotRadius, -dotRadius);
    std::optional<double> best;
    std::optional<double> worst;
    for (const SmallLine::Check &check : line.checks) {
        if (!check.rank)
            continue;
        best = std::min(best.value_or(*check.rank), *check.rank);
        worst = std::max(worst.value_or(*check.rank), *check.rank);
    }
    const double span = std::max(worst.value_or(0) - best.value_or(0), line.leastSpan);
    const double top = (best.value_or(0) + worst.value_or(0) - span) / 2;
    const auto at = [&](int day) {
        return area.left() + area.width() * day / std::max(1, line.days - 1);
    };
    bool isParted = true;
    for (const SmallLine::Check &check : line.checks) {
        if (!check.rank) {
            isParted = true;
            continue;
        }
        if (std::exchange(isParted, false))
            geometry.parts.emplace_back();
        geometry.parts.back().append(
            QPointF(at(check.day), area.top() + area.height() * (*check.rank - top) / span));
    }
    if (line.checks.back().rank)
        geometry.dot = geometry.parts.back().constLast();
    else
        geometry.cross = QPointF(at(line.checks.back().day), area.bottom());
    return geometry;
}

void paintSmallLine(QPainter &painter, const QRectF &rect, const SmallLine &line, Token token,
                    const Tokens &tokens)
{
    const SmallLineGeometry geometry = layoutSmallLine(rect, line);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = tokens[token];
    QPen pen(color, lineWidth);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    for (const QPolygonF &part : geometry.parts) {
        if (part.size() > 1)
            painter.drawPolyline(part);
        else
            painter.drawPoint(part.constFirst());
    }
    if (geometry.dot) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawEllipse(*geometry.dot, dotRadius, dotRadius);
    }
    if (geometry.cross) {
        pen.setColor(tokens[Token::Red]);
        pen.setWidthF(1.6);
        painter.setPen(pen);
        const QPointF arm(crossRadius, crossRadius);
        const QPointF other(crossRadius, -crossRadius);
        painter.drawLine(*geometry.cross - arm, *geometry.cross + arm);
        painter.drawLine(*geometry.cross - other, *geometry.cross + other);
    }
    painter.restore();
}

} // namespace veltrix
