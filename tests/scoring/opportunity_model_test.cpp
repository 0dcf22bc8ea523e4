// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/opportunity_model.h"

#include "scoring/app_table.h"
#include "support/json_printers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>

namespace veltrix
{
namespace
{

constexpr double baselineStrength = 14.285714285714286;
constexpr std::int64_t ownId = 77;

PopularityMeasurement popularity(std::int64_t score)
{
    return {.score = score,
            .source = popularity_source::quorvinCalibratedEstimate,
            .modelVersion = {},
            .sampledApps = 25,
            .ratedRelevantApps = 5,
            .weightedRatingSignal = 1};
}

/// A question about the app with the id 77: popularity 50 in the United States, competition 20.
struct Question {
    QString keyword = QStringLiteral("photo editor");
    QString storefront = QStringLiteral("US");
    std::optional<PopularityMeasurement> popularity = veltrix::popularity(50);
    std::int64_t competition = 20;
    std::int64_t sampleCount = 25;
    QList<ITunesAppResult> results;
    std::optional<std::int64_t> position;

    [[nodiscard]] std::optional<OpportunityAssessment> answer() const
    {
        CompetitionAssessment assessment;
        assessment.score = competition;
        assessment.sampleCount = sampleCount;
        return assessOpportunity({keyword, results}, {.storefront = storefront,
                                                      .popularity = popularity,
                                                      .competition = assessment,
                                                      .trackId = ownId,
                                                      .position = position,
                                                      .now = testNow()});
    }

