// SPDX-License-Identifier: GPL-3.0-or-later
#include "scoring/keyword_pipeline.h"

#include "scoring/app_signals.h"
#include "scoring/competition_model.h"
#include "scoring/difficulty_model.h"
#include "scoring/opportunity_model.h"

#include <algorithm>

namespace veltrix
{

namespace
{

/// Results whose icons are kept.
constexpr qsizetype iconLimit = 5;

QList<Url> iconsOf(const QList<ITunesAppResult> &results)
{
    QList<Url> icons;
    for (qsizetype i = 0; i < std::min(results.size(), iconLimit); ++i) {
        if (const auto icon = iconUrl(results[i]))
            icons.append(*icon);
    }
    return icons;
}

/// What the provider says, or the message that stands for its failure.
Task<PopularityAssessment> popularityOf(std::shared_ptr<PopularityProviding> provider,
                                        std::shared_ptr<const KeywordSurvey> survey,
                                        QString country, std::stop_token stop)
{
    try {
        co_return co_await provider->assess(survey, country, stop);
    } catch (const Cancelled &) {
        throw;
    } catch (const std::exception &) {
        // A stop may reach the provider as a failure of its own.
        throwIfStopped(stop);
    }
    co_return PopularityAssessment{
        .measurement = std::nullopt, .evidence = std::nullopt, .message = popularityUnavailable};
}

/// A coroutine of its own because it must not refer to the pipeline, which may be gone before it
/// ends.
Task<KeywordMeasurement> measure(KeywordPipeline pipeline, TrackedKeyword keyword, AppProfile app,
                                 std::stop_token stop)
{
    const QList<ITunesAppResult> results = co_await pipeline.iTunesClient->search(
        keyword.keyword, keyword.country, keywordSearchLimit, stop);
    const Date now = pipeline.clock->now();

    KeywordSnapshot snapshot;
    snapshot.id = QUuid::createUuid();
    snapshot.trackedKeywordId = keyword.id;
    snapshot.keyword = keyword.keyword;
    snapshot.country = keyword.country;
    snapshot.fetchedAt = now;
    snapshot.position = rankedPosition(results, app.trackId);
    snapshot.competitorIcons = iconsOf(results);

    const DifficultyAssessment difficulty =
        assessDifficulty(keyword.keyword, difficultySample(results), now);
    snapshot.difficultyScore = difficulty.score;
    snapshot.difficultyComponents = difficulty.components;
    const auto survey = std::make_shared<const KeywordSurvey>(keyword.keyword, results);
    const CompetitionAssessment competition = assessCompetition(*survey, now);
    snapshot.competition = competition;

    const PopularityAssessment popularity =
        co_await popularityOf(pipeline.popularityProvider, survey, keyword.country, stop);
    snapshot.popularityMeasurement = popularity.measurement;
    if (popularity.measurement) {
        snapshot.popularityRaw = popularity.measurement->weightedRatingSignal;
        snapshot.popularityScore = popularity.measurement->score;
    }
    snapshot.popularityModelVersion = pipeline.popularityProvider->modelVersion();
    snapshot.popularityStatus = popularity.message;
    snapshot.autocompleteEvidence = popularity.evidence;

    const OpportunityQuery query{
        .storefront = keyword.country,
        .popularity = popularity.measurement,
        .competition = competition,
        .trackId = app.trackId,
        .position = snapshot.position,
        .now = now,
    };
    snapshot.opportunity = assessOpportunity(*survey, query);
    snapshot.scoringModelVersion = currentScoringModelVersion;
    co_return KeywordMeasurement{std::move(snapshot), results};
}

} // namespace

Task<KeywordMeasurement> KeywordPipeline::run(TrackedKeyword keyword, AppProfile app,
                                              std::stop_token stop) const
{
    return measure(*this, std::move(keyword), std::move(app), std::move(stop));
}

} // namespace veltrix
