// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/difficulty_model.h"

#include "scoring/app_table.h"
#include "support/json_printers.h"

#include <gtest/gtest.h>

#include <cmath>

namespace veltrix
{
namespace
{

DifficultyAssessment assess(QStringView keyword, const QString &table)
{
    return assessDifficulty(keyword, appTable(table), testNow());
}

/// The averages and components of a sample of one app.
DifficultyComponents oneApp(QStringView keyword, const QString &columns, const QString &cells)
{
    return assess(keyword, columns + u'\n' + cells).components;
}

double shareOf(QStringView keyword, const QString &name, const QString &subtitle)
{
    return oneApp(keyword, QStringLiteral("name | subtitle"), name + u'|' + subtitle)
        .averageKeywordMatchTop10;
}

double ageOf(const QString &released)
{
    return oneApp(u"a", QStringLiteral("released"), released).averageAgeYearsTop10;
}

TEST(DifficultyModel, OfNoResultsIsZeroThroughout)
{
    const auto result = assessDifficulty(u"photo editor", {}, testNow());
    EXPECT_EQ(result.score, 0);
    EXPECT_EQ(result.components, (DifficultyComponents{.sampledAppCount = 0,
                                                       .missingReviewCount = 0,
                                                       .missingReleaseDateCount = 0,
                                                       .reviewsWeight = 0.45,
                                                       .ageWeight = 0.25,
                                                       .matchWeight = 0.3}));
}

TEST(DifficultyModel, OfTenGrownAppsThatMatchIsEightyThree)
{
    const auto result = assess(u"photo editor", QStringLiteral(R"(
        name             | ratings | released             | times
        Photo Editor Pro | 10000   | 2018-11-21T00:00:00Z | 10)"));
    EXPECT_DOUBLE_EQ(result.components.reviewComponent, 1 - std::exp(-1.0));
    EXPECT_NEAR(result.components.reviewComponent, 0.632, 0.0005);
    EXPECT_EQ(result.components.ageComponent, 1);
    EXPECT_EQ(result.components.matchComponent, 1);
    EXPECT_EQ(result.score, 83);
    EXPECT_EQ(result.components.sampledAppCount, 10);
}

TEST(DifficultyModel, ReadsAHyphenAsASpace)
{
    EXPECT_EQ(shareOf(u"photo-editor", QStringLiteral("Photo Editor Pro"), {}), 1);
    EXPECT_EQ(shareOf(u"photo editor", QStringLiteral("Photo-Editor"), {}), 1);
}

TEST(DifficultyModel, OneTokenOfTwoIsAShareOfAHalf)
{
    EXPECT_EQ(shareOf(u"photo editor", QStringLiteral("Photo Lab"), {}), 0.5);
    EXPECT_EQ(shareOf(u"photo editor", {}, QStringLiteral("the EDITOR")), 0.5);
    EXPECT_EQ(shareOf(u"photo editor", QStringLiteral("Photo"), QStringLiteral("Editor")), 1);
}

TEST(DifficultyModel, CountsATokenThatOccursTwiceOnce)
{
    EXPECT_EQ(shareOf(u"photo editor", QStringLiteral("Photo Photo photo"), {}), 0.5);
    EXPECT_EQ(shareOf(u"photo photo editor", QStringLiteral("Photo"), {}), 0.5);
}

TEST(DifficultyModel, MatchesWholeTokensWithTheirPunctuation)
{
    EXPECT_EQ(shareOf(u"photo", QStringLiteral("Photos"), {}), 0);
    EXPECT_EQ(shareOf(u"photo", QStringLiteral("Photo: Lab"), {}), 0);
    EXPECT_EQ(shareOf(u"photo:", QStringLiteral("Photo: Lab"), {}), 1);
}

TEST(DifficultyModel, AKeywordWithoutTokensMatchesNothing)
{
    EXPECT_EQ(shareOf(u" - ", QStringLiteral("Photo"), {}), 0);
}

TEST(DifficultyModel, AReleaseToComeHasAgeZero)
{
    EXPECT_EQ(ageOf(QStringLiteral("2030-01-01T00:00:00Z")), 0);
    EXPECT_EQ(oneApp(u"a", QStringLiteral("released"), QStringLiteral("2030-01-01T00:00:00Z"))
                  .missingReleaseDateCount,
              0);
}

TEST(DifficultyModel, ADateThatDoesNotParseCountsAsMissing)
{
    for (const QString &date :
         {QStringLiteral("2020-01-01"), QStringLiteral("2020-01-01T00:00:00.5Z"),
          QStringLiteral("soon"), QStringLiteral("-"), QString()}) {
        const auto components =
            oneApp(u"a", QStringLiteral("name | released"), QStringLiteral("a | ") + date);
        EXPECT_EQ(components.averageAgeYearsTop10, 0) << date.toStdString();
        EXPECT_EQ(components.missingReleaseDateCount, 1) << date.toStdString();
    }
}

TEST(DifficultyModel, MeasuresAgeToTheSecondInYearsOf365Days6Hours)
{
    EXPECT_DOUBLE_EQ(ageOf(QStringLiteral("2026-11-20T12:00:00Z")), 86'400.0 / 31'557'600.0);
    EXPECT_DOUBLE_EQ(ageOf(QStringLiteral("2026-11-21T12:59:59+01:00")), 1.0 / 31'557'600.0);
}

TEST(DifficultyModel, AnAppWithoutRatingsStaysInTheMean)
{
    const auto components = assess(u"a", QStringLiteral(R"(
        ratings
        3000
        -
        0)"))
                                .components;
    EXPECT_EQ(components.averageReviewsTop10, 1000);
    EXPECT_EQ(components.missingReviewCount, 1);
    EXPECT_EQ(components.sampledAppCount, 3);
}

TEST(DifficultyModel, AMeanAgeOfExactlyEightYearsIsFull)
{
    // 2918 and 2926 days: 2 × 2922 = 16 years.
    const auto components = assess(u"a", QStringLiteral(R"(
        released
        2018-11-25T12:00:00Z
        2018-11-17T12:00:00Z)"))
                                .components;
    EXPECT_EQ(components.averageAgeYearsTop10, 8.0);
    EXPECT_EQ(components.ageComponent, 1.0);
}

TEST(DifficultyModel, RoundsHalfAwayFromZero)
{
    // Four years and nothing else: exactly 12.5 points.
    const auto result = assess(u"a", QStringLiteral("released\n2022-11-21T12:00:00Z"));
    EXPECT_EQ(result.components.averageAgeYearsTop10, 4.0);
    EXPECT_EQ(result.components.ageComponent * 0.25 * 100, 12.5);
    EXPECT_EQ(result.score, 13);
}

TEST(DifficultyModel, KeepsNegativeRatingsButNeverANegativeScore)
{
    const auto result = assess(u"a", QStringLiteral("ratings\n-20000"));
    EXPECT_EQ(result.components.averageReviewsTop10, -20'000);
    EXPECT_DOUBLE_EQ(result.components.reviewComponent, 1 - std::exp(2.0));
    EXPECT_EQ(result.score, 0);
}

TEST(DifficultyModel, AbsurdRatingsStillGiveAFiniteBreakdown)
{
    const auto result = assess(u"a", QStringLiteral("ratings\n-9000000000000000000"));
    EXPECT_TRUE(std::isfinite(result.components.reviewComponent));
    EXPECT_EQ(result.score, 0);
    EXPECT_EQ(assess(u"a", QStringLiteral("ratings\n9000000000000000000")).score, 45);
}

TEST(DifficultyModel, ItsSampleIsTheFirstTenResults)
{
    const auto results = appTable(QStringLiteral("name | times\nA | 12"));
    EXPECT_EQ(difficultySample(results).size(), 10U);
    EXPECT_EQ(difficultySample(results).data(), results.constData());
    EXPECT_EQ(difficultySample(std::span(results).first(3)).size(), 3U);
}

} // namespace
} // namespace veltrix
