// SPDX-License-Identifier: GPL-3.0-or-later
// Which days of the ranking chart are labelled, and where the labels stand. Pure.
#pragma once

#include "ui/history/rank_plot.h"

#include <QFontMetricsF>

namespace veltrix
{

/// The room for the labels of days, in the chart's coordinates.
struct DayLabelRoom {
    qreal left = 0;
    qreal right = 0;
    /// Least distance between two labels.
    qreal gap = 0;
};

/// A labelled day. The label stands under the middle of the day's column, or as near to it as the
/// room allows.
struct DayLabel {
    size_t day = 0;
    QString text;
    qreal left = 0;
    qreal width = 0;

    [[nodiscard]] qreal right() const { return left + width; }
};

/// Labels at the finest step whose labels all fit: every day, two days, week or two weeks from the
/// first day on; the first days of months, quarters, half-years or years. Where no step gives two
/// labels, the first and the last day have them, or the first alone. A label that the room cannot
/// hold is left out: a date that is cut reads as another. `days` follow each other without gaps.
std::vector<DayLabel> dayLabels(const std::vector<RankingTimeline::Day> &days, const RankPlot &plot,
                                const DayLabelRoom &room, const QFontMetricsF &metrics,
                                const QLocale &locale = wordLocale());

} // namespace veltrix
