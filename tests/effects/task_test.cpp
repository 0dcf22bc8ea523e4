// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/one_shot.h"
#include "effects/system_clock.h"
#include "effects/task_scope.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"
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

/// An object whose coroutine others await; it touches its object before and after its wait, also
/// when it is stopped.
class Counting
{
public:
    explicit Counting(Clock &clock) : m_clock(clock) {}

    Task<int> countAfter(Seconds duration, std::stop_token callersStop)
    {
        const ScopedStop stop(m_tasks, callersStop);
        try {
            co_await m_clock.sleep(duration, stop);
        } catch (const Cancelled &) {
            ++m_stopped;
            throw;
        }
        co_return ++m_count;
    }

    [[nodiscard]] int stopped() const { return m_stopped; }
    [[nodiscard]] int running() const { return m_tasks.runningTasks(); }
    void stop() { m_tasks.stop(); }

private:
    Clock &m_clock;
    int m_count = 0;
    int m_stopped = 0;
    TaskScope m_tasks;
};

class ScopedStopTest : public testing::Test
{
protected:
    Outcome<int> count(const std::stop_source &whose)
    {
        return Outcome<int>(object->countAfter(Seconds(1), whose.get_token()));
    }

    VirtualClock clock;
    std::stop_source first;
    std::stop_source second;
    std::unique_ptr<Counting> object = std::make_unique<Counting>(clock);
};

TEST_F(ScopedStopTest, ACallersStopEndsHisCallAndNoOther)
{
    const auto one = count(first);
    const auto two = count(second);
    EXPECT_EQ(object->running(), 2);
    first.request_stop();
    EXPECT_TRUE(one.isCancelled());
    EXPECT_FALSE(two.isDone());
    clock.advance(Seconds(1));
    EXPECT_EQ(two.value(), 1);
    EXPECT_EQ(object->running(), 0);
    EXPECT_EQ(object->stopped(), 1);
}

TEST_F(ScopedStopTest, TheObjectMayGoWhileSeveralAwaitIt)
{
    const auto one = count(first);
    const auto two = count(first);
    const auto three = count(second);
    object.reset();
    for (const auto *call : {&one, &two, &three})
        EXPECT_TRUE(call->isCancelled());
    EXPECT_EQ(clock.sleepers(), 0);
    first.request_stop();
}

TEST_F(ScopedStopTest, AStopOfTheScopeEndsEveryCallAndLaterOnesRun)
{
    const auto one = count(first);
    object->stop();
    EXPECT_TRUE(one.isCancelled());
    const auto two = count(first);
    clock.advance(Seconds(1));
    EXPECT_EQ(two.value(), 1);
}

TEST_F(ScopedStopTest, ACallerWhoIsStoppedAlreadyWaitsForNothing)
{
    first.request_stop();
    EXPECT_TRUE(count(first).isCancelled());
    EXPECT_EQ(object->running(), 0);
}

/// A caller that ends the object that it called as soon as it has its answer, or is stopped.
Task<int> countAndDrop(std::unique_ptr<Counting> *object, std::stop_token stop)
{
    std::exception_ptr stopped;
    int value = 0;
    try {
        value = co_await (*object)->countAfter(Seconds(1), stop);
    } catch (const Cancelled &) {
        stopped = std::current_exception();
    }
    object->reset();
    if (stopped)
        std::rethrow_exception(stopped);
    co_return value;
}

TEST_F(ScopedStopTest, ACallerMayEndTheObjectWhenItsCallHasEnded)
{
    const Outcome<int> answered(countAndDrop(&object, first.get_token()));
    clock.advance(Seconds(1));
    EXPECT_EQ(answered.value(), 1);
    object = std::make_unique<Counting>(clock);
    const Outcome<int> stopped(countAndDrop(&object, first.get_token()));
    first.request_stop();
    EXPECT_TRUE(stopped.isCancelled());
}

TEST_F(ScopedStopTest, ACallersOwnerMayGoFirst)
{
    struct Caller {
        Task<void> call(Counting *object, std::stop_token stop)
        {
            sum += co_await object->countAfter(Seconds(1), stop);
        }
        int sum = 0;
        TaskScope tasks;
    };
    auto caller = std::make_unique<Caller>();
    caller->tasks.own(caller->call(object.get(), caller->tasks.token()));
    caller.reset();
    EXPECT_EQ(object->stopped(), 1);
    EXPECT_EQ(object->running(), 0);
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