    [[nodiscard]] OpportunityAssessment answered() const
    {
        const auto assessment = answer();
        EXPECT_TRUE(assessment.has_value());
        return assessment.value_or(OpportunityAssessment{});
    }
};

/// The app's own entry, with that name and nothing else.
QList<ITunesAppResult> ownEntry(const QString &name)
{
    return appTable(QStringLiteral("id | name\n77 | ") + name);
}

/// A question about an app that ranks there, its title being `name`.
Question rankedAt(std::int64_t position, const QString &name)
{
    Question question;
    question.results = ownEntry(name);
    question.position = position;
    return question;
}

std::int64_t scoreOfInstalls(double installs)
{
    return std::int64_t(std::nearbyint(std::log10(installs) * 20 + 50));
}

/// Score of popularity 50 in the United States at a rank.
std::int64_t scoreAtRank(double rank)
{
    return scoreOfInstalls(280 * tapThroughShare(rank) * 0.05);
}

TEST(OpportunityModel, FindsTheStorefrontInAnyCase)
{
    Question question;
    question.storefront = QStringLiteral("us");
    EXPECT_EQ(question.answer(), Question().answer());
    EXPECT_TRUE(question.answer().has_value());
    question.storefront = QStringLiteral("XX");
    EXPECT_EQ(question.answer(), std::nullopt);
}

TEST(OpportunityModel, NeedsSearchPopularityFromFiveToOneHundred)
{
    const auto answers = [](std::optional<PopularityMeasurement> measurement) {
        Question question;
        question.popularity = std::move(measurement);
        return question.answer().has_value();
    };
    EXPECT_FALSE(answers(std::nullopt));
    EXPECT_FALSE(answers(popularity(4)));
    EXPECT_TRUE(answers(popularity(5)));
    EXPECT_TRUE(answers(popularity(100)));
    EXPECT_FALSE(answers(popularity(101)));
    const auto of = [](const char *source) {
        PopularityMeasurement measurement = popularity(50);
        measurement.source = QString::fromLatin1(source);
        return measurement;
    };
    EXPECT_TRUE(answers(of("apple_search_popularity")));
    EXPECT_TRUE(answers(of("calibrated_search_demand")));
    EXPECT_TRUE(answers(of("quorvin_calibrated_estimate")));
    EXPECT_FALSE(answers(of("apple_autocomplete_estimate")));
    EXPECT_FALSE(answers(of("")));
}

TEST(OpportunityModel, NeedsASampledField)
{
    Question question;
    question.sampleCount = 0;
    EXPECT_EQ(question.answer(), std::nullopt);
    question.sampleCount = 1;
    EXPECT_TRUE(question.answer().has_value());
}

TEST(OpportunityModel, OfPopularityFiftyAtRankOneIsAGoodTarget)
{
    // 280 searches × 0.3 × 0.05 = 4.2 installs a day.
    const auto result = rankedAt(1, QStringLiteral("Photo Editor")).answered();
    EXPECT_EQ(result.score, 62);
    EXPECT_EQ(result.score, scoreOfInstalls(4.2));
    EXPECT_EQ(result.label, QStringLiteral("Good Target"));
}

TEST(OpportunityModel, InATinyStorefrontIsOfLowVolumeWithAScoreOfTheModelledRank)
{
    Question question = rankedAt(1, QStringLiteral("Photo Editor"));
    question.storefront = QStringLiteral("AI");
    question.popularity = popularity(20);
    // 0.0001 × 35 × 0.3 × 0.05 = 0.0000525 installs a day.
    EXPECT_EQ(question.answered().label, QStringLiteral("Low Volume"));
    EXPECT_EQ(question.answered().score, 0);
    // Of low volume, and yet with a score above zero: 0.55 installs a day.
    question.storefront = QStringLiteral("US");
    EXPECT_EQ(question.answered().label, QStringLiteral("Low Volume"));
    EXPECT_EQ(question.answered().score, scoreOfInstalls(35 * 0.3 * 0.05));
}

TEST(OpportunityModel, RoundsInstallsAtTheTopTwiceWithTiesToEven)
{
    const auto label = [](const QString &storefront, std::int64_t score) {
        Question question;
        question.storefront = storefront;
        question.popularity = popularity(score);
        return question.answered().label;
    };
    // Both are 0.945 installs a day: 94.5 hundredths round to 94, and 9.4 tenths to 9.
    EXPECT_EQ(label(QStringLiteral("DE"), 49), QStringLiteral("Low Volume"));
    EXPECT_EQ(label(QStringLiteral("CN"), 45), QStringLiteral("Low Volume"));
    // 65 × 0.3 × 0.05 = 0.975: 0.98 and then 1.0, which is not below 1.
    EXPECT_NE(label(QStringLiteral("US"), 39), QStringLiteral("Low Volume"));
    // 60.26… × 0.3 × 0.05 = 0.904: 0.9.
    EXPECT_EQ(label(QStringLiteral("US"), 36), QStringLiteral("Low Volume"));
}

TEST(OpportunityModel, AnAppThatIsNotInTheResultsCountsAsNew)
{
    const auto result = Question().answered();
    EXPECT_EQ(result.appStrength, baselineStrength);
    EXPECT_TRUE(result.usedNewAppBaseline);
    EXPECT_TRUE(result.explanation.contains(
        QStringLiteral(" New-app baseline: storefront metadata for your app was unavailable. ")));
    EXPECT_EQ(result.score, scoreAtRank(expectedRank(20 - baselineStrength)));
}

TEST(OpportunityModel, UsesTheFirstEntryWithTheAppsId)
{
    Question question;
    question.results = appTable(QStringLiteral(R"(
        id | ratings
        5  | 900000
        77 | 10000
        77 | 5)"));
    EXPECT_FALSE(question.answered().usedNewAppBaseline);
    EXPECT_EQ(question.answered().appStrength, (0.3 * 78 + 10) / 0.7);
}

TEST(OpportunityModel, UsesTheBetterOfTheExpectedAndTheCurrentRank)
{
    // The gap of −7.29 lets rank 7.6 be expected.
    Question question = rankedAt(3, QStringLiteral("Something else"));
    question.competition = 7;
    EXPECT_NEAR(expectedRank(7 - baselineStrength), 7.62, 0.02);
    EXPECT_EQ(question.answered().score, scoreAtRank(3));
    question.position = 12;
    EXPECT_EQ(question.answered().score, scoreAtRank(expectedRank(7 - baselineStrength)));
    question.position = 0;
    EXPECT_EQ(question.answered().score, scoreAtRank(expectedRank(7 - baselineStrength)));
}

TEST(OpportunityModel, UsesTheCurrentRankOfAnAppWhoseTitleTargetsTheKeyword)
{
    Question question = rankedAt(12, QStringLiteral("Photo Editor Pro"));
    question.results.front().userRatingCount = 1'000'000;
    // Strength 57.14: the gap of −17.14 lets rank 5.3 be expected.
    question.competition = 40;
    EXPECT_NEAR(expectedRank(40 - question.answered().appStrength), 5.28, 0.1);
    EXPECT_EQ(question.answered().score, scoreAtRank(12));
    question.keyword = QStringLiteral("\u00A0PRO photo \n");
    EXPECT_EQ(question.answered().score, scoreAtRank(12));
    question.keyword = QStringLiteral("photo lab");
    EXPECT_EQ(question.answered().score,
              scoreAtRank(expectedRank(40 - question.answered().appStrength)));
}

TEST(OpportunityModel, TheOwnTitleAloneMustShowTheFinanceEvidence)
{
    Question question = rankedAt(12, QStringLiteral("Options Tracker"));
    question.keyword = QStringLiteral("options");
    question.results.front().primaryGenreName = QStringLiteral("Finance");
    question.competition = 1;
    const double expected = expectedRank(1 - baselineStrength);
    EXPECT_LT(expected, 12);
    EXPECT_EQ(question.answered().score, scoreAtRank(expected));
    question.results.front().trackName = QStringLiteral("Options Trading");
    EXPECT_EQ(question.answered().score, scoreAtRank(12));
}

TEST(OpportunityModel, NeitherSubtitleNorMissingTitleTargetTheKeyword)
{
    Question question = rankedAt(12, QStringLiteral("-"));
    question.results.front().subtitle = QStringLiteral("Photo Editor");
    question.competition = 1;
    EXPECT_EQ(question.answered().score, scoreAtRank(expectedRank(1 - baselineStrength)));
}

struct LabelCase {
    std::int64_t popularity;
    std::int64_t position;
    const char *label;
    const char *sentence;
};

TEST(OpportunityModel, LabelsFollowTheScore)
{
    const char *const worthwhile =
        "Demand and your app’s competitive strength support targeting this keyword.";
    const LabelCase cases[] = {
        {100, 1, "Sweet Spot", worthwhile},
        {55, 1, "Good Target", worthwhile},
        {50, 4, "Good Target", worthwhile},
        {50, 6, "Supporting", "A supporting keyword with modest modeled opportunity."},
        {50, 20, "Worth Climbing",
         "Demand exists, but competition limits the modeled opportunity for your app today."},
        {20, 1, "Low Volume", "The model estimates little demand even at #1."},
    };
    for (const LabelCase &expected : cases) {
        Question question = rankedAt(expected.position, QStringLiteral("Photo Editor"));
        question.popularity = popularity(expected.popularity);
        const auto result = question.answered();
        EXPECT_EQ(result.label, QString::fromUtf8(expected.label));
        EXPECT_TRUE(result.explanation.startsWith(QString::fromUtf8(expected.sentence) + u' '))
            << result.explanation.toStdString();
    }
}

TEST(OpportunityModel, TheBordersOfTheLabelsAreThirtyFiftyAndSeventy)
{
    std::map<QString, std::set<std::int64_t>> scores;
    for (std::int64_t position = 1; position <= 60; ++position) {
        for (std::int64_t score = 5; score <= 100; ++score) {
            Question question = rankedAt(position, QStringLiteral("Photo Editor"));
            question.popularity = popularity(score);
            const auto result = question.answered();
            scores[result.label].insert(result.score);
        }
    }
    EXPECT_EQ(*scores[QStringLiteral("Sweet Spot")].begin(), 70);
    EXPECT_EQ(*scores[QStringLiteral("Good Target")].rbegin(), 69);
    EXPECT_EQ(*scores[QStringLiteral("Good Target")].begin(), 50);
    EXPECT_EQ(*scores[QStringLiteral("Supporting")].rbegin(), 49);
    EXPECT_EQ(*scores[QStringLiteral("Supporting")].begin(), 30);
    EXPECT_EQ(*scores[QStringLiteral("Worth Climbing")].rbegin(), 29);
}

TEST(OpportunityModel, ExplainsItselfWithAllItsNumbers)
{
    Question question = rankedAt(1, QStringLiteral("Photo Editor"));
    question.competition = 41;
    EXPECT_EQ(question.answered().explanation,
              QStringLiteral(
                  "Demand and your app’s competitive strength support targeting this keyword. "
                  "Opportunity 62/100; popularity 50, difficulty 41. Uses your app’s storefront "
                  "ratings, stars and age. Assumes title targeting, storefront market size and a "
                  "5% install conversion. Estimates—not promised rankings or downloads."));
}

TEST(OpportunityModel, DemandFollowsThePopularityAndTheMarket)
{
    Question question = rankedAt(1, QStringLiteral("Photo Editor"));
    question.storefront = QStringLiteral("GB");
    question.popularity = popularity(70);
    EXPECT_EQ(question.answered().score, scoreOfInstalls(4600 * 0.3 * 0.3 * 0.05));
    // Two fifths of the way from 70 to 140 searches a day.
    question.storefront = QStringLiteral("US");
    question.popularity = popularity(42);
    EXPECT_EQ(question.answered().score, scoreOfInstalls(98 * 0.3 * 0.05));
}

double strengthOf(const QString &columns, const QString &cells)
{
    const auto apps = appTable(columns + u'\n' + cells);
    return appStrength(&apps.front(), testNow());
}

TEST(AppStrength, OfAnUnknownAppIsTheBaseline)
{
    EXPECT_EQ(appStrength(nullptr, testNow()), baselineStrength);
    EXPECT_EQ(strengthOf(QStringLiteral("name"), QStringLiteral("Photo")), baselineStrength);
}

TEST(AppStrength, OfAPerfectAppIsOneHundred)
{
    EXPECT_DOUBLE_EQ(strengthOf(QStringLiteral("ratings | stars | released"),
                                QStringLiteral("90000000 | 5 | 2010-01-01T00:00:00Z")),
                     100);
}

TEST(AppStrength, AddsUpRatingsMomentumStarsAndAge)
{
    // Four years: 800 ratings are 200 a year.
    EXPECT_DOUBLE_EQ(
        strengthOf(QStringLiteral("ratings | stars | released"),
                   QStringLiteral("800 | 4 | 2022-11-21T12:00:00.000Z")),
        (0.3 * (30 + 20 * std::log(1.6) / std::log(4.0)) + 0.1 * 30 + 0.1 * 50 + 0.1 * 60 + 10) /
            0.7);
}

TEST(AppStrength, WithoutAgeHasNeitherMomentumNorAge)
{
    EXPECT_DOUBLE_EQ(strengthOf(QStringLiteral("ratings | stars"), QStringLiteral("10000 | 4")),
                     (0.3 * 78 + 0.1 * 50 + 10) / 0.7);
}

TEST(AppStrength, StarsWithoutRatingsDoNotCount)
{
    EXPECT_EQ(strengthOf(QStringLiteral("ratings | stars"), QStringLiteral("0 | 5")),
              baselineStrength);
    EXPECT_EQ(strengthOf(QStringLiteral("ratings | stars"), QStringLiteral("-3 | 5")),
              baselineStrength);
}

TEST(ExpectedRank, RunsFromOneAndAHalfToTwoHundredAndFifty)
{
    EXPECT_EQ(expectedRank(-37.3), 1.56);
    EXPECT_EQ(expectedRank(-90), 1.56);
    EXPECT_DOUBLE_EQ(expectedRank(59.0), 47.72);
    EXPECT_EQ(expectedRank(100), 250);
    EXPECT_NEAR(47.72 * std::exp(41 * 0.06234701143385762), 615, 0.1);
    EXPECT_DOUBLE_EQ(expectedRank(69), 47.72 * std::exp(10 * 0.06234701143385762));
}

TEST(ExpectedRank, InterpolatesGeometrically)
{
    EXPECT_DOUBLE_EQ(expectedRank(-7.3), 7.62);
    EXPECT_DOUBLE_EQ(expectedRank(-17.4), 5.28);
    EXPECT_DOUBLE_EQ(expectedRank((15.0 + 22.5) / 2), std::sqrt(16.7 * 17.23));
}

TEST(ExpectedRank, NeverImprovesAsTheGapGrows)
{
    double before = 0;
    for (int tenths = -500; tenths <= 1200; ++tenths) {
        const double rank = expectedRank(tenths / 10.0);
        EXPECT_GE(rank, before) << tenths;
        before = rank;
    }
}

TEST(TapThroughShare, IsTheTableAtWholeRanks)
{
    const double shares[] = {0.3,    0.18,   0.12,   0.085,  0.06,  0.045,  0.033,
                             0.025,  0.019,  0.013,  0.009,  0.007, 0.0055, 0.0042,
                             0.0033, 0.0025, 0.0019, 0.0014, 0.001, 0.0007};
    for (int rank = 1; rank <= 20; ++rank)
        EXPECT_DOUBLE_EQ(tapThroughShare(rank), shares[rank - 1]) << rank;
    EXPECT_EQ(tapThroughShare(0.5), 0.3);
}

TEST(TapThroughShare, InterpolatesGeometricallyAndFallsByAPowerBeyondTwenty)
{
    EXPECT_DOUBLE_EQ(tapThroughShare(1.5), std::sqrt(0.3 * 0.18));
    EXPECT_DOUBLE_EQ(tapThroughShare(25), 0.0007 * std::pow(0.8, 4.215012890970851));
    EXPECT_NEAR(tapThroughShare(25), 0.000273, 0.0000005);
}

} // namespace
} // namespace veltrix
