// SPDX-License-Identifier: GPL-3.0-or-later
// A process that is killed while it saves, moves, migrates and removes has lost no measurement, and
// keeps none of what was removed.
#include "effects/atomic_file.h"
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "store/history_database.h"
#include "store/killed_process.h"
#include "store/numbered_measurements.h"
#include "store/scratch_folder.h"

#include <QSet>

#include <algorithm>
#include <random>
#include <set>

namespace veltrix
{
namespace
{

/// More than the usual few, for a night: VELTRIX_KILLS=1000.
int kills()
{
    const int wanted = qEnvironmentVariableIntValue("VELTRIX_KILLS");
    return wanted > 0 ? wanted : 60;
}

class HistoryCrash : public testing::Test
{
protected:
    [[nodiscard]] QString statePath() const
    {
        return folder->filePath(QStringLiteral("state.json"));
    }
    [[nodiscard]] std::optional<HistoryDatabase> history() const
    {
        return HistoryDatabase::open(folder->filePath(QStringLiteral("history.sqlite")));
    }
    [[nodiscard]] PersistedState state() const
    {
        return fromJson<PersistedState>(readWholeFile(statePath()));
    }
    /// The numbers of a keyword's measurements, wherever they are.
    [[nodiscard]] std::set<std::int64_t> numbersOf(const PersistedState &saved,
                                                   const QUuid &keyword) const
    {
        std::set<std::int64_t> numbers;
        for (const SharedSnapshot &snapshot : saved.snapshots) {
            if (snapshot->trackedKeywordId == keyword)
                numbers.insert(*snapshot->position);
        }
        if (auto database = history()) {
            for (const SharedSnapshot &snapshot : database->records(keyword))
                numbers.insert(*snapshot->position);
        }
        return numbers;
    }

    std::unique_ptr<QTemporaryDir> folder = scratchFolder();
    std::mt19937 random{1};
};

TEST_F(HistoryCrash, KillsAtRandomMomentsLoseNoMeasurementAndKeepNoRemovedKeyword)
{
    KilledProcess<MeasuringProgress> process(*folder, "measure-for-ever");
    std::uniform_int_distribution<int> delay(0, 120'000);
    int inMoves = 0;
    int withNotes = 0;
    // On a busy machine the process comes less far before it is killed.
    for (int i = 0; i < kills() || (inMoves == 0 && i < 20 * kills()); ++i) {
        ASSERT_TRUE(process.runAndKill(std::chrono::microseconds(delay(random))));
        const std::int64_t begun = process.progress().begun;
        if (process.progress().done == 0 && !QFile::exists(statePath()))
            continue;
        const PersistedState saved = state();
        ASSERT_EQ(saved.trackedKeywords.size(), 1);
        const QUuid keyword = saved.trackedKeywords.constFirst().id;
        const std::int64_t last = *saved.snapshots.back()->position;
        ASSERT_GE(last, process.progress().done) << "a finished save is lost";
        ASSERT_TRUE(last == begun || last == begun - 1);
        std::set<std::int64_t> expected;
        for (std::int64_t number = last; number > 0 && numberedKeyword(number) == keyword; --number)
            expected.insert(number);
        ASSERT_EQ(numbersOf(saved, keyword), expected);
        auto database = history();
        if (!database)
            continue;
        // What is in both was copied, and the file not yet saved without it.
        inMoves += std::ranges::any_of(
            saved.snapshots, [&](const SharedSnapshot &one) { return database->contains(*one); });
        // What has no keyword is noted to go.
        const std::vector<QUuid> notes = database->removalNotes();
        withNotes += notes.empty() ? 0 : 1;
        for (std::int64_t number = 1; number < last; number += measurementsPerKeyword) {
            const QUuid other = numberedKeyword(number);
            const bool mayHaveSome = other == keyword || std::ranges::count(notes, other) > 0;
            ASSERT_TRUE(mayHaveSome || database->observations(other).empty());
        }
    }
    RecordProperty("killed in a move", inMoves);
    RecordProperty("killed in a removal", withNotes);
    EXPECT_GT(inMoves, 0);
    EXPECT_GT(process.progress().done, measurementsPerKeyword);
}

TEST_F(HistoryCrash, KillsWhileALargeFileMovesLoseNothingAndItEnds)
{
    constexpr std::int64_t count = 4'500;
    PersistedState all;
    all.apps.append(AppProfile{});
    for (std::int64_t number = 0; number < count; ++number) {
        const SharedSnapshot snapshot = numberedMeasurement(number);
        if (number % measurementsPerKeyword == 0) {
            TrackedKeyword keyword;
            keyword.id = snapshot->trackedKeywordId;
            all.trackedKeywords.append(keyword);
        }
        all.snapshots.push_back(snapshot);
    }
    writeFileAtomically(statePath(), toJson(all));
    KilledProcess<MeasuringProgress> process(*folder, "migrate");
    int killed = 0;
    // Longer and longer, so that the slowest machine gets a step done.
    const auto delay = [&] {
        std::uniform_int_distribution<int> any(0, 50'000 * (killed + 1));
        return std::chrono::microseconds(any(random));
    };
    while (process.runAndKill(delay())) {
        ++killed;
        ASSERT_LT(killed, 200) << "it does not come to an end";
        const PersistedState saved = state();
        ASSERT_EQ(saved.trackedKeywords.size(), count / measurementsPerKeyword);
        auto database = history();
        std::int64_t found = 0;
        QSet<QUuid> inFile;
        for (const SharedSnapshot &snapshot : saved.snapshots)
            inFile.insert(snapshot->id);
        for (const TrackedKeyword &keyword : saved.trackedKeywords) {
            for (const auto &one : database ? database->observations(keyword.id)
                                            : std::vector<RankingTimeline::Observation>())
                found += inFile.contains(one.id) ? 0 : 1;
        }
        ASSERT_EQ(found + std::int64_t(saved.snapshots.size()), count);
    }
    const PersistedState saved = state();
    EXPECT_EQ(saved.snapshots.size(), 2U * size_t(count / measurementsPerKeyword));
    for (const TrackedKeyword &keyword : saved.trackedKeywords)
        EXPECT_EQ(numbersOf(saved, keyword.id).size(), size_t(measurementsPerKeyword));
    RecordProperty("kills", killed);
    EXPECT_GT(killed, 0);
}

} // namespace
} // namespace veltrix
