// SPDX-License-Identifier: GPL-3.0-or-later
// What the state file holds, how it is read, and what happens to one that cannot be.
#include "effects/atomic_file.h"
#include "json/json_reader.h"
#include "store/store_fixture.h"

#include <QDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

class StateFileTest : public StoreTest
{
protected:
    /// What starting the store on these bytes prints.
    std::string startOn(const QByteArray &bytes)
    {
        stop();
        writeFileAtomically(statePath(), bytes);
        return startAndPrint();
    }
    std::string startAndPrint()
    {
        testing::internal::CaptureStdout();
        start();
        return testing::internal::GetCapturedStdout();
    }
    [[nodiscard]] QStringList entries() const
    {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    [[nodiscard]] bool isEmpty() const
    {
        return store->apps().isEmpty() && store->trackedKeywords().isEmpty() &&
               store->snapshots().empty() && store->competitors().isEmpty();
    }
};

constexpr const char *emptyState =
    R"({"apps":[],"trackedKeywords":[],"snapshots":[],"competitors":[]})";
constexpr const char *twoApps = R"({"apps":[
    {"id":"00000000-0000-0000-0000-000000000001","trackId":11,"appName":"Tideline","platform":"iPhone","country":"US","sortOrder":5},
    {"id":"00000000-0000-0000-0000-000000000002","trackId":12,"appName":"Moon Phase","platform":"iPhone","country":"DE","sortOrder":2}],
    "trackedKeywords":[],"snapshots":[]})";

TEST_F(StateFileTest, NoFileIsAnEmptyStoreWithoutAWord)
{
    EXPECT_EQ(startAndPrint(), "");
    EXPECT_TRUE(isEmpty());
    EXPECT_EQ(problem(), QString());
    EXPECT_EQ(entries(), QStringList());
}

TEST_F(StateFileTest, FourEmptyListsAreAnEmptyStore)
{
    EXPECT_EQ(startOn(emptyState), "");
    EXPECT_TRUE(isEmpty());
    EXPECT_EQ(problem(), QString());
}

TEST_F(StateFileTest, AllFourListsAreAlwaysWritten)
{
    store->removeApp(addApp().id);
    EXPECT_EQ(stateBytes(), emptyState);
}

TEST_F(StateFileTest, AMissingListMakesTheFileUnreadableButCompetitorsMayBeMissing)
{
    EXPECT_EQ(startOn(R"({"apps":[],"trackedKeywords":[],"snapshots":[]})"), "");
    EXPECT_EQ(startOn(R"({"apps":[],"trackedKeywords":[],"snapshots":[],"competitors":null})"), "");
    const std::string missing =
        "ASOStore load failed: The data couldn’t be read: at “%” a required "
        "value is missing.\n";
    const auto about = [&](const char *key) {
        return std::string(missing).replace(missing.find('%'), 1, key);
    };
    EXPECT_EQ(startOn(R"({"trackedKeywords":[],"snapshots":[],"competitors":[]})"), about("apps"));
    EXPECT_EQ(startOn(R"({"apps":[],"snapshots":[],"competitors":[]})"), about("trackedKeywords"));
    EXPECT_EQ(startOn(R"({"apps":[],"trackedKeywords":[],"competitors":[]})"), about("snapshots"));
    EXPECT_EQ(startOn(R"({"apps":[],"trackedKeywords":null,"snapshots":[]})"),
              "ASOStore load failed: The data couldn’t be read: at “trackedKeywords” a list was "
              "expected.\n");
}

TEST_F(StateFileTest, AFileWithoutCompetitorsGetsThemWithTheNextSave)
{
    startOn(R"({"apps":[],"trackedKeywords":[],"snapshots":[]})");
    addApp();
    EXPECT_TRUE(stateBytes().contains(R"("competitors":[])"));
    stateOnDisk();
}

TEST_F(StateFileTest, AppsAreNumberedInTheOrderOfTheFile)
{
    startOn(twoApps);
    ASSERT_EQ(store->apps().size(), 2);
    EXPECT_EQ(store->apps()[0].appName, text("Tideline"));
    EXPECT_EQ(store->apps()[0].sortOrder, 0);
    EXPECT_EQ(store->apps()[1].sortOrder, 1);
}

TEST_F(StateFileTest, TheStateOnDiskIsTheStateInMemoryAfterEveryOperation)
{
    const AppProfile app = addApp(1, "Tideline");
    stateOnDisk();
    const TrackedKeyword keyword = addKeyword("moon phase");
    stateOnDisk();
    measure(keyword);
    EXPECT_EQ(stateOnDisk().snapshots.size(), 1U);
    store->addCompetitor(appResult(7, "Harbour Clock"), app.id, text("us"));
    EXPECT_EQ(stateOnDisk().competitors.size(), 1);
    discovery->found = appResult(7, "Harbour Clock");
    discovery->found->sellerName = text("Quayside Ltd");
    const QUuid competitor = store->competitors().constFirst().id;
    const Outcome<Done> updated(
        finished(store->updateCompetitorSeller(competitor, view.get_token())));
    EXPECT_TRUE(updated.hasValue());
    EXPECT_EQ(stateOnDisk().competitors.constFirst().sellerName, text("Quayside Ltd"));
    store->removeCompetitor(competitor);
    stateOnDisk();
    store->removeKeyword(keyword.id);
    EXPECT_TRUE(stateOnDisk().snapshots.empty());
    store->removeApp(app.id);
    stateOnDisk();
}

