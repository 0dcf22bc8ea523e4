// SPDX-License-Identifier: GPL-3.0-or-later
// What is drawn for the checks of one history, thinned to what the plot's width can show. Pure.
#pragma once

#include "ui/history/rank_plot.h"

#include <QPolygonF>

namespace veltrix
{

/// The line of a history and its marks, in the chart's coordinates, left to right. Of several
/// checks in one pixel column the line keeps the first, the last, the best and the worst. Between
/// runs there is a gap that can be seen, for which the checks beside it may move inwards by up to
/// half of leastGap.
struct RankLine {
    /// Least distance between two runs, unless they are too short for it.
    static constexpr qreal leastGap = 6;

    /// One polyline for each run of checks that are joined; a single point for a run that shows as
    /// one.
    std::vector<QPolygonF> runs;
    /// Middles of the marks: one for each ranked check, or where days are narrow some of them and
    /// the ends of runs where they leave the gap open.
    std::vector<QPointF> points;
    /// Side of a mark.
    qreal pointSide = 0;
    /// Middles of the crosses for checks that found nothing. Those that would touch the one before
    /// share it.
    std::vector<QPointF> crosses;
    /// Half the side of a cross.
    qreal crossArm = 0;
};

RankLine rankLine(const RankPlot &plot, const RankChartData &data);

/// The same for one of several lines in one plot, the one at that place from 0 on: marks are as far
/// apart as eight checks of 90 days are, and those of different lines stand at different days.
RankLine comparedRankLine(const RankPlot &plot, const RankChartData &data, size_t place);

} // namespace veltrix
