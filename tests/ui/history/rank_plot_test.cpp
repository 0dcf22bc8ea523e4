// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/rank_plot.h"

#include "ui/history/rank_pictures.h"

#include <QLineF>

#include <rapidcheck/gtest.h>

namespace veltrix
{

namespace
{

RankPlot plotOf(size_t days, std::int64_t bottom)
{
    return {QRectF(50, 20, 600, 240), days, bottom};
}

std::optional<size_t> at(size_t day)
{
    return day;
}

} // namespace

TEST(RankPlot, RankOneIsAboveEveryOtherRank)
{
    const RankPlot plot = plotOf(14, 31);
    EXPECT_LT(plot.y(1), plot.y(2));
    EXPECT_LT(plot.y(30), plot.y(31));
    EXPECT_GT(plot.y(1), plot.area.top());
    EXPECT_LT(plot.y(31), plot.area.bottom());
}

TEST(RankPlot, DaysStandInTheMiddleOfEqualColumns)
{
    const RankPlot plot = plotOf(6, 31);
    EXPECT_DOUBLE_EQ(plot.x(0), 100);
    EXPECT_DOUBLE_EQ(plot.x(1), 200);
    EXPECT_DOUBLE_EQ(plot.x(5), 600);
}

TEST(RankPlot, AMarkOfAnUnrankedCheckLiesBelowTheWorstRank)
{
    const RankPlot plot = plotOf(14, 31);
    EXPECT_GT(plot.unrankedMark(3).y(), plot.y(31));
    EXPECT_LT(plot.unrankedMark(3).y(), plot.area.bottom());
    EXPECT_DOUBLE_EQ(plot.unrankedMark(3).x(), plot.x(3));
}

TEST(RankPlot, ThePointerMeansTheColumnThatItIsIn)
{
    const RankPlot plot = plotOf(6, 31);
    EXPECT_EQ(plot.dayAt(50), at(0));
    EXPECT_EQ(plot.dayAt(149), at(0));
    EXPECT_EQ(plot.dayAt(151), at(1));
    EXPECT_EQ(plot.dayAt(649), at(5));
}

TEST(RankPlot, BesideThePlotItMeansTheNearestDay)
{
    const RankPlot plot = plotOf(6, 31);
    EXPECT_EQ(plot.dayAt(-300), at(0));
    EXPECT_EQ(plot.dayAt(9000), at(5));
}

TEST(RankPlot, WithoutDaysOrRoomItMeansNone)
{
    EXPECT_EQ(plotOf(0, 31).dayAt(100), std::nullopt);
    EXPECT_EQ((RankPlot{QRectF(), 6, 31}).dayAt(0), std::nullopt);
}

RC_GTEST_PROP(RankPlot, EveryDayIsFoundAtItsOwnPlace, ())
{
    const auto days = *rc::gen::inRange<size_t>(1, 3653);
    const auto day = *rc::gen::inRange<size_t>(0, days);
    const RankPlot plot = plotOf(days, 100);
    RC_ASSERT(plot.dayAt(plot.x(day)) == std::optional(day));
}

TEST(DayNear, IsTheDayUnderThePointerWhereDaysAreWide)
{
    const RankChartData data = rankChartData(daysOf("31 x . 9 8 7"));
    const RankPlot plot = plotOf(6, 31);
    EXPECT_EQ(dayNear(plot, {&data}, {55, 100}), at(0));
    EXPECT_EQ(dayNear(plot, {&data}, {plot.x(1), 100}), at(1));
    EXPECT_EQ(dayNear(plot, {&data}, {plot.x(2), 100}), at(2)) << "a day without a check";
    EXPECT_EQ(dayNear(plot, {&data}, {9000, 100}), at(5));
    const RankChartData none;
    EXPECT_EQ(dayNear(plotOf(0, 31), {&none}, {100, 100}), std::nullopt);
}

TEST(DayNear, IsThatOfTheNearestCheckOfAnyLine)
{
    RankChartData own = rankChartData(generatedDays(1825, 3, 1'000'000));
    RankChartData other = own;
    const RankPlot plot = plotOf(1825, 250);
    for (size_t day = 0; day < other.days.size(); ++day) {
        own.days[day].observation.reset();
        if (day != 900)
            other.days[day].observation.reset();
    }
    EXPECT_EQ(dayNear(plot, {&own, &other}, {plot.x(900) + 3, 100}), at(900));
    EXPECT_NE(dayNear(plot, {&own}, {plot.x(900) + 3, 100}), at(900));
}

TEST(DayNear, IsTheNearestCheckWhereDaysAreTooNarrowToPointAt)
{
    std::vector<RankingTimeline::Day> days = generatedDays(3000, 1, 1'000'000);
    for (size_t day = 0; day < days.size(); ++day) {
        if (day % 50 != 0)
            days[day].observation.reset();
    }
    const RankChartData data = rankChartData(std::move(days));
    const RankPlot plot = plotOf(3000, 100);
    EXPECT_EQ(dayNear(plot, {&data}, {plot.x(500) - 3, 100}), at(500));
    EXPECT_EQ(dayNear(plot, {&data}, {plot.x(500) + 3.9, 100}), at(500));
    EXPECT_EQ(dayNear(plot, {&data}, {plot.x(525), 100}), at(525)) << "none is near";
}

TEST(DayNear, TakesTheNearestInHeightOfChecksRightUnderThePointer)
{
    std::vector<RankingTimeline::Day> days = generatedDays(3000, 1, 1'000'000);
    for (size_t day = 0; day < days.size(); ++day)
        days[day].observation->position = day == 1502 ? 5 : 90;
    const RankChartData data = rankChartData(std::move(days));
    const RankPlot plot = plotOf(3000, 100);
    const qreal x = plot.x(1501);
    EXPECT_EQ(dayNear(plot, {&data}, {x, plot.y(8)}), at(1502));
    EXPECT_NE(dayNear(plot, {&data}, {x, plot.y(80)}), at(1502));
}

RC_GTEST_PROP(DayNear, FindsEveryCheckAtItsMarkOrOneThatLooksTheSame, ())
{
    const auto count = *rc::gen::inRange<size_t>(1, 3653);
    const RankChartData data = rankChartData(
        generatedDays(count, *rc::gen::arbitrary<unsigned>(), *rc::gen::element(2U, 20U)));
    const RankPlot plot = plotOf(count, 250);
    for (int i = 0; i < 20; ++i) {
        const auto day = *rc::gen::inRange<size_t>(0, count);
        if (!data.days[day].observation)
            continue;
        const QPointF mark = plot.markOf(data, day);
        const auto found = dayNear(plot, {&data}, mark);
        RC_ASSERT((found && data.days[*found].observation));
        RC_ASSERT(QLineF(plot.markOf(data, *found), mark).length() <= 0.501);
    }
}

TEST(DayStep, ArrowsStartAtTheEndThatTheyPointFrom)
{
    const RankChartData data = rankChartData(daysOf("5 . 4"));
    EXPECT_EQ(stepDay(data, std::nullopt, DayStep::Previous), at(2));
    EXPECT_EQ(stepDay(data, std::nullopt, DayStep::Next), at(0));
}

TEST(DayStep, ArrowsMoveByADayAndStopAtTheEnds)
{
    const RankChartData data = rankChartData(daysOf("5 . 4"));
    EXPECT_EQ(stepDay(data, 2, DayStep::Previous), at(1));
    EXPECT_EQ(stepDay(data, 0, DayStep::Previous), at(0));
    EXPECT_EQ(stepDay(data, 1, DayStep::Next), at(2));
    EXPECT_EQ(stepDay(data, 2, DayStep::Next), at(2));
    EXPECT_EQ(stepDay(data, 1, DayStep::First), at(0));
    EXPECT_EQ(stepDay(data, 1, DayStep::Last), at(2));
}

TEST(DayStep, ChecksAreReachedOverMissingDays)
{
    const RankChartData data = rankChartData(daysOf(". 5 . . x . 4 ."));
    EXPECT_EQ(stepDay(data, 1, DayStep::NextCheck), at(4));
    EXPECT_EQ(stepDay(data, 4, DayStep::NextCheck), at(6));
    EXPECT_EQ(stepDay(data, 6, DayStep::NextCheck), at(6));
    EXPECT_EQ(stepDay(data, 7, DayStep::NextCheck), at(7));
    EXPECT_EQ(stepDay(data, 6, DayStep::PreviousCheck), at(4));
    EXPECT_EQ(stepDay(data, 1, DayStep::PreviousCheck), at(1));
    EXPECT_EQ(stepDay(data, 0, DayStep::PreviousCheck), at(0));
    EXPECT_EQ(stepDay(data, std::nullopt, DayStep::PreviousCheck), at(6));
    EXPECT_EQ(stepDay(data, std::nullopt, DayStep::NextCheck), at(1));
}

TEST(DayStep, GoesNowhereWithoutDays)
{
    EXPECT_EQ(stepDay({}, std::nullopt, DayStep::Next), std::nullopt);
}

TEST(InspectionText, SaysWhatTheDaysCheckFound)
{
    const QLocale english(QLocale::English);
    const RankChartData data = rankChartData(daysOf("12 x ."));
    EXPECT_EQ(inspectionText(data, 0, english), text("Nov 8: rank 12"));
    EXPECT_EQ(inspectionText(data, 1, english), text("Nov 9: Not ranked"));
    EXPECT_EQ(inspectionText(data, 2, english), text("No check saved on Nov 10"));
    EXPECT_EQ(inspectionText(data, std::nullopt, english), text("Hover to inspect a saved check"));
    EXPECT_EQ(inspectionText(data, 3, english), text("Hover to inspect a saved check"));
}

TEST(RankPoint, IsReadAsItsRank)
{
    EXPECT_EQ(accessibleText(rankChartData(daysOf("12")).points.at(0)), text("Rank 12"));
}

} // namespace veltrix
