// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/itunes_traffic_controller.h"

#include "effects/task_scope.h"
#include "support/virtual_clock.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

namespace veltrix
{
namespace
{

using Controller = ITunesTrafficController;

class TrafficController : public testing::Test
{
protected:
    static Task<void> take(Controller *controller, Clock *clock, std::vector<double> *times,
                           Date start, std::stop_token stop)
    {
        co_await controller->acquirePermit(stop);
        times->push_back((clock->now() - start).count());
    }

    void takeOne(std::stop_token stop)
    {
        m_scope.own(take(&m_controller, m_clock.get(), &m_times, m_start, std::move(stop)));
    }
    void takeOne() { takeOne(m_scope.token()); }

    /// Moments of all permits so far, in seconds from the start of the test.
    [[nodiscard]] const std::vector<double> &times() const { return m_times; }

    std::shared_ptr<VirtualClock> m_clock = std::make_shared<VirtualClock>();
    Date m_start = m_clock->now();
    Controller m_controller{m_clock};
    std::vector<double> m_times;
    TaskScope m_scope;
};

TEST_F(TrafficController, SixRequestsAtOnceAreFiveSpacedOnesAndOneThatWaitsForTheBucket)
{
    for (int i = 0; i < 6; ++i)
        takeOne();
    EXPECT_EQ(times(), std::vector<double>{0});
    m_clock->runUntilIdle();
    ASSERT_EQ(times().size(), 6U);
    for (size_t i = 0; i < 5; ++i)
        EXPECT_NEAR(times()[i], 0.35 * double(i), 1e-5);
    // Six permits, five of them there at the start: the sixth is regained in 4.5 s.
    EXPECT_NEAR(times()[5], 4.5, 1e-5);
}

TEST_F(TrafficController, TheSustainedRateIsOnePermitInFourAndAHalfSeconds)
{
    for (int i = 0; i < 25; ++i)
        takeOne();
    m_clock->runUntilIdle();
    ASSERT_EQ(times().size(), 25U);
    for (size_t i = 6; i < 25; ++i)
        EXPECT_NEAR(times()[i] - times()[i - 1], 4.5, 1e-5);
}

TEST_F(TrafficController, HoweverLongItWasIdleTheBucketHoldsFivePermits)
{
    m_clock->advance(Seconds(1'000'000));
    for (int i = 0; i < 6; ++i)
        takeOne();
    m_clock->runUntilIdle();
    EXPECT_NEAR(times().back() - times().front(), 4.5, 1e-5);
}

TEST_F(TrafficController, AStopWhileWaitingSpendsNoPermit)
{
    takeOne();
    {
        TaskScope impatient;
        impatient.own(take(&m_controller, m_clock.get(), &m_times, m_start, impatient.token()));
        EXPECT_EQ(m_clock->sleepers(), 1);
    }
    EXPECT_EQ(m_clock->sleepers(), 0);
    for (int i = 0; i < 5; ++i)
        takeOne();
    m_clock->runUntilIdle();
    ASSERT_EQ(times().size(), 6U);
    EXPECT_NEAR(times()[4], 1.4, 1e-5);
    EXPECT_NEAR(times()[5], 4.5, 1e-5);
}

TEST_F(TrafficController, AStopBeforeAskingSpendsNoPermit)
{
    std::stop_source stopped;
    stopped.request_stop();
    takeOne(stopped.get_token());
    EXPECT_TRUE(times().empty());
    takeOne();
    EXPECT_EQ(times(), std::vector<double>{0});
}

TEST_F(TrafficController, AClockSetBackNeitherAddsPermitsNorHoldsRequestsBack)
{
    for (int i = 0; i < 5; ++i)
        takeOne();
    m_clock->runUntilIdle();
    m_clock->jumpTo(m_start - Seconds(86'400));
    const Date jumped = m_clock->now();
    takeOne();
    m_clock->runUntilIdle();
    ASSERT_EQ(times().size(), 6U);
    const double waited = times().back() - (jumped - m_start).count();
    // Five permits spent in 1.4 s leave 0.31 of one; nothing more was gained by the jump.
    EXPECT_NEAR(waited, 4.5 - 1.4, 1e-3);
}

TEST_F(TrafficController, AClockSetAYearAheadAndBackHoldsNoRequestBack)
{
    m_clock->jumpTo(m_start + Seconds(365 * 86'400.0));
    takeOne();
    ASSERT_EQ(times().size(), 1U);
    m_clock->jumpTo(m_start);
    takeOne();
    m_clock->advance(Controller::minimumSpacing + Seconds(0.001));
    EXPECT_EQ(times().size(), 2U);
}

TEST_F(TrafficController, AClockSetBackDuringAWaitDoesNotLengthenIt)
{
    for (int i = 0; i < 6; ++i)
        takeOne();
    m_clock->advance(Seconds(2));
    ASSERT_EQ(times().size(), 5U);
    m_clock->jumpTo(m_start - Seconds(365 * 86'400.0));
    m_clock->advance(Controller::refillInterval * 2);
    EXPECT_EQ(times().size(), 6U);
}

/// Whatever the pattern of requests: never two within the spacing, and never more in any stretch of
/// time than the bucket holds plus what it regains.
RC_GTEST_PROP(TrafficControllerRates, HoldForEveryPatternOfRequests, (std::vector<unsigned> gaps))
{
    const auto clock = std::make_shared<VirtualClock>();
    Controller controller(clock);
    const Date start = clock->now();
    std::vector<double> times;
    TaskScope scope;
    const auto take = [](Controller *from, Clock *on, std::vector<double> *into, Date zero,
                         std::stop_token stop) -> Task<void> {
        co_await from->acquirePermit(stop);
        into->push_back((on->now() - zero).count());
    };
    for (const unsigned gap : gaps) {
        clock->advance(Seconds(double(gap % 12'000) / 1000.0));
        scope.own(take(&controller, clock.get(), &times, start, scope.token()));
    }
    clock->runUntilIdle();
    RC_ASSERT(times.size() == gaps.size());
    RC_ASSERT(std::is_sorted(times.begin(), times.end()));
    for (size_t last = 1; last < times.size(); ++last) {
        RC_ASSERT(times[last] - times[last - 1] > 0.35 - 1e-5);
        for (size_t first = 0; first < last; ++first) {
            const double most = 5.0 + (times[last] - times[first]) / 4.5;
            RC_ASSERT(double(last - first + 1) <= most + 1e-4);
        }
    }
}

TEST_F(TrafficController, AnAnswerIsServedUntilItsThirtyMinutesAreOver)
{
    m_controller.storeResponse("body", QStringLiteral("key"));
    m_clock->advance(Seconds(1799.5));
    EXPECT_EQ(m_controller.cachedResponse(QStringLiteral("key")), QByteArray("body"));
    m_clock->advance(Seconds(0.5));
    EXPECT_EQ(m_controller.cachedResponse(QStringLiteral("key")), std::nullopt);
    // It was removed, not only hidden: a clock set back does not bring it to life.
    m_clock->jumpTo(m_start);
    EXPECT_EQ(m_controller.cachedResponse(QStringLiteral("key")), std::nullopt);
}

TEST_F(TrafficController, ExpiredAnswersAreDroppedWhenAnotherIsStored)
{
    for (int i = 0; i < 10; ++i)
        m_controller.storeResponse(QByteArray(1000, 'x'), QString::number(i));
    EXPECT_EQ(m_controller.cachedBytes(), 10 * 1002);
    m_clock->advance(Controller::cacheTTL);
    m_controller.storeResponse("new", QStringLiteral("k"));
    EXPECT_EQ(m_controller.cachedBytes(), 3 + 2);
}

TEST_F(TrafficController, TheAnswersStoredFirstMakeRoomForNewOnes)
{
    const qint64 third = Controller::cacheCapacity / 3;
    for (const char *key : {"a", "b", "c", "d"})
        m_controller.storeResponse(QByteArray(third - 10, 'x'), QString::fromUtf8(key));
    EXPECT_EQ(m_controller.cachedResponse(QStringLiteral("a")), std::nullopt);
    for (const char *key : {"b", "c", "d"})
        EXPECT_TRUE(m_controller.cachedResponse(QString::fromUtf8(key))) << key;
    m_controller.storeResponse(QByteArray(Controller::cacheCapacity, 'x'), QStringLiteral("huge"));
    EXPECT_EQ(m_controller.cachedResponse(QStringLiteral("huge")), std::nullopt);
    EXPECT_TRUE(m_controller.cachedResponse(QStringLiteral("b"))) << "the huge one took no room";
    EXPECT_LE(m_controller.cachedBytes(), Controller::cacheCapacity);
}

TEST_F(TrafficController, AnAnswerOfAYearAheadIsNotServedForAYear)
{
    m_clock->jumpTo(m_start + Seconds(365 * 86'400.0));
    m_controller.storeResponse("body", QStringLiteral("key"));
    m_clock->jumpTo(m_start);
    EXPECT_EQ(m_controller.cachedResponse(QStringLiteral("key")), std::nullopt);
    EXPECT_EQ(m_controller.cachedBytes(), 0);
}

TEST_F(TrafficController, AnUnknownKeyChangesNothing)
{
    EXPECT_EQ(m_controller.cachedResponse(QStringLiteral("other")), std::nullopt);
    m_controller.storeResponse("body", QStringLiteral("key"));
    EXPECT_EQ(m_controller.cachedResponse(QStringLiteral("other")), std::nullopt);
    EXPECT_EQ(m_controller.cachedResponse(QStringLiteral("key")), QByteArray("body"));
}

TEST_F(TrafficController, ANewerAnswerReplacesTheOlderAndItsLifetime)
{
    m_controller.storeResponse("old", QStringLiteral("key"));
    m_clock->advance(Seconds(1000));
    m_controller.storeResponse("new", QStringLiteral("key"));
    m_clock->advance(Seconds(1000));
    EXPECT_EQ(m_controller.cachedResponse(QStringLiteral("key")), QByteArray("new"));
}

} // namespace
} // namespace veltrix
