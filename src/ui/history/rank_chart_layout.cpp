// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/rank_chart_layout.h"

#include "ui/history/day_labels.h"
#include "ui_kit/theme/painting.h"
#include "ui_kit/theme/typography.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace veltrix
{

namespace
{

/// Keeps labels and points clear of the focus ring.
constexpr QMarginsF ringMargins(6, 4, 6, 4);
/// From the ranks to the plot, and from the plot to the days.
constexpr qreal labelDistance = 8;
/// In heights of a label: least distance of two ranks on the axis, and gap between two days.
constexpr qreal rankPitch = 1.6;
constexpr qreal dayGap = 1.2;
constexpr qreal strokeWidth = 2;
/// Of a run that is a single point of the line.
constexpr qreal dotWidth = 4;
constexpr qreal crosshairWidth = 1.2;

RankChartLabel rankLabel(std::int64_t rank, const RankPlot &plot, const QFontMetricsF &metrics)
{
    const QString text = QString::number(rank);
    const qreal width = metrics.horizontalAdvance(text);
    return {QRectF(plot.area.left() - labelDistance - width,
                   plot.y(double(rank)) - metrics.height() / 2, width, metrics.height()),
            text};
}

/// The grid and its labels, as many of the axis's ranks as have room.
void layoutRanks(RankChartGeometry &chart, const RankAxis &axis, const QFontMetricsF &metrics)
{
    for (const std::int64_t rank : axis.ticks) {
        RankChartLabel label = rankLabel(rank, chart.plot, metrics);
        if (!chart.ranks.empty() && label.rect.top() < chart.ranks.back().rect.bottom())
            continue;
        chart.grid.push_back(chart.plot.y(double(rank)));
        chart.ranks.push_back(std::move(label));
    }
}

void drawCross(QPainter &painter, QPointF centre, qreal arm)
{
    painter.drawLine(centre + QPointF(-arm, -arm), centre + QPointF(arm, arm));
    painter.drawLine(centre + QPointF(-arm, arm), centre + QPointF(arm, -arm));
}

void paintLine(QPainter &painter, const RankLine &line, const Tokens &tokens)
{
    const QPen stroke(tokens[Token::Accent], strokeWidth, Qt::SolidLine, Qt::RoundCap,
                      Qt::RoundJoin);
    QPen dot = stroke;
    dot.setWidthF(dotWidth);
    for (const QPolygonF &run : line.runs) {
        painter.setPen(run.size() == 1 ? dot : stroke);
        if (run.size() == 1)
            painter.drawPoint(run.front());
        else
            painter.drawPolyline(run);
    }
    painter.setPen(stroke);
    painter.setBrush(tokens[Token::Raised]);
    for (const QPointF &point : line.points)
        painter.drawEllipse(point, line.pointSide / 2, line.pointSide / 2);
    painter.setPen(QPen(tokens[Token::Red], strokeWidth, Qt::SolidLine, Qt::RoundCap));
    for (const QPointF &centre : line.crosses)
        drawCross(painter, centre, line.crossArm);
}

} // namespace

RankChartGeometry layoutRankChart(const QRectF &rect, const QFontMetricsF &metrics,
                                  const RankChartData &data, const QLocale &locale)
{
    const QRectF inside = rect.marginsRemoved(ringMargins);
    const qreal height = metrics.height();
    // Rank 1 may stand at the upper edge of the plot.
    QRectF area = inside.adjusted(0, height / 2, 0, -height - labelDistance);
    const auto most = std::int64_t(area.height() / (height * rankPitch));
    const RankAxis axis = rankAxis(data.worstRank(), most);
    qreal widest = 0;
    for (const std::int64_t rank : axis.ticks)
        widest = std::max(widest, metrics.horizontalAdvance(QString::number(rank)));
    area.setLeft(std::ceil(area.left() + widest + labelDistance));

    RankChartGeometry chart{rect, {area, data.days.size(), axis.bottom}, {}, {}, {}, {}};
    layoutRanks(chart, axis, metrics);
    const DayLabelRoom room{inside.left(), inside.right(), height * dayGap};
    for (const DayLabel &label : dayLabels(data.days, chart.plot, room, metrics, locale))
        chart.days.push_back(
            {QRectF(label.left, inside.bottom() - height, label.width, height), label.text});
    chart.line = rankLine(chart.plot, data);
    return chart;
}

void paintRankChart(QPainter &painter, const RankChartGeometry &chart, const QFont &labels,
                    const Tokens &tokens)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (const qreal y : chart.grid)
        drawHorizontalHairline(painter, chart.plot.area.left(), chart.plot.area.right(),
                               std::round(y), tokens[Token::Hairline]);
    painter.setFont(labels);
    painter.setPen(tokens[Token::Secondary]);
    for (const auto *axis : {&chart.ranks, &chart.days}) {
        for (const RankChartLabel &label : *axis)
            painter.drawText(label.rect,
                             int(Qt::AlignCenter | Qt::TextSingleLine) | int(Qt::TextDontClip),
                             label.text);
    }
    paintLine(painter, chart.line, tokens);
    painter.restore();
}

void paintChosenDays(QPainter &painter, const RankChartGeometry &chart, qreal from, qreal to,
                     const Tokens &tokens)
{
    const RankPlot &plot = chart.plot;
    const auto one = plot.dayAt(std::min(from, to));
    const auto other = plot.dayAt(std::max(from, to));
    if (!one || !other)
        return;
    const qreal half = plot.column() / 2;
    QRectF band = plot.area;
    band.setLeft(plot.x(*one) - half);
    band.setRight(plot.x(*other) + half);
    drawRoundedRect(painter, band, radius::control, tokens.tint(Token::Accent),
                    tokens[Token::Accent]);
}

void paintInspectedDay(QPainter &painter, const RankChartGeometry &chart, const RankChartData &data,
                       size_t day, const Tokens &tokens)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const RankPlot &plot = chart.plot;
    // In the middle of a pixel, so that the dashes are crisp.
    const qreal x = std::floor(plot.x(day)) + 0.5;
    QPen crosshair(tokens[Token::Secondary], crosshairWidth);
    crosshair.setDashPattern({3, 3});
    painter.setPen(crosshair);
    painter.drawLine(QPointF(x, plot.area.top()), QPointF(x, plot.area.bottom()));
    if (data.pointOf(day)) {
        const qreal radius = chart.line.pointSide / 2 + 1.5;
        painter.setPen(Qt::NoPen);
        painter.setBrush(tokens[Token::Accent]);
        painter.drawEllipse(plot.markOf(data, day), radius, radius);
    }
    painter.restore();
}

} // namespace veltrix
