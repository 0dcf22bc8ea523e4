// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui_kit/widgets/score_ring.h"

#include "ui_kit/theme/typography.h"

#include <QCoreApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

QString metricName(ScoreRing::Mode mode)
{
    return mode == ScoreRing::Mode::Popularity
               ? QCoreApplication::translate("ScoreRing", "Popularity")
               : QCoreApplication::translate("ScoreRing", "Estimated difficulty");
}

} // namespace

Token ScoreRing::token() const
{
    if (!value)
        return Token::Secondary;
    if (mode == Mode::Popularity)
        return *value >= 66 ? Token::Green : *value >= 16 ? Token::Yellow : Token::Red;
    return *value <= 33 ? Token::Green : *value <= 66 ? Token::Yellow : Token::Red;
}

QString ScoreRing::text() const
{
    return value ? QString::number(*value) : QStringLiteral("—");
}

double ScoreRing::fraction() const
{
    if (!value || *value < 1)
        return 0;
    return double(std::min<std::int64_t>(*value, 100)) / 100.0;
}

QString ScoreRing::accessibleText() const
{
    const QString shown =
        value ? QString::number(*value) : QCoreApplication::translate("ScoreRing", "unavailable");
    return metricName(mode) + QStringLiteral(": ") + shown;
}

QString ScoreRing::accessibleHint() const
{
    if (!value)
        return QCoreApplication::translate("ScoreRing", "Unavailable—not a zero score");
    return metricName(mode) +
           QCoreApplication::translate("ScoreRing",
                                       ". Directional estimate, not an official Apple metric.");
}

ScoreRingGeometry layoutScoreRing(const QRectF &rect, const QFontMetricsF &number,
                                  const ScoreRing &value)
{
    // 3 of 20 pixels are stroke, whatever the size.
    const qreal across = std::round(number.height() * 20.0 / 16.0);
    const qreal stroke = across * 3 / 20;
    ScoreRingGeometry geometry;
    geometry.stroke = stroke;
    const QRectF outer(rect.x(), std::round(rect.center().y() - across / 2), across, across);
    geometry.ring = outer.adjusted(stroke / 2, stroke / 2, -stroke / 2, -stroke / 2);
    geometry.baseline = QPointF(outer.right() + spacing::s,
                                outer.center().y() + (number.ascent() - number.descent()) / 2);
    const qreal width = across + spacing::s + tabularWidth(number, value.text());
    geometry.bounds = QRectF(rect.x(), outer.y(), width, across);
    return geometry;
}

void paintScoreRing(QPainter &painter, const QRectF &rect, const ScoreRing &value,
                    const Tokens &tokens, const QFont &base)
{
    const QFont number = fontFor(TextStyle::BodySemibold, base);
    const ScoreRingGeometry geometry = layoutScoreRing(rect, QFontMetricsF(number), value);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(tokens[Token::Hairline], geometry.stroke));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(geometry.ring);
    if (value.fraction() > 0) {
        painter.setPen(QPen(tokens[value.token()], geometry.stroke, Qt::SolidLine, Qt::RoundCap));
        // From twelve o'clock, clockwise, in sixteenths of a degree.
        painter.drawArc(geometry.ring, 90 * 16, -int(std::lround(value.fraction() * 360 * 16)));
    }
    painter.setFont(number);
    painter.setPen(tokens[value.value ? Token::Text : Token::Secondary]);
    drawTabularText(painter, geometry.baseline, value.text());
    painter.restore();
}

} // namespace veltrix
