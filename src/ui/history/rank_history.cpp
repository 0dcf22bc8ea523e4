// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/rank_history.h"

#include <QCoreApplication>

#include <algorithm>

namespace veltrix
{

namespace
{

constexpr std::array<std::int64_t, 9> rankSteps{1, 2, 5, 10, 20, 25, 50, 100, 200};
/// Fewer ranks than this would turn a move by one place into a cliff.
constexpr std::int64_t leastBottom = 5;
constexpr size_t daysOfYear = 366;

struct RankHistory {
    Q_DECLARE_TR_FUNCTIONS(RankHistory)
};

} // namespace

std::int64_t dayCount(HistoryRange range)
{
    switch (range) {
    case HistoryRange::Days14:
        return 14;
    case HistoryRange::Days30:
        return 30;
    case HistoryRange::Days90:
        return 90;
    case HistoryRange::All:
        return longestHistory;
    }
    Q_UNREACHABLE();
}

QString rangeTitle(HistoryRange range)
{
    switch (range) {
    case HistoryRange::Days14:
        return RankHistory::tr("Last 14 days");
    case HistoryRange::Days30:
        return RankHistory::tr("Last 30 days");
    case HistoryRange::Days90:
        return RankHistory::tr("Last 90 days");
    case HistoryRange::All:
        return RankHistory::tr("All saved checks");
    }
    Q_UNREACHABLE();
}

QString rangeName(HistoryRange range)
{
    if (range == HistoryRange::All)
        return RankHistory::tr("All");
    return RankHistory::tr("%1 days").arg(dayCount(range));
}

std::vector<RankingTimeline::Day> historyDays(const RankingTimeline &timeline, HistoryRange range,
                                              Date now)
{
    const std::int64_t endDay = utcDay(now);
    const std::int64_t firstDay =
        std::max(utcDay(timeline.startedAt), endDay - (dayCount(range) - 1));
    const auto &checks = timeline.observations;
    auto next = std::ranges::lower_bound(
        checks, firstDay, {},
        [](const RankingTimeline::Observation &check) { return utcDay(check.date); });
    std::vector<RankingTimeline::Day> days;
    for (std::int64_t day = firstDay; day <= endDay; ++day) {
        RankingTimeline::Day entry{startOfUtcDay(day), std::nullopt, std::nullopt};
        if (next != checks.end() && utcDay(next->date) == day) {
            entry.observation = *next;
            entry.movement = next == checks.begin()
                                 ? RankMovement::first()
                                 : RankMovement::between(std::prev(next)->position, next->position);
            ++next;
        }
        days.push_back(entry);
    }
    return days;
}

std::int64_t RankChartData::worstRank() const
{
    std::int64_t worst = 0;
    for (const RankPoint &point : points)
        worst = std::max(worst, point.rank);
    return worst;
}

const RankPoint *RankChartData::pointOf(size_t day) const
{
    const auto point = std::ranges::lower_bound(points, day, {}, &RankPoint::day);
    return point != points.end() && point->day == day ? &*point : nullptr;
}

bool isPlottedRank(std::int64_t position)
{
    return position >= 1 && position <= largestPlottedRank;
}

RankChartData rankChartData(std::vector<RankingTimeline::Day> days)
{
    RankChartData data{std::move(days), {}, {}};
    int segment = 0;
    bool isSegmentOpen = false;
    for (size_t day = 0; day < data.days.size(); ++day) {
        const auto &check = data.days[day].observation;
        if (!check)
            continue;
        if (check->position && !isPlottedRank(*check->position))
            continue;
        if (check->position) {
            data.points.push_back({check->id, data.days[day].date, *check->position, segment, day});
            isSegmentOpen = true;
            continue;
        }
        data.unranked.push_back(day);
        if (isSegmentOpen)
            ++segment;
        isSegmentOpen = false;
    }
    return data;
}

RankAxis rankAxis(std::int64_t worstRank, std::int64_t most)
{
    most = std::clamp<std::int64_t>(most, 1, mostRankSteps);
    RankAxis axis;
    axis.bottom = std::max(worstRank, leastBottom);
    std::int64_t step = rankSteps.back();
    for (const std::int64_t candidate : rankSteps) {
        if (axis.bottom / candidate <= most) {
            step = candidate;
            break;
        }
    }
    while (axis.bottom / step > most)
        step *= 2;
    axis.ticks.push_back(1);
    // Counted, because the rank after the last one may be larger than any number.
    for (std::int64_t tick = 1; tick <= axis.bottom / step; ++tick) {
        if (tick * step > 1)
            axis.ticks.push_back(tick * step);
    }
    return axis;
}

bool needsYears(const std::vector<RankingTimeline::Day> &days)
{
    return days.size() > daysOfYear;
}

QString dayLabel(Date day, const std::vector<RankingTimeline::Day> &days, const QLocale &locale)
{
    return dayText(day, needsYears(days) ? DayFormat::DayAndYear : DayFormat::Day, locale);
}

} // namespace veltrix
