// SPDX-License-Identifier: GPL-3.0-or-later
// What a month of daily runs must measure and tell. The whole table: scripts/simulate --daily.
#include "simulation/daily_month.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class DailyMonthTest : public testing::Test
{
protected:
    static const DailyMonth &month()
    {
        static const DailyMonth lived = simulateDailyMonth();
        return lived;
    }
    /// The last run of a day.
    static const DailyRun &runOf(int day)
    {
        const DailyRun *found = nullptr;
        for (const DailyRun &run : month().runs) {
            if (run.day == day)
                found = &run;
        }
        EXPECT_TRUE(found) << "no run on day " << day;
        return *found;
    }
};

TEST_F(DailyMonthTest, MeasuresEverythingOnEveryDayThatAllowsIt)
{
    EXPECT_EQ(month().runs.size(), 30U);
    // The machine was off on a day, and the service failed on two, on the second half-way.
    EXPECT_EQ(month().fewestDays, 27);
    EXPECT_EQ(month().mostDays, 28);
    for (const int day : {1, 2, 11, 19, 22, 30})
        EXPECT_EQ(runOf(day).summary.measured, 200) << day;
}

TEST_F(DailyMonthTest, ADayThatWasMissedIsCaughtUpOnceAndMeasuresNothingTwice)
{
    std::vector<DailyRun> after;
    for (const DailyRun &run : month().runs) {
        EXPECT_NE(run.day, 12);
        if (run.day == 13)
            after.push_back(run);
    }
    ASSERT_EQ(after.size(), 2U);
    EXPECT_TRUE(after[0].isCaughtUp);
    EXPECT_EQ(after[0].summary.measured, 200);
    EXPECT_EQ(after[1].summary.measured, 0);
    EXPECT_EQ(after[1].summary.measuredBefore, 200);
    EXPECT_EQ(after[1].summary.notice, std::nullopt);
}

TEST_F(DailyMonthTest, AFailingServiceIsLeftAloneSoonAndTellsNothing)
{
    const MeasureSummary &none = runOf(20).summary;
    EXPECT_EQ(none.measured, 0);
    EXPECT_EQ(none.notMeasured, 3);
    EXPECT_EQ(none.left, 197);
    const MeasureSummary &some = runOf(21).summary;
    EXPECT_EQ(some.measured, 90);
    EXPECT_EQ(some.left, 107);
    EXPECT_FALSE(none.notice || some.notice);
    EXPECT_TRUE(runOf(22).summary.notice) << "what the days before had found";
}

TEST_F(DailyMonthTest, TellsAlmostEveryDayAndNotOnTheFirst)
{
    EXPECT_EQ(runOf(1).summary.notice, std::nullopt);
    int told = 0;
    for (const DailyRun &run : month().runs)
        told += run.summary.notice ? 1 : 0;
    EXPECT_GE(told, 20);
    EXPECT_LE(told, 26);
}

TEST_F(DailyMonthTest, ByARuleOf24HoursARandomDelayWouldCostEveryKeywordDays)
{
    EXPECT_LT(month().mostDaysByAge, month().fewestDays - 3);
}

} // namespace
} // namespace veltrix
