// SPDX-License-Identifier: GPL-3.0-or-later
// Which days of its range the ranking chart shows when the range is narrowed. Pure.
#pragma once

#include "ui/history/rank_history.h"

namespace veltrix
{

/// Days next to each other, by their indices in a range.
struct DaySpan {
    size_t first = 0;
    size_t count = 0;

    /// Index of the last day; none without days.
    [[nodiscard]] size_t last() const { return first + count - 1; }
    [[nodiscard]] bool contains(size_t day) const { return day >= first && day < first + count; }
    bool operator==(const DaySpan &) const = default;
};

/// A range is not narrowed to fewer days: their line would say nothing.
inline constexpr size_t fewestShownDays = 7;

/// All days of a range of `total` days.
DaySpan wholeRange(size_t total);

/// The days between two of a range of `total` days, both included and in either order, with days
/// around them where they are fewer than fewestShownDays.
DaySpan spanBetween(size_t one, size_t other, size_t total);

/// `shown` with `factor` times as many days, by one at least; the day `anchor` keeps its place
/// among them as far as the range allows.
DaySpan zoomed(const DaySpan &shown, double factor, size_t anchor, size_t total);

/// As many days, moved by `days` as far as the range allows.
DaySpan moved(const DaySpan &shown, std::int64_t days, size_t total);

/// "Nov 8 – Nov 14, 2026", with the first year where it is another; empty without days.
QString spanText(const std::vector<RankingTimeline::Day> &days,
                 const QLocale &locale = wordLocale());

} // namespace veltrix
