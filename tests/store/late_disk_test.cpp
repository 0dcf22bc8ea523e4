// SPDX-License-Identifier: GPL-3.0-or-later
// Disks that come late, come back or are somebody else's meanwhile: what was not read is not
// overwritten, what could not be saved is known and tried again.
#include "effects/atomic_file.h"
#include "effects/data_folder_lock.h"
#include "json/json_reader.h"
#include "store/store_fixture.h"

#include <QDir>

#include <sys/stat.h>

namespace veltrix
{
namespace
{

using Remedy = PersistenceProblem::Remedy;

class LateDisk : public StoreTest
{
protected:
    LateDisk() { stop(); }
    ~LateDisk() override { stop(); }

    /// A disk below the test's folder that comes and goes by its name.
    [[nodiscard]] QString disk() const { return folder.filePath(text("disk")); }
    [[nodiscard]] QString away() const { return folder.filePath(text("away")); }
    [[nodiscard]] QString path() const { return disk() + text("/state.json"); }

    void openStore(DataFolderLock *lock = nullptr)
    {
        stop();
        ASOStore::Arguments changed = arguments();
        changed.persistenceURL = path();
        changed.folderLock = lock;
        testing::internal::CaptureStdout();
        store = std::make_unique<ASOStore>(std::move(changed));
        printed = testing::internal::GetCapturedStdout();
    }
    /// A disk with a state of one app and one keyword, put away.
    void prepareDisk(const char *keyword = "moon")
    {
        QDir().mkpath(disk());
        openStore();
        addKeyword(keyword);
        saved = readWholeFile(path());
        stop();
        takeDiskAway();
    }
    void takeDiskAway() const { ASSERT_TRUE(QDir().rename(disk(), away())); }
    void bringDisk() const { ASSERT_TRUE(QDir().rename(away(), disk())); }

    [[nodiscard]] Remedy remedy() const { return store->persistenceProblem()->remedy; }
    [[nodiscard]] QStringList names() const
    {
        return QDir(disk()).entryList(QDir::Files, QDir::Name);
    }
    [[nodiscard]] static QStringList keywordsIn(const QByteArray &bytes)
    {
        QStringList keywords;
        for (const TrackedKeyword &keyword : fromJson<PersistedState>(bytes).trackedKeywords)
            keywords.append(keyword.keyword);
        return keywords;
    }
    /// Adds a keyword and swallows what is printed.
    void add(const char *keyword)
    {
        testing::internal::CaptureStdout();
        addKeyword(keyword);
        printed = testing::internal::GetCapturedStdout();
    }

    /// Gives up the file and waits for what becomes of it.
    void beginAnew() const
    {
        store->beginAnew();
        store->waitUntilSaved();
    }

