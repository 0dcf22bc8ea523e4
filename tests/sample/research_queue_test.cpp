// SPDX-License-Identifier: GPL-3.0-or-later
// The queue behind the research function, at moments of the test's own.
#include "sample/research_queue.h"

#include <gtest/gtest.h>

namespace veltrix::sample
{
namespace
{

using namespace std::chrono_literals;
using std::chrono::milliseconds;

class ResearchQueueTest : public testing::Test
{
protected:
    Standing ask(const char *keyword, const char *client = "a client")
    {
        return m_queue.ask({QString::fromUtf8(keyword), u"US"_qs}, QString::fromUtf8(client));
    }
    /// Asks as the service does: what is queued sets the worker to work.
    Standing askAndWake(const char *keyword)
    {
        Standing standing = ask(keyword);
        m_queue.wake();
        return standing;
    }
    template <typename Kind>
    static milliseconds waitOf(const Standing &standing)
    {
        const auto *kind = std::get_if<Kind>(&standing);
        EXPECT_TRUE(kind) << "standing " << standing.index();
        return kind ? kind->wait : milliseconds(-1);
    }

    static constexpr Moment start = std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) + 8h;
    Moment m_now = start;
    Fetched m_fetched = FetchedApps{"[]"};
    std::vector<Moment> m_fetches;
    ResearchQueue m_queue{3'200ms,
                          [this](const ResearchQuestion &) {
                              m_fetches.push_back(m_now);
                              return m_fetched;
                          },
                          [this] {
                              return m_now;
                          }};
};

TEST_F(ResearchQueueTest, TellsEveryKeywordItsPlace)
{
    EXPECT_EQ(waitOf<Pending>(ask("one")), 4'200ms);
    EXPECT_EQ(waitOf<Pending>(ask("two")), 7'400ms);
    EXPECT_EQ(waitOf<Pending>(ask("two", "another")), 7'400ms) << "it is queued once";
    EXPECT_TRUE(m_fetches.empty()) << "nobody has woken the worker";
}

TEST_F(ResearchQueueTest, FetchesAtItsPaceInTheOrderOfArrival)
{
    for (const char *keyword : {"one", "two", "three"})
        ask(keyword);
    m_queue.wake();
    EXPECT_EQ(std::get<Ready>(ask("one")).fetchedAt, start);
    EXPECT_EQ(waitOf<Pending>(ask("two")), 4'200ms);
    m_now += 3'199ms;
    EXPECT_EQ(waitOf<Pending>(ask("two")), 4'200ms);
    m_now += 1h;
    EXPECT_EQ(std::get<Ready>(ask("three")).fetchedAt, start + 6'400ms)
        << "as of the moment at which the worker would have been done";
    EXPECT_EQ(m_fetches.size(), 3U);
}

TEST_F(ResearchQueueTest, AWorkerThatHasRestedBeginsWithWhatComesNext)
{
    askAndWake("one");
    m_now += 1h;
    ask("two");
    m_now += 1s;
    EXPECT_TRUE(std::holds_alternative<Pending>(ask("two"))) << "nobody has woken it again";
    m_queue.wake();
    EXPECT_EQ(std::get<Ready>(ask("two")).fetchedAt, m_now);
}

TEST_F(ResearchQueueTest, WhatWasFetchedYesterdayIsStale)
{
    m_now = start + 15h + 59min + 59s + 999ms;
    askAndWake("one");
    const Moment fetchedAt = m_now;
    EXPECT_TRUE(std::holds_alternative<Ready>(ask("one")));
    m_now += 1ms;
    const Standing standing = ask("one");
    EXPECT_EQ(waitOf<Stale>(standing), 4'200ms);
    EXPECT_EQ(std::get<Stale>(standing).fetchedAt, fetchedAt);
    m_queue.wake();
    m_now += 3'200ms;
    EXPECT_TRUE(std::holds_alternative<Ready>(ask("one")));
}

TEST_F(ResearchQueueTest, TriesThreeTimesAndGivesUpForTenMinutes)
{
    m_fetched = FetchFailed{};
    askAndWake("one");
    EXPECT_EQ(waitOf<Pending>(ask("one")), 6s) << "the wait before the second attempt, and one";
    m_now += 5s;
    EXPECT_EQ(waitOf<Pending>(ask("one")), 11s);
    m_now += 10s;
    EXPECT_EQ(waitOf<Failed>(ask("one")), 10min);
    EXPECT_EQ(m_fetches.size(), 3U);
    m_now += 10min - 1ms;
    EXPECT_EQ(waitOf<Failed>(ask("one")), 1ms);
    m_now += 1ms;
    m_fetched = FetchedApps{"[]"};
    EXPECT_EQ(waitOf<Pending>(askAndWake("one")), 4'200ms) << "a new start";
    EXPECT_TRUE(std::holds_alternative<Ready>(ask("one")));
}

TEST_F(ResearchQueueTest, GoesOnWithOthersWhileOneWaitsForItsNextAttempt)
{
    m_fetched = FetchFailed{};
    askAndWake("one");
    ask("one");
    m_fetched = FetchedApps{"[]"};
    m_now += 3'200ms;
    ask("two");
    EXPECT_EQ(std::get<Ready>(ask("two")).fetchedAt, start + 3'200ms);
    EXPECT_TRUE(std::holds_alternative<Pending>(ask("one")));
    m_now += 3'200ms;
    EXPECT_EQ(std::get<Ready>(ask("one")).fetchedAt, start + 6'400ms);
}

TEST_F(ResearchQueueTest, ABlockDoublesUpToAnHourAndCostsNoAttempt)
{
    m_fetched = FetchBlocked{};
    askAndWake("one");
    for (const milliseconds block : {1min, 2min, 4min, 8min, 16min, 32min, 60min, 60min}) {
        EXPECT_EQ(waitOf<Blocked>(ask("one")), block + 4'200ms);
        m_now += block - 1ms;
        EXPECT_EQ(waitOf<Blocked>(ask("one")), 4'201ms);
        m_now += 1ms;
    }
    m_fetched = FetchedApps{"[]"};
    ask("one");
    m_now += 1h;
    EXPECT_TRUE(std::holds_alternative<Ready>(ask("one")));
    m_fetched = FetchBlocked{};
    m_now += 1min;
    askAndWake("two");
    EXPECT_EQ(waitOf<Blocked>(ask("two")), 1min + 4'200ms) << "a success begins anew";
}

TEST_F(ResearchQueueTest, ABlockLastsAsLongAsTheAppStoreAsksFor)
{
    m_fetched = FetchBlocked{10min};
    askAndWake("one");
    EXPECT_EQ(waitOf<Blocked>(ask("one")), 10min + 4'200ms);
}

TEST_F(ResearchQueueTest, SharesOutWhatAClientMayAskFor)
{
    for (int i = 0; i < ResearchQueue::mostOutstanding; ++i)
        ask(qPrintable(QString::number(i)));
    EXPECT_EQ(std::get<Refused>(ask("one more")), Refused::TooManyOutstanding);
    EXPECT_TRUE(std::holds_alternative<Pending>(ask("7"))) << "what is queued may be asked about";
    EXPECT_TRUE(std::holds_alternative<Pending>(ask("one more", "another")));
}

TEST_F(ResearchQueueTest, GivesANewShareAtMidnight)
{
    for (int i = 0; i < ResearchQueue::mostADay; ++i) {
        askAndWake(qPrintable(QString::number(i)));
        m_now += 3'200ms;
    }
    EXPECT_EQ(std::get<Refused>(ask("one more")), Refused::ShareSpent);
    EXPECT_TRUE(std::holds_alternative<Ready>(ask("7")));
    m_now = std::chrono::ceil<std::chrono::days>(m_now);
    EXPECT_TRUE(std::holds_alternative<Pending>(ask("one more")));
}

} // namespace
} // namespace veltrix::sample
