// SPDX-License-Identifier: GPL-3.0-or-later
// What a month of measuring must come to, whatever fails on the way. The whole table:
// scripts/simulate.
#include "simulation/measuring_month.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

using Poison = MonthOptions::Poison;

constexpr Seconds slow{4.5};

MonthResult month(double faults, Seconds searchTime, std::uint32_t seed,
                  Poison poison = Poison::None)
{
    MonthOptions options;
    options.faults = faults;
    options.searchTime = searchTime;
    options.seed = seed;
    options.poison = poison;
    return simulateMonth(options);
}

TEST(MeasuringMonth, WithoutFaultsEveryKeywordIsObservedOnEveryDay)
{
    EXPECT_EQ(month(0, Seconds(0), 1).fewestDays(), 31);
    EXPECT_EQ(month(0, slow, 1).fewestDays(), 31);
}

TEST(MeasuringMonth, AtTwoPercentFaultsEveryKeywordIsObservedOnThirtyOfThirtyOneDays)
{
    for (const std::uint32_t seed : {1U, 2U, 3U}) {
        const MonthResult result = month(0.02, Seconds(0), seed);
        EXPECT_GE(result.fewestDays(), 30) << "seed " << seed;
        EXPECT_GT(result.failures, 50) << "seed " << seed;
    }
}

TEST(MeasuringMonth, AtTwoPercentFaultsSlowSearchesLoseAtMostADayAgainstNoFaults)
{
    EXPECT_GE(month(0.02, slow, 1).fewestDays(), month(0, slow, 1).fewestDays() - 1);
}

TEST(MeasuringMonth, AKeywordThatCannotBeMeasuredCostsTheOthersNothing)
{
    for (const Poison poison : {Poison::TooLong, Poison::UnknownStorefront}) {
        const MonthResult poisoned = month(0.02, Seconds(0), 1, poison);
        EXPECT_EQ(poisoned.observedDays, month(0.02, Seconds(0), 1).observedDays);
    }
}

TEST(MeasuringMonth, AKeywordThatAlwaysFailsCostsTheOthersNoDay)
{
    const MonthResult result = month(0, Seconds(0), 1, Poison::AlwaysFails);
    EXPECT_GE(result.fewestDays(), 30);
}

TEST(MeasuringMonth, RunsThatStartEarlierEveryDaySkipNoDayUnderTheRuleOfTheDay)
{
    MonthOptions options;
    options.firstHour = 22;
    options.hoursOpen = 1;
    options.earlierEachDay = Seconds(600);
    options.due = KeywordRefreshes::Due::EachDay;
    EXPECT_EQ(simulateMonth(options).fewestDays(), 31);
    // An hour and more earlier each day, a ranking is never 24 hours old while the window is open.
    options.earlierEachDay = Seconds(4'000);
    options.days = 15;
    EXPECT_EQ(simulateMonth(options).fewestDays(), 15);
    options.due = KeywordRefreshes::Due::After24Hours;
    EXPECT_LT(simulateMonth(options).fewestDays(), 15);
}

} // namespace
} // namespace veltrix
