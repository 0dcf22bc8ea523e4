// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/rank_line.h"

#include "ui/history/rank_pictures.h"

#include <rapidcheck/gtest.h>

namespace veltrix
{

namespace
{

RankPlot plotFor(const RankChartData &data, qreal width)
{
    return {QRectF(40, 10, width, 240), data.days.size(), rankAxis(data.worstRank()).bottom};
}

RankChartData repeated(const char *picture, int times)
{
    return rankChartData(daysOf(QByteArray(picture).append(' ').repeated(times).constData()));
}

/// A chart of any length, width and history.
struct Drawn {
    RankChartData data;
    RankPlot plot;
    RankLine line;

    static Drawn any()
    {
        const auto days = *rc::gen::inRange<size_t>(1, 3654);
        const auto seed = *rc::gen::arbitrary<unsigned>();
        const auto sparsity = *rc::gen::element(2U, 5U, 30U, 300U);
        const auto width = *rc::gen::inRange(200, 1600);
        RankChartData data = rankChartData(generatedDays(days, seed, sparsity));
        const RankPlot plot = plotFor(data, width);
        RankLine line = rankLine(plot, data);
        return {std::move(data), plot, std::move(line)};
    }
};

} // namespace

TEST(RankLine, JoinsTheChecksOfEachRun)
{
    const RankChartData data = rankChartData(daysOf("31 29 . 24 26 x 22 18"));
    const RankPlot plot = plotFor(data, 800);
    const RankLine line = rankLine(plot, data);
    ASSERT_EQ(line.runs.size(), 2U);
    EXPECT_EQ(line.runs[0],
              QPolygonF({plot.at(0, 31), plot.at(1, 29), plot.at(3, 24), plot.at(4, 26)}));
    EXPECT_EQ(line.runs[1], QPolygonF({plot.at(6, 22), plot.at(7, 18)}));
    EXPECT_EQ(line.crosses, std::vector{plot.unrankedMark(5)});
}

TEST(RankLine, HasAPointForEachCheckWhereDaysAreWide)
{
    const RankChartData data = rankChartData(daysOf("31 29 . 24 x 22"));
    const RankPlot plot = plotFor(data, 600);
    const RankLine line = rankLine(plot, data);
    EXPECT_EQ(line.points,
              (std::vector{plot.at(0, 31), plot.at(1, 29), plot.at(3, 24), plot.at(5, 22)}));
    EXPECT_EQ(line.pointSide, 9);
}

TEST(RankLine, HasPointsAtSomeChecksAndBesideGapsWhereDaysAreNarrow)
{
    const RankChartData data = rankChartData(daysOf(
        ("9 " + QByteArray("8 ").repeated(99) + "x . . . x " + QByteArray("7 ").repeated(99) + "6")
            .constData()));
    const RankPlot plot = plotFor(data, 600);
    const RankLine line = rankLine(plot, data);
    EXPECT_LT(line.points.size(), 30U);
    for (const RankPoint &end :
         {data.points[0], data.points[99], data.points[100], data.points[199]})
        EXPECT_EQ(std::ranges::count(line.points, plot.at(end.day, end.rank)), 1) << end.day;
}

TEST(RankLine, KeepsASingleRankedCheckBetweenManyThatFoundNothing)
{
    const RankChartData data = repeated("x x x x 5 x x x x", 200);
    const RankLine line = rankLine(plotFor(data, 600), data);
    ASSERT_EQ(line.runs.size(), 200U);
    for (const QPolygonF &run : line.runs)
        EXPECT_EQ(run.size(), 1);
}

TEST(RankLine, OpensAGapAtASingleUnrankedCheckOfTenYears)
{
    std::vector<RankingTimeline::Day> days = generatedDays(3650, 7, 1'000'000);
    days[1800].observation->position.reset();
    const RankChartData data = rankChartData(std::move(days));
    const RankLine line = rankLine(plotFor(data, 600), data);
    ASSERT_EQ(line.runs.size(), 2U);
    EXPECT_GE(line.runs[1].front().x() - line.runs[0].back().x(), RankLine::leastGap - 0.001);
    EXPECT_EQ(line.crosses.size(), 1U);
}

TEST(RankLine, ThinsTenYearsToTheWidthOfThePlot)
{
    const RankChartData data = rankChartData(generatedDays(3650, 7, 1'000'000));
    const RankLine line = rankLine(plotFor(data, 300), data);
    ASSERT_EQ(line.runs.size(), 1U);
    EXPECT_LE(line.runs[0].size(), 4 * 301);
    EXPECT_GE(line.runs[0].size(), 2 * 300);
}

RC_GTEST_PROP(RankLine, LiesInThePlotInTheOrderOfItsDays, ())
{
    const Drawn chart = Drawn::any();
    const QRectF area = chart.plot.area.adjusted(-0.001, -0.001, 0.001, 0.001);
    qreal previous = area.left();
    for (const QPolygonF &run : chart.line.runs) {
        for (const QPointF &place : run) {
            RC_ASSERT(area.contains(place));
            RC_ASSERT(place.x() >= previous - 0.001);
            previous = place.x();
        }
    }
    RC_ASSERT(chart.line.runs.size() ==
              (chart.data.isEmpty() ? 0 : size_t(chart.data.points.back().segment) + 1));
}

RC_GTEST_PROP(RankLine, ReachesAsHighAndAsLowAsEveryCheck, ())
{
    const Drawn chart = Drawn::any();
    for (const RankPoint &check : chart.data.points) {
        const QPolygonF &run = chart.line.runs[size_t(check.segment)];
        const QPointF place = chart.plot.at(check.day, check.rank);
        bool reachesUp = false;
        bool reachesDown = false;
        // The column may have moved inwards from a gap.
        constexpr qreal reach = RankLine::leastGap / 2 + 1;
        const auto from = std::ranges::lower_bound(run, place.x() - reach, {}, &QPointF::x);
        for (auto vertex = from; vertex != run.end() && vertex->x() <= place.x() + reach;
             ++vertex) {
            reachesUp = reachesUp || vertex->y() <= place.y() + 0.001;
            reachesDown = reachesDown || vertex->y() >= place.y() - 0.001;
        }
        RC_ASSERT(reachesUp && reachesDown);
    }
}

RC_GTEST_PROP(RankLine, LeavesAGapBetweenRunsThatAreLongEnough, ())
{
    const Drawn chart = Drawn::any();
    for (size_t i = 1; i < chart.line.runs.size(); ++i) {
        const QPolygonF &before = chart.line.runs[i - 1];
        const QPolygonF &after = chart.line.runs[i];
        const bool areLong = before.size() > 1 && before.back().x() > before.front().x() &&
                             after.size() > 1 && after.back().x() > after.front().x();
        RC_ASSERT(
            (!areLong || after.front().x() - before.back().x() >= RankLine::leastGap - 0.001));
    }
}

RC_GTEST_PROP(RankLine, CrossesEveryUnrankedCheckWithoutTouchingCrosses, ())
{
    const Drawn chart = Drawn::any();
    const auto &crosses = chart.line.crosses;
    const qreal side = 2 * chart.line.crossArm;
    for (const size_t day : chart.data.unranked) {
        const qreal x = chart.plot.x(day);
        const auto after = std::ranges::upper_bound(crosses, x + 0.001, {}, &QPointF::x);
        RC_ASSERT(after != crosses.begin());
        RC_ASSERT(x - std::prev(after)->x() < side + 3);
    }
    for (size_t i = 1; i < crosses.size(); ++i)
        RC_ASSERT(crosses[i].x() - crosses[i - 1].x() > side);
}

RC_GTEST_PROP(RankLine, HasPointsThatLeaveOneAnotherRoom, ())
{
    const Drawn chart = Drawn::any();
    const auto &points = chart.line.points;
    for (size_t i = 1; i < points.size(); ++i)
        RC_ASSERT(points[i].x() - points[i - 1].x() >= std::min(chart.line.pointSide, 6.0));
}

TEST(ComparedRankLine, HasAMarkAboutEveryEighthCheckOfNinetyDays)
{
    std::vector<RankingTimeline::Day> days = generatedDays(90, 5, 1'000'000);
    const RankChartData data = rankChartData(std::move(days));
    const RankPlot plot = plotFor(data, 730);
    const RankLine line = comparedRankLine(plot, data, 0);
    EXPECT_NEAR(double(line.points.size()), 90.0 / 8 + 2, 2);
    EXPECT_EQ(line.points.front(), line.runs.front().front()) << "always at the ends";
    EXPECT_EQ(line.points.back(), line.runs.back().back());
}

TEST(ComparedRankLine, MarksTheChecksBesideAGap)
{
    std::vector<RankingTimeline::Day> days = generatedDays(90, 5, 1'000'000);
    days[45].observation->position.reset();
    const RankChartData data = rankChartData(std::move(days));
    const RankPlot plot = plotFor(data, 1'400);
    const RankLine line = comparedRankLine(plot, data, 2);
    ASSERT_EQ(line.runs.size(), 2U);
    const auto isMarked = [&](size_t day) {
        return std::ranges::find(line.points, plot.at(day, data.pointOf(day)->rank)) !=
               line.points.end();
    };
    EXPECT_TRUE(isMarked(44));
    EXPECT_TRUE(isMarked(46));
}

TEST(ComparedRankLine, MarksOfOtherLinesStandAtOtherDays)
{
    const RankChartData data = rankChartData(generatedDays(90, 5, 1'000'000));
    const RankPlot plot = plotFor(data, 730);
    const RankLine one = comparedRankLine(plot, data, 0);
    const RankLine next = comparedRankLine(plot, data, 1);
    int shared = 0;
    for (const QPointF &point : one.points)
        shared += int(std::ranges::count(next.points, point));
    EXPECT_LE(shared, 3) << "the ends, and by chance";
}

RC_GTEST_PROP(ComparedRankLineProperty, MarksDoNotTouchAndLieOnChecks, ())
{
    const auto days = *rc::gen::inRange<size_t>(1, 3654);
    const auto sparsity = *rc::gen::element(2U, 5U, 30U, 300U);
    const auto place = *rc::gen::inRange<size_t>(0, 13);
    const RankChartData data =
        rankChartData(generatedDays(days, *rc::gen::arbitrary<unsigned>(), sparsity));
    const RankPlot plot = plotFor(data, *rc::gen::inRange(200, 1600));
    const RankLine line = comparedRankLine(plot, data, place);
    for (size_t i = 1; i < line.points.size(); ++i)
        RC_ASSERT(line.points[i - 1].x() < line.points[i].x());
    for (const QPointF &point : line.points)
        RC_ASSERT(plot.area.contains(point));
    RC_ASSERT(line.points.size() <= data.points.size());
    RC_ASSERT(data.isEmpty() || !line.runs.empty());
}

} // namespace veltrix
