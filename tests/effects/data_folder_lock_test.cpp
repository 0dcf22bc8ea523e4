// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/atomic_file.h"
#include "effects/data_folder_lock.h"
#include "store/helper_process.h"
#include "store/scratch_folder.h"
#include "support/task_outcome.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLocalSocket>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace veltrix
{
namespace
{

using Outcome = DataFolderLock::Outcome;
using Answer = DataFolderLock::OwnersAnswer;
using namespace std::chrono_literals;

class DataFolder : public testing::Test
{
protected:
    QString path(const char *name = "") const { return folder->filePath(QString::fromUtf8(name)); }

    std::unique_ptr<QTemporaryDir> folder = scratchFolder();
};

TEST_F(DataFolder, BelongsToOneAtATime)
{
    auto first = std::make_unique<DataFolderLock>(folder->path());
    DataFolderLock second(folder->path());
    EXPECT_EQ(first->acquire(), Outcome::Acquired);
    EXPECT_EQ(first->acquire(), Outcome::Acquired);
    EXPECT_EQ(second.acquire(), Outcome::HeldByAnother);
    first.reset();
    EXPECT_EQ(second.acquire(), Outcome::Acquired);
}

TEST_F(DataFolder, IsTakenAgainWhenTheFileOfTheLockWasRemoved)
{
    DataFolderLock lock(folder->path());
    ASSERT_EQ(lock.acquire(), Outcome::Acquired);
    ASSERT_TRUE(QFile::remove(path(".veltrix.lock")));
    EXPECT_EQ(lock.acquire(), Outcome::Acquired);
    EXPECT_EQ(DataFolderLock(folder->path()).acquire(), Outcome::HeldByAnother);
    // A second start finds this one, too.
    EXPECT_TRUE(QFileInfo::exists(QString::fromUtf8(readWholeFile(path(".veltrix.lock")))));
}

TEST_F(DataFolder, ThatWasMovedIsHeldNoLongerButTheOneInItsPlaceIs)
{
    QDir().mkpath(path("data"));
    DataFolderLock lock(path("data"));
    ASSERT_EQ(lock.acquire(), Outcome::Acquired);
    ASSERT_TRUE(QDir().rename(path("data"), path("moved")));
    EXPECT_EQ(lock.acquire(), Outcome::Unavailable);
    EXPECT_TRUE(lock.warning().has_value());
    QDir().mkpath(path("data"));
    EXPECT_EQ(lock.acquire(), Outcome::Acquired);
    EXPECT_EQ(lock.warning(), std::nullopt);
    EXPECT_EQ(DataFolderLock(path("data")).acquire(), Outcome::HeldByAnother);
    EXPECT_EQ(DataFolderLock(path("moved")).acquire(), Outcome::Acquired);
}

TEST_F(DataFolder, IsTheSameByAnyNameButAnotherFolderIsFree)
{
    QDir().mkpath(path("data"));
    QDir().mkpath(path("other"));
    ASSERT_TRUE(QFile::link(path("data"), path("link")));
    DataFolderLock first(path("data"));
    DataFolderLock byLink(path("link"));
    DataFolderLock byDetour(path("other/../data/"));
    DataFolderLock other(path("other"));
    EXPECT_EQ(first.acquire(), Outcome::Acquired);
    EXPECT_EQ(byLink.acquire(), Outcome::HeldByAnother);
    EXPECT_EQ(byDetour.acquire(), Outcome::HeldByAnother);
    EXPECT_EQ(other.acquire(), Outcome::Acquired);
}

TEST_F(DataFolder, ThatIsMissingCannotBeHeld)
{
    DataFolderLock lock(path("missing"));
    EXPECT_EQ(lock.acquire(), Outcome::Unavailable);
    EXPECT_EQ(lock.askOwnerToRaise(0ms), Answer::None);
}

TEST_F(DataFolder, ASecondProcessAsksTheFirstToShowItself)
{
    HelperProcess first({QStringLiteral("hold-folder"), folder->path()});
    ASSERT_EQ(first.readLine(), QStringLiteral("acquired"));
    for (int start = 0; start < 3; ++start) {
        DataFolderLock second(folder->path());
        EXPECT_EQ(second.acquire(), Outcome::HeldByAnother);
        EXPECT_EQ(second.askOwnerToRaise(10s), Answer::Raised);
        EXPECT_EQ(first.readLine(), QStringLiteral("raise"));
    }
}

TEST_F(DataFolder, ASecondStartWaitsForAFirstThatIsStillStarting)
{
    DataFolderLock first(folder->path());
    ASSERT_EQ(first.acquire(), Outcome::Acquired);
    int raised = 0;
    QObject::connect(&first, &DataFolderLock::raiseRequested, [&] { ++raised; });
    // The first does not turn its event loop until the second has waited a while.
    Answer answered = Answer::None;
    std::thread second([&] { answered = DataFolderLock(folder->path()).askOwnerToRaise(10s); });
    std::this_thread::sleep_for(100ms);
    QElapsedTimer timer;
    timer.start();
    while (raised == 0 && timer.elapsed() < 10'000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    second.join();
    EXPECT_EQ(raised, 1);
    EXPECT_EQ(answered, Answer::Raised);
}

TEST_F(DataFolder, ASecondStartSaysWhatTheWindowIsToShow)
{
    DataFolderLock first(folder->path());
    ASSERT_EQ(first.acquire(), Outcome::Acquired);
    QList<QByteArray> views;
    QObject::connect(&first, &DataFolderLock::raiseRequested,
                     [&](const QByteArray &view) { views.append(view); });
    for (const QByteArray &view : {QByteArray("overview"), QByteArray()}) {
        const auto before = views.size();
        std::thread second([&] {
            EXPECT_EQ(DataFolderLock(folder->path()).askOwnerToRaise(10s, view), Answer::Raised);
        });
        waitFor([&] { return views.size() > before; });
        second.join();
    }
    EXPECT_EQ(views, (QList<QByteArray>{"overview", ""}));
}

TEST_F(DataFolder, AFirstThatNeverAnswersDoesNotHoldUpASecondForLong)
{
    DataFolderLock first(folder->path());
    ASSERT_EQ(first.acquire(), Outcome::Acquired);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(DataFolderLock(folder->path()).askOwnerToRaise(150ms), Answer::None);
    EXPECT_GE(timer.elapsed(), 140);
    EXPECT_LT(timer.elapsed(), 5'000);
}

TEST_F(DataFolder, AFirstWithoutAWindowMakesRoom)
{
    auto first = std::make_unique<DataFolderLock>(folder->path());
    ASSERT_EQ(first->acquire(), Outcome::Acquired);
    first->makeRoomWhenAsked();
    QObject::connect(
        first.get(), &DataFolderLock::raiseRequested, first.get(), [&first] { first.reset(); },
        Qt::QueuedConnection);
    std::atomic<bool> isDone = false;
    Answer answered = Answer::None;
    std::thread second([&] {
        answered = DataFolderLock(folder->path()).askOwnerToRaise(10s);
        isDone = true;
    });
    waitFor([&] { return isDone && !first; });
    second.join();
    EXPECT_EQ(answered, Answer::MakesRoom);
    EXPECT_EQ(DataFolderLock(folder->path()).acquire(), Outcome::Acquired);
}

TEST_F(DataFolder, ACrashLeavesNothingThatBlocksTheNextStart)
{
    for (int i = 0; i < 3; ++i) {
        HelperProcess crashing({QStringLiteral("hold-folder"), folder->path()});
        ASSERT_EQ(crashing.readLine(), QStringLiteral("acquired"));
        crashing.kill();
    }
    EXPECT_TRUE(QFile::exists(path(".veltrix.lock")));
    EXPECT_EQ(DataFolderLock(folder->path()).askOwnerToRaise(50ms), Answer::None);

    HelperProcess next({QStringLiteral("hold-folder"), folder->path()});
    EXPECT_EQ(next.readLine(), QStringLiteral("acquired"));
    EXPECT_EQ(DataFolderLock(folder->path()).askOwnerToRaise(10s), Answer::Raised);
    EXPECT_EQ(next.readLine(), QStringLiteral("raise"));
}

TEST_F(DataFolder, OtherWordsOnTheSocketAreIgnored)
{
    DataFolderLock lock(folder->path());
    ASSERT_EQ(lock.acquire(), Outcome::Acquired);
    int raised = 0;
    QObject::connect(&lock, &DataFolderLock::raiseRequested, [&] { ++raised; });
    const QString server = QString::fromUtf8(readWholeFile(path(".veltrix.lock")));
    QLocalSocket stranger;
    stranger.connectToServer(server);
    ASSERT_TRUE(stranger.waitForConnected(5'000));
    stranger.write("erase everything\n");
    QElapsedTimer timer;
    timer.start();
    while (stranger.state() != QLocalSocket::UnconnectedState && timer.elapsed() < 10'000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_EQ(stranger.state(), QLocalSocket::UnconnectedState);
    EXPECT_EQ(stranger.readAll(), QByteArray());
    EXPECT_EQ(raised, 0);
}

TEST_F(DataFolder, ItsSocketIsForItsUserAlone)
{
    DataFolderLock lock(folder->path());
    ASSERT_EQ(lock.acquire(), Outcome::Acquired);
    const QFileInfo socket(QString::fromUtf8(readWholeFile(path(".veltrix.lock"))));
    ASSERT_TRUE(socket.exists());
    EXPECT_EQ(socket.permissions() &
                  (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
              QFile::Permissions());
}

} // namespace
} // namespace veltrix
