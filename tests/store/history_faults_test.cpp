// SPDX-License-Identifier: GPL-3.0-or-later
// A history that is damaged, on a disk that is full, closed, away or another's: it is left as it
// is, that is said, and what is measured meanwhile is in the state file.
#include "effects/atomic_file.h"
#include "effects/data_folder_lock.h"
#include "json/json_reader.h"
#include "store/helper_process.h"
#include "store/history_fixture.h"

#include <QDir>

#include <sys/stat.h>

namespace veltrix
{
namespace
{

class HistoryFaults : public HistoryStore
{
protected:
    /// A keyword with days in both places; then nothing is open.
    TrackedKeyword keywordWithHistory(int days = 40)
    {
        const TrackedKeyword keyword = addKeyword("moon");
        measureDaily(keyword, days);
        whole = json(allOf(keyword));
        EXPECT_TRUE(hasMovedDays());
        stop();
        return keyword;
    }
    [[nodiscard]] QString timelineProblem(const TrackedKeyword &keyword) const
    {
        const Outcome<RankingTimeline> timeline(store->rankingTimeline(keyword.id, {}));
        waitFor([&] { return timeline.isDone(); });
        return timeline.failureText();
    }
    /// What is measured now prints nothing that a test is about.
    void measureSilently(const TrackedKeyword &keyword, int days)
    {
        testing::internal::CaptureStdout();
        measureDaily(keyword, days);
        testing::internal::GetCapturedStdout();
    }

