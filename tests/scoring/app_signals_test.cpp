// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/app_signals.h"

#include "scoring/app_table.h"

#include <gtest/gtest.h>

#include <limits>

namespace veltrix
{
namespace
{

std::optional<double> ageOf(const QString &released)
{
    return appAgeYears(appTable(QStringLiteral("released\n") + released).front(), testNow());
}

TEST(AppAge, IsCountedInWholeDays)
{
    EXPECT_EQ(ageOf(QStringLiteral("2026-11-20T12:00:00Z")), 1 / 365.25);
    EXPECT_EQ(ageOf(QStringLiteral("2026-11-20T12:00:01Z")), 0);
    EXPECT_EQ(ageOf(QStringLiteral("2022-11-21T12:00:00Z")), 4);
}

TEST(AppAge, IsNeverNegative)
{
    EXPECT_EQ(ageOf(QStringLiteral("2030-01-01T00:00:00Z")), 0);
}

TEST(AppAge, ReadsDatesWithAndWithoutAFraction)
{
    EXPECT_EQ(ageOf(QStringLiteral("2022-11-21T12:00:00.000Z")), 4);
    EXPECT_EQ(ageOf(QStringLiteral("2022-11-21T14:00:00+02:00")), 4);
    EXPECT_EQ(ageOf(QStringLiteral("2022-11-21T12:00:00.250Z")), 1460 / 365.25);
}

TEST(AppAge, IsUnknownWithoutAUsableDate)
{
    EXPECT_EQ(ageOf(QStringLiteral("-")), std::nullopt);
    EXPECT_EQ(ageOf(QStringLiteral("2020-01-01")), std::nullopt);
    EXPECT_EQ(ageOf(QStringLiteral("2021-02-29T00:00:00Z")), std::nullopt);
}

TEST(RatingCount, OfAnAbsentOrNegativeCountIsZero)
{
    ITunesAppResult app;
    EXPECT_EQ(ratingCount(app), 0);
    app.userRatingCount = -5;
    EXPECT_EQ(ratingCount(app), 0);
    app.userRatingCount = 7;
    EXPECT_EQ(ratingCount(app), 7);
}

TEST(StarRating, ThatIsNotFiniteCountsAsAbsent)
{
    ITunesAppResult app;
    EXPECT_EQ(starRating(app), std::nullopt);
    app.averageUserRating = 4.25;
    EXPECT_EQ(starRating(app), 4.25);
    app.averageUserRating = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(starRating(app), std::nullopt);
    app.averageUserRating = std::numeric_limits<double>::infinity();
    EXPECT_EQ(starRating(app), std::nullopt);
}

TEST(RatingMomentum, OfAYoungAppIsThatOfHalfAYear)
{
    EXPECT_EQ(ratingMomentum(100, 0), 200);
    EXPECT_EQ(ratingMomentum(100, 0.5), 200);
    EXPECT_EQ(ratingMomentum(100, 4), 25);
}

TEST(RankedPosition, IsThatOfTheFirstResultWithTheId)
{
    const auto results = appTable(QStringLiteral(R"(
        id | name
        -  | No id
        5  | Five
        7  | Seven
        5  | Five again)"));
    EXPECT_EQ(rankedPosition(results, 5), 2);
    EXPECT_EQ(rankedPosition(results, 7), 3);
    EXPECT_EQ(rankedPosition(results, 8), std::nullopt);
    EXPECT_EQ(rankedPosition(results, 0), std::nullopt);
    EXPECT_EQ(findApp(results, 5)->trackName, QStringLiteral("Five"));
    EXPECT_EQ(findApp(results, 8), nullptr);
}

} // namespace
} // namespace veltrix
