// SPDX-License-Identifier: GPL-3.0-or-later
// The window's thread never waits for a disk to flush, whatever the store does.
#include "effects/atomic_file.h"
#include "effects/background_file.h"
#include "store/store_fixture.h"
#include "support/flush_watch.h"

#include <QDir>

#include <sys/stat.h>

namespace veltrix
{
namespace
{

class Flush : public StoreTest
{
protected:
    Flush() { stop(); }
    ~Flush() override { stop(); }

    void restart()
    {
        stop();
        ASOStore::Arguments changed = arguments();
        changed.stateFileLimit = 20'000;
        testing::internal::CaptureStdout();
        store = std::make_unique<ASOStore>(std::move(changed));
        clock->advance(ASOStore::historyTidyingDelay);
        testing::internal::GetCapturedStdout();
    }
    void finish()
    {
        store->waitUntilSaved();
        waitFor([this] { return !store->historyMove(); });
    }
    void measureDaily(const TrackedKeyword &keyword, int days)
    {
        for (int day = 0; day < days; ++day) {
            clock->advance(Seconds(secondsPerDay));
            measure(keyword);
        }
        finish();
    }
    /// None on this thread since the last time, and some elsewhere.
    static void expectNoneHere(const char *what)
    {
        const Flushes flushes = endFlushWatch();
        EXPECT_EQ(flushes.onWatchedThread, 0) << what;
        EXPECT_GT(flushes.elsewhere, 0) << what;
        beginFlushWatch();
    }
};

TEST_F(Flush, IsNeverOnTheMainThread)
{
    beginFlushWatch();
    writeFileAtomically(folder.filePath(text("here")), "x");
    EXPECT_EQ(endFlushWatch().onWatchedThread, 2) << "the file and its folder: they are seen";

    beginFlushWatch();
    restart();
    const TrackedKeyword moon = addKeyword("moon");
    expectNoneHere("a first start and a keyword");
    measureDaily(moon, 40);
    ASSERT_TRUE(QFileInfo::exists(folder.filePath(text("history.sqlite"))));
    expectNoneHere("moving to the history");
    RemovedTracking removed = store->removeKeyword(moon.id);
    finish();
    expectNoneHere("a removal");
    store->restore(std::move(removed));
    finish();
    expectNoneHere("its undoing");
    removed = store->removeKeyword(moon.id);
    addKeyword("moon");
    store->restore(std::move(removed));
    finish();
    expectNoneHere("joining what was added anew");
    store->removeKeyword(store->trackedKeywords().constFirst().id);
    restart();
    finish();
    expectNoneHere("a start that finishes a removal");
}

TEST_F(Flush, IsNeverOnTheMainThreadWhenFilesAreKept)
{
    beginFlushWatch();
    restart();
    addKeyword("moon");
    endFlushWatch();
    writeFileAtomically(statePath(), stateBytes() + " ");
    beginFlushWatch();
    addKeyword("tide");
    expectNoneHere("keeping a file of something else");
    stop();
    endFlushWatch();
    writeFileAtomically(statePath(), "{");
    beginFlushWatch();
    restart();
    addKeyword("harbour");
    expectNoneHere("keeping a damaged file");
    stop();
    QFile::remove(statePath());
    ASSERT_EQ(mkfifo(qPrintable(statePath()), 0600), 0);
    restart();
    ASSERT_FALSE(store->isStateRead());
    int read = 0;
    QObject::connect(store.get(), &ASOStore::stateRead, [&] { ++read; });
    store->beginAnew();
    store->waitUntilSaved();
    EXPECT_TRUE(store->isStateRead());
    EXPECT_EQ(read, 1);
    expectNoneHere("beginning anew");
    endFlushWatch();
}

TEST_F(Flush, IsNeverOnTheMainThreadForAFileOfTheUsers)
{
    beginFlushWatch();
    BackgroundFile file(folder.filePath(text("export.csv")), std::make_shared<FileThread>());
    const auto rows = [] {
        return QByteArray("rows");
    };
    Outcome<Done> written(finished(file.write(rows, {})));
    EXPECT_TRUE(written.wait().hasValue());
    Outcome<Done> placed(finished(file.place({})));
    EXPECT_TRUE(placed.wait().hasValue());
    expectNoneHere("an exported file");
    endFlushWatch();
}

} // namespace
} // namespace veltrix
