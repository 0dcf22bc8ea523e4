// SPDX-License-Identifier: GPL-3.0-or-later
// The white drawings on icons, as paths around the middle of the icon.
#include "sample/glyphs.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <numbers>

namespace veltrix::sample
{

namespace
{

QPointF onCircle(double degrees, double radius)
{
    const double angle = degrees * std::numbers::pi / 180;
    return {radius * std::cos(angle), radius * std::sin(angle)};
}

QPainterPath aperture()
{
    QPainterPath path;
    path.addEllipse(QPointF(), 26, 26);
    for (int blade = 0; blade < 6; ++blade) {
        path.moveTo(onCircle(blade * 60, 26));
        path.lineTo(onCircle(blade * 60 + 100, 12));
    }
    return path;
}

QPainterPath play()
{
    QPainterPath path;
    path.addRoundedRect(-27, -20, 54, 40, 9, 9);
    path.moveTo(-7, -10);
    path.lineTo(11, 0);
    path.lineTo(-7, 10);
    path.closeSubpath();
    return path;
}

QPainterPath book()
{
    QPainterPath path;
    path.moveTo(0, -18);
    path.cubicTo(-8, -25, -20, -25, -27, -22);
    path.lineTo(-27, 18);
    path.cubicTo(-20, 15, -8, 15, 0, 22);
    path.cubicTo(8, 15, 20, 15, 27, 18);
    path.lineTo(27, -22);
    path.cubicTo(20, -25, 8, -25, 0, -18);
    path.lineTo(0, 22);
    return path;
}

QPainterPath coin()
{
    QPainterPath path;
    path.addEllipse(QPointF(), 26, 26);
    path.addEllipse(QPointF(), 17, 17);
    path.moveTo(0, -8);
    path.lineTo(0, 8);
    return path;
}

QPainterPath candles()
{
    QPainterPath path;
    const double heights[] = {10, 20, 14, 26};
    for (int index = 0; index < 4; ++index) {
        const double x = -24 + index * 16;
        path.addRect(x - 5, 12 - heights[index], 10, heights[index]);
        path.moveTo(x, 12 - heights[index]);
        path.lineTo(x, 2 - heights[index]);
        path.moveTo(x, 12);
        path.lineTo(x, 22);
    }
    return path;
}

QPainterPath lotus()
{
    QPainterPath path;
    for (const int lean : {-55, 0, 55}) {
        const QPointF tip = onCircle(lean - 90, 30);
        path.moveTo(0, 18);
        path.quadTo(onCircle(lean - 130, 24), tip);
        path.quadTo(onCircle(lean - 50, 24), QPointF(0, 18));
    }
    return path;
}

QPainterPath shield()
{
    QPainterPath path;
    path.moveTo(0, -28);
    path.lineTo(23, -19);
    path.cubicTo(23, 8, 14, 20, 0, 28);
    path.cubicTo(-14, 20, -23, 8, -23, -19);
    path.closeSubpath();
    path.moveTo(-9, -1);
    path.lineTo(-2, 7);
    path.lineTo(11, -9);
    return path;
}

QPainterPath pot()
{
    QPainterPath path;
    path.moveTo(-24, -6);
    path.lineTo(-20, 22);
    path.lineTo(20, 22);
    path.lineTo(24, -6);
    path.moveTo(-29, -6);
    path.lineTo(29, -6);
    for (const int x : {-10, 0, 10}) {
        path.moveTo(x, -14);
        path.cubicTo(x - 5, -19, x + 5, -22, x, -28);
    }
    return path;
}

QPainterPath stride()
{
    QPainterPath path;
    path.addEllipse(QPointF(9, -24), 5, 5);
    path.moveTo(-15, -6);
    path.lineTo(-3, -14);
    path.lineTo(7, -10);
    path.lineTo(-1, 4);
    path.lineTo(11, 12);
    path.lineTo(7, 28);
    path.moveTo(-1, 4);
    path.lineTo(-9, 16);
    path.lineTo(-23, 16);
    path.moveTo(7, -10);
    path.lineTo(13, -2);
    path.lineTo(23, -4);
    return path;
}

QPainterPath speech()
{
    QPainterPath path;
    path.addRoundedRect(-28, -24, 56, 38, 12, 12);
    path.moveTo(-12, 14);
    path.lineTo(-14, 27);
    path.lineTo(2, 14);
    for (const int x : {-12, 0, 12})
        path.addEllipse(QPointF(x, -5), 1.5, 1.5);
    return path;
}

QPainterPath grid()
{
    QPainterPath path;
    path.addRoundedRect(-25, -22, 50, 48, 7, 7);
    path.moveTo(-25, -8);
    path.lineTo(25, -8);
    for (const int x : {-12, 12}) {
        path.moveTo(x, -28);
        path.lineTo(x, -18);
    }
    for (const int x : {-12, 0, 12})
        for (const int y : {3, 15})
            path.addEllipse(QPointF(x, y), 1.5, 1.5);
    return path;
}

QPainterPath page()
{
    QPainterPath path;
    path.addRoundedRect(-20, -27, 40, 54, 6, 6);
    for (const int y : {-14, -3, 8}) {
        path.moveTo(-10, y);
        path.lineTo(y == 8 ? 2 : 10, y);
    }
    return path;
}

QPainterPath sun()
{
    QPainterPath path;
    path.addEllipse(QPointF(), 13, 13);
    for (int ray = 0; ray < 8; ++ray) {
        path.moveTo(onCircle(ray * 45, 20));
        path.lineTo(onCircle(ray * 45, 29));
    }
    return path;
}

QPainterPath jigsaw()
{
    QPainterPath path;
    path.moveTo(-22, -12);
    path.lineTo(-7, -12);
    path.arcTo(QRectF(-7, -24, 14, 14), 220, -260);
    path.lineTo(22, -12);
    path.lineTo(22, 0);
    path.arcTo(QRectF(14, 0, 14, 14), 130, -260);
    path.lineTo(22, 24);
    path.lineTo(-22, 24);
    path.closeSubpath();
    return path;
}

QPainterPath balloon()
{
    QPainterPath path;
    path.addEllipse(QPointF(0, -8), 19, 22);
    path.moveTo(0, 14);
    path.cubicTo(-6, 20, 6, 24, 0, 31);
    path.moveTo(7, -20);
    path.quadTo(12, -17, 12, -11);
    return path;
}

QPainterPath ring()
{
    QPainterPath path;
    for (int index = 0; index < 3; ++index)
        path.addEllipse(onCircle(index * 120 - 90, 13), 13, 13);
    return path;
}

QPainterPath compass()
{
    QPainterPath path;
    path.addEllipse(QPointF(), 27, 27);
    path.moveTo(12, -12);
    path.lineTo(4, 4);
    path.lineTo(-12, 12);
    path.lineTo(-4, -4);
    path.closeSubpath();
    return path;
}

QPainterPath note()
{
    QPainterPath path;
    path.addEllipse(QPointF(-14, 18), 8, 7);
    path.addEllipse(QPointF(14, 12), 8, 7);
    path.moveTo(-6, 18);
    path.lineTo(-6, -20);
    path.lineTo(22, -26);
    path.lineTo(22, 12);
    return path;
}

QPainterPath pathOf(Glyph glyph)
{
    switch (glyph) {
    case Glyph::Aperture:
        return aperture();
    case Glyph::Play:
        return play();
    case Glyph::Book:
        return book();
    case Glyph::Coin:
        return coin();
    case Glyph::Candles:
        return candles();
    case Glyph::Lotus:
        return lotus();
    case Glyph::Shield:
        return shield();
    case Glyph::Pot:
        return pot();
    case Glyph::Stride:
        return stride();
    case Glyph::Speech:
        return speech();
    case Glyph::Grid:
        return grid();
    case Glyph::Page:
        return page();
    case Glyph::Sun:
        return sun();
    case Glyph::Jigsaw:
        return jigsaw();
    case Glyph::Balloon:
        return balloon();
    case Glyph::Ring:
        return ring();
    case Glyph::Compass:
        return compass();
    case Glyph::Note:
        return note();
    }
    return {};
}

bool looksRightTurned(Glyph glyph)
{
    return glyph == Glyph::Aperture || glyph == Glyph::Ring || glyph == Glyph::Compass ||
           glyph == Glyph::Sun;
}

} // namespace

void paintGlyph(QPainter &painter, Glyph glyph, int turn)
{
    painter.save();
    painter.translate(50, 50);
    if (looksRightTurned(glyph))
        painter.rotate(turn);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 4.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(pathOf(glyph));
    painter.restore();
}

} // namespace veltrix::sample
