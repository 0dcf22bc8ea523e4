// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/keyword_pipeline.h"

#include "effects/one_shot.h"
#include "effects/task_scope.h"
#include "scoring/app_table.h"
#include "scoring/competition_model.h"
#include "scoring/difficulty_model.h"
#include "scoring/opportunity_model.h"
#include "scoring/quorvin_popularity_provider.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"
#include "support/virtual_clock.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

constexpr std::int64_t ownId = 77;

/// Answers searches when the test says so, and notes what was asked.
class ScriptedClient final : public ITunesClientProtocol
{
public:
    Task<QList<ITunesAppResult>> search(QString term, QString country, std::int64_t limit,
                                        std::stop_token stop) override
    {
        log.append(QStringLiteral("search %1 %2 %3").arg(term, country).arg(limit));
        co_return co_await answer.wait(stop);
    }

    Task<std::optional<ITunesAppResult>> lookup(std::int64_t /*trackId*/, QString /*country*/,
                                                std::stop_token /*stop*/) override
    {
        log.append(QStringLiteral("lookup"));
        co_return std::nullopt;
    }

    OneShot<QList<ITunesAppResult>> answer;
    QStringList log;
};

/// A provider whose answer the test gives.
class ScriptedProvider final : public PopularityProviding
{
public:
    [[nodiscard]] QString modelVersion() const override { return QStringLiteral("scripted-1"); }

    Task<PopularityAssessment> assess(std::shared_ptr<const KeywordSurvey> survey, QString country,
                                      std::stop_token stop) override
    {
        log.append(QStringLiteral("assess %1 %2 %3")
                       .arg(survey->keyword(), country)
                       .arg(survey->results().size()));
        co_return co_await answer.wait(stop);
    }

    OneShot<PopularityAssessment> answer;
    QStringList log;
};

/// A provider that turns its cancellation into a failure of its own.
class WrappingProvider final : public PopularityProviding
{
public:
    [[nodiscard]] QString modelVersion() const override { return QStringLiteral("wrapping-1"); }

    Task<PopularityAssessment> assess(std::shared_ptr<const KeywordSurvey> /*survey*/,
                                      QString /*country*/, std::stop_token stop) override
    {
        try {
            co_await never.wait(stop);
        } catch (const Cancelled &) {
            throw Error(QStringLiteral("connection closed"));
        }
        co_return PopularityAssessment{};
    }

    OneShot<Done> never;
};

struct PipelineTest : testing::Test {
    std::shared_ptr<ScriptedClient> client = std::make_shared<ScriptedClient>();
    std::shared_ptr<VirtualClock> clock = std::make_shared<VirtualClock>(testNow());
    KeywordPipeline pipeline{.popularityProvider = std::make_shared<QuorvinPopularityProvider>(),
                             .iTunesClient = client,
                             .clock = clock};
    TrackedKeyword keyword;
    AppProfile app;
    std::stop_source stop;

    PipelineTest()
    {
        keyword.id = QUuid::createUuid();
        keyword.keyword = QStringLiteral("Photo Editor");
        keyword.country = QStringLiteral("US");
        app.trackId = ownId;
    }

    [[nodiscard]] Outcome<KeywordMeasurement> start() const
    {
        return Outcome(pipeline.run(keyword, app, stop.get_token()));
    }

    /// The snapshot of a search that answers with the table.
    [[nodiscard]] KeywordSnapshot measure(const QString &table) const
    {
        return measure(appTable(table));
    }

    [[nodiscard]] KeywordSnapshot measure(const QList<ITunesAppResult> &results) const
    {
        client->answer = {};
        const auto outcome = start();
        client->answer.resolve(results);
        return outcome.value().snapshot;
    }
};

