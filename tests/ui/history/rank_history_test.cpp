// SPDX-License-Identifier: GPL-3.0-or-later
// The chart's data, drawn as text: one token a day.
#include "ui/history/day_labels.h"
#include "ui/history/history_export.h"
#include "ui/history/rank_history.h"
#include "ui/history/rank_plot.h"

#include "ui/history/rank_pictures.h"

#include <rapidcheck/gtest.h>

namespace veltrix
{

namespace
{

constexpr std::int64_t firstDay = firstPictureDay;

QString chartOf(const char *picture)
{
    return drawn(rankChartData(daysOf(picture)));
}

QString ticksOf(std::int64_t worstRank, std::int64_t most = 5)
{
    const RankAxis axis = rankAxis(worstRank, most);
    QStringList texts;
    for (const std::int64_t tick : axis.ticks)
        texts.append(QString::number(tick));
    return texts.join(u' ') + QStringLiteral(" to ") + QString::number(axis.bottom);
}

QString described(const std::vector<RankingTimeline::Day> &days)
{
    QStringList texts;
    for (const RankingTimeline::Day &day : days) {
        QString text = QString::number(utcDay(day.date) - firstDay);
        if (day.observation)
            text += u':' + day.observation->id.toString(QUuid::Id128).left(4) + u' ' +
                    day.movement->label();
        texts.append(text);
    }
    return texts.join(u'\n');
}

RankingTimeline timelineOf(std::initializer_list<std::pair<std::int64_t, int>> checks,
                           std::int64_t trackedSince = firstDay)
{
    std::vector<RankingTimeline::Observation> observations;
    for (const auto &[day, rank] : checks) {
        observations.push_back({QUuid::createUuid(), noonOf(day),
                                rank > 0 ? std::optional<std::int64_t>(rank) : std::nullopt});
    }
    return {std::move(observations), startOfUtcDay(trackedSince)};
}

} // namespace

TEST(RankChartData, ConsecutiveRankedChecksShareASegment)
{
    EXPECT_EQ(chartOf("31 29 24"), text("a31 a29 a24"));
}

TEST(RankChartData, AnUnrankedCheckEndsTheSegment)
{
    EXPECT_EQ(chartOf("31 29 x 22 18"), text("a31 a29 x b22 b18"));
}

TEST(RankChartData, AMissingDayNeitherJoinsNorBreaks)
{
    EXPECT_EQ(chartOf("31 . 24 . . 26"), text("a31 . a24 . . a26"));
}

TEST(RankChartData, UnrankedChecksInARowOpenOneNewSegment)
{
    EXPECT_EQ(chartOf("12 x . x x 9"), text("a12 x . x x b9"));
}

TEST(RankChartData, UnrankedChecksBeforeTheFirstRankDoNotUseUpASegment)
{
    EXPECT_EQ(chartOf("x . x 9 x 8"), text("x . x a9 x b8"));
}

TEST(RankChartData, OnePointIsASegmentOfItsOwn)
{
    EXPECT_EQ(chartOf(". . 7 ."), text(". . a7 ."));
}

TEST(RankChartData, WithoutRankedChecksThereIsNothingToPlot)
{
    const RankChartData data = rankChartData(daysOf(". x ."));
    EXPECT_TRUE(data.isEmpty());
    EXPECT_EQ(data.unranked, std::vector<size_t>{1});
    EXPECT_TRUE(rankChartData({}).isEmpty());
}

TEST(RankChartData, APointStandsAtTheStartOfItsDay)
{
    const RankChartData data = rankChartData(daysOf(". 7"));
    ASSERT_EQ(data.points.size(), 1u);
    EXPECT_EQ(data.points[0].date, startOfUtcDay(firstDay + 1));
    EXPECT_EQ(data.points[0].id, data.days[1].observation->id);
}

TEST(RankChartData, TheWorstRankIsTheLargest)
{
    EXPECT_EQ(rankChartData(daysOf("12 100 x 1")).worstRank(), 100);
    EXPECT_EQ(rankChartData(daysOf("1 1")).worstRank(), 1);
    EXPECT_EQ(rankChartData({}).worstRank(), 0);
}

TEST(RankAxis, StartsAtRankOneAndHoldsRoundRanks)
{
    EXPECT_EQ(ticksOf(31), text("1 10 20 30 to 31"));
    EXPECT_EQ(ticksOf(100), text("1 20 40 60 80 100 to 100"));
    EXPECT_EQ(ticksOf(12), text("1 5 10 to 12"));
    EXPECT_EQ(ticksOf(9), text("1 2 4 6 8 to 9"));
    EXPECT_EQ(ticksOf(26), text("1 5 10 15 20 25 to 26"));
}

TEST(RankAxis, ARankOfOneStillHasRoomBelow)
{
    EXPECT_EQ(ticksOf(1), text("1 2 3 4 5 to 5"));
    EXPECT_EQ(ticksOf(0), text("1 2 3 4 5 to 5"));
}

RC_GTEST_PROP(RankAxis, HoldsEveryRankWithFewAscendingTicks, ())
{
    const std::int64_t worst = *rc::gen::inRange<std::int64_t>(0, 1'000'000);
    const RankAxis axis = rankAxis(worst);
    RC_ASSERT(axis.bottom >= worst);
    RC_ASSERT(axis.ticks.size() >= 2u && axis.ticks.size() <= 6u);
    RC_ASSERT(axis.ticks.front() == 1);
    RC_ASSERT(std::ranges::is_sorted(axis.ticks));
    RC_ASSERT(axis.ticks.back() <= axis.bottom);
}

TEST(RankAxis, OfALowChartHasFewerRanks)
{
    EXPECT_EQ(ticksOf(31, 2), text("1 20 to 31"));
    EXPECT_EQ(ticksOf(31, 0), text("1 20 to 31"));
    EXPECT_EQ(ticksOf(5, 1), text("1 5 to 5"));
}

TEST(DayLabel, NamesTheYearWhereADayAndAMonthNameTwoDays)
{
    const QLocale english(QLocale::English);
    const auto lastOf = [&](size_t count) {
        const auto days = generatedDays(count, 1, 2);
        return dayLabel(days.back().date, days, english);
    };
    EXPECT_EQ(lastOf(366), text("Nov 8"));
    EXPECT_EQ(lastOf(367), text("Nov 9, 2027"));
}

TEST(HistoryDays, Of14DaysAreThoseOfTheTimeline)
{
    const RankingTimeline timeline =
        timelineOf({{firstDay - 40, 50}, {firstDay - 20, 0}, {firstDay - 3, 12}, {firstDay, 9}},
                   firstDay - 40);
    EXPECT_EQ(described(historyDays(timeline, HistoryRange::Days14, noonOf(firstDay))),
              described(timeline.days(14, noonOf(firstDay))));
}

TEST(HistoryDays, LongerRangesReachFurtherBack)
{
    const RankingTimeline timeline =
        timelineOf({{firstDay - 800, 50}, {firstDay - 60, 20}, {firstDay, 9}}, firstDay - 800);
    const Date now = noonOf(firstDay);
    EXPECT_EQ(historyDays(timeline, HistoryRange::Days30, now).size(), 30u);
    EXPECT_EQ(historyDays(timeline, HistoryRange::Days90, now).size(), 90u);
    const auto all = historyDays(timeline, HistoryRange::All, now);
    ASSERT_EQ(all.size(), 801u);
    EXPECT_EQ(all.front().observation->position, 50);
    EXPECT_EQ(all.front().movement, RankMovement::first());
    EXPECT_EQ(all.back().movement, RankMovement::improved(11));
}

TEST(HistoryDays, DaysBeforeTrackingBeganAreNotListed)
{
    const RankingTimeline timeline = timelineOf({{firstDay - 1, 5}}, firstDay - 1);
    EXPECT_EQ(historyDays(timeline, HistoryRange::Days90, noonOf(firstDay)).size(), 2u);
}

TEST(HistoryDays, ADateInTheDistantPastIsCutAtTenYears)
{
    const RankingTimeline timeline = timelineOf({{-3'000'000'000, 5}});
    EXPECT_EQ(historyDays(timeline, HistoryRange::All, noonOf(firstDay)).size(),
              size_t(longestHistory));
}

TEST(HistoryDays, AStartInTheFutureListsNothing)
{
    const RankingTimeline timeline = timelineOf({{firstDay + 10, 5}});
    EXPECT_TRUE(historyDays(timeline, HistoryRange::All, noonOf(firstDay)).empty());
}

RC_GTEST_PROP(HistoryDays, AgreeWithTheTimelineForFourteenDays, ())
{
    const auto offsets = *rc::gen::container<std::vector<int>>(rc::gen::inRange(-60, 3));
    std::vector<RankingTimeline::Observation> observations;
    for (const int offset : offsets) {
        observations.push_back(
            {QUuid::createUuid(),
             startOfUtcDay(firstDay + offset) + Seconds(offset & 1 ? 7 : 70'000),
             offset % 3 ? std::optional<std::int64_t>(40 + offset % 7) : std::nullopt});
    }
    const RankingTimeline timeline(std::move(observations), startOfUtcDay(firstDay - 5));
    RC_ASSERT(described(historyDays(timeline, HistoryRange::Days14, noonOf(firstDay))) ==
              described(timeline.days(14, noonOf(firstDay))));
}

TEST(HistoryRangeNames, SayHowFarBackTheyReach)
{
    QStringList names;
    for (const HistoryRange range : allHistoryRanges)
        names << rangeName(range) << rangeTitle(range);
    EXPECT_EQ(names, (QStringList{text("14 days"), text("Last 14 days"), text("30 days"),
                                  text("Last 30 days"), text("90 days"), text("Last 90 days"),
                                  text("All"), text("All saved checks")}));
}

TEST(RankHistoryExtremes, APositionThatNoSearchCanGiveIsToldButNotPlotted)
{
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    const auto now = dateFromUnixSeconds(1'795'262'400);
    std::vector<RankingTimeline::Observation> checks;
    std::int64_t daysAgo = 6;
    for (const std::int64_t rank : {std::int64_t(7), most, std::int64_t(-3), std::int64_t(0),
                                    std::numeric_limits<std::int64_t>::min(), std::int64_t(9)}) {
        const Date date = now - Seconds(secondsPerDay * double(daysAgo--));
        checks.push_back({QUuid::createUuid(), date, rank});
    }
    const RankingTimeline timeline(checks, now);
    const RankChartData data = rankChartData(historyDays(timeline, HistoryRange::Days14, now));
    ASSERT_EQ(data.points.size(), 2U);
    EXPECT_EQ(data.worstRank(), 9);
    EXPECT_TRUE(data.unranked.empty()) << "they were not unranked either";
    EXPECT_EQ(data.points[0].segment, data.points[1].segment);
    EXPECT_TRUE(inspectionText(data, 1).endsWith(QStringLiteral(": rank 9223372036854775807")));
    EXPECT_EQ(historyTable(QStringLiteral("k"), QStringLiteral("US"), {data}).size(), 7);
}

TEST(RankHistoryExtremes, TheAxisOfAnyNumberIsShort)
{
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    for (const std::int64_t worst : {most, most - 1, most / 2, std::int64_t(1) << 40}) {
        const RankAxis axis = rankAxis(worst);
        EXPECT_EQ(axis.bottom, worst);
        EXPECT_LE(axis.ticks.size(), 6U);
    }
    EXPECT_EQ(rankAxis(std::numeric_limits<std::int64_t>::min()), rankAxis(0));
}

TEST(RankHistoryExtremes, DatesOfNoCalendarLeaveAHistoryThatCanBeShown)
{
    const auto now = dateFromUnixSeconds(1'795'262'400);
    std::vector<RankingTimeline::Observation> checks;
    for (const double seconds : {1e300, -1e300, 1e18, -1e18, referenceSeconds(now)})
        checks.push_back({QUuid::createUuid(), dateFromReferenceSeconds(seconds), 5});
    for (const Date start : {dateFromReferenceSeconds(1e300), dateFromReferenceSeconds(-1e300)}) {
        for (const HistoryRange range : allHistoryRanges) {
            const RankingTimeline timeline(checks, start);
            const auto days = historyDays(timeline, range, now);
            EXPECT_EQ(std::int64_t(days.size()), dayCount(range));
            const RankChartData data = rankChartData(days);
            EXPECT_EQ(data.points.size(), 1U);
            EXPECT_EQ(historyTable(QStringLiteral("k"), QStringLiteral("US"), {data}).size(), 2);
            const RankPlot plot{QRectF(40, 0, 600, 200), days.size(), 9};
            const QFontMetricsF metrics{QFont()};
            EXPECT_LE(dayLabels(days, plot, {0, 640, 16}, metrics).size(), 40U);
            const RankingTimeline empty({}, start);
            EXPECT_LE(std::int64_t(historyDays(empty, range, now).size()), dayCount(range));
        }
    }
}

} // namespace veltrix
