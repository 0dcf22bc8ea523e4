// SPDX-License-Identifier: GPL-3.0-or-later
// Scoring a search of 100 results with every model, beside decoding the same results from JSON.
#include "counted_malloc.h"
#include "generated_bodies.h"
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "model/itunes_app_result.h"
#include "ratio.h"
#include "scoring/app_keyword_check.h"
#include "scoring/app_signals.h"
#include "scoring/competition_model.h"
#include "scoring/difficulty_model.h"
#include "scoring/opportunity_model.h"
#include "scoring/popularity_model.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

namespace
{

using namespace veltrix;

constexpr int resultCount = 100;
/// Goals: share of the decoding time, and bytes.
constexpr double highestShare = 0.1;
constexpr size_t highestBytes = 64 * 1024;

/// What the store sends: everything, most of which is skipped.
const QByteArray &serviceBody()
{
    static const QByteArray bytes = generatedSearchBody(resultCount);
    return bytes;
}

const ITunesSearchResponse &search()
{
    static const auto response = fromJson<ITunesSearchResponse>(serviceBody());
    return response;
}

/// What a cache keeps: the fields of the records and nothing else.
const QByteArray &recordBody()
{
    static const QByteArray bytes = toJson(search());
    return bytes;
}

struct Scores {
    DifficultyAssessment difficulty;
    CompetitionAssessment competition;
    PopularityAssessment popularity;
    std::optional<OpportunityAssessment> opportunity;
    QStringList phrases;
};

/// The last result as the user's own app, so that every model has all its work to do.
Scores scoreAll(const QString &keyword, const QList<ITunesAppResult> &results, Date now)
{
    Scores scores;
    const ITunesAppResult &own = results.last();
    scores.difficulty = assessDifficulty(keyword, difficultySample(results), now);
    const KeywordSurvey survey(keyword, results);
    scores.competition = assessCompetition(survey, now);
    scores.popularity = estimatePopularity(survey, u"US", quorvinPopularityModelVersion);
    scores.opportunity =
        assessOpportunity(survey, {.storefront = QStringLiteral("US"),
                                   .popularity = scores.popularity.measurement,
                                   .competition = scores.competition,
                                   .trackId = *own.trackId,
                                   .position = rankedPosition(results, *own.trackId),
                                   .now = now});
    scores.phrases = keywordPhrases(own);
    return scores;
}

Date now()
{
    return dateFromUnixSeconds(1795262400);
}

struct KeywordCase {
    const char *name;
    QString keyword;
    bool exactPhrase;
};

/// The titles read "Photo Frame 12: Collage & Filters": one keyword is found in them as a phrase,
/// which is the quick way, the other word by word.
const std::vector<KeywordCase> &keywordCases()
{
    static const std::vector<KeywordCase> cases{
        {"phrase", QStringLiteral("photo frame"), true},
        {"scattered words", QStringLiteral("filters collage photo"), false}};
    return cases;
}

void require(bool condition, const char *message)
{
    if (condition)
        return;
    std::fprintf(stderr, "%s\n", message);
    std::exit(1);
}

/// A benchmark of a wrong result is worthless: the scores must be those of this search, and the
/// counter must see what Qt allocates.
void checkResults()
{
    require(search().results.size() == resultCount, "The body does not decode to 100 results.");
    require(fromJson<ITunesSearchResponse>(recordBody()) == search(),
            "The records do not decode to themselves.");
    for (const KeywordCase &one : keywordCases()) {
        const Scores scores = scoreAll(one.keyword, search().results, now());
        require(scores.difficulty.components.sampledAppCount == 10 && scores.difficulty.score > 0 &&
                    scores.competition.sampleCount == 25 &&
                    scores.competition.factors.find(QStringLiteral("Title relevance")) == 100 &&
                    scores.popularity.measurement && scores.popularity.measurement->score > 5 &&
                    scores.opportunity && !scores.opportunity->usedNewAppBaseline &&
                    scores.phrases.contains(QStringLiteral("photo frame")),
                "The scores are not those of the generated search.");
    }
    const size_t before = heapUse().bytes;
    benchmark::DoNotOptimize(QString(10'000, u'x'));
    require(heapUse().bytes - before >= 20'000, "The counter misses what Qt allocates.");
}

void decode(benchmark::State &state, const QByteArray &body)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(fromJson<ITunesSearchResponse>(body));
    state.SetBytesProcessed(state.iterations() * body.size());
}

void score(benchmark::State &state, const QString &keyword)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(scoreAll(keyword, search().results, now()));
}

void reportCase(const KeywordCase &one)
{
    const auto work = [&one] {
        benchmark::DoNotOptimize(scoreAll(one.keyword, search().results, now()));
    };
    const auto shareOf = [&work](const QByteArray &body) {
        return timesAsLong(
            work, [&body] { benchmark::DoNotOptimize(fromJson<ITunesSearchResponse>(body)); }, 301);
    };
    const auto row = [&one](const char *what) {
        return std::string(what) + " (" + one.name + ")";
    };
    const HeapUse before = heapUse();
    work();
    const double bytes = double(heapUse().bytes - before.bytes);
    report(row("scoring 100 results, share of decoding their body").c_str(), shareOf(serviceBody()),
           atMost(highestShare));
    reportDetail(row("the same beside decoding bare records").c_str(), shareOf(recordBody()));
    report(row("heap taken for it, share of 64 KiB").c_str(),
           spreadOf({bytes / double(highestBytes)}), atMost(1));
}

} // namespace

int main(int argc, char **argv)
{
    checkResults();
    benchmark::RegisterBenchmark("decodeServiceBody", decode, serviceBody())
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("decodeRecords", decode, recordBody())
        ->Unit(benchmark::kMicrosecond);
    for (const KeywordCase &one : keywordCases())
        benchmark::RegisterBenchmark((std::string("score, ") + one.name).c_str(), score,
                                     one.keyword)
            ->Unit(benchmark::kMicrosecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    std::printf("Bodies: %lld bytes from the service, %lld bytes as records\n",
                static_cast<long long>(serviceBody().size()),
                static_cast<long long>(recordBody().size()));
    for (const KeywordCase &one : keywordCases())
        reportCase(one);
    return 0;
}
