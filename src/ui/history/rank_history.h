// SPDX-License-Identifier: GPL-3.0-or-later
// What the ranking chart shows: days, plotted checks, segments and ranks. Pure values.
#pragma once

#include "store/ranking_timeline.h"
#include "ui_kit/text/date_texts.h"

#include <QLocale>
#include <QString>

#include <array>
#include <vector>

namespace veltrix
{

/// How far back the history reaches.
enum class HistoryRange { Days14, Days30, Days90, All };

inline constexpr std::array allHistoryRanges{HistoryRange::Days14, HistoryRange::Days30,
                                             HistoryRange::Days90, HistoryRange::All};

/// Most days that HistoryRange::All lists: ten years.
inline constexpr std::int64_t longestHistory = 3653;

/// Days of the range up to and with today, at most; longestHistory for All.
std::int64_t dayCount(HistoryRange range);

/// "Last 14 days", "All saved checks".
QString rangeTitle(HistoryRange range);
/// The short name in the range control: "14 days", "All".
QString rangeName(HistoryRange range);

/// Every UTC day of the range up to and with the day of `now`, oldest first, without the days
/// before the timeline starts. The same rule as RankingTimeline::days(), without its limit of 14
/// days.
std::vector<RankingTimeline::Day> historyDays(const RankingTimeline &timeline, HistoryRange range,
                                              Date now);

/// One plotted check.
struct RankPoint {
    /// The observation's id.
    QUuid id;
    /// Start of the check's UTC day.
    Date date;
    /// 1-based; rank 1 is best.
    std::int64_t rank = 0;
    /// Points of one segment are joined by a line. Segments count from 0.
    int segment = 0;
    /// Index of the day in RankChartData::days.
    size_t day = 0;

    bool operator==(const RankPoint &) const = default;
};

struct RankChartData {
    /// The columns of the chart, one a day.
    std::vector<RankingTimeline::Day> days;
    /// Ranked checks, oldest first.
    std::vector<RankPoint> points;
    /// Indices of the days whose check found the app unranked.
    std::vector<size_t> unranked;

    [[nodiscard]] bool isEmpty() const { return points.empty(); }
    /// The largest rank, 0 without points.
    [[nodiscard]] std::int64_t worstRank() const;
    /// The point of a day, or null.
    [[nodiscard]] const RankPoint *pointOf(size_t day) const;
};

/// Far below the last app that a search returns.
inline constexpr std::int64_t largestPlottedRank = 10'000;

/// False for a position that no search can give, such as one of a damaged or hand-made file. Its
/// check is told in words, but has no place on the chart.
bool isPlottedRank(std::int64_t position);

/// Ranked checks share a segment until an unranked check ends it; a day without a check neither
/// joins nor breaks anything.
RankChartData rankChartData(std::vector<RankingTimeline::Day> days);

/// The vertical axis: rank 1 at the top, `bottom` at the bottom.
struct RankAxis {
    std::int64_t bottom = 5;
    /// Ranks with a label and a grid line, ascending, 1 first.
    std::vector<std::int64_t> ticks;

    bool operator==(const RankAxis &) const = default;
};

/// More than so many ranks below rank 1 would be read as a table, not as an axis.
inline constexpr std::int64_t mostRankSteps = 5;

/// An axis that holds ranks up to `worstRank`: 1 and round ranks below it, at most `most` of them
/// (but one at least, and never more than mostRankSteps).
RankAxis rankAxis(std::int64_t worstRank, std::int64_t most = mostRankSteps);

/// True for a range so long that a day and a month may name two of its days.
bool needsYears(const std::vector<RankingTimeline::Day> &days);

/// A UTC day as one of `days`: with its year where needsYears() says so.
QString dayLabel(Date day, const std::vector<RankingTimeline::Day> &days,
                 const QLocale &locale = wordLocale());

} // namespace veltrix
