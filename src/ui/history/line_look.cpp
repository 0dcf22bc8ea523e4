// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/line_look.h"

#include <QCoreApplication>
#include <QPainter>

#include <array>
#include <cmath>
#include <numbers>

namespace veltrix
{

namespace
{

struct LookTexts {
    Q_DECLARE_TR_FUNCTIONS(LineLook)
};

constexpr std::array colorsAndShapes{
    std::pair(Token::Orange, MarkShape::Square), std::pair(Token::Teal, MarkShape::Triangle),
    std::pair(Token::Pink, MarkShape::Diamond),  std::pair(Token::Blue, MarkShape::TriangleDown),
    std::pair(Token::Green, MarkShape::Star),    std::pair(Token::Yellow, MarkShape::Hexagon)};
static_assert(rivalLookCount == 2 * colorsAndShapes.size());

/// Corners at these radii by turns, the first one at `first` degrees from the right.
QPainterPath polygon(QPointF centre, int corners, double first, qreal outer, qreal inner)
{
    QPolygonF outline;
    for (int corner = 0; corner < corners; ++corner) {
        const double angle = (first + 360.0 * corner / corners) * std::numbers::pi / 180;
        const qreal radius = corner % 2 == 0 ? outer : inner;
        outline.append(centre + radius * QPointF(std::cos(angle), std::sin(angle)));
    }
    QPainterPath path;
    path.addPolygon(outline);
    path.closeSubpath();
    return path;
}

} // namespace

LineLook rivalLook(size_t place)
{
    const auto &[token, shape] = colorsAndShapes[place % colorsAndShapes.size()];
    return {token, shape, place % rivalLookCount >= colorsAndShapes.size()};
}

QPainterPath markOutline(MarkShape shape, QPointF centre, qreal side)
{
    const qreal radius = side / 2;
    switch (shape) {
    case MarkShape::Circle: {
        QPainterPath path;
        path.addEllipse(centre, radius, radius);
        return path;
    }
    case MarkShape::Square: {
        QPainterPath path;
        const qreal half = radius * 0.9;
        path.addRect(QRectF(centre - QPointF(half, half), QSizeF(2 * half, 2 * half)));
        return path;
    }
    case MarkShape::Triangle:
        return polygon(centre + QPointF(0, radius * 0.2), 3, -90, radius * 1.3, radius * 1.3);
    case MarkShape::TriangleDown:
        return polygon(centre - QPointF(0, radius * 0.2), 3, 90, radius * 1.3, radius * 1.3);
    case MarkShape::Diamond:
        return polygon(centre, 4, 0, radius * 1.25, radius * 1.25);
    case MarkShape::Star:
        return polygon(centre, 10, -90, radius * 1.45, radius * 0.62);
    case MarkShape::Hexagon:
        return polygon(centre, 6, -90, radius * 1.15, radius * 1.15);
    }
    Q_UNREACHABLE();
}

void paintMark(QPainter &painter, const LineLook &look, QPointF centre, qreal side,
               const QColor &line, const QColor &fill, qreal strokeWidth)
{
    painter.setPen(QPen(line, strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
    painter.setBrush(fill);
    // By far the most frequent, and quicker without a path.
    if (look.shape == MarkShape::Circle)
        painter.drawEllipse(centre, side / 2, side / 2);
    else
        painter.drawPath(markOutline(look.shape, centre, side));
}

QString shapeName(const LineLook &look)
{
    switch (look.shape) {
    case MarkShape::Circle:
        return LookTexts::tr("circles");
    case MarkShape::Square:
        return look.isFilled ? LookTexts::tr("filled squares") : LookTexts::tr("squares");
    case MarkShape::Triangle:
        return look.isFilled ? LookTexts::tr("filled triangles") : LookTexts::tr("triangles");
    case MarkShape::Diamond:
        return look.isFilled ? LookTexts::tr("filled diamonds") : LookTexts::tr("diamonds");
    case MarkShape::TriangleDown:
        return look.isFilled ? LookTexts::tr("filled triangles down")
                             : LookTexts::tr("triangles down");
    case MarkShape::Star:
        return look.isFilled ? LookTexts::tr("filled stars") : LookTexts::tr("stars");
    case MarkShape::Hexagon:
        return look.isFilled ? LookTexts::tr("filled hexagons") : LookTexts::tr("hexagons");
    }
    Q_UNREACHABLE();
}

QString colorName(const LineLook &look)
{
    switch (look.token) {
    case Token::Orange:
        return LookTexts::tr("orange");
    case Token::Teal:
        return LookTexts::tr("teal");
    case Token::Pink:
        return LookTexts::tr("pink");
    case Token::Blue:
        return LookTexts::tr("blue");
    case Token::Green:
        return LookTexts::tr("green");
    case Token::Yellow:
        return LookTexts::tr("yellow");
    default:
        return LookTexts::tr("violet");
    }
}

} // namespace veltrix