    QByteArray whole;
};

struct Damage {
    const char *name;
    QByteArray (*made)(const QByteArray &whole);
    const char *reason;
};

class DamagedHistory : public HistoryFaults, public testing::WithParamInterface<Damage>
{
};

TEST_P(DamagedHistory, IsLeftAloneAndSaidWhileTheStateFileGrows)
{
    const TrackedKeyword keyword = keywordWithHistory();
    const QByteArray sound = readWholeFile(historyPath());
    const QByteArray damaged = GetParam().made(sound);
    writeFileAtomically(historyPath(), damaged);
    restart();
    const size_t before = store->snapshots().size();
    measureDaily(keyword, 30);
    EXPECT_EQ(readWholeFile(historyPath()), damaged);
    EXPECT_EQ(store->snapshots().size(), before + 30);
    EXPECT_GT(stateBytes().size(), limit);
    EXPECT_FALSE(store->hasUnsavedChange());
    EXPECT_TRUE(problem().startsWith(text("Older measurements could not be moved out of the state "
                                          "file, which grows meanwhile. ")))
        << qPrintable(problem());
    EXPECT_TRUE(timelineProblem(keyword).contains(text(GetParam().reason)))
        << qPrintable(timelineProblem(keyword));
    EXPECT_EQ(store->recentTimeline(keyword.id).observations.size(), before + 30);
    // When a backup of it comes back, everything is there and moves again.
    stop();
    writeFileAtomically(historyPath(), sound);
    restart();
    measureDaily(keyword, 1);
    EXPECT_LE(stateBytes().size(), limit);
    EXPECT_EQ(allOf(keyword).size(), 71U);
    EXPECT_EQ(problem(), QString());
}

const Damage damages[] = {
    {"garbage", [](const QByteArray &) { return QByteArray(20'000, 'x'); }, "not a database"},
    {"empty", [](const QByteArray &) { return QByteArray(); }, "The file is empty"},
    {"cutOff", [](const QByteArray &whole) { return whole.chopped(8192); }, "malformed"},
    {"newer",
     [](const QByteArray &whole) {
         QByteArray newer = whole;
         // The last byte of the version in the header of such a file.
         newer[63] = 3;
         return newer;
     },
     "A newer Veltrix has written it"}};

std::string nameOf(const testing::TestParamInfo<Damage> &damage)
{
    return damage.param.name;
}

INSTANTIATE_TEST_SUITE_P(Kinds, DamagedHistory, testing::ValuesIn(damages), nameOf);

TEST_F(HistoryFaults, ADamagedRecordIsSaidForItsKeywordAlone)
{
    const TrackedKeyword moon = addKeyword("moon");
    const TrackedKeyword tide = addKeyword("tide");
    measureDaily(moon, 40);
    measureDaily(tide, 40);
    {
        SqliteDatabase database(historyPath());
        SqliteStatement spoil = database.prepare(
            "UPDATE detail SET json = x'0102' WHERE keyword = (SELECT number FROM keyword WHERE id "
            "= ?1)");
        spoil.bind(1, moon.id.toRfc4122());
        spoil.run();
    }
    const Outcome<MeasurementPage> page(store->measurements(moon.id, {}, {}));
    waitFor([&] { return page.isDone(); });
    EXPECT_EQ(page.failureText(),
              text("The data couldn’t be read: A record of the history is damaged."));
    EXPECT_EQ(timelineOf(moon.id).observations.size(), 40U) << "the ranks are not in it";
    EXPECT_EQ(allOf(tide).size(), 40U);
}

TEST_F(HistoryFaults, AFolderThatGoesAwayTakesNothingWithIt)
{
    const TrackedKeyword keyword = keywordWithHistory();
    restart();
    const QString away = folder.path() + text(".away");
    ASSERT_TRUE(QDir().rename(folder.path(), away));
    measureSilently(keyword, 20);
    EXPECT_TRUE(store->hasUnsavedChange());
    EXPECT_FALSE(QFileInfo::exists(folder.path()));
    ASSERT_TRUE(QDir().rename(away, folder.path()));
    measureDaily(keyword, 2);
    EXPECT_EQ(problem(), QString());
    EXPECT_EQ(allOf(keyword).size(), 62U);
    restart();
    EXPECT_EQ(allOf(keyword).size(), 62U);
}

TEST_F(HistoryFaults, ADiskThatComesLateBringsItsHistoryAndWhatWasLeftToDo)
{
    const TrackedKeyword keyword = keywordWithHistory();
    restart();
    const TrackedKeyword gone = addKeyword("tide");
    measureDaily(gone, 40);
    store->removeKeyword(gone.id);
    finishMoving();
    stop();
    ASSERT_EQ(history()->removalNotes(), std::vector{gone.id});
    const QString away = folder.path() + text(".away");
    ASSERT_TRUE(QDir().rename(folder.path(), away));
    testing::internal::CaptureStdout();
    restart();
    testing::internal::GetCapturedStdout();
    EXPECT_FALSE(store->isStateRead());
    EXPECT_FALSE(QFileInfo::exists(folder.path())) << "no history is made where there is no disk";
    ASSERT_TRUE(QDir().rename(away, folder.path()));
    retryPersistence();
    EXPECT_EQ(json(allOf(keyword)), whole);
    clock->advance(ASOStore::historyTidyingDelay);
    waitFor([&] { return history()->removalNotes().empty(); });
    EXPECT_TRUE(history()->records(gone.id).empty());
}

TEST_F(HistoryFaults, NothingMovesAndNothingGoesWhileAnotherHasTheFolder)
{
    const TrackedKeyword keyword = keywordWithHistory();
    DataFolderLock lock(folder.path());
    ASSERT_EQ(lock.acquire(), DataFolderLock::Outcome::Acquired);
    ASOStore::Arguments changed = arguments();
    changed.stateFileLimit = limit;
    changed.folderLock = &lock;
    store = std::make_unique<ASOStore>(std::move(changed));
    // The lock's file goes, and another process takes the next.
    QFile::remove(folder.filePath(text(".veltrix.lock")));
    auto other = std::make_unique<DataFolderLock>(folder.path());
    ASSERT_EQ(other->acquire(), DataFolderLock::Outcome::Acquired);
    const QByteArray database = readWholeFile(historyPath());
    const QByteArray state = readWholeFile(statePath());
    measureSilently(keyword, 30);
    testing::internal::CaptureStdout();
    RemovedTracking removed = store->removeKeyword(keyword.id);
    store->waitUntilSaved();
    store->restore(std::move(removed));
    store->waitUntilSaved();
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(readWholeFile(historyPath()), database);
    EXPECT_EQ(readWholeFile(statePath()), state);
    EXPECT_TRUE(problem().contains(text("Another Veltrix has opened the folder")));
    other.reset();
    measureDaily(keyword, 1);
    EXPECT_EQ(allOf(keyword).size(), 71U);
    stop();
}

TEST_F(HistoryFaults, NothingMovesOutOfAFileThatSomethingElseHasChanged)
{
    const qint64 usual = limit;
    limit = ASOStore::usualStateFileLimit;
    restart();
    const TrackedKeyword keyword = addKeyword("moon");
    measureDaily(keyword, 60);
    stop();
    limit = usual;
    ASOStore::Arguments changed = arguments();
    changed.stateFileLimit = limit;
    store = std::make_unique<ASOStore>(std::move(changed));
    const QByteArray restored = stateBytes() + " ";
    writeFileAtomically(statePath(), restored);
    clock->advance(ASOStore::historyTidyingDelay);
    waitFor(
        [this] { return problem().contains(text("was changed or removed by something else")); });
    EXPECT_FALSE(hasMovedDays());
    EXPECT_EQ(readWholeFile(statePath()), restored);
    EXPECT_EQ(store->snapshots().size(), 60U);
}

TEST_F(HistoryFaults, BeginningAnewLeavesTheHistoryForTheFileThatWasGivenUp)
{
    const TrackedKeyword keyword = keywordWithHistory();
    const QByteArray state = readWholeFile(statePath());
    const QByteArray database = readWholeFile(historyPath());
    QFile::remove(statePath());
    ASSERT_EQ(mkfifo(qPrintable(statePath()), 0600), 0);
    testing::internal::CaptureStdout();
    restart();
    testing::internal::GetCapturedStdout();
    store->beginAnew();
    store->waitUntilSaved();
    ASSERT_TRUE(store->isStateRead());
    addKeyword("tide");
    restart();
    restart();
    EXPECT_EQ(readWholeFile(historyPath()), database);
    stop();
    writeFileAtomically(statePath(), state);
    restart();
    EXPECT_EQ(json(allOf(keyword)), whole);
}

TEST_F(HistoryFaults, AHistoryInAFolderThatMayNotBeWrittenIsRead)
{
    const TrackedKeyword keyword = keywordWithHistory();
    ASSERT_EQ(chmod(qPrintable(historyPath()), 0644), 0);
    ASSERT_EQ(chmod(qPrintable(statePath()), 0644), 0);
    ASSERT_EQ(chmod(qPrintable(folder.path()), 0555), 0);
    HelperProcess helper({text("read-without-rights"), statePath()});
    const QString output = helper.finish();
    chmod(qPrintable(folder.path()), 0700);
    if (helper.exitCode() == helperCannot)
        GTEST_SKIP() << "this system lets no test give up its rights";
    EXPECT_EQ(output, text("days: 40\n"));
}

TEST_F(HistoryFaults, AFullDiskWhileDaysMoveLosesNothingAndItGoesOnWhenThereIsRoom)
{
    HelperProcess helper({text("move-on-full-disk"), folder.path()});
    const QStringList lines = helper.finish().split(u'\n', Qt::SkipEmptyParts);
    if (helper.exitCode() == helperCannot)
        GTEST_SKIP() << "this system lets no test mount a small disk";
    ASSERT_EQ(lines.size(), 4) << qPrintable(lines.join(u'\n'));
    EXPECT_TRUE(lines[0].contains(text("Older measurements could not be moved")))
        << qPrintable(lines[0]);
    EXPECT_TRUE(lines[0].contains(text("No space left"))) << qPrintable(lines[0]);
    EXPECT_EQ(lines[1], text("all there: 1"));
    EXPECT_EQ(lines[2], text("with room, problem: , all there: 1, within the limit: 1"));
    EXPECT_EQ(lines[3], text("files: history.sqlite state.json"));
}

} // namespace
} // namespace veltrix
