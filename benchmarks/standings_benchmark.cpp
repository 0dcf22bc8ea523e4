// SPDX-License-Identifier: GPL-3.0-or-later
// What a measurement adds by the ranks of competitors: on the window's thread, on the saving one,
// and on the disk; in a history of a year, beside saving the state itself.
#include "effects/atomic_file.h"
#include "generated_state.h"
#include "own_process.h"
#include "ratio.h"
#include "store/history_database.h"
#include "store/listing_watch.h"
#include "store/standing_records.h"
#include "store/state_file.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>

namespace
{

using namespace veltrix;

constexpr int keywords = 100;
constexpr int days = 365;
constexpr int competitors = 20;
constexpr int daysInFile = 12;
constexpr std::int64_t firstDay = 9'000;
constexpr double milliseconds = 1e3;

QUuid numbered(int number)
{
    return {uint(number), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
}

QList<ITunesAppResult> searchResults(int day)
{
    QList<ITunesAppResult> results;
    for (int place = 0; place < 100; ++place) {
        ITunesAppResult result;
        result.trackId = 6'400'000'000 + (place + day) % 100;
        result.trackName = QStringLiteral("Photo app of number %1").arg(*result.trackId);
        result.version = QStringLiteral("%1.0").arg(day / 30);
        result.formattedPrice = QStringLiteral("Free");
        result.artworkUrl100 =
            QStringLiteral("https://i.example/image/thumb/%1/Icon.png/100x100.jpg")
                .arg(*result.trackId);
        results.append(result);
    }
    return results;
}

QList<TrackedCompetitor> trackedCompetitors()
{
    QList<TrackedCompetitor> rivals;
    for (int i = 0; i < competitors; ++i) {
        TrackedCompetitor rival;
        rival.id = numbered(10'000 + i);
        rival.trackId = 6'400'000'000 + 5 * i;
        rivals.append(rival);
    }
    return rivals;
}

/// What the store makes of a measurement on the window's thread.
HistoryEdit editOf(int keyword, int day, const QList<ITunesAppResult> &results,
                   const QList<TrackedCompetitor> &rivals)
{
    KeywordSnapshot snapshot;
    snapshot.trackedKeywordId = numbered(keyword);
    snapshot.fetchedAt = startOfUtcDay(firstDay + day) + Seconds(3'600.0 + keyword);
    KeepStandings edit{standingsOf(snapshot, results, rivals), QStringLiteral("US"), {}};
    for (const TrackedCompetitor &rival : rivals) {
        const auto found =
            std::ranges::find(results, std::optional(rival.trackId), &ITunesAppResult::trackId);
        edit.watched.push_back({rival.id, listingFacts(*found)});
    }
    return edit;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("history.sqlite"));
    const QList<TrackedCompetitor> rivals = trackedCompetitors();
    for (int day = 0; day < days; ++day) {
        const QList<ITunesAppResult> results = searchResults(day);
        std::vector<HistoryEdit> edits;
        for (int keyword = 1; keyword <= keywords; ++keyword)
            edits.push_back(editOf(keyword, day, results, rivals));
        HistoryDatabase::openOrCreate(path).apply(edits);
    }
    require(HistoryDatabase::open(path)->standings(numbered(1)).size() == days, "a year is kept");
    report("bytes that a measurement with 20 competitors takes in the history",
           spreadOf({double(QFileInfo(path).size()) / (keywords * days)}), atMost(1'000));

    const QList<ITunesAppResult> results = searchResults(days);
    std::vector<HistoryEdit> made;
    const auto make = [&] {
        made.clear();
        for (int keyword = 1; keyword <= keywords; ++keyword)
            made.push_back(editOf(keyword, days, results, rivals));
    };
    const Spread making = seconds(make, 9);
    report("window's thread for one measurement more with them, ms",
           spreadOf({making.median / keywords * milliseconds}), atMost(0.1));

    const auto state = generatedState(keywords, daysInFile);
    StateFile file(folder.filePath(QStringLiteral("state.json")), nullptr);
    (void)file.load();
    size_t next = 0;
    const auto keepOne = [&](TimeOf which) {
        return secondsOf(
            [&] {
                HistoryDatabase::openOrCreate(path).apply(
                    std::span(&made[next++ % made.size()], 1));
            },
            which);
    };
    const auto saveState = [&](TimeOf which) {
        return secondsOf([&] { file.save(state, state.snapshots.front()->fetchedAt); }, which);
    };
    constexpr int rounds = 25;
    std::vector<double> processor;
    std::vector<double> wall;
    for (int i = 0; i < rounds; ++i) {
        processor.push_back(keepOne(TimeOf::Processor) * milliseconds);
        wall.push_back(keepOne(TimeOf::Wall) * milliseconds);
    }
    report("saving thread to keep them, ms", spreadOf(processor), atMost(2));
    reportDetail("the same by the wall, with what waits for the disk", spreadOf(wall), "ms");
    reportDetail("times saving the state of 100 keywords, by the wall",
                 quotients([&] { return keepOne(TimeOf::Wall); },
                           [&] { return saveState(TimeOf::Wall); }, 9));
    require(!file.hasUnsavedChange(), "the state is saved");

    const auto askOne = [&] {
        (void)HistoryDatabase::open(path)->standings(numbered(7));
    };
    const Spread asking = seconds(askOne, 9, TimeOf::Wall);
    reportDetail("standings of a keyword of a year, ten and twenty a day", inMilliseconds(asking),
                 "ms of the wall");
    std::vector<QUuid> all;
    for (int keyword = 1; keyword <= keywords; ++keyword)
        all.push_back(numbered(keyword));
    const auto askAll = [&] {
        (void)HistoryDatabase::open(path)->newestStandings(all, startOfUtcDay(firstDay + days + 1));
    };
    reportDetail("the newest standings of 100 keywords",
                 inMilliseconds(seconds(askAll, 9, TimeOf::Wall)), "ms of the wall");
    return 0;
}
