// SPDX-License-Identifier: GPL-3.0-or-later
// Where the marks of days stand between plot and dates. Pure.
#pragma once

#include "ui/history/compared_history.h"
#include "ui/history/rank_plot.h"

#include <QFontMetricsF>

namespace veltrix
{

/// One mark, or several that have no room beside each other.
struct PlacedMark {
    QRectF rect;
    QString symbol;
    /// Empty where there is room for the symbol alone.
    QString text;
    /// Where the lines of its days stand.
    std::vector<qreal> days;
    std::vector<DayMark> marks;

    /// The symbol inside `rect`.
    [[nodiscard]] QRectF symbolRect() const;
    /// What the text has inside `rect`.
    [[nodiscard]] QRectF textRect() const;
};

/// How high the row is.
qreal markRowHeight(const QFontMetricsF &metrics);

/// `marks` are by day, and all of days of `days`. Each stands under its day, or as near to it as
/// the row allows; marks that would touch keep their symbol, and what touches even so is one.
std::vector<PlacedMark> placedMarks(const std::vector<DayMark> &marks,
                                    const std::vector<RankingTimeline::Day> &days,
                                    const RankPlot &plot, const QRectF &row,
                                    const QFontMetricsF &metrics);

} // namespace veltrix
