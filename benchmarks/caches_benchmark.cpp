// SPDX-License-Identifier: GPL-3.0-or-later
// Full caches beside empty ones: what a start, a measurement and the memory have to do with them.
#include "clients/artwork_cache.h"
#include "clients/artwork_loader.h"
#include "clients/autocomplete_score.h"
#include "clients/itunes_client.h"
#include "clients/ranked_apps_keeper.h"
#include "clients/research_client.h"
#include "effects/atomic_file.h"
#include "effects/system_clock.h"
#include "generated_bodies.h"
#include "generated_state.h"
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "memory_use.h"
#include "own_process.h"
#include "ratio.h"
#include "store/history_database.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <string_view>

namespace
{

using namespace veltrix;

constexpr int keywords = 300;
constexpr int daysInFile = 12;
constexpr int daysInHistory = 353;
constexpr double milliseconds = 1e3;
constexpr double megabyte = 1e6;

QString pathIn(const QString &folder, const char *name)
{
    return folder + u'/' + QString::fromLatin1(name);
}

QString rankedAppsPathIn(const QString &folder)
{
    return pathIn(folder, "ranked_apps_cache_v1.json");
}

struct SearchBody {
    QList<ITunesAppResult> results;
};

} // namespace

template <>
inline constexpr auto veltrix::fieldsOf<SearchBody> =
    std::tuple{veltrix::field("results", &SearchBody::results)};

namespace
{

/// What a search finds, whole listings of about 10 kB each. Each keyword finds its own.
QList<ITunesAppResult> foundFor(int keyword)
{
    static const auto body = fromJson<SearchBody>(generatedSearchBody(100));
    QList<ITunesAppResult> results = body.results;
    for (qsizetype i = 0; i < results.size(); ++i)
        results[i].trackId = keyword * 1'000 + i;
    return results;
}

// What the processes of their own do.

/// Keeps what so many keywords have found, as a long run does, and prints by how much the memory
/// has grown.
void keepAndMeasure(const QString &folder, int count)
{
    const auto found = foundFor(0);
    const auto files = std::make_shared<FileThread>();
    RankedAppsCache cache({rankedAppsPathIn(folder), files}, std::make_shared<SystemClock>());
    resetPeakResident();
    const double before = residentBytes();
    const Date now = SystemClock().now();
    for (int i = 0; i < count; ++i) {
        cache.keep(QString::number(i), {now + Seconds(i * 0.01), found});
        files->waitUntilFinished();
    }
    malloc_trim(0);
    std::printf("%.0f\n", residentBytes() - before);
}

/// Keeps one more, some times over, and prints the main thread's seconds for each, the bytes
/// written for it, and the wall's seconds until it is on the disk; of each the median.
void keepOneMore(const QString &folder)
{
    const auto files = std::make_shared<FileThread>();
    const auto clock = std::make_shared<SystemClock>();
    RankedAppsCache cache({rankedAppsPathIn(folder), files}, clock);
    // The first brings the file into memory, and writes it once.
    cache.keep(QStringLiteral("first"), {clock->now(), foundFor(0)});
    files->waitUntilFinished();
    std::vector<double> own;
    std::vector<double> bytes;
    std::vector<double> wall;
    for (int i = 1; i <= 31; ++i) {
        const SavedResults saved{clock->now(), foundFor(i)};
        const double written = writtenBytes();
        const double since = clockSeconds(TimeOf::Wall);
        const double start = threadSeconds();
        // The same one, so that an empty cache stays one.
        cache.keep(QStringLiteral("first"), saved);
        own.push_back(threadSeconds() - start);
        files->waitUntilFinished();
        wall.push_back(clockSeconds(TimeOf::Wall) - since);
        bytes.push_back(writtenBytes() - written);
    }
    std::printf("%.9f %.0f %.9f\n", spreadOf(own).median, spreadOf(bytes).median,
                spreadOf(wall).median);
}

// What they are given.

void fillRankedApps(const QString &folder, int count)
{
    RankedAppsArchive archive(rankedAppsPathIn(folder), nullptr);
    const Date now = SystemClock().now();
    for (int i = 0; i < count; ++i) {
        const Date date = now - Seconds(count - i);
        archive.keep(rankedAppsKey(QStringLiteral("keyword %1").arg(i), QStringLiteral("US")),
                     {date, foundFor(i)}, Seconds(0), date);
        if (i % 100 == 99)
            archive.save(date);
    }
    archive.save(now);
    archive.finish(now);
}

void fillHistory(const QString &folder, const PersistedState &state)
{
    HistoryDatabase history = HistoryDatabase::openOrCreate(pathIn(folder, "history.sqlite"));
    for (int day = daysInFile; day < daysInHistory; day += daysInFile) {
        std::vector<SharedSnapshot> earlier;
        for (const SharedSnapshot &snapshot : state.snapshots) {
            auto copy = std::make_shared<KeywordSnapshot>(*snapshot);
            copy->id = QUuid::createUuid();
            copy->fetchedAt = snapshot->fetchedAt - Seconds(day * secondsPerDay);
            earlier.push_back(std::move(copy));
        }
        history.insert(earlier);
    }
}

void fillSuggestions(const QString &folder)
{
    AutocompleteState state;
    const Date now = SystemClock().now();
    state.budgetDay = autocompleteDay(now);
    state.requests = 200;
    for (int i = 0; i < 400; ++i) {
        QStringList terms;
        for (int term = 0; term < 10; ++term)
            terms.append(QStringLiteral("suggestion %1 of %2").arg(term).arg(i));
        state.cache.insert({QStringLiteral("US:prefix %1").arg(i), {terms, now}});
    }
    for (int i = 0; i < keywords; ++i) {
        for (int day = 6; day >= 0; --day)
            state.history[QStringLiteral("US:keyword %1").arg(i)].append(
                {state.budgetDay - day, 50, now - Seconds(day * secondsPerDay)});
    }
    writeFileAtomically(pathIn(folder, "autocomplete_visibility_v2.json"), toJson(state));
}

void fillArtwork(const QString &folder, const PersistedState &state)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImage icon(100, 100, QImage::Format_RGB32);
    icon.fill(Qt::darkCyan);
    require(icon.save(&buffer, "PNG"), "an icon");
    ArtworkCache artwork(pathIn(folder, "cache/artwork"), ArtworkLoader::defaultCacheLimit);
    for (const SharedSnapshot &snapshot : state.snapshots) {
        for (const Url &url : snapshot->competitorIcons)
            artwork.store(url.text(), bytes);
    }
}

