// SPDX-License-Identifier: GPL-3.0-or-later
// Where everything on the ranking chart lies, and how it is painted there.
#pragma once

#include "ui/history/rank_line.h"
#include "ui_kit/theme/tokens.h"

#include <QFontMetricsF>

class QPainter;

namespace veltrix
{

struct RankChartLabel {
    QRectF rect;
    QString text;
};

/// The chart as a value, in the coordinates of the rectangle that it was laid out in.
struct RankChartGeometry {
    QRectF rect;
    RankPlot plot;
    /// Labels of the ranks that have a line of the grid, rank 1 first.
    std::vector<RankChartLabel> ranks;
    /// Heights of the lines of the grid.
    std::vector<qreal> grid;
    std::vector<RankChartLabel> days;
    RankLine line;
};

/// Ranks at the left and days at the bottom, in every language; labels are whole, lie inside `rect`
/// and don't touch. `metrics` are those of the labels' font.
RankChartGeometry layoutRankChart(const QRectF &rect, const QFontMetricsF &metrics,
                                  const RankChartData &data, const QLocale &locale = wordLocale());

void paintRankChart(QPainter &painter, const RankChartGeometry &chart, const QFont &labels,
                    const Tokens &tokens);

/// The crosshair at a day, and its filled point if it has a rank.
void paintInspectedDay(QPainter &painter, const RankChartGeometry &chart, const RankChartData &data,
                       size_t day, const Tokens &tokens);

/// The days between two places over the chart, while they are chosen.
void paintChosenDays(QPainter &painter, const RankChartGeometry &chart, qreal from, qreal to,
                     const Tokens &tokens);

} // namespace veltrix
