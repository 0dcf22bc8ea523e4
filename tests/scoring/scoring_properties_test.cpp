// SPDX-License-Identifier: GPL-3.0-or-later
// What holds for every search, however absurd.
#include "scoring/app_keyword_check.h"
#include "scoring/app_signals.h"
#include "scoring/app_table.h"
#include "scoring/competition_model.h"
#include "scoring/difficulty_model.h"
#include "scoring/opportunity_model.h"
#include "scoring/popularity_model.h"
#include "scoring/text_tokens.h"
#include "scoring/title_relevance.h"
#include "support/generators.h"

#include <QSet>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace veltrix
{

/// Prints the fields that the models read; as JSON a number that is not finite would be an error.
void showValue(const ITunesAppResult &app, std::ostream &out)
{
    const auto text = [](const std::optional<QString> &value) {
        return value ? u'"' + *value + u'"' : QStringLiteral("-");
    };
    out << "\n  "
        << QStringList{text(app.trackName), text(app.subtitle), text(app.primaryGenreName),
                       text(app.sellerName), text(app.releaseDate)}
               .join(u" | ")
               .toStdString()
        << " | id " << app.trackId.value_or(-1) << " | ratings "
        << (app.userRatingCount ? std::to_string(*app.userRatingCount) : "-") << " | stars "
        << (app.averageUserRating ? std::to_string(*app.averageUserRating) : "-");
}

void showValue(const QList<ITunesAppResult> &apps, std::ostream &out)
{
    for (const ITunesAppResult &app : apps)
        showValue(app, out);
}

namespace
{

constexpr std::int64_t ownId = 77;

/// Texts of words that titles and keywords share, now and then of any characters.
rc::Gen<QString> texts()
{
    const auto words = rc::gen::elementOf(std::vector<QString>{
        QStringLiteral("photo"), QStringLiteral("Editor"), QStringLiteral("PHOTO"),
        QStringLiteral("options"), QStringLiteral("Stock"), QStringLiteral("trading"),
        QStringLiteral("call"), QStringLiteral("pro"), QStringLiteral("-"), QStringLiteral(":"),
        QStringLiteral("2048"), QStringLiteral("写真"), QStringLiteral("แผนที่"), QString()});
    const auto joined =
        rc::gen::map(rc::gen::resize(6, rc::gen::container<std::vector<QString>>(words)),
                     [](const std::vector<QString> &parts) {
                         return QStringList(parts.begin(), parts.end()).join(u' ');
                     });
    return rc::gen::weightedOneOf<QString>({{6, joined}, {1, rc::gen::arbitrary<QString>()}});
}

rc::Gen<std::int64_t> counts()
{
    using Limits = std::numeric_limits<std::int64_t>;
    return rc::gen::oneOf(
        rc::gen::inRange<std::int64_t>(0, 5000), rc::gen::inRange<std::int64_t>(0, 10'000'000),
        rc::gen::inRange<std::int64_t>(-100, 100), rc::gen::arbitrary<std::int64_t>(),
        rc::gen::elementOf(std::vector<std::int64_t>{Limits::min(), Limits::max()}));
}

rc::Gen<double> stars()
{
    using Limits = std::numeric_limits<double>;
    return rc::gen::oneOf(
        rc::gen::map(rc::gen::inRange(0, 51), [](int tenths) { return tenths / 10.0; }),
        rc::gen::arbitrary<double>(),
        rc::gen::elementOf(std::vector<double>{-3, Limits::max(), Limits::lowest(),
                                               Limits::infinity(), -Limits::infinity(),
                                               Limits::quiet_NaN(), Limits::denorm_min()}));
}

rc::Gen<QString> dates()
{
    const auto usable = rc::gen::map(rc::gen::inRange(0, 9999), [](int year) {
        return QStringLiteral("%1-06-15T12:00:00Z").arg(year, 4, 10, QLatin1Char('0'));
    });
    const auto recent = rc::gen::map(rc::gen::inRange(2005, 2028), [](int year) {
        return QStringLiteral("%1-06-15T12:00:00.5Z").arg(year);
    });
    return rc::gen::oneOf(usable, recent, rc::gen::arbitrary<QString>());
}

template <class T>
rc::Gen<std::optional<T>> maybe(rc::Gen<T> present)
{
    return rc::gen::weightedOneOf<std::optional<T>>(
        {{1, rc::gen::just(std::optional<T>())},
         {5, rc::gen::map(std::move(present), [](T value) { return std::optional<T>(value); })}});
}

ITunesAppResult makeApp()
{
    ITunesAppResult app;
    app.trackId = *maybe(rc::gen::inRange<std::int64_t>(ownId - 10, ownId + 10));
    app.trackName = *maybe(texts());
    app.subtitle = *maybe(texts());
    app.userRatingCount = *maybe(counts());
    app.averageUserRating = *maybe(stars());
    app.releaseDate = *maybe(dates());
    app.primaryGenreName = *maybe(rc::gen::elementOf(
        std::vector<QString>{QStringLiteral("Finance"), QStringLiteral("Games"), QString()}));
    app.sellerName = *maybe(texts());
    return app;
}

ITunesAppResult anyApp()
{
    return *rc::gen::exec(makeApp);
}

/// From none to `most` apps.
QList<ITunesAppResult> anyResults(int most = 39)
{
    return *rc::gen::exec([most] {
        QList<ITunesAppResult> results;
        for (int count = *rc::gen::inRange(0, most + 1); count > 0; --count)
            results.append(makeApp());
        return results;
    });
}

Date anyNow()
{
    return *rc::gen::oneOf(rc::gen::just(testNow()), rc::gen::arbitrary<Date>());
}

QString anyStorefront()
{
    return *rc::gen::element(QStringLiteral("US"), QStringLiteral("gb"), QStringLiteral("AI"),
                             QStringLiteral("XX"));
}

PopularityMeasurement anyPopularity()
{
    PopularityMeasurement measurement;
    measurement.score = *rc::gen::inRange<std::int64_t>(5, 101);
    measurement.source = popularity_source::quorvinCalibratedEstimate;
    return measurement;
}

/// The question that a search puts to the opportunity model.
OpportunityQuery queryOf(const KeywordSurvey &survey, const QString &storefront, Date now)
{
    return {.storefront = storefront,
            .popularity = estimatePopularity(survey, storefront, {}).measurement,
            .competition = assessCompetition(survey, now),
            .trackId = ownId,
            .position = rankedPosition(survey.results(), ownId),
            .now = now};
}

template <class T>
bool within(T value, T lowest, T highest)
{
    return value >= lowest && value <= highest;
}

RC_GTEST_PROP(ScoringProperties, TheDifficultyIsWithinItsRange, ())
{
    const auto results = anyResults(10);
    const auto result = assessDifficulty(*texts(), results, anyNow());
    RC_ASSERT(within<std::int64_t>(result.score, 0, 100));
    const DifficultyComponents &c = result.components;
    RC_ASSERT(c.sampledAppCount == results.size());
    RC_ASSERT(within(c.ageComponent, 0.0, 1.0));
    RC_ASSERT(within(c.matchComponent, 0.0, 1.0));
    RC_ASSERT(within(c.averageKeywordMatchTop10, 0.0, 1.0));
    RC_ASSERT(c.reviewComponent <= 1);
    for (const double value : {c.averageReviewsTop10, c.averageAgeYearsTop10, c.reviewComponent})
        RC_ASSERT(std::isfinite(value));
    RC_ASSERT(within<std::int64_t>(*c.missingReviewCount, 0, results.size()));
    RC_ASSERT(within<std::int64_t>(*c.missingReleaseDateCount, 0, results.size()));
}

RC_GTEST_PROP(ScoringProperties, TheCompetitionIsWithinItsRange, ())
{
    const auto results = anyResults();
    const auto result = assessCompetition({*texts(), results}, anyNow());
    RC_ASSERT(result.sampleCount == std::min<std::int64_t>(results.size(), 25));
    if (results.isEmpty()) {
        RC_ASSERT(result.score == 0);
        RC_ASSERT(result.factors.isEmpty());
        return;
    }
    RC_ASSERT(within<std::int64_t>(result.score, 1, 100));
    RC_ASSERT(result.factors.size() == 7);
    for (const auto &[name, value] : result.factors)
        RC_ASSERT(within(value, 0.0, 100.0));
    if (results.size() < 10)
        RC_ASSERT(result.score <= results.size() * 10);
}

RC_GTEST_PROP(ScoringProperties, ThePopularityIsWithinItsRange, ())
{
    const auto results = anyResults();
    const auto result = estimatePopularity({*texts(), results}, anyStorefront(), {});
    RC_ASSERT(result.measurement.has_value() == !results.isEmpty());
    RC_ASSERT(!result.message.isEmpty());
    if (!result.measurement)
        return;
    RC_ASSERT(within<std::int64_t>(result.measurement->score, 5, 100));
    RC_ASSERT(within<std::int64_t>(result.measurement->ratedRelevantApps, 0,
                                   result.measurement->sampledApps));
    RC_ASSERT(std::isfinite(result.measurement->weightedRatingSignal));
    RC_ASSERT(result.measurement->weightedRatingSignal >= 0);
}

RC_GTEST_PROP(ScoringProperties, TheOpportunityIsWithinItsRange, ())
{
    const KeywordSurvey survey(*texts(), anyResults());
    auto query = queryOf(survey, QStringLiteral("US"), anyNow());
    query.popularity = *maybe(rc::gen::map(rc::gen::arbitrary<std::int64_t>(), [](auto score) {
        PopularityMeasurement measurement;
        measurement.score = score % 120;
        measurement.source = popularity_source::appleSearchPopularity;
        return measurement;
    }));
    query.position = *maybe(counts());
    const auto result = assessOpportunity(survey, query);
    if (!result)
        return;
    RC_ASSERT(within<std::int64_t>(result->score, 0, 100));
    RC_ASSERT(within(result->appStrength, 14.28, 100.0000001));
    RC_ASSERT(!result->label.isEmpty());
    RC_ASSERT(!result->explanation.isEmpty());
}

RC_GTEST_PROP(ScoringProperties, RelevanceIsWithinItsRangeAndFollowsItsFlags, ())
{
    const auto result = KeywordRelevance(*texts()).against(*texts(), *texts());
    RC_ASSERT(within(result.relevance, 0.0, 1.0));
    RC_ASSERT(!(result.exactPhrase && result.allTokens));
    RC_ASSERT(result.exactPhrase == (result.relevance == 1 && !result.allTokens));
    RC_ASSERT(result.targetsKeyword() == (result.relevance >= 0.85));
}

RC_GTEST_PROP(ScoringProperties, RelevanceIgnoresTheCaseOfBothTexts, ())
{
    const QString keyword = *texts();
    const QString title = *texts();
    RC_ASSERT(KeywordRelevance(keyword).against(title, {}) ==
              KeywordRelevance(keyword.toLower()).against(title.toLower(), {}));
}

RC_GTEST_PROP(ScoringProperties, ResultsBeyondTheTwentyFifthChangeNothing, ())
{
    const QString keyword = *texts();
    const Date now = anyNow();
    QList<ITunesAppResult> sample;
    for (int i = 0; i < 25; ++i)
        sample.append(anyApp());
    const auto all = sample + anyResults(29);
    const KeywordSurvey ofAll(keyword, all);
    const KeywordSurvey ofSample(keyword, sample);
    RC_ASSERT(assessCompetition(ofAll, now) == assessCompetition(ofSample, now));
    RC_ASSERT(estimatePopularity(ofAll, u"US", {}) == estimatePopularity(ofSample, u"US", {}));
    RC_ASSERT(assessDifficulty(keyword, difficultySample(all), now) ==
              assessDifficulty(keyword, difficultySample(sample), now));
}

RC_GTEST_PROP(ScoringProperties, MoreCompetitionNeverRaisesTheOpportunity, ())
{
    const KeywordSurvey survey(*texts(), anyResults());
    auto query = queryOf(survey, QStringLiteral("US"), testNow());
    query.popularity = anyPopularity();
    query.competition.sampleCount = 25;
    std::int64_t before = 100;
    for (std::int64_t score = 0; score <= 100; ++score) {
        query.competition.score = score;
        const auto result = assessOpportunity(survey, query);
        RC_ASSERT(result.has_value());
        RC_ASSERT(result->score <= before);
        before = result->score;
    }
}

RC_GTEST_PROP(ScoringProperties, MorePopularityNeverLowersTheOpportunity, ())
{
    const KeywordSurvey survey(*texts(), anyResults());
    auto query = queryOf(survey, QStringLiteral("DE"), testNow());
    query.competition.sampleCount = 25;
    std::int64_t before = 0;
    for (std::int64_t score = 5; score <= 100; ++score) {
        query.popularity = anyPopularity();
        query.popularity->score = score;
        const auto result = assessOpportunity(survey, query);
        RC_ASSERT(result.has_value());
        RC_ASSERT(result->score >= before);
        before = result->score;
    }
}

RC_GTEST_PROP(ScoringProperties, MoreRatingsNeverLowerTheDifficulty, ())
{
    auto results = anyResults(10);
    RC_PRE(!results.isEmpty());
    const QString keyword = *texts();
    auto &app = results[*rc::gen::inRange<qsizetype>(0, results.size())];
    app.userRatingCount = *rc::gen::inRange<std::int64_t>(0, 1'000'000);
    const auto before = assessDifficulty(keyword, results, testNow());
    *app.userRatingCount += *rc::gen::inRange<std::int64_t>(0, 1'000'000);
    RC_ASSERT(assessDifficulty(keyword, results, testNow()).score >= before.score);
}

RC_GTEST_PROP(ScoringProperties, TheModelsReadNothingButTheirArguments, ())
{
    const QString keyword = *texts();
    const QString storefront = anyStorefront();
    const auto results = anyResults();
    const Date now = anyNow();
    const KeywordSurvey survey(keyword, results);
    const KeywordSurvey surveyedAgain(keyword, results);
    const auto query = queryOf(survey, storefront, now);
    const auto again = queryOf(surveyedAgain, storefront, now);
    RC_ASSERT(assessDifficulty(keyword, results, now) == assessDifficulty(keyword, results, now));
    RC_ASSERT(query.competition == again.competition);
    RC_ASSERT(query.popularity == again.popularity);
    RC_ASSERT(assessOpportunity(survey, query) == assessOpportunity(surveyedAgain, again));
}

RC_GTEST_PROP(ScoringProperties, TokensAreLowerCasedWordsOfTheText, ())
{
    const QString text = *texts();
    const TextTokens tokens(text, TokenRule::Relevance);
    RC_ASSERT(tokens.lowerCased() == text.toLower());
    for (const QStringView token : tokens) {
        RC_ASSERT(!token.isEmpty());
        RC_ASSERT(tokens.lowerCased().contains(token));
        for (qsizetype position = 0; position < token.size();)
            RC_ASSERT(isWordCharacter(takeCodePoint(token, position)));
    }
}

RC_GTEST_PROP(ScoringProperties, SegmentsAndTheirSeparatorsMakeUpTheText, ())
{
    const QString text = *texts();
    const auto kept = textSegments(text, unlimitedSplits, EmptyPieces::Keep);
    qsizetype size = kept.size() - 1;
    for (const QStringView segment : kept)
        size += codePointCount(segment);
    RC_ASSERT(size == codePointCount(text));
    QList<QStringView> notEmpty;
    std::copy_if(kept.begin(), kept.end(), std::back_inserter(notEmpty),
                 [](QStringView segment) { return !segment.isEmpty(); });
    RC_ASSERT(textSegments(text, unlimitedSplits, EmptyPieces::Drop) == notEmpty);
}

RC_GTEST_PROP(ScoringProperties, PhrasesKeepTheirLimits, ())
{
    const auto phrases = keywordPhrases(anyApp());
    RC_ASSERT(phrases.size() <= 30);
    RC_ASSERT(QSet<QString>(phrases.begin(), phrases.end()).size() == phrases.size());
    for (const QString &phrase : phrases) {
        RC_ASSERT(within<qsizetype>(codePointCount(phrase), 3, 100));
        RC_ASSERT(within<qsizetype>(whiteSpaceWordCount(phrase), 1, 3));
        RC_ASSERT(phrase == phrase.toLower());
    }
}

} // namespace
} // namespace veltrix