    QByteArray saved;
    std::string printed;
};

TEST_F(LateDisk, AFolderThatIsMissingIsNotAnEmptyStore)
{
    prepareDisk();
    openStore();
    EXPECT_EQ(printed, QStringLiteral("ASOStore load failed: The file “%1” could not be read: The "
                                      "folder “%2” is not there.\n")
                           .arg(path(), disk())
                           .toStdString());
    EXPECT_FALSE(store->isStateRead());
    EXPECT_FALSE(store->hasUnsavedChange());
    ASSERT_TRUE(store->persistenceProblem());
    EXPECT_EQ(remedy(), Remedy::TryAgainOrBeginAnew);
    try {
        addApp();
        FAIL() << "added to what was not read";
    } catch (const StoreError &error) {
        EXPECT_EQ(error.code(), 423);
        EXPECT_EQ(error.description(),
                  text("Nothing can be added before the saved data has been loaded."));
    }
    EXPECT_THROW(store->addTrackedKeyword(QUuid::createUuid(), text("x"), text("US")), StoreError);
    EXPECT_FALSE(QFileInfo::exists(disk()));
}

TEST_F(LateDisk, TryAgainReadsWhatHasComeMeanwhile)
{
    prepareDisk();
    openStore();
    bringDisk();
    QStringList signalled;
    const auto note = [&](const char *name) {
        return [&signalled, name] {
            signalled.append(text(name));
        };
    };
    QObject::connect(store.get(), &ASOStore::appsChanged, note("apps"));
    QObject::connect(store.get(), &ASOStore::competitorsChanged, note("competitors"));
    QObject::connect(store.get(), &ASOStore::stateRead, note("read"));
    QObject::connect(store.get(), &ASOStore::persistenceProblemChanged, note("problem"));
    retryPersistence();
    EXPECT_EQ(signalled,
              (QStringList{text("apps"), text("competitors"), text("read"), text("problem")}));
    EXPECT_TRUE(store->isStateRead());
    EXPECT_EQ(problem(), QString());
    EXPECT_EQ(store->trackedKeywords().constFirst().keyword, text("moon"));
    EXPECT_EQ(readWholeFile(path()), saved);
    add("tide");
    EXPECT_EQ(keywordsIn(readWholeFile(path())), (QStringList{text("moon"), text("tide")}));
    EXPECT_EQ(names(), QStringList{text("state.json")});
}

TEST_F(LateDisk, ItIsTriedEveryMinuteByItself)
{
    prepareDisk();
    openStore();
    clock->advance(Seconds(125));
    EXPECT_FALSE(store->isStateRead());
    bringDisk();
    clock->advance(Seconds(54));
    EXPECT_FALSE(store->isStateRead());
    clock->advance(Seconds(1));
    EXPECT_TRUE(store->isStateRead());
    EXPECT_EQ(clock->sleepers(), 1) << "the store looks at the clock";
}

TEST_F(LateDisk, AnEmptyFolderInThePlaceOfTheDiskIsNotTheDisk)
{
    prepareDisk();
    openStore();
    QDir().mkpath(disk());
    testing::internal::CaptureStdout();
    clock->advance(Seconds(60));
    testing::internal::GetCapturedStdout();
    EXPECT_FALSE(store->isStateRead());
    EXPECT_EQ(remedy(), Remedy::TryAgainOrBeginAnew);
    QDir().rmdir(disk());
    bringDisk();
    clock->advance(Seconds(60));
    EXPECT_EQ(store->trackedKeywords().size(), 1);
}

TEST_F(LateDisk, BeginningAnewKeepsTheOldFile)
{
    QDir().mkpath(disk());
    ASSERT_EQ(mkfifo(qPrintable(path()), 0600), 0);
    openStore();
    EXPECT_EQ(remedy(), Remedy::TryAgainOrBeginAnew);
    beginAnew();
    EXPECT_TRUE(store->isStateRead());
    EXPECT_EQ(remedy(), Remedy::Dismiss);
    EXPECT_TRUE(
        problem().endsWith(QStringLiteral("That file was kept as “%1”.")
                               .arg(disk() + text("/state.unreadable-2026-11-21T12-00-00Z.json"))))
        << qPrintable(problem());
    EXPECT_TRUE(keywordsIn(readWholeFile(path())).isEmpty());
    store->dismissPersistenceNotices();
    EXPECT_EQ(problem(), QString());
}

TEST_F(LateDisk, BeginningAnewMakesTheFolderThatIsMissing)
{
    openStore();
    beginAnew();
    EXPECT_TRUE(store->isStateRead());
    EXPECT_EQ(names(), QStringList{text("state.json")});
}

TEST_F(LateDisk, ALinkToAFileThatIsNotThereWaitsForItsDisk)
{
    prepareDisk();
    const QString link = folder.filePath(text("link.json"));
    ASSERT_TRUE(QFile::link(path(), link));
    ASOStore::Arguments changed = arguments();
    changed.persistenceURL = link;
    testing::internal::CaptureStdout();
    store = std::make_unique<ASOStore>(std::move(changed));
    testing::internal::GetCapturedStdout();
    EXPECT_TRUE(problem().contains(text("It is a link to a file that is not there.")));
    EXPECT_THROW(addApp(), StoreError);
    bringDisk();
    retryPersistence();
    add("tide");
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(keywordsIn(readWholeFile(path())), (QStringList{text("moon"), text("tide")}));
}

TEST_F(LateDisk, AFileThatAppearsUnderTheRunningProgramIsKept)
{
    // The folder was there, empty, before the disk came over it.
    prepareDisk();
    QDir().mkpath(disk());
    openStore();
    EXPECT_EQ(problem(), QString());
    QDir().rmdir(disk());
    bringDisk();
    add("tide");
    const QString kept = text("state.replaced-2026-11-21T12-00-00Z.json");
    EXPECT_EQ(names(), (QStringList{text("state.json"), kept}));
    EXPECT_EQ(readWholeFile(disk() + u'/' + kept), saved);
    EXPECT_EQ(keywordsIn(readWholeFile(path())), QStringList{text("tide")});
    EXPECT_EQ(remedy(), Remedy::Dismiss);
    EXPECT_EQ(problem(), QStringLiteral("The file “%1” was changed by something else while Veltrix "
                                        "was running. What it held was kept as “%2”.\nThe folder "
                                        "“%3” is another one than before: it was moved, or its "
                                        "disk came or went. Veltrix saves to the one that is there "
                                        "now.")
                             .arg(path(), disk() + u'/' + kept, disk()));
}

TEST_F(LateDisk, ABackupRestoredUnderTheRunningProgramIsKeptOnce)
{
    prepareDisk();
    bringDisk();
    openStore();
    add("tide");
    // In place and by renaming, as restoring programs do.
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(saved);
    file.close();
    add("harbour");
    EXPECT_EQ(names().size(), 2);
    EXPECT_EQ(readWholeFile(disk() + text("/state.replaced-2026-11-21T12-00-00Z.json")), saved);
    writeFileAtomically(path(), saved);
    add("lantern");
    EXPECT_EQ(names().size(), 3);
    EXPECT_EQ(readWholeFile(disk() + text("/state.replaced-2026-11-21T12-00-00Z-2.json")), saved);
    // What Veltrix itself has written is not kept.
    add("sail");
    EXPECT_EQ(names().size(), 3);
    EXPECT_EQ(keywordsIn(readWholeFile(path())).size(), 5);
}

TEST_F(LateDisk, ASecondNameAndOtherRightsAreNoChange)
{
    prepareDisk();
    bringDisk();
    openStore();
    ASSERT_EQ(chmod(qPrintable(path()), 0640), 0);
    ASSERT_EQ(link(qPrintable(path()), qPrintable(disk() + text("/backup.json"))), 0);
    add("tide");
    EXPECT_EQ(problem(), QString());
    EXPECT_EQ(names(), (QStringList{text("backup.json"), text("state.json")}));
}

TEST_F(LateDisk, AnUnsavedChangeIsKnownAndSavedWithinAMinute)
{
    prepareDisk();
    bringDisk();
    openStore();
    takeDiskAway();
    add("tide");
    EXPECT_TRUE(store->hasUnsavedChange());
    EXPECT_EQ(remedy(), Remedy::TryAgain);
    bringDisk();
    testing::internal::CaptureStdout();
    clock->advance(Seconds(60));
    store->waitUntilSaved();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_FALSE(store->hasUnsavedChange());
    EXPECT_EQ(problem(), QString());
    EXPECT_EQ(keywordsIn(readWholeFile(path())), (QStringList{text("moon"), text("tide")}));
    EXPECT_EQ(clock->sleepers(), 1) << "the store looks at the clock";
}

TEST_F(LateDisk, AFailedMeasurementSaysThatKeywordsAreSavedOnlyWhenTheyAre)
{
    prepareDisk();
    bringDisk();
    openStore();
    client->fails = [](const QString &) {
        return true;
    };
    store->queueKeywordRefreshes(store->trackedKeywords());
    EXPECT_EQ(store->historyRefreshError(),
              text("Keywords are saved. Metrics couldn't be loaded; use Refresh to retry."));
    takeDiskAway();
    add("tide");
    store->queueKeywordRefreshes(store->trackedKeywords());
    EXPECT_EQ(store->historyRefreshError(),
              text("Metrics couldn't be loaded; use Refresh to retry."));
}

TEST_F(LateDisk, TheStoreMayGoWhileAChangeWaitsToBeSaved)
{
    prepareDisk();
    bringDisk();
    openStore();
    takeDiskAway();
    add("tide");
    stop();
    EXPECT_EQ(clock->sleepers(), 0);
}

TEST_F(LateDisk, AnotherFolderInThePlaceOfTheOldIsTold)
{
    prepareDisk();
    bringDisk();
    openStore();
    takeDiskAway();
    QDir().mkpath(disk());
    add("tide");
    EXPECT_EQ(keywordsIn(readWholeFile(path())), (QStringList{text("moon"), text("tide")}));
    EXPECT_EQ(readWholeFile(away() + text("/state.json")), saved);
    EXPECT_TRUE(problem().contains(text("was removed by something else"))) << qPrintable(problem());
    EXPECT_TRUE(problem().contains(text("is another one than before"))) << qPrintable(problem());
}

TEST_F(LateDisk, NothingIsSavedWhileAnotherHasTheFolder)
{
    prepareDisk();
    bringDisk();
    DataFolderLock lock(disk());
    ASSERT_EQ(lock.acquire(), DataFolderLock::Outcome::Acquired);
    openStore(&lock);
    // The lock's file goes, and another process takes the next.
    QFile::remove(disk() + text("/.veltrix.lock"));
    auto other = std::make_unique<DataFolderLock>(disk());
    ASSERT_EQ(other->acquire(), DataFolderLock::Outcome::Acquired);
    add("tide");
    EXPECT_EQ(problem(), QStringLiteral("The last change couldn’t be saved. Another Veltrix has "
                                        "opened the folder “%1”.")
                             .arg(disk()));
    EXPECT_EQ(readWholeFile(path()), saved);
    other.reset();
    retryPersistence();
    EXPECT_EQ(problem(), QString());
    EXPECT_EQ(keywordsIn(readWholeFile(path())), (QStringList{text("moon"), text("tide")}));
    EXPECT_EQ(DataFolderLock(disk()).acquire(), DataFolderLock::Outcome::HeldByAnother);
    stop();
}

TEST_F(LateDisk, TheLockIsTakenWhenTheFolderComes)
{
    prepareDisk();
    DataFolderLock lock(disk());
    EXPECT_EQ(lock.acquire(), DataFolderLock::Outcome::Unavailable);
    openStore(&lock);
    bringDisk();
    retryPersistence();
    EXPECT_EQ(problem(), QString());
    EXPECT_EQ(DataFolderLock(disk()).acquire(), DataFolderLock::Outcome::HeldByAnother);
    stop();
}

TEST_F(LateDisk, AFolderThatAnotherHasTakenMeanwhileIsNotRead)
{
    prepareDisk();
    DataFolderLock lock(disk());
    EXPECT_EQ(lock.acquire(), DataFolderLock::Outcome::Unavailable);
    openStore(&lock);
    bringDisk();
    DataFolderLock other(disk());
    ASSERT_EQ(other.acquire(), DataFolderLock::Outcome::Acquired);
    testing::internal::CaptureStdout();
    retryPersistence();
    testing::internal::GetCapturedStdout();
    EXPECT_FALSE(store->isStateRead());
    EXPECT_TRUE(problem().contains(text("Another Veltrix has opened the folder")));
    stop();
}

} // namespace
} // namespace veltrix
