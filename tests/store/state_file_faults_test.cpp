// SPDX-License-Identifier: GPL-3.0-or-later
// Disks that are full, folders that are closed or gone: a clear line, the old file, the state in
// memory, and everything saved as soon as it can be.
#include "effects/atomic_file.h"
#include "store/helper_process.h"
#include "store/store_fixture.h"

#include <QDir>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace veltrix
{
namespace
{

class StateFileFaults : public StoreTest
{
protected:
    StateFileFaults()
    {
        QDir().mkpath(dataFolder());
        start();
    }

    /// The store works in a folder below the test's own, which may be taken away.
    [[nodiscard]] QString dataFolder() const { return folder.filePath(text("data")); }
    [[nodiscard]] QString path() const { return folder.filePath(text("data/state.json")); }

    void start(const QString &statePath)
    {
        ASOStore::Arguments changed = arguments();
        changed.persistenceURL = statePath;
        store = std::make_unique<ASOStore>(std::move(changed));
    }
    void start() { start(path()); }

    /// What one more keyword prints.
    std::string printedByAdding(const char *keyword)
    {
        testing::internal::CaptureStdout();
        addKeyword(keyword);
        return testing::internal::GetCapturedStdout();
    }

    static std::string failed(const QString &description)
    {
        return QStringLiteral("ASOStore save failed: %1\n").arg(description).toStdString();
    }
    [[nodiscard]] QString unreadable(const char *reason) const
    {
        return QStringLiteral("The file “%1” could not be read: %2.").arg(path(), text(reason));
    }
    [[nodiscard]] QString unwritable(const char *reason) const
    {
        return QStringLiteral("The file “%1” could not be written: %2.").arg(path(), text(reason));
    }
};

TEST_F(StateFileFaults, ALimitHitHalfWayKeepsTheOldFileUntilASaveWorks)
{
    addKeyword("moon");
    const QByteArray before = readWholeFile(path());
    int announced = 0;
    QObject::connect(store.get(), &ASOStore::persistenceProblemChanged, [&] { ++announced; });

    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
    rlimit small = usual;
    small.rlim_cur = rlim_t(before.size() + 50);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::string first = printedByAdding("tide");
    const std::string second = printedByAdding("harbour");
    setrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, previousHandler);

    EXPECT_EQ(first, failed(unwritable("File too large")));
    EXPECT_EQ(second, first);
    EXPECT_EQ(readWholeFile(path()), before);
    EXPECT_EQ(store->trackedKeywords().size(), 3);
    EXPECT_EQ(
        problem(),
        QStringLiteral("The last change couldn’t be saved. %1").arg(unwritable("File too large")));
    EXPECT_EQ(announced, 1);

    EXPECT_EQ(printedByAdding("lantern"), "");
    EXPECT_EQ(problem(), QString());
    EXPECT_EQ(announced, 2);
    start();
    EXPECT_EQ(store->trackedKeywords().size(), 4);
}

TEST_F(StateFileFaults, AFullDiskKeepsTheOldFileAndLeavesNoOther)
{
    HelperProcess helper({text("fill-disk"), dataFolder()});
    const QStringList lines = helper.finish().split(u'\n', Qt::SkipEmptyParts);
    if (helper.exitCode() == helperCannot)
        GTEST_SKIP() << "this system lets no test mount a small disk";
    const QString reason = unwritable("No space left on device");
    ASSERT_EQ(lines.size(), 6) << qPrintable(lines.join(u'\n'));
    EXPECT_EQ(lines[0], text("ASOStore save failed: ") + reason);
    EXPECT_EQ(lines[1], text("problem: The last change couldn’t be saved. ") + reason);
    const int inMemory = lines[2].section(u' ', -1).toInt();
    EXPECT_GE(inMemory, 3);
    EXPECT_EQ(lines[3], text("file as before: 1"));
    EXPECT_EQ(lines[4].section(u' ', -1).toInt(), inMemory - 1);
    EXPECT_EQ(lines[5], text("files: state.json"));
}

TEST_F(StateFileFaults, AFolderThatMayNotBeWrittenIsReadAndLeftAlone)
{
    addKeyword("tide");
    const QByteArray before = readWholeFile(path());
    ASSERT_EQ(chmod(qPrintable(folder.path()), 0711), 0);
    ASSERT_EQ(chmod(qPrintable(dataFolder()), 0555), 0);
    ASSERT_EQ(chmod(qPrintable(path()), 0644), 0);
    HelperProcess helper({text("change-without-rights"), path()});
    const QString output = helper.finish();
    chmod(qPrintable(dataFolder()), 0755);
    if (helper.exitCode() == helperCannot)
        GTEST_SKIP() << "this system lets no test give up its rights";
    const QString reason = unwritable("Permission denied");
    // Said at the start, before anything could be lost.
    EXPECT_EQ(output, QStringLiteral("problem: Changes can’t be saved. %1\n"
                                     "keywords in memory: 1\n"
                                     "ASOStore save failed: %1\n"
                                     "problem: The last change couldn’t be saved. %1\n"
                                     "keywords in memory: 2\n")
                          .arg(reason));
    EXPECT_EQ(readWholeFile(path()), before);
    EXPECT_EQ(QDir(dataFolder()).entryList(QDir::Files | QDir::Hidden),
              QStringList{text("state.json")});
}

TEST_F(StateFileFaults, AFileThatMayNotBeReadIsLeftAloneAndNothingCanBeChanged)
{
    addKeyword("tide");
    const QByteArray before = readWholeFile(path());
    ASSERT_EQ(chmod(qPrintable(folder.path()), 0711), 0);
    ASSERT_EQ(chmod(qPrintable(dataFolder()), 0777), 0);
    ASSERT_EQ(chmod(qPrintable(path()), 0000), 0);
    HelperProcess helper({text("change-without-rights"), path()});
    const QString output = helper.finish();
    chmod(qPrintable(path()), 0600);
    if (helper.exitCode() == helperCannot)
        GTEST_SKIP() << "this system lets no test give up its rights";
    const QString reason = unreadable("Permission denied");
    const QString told =
        QStringLiteral("problem: The saved data couldn’t be loaded, so nothing can be shown or "
                       "changed yet. %1\nkeywords in memory: 0\n")
            .arg(reason);
    EXPECT_EQ(output, QStringLiteral("ASOStore load failed: %1\n").arg(reason) + told +
                          text("refused: Nothing can be added before the saved data has been "
                               "loaded.\n") +
                          told);
    EXPECT_EQ(readWholeFile(path()), before);
    EXPECT_EQ(QDir(dataFolder()).entryList(QDir::Files | QDir::Hidden),
              QStringList{text("state.json")});
}

TEST_F(StateFileFaults, AFolderThatMayNotBeEnteredLeavesItsFileAlone)
{
    addKeyword("tide");
    const QByteArray before = readWholeFile(path());
    ASSERT_EQ(chmod(qPrintable(folder.path()), 0711), 0);
    ASSERT_EQ(chmod(qPrintable(dataFolder()), 0000), 0);
    HelperProcess helper({text("change-without-rights"), path()});
    const QString output = helper.finish();
    chmod(qPrintable(dataFolder()), 0700);
    if (helper.exitCode() == helperCannot)
        GTEST_SKIP() << "this system lets no test give up its rights";
    EXPECT_TRUE(output.startsWith(text("ASOStore load failed: ") + unreadable("Permission denied")))
        << qPrintable(output);
    EXPECT_TRUE(output.contains(text("refused: "))) << qPrintable(output);
    EXPECT_EQ(readWholeFile(path()), before);
}

TEST_F(StateFileFaults, AFolderRemovedWhileRunningFailsSavesUntilItIsBack)
{
    addKeyword("moon");
    ASSERT_TRUE(QDir(dataFolder()).removeRecursively());
    EXPECT_EQ(printedByAdding("tide"), failed(unwritable("No such file or directory")));
    EXPECT_EQ(store->trackedKeywords().size(), 2);
    EXPECT_FALSE(QFileInfo::exists(dataFolder()));
    QDir().mkpath(dataFolder());
    EXPECT_EQ(printedByAdding("harbour"), "");
    EXPECT_TRUE(problem().contains(text("was removed by something else"))) << qPrintable(problem());
    start();
    EXPECT_EQ(store->trackedKeywords().size(), 3);
}

TEST_F(StateFileFaults, AStatePathThatIsAFolderIsNeitherReadNorReplaced)
{
    QDir().mkpath(path() + text("/inside"));
    testing::internal::CaptureStdout();
    start();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), QStringLiteral("ASOStore load failed: %1\n")
                                                          .arg(unreadable("It is not a file"))
                                                          .toStdString());
    EXPECT_THROW(addApp(), StoreError);
    store->beginAnew();
    store->waitUntilSaved();
    EXPECT_FALSE(store->isStateRead());
    EXPECT_TRUE(problem().contains(text("Beginning anew didn’t work."))) << qPrintable(problem());
    EXPECT_TRUE(QFileInfo(path() + text("/inside")).isDir());
    EXPECT_EQ(QDir(dataFolder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{text("state.json")});
}

TEST_F(StateFileFaults, AStatePathBelowAFileIsNotAMissingFile)
{
    const QString file = folder.filePath(text("file"));
    writeFileAtomically(file, "not a folder");
    testing::internal::CaptureStdout();
    start(file + text("/state.json"));
    EXPECT_NE(testing::internal::GetCapturedStdout().find("Not a directory"), std::string::npos);
    EXPECT_THROW(addApp(), StoreError);
    EXPECT_EQ(readWholeFile(file), "not a folder");
}

TEST_F(StateFileFaults, APipeInPlaceOfTheFileDoesNotHoldUpTheStart)
{
    ASSERT_EQ(mkfifo(qPrintable(path()), 0600), 0);
    testing::internal::CaptureStdout();
    start();
    EXPECT_NE(testing::internal::GetCapturedStdout().find("It is not a file"), std::string::npos);
    store->beginAnew();
    store->waitUntilSaved();
    EXPECT_EQ(printedByAdding("moon"), "");
    start();
    EXPECT_EQ(store->trackedKeywords().size(), 1);
}

} // namespace
} // namespace veltrix
