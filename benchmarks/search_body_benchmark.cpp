// SPDX-License-Identifier: GPL-3.0-or-later
// Decoding a 200-result search body into records, beside QJsonDocument's parse of the same bytes;
// and what bodies cost that were made to cost much, beside their own size.
#include "generated_bodies.h"
#include "json/json_reader.h"
#include "memory_use.h"
#include "model/itunes_app_result.h"
#include "ratio.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

namespace
{

using namespace veltrix;

const QByteArray &body()
{
    static const QByteArray bytes = generatedSearchBody(200);
    return bytes;
}

/// The first results of a search, as the client reads them.
ITunesSearchResponse searchAnswer(const QByteArray &answer)
{
    return fromJson<ITunesSearchResponse>(answer, ListLimit{200});
}

/// A benchmark of a wrong result is worthless: both readers must see the same apps.
void checkResults()
{
    const auto response = fromJson<ITunesSearchResponse>(body());
    const QJsonArray reference =
        QJsonDocument::fromJson(body()).object().value(QStringLiteral("results")).toArray();
    bool same = response.results.size() == 200 && reference.size() == 200;
    for (qsizetype i = 0; same && i < reference.size(); ++i) {
        const QJsonObject app = reference[i].toObject();
        same =
            response.results[i].trackId == app.value(QStringLiteral("trackId")).toInteger() &&
            response.results[i].description == app.value(QStringLiteral("description")).toString();
    }
    if (!same) {
        std::fputs("The body does not decode to the same apps.\n", stderr);
        std::exit(1);
    }
}

void decodeIntoRecords(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(searchAnswer(body()));
    state.SetBytesProcessed(state.iterations() * body().size());
}
BENCHMARK(decodeIntoRecords)->Unit(benchmark::kMillisecond);

void parseWithQJsonDocument(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(QJsonDocument::fromJson(body()));
    state.SetBytesProcessed(state.iterations() * body().size());
}
BENCHMARK(parseWithQJsonDocument)->Unit(benchmark::kMillisecond);

/// How many times its own size a body takes, at the peak, beside itself.
Spread memoryOf(const QByteArray &answer)
{
    std::vector<double> ratios;
    for (int round = 0; round < 5; ++round) {
        resetPeakResident();
        const double before = residentBytes();
        if (searchAnswer(answer).results.isEmpty()) {
            std::fputs("The body has results.\n", stderr);
            std::exit(1);
        }
        ratios.push_back((peakResidentBytes() - before) / double(answer.size()));
    }
    return spreadOf(std::move(ratios));
}

QByteArray bodyOf(const QByteArray &results)
{
    return R"({"resultCount":1000000,"results":[)" + results + "]}";
}

} // namespace

int main(int argc, char **argv)
{
    checkResults();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    report("decoding a search body of 200 results, times as fast as QJsonDocument",
           timesAsFast([] { benchmark::DoNotOptimize(searchAnswer(body())); },
                       [] { benchmark::DoNotOptimize(QJsonDocument::fromJson(body())); }, 61),
           atLeast(3));
    report("memory to decode a body of a million empty results, times its size",
           memoryOf(bodyOf(QByteArray("{},").repeated(999'999) + "{}")), atMost(4));
    report("memory to decode a body of a result with a million empty texts, times its size",
           memoryOf(bodyOf(R"({"screenshotUrls":[)" + QByteArray("\"\",").repeated(999'999) +
                           R"(""]})")),
           atMost(4));
    return 0;
}
