// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/refresh_loop.h"

#include "support/json_printers.h"
#include "support/virtual_clock.h"

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

constexpr Seconds minute{60};
constexpr Seconds hour{3600};

/// What refreshes do: how long they take, and how they end.
struct Script {
    VirtualClock clock;
    Date start = clock.now();
    Seconds lasts{600};
    HistoryRefresh end;
    /// "0", "1 done", "2 stopped": minutes since the start, and how it ended.
    QStringList notes;

    [[nodiscard]] QString minutes() const
    {
        return QString::number((clock.now() - start) / minute);
    }
    void fail(int measured = 0)
    {
        end = {measured, RefreshFailure{{}, QStringLiteral("The network is down.")}, {}};
    }
};

Task<HistoryRefresh> noteRefresh(Script *script, std::stop_token stop)
{
    script->notes.append(script->minutes());
    const HistoryRefresh end = script->end;
    try {
        co_await script->clock.sleep(script->lasts, stop);
    } catch (const Cancelled &) {
        script->notes.append(script->minutes() + QStringLiteral(" stopped"));
        throw;
    }
    script->notes.append(script->minutes() + QStringLiteral(" done"));
    co_return end;
}

class RefreshLoopTest : public testing::Test
{
protected:
    /// When refreshes started since the last call, in minutes.
    QString starts()
    {
        QStringList result;
        for (const QString &note : std::exchange(script.notes, {})) {
            if (!note.contains(u' '))
                result.append(note);
        }
        return result.join(u' ');
    }
    /// Refreshes that take no time.
    void instantly() { script.lasts = Seconds(0); }

    Script script;
    VirtualClock &clock = script.clock;
    std::unique_ptr<RefreshLoop> loop = std::make_unique<RefreshLoop>(
        clock, [this](std::stop_token stop) { return noteRefresh(&script, std::move(stop)); });
};

