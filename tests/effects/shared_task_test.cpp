// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/shared_task.h"

#include "support/task_outcome.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace veltrix
{
namespace
{

class Failure final : public Error
{
public:
    Failure() : Error(QStringLiteral("It failed.")) {}
};

/// Notes how it ends; it lasts until the gate is opened.
Task<int> guarded(OneShot<int> gate, std::vector<QString> *ends, std::stop_token stop)
{
    try {
        const int value = co_await gate.wait(stop);
        ends->push_back(QString::number(value));
        co_return value;
    } catch (const Cancelled &) {
        ends->push_back(QStringLiteral("stopped"));
        throw;
    }
}

class SharedTaskTest : public testing::Test
{
protected:
    Outcome<int> join(const std::stop_source &whose)
    {
        SharedTask<int>::Start start = [this](std::stop_token stop) {
            ++starts;
            return guarded(gate, &ends, std::move(stop));
        };
        return Outcome<int>(task->join(std::move(start), whose.get_token()));
    }

    int starts = 0;
    OneShot<int> gate;
    std::vector<QString> ends;
    std::stop_source first;
    std::stop_source second;
    std::unique_ptr<SharedTask<int>> task = std::make_unique<SharedTask<int>>();
};

TEST_F(SharedTaskTest, RunsOnceForAllWhoAskAndGivesThemTheSameEnd)
{
    const auto one = join(first);
    const auto two = join(second);
    EXPECT_TRUE(task->isRunning());
    gate.resolve(7);
    EXPECT_EQ(one.value(), 7);
    EXPECT_EQ(two.value(), 7);
    EXPECT_EQ(starts, 1);
    EXPECT_FALSE(task->isRunning());
    EXPECT_TRUE(task->isSettled());
}

TEST_F(SharedTaskTest, AFailureReachesEveryone)
{
    const auto one = join(first);
    const auto two = join(second);
    gate.fail(std::make_exception_ptr(Failure()));
    EXPECT_EQ(one.failureText(), QStringLiteral("It failed."));
    EXPECT_EQ(two.failureText(), QStringLiteral("It failed."));
}

TEST_F(SharedTaskTest, WhoLeavesDoesNotStopItForTheOthers)
{
    const auto one = join(first);
    const auto two = join(second);
    first.request_stop();
    EXPECT_TRUE(one.isCancelled());
    EXPECT_TRUE(ends.empty());
    gate.resolve(7);
    EXPECT_EQ(two.value(), 7);
}

TEST_F(SharedTaskTest, StopsWhenNobodyWaitsForItAnyMore)
{
    const auto one = join(first);
    const auto two = join(second);
    first.request_stop();
    second.request_stop();
    EXPECT_TRUE(one.isCancelled());
    EXPECT_TRUE(two.isCancelled());
    EXPECT_EQ(ends, std::vector{QStringLiteral("stopped")});
    EXPECT_TRUE(task->isSettled());
}

TEST_F(SharedTaskTest, StartsAgainAfterItsEnd)
{
    const auto one = join(first);
    first.request_stop();
    gate = OneShot<int>();
    const auto two = join(second);
    gate.resolve(8);
    EXPECT_EQ(two.value(), 8);
    EXPECT_EQ(starts, 2);
}

TEST_F(SharedTaskTest, ItsStopReachesEveryone)
{
    const auto one = join(first);
    const auto two = join(second);
    task->stop();
    EXPECT_TRUE(one.isCancelled());
    EXPECT_TRUE(two.isCancelled());
    EXPECT_TRUE(task->isSettled());
    task->stop();
}

TEST_F(SharedTaskTest, MayDieWhileOthersWait)
{
    const auto one = join(first);
    const auto two = join(second);
    task.reset();
    EXPECT_TRUE(one.isCancelled());
    EXPECT_TRUE(two.isCancelled());
    EXPECT_EQ(ends, std::vector{QStringLiteral("stopped")});
}

TEST_F(SharedTaskTest, ATaskThatEndsAtOnceLeavesNothing)
{
    gate.resolve(3);
    EXPECT_EQ(join(first).value(), 3);
    EXPECT_FALSE(task->isRunning());
    EXPECT_TRUE(task->isSettled());
}

TEST_F(SharedTaskTest, WhoIsStoppedAlreadyStartsNothing)
{
    first.request_stop();
    EXPECT_TRUE(join(first).isCancelled());
    EXPECT_EQ(starts, 0);
}

TEST_F(SharedTaskTest, EachKeyHasATaskOfItsOwnAndAllEndWithTheirOwner)
{
    auto tasks = std::make_unique<SharedTasks<QString, int>>();
    const auto joined = [&](const QString &key) {
        SharedTask<int>::Start start = [this](std::stop_token stop) {
            ++starts;
            return guarded(gate, &ends, std::move(stop));
        };
        return Outcome<int>(tasks->join(key, std::move(start), first.get_token()));
    };
    const auto one = joined(QStringLiteral("one"));
    const auto again = joined(QStringLiteral("one"));
    gate = OneShot<int>();
    const auto other = joined(QStringLiteral("other"));
    EXPECT_EQ(starts, 2);
    gate.resolve(4);
    EXPECT_EQ(other.value(), 4);
    EXPECT_FALSE(one.isDone());
    tasks.reset();
    EXPECT_TRUE(one.isCancelled());
    EXPECT_TRUE(again.isCancelled());
}

} // namespace
} // namespace veltrix