TEST_F(StateFileTest, ARestartFindsEverythingAgain)
{
    measure(addKeyword("moon phase"));
    store->addCompetitor(appResult(7, "Harbour Clock"), store->apps().constFirst().id, text("us"));
    const QByteArray before = stateBytes();
    start();
    EXPECT_EQ(store->snapshots().size(), 1U);
    stateOnDisk();
    store->addTrackedKeyword(store->apps().constFirst().id, text("tide"), text("US"));
    store->removeKeyword(store->trackedKeywords().constLast().id);
    EXPECT_EQ(stateBytes(), before);
}

TEST_F(StateFileTest, ATruncatedFileIsReportedKeptAndReplaced)
{
    const QByteArray damaged = QByteArray(twoApps).left(200);
    const std::string line = startOn(damaged);
    EXPECT_EQ(line.rfind("ASOStore load failed: ", 0), 0U) << line;
    EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
    EXPECT_TRUE(isEmpty());
    EXPECT_EQ(problem(),
              QStringLiteral("The saved data in “%1” couldn’t be read, so Veltrix started without "
                             "it. The file will be kept under another name before anything is "
                             "saved.")
                  .arg(statePath()));
    // Nothing was saved, so nothing was copied.
    EXPECT_EQ(entries(), QStringList{text("state.json")});

    int announced = 0;
    QObject::connect(store.get(), &ASOStore::persistenceProblemChanged, [&] { ++announced; });
    addApp();
    const QString kept = text("state.unreadable-2026-11-21T12-00-00Z.json");
    EXPECT_EQ(entries(), (QStringList{text("state.json"), kept}));
    EXPECT_EQ(readWholeFile(folder.filePath(kept)), damaged);
    EXPECT_EQ(stateOnDisk().apps.size(), 1);
    EXPECT_EQ(problem(),
              QStringLiteral("The saved data in “%1” couldn’t be read, so Veltrix started without "
                             "it. That file was kept as “%2”.")
                  .arg(statePath(), folder.filePath(kept)));
    EXPECT_EQ(announced, 1);

    addKeyword("tide");
    EXPECT_EQ(entries().size(), 2);
    EXPECT_EQ(announced, 1);
    EXPECT_EQ(startAndPrint(), "");
    EXPECT_EQ(problem(), QString());
}

TEST_F(StateFileTest, TwoUnreadableFilesOfOneSecondAreBothKept)
{
    startOn("first");
    addApp();
    startOn("second");
    addApp();
    EXPECT_EQ(readWholeFile(folder.filePath(text("state.unreadable-2026-11-21T12-00-00Z.json"))),
              "first");
    EXPECT_EQ(readWholeFile(folder.filePath(text("state.unreadable-2026-11-21T12-00-00Z-2.json"))),
              "second");
}

TEST_F(StateFileTest, AnUnreadableFileThatIsGoneByTheFirstSaveNeedsNoCopy)
{
    startOn("damaged");
    QFile::remove(statePath());
    addApp();
    EXPECT_EQ(entries(), QStringList{text("state.json")});
}

TEST_F(StateFileTest, ANumberThatIsNotFiniteFailsTheSaveAndKeepsFileAndMemory)
{
    const TrackedKeyword keyword = addKeyword("moon phase");
    const QByteArray before = stateBytes();
    clock->jumpTo(dateFromReferenceSeconds(std::numeric_limits<double>::infinity()));
    testing::internal::CaptureStdout();
    addKeyword("tide");
    EXPECT_EQ(
        testing::internal::GetCapturedStdout(),
        "ASOStore save failed: The data couldn’t be written: a number in it is not finite.\n");
    EXPECT_EQ(stateBytes(), before);
    EXPECT_EQ(store->trackedKeywords().size(), 2);
    EXPECT_EQ(problem(),
              text("The last change couldn’t be saved. The data couldn’t be written: a number in "
                   "it is not finite."));

    // The next save that works takes the problem away.
    store->removeKeyword(store->trackedKeywords().constLast().id);
    EXPECT_EQ(problem(), QString());
    stateOnDisk();
}

TEST_F(StateFileTest, TheLeftoversOfAnInterruptedSaveAreClearedAtStart)
{
    addApp();
    for (const char *name : {".state.json.0a1b2c3d.tmp", ".state.json.ffffffff.tmp"})
        writeFileAtomically(folder.filePath(text(name)), "half a st");
    // Not ours: other files of similar names stay.
    for (const char *name : {".state.json.backup.tmp", ".other.json.0a1b2c3d.tmp", "x.tmp"})
        writeFileAtomically(folder.filePath(text(name)), "keep");
    start();
    EXPECT_EQ(entries(),
              (QStringList{text(".other.json.0a1b2c3d.tmp"), text(".state.json.backup.tmp"),
                           text("state.json"), text("x.tmp")}));
}

TEST_F(StateFileTest, ALinkToTheStateFileIsFollowedWhenReading)
{
    const QString real = folder.filePath(text("real.json"));
    writeFileAtomically(real, twoApps);
    ASSERT_TRUE(QFile::link(real, statePath()));
    EXPECT_EQ(startAndPrint(), "");
    EXPECT_EQ(store->apps().size(), 2);
}

} // namespace
} // namespace veltrix
