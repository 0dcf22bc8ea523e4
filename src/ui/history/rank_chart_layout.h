// SPDX-License-Identifier: GPL-3.0-or-later
// Where everything on the ranking chart lies, and how it is painted there.
#pragma once

#include "ui/history/mark_row.h"
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

/// A line beside the own one.
struct RivalRankLine {
    std::int64_t key = 0;
    LineLook look;
    RankLine line;
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
    /// The own line; nothing while it is off.
    RankLine line;
    std::vector<RivalRankLine> rivals = {};
    /// "Tracked since Oct 9" at lines that begin later, where there is room.
    std::vector<RankChartLabel> beginnings = {};
    std::vector<PlacedMark> marks = {};
};

/// Ranks at the left, marks and days at the bottom, in every language; labels are whole, lie inside
/// `rect` and don't touch. `metrics` are those of the labels' font.
RankChartGeometry layoutRankChart(const QRectF &rect, const QFontMetricsF &metrics,
                                  const ComparedChart &chart, const QLocale &locale = wordLocale());

/// All but the marks of days themselves, which are controls: the three below.
void paintRankChart(QPainter &painter, const RankChartGeometry &chart, const QFont &labels,
                    const Tokens &tokens);
/// The grid and the days of marks.
void paintChartGround(QPainter &painter, const RankChartGeometry &chart, const Tokens &tokens);
/// The lines. With the key of one the others are dimmed.
void paintChartLines(QPainter &painter, const RankChartGeometry &chart, const Tokens &tokens,
                     std::optional<std::int64_t> emphasized = std::nullopt);
void paintChartTexts(QPainter &painter, const RankChartGeometry &chart, const QFont &labels,
                     const Tokens &tokens);

/// The crosshair at a day, and the filled marks of the lines that have a rank then.
void paintInspectedDay(QPainter &painter, const RankChartGeometry &chart,
                       const ComparedChart &compared, size_t day, const Tokens &tokens);

/// The days between two places over the chart, while they are chosen.
void paintChosenDays(QPainter &painter, const RankChartGeometry &chart, qreal from, qreal to,
                     const Tokens &tokens);

} // namespace veltrix
