// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/rank_days.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <random>

namespace veltrix
{
namespace
{

constexpr std::int64_t today = 9'456;

/// Ranks by days ago; 0 is "not ranked".
RankDays ranksOf(const std::map<int, int> &byDaysAgo)
{
    RankDays days(today);
    for (const auto &[ago, rank] : byDaysAgo)
        days.add({today - ago, rank ? std::optional<std::int64_t>(rank) : std::nullopt});
    return days;
}

std::optional<RankCheck> check(int daysAgo, std::optional<std::int64_t> rank)
{
    return RankCheck{today - daysAgo, rank};
}

TEST(RankDays, KnowsTheLatestCheckAndTheOneBeforeHoweverOldTheyAre)
{
    EXPECT_EQ(ranksOf({}).latest(), std::nullopt);
    EXPECT_EQ(ranksOf({}).movement(), std::nullopt);
    const RankDays one = ranksOf({{3, 12}});
    EXPECT_EQ(one.latest(), check(3, 12));
    EXPECT_EQ(one.before(), std::nullopt);
    EXPECT_EQ(one.movement(), RankMovement::first());
    EXPECT_FALSE(one.isCheckedToday());
    const RankDays old = ranksOf({{500, 12}, {700, 10}, {900, 1}});
    EXPECT_EQ(old.latest(), check(500, 12));
    EXPECT_EQ(old.before(), check(700, 10));
    EXPECT_EQ(old.movement(), RankMovement::declined(2));
    EXPECT_TRUE(ranksOf({{0, 0}}).isCheckedToday());
}

TEST(RankDays, ADayWithoutACheckIsNeitherNotRankedNorLikeItsNeighbours)
{
    const RankDays days = ranksOf({{0, 5}, {2, 0}, {30, 8}, {31, 7}});
    EXPECT_EQ(days.onDay(0), check(0, 5));
    EXPECT_EQ(days.onDay(1), std::nullopt);
    EXPECT_EQ(days.onDay(2), check(2, std::nullopt));
    EXPECT_EQ(days.onDay(30), check(30, 8));
}

TEST(RankDays, ADayWithoutACheckStandsWhereTheNearestCheckOfTheWeekBeforeStood)
{
    const RankDays days = ranksOf({{0, 5}, {9, 11}, {37, 40}});
    EXPECT_EQ(days.daysAgo(7), check(9, 11));
    EXPECT_EQ(days.daysAgo(2), check(9, 11));
    EXPECT_EQ(days.daysAgo(1), std::nullopt) << "more than a week earlier";
    EXPECT_EQ(days.daysAgo(10), std::nullopt);
    EXPECT_EQ(days.daysAgo(30), check(37, 40));
    EXPECT_EQ(ranksOf({{0, 5}, {38, 40}}).daysAgo(30), std::nullopt);
    EXPECT_EQ(days.movementSince(7), RankMovement::improved(6));
    EXPECT_EQ(days.movementSince(30), RankMovement::improved(35));
    EXPECT_EQ(days.movementSince(1), std::nullopt);
}

TEST(RankDays, EnteringAndLeavingTheResultsAreMovementsToo)
{
    EXPECT_EQ(ranksOf({{0, 44}, {7, 0}}).movementSince(7), RankMovement::entered());
    EXPECT_EQ(ranksOf({{0, 0}, {7, 44}}).movementSince(7), RankMovement::left());
    EXPECT_EQ(ranksOf({{0, 0}, {7, 0}}).movementSince(7), RankMovement::stillUnranked());
    EXPECT_EQ(ranksOf({{0, 9}, {3, 2}, {7, 9}}).movementSince(7), RankMovement::unchanged());
}

TEST(RankDays, WhatWasNotCheckedSinceHasNotMoved)
{
    const RankDays days = ranksOf({{1, 20}, {2, 30}, {8, 25}});
    EXPECT_EQ(days.movementSince(1), std::nullopt) << "nothing was measured since yesterday";
    EXPECT_EQ(days.movementSince(7), RankMovement::improved(5));
}

TEST(RankDays, TheBestRankIsThatOfTheFirstDayThatHadIt)
{
    EXPECT_EQ(ranksOf({{0, 0}, {1, 0}}).best(), std::nullopt);
    EXPECT_EQ(ranksOf({{0, 3}, {5, 9}, {400, 3}, {600, 4}}).best(), check(400, 3));
}

TEST(RankDays, ANewBestIsBetterThanAllThatCameBefore)
{
    EXPECT_TRUE(ranksOf({{0, 3}, {1, 4}}).isNewBest());
    EXPECT_FALSE(ranksOf({{0, 3}, {1, 4}, {9, 3}}).isNewBest()) << "it was there before";
    EXPECT_FALSE(ranksOf({{0, 3}}).isNewBest()) << "there is nothing to be better than";
    EXPECT_FALSE(ranksOf({{0, 0}, {1, 4}}).isNewBest());
    EXPECT_FALSE(ranksOf({{0, 3}, {1, 0}}).isNewBest()) << "it has entered the results";
    RankDays half = ranksOf({{0, 3}, {1, 4}});
    half.setWhole(false);
    EXPECT_FALSE(half.isNewBest()) << "what is not known may have been better";
}

TEST(RankDays, MovesOnWithTheDay)
{
    RankDays days = ranksOf({{-1, 2}, {0, 5}, {30, 8}});
    EXPECT_EQ(days.latest(), check(-1, 2));
    days.moveTo(today + 1);
    EXPECT_EQ(days.today(), today + 1);
    EXPECT_EQ(days.onDay(0), check(-1, 2));
    EXPECT_EQ(days.onDay(1), check(0, 5));
    EXPECT_EQ(days.daysAgo(30), check(30, 8));
    days.moveTo(today + 1'000);
    EXPECT_EQ(days.daysAgo(30), std::nullopt);
    EXPECT_EQ(days.best(), check(-1, 2));
}

TEST(RankDays, SaysWhenAForgottenDayLeavesAHole)
{
    RankDays days = ranksOf({{0, 5}, {1, 6}, {2, 7}, {50, 1}});
    EXPECT_TRUE(days.forget(today - 2));
    EXPECT_TRUE(days.forget(today - 3));
    EXPECT_TRUE(days.isWhole());
    EXPECT_FALSE(days.forget(today - 50));
    EXPECT_FALSE(days.isWhole());
    EXPECT_EQ(days.best(), std::nullopt);
    EXPECT_EQ(days.onDay(2), std::nullopt);
}

TEST(RankDays, RanksThatOnlyADamagedFileHasCountAsTheNearest)
{
    RankDays days(today);
    days.add({today, 1'000'000});
    days.add({today - 1, -5});
    EXPECT_EQ(days.onDay(0), check(0, RankDays::lowestRank));
    EXPECT_EQ(days.onDay(1), check(1, 1));
}

RC_GTEST_PROP(RankDays, SaysTheSameInWhateverOrderTheDaysCome, ())
{
    const auto ranks =
        *rc::gen::container<std::map<int, int>>(rc::gen::inRange(0, 60), rc::gen::inRange(0, 101));
    std::vector<std::pair<int, int>> shuffled(ranks.begin(), ranks.end());
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(*rc::gen::arbitrary<unsigned>()));
    RankDays days(today);
    for (const auto &[ago, rank] : shuffled)
        days.add({today - ago, rank ? std::optional<std::int64_t>(rank) : std::nullopt});
    RC_ASSERT(days == ranksOf(ranks));
    RC_ASSERT(sizeof(RankDays) <= 128U);
}

} // namespace
} // namespace veltrix