const QString field = QStringLiteral(R"(
    id | name             | seller | ratings | stars | released             | icon
    1  | Photo Editor Pro | Acme   | 9000    | 4.5   | 2016-11-21T00:00:00Z | https://i.example/1
    2  | Photo Lab        | Lab    | 8000    | 4.1   | 2019-11-21T00:00:00Z | https://i.example/2
    77 | Collage          | Mine   | 700     | 4.8   | 2024-11-21T00:00:00Z | https://i.example/3
    4  | Editor of Photos | Four   | 6000    | 4.4   | 2012-11-21T00:00:00Z | https://i.example/4)");

TEST_F(PipelineTest, SearchesOnceForOneHundredAppsAndAsksTheProviderWithAllOfThem)
{
    const auto provider = std::make_shared<ScriptedProvider>();
    pipeline.popularityProvider = provider;
    const auto outcome = start();
    EXPECT_TRUE(provider->log.isEmpty());
    client->answer.resolve(appTable(QStringLiteral("name | times\nPhoto | 100")));
    EXPECT_FALSE(outcome.isDone());
    provider->answer.resolve({});
    EXPECT_TRUE(outcome.hasValue());
    EXPECT_EQ(client->log, QStringList{QStringLiteral("search Photo Editor US 100")});
    EXPECT_EQ(provider->log, QStringList{QStringLiteral("assess Photo Editor US 100")});
}

TEST_F(PipelineTest, GivesACompleteSnapshot)
{
    const auto results = appTable(field);
    const KeywordSnapshot snapshot = measure(results);

    const auto difficulty = assessDifficulty(u"Photo Editor", results, testNow());
    const KeywordSurvey survey(u"Photo Editor", results);
    const auto competition = assessCompetition(survey, testNow());
    const auto popularity = estimatePopularity(survey, u"US", quorvinPopularityModelVersion);
    const auto opportunity = assessOpportunity(survey, {.storefront = QStringLiteral("US"),
                                                        .popularity = popularity.measurement,
                                                        .competition = competition,
                                                        .trackId = ownId,
                                                        .position = 3,
                                                        .now = testNow()});
    KeywordSnapshot expected;
    expected.id = snapshot.id;
    expected.trackedKeywordId = keyword.id;
    expected.keyword = QStringLiteral("Photo Editor");
    expected.country = QStringLiteral("US");
    expected.fetchedAt = testNow();
    expected.popularityRaw = popularity.measurement->weightedRatingSignal;
    expected.popularityScore = popularity.measurement->score;
    expected.difficultyScore = difficulty.score;
    expected.difficultyComponents = difficulty.components;
    expected.position = 3;
    for (const char *icon : {"1", "2", "3", "4"})
        expected.competitorIcons.append(
            *Url::fromText(QStringLiteral("https://i.example/") + QLatin1String(icon)));
    expected.popularityMeasurement = popularity.measurement;
    expected.popularityModelVersion = QStringLiteral("quorvin-v2-relevance-3");
    expected.popularityStatus = popularity.message;
    expected.competition = competition;
    expected.opportunity = opportunity;
    expected.scoringModelVersion = QStringLiteral("quorvin-opportunity-v1");
    EXPECT_EQ(snapshot, expected);
    EXPECT_TRUE(snapshot.opportunity.has_value());
    EXPECT_FALSE(snapshot.id.isNull());
    EXPECT_NE(snapshot.id, measure(results).id);
}

TEST_F(PipelineTest, TheAppThatIsThirtySeventhOfOneHundredHasPosition37)
{
    const QString table = QStringLiteral(R"(
        id | name         | ratings | times
        1  | Photo Editor | 10000   | 36
        %1 | Mine         | 900000  | 1
        2  | Other        | 5       | 63)");
    const auto snapshot = measure(table.arg(ownId));
    EXPECT_EQ(snapshot.position, 37);
    EXPECT_EQ(snapshot.difficultyComponents.sampledAppCount, 10);
    EXPECT_EQ(snapshot.difficultyComponents.averageReviewsTop10, 10'000);
    EXPECT_EQ(measure(table.arg(3)).position, std::nullopt);
}

TEST_F(PipelineTest, TheFirstOfTwoResultsWithTheAppsIdGivesThePosition)
{
    EXPECT_EQ(measure(QStringLiteral("id\n-\n5\n77\n77")).position, 3);
}

TEST_F(PipelineTest, KeepsTheUsableIconsOfTheFirstFiveResults)
{
    QStringList icons;
    const auto snapshot = measure(QStringLiteral(R"(
        id | icon
        1  | a
        2  | -
        3  |
        4  | d
        5  | e
        6  | f)"));
    for (const Url &icon : snapshot.competitorIcons)
        icons.append(icon.text());
    EXPECT_EQ(icons, (QStringList{QStringLiteral("a"), QStringLiteral("d"), QStringLiteral("e")}));
    EXPECT_EQ(measure(QStringLiteral("icon\na\nb\n-")).competitorIcons.size(), 2);
}

TEST_F(PipelineTest, OfAnEmptySearchHasNoFieldAndNoOpportunity)
{
    const auto snapshot = measure(QList<ITunesAppResult>());
    EXPECT_EQ(snapshot.position, std::nullopt);
    EXPECT_TRUE(snapshot.competitorIcons.isEmpty());
    EXPECT_EQ(snapshot.difficultyScore, 0);
    EXPECT_EQ(snapshot.difficultyComponents.sampledAppCount, 0);
    EXPECT_EQ(snapshot.competition->sampleCount, 0);
    EXPECT_EQ(snapshot.popularityMeasurement, std::nullopt);
    EXPECT_EQ(snapshot.popularityScore, std::nullopt);
    EXPECT_EQ(snapshot.popularityRaw, std::nullopt);
    EXPECT_EQ(snapshot.popularityStatus,
              QStringLiteral("No search results available for a popularity estimate."));
    EXPECT_EQ(snapshot.opportunity, std::nullopt);
}

TEST_F(PipelineTest, IsDatedRightAfterTheSearchHasAnswered)
{
    const auto provider = std::make_shared<ScriptedProvider>();
    pipeline.popularityProvider = provider;
    const auto outcome = start();
    clock->advance(Seconds(40));
    client->answer.resolve(appTable(field));
    clock->advance(Seconds(500'000'000));
    provider->answer.resolve(estimatePopularity({u"Photo Editor", appTable(field)}, u"US",
                                                QStringLiteral("scripted-1")));
    const Date measured = testNow() + Seconds(40);
    const auto &snapshot = outcome.value().snapshot;
    EXPECT_EQ(snapshot.fetchedAt, measured);
    // Every model saw the same moment, the opportunity model included.
    const auto results = appTable(field);
    EXPECT_EQ(snapshot.difficultyComponents,
              assessDifficulty(u"Photo Editor", results, measured).components);
    EXPECT_EQ(snapshot.competition, assessCompetition({u"Photo Editor", results}, measured));
    EXPECT_EQ(snapshot.opportunity->appStrength, appStrength(&results[2], measured));
    EXPECT_EQ(snapshot.popularityModelVersion, QStringLiteral("scripted-1"));
}

TEST_F(PipelineTest, KeepsTheEvidenceThatTheProviderGathered)
{
    const auto provider = std::make_shared<ScriptedProvider>();
    pipeline.popularityProvider = provider;
    const auto outcome = start();
    client->answer.resolve(appTable(field));
    AutocompleteEvidence evidence;
    evidence.keyword = QStringLiteral("photo editor");
    evidence.observedDays = 2;
    provider->answer.resolve({.measurement = std::nullopt,
                              .evidence = evidence,
                              .message = QStringLiteral("Evidence only.")});
    EXPECT_EQ(outcome.value().snapshot.autocompleteEvidence, evidence);
    EXPECT_EQ(outcome.value().snapshot.popularityStatus, QStringLiteral("Evidence only."));
    EXPECT_EQ(outcome.value().snapshot.opportunity, std::nullopt);
}

TEST_F(PipelineTest, AFailureOfTheProviderKeepsRankingsAndScores)
{
    const KeywordSnapshot whole = measure(field);
    const auto provider = std::make_shared<ScriptedProvider>();
    pipeline.popularityProvider = provider;
    client->answer = {};
    const auto outcome = start();
    client->answer.resolve(appTable(field));
    provider->answer.fail(std::make_exception_ptr(Error(QStringLiteral("offline"))));

    KeywordSnapshot expected = whole;
    expected.id = outcome.value().snapshot.id;
    expected.popularityRaw.reset();
    expected.popularityScore.reset();
    expected.popularityMeasurement.reset();
    expected.opportunity.reset();
    expected.popularityModelVersion = QStringLiteral("scripted-1");
    expected.popularityStatus =
        QStringLiteral("Popularity unavailable. Rankings were saved; try popularity again later.");
    EXPECT_EQ(outcome.value().snapshot, expected);
}

TEST_F(PipelineTest, AFailureOfTheProviderThatIsNoErrorOfOursIsTreatedTheSame)
{
    const auto provider = std::make_shared<ScriptedProvider>();
    pipeline.popularityProvider = provider;
    const auto outcome = start();
    client->answer.resolve(appTable(field));
    provider->answer.fail(std::make_exception_ptr(std::runtime_error("broken")));
    EXPECT_EQ(
        outcome.value().snapshot.popularityStatus,
        QStringLiteral("Popularity unavailable. Rankings were saved; try popularity again later."));
}

TEST_F(PipelineTest, AFailedSearchFailsTheRunWithItsOwnError)
{
    const auto outcome = start();
    client->answer.fail(std::make_exception_ptr(Error(QStringLiteral("no answer"))));
    EXPECT_TRUE(outcome.holds<Error>());
    EXPECT_EQ(outcome.failureText(), QStringLiteral("no answer"));
}

TEST_F(PipelineTest, AStopDuringTheSearchCancelsTheRun)
{
    const auto outcome = start();
    stop.request_stop();
    EXPECT_TRUE(outcome.isCancelled());
}

TEST_F(PipelineTest, AStopDuringPopularityCancelsTheRunInsteadOfLosingPopularity)
{
    pipeline.popularityProvider = std::make_shared<ScriptedProvider>();
    const auto outcome = start();
    client->answer.resolve(appTable(field));
    stop.request_stop();
    EXPECT_TRUE(outcome.isCancelled());
}

TEST_F(PipelineTest, AStopThatTheProviderReportsAsAFailureStillCancelsTheRun)
{
    pipeline.popularityProvider = std::make_shared<WrappingProvider>();
    const auto outcome = start();
    client->answer.resolve(appTable(field));
    stop.request_stop();
    EXPECT_TRUE(outcome.isCancelled());
}

TEST_F(PipelineTest, ARunOutlivesItsPipelineAndItsArguments)
{
    auto shortLived = std::make_unique<KeywordPipeline>(pipeline);
    auto shortLivedKeyword = std::make_unique<TrackedKeyword>(keyword);
    const Outcome outcome(shortLived->run(*shortLivedKeyword, app, stop.get_token()));
    shortLived.reset();
    shortLivedKeyword.reset();
    pipeline = {};
    client->answer.resolve(appTable(field));
    EXPECT_EQ(outcome.value().snapshot.position, 3);
}

TEST_F(PipelineTest, SeveralRunsMayOverlap)
{
    const auto other = std::make_shared<ScriptedClient>();
    const auto first = start();
    pipeline.iTunesClient = other;
    keyword.keyword = QStringLiteral("collage");
    const auto second = start();
    other->answer.resolve(appTable(QStringLiteral("id | name\n77 | Collage")));
    client->answer.resolve(appTable(field));
    EXPECT_EQ(first.value().snapshot.position, 3);
    EXPECT_EQ(first.value().snapshot.keyword, QStringLiteral("Photo Editor"));
    EXPECT_EQ(second.value().snapshot.position, 1);
    EXPECT_EQ(second.value().snapshot.keyword, QStringLiteral("collage"));
}

TEST_F(PipelineTest, EveryOwnerMayBeDestroyedWhileARunIsSuspended)
{
    for (const bool searchAnswered : {false, true}) {
        client->answer = {};
        pipeline.popularityProvider = std::make_shared<ScriptedProvider>();
        std::optional<Outcome<KeywordMeasurement>> outcome;
        {
            TaskScope scope;
            const auto owned = std::make_unique<KeywordPipeline>(pipeline);
            outcome.emplace(owned->run(keyword, app, scope.token()));
            if (searchAnswered)
                client->answer.resolve(appTable(field));
            EXPECT_FALSE(outcome->isDone());
        }
        EXPECT_TRUE(outcome->isCancelled());
    }
}

} // namespace
} // namespace veltrix
