// SPDX-License-Identifier: GPL-3.0-or-later
// The saving thread: what is handed over, what is merged, what is told, and how it ends.
#include "effects/atomic_file.h"
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "store/aso_store.h"
#include "store/scratch_folder.h"
#include "support/task_outcome.h"

#include <QDir>

#include <future>

namespace veltrix
{
namespace
{

PersistedState stateOf(const char *app)
{
    PersistedState state;
    state.apps.append(AppProfile{});
    state.apps.last().appName = QString::fromUtf8(app);
    return state;
}

/// A snapshot that holds up whoever frees it until it may go.
class HeldSnapshot
{
public:
    SharedSnapshot take()
    {
        return {new KeywordSnapshot, [this](const KeywordSnapshot *snapshot) {
                    m_freedBy = std::this_thread::get_id();
                    m_reached.set_value();
                    m_released.get_future().wait();
                    delete snapshot;
                }};
    }
    /// Waits until somebody wants to free it.
    void waitUntilReached() { m_reached.get_future().wait(); }
    void release() { m_released.set_value(); }
    [[nodiscard]] std::thread::id freedBy() const { return m_freedBy; }

private:
    std::promise<void> m_reached;
    std::promise<void> m_released;
    std::thread::id m_freedBy;
};

class StateSaverTest : public testing::Test
{
protected:
    StateSaverTest() { load(); }

    void load()
    {
        saver = std::make_unique<StateSaver>(path(), nullptr, ASOStore::usualStateFileLimit);
        saver->load();
        QObject::connect(saver.get(), &StateSaver::saved, [this] {
            ++saves;
            toldBy = std::this_thread::get_id();
        });
    }
    [[nodiscard]] QString path() const { return folder->filePath(QStringLiteral("state.json")); }
    [[nodiscard]] QString appOnDisk() const
    {
        const auto state = fromJson<PersistedState>(readWholeFile(path()));
        return state.apps.isEmpty() ? QString() : state.apps.constFirst().appName;
    }
    void save(const char *app) { saver->save({.state = stateOf(app), .now = now}); }
    /// Hands over a state with which the saving thread is not done before it is released.
    void saveHeld(const char *app)
    {
        PersistedState state = stateOf(app);
        state.snapshots.push_back(held.take());
        saver->save({.state = std::move(state), .now = now});
        held.waitUntilReached();
    }

    const Date now = startOfUtcDay(9'000);
    std::unique_ptr<QTemporaryDir> folder = scratchFolder();
    HeldSnapshot held;
    std::unique_ptr<StateSaver> saver;
    int saves = 0;
    std::thread::id toldBy;
};

TEST_F(StateSaverTest, SavesAndFreesOnAThreadOfItsOwnAndTellsOnThisOne)
{
    saveHeld("Tideline");
    EXPECT_NE(held.freedBy(), std::this_thread::get_id());
    EXPECT_EQ(appOnDisk(), QStringLiteral("Tideline"));
    EXPECT_EQ(saves, 0);
    held.release();
    waitFor([this] { return saves == 1; });
    EXPECT_EQ(toldBy, std::this_thread::get_id());
}

TEST_F(StateSaverTest, ANewerStateTakesThePlaceOfTheOneThatWaits)
{
    saveHeld("first");
    save("second");
    const Outcome<Done> second(finished(saver->finished({})));
    save("third");
    EXPECT_EQ(appOnDisk(), QStringLiteral("first"));
    held.release();
    saver->waitUntilFinished();
    EXPECT_EQ(appOnDisk(), QStringLiteral("third"));
    EXPECT_TRUE(second.isDone());
    // The first may have been told together with the third.
    EXPECT_GE(saves, 1);
    EXPECT_LE(saves, 2);
}

TEST_F(StateSaverTest, FinishedIsWhatWasHandedOverBeforeItWasAsked)
{
    const Outcome<Done> nothing(finished(saver->finished({})));
    EXPECT_TRUE(nothing.isDone());
    saveHeld("first");
    const Outcome<Done> first(finished(saver->finished({})));
    EXPECT_FALSE(first.isDone());
    held.release();
    waitFor([&] { return first.isDone(); });
    EXPECT_EQ(saves, 1);
}

TEST_F(StateSaverTest, WhoeverWaitsIsStoppedByHisTokenAndWhenTheSaverGoes)
{
    saveHeld("first");
    std::stop_source own;
    const Outcome<Done> stopped(finished(saver->finished(own.get_token())));
    const Outcome<Done> left(finished(saver->finished({})));
    own.request_stop();
    EXPECT_TRUE(stopped.isCancelled());
    EXPECT_FALSE(left.isDone());
    held.release();
    saver.reset();
    EXPECT_TRUE(left.isCancelled());
}

TEST_F(StateSaverTest, EndsWithEverythingOnDisk)
{
    for (int round = 0; round < 20; ++round) {
        save("before");
        save("last");
        saver.reset();
        ASSERT_EQ(appOnDisk(), QStringLiteral("last"));
        QFile::remove(path());
        load();
    }
}

TEST_F(StateSaverTest, AFailedSaveIsToldAndTheNextHeals)
{
    ASSERT_TRUE(QDir().rename(folder->path(), folder->path() + QStringLiteral(".away")));
    testing::internal::CaptureStdout();
    save("moon");
    saver->waitUntilFinished();
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(printed.starts_with("ASOStore save failed: ")) << printed;
    EXPECT_TRUE(saver->hasUnsavedChange());
    ASSERT_TRUE(saver->problem());
    EXPECT_EQ(saver->problem()->remedy, PersistenceProblem::Remedy::TryAgain);
    ASSERT_TRUE(QDir().rename(folder->path() + QStringLiteral(".away"), folder->path()));
    save("moon");
    saver->waitUntilFinished();
    EXPECT_FALSE(saver->hasUnsavedChange());
    EXPECT_EQ(appOnDisk(), QStringLiteral("moon"));
}

TEST_F(StateSaverTest, ANoticeThatIsDismissedWhileASaveRunsGoesWithIt)
{
    save("mine");
    saver->waitUntilFinished();
    writeFileAtomically(path(), toJson(stateOf("foreign")));
    saveHeld("mine again");
    saver->dismissNotices();
    held.release();
    saver->waitUntilFinished();
    EXPECT_FALSE(saver->problem()) << qPrintable(saver->problem()->text);
    // And one that is there goes at once.
    writeFileAtomically(path(), toJson(stateOf("foreign")));
    save("mine");
    saver->waitUntilFinished();
    ASSERT_TRUE(saver->problem());
    saver->dismissNotices();
    EXPECT_FALSE(saver->problem());
}

} // namespace
} // namespace veltrix
