// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/quorvin_popularity_provider.h"

#include "scoring/app_table.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"

#include <gtest/gtest.h>

#include <cmath>

namespace veltrix
{
namespace
{

const QString estimate =
    QStringLiteral("Estimated popularity using Quorvin v2. Upstream calibration used US data; not "
                   "official Apple popularity. Accuracy has not been independently validated here");
const QString minimum = QStringLiteral(
    "Estimated popularity at the minimum: no matching title evidence in sampled results. This does "
    "not establish zero search demand or official Apple popularity.");

PopularityAssessment assess(QStringView keyword, const QString &table, QStringView country = u"US")
{
    return estimatePopularity({keyword, appTable(table)}, country, quorvinPopularityModelVersion);
}

PopularityMeasurement measure(QStringView keyword, const QString &table)
{
    return assess(keyword, table).measurement.value_or(PopularityMeasurement{});
}

TEST(PopularityModel, OfNoResultsHasNoMeasurement)
{
    const auto result = estimatePopularity({u"photo", {}}, u"US", quorvinPopularityModelVersion);
    EXPECT_EQ(result.measurement, std::nullopt);
    EXPECT_EQ(result.evidence, std::nullopt);
    EXPECT_EQ(result.message,
              QStringLiteral("No search results available for a popularity estimate."));
}

TEST(PopularityModel, WithoutTitleEvidenceIsTheMinimum)
{
    const auto result =
        assess(u"photo", QStringLiteral("name | ratings | times\nChess | 900000 | 12"));
    EXPECT_EQ(result.measurement,
              (PopularityMeasurement{.score = 5,
                                     .source = QStringLiteral("quorvin_calibrated_estimate"),
                                     .modelVersion = QStringLiteral("quorvin-v2-relevance-3"),
                                     .sampledApps = 12,
                                     .ratedRelevantApps = 0,
                                     .weightedRatingSignal = 0}));
    EXPECT_EQ(result.message, minimum);
    EXPECT_EQ(assess(u"!", QStringLiteral("name\nChess"), u"GB").message, minimum);
}

TEST(PopularityModel, AFinanceKeywordIsNotCreditedToOtherTitles)
{
    const QString table = QStringLiteral("name | genre | ratings\nOptions Tracker | %1 | 5000");
    EXPECT_EQ(assess(u"options", table.arg(u"Utilities")).message, minimum);
    EXPECT_EQ(assess(u"options", table.arg(u"Finance")).message, estimate + u'.');
}

TEST(PopularityModel, OfOneMatchingAppWithoutRatings)
{
    // 3.6672 + 1.0404 × 2.5 + 0.6129 × 20 × 0.1
    const auto result = measure(u"photo", QStringLiteral("name\nPhoto"));
    EXPECT_EQ(result.score, 7);
    EXPECT_EQ(result.sampledApps, 1);
    EXPECT_EQ(result.ratedRelevantApps, 0);
    EXPECT_EQ(result.weightedRatingSignal, 0);
}

TEST(PopularityModel, OfAFieldOfTenEqualApps)
{
    // R = 10, factor and coverage 1, every signal 10,000:
    // 3.6672 + 1.0404 × 25 − 1.9714 × 17 + 0.6129 × 20 + 2.9001 × 8
    //   + 2.1709 × log10(10001) + 8.1524 × log10(10001) = 72.916
    const auto result =
        measure(u"photo", QStringLiteral("name | ratings | times\nPhoto | 10000 | 10"));
    EXPECT_EQ(result.score, 73);
    EXPECT_EQ(result.ratedRelevantApps, 10);
    EXPECT_EQ(result.weightedRatingSignal, 10'000);
}

TEST(PopularityModel, EachWordMoreLowersTheEstimate)
{
    const QString table = QStringLiteral("name | ratings | times\na-b-c-d-e-f-g | 10000 | 10");
    // Hyphens join words here although they part tokens, so that the relevance stays the same.
    const double oneWord = 72.9158 - 0.6129 * 20;
    const double adjustments[] = {0, -3, -8, -15, -22, -28, -28};
    const QStringView keywords[] = {u"a-b-c-d-e-f-g", u"a b-c-d-e-f-g", u"a b c-d-e-f-g",
                                    u"a b c d-e-f-g", u"a b c d e-f-g", u"a b c d e f-g",
                                    u"a b c d e f g"};
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(measure(keywords[i], table).score,
                  std::int64_t(std::nearbyint(oneWord + 0.8644 * adjustments[i])))
            << keywords[i].toString().toStdString();
}

TEST(PopularityModel, TheLeadingHalfOfTheSampleIsItsRatingSignal)
{
    EXPECT_EQ(measure(u"photo", QStringLiteral(R"(
        name  | ratings
        Photo | 100
        Photo | 500
        Photo | 9
        Chess | 900000
        Photo | 7)"))
                  .weightedRatingSignal,
              300);
}

TEST(PopularityModel, BelowFourAppsTheFirstAloneIsTheRatingSignal)
{
    EXPECT_EQ(
        measure(u"photo", QStringLiteral("name | ratings\nPhoto | 100\nPhoto | 500\nPhoto | 9"))
            .weightedRatingSignal,
        100);
}

TEST(PopularityModel, SignalsAreWeightedByRelevance)
{
    const auto result = measure(u"photo editor", QStringLiteral(R"(
        name             | ratings
        Photo Lab        | 1000
        Photo Editor     | 1000
        Chess            | 1000
        Editor for Photo | -50
        Photo Editor     | -)"));
    EXPECT_EQ(result.weightedRatingSignal, (250.0 + 1000.0) / 2);
    EXPECT_EQ(result.ratedRelevantApps, 2);
    EXPECT_EQ(result.sampledApps, 5);
}

TEST(PopularityModel, AnIrrelevantHalfOfTheSampleLowersTheEstimate)
{
    // R = 5, factor and coverage 1, signals 10,000 and 0 in turn: T = 6000, median 5000, top
    // 10,000; c1 = c2 = 0.5.
    const double curveA = 10 + 7 * std::log(6.0) / std::log(10.0);
    const double curveB = 5 + 3 * std::log(5.0) / std::log(10.0);
    const double raw = 3.6672 + 1.0404 * 12.5 - 1.9714 * curveA + 0.6129 * 20 + 2.9001 * curveB -
                       0.338 * 15 + 2.1709 * std::log10(10'001.0) + 8.1524 * std::log10(6001.0);
    QString table = QStringLiteral("name | ratings\n");
    for (int i = 0; i < 5; ++i)
        table += QStringLiteral("Photo | 10000\nChess | 10000\n");
    const auto result = measure(u"photo", table);
    EXPECT_EQ(result.weightedRatingSignal, 6000);
    EXPECT_EQ(result.score, std::int64_t(std::nearbyint(raw)));
}

TEST(PopularityModel, NeverLeavesFiveToOneHundred)
{
    EXPECT_EQ(measure(u"photo",
                      QStringLiteral("name | ratings | times\nPhoto | 9000000000000000000 | 25"))
                  .score,
              100);
    EXPECT_EQ(measure(u"a b c d e f photo", QStringLiteral("name | times\nPhoto | 25")).score, 5);
}

TEST(PopularityModel, SamplesTheFirstTwentyFiveResults)
{
    auto apps = appTable(QStringLiteral("name | ratings | times\nPhoto | 500 | 25"));
    const auto before = estimatePopularity({u"photo", apps}, u"US", quorvinPopularityModelVersion);
    EXPECT_EQ(before.measurement->sampledApps, 25);
    apps += appTable(QStringLiteral("name | ratings | times\nPhoto | 9000000 | 75"));
    EXPECT_EQ(estimatePopularity({u"photo", apps}, u"US", quorvinPopularityModelVersion), before);
}

TEST(PopularityModel, SaysWhenTheStorefrontIsOutsideTheCalibration)
{
    const QString table = QStringLiteral("name\nPhoto");
    EXPECT_EQ(assess(u"photo", table, u"us").message, estimate + u'.');
    EXPECT_EQ(assess(u"photo", table, u"US").message, estimate + u'.');
    EXPECT_EQ(assess(u"photo", table, u"gb").message,
              estimate +
                  QStringLiteral("; this storefront is outside the reported US calibration."));
}

Task<PopularityAssessment> assessBy(QuorvinPopularityProvider &provider,
                                    const QList<ITunesAppResult> &apps, std::stop_token stop = {})
{
    return provider.assess(std::make_shared<KeywordSurvey>(u"photo", apps), QStringLiteral("GB"),
                           std::move(stop));
}

TEST(QuorvinPopularityProvider, AnswersWithTheEstimateUnderItsVersion)
{
    QuorvinPopularityProvider provider;
    EXPECT_EQ(provider.modelVersion(), QStringLiteral("quorvin-v2-relevance-3"));
    const auto apps = appTable(QStringLiteral("name | ratings\nPhoto | 500"));
    const Outcome outcome(assessBy(provider, apps));
    EXPECT_EQ(outcome.value(),
              estimatePopularity({u"photo", apps}, u"GB", quorvinPopularityModelVersion));
    EXPECT_EQ(outcome.value().measurement->modelVersion, QStringLiteral("quorvin-v2-relevance-3"));
}

TEST(QuorvinPopularityProvider, MayCarryAnotherVersion)
{
    QuorvinPopularityProvider provider(QStringLiteral("trial-1"));
    EXPECT_EQ(provider.modelVersion(), QStringLiteral("trial-1"));
    const Outcome outcome(assessBy(provider, appTable(QStringLiteral("name\nPhoto"))));
    EXPECT_EQ(outcome.value().measurement->modelVersion, QStringLiteral("trial-1"));
}

TEST(QuorvinPopularityProvider, IsCancelledByAStop)
{
    std::stop_source stop;
    stop.request_stop();
    QuorvinPopularityProvider provider;
    const Outcome outcome(assessBy(provider, {}, stop.get_token()));
    EXPECT_TRUE(outcome.isCancelled());
}

} // namespace
} // namespace veltrix
