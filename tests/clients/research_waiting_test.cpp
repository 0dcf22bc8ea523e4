// SPDX-License-Identifier: GPL-3.0-or-later
// When the research client asks again, and when it gives up.
#include "clients/research_client_fixture.h"

namespace veltrix
{
namespace
{

using ResearchWaitingTest = ResearchClientTest;

TEST_F(ResearchWaitingTest, A202IsAskedAgainAfterItsRetryAfter)
{
    m_http.answerInTurn({status(202, "", "5"), ready(1)});
    const Outcome outcome(search());
    m_clock->advance(Seconds(4.9));
    EXPECT_EQ(m_http.count(), 1);
    m_clock->runUntilIdle();
    EXPECT_EQ(outcome.value().size(), 1);
    EXPECT_EQ(times(), (std::vector<double>{0, 5}));
}

TEST_F(ResearchWaitingTest, TheFourWordsOfWaitingAreQueuedAlsoWith200)
{
    for (const char *word : {"stale", "pending", "failed", "unavailable"}) {
        m_http.answerInTurn(
            {status(200, QByteArray("{\"status\":\"") + word + "\",\"retryAfter\":2}"), ready(1)});
        const Outcome outcome(search(word));
        EXPECT_FALSE(outcome.isDone()) << word;
        m_clock->advance(Seconds(2.001));
        EXPECT_TRUE(outcome.hasValue()) << word;
    }
}

TEST_F(ResearchWaitingTest, QueuedStatusesAreQueuedWhateverTheBodySays)
{
    for (const int code : {202, 429, 503}) {
        m_http.answerInTurn({status(code, R"({"status":"ready","results":[]})", "3"), ready(2)});
        const Outcome outcome(search(QByteArray::number(code).constData()));
        EXPECT_FALSE(outcome.isDone());
        m_clock->advance(Seconds(3.001));
        EXPECT_EQ(outcome.value().size(), 2);
    }
}

TEST_F(ResearchWaitingTest, A503WithNothingElseIsTriedFourTimesTenSecondsApart)
{
    m_http.answerWith(status(503));
    const Outcome outcome(search());
    m_clock->runUntilIdle();
    EXPECT_EQ(outcome.failureText(), queuedText(1));
    EXPECT_EQ(times(), (std::vector<double>{0, 10, 20, 30}));
}

TEST_F(ResearchWaitingTest, A429OfTwoMinutesHoldsTheWholeServiceBack)
{
    m_http.answerWith(status(429, "", "120"));
    EXPECT_EQ(search("first").failureText(), queuedText(2));
    m_clock->advance(Seconds(30));
    EXPECT_EQ(search("second", "de").failureText(), queuedText(2));
    m_clock->advance(Seconds(31));
    EXPECT_EQ(search("second", "de").failureText(), queuedText(1));
    EXPECT_EQ(m_http.count(), 1);
    // 44 s before the date the wait fits into a call, which then waits and sends.
    m_clock->advance(Seconds(15));
    m_http.answerWith(ready(1));
    const Outcome outcome(search("third"));
    EXPECT_FALSE(outcome.isDone());
    m_clock->runUntilIdle();
    EXPECT_TRUE(outcome.hasValue());
    EXPECT_EQ(times(), (std::vector<double>{0, 120}));
}

TEST_F(ResearchWaitingTest, A202HoldsBackItsOwnKeywordOnly)
{
    m_http.answerWith(status(202, "", "300"));
    EXPECT_EQ(search("first").failureText(), queuedText(5));
    EXPECT_EQ(search("first").failureText(), queuedText(5));
    EXPECT_EQ(m_http.count(), 1);
    m_http.answerWith(ready(1));
    EXPECT_TRUE(search("second").hasValue());
    EXPECT_TRUE(search("first", "de").hasValue());
    EXPECT_EQ(m_http.count(), 3);
}

TEST_F(ResearchWaitingTest, AWaitThatEndsAtTheDeadlineIsNotBegun)
{
    m_http.answerWith(status(202, "", "45"));
    EXPECT_EQ(search("a").failureText(), queuedText(1));
    EXPECT_EQ(m_clock->sleepers(), 0);
    m_http.answerInTurn({status(202, "", "44.9"), ready(1)});
    const Outcome outcome(search("b"));
    m_clock->runUntilIdle();
    EXPECT_TRUE(outcome.hasValue());
}

TEST_F(ResearchWaitingTest, TheDeadlineCountsFromTheStartOfTheCall)
{
    m_http.answerInTurn({status(202, "", "20"), status(202, "", "20"), status(202, "", "20")});
    const Outcome outcome(search());
    m_clock->runUntilIdle();
    // At 40 s the next wait would end at 60 s.
    EXPECT_EQ(outcome.failureText(), queuedText(1));
    EXPECT_EQ(times(), (std::vector<double>{0, 20, 40}));
}

TEST_F(ResearchWaitingTest, TheLaterOfTheTwoRetryDatesCounts)
{
    m_http.answerWith(status(202, "", "200"));
    search("a");
    m_http.answerWith(status(429, "", "60"));
    search("b");
    EXPECT_EQ(search("a").failureText(), queuedText(4));
    EXPECT_EQ(search("c").failureText(), queuedText(1));
}

TEST_F(ResearchWaitingTest, SuccessForgetsTheKeywordsRetryDate)
{
    m_http.answerInTurn({status(202, "", "5"), ready(1, "none")});
    search();
    m_clock->runUntilIdle();
    search();
    EXPECT_EQ(times(), (std::vector<double>{0, 5, 5}));
}

TEST_F(ResearchWaitingTest, MinutesAreRoundedUpAndSixtySecondsAreOne)
{
    const std::vector<std::pair<const char *, int>> cases = {
        {"45", 1}, {"59.5", 1}, {"60", 1}, {"60.5", 2}, {"61", 2}, {"120", 2}, {"3600", 60}};
    for (const auto &[seconds, minutes] : cases) {
        m_http.answerWith(status(202, "", seconds));
        EXPECT_EQ(search(seconds).failureText(), queuedText(minutes)) << seconds;
        // The remaining wait of a later call reads the same.
        EXPECT_EQ(search(seconds).failureText(), queuedText(minutes)) << seconds;
    }
    // A second before, the rest of 61 s is 60 s.
    m_clock->advance(Seconds(1));
    EXPECT_EQ(search("61").failureText(), queuedText(1));
}

TEST_F(ResearchWaitingTest, TheDelayIsTheHeadersElseTheEnvelopesElseTenSeconds)
{
    struct Case {
        const char *header;
        const char *body;
        double delay;
    };
    const std::vector<Case> cases = {
        {"7", R"({"retryAfter":3})", 7},
        {" 7.5 ", "", 7.5},
        {"+2", "", 2},
        {"0", R"({"retryAfter":30})", 1},
        {"-5", "", 1},
        {nullptr, R"({"retryAfter":3.5})", 3.5},
        {nullptr, R"({"retryAfter":0.1})", 1},
        {nullptr, R"({"retryAfter":-4})", 1},
        {nullptr, R"({"retryAfter":"3"})", 10},
        {nullptr, "", 10},
        {"Sat, 21 Nov 2026 12:00:20 GMT", R"({"retryAfter":4})", 4},
        {"Sat, 21 Nov 2026 12:00:20 GMT", "", 10},
        {"7s", "", 10},
        {"1e1", "", 10},
        {"0x10", "", 10},
        {"5.", "", 10},
        {".5", "", 10},
        {"", "", 10},
        {"inf", "", 10},
    };
    int number = 0;
    for (const Case &one : cases) {
        m_http.answerInTurn({status(202, one.body, one.header), ready(1)});
        const size_t before = m_http.sent().size();
        search(QByteArray::number(++number).constData());
        m_clock->runUntilIdle();
        ASSERT_EQ(m_http.sent().size(), before + 2);
        const Seconds waited = m_http.sent().back().at - m_http.sent()[before].at;
        EXPECT_NEAR(waited.count(), one.delay, 1e-5)
            << (one.header != nullptr ? one.header : "no header") << " " << one.body;
    }
}

TEST_F(ResearchWaitingTest, AHugeRetryAfterIsSaidAndHarmsNothing)
{
    m_http.answerWith(status(202, "", "99999999999999"));
    EXPECT_EQ(search("a").failureText(),
              QStringLiteral("Research is queued or temporarily limited. Try again in "
                             "1666666666667 minute(s)."));
    m_http.answerWith(status(202, "", QByteArray(400, '9').constData()));
    const Outcome outcome(search("b"));
    EXPECT_FALSE(outcome.isDone());
    m_stop.request_stop();
    EXPECT_TRUE(outcome.isCancelled());
}

TEST_F(ResearchWaitingTest, RetryDatesThatAClockSetBackMovedAYearAheadAreIgnored)
{
    m_clock->jumpTo(start + Seconds(365 * 86'400.0));
    m_http.answerWith(status(429, "", "120"));
    EXPECT_EQ(search("first").failureText(), queuedText(2));
    m_http.answerWith(status(202, "", "300"));
    m_clock->advance(Seconds(121));
    EXPECT_EQ(search("second").failureText(), queuedText(5));
    m_clock->jumpTo(start);
    m_http.answerWith(ready(1));
    EXPECT_TRUE(search("first").hasValue());
    EXPECT_TRUE(search("second").hasValue());
    EXPECT_EQ(m_http.count(), 4);
}

TEST_F(ResearchWaitingTest, AClockSetBackDuringACallDoesNotMakeItWaitForAYear)
{
    m_clock->jumpTo(start + Seconds(365 * 86'400.0));
    int count = 0;
    m_http.answerWith([this, &count](const HttpRequest &) {
        if (++count == 1)
            return status(429, "", "20");
        if (count == 2) {
            m_clock->jumpTo(start);
            return status(202, "", "10");
        }
        return ready(1);
    });
    m_http.hold();
    const Outcome limited(search("limited"));
    const Outcome queued(search("queued"));
    m_http.release();
    m_clock->advance(Seconds(21));
    EXPECT_TRUE(limited.hasValue());
    EXPECT_TRUE(queued.hasValue());
}

TEST_F(ResearchWaitingTest, ResultsDatedAYearAheadAreNotServedForAYear)
{
    m_http.answerInTurn({ready(3, "2027-11-21T12:00:00.000Z"), ready(2)});
    EXPECT_EQ(search().value().size(), 3);
    EXPECT_EQ(search().value().size(), 2);
    // A service whose clock is a little ahead is served from the cache all the same.
    m_http.answerInTurn({ready(4, "2026-11-21T12:10:00.000Z"), ready(5)});
    EXPECT_EQ(search("other").value().size(), 4);
    EXPECT_EQ(search("other").value().size(), 4);
}

TEST_F(ResearchWaitingTest, TwoCallsForOneKeyHonourEachOthersRetryDate)
{
    m_http.hold();
    m_http.answerInTurn({status(202, "", "10"), status(202, "", "20"), ready(1), ready(1)});
    const Outcome one(search());
    const Outcome two(search());
    m_http.release();
    EXPECT_EQ(m_http.count(), 2);
    m_clock->runUntilIdle();
    EXPECT_TRUE(one.hasValue());
    EXPECT_TRUE(two.hasValue());
    // The gate is looked at once before a request: the first had its wait before the second's came.
    EXPECT_EQ(times(), (std::vector<double>{0, 0, 10, 20}));
}

} // namespace
} // namespace veltrix
