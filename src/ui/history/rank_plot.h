// SPDX-License-Identifier: GPL-3.0-or-later
// Where days and ranks lie on the chart, which day the pointer means, and where keys lead. Pure.
#pragma once

#include "ui/history/rank_history.h"
#include "ui_kit/text/figures.h"

#include <QPointF>
#include <QRectF>

namespace veltrix
{

/// The mapping between the chart's plot area and its days and ranks. Days run from left to right in
/// every language; ranks from 1 at the top downwards. Both have a margin, so that
/// points at the edges stay whole.
struct RankPlot {
    QRectF area;
    size_t dayCount = 0;
    /// Rank at the lower end of the axis; see RankAxis.
    std::int64_t bottom = 5;

    /// The ends of the axes in days and ranks.
    [[nodiscard]] double firstX() const { return -0.5; }
    [[nodiscard]] double lastX() const;
    [[nodiscard]] double topY() const;
    [[nodiscard]] double bottomY() const;

    [[nodiscard]] qreal x(size_t day) const;
    [[nodiscard]] qreal y(double rank) const;
    [[nodiscard]] QPointF at(size_t day, std::int64_t rank) const;
    /// The middle of the mark of an unranked check: near the lower edge, below every rank.
    [[nodiscard]] QPointF unrankedMark(size_t day) const;
    /// The middle of the mark of a checked day.
    [[nodiscard]] QPointF markOf(const RankChartData &data, size_t day) const;
    /// Width of a day's column.
    [[nodiscard]] qreal column() const;

    /// The day whose column holds the horizontal position `x`; the first or last day beside the
    /// plot, nothing when there are no days.
    [[nodiscard]] std::optional<size_t> dayAt(qreal x) const;
};

/// The day that a pointer means: that of the nearest check of any line within a few pixels, so that
/// none is too narrow to be pointed at; else the one whose column it is in. Of checks right under
/// the pointer, the nearest in height. Nothing when there are no days.
std::optional<size_t> dayNear(const RankPlot &plot, const std::vector<const RankChartData *> &lines,
                              QPointF pointer);

/// Ways to move the inspected day by keyboard.
enum class DayStep { Previous, Next, PreviousCheck, NextCheck, First, Last };

/// The day after a step from `current` (nothing: no day is inspected yet, which starts at the last
/// day for steps back and at the first for steps on). Steps stop at the ends. Nothing when there
/// are no days.
std::optional<size_t> stepDay(const RankChartData &data, std::optional<size_t> current,
                              DayStep step);

/// What is known about a day: "Nov 19: rank 12", "Nov 13: Not ranked", "No check saved on Nov 15";
/// without a day "Hover to inspect a saved check". Dates are those of dayLabel().
QString inspectionText(const RankChartData &data, std::optional<size_t> day,
                       const QLocale &locale = wordLocale());

/// "Rank 12": what a screen reader says for a plotted point.
QString accessibleText(const RankPoint &point);

} // namespace veltrix
