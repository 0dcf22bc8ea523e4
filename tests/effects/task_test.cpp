// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/one_shot.h"
#include "effects/system_clock.h"
#include "effects/task_scope.h"
#include "support/json_printers.h"
#include "support/virtual_clock.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

Task<void> sleepAndNote(Clock *clock, Seconds duration, QStringList *notes, QString note,
                        std::stop_token stop)
{
    try {
        co_await clock->sleep(duration, stop);
        notes->append(note);
    } catch (const Cancelled &) {
        notes->append(note + QStringLiteral(" cancelled"));
        throw;
    }
}

TEST(VirtualClock, WakesSleepersInTheOrderOfTheirTimes)
{
    VirtualClock clock;
    QStringList notes;
    TaskScope scope;
    scope.own(sleepAndNote(&clock, Seconds(3), &notes, QStringLiteral("three"), scope.token()));
    scope.own(sleepAndNote(&clock, Seconds(1), &notes, QStringLiteral("one"), scope.token()));
    clock.advance(Seconds(0.999));
    EXPECT_TRUE(notes.isEmpty());
    clock.advance(Seconds(10));
    EXPECT_EQ(notes, (QStringList{QStringLiteral("one"), QStringLiteral("three")}));
    EXPECT_EQ(scope.runningTasks(), 0);
}

TEST(VirtualClock, TheSmallestWaitStillMovesTheClock)
{
    EXPECT_EQ(roundedUpToNanoseconds(Seconds(1e-12)), std::chrono::nanoseconds(1));
    EXPECT_EQ(roundedUpToNanoseconds(Seconds(0)), std::chrono::nanoseconds(0));
    EXPECT_EQ(roundedUpToNanoseconds(Seconds(-3)), std::chrono::nanoseconds(0));
    EXPECT_EQ(roundedUpToNanoseconds(Seconds(std::numeric_limits<double>::quiet_NaN())),
              std::chrono::nanoseconds(0));
    EXPECT_GT(roundedUpToNanoseconds(Seconds(1e300)), std::chrono::hours(1'000'000));
}

TEST(TaskScope, StoppingResumesEveryTaskAtOnceWithCancelled)
{
    VirtualClock clock;
    QStringList notes;
    {
        TaskScope scope;
        scope.own(sleepAndNote(&clock, Seconds(1), &notes, QStringLiteral("a"), scope.token()));
        scope.own(sleepAndNote(&clock, Seconds(2), &notes, QStringLiteral("b"), scope.token()));
        EXPECT_EQ(scope.runningTasks(), 2);
    }
    notes.sort();
    EXPECT_EQ(notes, (QStringList{QStringLiteral("a cancelled"), QStringLiteral("b cancelled")}));
    EXPECT_EQ(clock.sleepers(), 0);
}

TEST(TaskScope, TasksStartedAfterAStopRun)
{
    VirtualClock clock;
    QStringList notes;
    TaskScope scope;
    scope.own(sleepAndNote(&clock, Seconds(1), &notes, QStringLiteral("first"), scope.token()));
    scope.stop();
    scope.own(sleepAndNote(&clock, Seconds(1), &notes, QStringLiteral("second"), scope.token()));
    clock.advance(Seconds(1));
    EXPECT_EQ(notes, (QStringList{QStringLiteral("first cancelled"), QStringLiteral("second")}));
}

TEST(TaskScope, ATaskThatStartsUnderAStoppedTokenEndsCancelled)
{
    VirtualClock clock;
    QStringList notes;
    TaskScope scope;
    const std::stop_token stopped = scope.token();
    scope.stop();
    scope.own(sleepAndNote(&clock, Seconds(1), &notes, QStringLiteral("late"), stopped));
    EXPECT_EQ(notes, QStringList{QStringLiteral("late cancelled")});
}

/// An owner whose task touches it after every wake-up: under the address sanitizer this shows
/// whether anything runs on after the owner is gone.
struct Owner {
    explicit Owner(Clock &clockToUse) : clock(clockToUse) { scope.own(loop(scope.token())); }

    Task<void> loop(std::stop_token stop)
    {
        for (;;) {
            co_await clock.sleep(Seconds(1), stop);
            ++ticks;
        }
    }

    Clock &clock;
    int ticks = 0;
    TaskScope scope;
};

TEST(TaskScope, AnOwnerMayBeDestroyedWhileItsTaskIsSuspended)
{
    VirtualClock clock;
    auto owner = std::make_unique<Owner>(clock);
    clock.advance(Seconds(3));
    EXPECT_EQ(owner->ticks, 3);
    owner.reset();
    clock.advance(Seconds(3));
    EXPECT_EQ(clock.sleepers(), 0);
}

Task<void> waitFor(OneShot<int> shot, int *out, std::stop_token stop)
{
    *out = co_await shot.wait(stop);
}

TEST(OneShot, DeliversOnceAndIgnoresWhatComesLater)
{
    const OneShot<int> shot;
    int out = 0;
    TaskScope scope;
    scope.own(waitFor(shot, &out, scope.token()));
    shot.resolve(5);
    shot.resolve(6);
    EXPECT_EQ(out, 5);
    EXPECT_FALSE(shot.isOpen());
}

TEST(OneShot, AResultAfterTheStopIsIgnored)
{
    const OneShot<int> shot;
    int out = 0;
    TaskScope scope;
    scope.own(waitFor(shot, &out, scope.token()));
    scope.stop();
    shot.resolve(5);
    EXPECT_EQ(out, 0);
}

TEST(SystemClock, SleepsForRealAndCanBeStopped)
{
    SystemClock clock;
    QStringList notes;
    TaskScope scope;
    scope.own(sleepAndNote(&clock, Seconds(0.02), &notes, QStringLiteral("woke"), scope.token()));
    scope.own(sleepAndNote(&clock, Seconds(3600), &notes, QStringLiteral("hour"), scope.token()));
    QElapsedTimer timer;
    timer.start();
    while (notes.isEmpty() && timer.elapsed() < 10'000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_EQ(notes, QStringList{QStringLiteral("woke")});
    EXPECT_GE(timer.elapsed(), 19);
    scope.stop();
    EXPECT_EQ(notes.last(), QStringLiteral("hour cancelled"));
}

} // namespace
} // namespace veltrix