// The comparisons.

/// From the start of a process to its first painted window.
void startUp(const QString &with, const QString &bundle)
{
    // Nobody answers there.
    writeFileAtomically(bundle + QStringLiteral("/Info.plist"), R"(<?xml version="1.0"?>
<plist version="1.0"><dict>
<key>VeltrixITunesBaseURL</key><string>http://127.0.0.1:9</string>
<key>VeltrixSearchHintsURL</key><string>http://127.0.0.1:9</string>
</dict></plist>)");
    struct Started {
        double processor = 0;
        double memory = 0;
        double wall = 0;
    };
    const QString programs = QCoreApplication::applicationDirPath();
    const auto start = [&](const char *program, const QStringList &arguments) {
        const double since = clockSeconds(TimeOf::Wall);
        const auto figures = numbersFrom(programs + u'/' + QLatin1String(program), arguments, 2);
        return Started{figures[0], figures[1], clockSeconds(TimeOf::Wall) - since};
    };
    const auto startEmpty = [&] {
        return start("empty_window", {});
    };
    const auto startWhole = [&] {
        return start("started_program", {bundle, with});
    };
    startEmpty();
    startWhole();
    report("start with 300 keywords, a year and full caches, times an empty window's",
           quotients([&] { return startWhole().processor; }, [&] { return startEmpty().processor; },
                     11),
           atMost(2));
    report("the same by the wall's clock",
           quotients([&] { return startWhole().wall; }, [&] { return startEmpty().wall; }, 11),
           atMost(2));
    reportDetail("memory at the first paint", spreadOf({startWhole().memory / megabyte}), "MB");
    reportDetail("of it what an empty window has", spreadOf({startEmpty().memory / megabyte}),
                 "MB");
    reportDetail("time until the first paint", inMilliseconds(spreadOf({startWhole().wall})),
                 "ms of the wall");
}

void compareMemory(const QTemporaryDir &scratch)
{
    int run = 0;
    const auto memory = [&](int count) {
        const QString folder = scratch.filePath(QStringLiteral("memory %1").arg(++run));
        QDir().mkpath(folder);
        const double grown = numbersFromSelf(
            {QStringLiteral("keep-and-measure"), folder, QString::number(count)}, 1)[0];
        QDir(folder).removeRecursively();
        return grown;
    };
    const double few = memory(100);
    const double many = memory(6'151);
    report("memory with 6,151 keywords' ranked apps, times 100 keywords'", spreadOf({many / few}),
           atMost(1.1));
    reportDetail("memory with 6,151 keywords' ranked apps", spreadOf({many / megabyte}), "MB");
}

void compareKeeping(const QString &with, const QString &without)
{
    const auto keep = [](const QString &folder) {
        return numbersFromSelf({QStringLiteral("keep-one-more"), folder}, 3);
    };
    keep(without);
    const auto full = keep(with);
    report("the main thread's time to keep ranked apps, full caches, ms",
           spreadOf({full[0] * milliseconds}), atMost(2));
    reportDetail("the same, empty caches", spreadOf({keep(without)[0] * milliseconds}), "ms");
    report("bytes written for a measurement's ranked apps, full times empty",
           quotients([&] { return keep(with)[1]; }, [&] { return keep(without)[1]; }, 3),
           atMost(1.1));
    reportDetail("bytes written for them", spreadOf({full[1] / megabyte}), "MB");
    reportDetail("time until they are written", spreadOf({full[2] * milliseconds}),
                 "ms of the wall");
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const std::string_view mode = argc > 2 ? argv[1] : "";
    const QString given = argc > 2 ? QFile::decodeName(argv[2]) : QString();
    if (mode == "keep-and-measure" && argc == 4)
        keepAndMeasure(given, QByteArray(argv[3]).toInt());
    else if (mode == "keep-one-more")
        keepOneMore(given);
    if (!mode.empty())
        return 0;
    const QTemporaryDir folder;
    const QString with = folder.filePath(QStringLiteral("with"));
    const QString without = folder.filePath(QStringLiteral("without"));
    const QString bundle = folder.filePath(QStringLiteral("bundle"));
    for (const QString &path : {with, without, bundle})
        QDir().mkpath(path);
    const PersistedState state = generatedState(keywords, daysInFile);
    writeFileAtomically(pathIn(with, "aso_store_state.json"), toJson(state));
    fillHistory(with, state);
    fillRankedApps(with, keywords);
    fillSuggestions(with);
    fillArtwork(with, state);
    startUp(with, bundle);
    compareKeeping(with, without);
    compareMemory(folder);
    return 0;
}
