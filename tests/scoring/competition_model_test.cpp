// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/competition_model.h"

#include "scoring/app_table.h"
#include "support/json_printers.h"

#include <gtest/gtest.h>

#include <cmath>

namespace veltrix
{
namespace
{

const QString uncorrected = QStringLiteral("No small-sample or weak-leader correction applied.");

QString adjustedFrom(int raw)
{
    return QStringLiteral("Adjusted from %1 for a small result set, weak leader or unrelated "
                          "backfill.")
        .arg(raw);
}

CompetitionAssessment assess(QStringView keyword, const QString &table)
{
    return assessCompetition({keyword, appTable(table)}, testNow());
}

double factor(const CompetitionAssessment &assessment, const char *name)
{
    const auto value = assessment.factors.find(QString::fromLatin1(name));
    EXPECT_TRUE(value.has_value()) << name;
    return value.value_or(-1);
}

/// A factor of the apps in the table, for the keyword "photo editor".
double factorOf(const char *name, const QString &table)
{
    return factor(assess(u"photo editor", table), name);
}

TEST(CompetitionModel, OfNoResultsSaysSo)
{
    EXPECT_EQ(assessCompetition({u"photo editor", {}}, testNow()),
              (CompetitionAssessment{.score = 0,
                                     .sampleCount = 0,
                                     .factors = {},
                                     .adjustment = QStringLiteral("No app results.")}));
}

TEST(CompetitionModel, HasSevenFactorsWhoseWeightsAddUpToOne)
{
    double sum = 0;
    QStringList names;
    for (const auto &[name, weight] : competitionFactors()) {
        names.append(name);
        sum += weight;
    }
    EXPECT_DOUBLE_EQ(sum, 1);
    EXPECT_EQ(names,
              (QStringList{QStringLiteral("Rating volume"), QStringLiteral("Rating momentum"),
                           QStringLiteral("Dominant apps"), QStringLiteral("Rating quality"),
                           QStringLiteral("App age"), QStringLiteral("Publisher diversity"),
                           QStringLiteral("Title relevance")}));
}

TEST(CompetitionModel, OfTenEqualAppsThatMatch)
{
    const auto result = assess(u"photo editor", QStringLiteral(R"(
        name             | seller | ratings | stars | released             | times
        Photo Editor Pro | Acme   | 10000   | 4.5   | 2018-11-21T12:00:00Z | 10)"));
    EXPECT_EQ(factor(result, "Rating volume"), 78);
    EXPECT_DOUBLE_EQ(factor(result, "Rating momentum"), 50 + 20 * std::log(1.25) / std::log(5.0));
    EXPECT_DOUBLE_EQ(factor(result, "Dominant apps"), 400.0 / 7);
    EXPECT_EQ(factor(result, "Rating quality"), 85);
    EXPECT_EQ(factor(result, "App age"), 85);
    EXPECT_EQ(factor(result, "Publisher diversity"), 10);
    EXPECT_EQ(factor(result, "Title relevance"), 100);
    // 23.4 + 5.277 + 11.429 + 8.5 + 8.5 + 1 + 10 = 68.106, truncated.
    EXPECT_EQ(result.score, 68);
    EXPECT_EQ(result.sampleCount, 10);
    EXPECT_EQ(result.factors.size(), 7);
    EXPECT_EQ(result.adjustment, uncorrected);
}

TEST(CompetitionModel, TheSmallSampleCapIsTenPointsAnApp)
{
    const auto result = assess(u"photo editor", QStringLiteral(R"(
        name           | seller | ratings | stars | released
        Photo Editor   | A      | 5000    | 4.5   | 2016-11-21T00:00:00Z
        Photo Editor B | B      | 5000    | 4.5   | 2016-11-21T00:00:00Z
        Photo Editor C | C      | 5000    | 4.5   | 2016-11-21T00:00:00Z)"));
    EXPECT_EQ(result.score, 30);
    EXPECT_EQ(result.sampleCount, 3);
    EXPECT_EQ(result.adjustment, adjustedFrom(45));
}

const QString halfMatchingField = QStringLiteral(R"(
    name         | seller | ratings | stars | released             | times
    Photo Editor | One    | %1      | 4.5   | 2016-11-21T00:00:00Z | 1
    Photo Editor | Two    | 7386    | 4.5   | 2016-11-21T00:00:00Z | 1
    Photo Editor | Three  | 7386    | 4.5   | 2016-11-21T00:00:00Z | 1
    Photo Editor | Four   | 7386    | 4.5   | 2016-11-21T00:00:00Z | 1
    Photo Editor | Five   | 7386    | 4.5   | 2016-11-21T00:00:00Z | 1
    Nothing      | Six    | 7386    | 4.5   | 2016-11-21T00:00:00Z | 1
    Nothing      | Seven  | 7386    | 4.5   | 2016-11-21T00:00:00Z | 1
    Nothing      | Eight  | 7386    | 4.5   | 2016-11-21T00:00:00Z | 1
    Nothing      | Nine   | 7386    | 4.5   | 2016-11-21T00:00:00Z | 1
    Nothing      | Ten    | 7386    | 4.5   | 2016-11-21T00:00:00Z | 1)");

TEST(CompetitionModel, AWeakLeaderPullsTheScoreDownLessTheMoreTitlesMatch)
{
    const auto result = assess(u"photo editor", halfMatchingField.arg(500));
    EXPECT_EQ(result.adjustment, adjustedFrom(70));
    const double target = std::log10(501.0) * 35 / std::log10(1001.0) + 15;
    EXPECT_NEAR(target, 46.5, 0.05);
    EXPECT_EQ(result.score, std::int64_t(70 - (70 - (target + 0.5 * (70 - target)))));
    EXPECT_EQ(result.score, 58);
}

TEST(CompetitionModel, TheWeaknessOfALeaderFadesBetweenOneAndThreeThousandRatings)
{
    const auto result = assess(u"photo editor", halfMatchingField.arg(1732));
    EXPECT_EQ(result.adjustment, adjustedFrom(70));
    // √3 thousand ratings: half as weak as a leader of one thousand.
    const double target = std::log10(1733.0) * 35 / std::log10(1001.0) + 15;
    const double weakness = 1 - std::log10(1.732) / std::log10(3.0);
    EXPECT_NEAR(weakness, 0.5, 0.0001);
    EXPECT_EQ(result.score, std::int64_t(70 - 0.5 * (70 - target) * weakness));
}

TEST(CompetitionModel, ALeaderOfThreeThousandRatingsIsNotWeak)
{
    EXPECT_EQ(assess(u"photo editor", halfMatchingField.arg(3000)).adjustment, uncorrected);
    EXPECT_NE(assess(u"photo editor", halfMatchingField.arg(2999)).score,
              assess(u"photo editor", halfMatchingField.arg(3000)).score);
}

TEST(CompetitionModel, AFieldBelowTheTargetOfItsLeaderIsNotPulledUp)
{
    // Raw 22, below the target of 50 for a leader of 1000 ratings; all titles match.
    const auto result = assess(u"photo editor", QStringLiteral(R"(
        name         | seller | ratings | times
        Photo Editor | Acme   | 1000    | 1
        Photo Editor | Acme   | 0       | 11)"));
    EXPECT_EQ(result.adjustment, uncorrected);
    EXPECT_LT(result.score, 50);
}

/// A field in which nothing but the leader, if that, speaks to the keyword.
const QString unrelatedField = QStringLiteral(R"(
    name    | seller | ratings | stars | released             | times
    %2      | Acme   | %1      | 4.5   | 2016-11-21T00:00:00Z | 1
    Nothing | Other  | 900000  | 4.5   | 2016-11-21T00:00:00Z | 9)");

TEST(CompetitionModel, UnrelatedBackfillBehindASmallLeaderScalesTheScore)
{
    const auto result = assess(u"photo editor", unrelatedField.arg(200).arg(u"Nothing"));
    const double lr = std::log10(201.0);
    const double target = lr * 35 / std::log10(1001.0) + 15;
    const double raw = 61;
    EXPECT_EQ(result.adjustment, adjustedFrom(61));
    const double pulled = std::trunc(raw - (raw - target));
    const double kept = 0.6 + 0.4 * lr / std::log10(1001.0);
    EXPECT_EQ(result.score, std::int64_t(kept * pulled));
}

TEST(CompetitionModel, BackfillKeepsMoreOfTheScoreTheMoreTitlesMatch)
{
    const auto result = assess(u"photo editor", unrelatedField.arg(200).arg(u"Photo Editor"));
    const double lr = std::log10(201.0);
    const double target = lr * 35 / std::log10(1001.0) + 15;
    const double raw = 62;
    EXPECT_EQ(result.adjustment, adjustedFrom(62));
    const double pulled = std::trunc(raw - (raw - (target + 0.1 * (raw - target))));
    const double f = 2 * 0.1 + 0.6;
    EXPECT_EQ(result.score, std::int64_t((f + (1 - f) * lr / std::log10(1001.0)) * pulled));
}

TEST(CompetitionModel, BackfillNeedsALeaderBelowOneThousandRatings)
{
    // The weak-leader pull to its target of 50 remains.
    EXPECT_EQ(assess(u"photo editor", unrelatedField.arg(1000).arg(u"Nothing")).score, 50);
    EXPECT_LT(assess(u"photo editor", unrelatedField.arg(999).arg(u"Nothing")).score, 50);
}

TEST(CompetitionModel, ALeaderWithoutRatingsPullsToFifteenAndBackfillKeepsSixTenths)
{
    EXPECT_EQ(assess(u"photo editor", unrelatedField.arg(0).arg(u"Nothing")).score, 9);
}

TEST(CompetitionModel, TheCorrectionsNeverGoBelowOne)
{
    // Momentum 5 and age 1.5 points.
    const auto unknown = assess(u"photo editor", QStringLiteral("name | times\nNothing | 2"));
    EXPECT_EQ(unknown.score, 3);
    EXPECT_EQ(unknown.adjustment, adjustedFrom(6));
    const auto fresh = assess(u"photo editor", QStringLiteral(R"(
        name    | released             | times
        Nothing | 2026-11-21T12:00:00Z | 2)"));
    EXPECT_EQ(fresh.score, 1);
    EXPECT_EQ(fresh.adjustment, uncorrected);
}

TEST(CompetitionModel, ASearchedBrandWithAStrongLeaderIsNotCorrected)
{
    const QString field = QStringLiteral(R"(
        name    | seller   | ratings | stars | released             | times
        Nothing | Acme Inc | %1      | 4.5   | 2016-11-21T00:00:00Z | 1
        Nothing | Other    | %2      | 4.5   | 2016-11-21T00:00:00Z | 9)");
    EXPECT_EQ(assess(u"acme", field.arg(5000).arg(9000)).adjustment, uncorrected);
    EXPECT_EQ(assess(u"ACME", field.arg(1000).arg(900'000)).adjustment, uncorrected);
    // The leader is weak, but those behind it are strong.
    EXPECT_EQ(assess(u"acme", field.arg(999).arg(10'000)).adjustment, uncorrected);
    EXPECT_NE(assess(u"acme", field.arg(999).arg(9999)).adjustment, uncorrected);
    // Every token of the keyword must be the publisher's.
    EXPECT_NE(assess(u"acme photo", field.arg(1000).arg(900'000)).adjustment, uncorrected);
    EXPECT_NE(assess(u"-", field.arg(1000).arg(900'000)).adjustment, uncorrected);
}

TEST(CompetitionModel, ABrandIsStrongFromOneThousandRatingsOn)
{
    const QString brand = QString(halfMatchingField).replace(u"One"_qs, u"Photo Editor Inc"_qs);
    EXPECT_EQ(assess(u"photo editor", brand.arg(1000)).adjustment, uncorrected);
    EXPECT_EQ(assess(u"photo editor", brand.arg(999)).adjustment, adjustedFrom(70));
    EXPECT_EQ(assess(u"photo editor", halfMatchingField.arg(1000)).adjustment, adjustedFrom(70));
}

TEST(CompetitionModel, OnlyTheFirstFourAppsOfOtherSellersSpeakForABrand)
{
    const QString field = QStringLiteral(R"(
        name    | seller | ratings | stars | released             | times
        Nothing | Acme   | 10      | 4.5   | 2016-11-21T00:00:00Z | 1
        Nothing | ACME   | 1       | 4.5   | 2016-11-21T00:00:00Z | 6
        Nothing | Other  | 20000   | 4.5   | 2016-11-21T00:00:00Z | 2
        Nothing | -      | %1      | 4.5   | 2016-11-21T00:00:00Z | 2
        Nothing | Other  | 1       | 4.5   | 2016-11-21T00:00:00Z | 9)");
    // Median of 20000, 20000 and twice the count of the apps without a seller.
    EXPECT_EQ(assess(u"acme", field.arg(0)).adjustment, uncorrected);
    EXPECT_NE(assess(u"acme", QString(field).replace(u"20000"_qs, u"19999"_qs).arg(0)).adjustment,
              uncorrected);
}

TEST(CompetitionModel, ABrandWithoutOthersNeedsAStrongLeader)
{
    const QString field =
        QStringLiteral("name | seller | ratings | times\nNothing | Acme | %1 | 12");
    EXPECT_EQ(assess(u"acme", field.arg(1000)).adjustment, uncorrected);
    EXPECT_NE(assess(u"acme", field.arg(200)).adjustment, uncorrected);
}

TEST(CompetitionModel, AnEmptyKeywordIsNotCorrectedAWhiteSpaceOneIs)
{
    EXPECT_EQ(assess(u"", unrelatedField.arg(10).arg(u"Nothing")).adjustment, uncorrected);
    EXPECT_NE(assess(u" ", unrelatedField.arg(10).arg(u"Nothing")).adjustment, uncorrected);
}

TEST(CompetitionModel, ExactlyOneResultIsOnlyCapped)
{
    const auto result = assess(u"photo editor", QStringLiteral(R"(
        name    | seller | ratings | stars | released
        Nothing | Acme   | 5       | 4.5   | 2016-11-21T00:00:00Z)"));
    EXPECT_EQ(result.score, 3);
    EXPECT_EQ(result.adjustment, uncorrected);
    const auto large = assess(u"photo editor", QStringLiteral(R"(
        name         | seller | ratings | stars | released
        Photo Editor | Acme   | 500     | 4.5   | 2016-11-21T00:00:00Z)"));
    EXPECT_EQ(large.score, 10);
    EXPECT_EQ(large.adjustment, adjustedFrom(24));
}

TEST(CompetitionModel, WithoutReleaseDatesMomentumAndAgeStandAtTheirMidpoint)
{
    const auto related = assess(u"photo editor", QStringLiteral(R"(
        name         | ratings | times
        Photo Editor | 10000   | 10)"));
    EXPECT_EQ(factor(related, "Rating momentum"), 50);
    EXPECT_EQ(factor(related, "App age"), 50);
    const auto unrelated = assess(u"photo editor", QStringLiteral(R"(
        name    | ratings | released   | times
        Nothing | 10000   | 2016-11-21 | 10)"));
    EXPECT_EQ(factor(unrelated, "Rating momentum"), 50);
    EXPECT_EQ(factor(unrelated, "App age"), 15);
}

TEST(CompetitionModel, AppsWithoutADateAreLeftOutOfMomentumAndAge)
{
    const QString table = QStringLiteral(R"(
        name         | ratings | released                 | times
        Photo Editor | 800     | 2022-11-21T12:00:00.000Z | 3
        Photo Editor | 900000  | -                        | 9)");
    // 200 ratings a year; four years.
    EXPECT_EQ(factorOf("Rating momentum", table), 30);
    EXPECT_EQ(factorOf("App age", table), 60);
}

TEST(CompetitionModel, TheMedianOfAnEvenCountIsTheMeanOfTheMiddle)
{
    EXPECT_EQ(factorOf("Rating volume", QStringLiteral(R"(
        name         | ratings
        Photo Editor | 9000000
        Photo Editor | 3000
        Photo Editor | -5
        Photo Editor | 1000)")),
              50);
}

TEST(CompetitionModel, TheLeadingHalfCountsDoubleInDominance)
{
    const QString table = QStringLiteral(R"(
        ratings  | times
        %1       | 5
        %2       | 5)");
    // K = 5: (5 × 2 × d + 5 × d') ÷ 15.
    EXPECT_DOUBLE_EQ(factorOf("Dominant apps", table.arg(10'000'000).arg(1)), 100 * 10.0 / 15);
    EXPECT_DOUBLE_EQ(factorOf("Dominant apps", table.arg(0).arg(90'000'000)), 100 * 5.0 / 15);
}

TEST(CompetitionModel, ASampleOfTwoHasOneLeadingApp)
{
    // Coverage 0.2; K = floor(3 ÷ 2) = 1.
    EXPECT_DOUBLE_EQ(factorOf("Dominant apps", QStringLiteral("ratings\n10000000\n0")),
                     0.2 * 100 * 2 / 3);
    EXPECT_DOUBLE_EQ(factorOf("Dominant apps", QStringLiteral("ratings\n10000000")),
                     0.1 * 100 * 2 / 2);
}

TEST(CompetitionModel, StarsAreWeightedByRatings)
{
    const QString table = QStringLiteral(R"(
        name         | ratings | stars | times
        Photo Editor | 300     | 4.5   | 1
        Photo Editor | 100     | 2.5   | 1
        Photo Editor | 90000   | -     | 8)");
    EXPECT_EQ(factorOf("Rating quality", table), 50);
}

TEST(CompetitionModel, StarsWithoutRatingsAreWorthNothing)
{
    EXPECT_EQ(factorOf("Rating quality", QStringLiteral(R"(
        name         | ratings | stars | times
        Photo Editor | -       | 5     | 10)")),
              0);
}

TEST(CompetitionModel, PublishersAreComparedTrimmedAndIgnoringCase)
{
    const QString table = QStringLiteral(R"(
        name         | seller | times
        Photo Editor | Acme   | 3
        Photo Editor | ACME   | 3
        Photo Editor | Ümit   | 1
        Photo Editor | ümit   | 1
        Photo Editor |        | 1
        Photo Editor | -      | 1)");
    EXPECT_EQ(factorOf("Publisher diversity", table), 20);
    auto apps = appTable(table);
    apps[0].sellerName = QStringLiteral(" Acme\u00A0");
    EXPECT_EQ(factor(assessCompetition({u"photo editor", apps}, testNow()), "Publisher diversity"),
              20);
}

TEST(CompetitionModel, TitleRelevanceIsTheShareOfTitlesThatTargetTheKeyword)
{
    EXPECT_EQ(factorOf("Title relevance", QStringLiteral(R"(
        name             | times
        Photo Editor     | 2
        Editor for Photo | 1
        Photo Lab        | 1
        Nothing          | 1)")),
              3.0 / 5 * 100 * 0.5);
}

TEST(CompetitionModel, TheGenreIsFinanceEvidence)
{
    const auto result = assess(u"options", QStringLiteral(R"(
        name            | genre   | times
        Options Tracker | Finance | 5
        Options Tracker | Games   | 5)"));
    EXPECT_EQ(factor(result, "Title relevance"), 50);
}

TEST(CompetitionModel, SamplesTheFirstTwentyFiveResults)
{
    auto apps = appTable(halfMatchingField.arg(500));
    apps += appTable(QStringLiteral("name | ratings | times\nNothing | 5 | 15"));
    const auto before = assessCompetition({u"photo editor", apps}, testNow());
    EXPECT_EQ(before.sampleCount, 25);
    apps += appTable(QStringLiteral("name | ratings | times\nPhoto Editor | 90000000 | 75"));
    EXPECT_EQ(assessCompetition({u"photo editor", apps}, testNow()), before);
}

} // namespace
} // namespace veltrix