TEST_F(RefreshLoopTest, DoesNothingWhileInactive)
{
    clock.advance(Seconds(100'000));
    EXPECT_TRUE(script.notes.isEmpty());
    loop->setActive(false);
    loop->retrySoon();
    EXPECT_EQ(clock.sleepers(), 0);
}

TEST_F(RefreshLoopTest, RefreshesAtOnceAndAnHourAfterEachRefresh)
{
    loop->setActive(true);
    clock.advance(3 * hour + 29 * minute);
    EXPECT_EQ(starts(), QStringLiteral("0 70 140"));
    clock.advance(minute);
    EXPECT_EQ(starts(), QStringLiteral("210"));
}

TEST_F(RefreshLoopTest, LeavingStopsTheRefreshAndReturningStartsAnother)
{
    loop->setActive(true);
    clock.advance(minute);
    loop->setActive(false);
    EXPECT_EQ(script.notes.last(), QStringLiteral("1 stopped"));
    clock.advance(2 * hour);
    EXPECT_EQ(script.notes.size(), 2);
    loop->setActive(true);
    EXPECT_EQ(script.notes.last(), QStringLiteral("121"));
}

TEST_F(RefreshLoopTest, LeavingStopsTheWait)
{
    loop->setActive(true);
    clock.advance(Seconds(700));
    loop->setActive(false);
    EXPECT_EQ(clock.sleepers(), 0);
    clock.advance(10 * hour);
    EXPECT_EQ(script.notes.size(), 2);
}

TEST_F(RefreshLoopTest, BecomingActiveTwiceIsOneChange)
{
    loop->setActive(true);
    loop->setActive(true);
    EXPECT_EQ(script.notes.size(), 1);
}

TEST_F(RefreshLoopTest, ItsEndStopsWhatRuns)
{
    loop->setActive(true);
    loop.reset();
    EXPECT_EQ(script.notes.last(), QStringLiteral("0 stopped"));
    EXPECT_EQ(clock.sleepers(), 0);
}

// Failures

TEST_F(RefreshLoopTest, AfterFailuresItWaitsOneTwoFourMinutesUpToTheHour)
{
    instantly();
    script.fail();
    loop->setActive(true);
    clock.advance(5 * hour);
    EXPECT_EQ(starts(), QStringLiteral("0 1 3 7 15 31 63 123 183 243"));
}

TEST_F(RefreshLoopTest, ASuccessEndsTheSeries)
{
    instantly();
    script.fail();
    loop->setActive(true);
    clock.advance(10 * minute);
    EXPECT_EQ(starts(), QStringLiteral("0 1 3 7"));
    script.end = {};
    clock.advance(10 * minute);
    EXPECT_EQ(starts(), QStringLiteral("15"));
    script.fail();
    clock.advance(62 * minute);
    EXPECT_EQ(starts(), QStringLiteral("75 76 78 82"));
}

TEST_F(RefreshLoopTest, ARefreshThatGotAheadBeforeItFailedGoesOnAfterAMinute)
{
    instantly();
    script.fail(20);
    loop->setActive(true);
    clock.advance(3 * minute);
    EXPECT_EQ(starts(), QStringLiteral("0 1 2 3"));
}

TEST_F(RefreshLoopTest, ReturningRefreshesAtOnceAndTheWaitsGoOnGrowing)
{
    instantly();
    script.fail();
    loop->setActive(true);
    clock.advance(8 * minute);
    EXPECT_EQ(starts(), QStringLiteral("0 1 3 7"));
    loop->setActive(false);
    clock.advance(minute);
    loop->setActive(true);
    EXPECT_EQ(starts(), QStringLiteral("9"));
    clock.advance(16 * minute);
    EXPECT_EQ(starts(), QStringLiteral("25"));
}

TEST_F(RefreshLoopTest, AFailedRefreshOfTheUsersIsTriedAgainToo)
{
    instantly();
    loop->setActive(true);
    clock.advance(10 * minute);
    loop->refreshEnded({});
    clock.advance(10 * minute);
    EXPECT_EQ(starts(), QStringLiteral("0")) << "a success changes nothing";
    HistoryRefresh failed;
    failed.failure = RefreshFailure();
    loop->refreshEnded(failed);
    clock.advance(10 * minute);
    EXPECT_EQ(starts(), QStringLiteral("21"));
}

// The network and the machine's sleep

TEST_F(RefreshLoopTest, AfterAFailureItRefreshesAtOnceWhenTheNetworkReturns)
{
    instantly();
    script.fail();
    loop->setActive(true);
    clock.advance(20 * minute);
    EXPECT_EQ(starts(), QStringLiteral("0 1 3 7 15"));
    script.end = {};
    loop->retrySoon();
    EXPECT_EQ(starts(), QStringLiteral("20"));
    loop->retrySoon();
    EXPECT_EQ(starts(), QString()) << "nothing has failed";
}

TEST_F(RefreshLoopTest, ANetworkThatReturnsDuringARefreshShortensTheWaitAfterIt)
{
    script.fail();
    loop->setActive(true);
    clock.advance(80 * minute);
    EXPECT_EQ(starts(), QStringLiteral("0 11 23 37 55"));
    EXPECT_EQ(loop->isActive(), true);
    clock.advance(5 * minute);
    EXPECT_EQ(starts(), QStringLiteral("81"));
    loop->retrySoon();
    clock.advance(8 * minute);
    EXPECT_EQ(starts(), QStringLiteral("92"));
}

TEST_F(RefreshLoopTest, RefreshesWithinAMinuteWhenTheMachineWakes)
{
    instantly();
    loop->setActive(true);
    clock.advance(10 * minute);
    starts();
    // The timer stood still while the machine slept; the clock on the wall did not.
    clock.jumpTo(clock.now() + 8 * hour);
    clock.advance(minute);
    EXPECT_EQ(starts(), QStringLiteral("491"));
}

TEST_F(RefreshLoopTest, AClockThatIsSetBackOrALittleAheadChangesNoWait)
{
    instantly();
    loop->setActive(true);
    starts();
    clock.advance(10 * minute);
    clock.jumpTo(clock.now() - 24 * hour);
    clock.advance(10 * minute);
    clock.jumpTo(clock.now() + Seconds(50));
    clock.advance(39 * minute);
    EXPECT_EQ(starts(), QString());
    clock.advance(minute);
    EXPECT_FALSE(starts().isEmpty());
}

// What becomes stale before the hour is over

TEST_F(RefreshLoopTest, TheWaitEndsWhenTheNextRankingBecomesStale)
{
    instantly();
    script.end.nextStale = clock.now() + 20 * minute;
    loop->setActive(true);
    clock.advance(19 * minute);
    EXPECT_EQ(starts(), QStringLiteral("0"));
    script.end.nextStale = clock.now() + 500 * minute;
    clock.advance(minute);
    EXPECT_EQ(starts(), QStringLiteral("20"));
    clock.advance(60 * minute);
    EXPECT_EQ(starts(), QStringLiteral("80"));
}

TEST_F(RefreshLoopTest, RankingsThatBecomeStaleOneAfterAnotherAreLookedAtOnceAMinute)
{
    instantly();
    script.end.nextStale = clock.now();
    loop->setActive(true);
    clock.advance(3 * minute);
    EXPECT_EQ(starts(), QStringLiteral("0 1 2 3"));
}

// Stop

TEST_F(RefreshLoopTest, AStopStaysAStopUntilTheNextHour)
{
    loop->setActive(true);
    clock.advance(minute);
    loop->stopRefresh();
    EXPECT_EQ(script.notes.last(), QStringLiteral("1 stopped"));
    EXPECT_TRUE(loop->isActive());
    clock.advance(59 * minute);
    EXPECT_EQ(starts(), QStringLiteral("0"));
    clock.advance(minute);
    EXPECT_EQ(starts(), QStringLiteral("61"));
}

TEST_F(RefreshLoopTest, AStopOutlastsLeavingReturningAndTheNetwork)
{
    script.fail();
    loop->setActive(true);
    clock.advance(minute);
    loop->stopRefresh();
    clock.advance(minute);
    loop->setActive(false);
    clock.advance(minute);
    loop->setActive(true);
    loop->retrySoon();
    clock.advance(57 * minute);
    EXPECT_EQ(starts(), QStringLiteral("0"));
    clock.advance(minute);
    EXPECT_EQ(starts(), QStringLiteral("61"));
}

TEST_F(RefreshLoopTest, AStopWhileItWaitsIsOneToo)
{
    instantly();
    script.fail();
    loop->setActive(true);
    loop->stopRefresh();
    clock.advance(59 * minute);
    EXPECT_EQ(starts(), QStringLiteral("0"));
    clock.advance(minute);
    EXPECT_EQ(starts(), QStringLiteral("60"));
}

TEST_F(RefreshLoopTest, AfterALongAbsenceAStopIsOver)
{
    loop->setActive(true);
    loop->stopRefresh();
    loop->setActive(false);
    clock.advance(5 * hour);
    loop->setActive(true);
    EXPECT_EQ(starts(), QStringLiteral("0 300"));
}

TEST_F(RefreshLoopTest, AClockThatIsSetBackDoesNotMakeAStopLongerThanAnHour)
{
    loop->setActive(true);
    loop->stopRefresh();
    loop->setActive(false);
    clock.jumpTo(clock.now() - 1000 * hour);
    loop->setActive(true);
    clock.advance(59 * minute);
    EXPECT_EQ(script.notes.size(), 2);
    clock.advance(minute);
    EXPECT_EQ(script.notes.size(), 3);
}

TEST_F(RefreshLoopTest, ARefreshOfTheUsersEndsTheRest)
{
    loop->setActive(true);
    loop->stopRefresh();
    clock.advance(minute);
    loop->resume();
    EXPECT_EQ(starts(), QStringLiteral("0 1"));
}

} // namespace
} // namespace veltrix
