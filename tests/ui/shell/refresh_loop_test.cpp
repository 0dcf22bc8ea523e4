// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/refresh_loop.h"

#include "support/json_printers.h"
#include "support/virtual_clock.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

/// Notes when a refresh starts and how it ends; it lasts ten minutes.
Task<void> noteRefresh(VirtualClock *clock, QStringList *notes, std::stop_token stop)
{
    const auto hour = [clock] {
        static const Date start = VirtualClock().now();
        return QString::number((clock->now() - start).count() / 3600);
    };
    notes->append(QStringLiteral("start ") + hour());
    try {
        co_await clock->sleep(Seconds(600), stop);
    } catch (const Cancelled &) {
        notes->append(QStringLiteral("stopped"));
        throw;
    }
    notes->append(QStringLiteral("done"));
}

class RefreshLoopTest : public testing::Test
{
protected:
    VirtualClock clock;
    QStringList notes;
    std::unique_ptr<RefreshLoop> loop = std::make_unique<RefreshLoop>(
        clock, [this](std::stop_token stop) { return noteRefresh(&clock, &notes, stop); });
};

TEST_F(RefreshLoopTest, DoesNothingWhileInactive)
{
    clock.advance(Seconds(100'000));
    EXPECT_TRUE(notes.isEmpty());
    loop->setActive(false);
    EXPECT_EQ(clock.sleepers(), 0);
}

TEST_F(RefreshLoopTest, RefreshesAtOnceAndAnHourAfterEachRefresh)
{
    loop->setActive(true);
    EXPECT_EQ(notes, QStringList{QStringLiteral("start 0")});
    clock.advance(Seconds(600));
    clock.advance(Seconds(3599));
    EXPECT_EQ(notes.size(), 2);
    clock.advance(Seconds(1));
    EXPECT_EQ(notes.last(), QStringLiteral("start 1.16667"));
    clock.advance(Seconds(4200));
    EXPECT_EQ(notes.last(), QStringLiteral("start 2.33333"));
}

TEST_F(RefreshLoopTest, LeavingStopsTheRefreshAndReturningStartsAnother)
{
    loop->setActive(true);
    clock.advance(Seconds(60));
    loop->setActive(false);
    EXPECT_EQ(notes.last(), QStringLiteral("stopped"));
    clock.advance(Seconds(7200));
    EXPECT_EQ(notes.size(), 2);
    loop->setActive(true);
    EXPECT_EQ(notes.size(), 3);
    EXPECT_TRUE(notes.last().startsWith(QStringLiteral("start")));
}

TEST_F(RefreshLoopTest, LeavingStopsTheWait)
{
    loop->setActive(true);
    clock.advance(Seconds(700));
    loop->setActive(false);
    EXPECT_EQ(clock.sleepers(), 0);
    clock.advance(Seconds(36'000));
    EXPECT_EQ(notes.size(), 2);
}

TEST_F(RefreshLoopTest, BecomingActiveTwiceIsOneChange)
{
    loop->setActive(true);
    loop->setActive(true);
    EXPECT_EQ(notes.size(), 1);
}

TEST_F(RefreshLoopTest, StoppingTheRefreshKeepsTheHour)
{
    loop->setActive(true);
    clock.advance(Seconds(60));
    loop->stopRefresh();
    EXPECT_EQ(notes.last(), QStringLiteral("stopped"));
    EXPECT_TRUE(loop->isActive());
    clock.advance(Seconds(3600));
    EXPECT_EQ(notes.size(), 3);
}

TEST_F(RefreshLoopTest, ItsEndStopsWhatRuns)
{
    loop->setActive(true);
    loop.reset();
    EXPECT_EQ(notes.last(), QStringLiteral("stopped"));
    EXPECT_EQ(clock.sleepers(), 0);
}

} // namespace
} // namespace veltrix
