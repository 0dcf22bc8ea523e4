// SPDX-License-Identifier: GPL-3.0-or-later
// A history file of any bytes: refused, or read by every question that is asked of it.
#include "fuzz_target.h"
#include "store/history_database.h"
#include "store/history_schema.h"

#include <QFile>

#include <array>

namespace
{

using namespace veltrix;

const QUuid keywordId(1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 1);
const QUuid appId(2, 2, 0, 0, 0, 0, 0, 0, 0, 0, 2);

/// A history with something in each table.
QByteArray smallHistory()
{
    const QString path = fuzz::scratchPath(QStringLiteral("base.sqlite"));
    {
        HistoryDatabase history = HistoryDatabase::openOrCreate(path);
        std::vector<SharedSnapshot> snapshots;
        for (unsigned day = 0; day < 3; ++day) {
            auto snapshot = std::make_shared<KeywordSnapshot>();
            snapshot->id = QUuid(day, 3, 0, 0, 0, 0, 0, 0, 0, 0, 3);
            snapshot->trackedKeywordId = keywordId;
            snapshot->keyword = QStringLiteral("photo editor");
            snapshot->country = QStringLiteral("US");
            snapshot->fetchedAt = startOfUtcDay(20'000 + day);
            snapshot->position = day;
            snapshots.push_back(std::move(snapshot));
        }
        history.insert(snapshots);
        KeywordStandings standings;
        standings.keywordId = keywordId;
        standings.fetchedAt = startOfUtcDay(20'001);
        standings.leaders = {{42, QStringLiteral("Lumen")}, {0, {}}};
        standings.rivals = {{appId, 3}};
        ListingFacts facts;
        facts.name = QStringLiteral("Lumen");
        const std::vector<HistoryEdit> edits{
            BeginWatching{appId, startOfUtcDay(20'000)},
            KeepStandings{standings, QStringLiteral("US"), {{appId, facts}}},
            PutNote{{QUuid(4, 4, 0, 0, 0, 0, 0, 0, 0, 0, 4), appId, 20'001,
                     QStringLiteral("New icon"), startOfUtcDay(20'001)}},
            SetTag{keywordId, QStringLiteral("Brand"), true}};
        history.apply(edits);
        history.noteRemoval(std::array{QUuid(5, 5, 0, 0, 0, 0, 0, 0, 0, 0, 5)});
    }
    QFile file(path);
    fuzz::require(file.open(QIODevice::ReadOnly), "there is a history to begin with");
    return file.readAll();
}

/// Each question on its own: what one refuses, the next may answer.
void ask(HistoryDatabase &history)
{
    const std::array keywords{keywordId};
    fuzz::isAccepted([&] { static_cast<void>(history.observations(keywordId)); });
    fuzz::isAccepted([&] {
        history.eachRank(keywords, [](size_t place, Date, std::optional<std::int64_t>) {
            fuzz::require(place == 0, "ranks are of the keywords asked for");
        });
    });
    fuzz::isAccepted([&] {
        const auto records = history.records(keywordId, HistoryDatabase::earliestDay, 2);
        fuzz::require(records.size() <= 2, "no more records come than were asked for");
    });
    fuzz::isAccepted([&] { static_cast<void>(history.standings(keywordId)); });
    fuzz::isAccepted(
        [&] { static_cast<void>(history.newestStandings(keywords, startOfUtcDay(30'000))); });
    fuzz::isAccepted([&] { static_cast<void>(history.listingHistory(appId)); });
    fuzz::isAccepted([&] { static_cast<void>(history.writtenNotes()); });
    fuzz::isAccepted([&] { static_cast<void>(history.removalNotes()); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    fuzz::muteWarnings();
    static const QByteArray base = smallHistory();
    const QString path = fuzz::scratchFile(QStringLiteral("history.sqlite"),
                                           fuzz::patched(base, fuzz::bytesOf(data, size)));
    QFile::remove(path + QStringLiteral("-journal"));
    fuzz::isAccepted([&] {
        if (std::optional<HistoryDatabase> history = HistoryDatabase::open(path))
            ask(*history);
    });
    return 0;
}
