// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/research_client.h"

#include "clients/request_url.h"
#include "model/json_reader.h"
#include "support/fake_http.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"
#include "support/virtual_clock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

using Results = QList<ITunesAppResult>;

const Date start = dateFromUnixSeconds(1'795'262'400); // 2026-11-21T12:00:00Z

/// Notes what is looked up and answers with an app of that id.
class FakeLookup final : public ITunesClientProtocol
{
public:
    Task<Results> search(QString, QString, std::int64_t, std::stop_token) override
    {
        ADD_FAILURE() << "searched where nothing is to be searched";
        co_return Results();
    }
    Task<std::optional<ITunesAppResult>> lookup(std::int64_t trackId, QString country,
                                                std::stop_token) override
    {
        asked.append(QStringLiteral("%1 %2").arg(trackId).arg(country));
        ITunesAppResult found;
        found.trackId = trackId;
        co_return found;
    }
    QStringList asked;
};

QByteArray apps(int count)
{
    QByteArrayList list;
    for (int i = 1; i <= count; ++i)
        list.append("{\"trackId\":" + QByteArray::number(i) + "}");
    return "[" + list.join(',') + "]";
}

HttpResponse ready(int count, const char *fetchedAt = "2026-11-21T12:00:00.000Z")
{
    return FakeHttp::response(200, "{\"status\":\"ready\",\"results\":" + apps(count) +
                                       ",\"fetchedAt\":\"" + fetchedAt + "\"}");
}

HttpResponse status(int code, QByteArray body = {}, const char *retryAfter = nullptr)
{
    QList<HttpHeader> headers;
    if (retryAfter != nullptr)
        headers.append(HttpHeader{"retry-after", retryAfter});
    return FakeHttp::response(code, std::move(body), headers);
}

QString queuedText(int minutes)
{
    return QStringLiteral("Research is queued or temporarily limited. Try again in %1 minute(s).")
        .arg(minutes);
}

class ResearchClientTest : public testing::Test
{
protected:
    ResearchClientTest()
    {
        m_http.answerWith(ready(3));
        open();
    }

    void open()
    {
        m_client = std::make_unique<ResearchClient>(ResearchClient::Arguments{
            [this] { return m_configuration(); }, m_http.sender(), m_clock, m_lookup, QString()});
    }
    Outcome<Results> search(const char *term = "photo editor", const char *country = "us",
                            std::int64_t limit = 100)
    {
        return Outcome(m_client->search(QString::fromUtf8(term), QString::fromUtf8(country), limit,
                                        m_stop.get_token()));
    }
    /// Moments of the requests, in seconds from the start.
    [[nodiscard]] std::vector<double> times() const
    {
        std::vector<double> times;
        for (const auto &sent : m_http.sent())
            times.push_back(std::round((sent.at - start).count() * 1000) / 1000);
        return times;
    }

    std::shared_ptr<VirtualClock> m_clock = std::make_shared<VirtualClock>(start);
    FakeHttp m_http{m_clock};
    std::shared_ptr<FakeLookup> m_lookup = std::make_shared<FakeLookup>();
    ConfigurationProvider m_configuration = [] {
        return SupabaseConfiguration{QUrl(QStringLiteral("https://project.example")),
                                     QStringLiteral("sb_publishable_x")};
    };
    std::unique_ptr<ResearchClient> m_client;
    std::stop_source m_stop;
};

TEST_F(ResearchClientTest, PostsTheNormalisedKeywordAndKeepsTheAnswerUnderIt)
{
    EXPECT_EQ(search("  Photo Editor\n", "us").value().size(), 3);
    ASSERT_EQ(m_http.count(), 1);
    const HttpRequest &request = m_http.sent().front().request;
    EXPECT_EQ(request.method, HttpRequest::Method::Post);
    EXPECT_EQ(absoluteString(request.url),
              QStringLiteral("https://project.example/functions/v1/aso-research"));
    EXPECT_EQ(request.headers, (QList<HttpHeader>{{"apikey", "sb_publishable_x"},
                                                  {"Content-Type", "application/json"}}));
    EXPECT_EQ(request.body, R"({"keyword":"photo editor","country":"US"})");
    EXPECT_EQ(request.timeout, Seconds(15));
    EXPECT_EQ(request.bodyLimit, 32LL * 1024 * 1024);
    EXPECT_TRUE(m_client->savedResults(QStringLiteral("PHOTO editor "), QStringLiteral("Us")));
    EXPECT_FALSE(m_client->savedResults(QStringLiteral("photo"), QStringLiteral("US")));
    search("photo editor", "US");
    EXPECT_EQ(m_http.count(), 1);
}

TEST_F(ResearchClientTest, AKeywordHasOneToAHundredCharacters)
{
    const QString text = QStringLiteral("Enter a keyword between 1 and 100 characters.");
    EXPECT_EQ(search("").failureText(), text);
    EXPECT_EQ(search(" \n\t ").failureText(), text);
    EXPECT_EQ(search(QByteArray(101, 'a').constData()).failureText(), text);
    EXPECT_TRUE(search("").holds<ResearchError>());
    EXPECT_EQ(m_http.count(), 0);
    EXPECT_TRUE(search((" " + QByteArray(100, 'a') + " ").constData()).hasValue());
    // A character outside the basic plane is one.
    EXPECT_TRUE(search(QByteArray("🐻").repeated(100).constData()).hasValue());
    EXPECT_EQ(search(QByteArray("🐻").repeated(101).constData()).failureText(), text);
    EXPECT_EQ(m_http.count(), 2);
}

TEST_F(ResearchClientTest, TheConfigurationsErrorPassesAndComesBeforeTheKeywords)
{
    m_configuration = []() -> SupabaseConfiguration {
        throw ConfigurationError(ConfigurationError::Reason::MissingResource);
    };
    EXPECT_EQ(search("").failureText(),
              QStringLiteral("Supabase development configuration is missing."));
    EXPECT_TRUE(search("x").holds<ConfigurationError>());
}

TEST_F(ResearchClientTest, TheConfigurationIsReadAtEachSearch)
{
    int reads = 0;
    m_configuration = [&reads] {
        return SupabaseConfiguration{QUrl(QStringLiteral("https://p%1.example/base/").arg(++reads)),
                                     QStringLiteral("sb_publishable_x")};
    };
    search("a");
    search("b");
    EXPECT_EQ(m_http.urls(),
              (QStringList{QStringLiteral("https://p1.example/base/functions/v1/aso-research"),
                           QStringLiteral("https://p2.example/base/functions/v1/aso-research")}));
}

TEST_F(ResearchClientTest, LookupsAreForwardedUnchanged)
{
    const Outcome outcome(
        m_client->lookup(6'451'880'007, QStringLiteral("us"), m_stop.get_token()));
    EXPECT_EQ(outcome.value()->trackId, 6'451'880'007);
    EXPECT_EQ(m_lookup->asked, QStringList{QStringLiteral("6451880007 us")});
    EXPECT_EQ(m_http.count(), 0);
}

TEST_F(ResearchClientTest, AHundredResultsAreKeptAndEachCallGetsItsLimit)
{
    m_http.answerWith(ready(150));
    EXPECT_EQ(search("x", "us", 25).value().size(), 25);
    EXPECT_EQ(search("x", "us", 50).value().size(), 50);
    EXPECT_EQ(search("x", "us", 200).value().size(), 100);
    EXPECT_EQ(search("x", "us", 0).value().size(), 0);
    EXPECT_EQ(search("x", "us", -1).value().size(), 0);
    EXPECT_EQ(m_http.count(), 1);
    EXPECT_EQ(m_client->savedResults(QStringLiteral("x"), QStringLiteral("US"))->results.size(),
              100);
}

TEST_F(ResearchClientTest, AnAnswerIsServedForHalfAnHourFromWhenItWasProduced)
{
    m_http.answerWith(ready(1, "2026-11-21T11:50:00.000Z"));
    search();
    m_clock->advance(Seconds(1199.9));
    search();
    EXPECT_EQ(m_http.count(), 1);
    m_clock->advance(Seconds(0.1));
    search();
    EXPECT_EQ(m_http.count(), 2);
    m_clock->advance(Seconds(86'400));
    EXPECT_TRUE(m_client->savedResults(QStringLiteral("photo editor"), QStringLiteral("US")));
}

TEST_F(ResearchClientTest, AnAnswerWithoutAProperDateIsGivenButNotKept)
{
    for (const char *fetchedAt :
         {"2026-11-21T12:00:00Z", "2026-11-21", "", "yesterday", "2026-11-21T12:00:00.000"}) {
        m_http.answerWith(ready(2, fetchedAt));
        EXPECT_EQ(search(fetchedAt[0] == '\0' ? "none" : fetchedAt).value().size(), 2);
    }
    m_http.answerWith(FakeHttp::response(200, "{\"status\":\"ready\",\"results\":[]}"));
    EXPECT_EQ(search("without").value().size(), 0);
    EXPECT_EQ(search("without").value().size(), 0);
    EXPECT_EQ(m_http.count(), 7);
}

TEST_F(ResearchClientTest, AnswersThatAreNotReadyFailWithTheirStatus)
{
    const auto failed = [](int code) {
        return QStringLiteral("Research request failed (%1). Please try again later.").arg(code);
    };
    int number = 0;
    for (const char *body :
         {"", "{}", "null", "<html>busy</html>", R"({"status":"Ready","results":[]})",
          R"({"status":"ready"})", R"({"status":"ready","results":null})",
          R"({"status":"unknown","results":[]})", R"({"results":[],"fetchedAt":"x"})",
          R"({"status":null})", R"({"status":"pending","retryAfter":"5"})",
          R"({"status":"ready","results":[{"trackId":"1"}]})"}) {
        m_http.answerWith(status(200, body));
        const Outcome outcome(search(QByteArray::number(++number).constData()));
        EXPECT_EQ(outcome.failureText(), failed(200)) << body;
        EXPECT_TRUE(outcome.holds<ResearchError>());
    }
    for (const int code : {201, 204, 301, 400, 401, 403, 404, 500, 502, 504, 540, 546}) {
        m_http.answerWith(status(code, R"({"status":"ready","results":[]})", "5"));
        EXPECT_EQ(search().failureText(), failed(code));
    }
    EXPECT_EQ(m_http.count(), 24);
}

TEST_F(ResearchClientTest, A202IsAskedAgainAfterItsRetryAfter)
{
    m_http.answerInTurn({status(202, "", "5"), ready(1)});
    const Outcome outcome(search());
    m_clock->advance(Seconds(4.9));
    EXPECT_EQ(m_http.count(), 1);
    m_clock->runUntilIdle();
    EXPECT_EQ(outcome.value().size(), 1);
    EXPECT_EQ(times(), (std::vector<double>{0, 5}));
}

TEST_F(ResearchClientTest, TheFourWordsOfWaitingAreQueuedAlsoWith200)
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

TEST_F(ResearchClientTest, QueuedStatusesAreQueuedWhateverTheBodySays)
{
    for (const int code : {202, 429, 503}) {
        m_http.answerInTurn({status(code, R"({"status":"ready","results":[]})", "3"), ready(2)});
        const Outcome outcome(search(QByteArray::number(code).constData()));
        EXPECT_FALSE(outcome.isDone());
        m_clock->advance(Seconds(3.001));
        EXPECT_EQ(outcome.value().size(), 2);
    }
}

TEST_F(ResearchClientTest, A503WithNothingElseIsTriedFourTimesTenSecondsApart)
{
    m_http.answerWith(status(503));
    const Outcome outcome(search());
    m_clock->runUntilIdle();
    EXPECT_EQ(outcome.failureText(), queuedText(1));
    EXPECT_EQ(times(), (std::vector<double>{0, 10, 20, 30}));
}

TEST_F(ResearchClientTest, A429OfTwoMinutesHoldsTheWholeServiceBack)
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

TEST_F(ResearchClientTest, A202HoldsBackItsOwnKeywordOnly)
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

TEST_F(ResearchClientTest, AWaitThatEndsAtTheDeadlineIsNotBegun)
{
    m_http.answerWith(status(202, "", "45"));
    EXPECT_EQ(search("a").failureText(), queuedText(1));
    EXPECT_EQ(m_clock->sleepers(), 0);
    m_http.answerInTurn({status(202, "", "44.9"), ready(1)});
    const Outcome outcome(search("b"));
    m_clock->runUntilIdle();
    EXPECT_TRUE(outcome.hasValue());
}

TEST_F(ResearchClientTest, TheDeadlineCountsFromTheStartOfTheCall)
{
    m_http.answerInTurn({status(202, "", "20"), status(202, "", "20"), status(202, "", "20")});
    const Outcome outcome(search());
    m_clock->runUntilIdle();
    // At 40 s the next wait would end at 60 s.
    EXPECT_EQ(outcome.failureText(), queuedText(1));
    EXPECT_EQ(times(), (std::vector<double>{0, 20, 40}));
}

TEST_F(ResearchClientTest, TheLaterOfTheTwoRetryDatesCounts)
{
    m_http.answerWith(status(202, "", "200"));
    search("a");
    m_http.answerWith(status(429, "", "60"));
    search("b");
    EXPECT_EQ(search("a").failureText(), queuedText(4));
    EXPECT_EQ(search("c").failureText(), queuedText(1));
}

TEST_F(ResearchClientTest, SuccessForgetsTheKeywordsRetryDate)
{
    m_http.answerInTurn({status(202, "", "5"), ready(1, "none")});
    search();
    m_clock->runUntilIdle();
    search();
    EXPECT_EQ(times(), (std::vector<double>{0, 5, 5}));
}

TEST_F(ResearchClientTest, MinutesAreRoundedUpAndSixtySecondsAreOne)
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

TEST_F(ResearchClientTest, TheDelayIsTheHeadersElseTheEnvelopesElseTenSeconds)
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

TEST_F(ResearchClientTest, AHugeRetryAfterIsSaidAndHarmsNothing)
{
    m_http.answerWith(status(202, "", "99999999999999"));
    EXPECT_EQ(search("a").failureText(),
              QStringLiteral("Research is queued or temporarily limited. Try again in "
                             "1666666666667 minute(s)."));
    m_http.answerWith(status(202, "", QByteArray(400, '9').constData()));
    const Outcome outcome(search("b"));
    EXPECT_FALSE(outcome.isDone());
}

TEST_F(ResearchClientTest, TransportErrorsPassUnchanged)
{
    m_http.answerWith([](const HttpRequest &) -> HttpResponse {
        throw TransportError(QStringLiteral("The network is not available."));
    });
    EXPECT_EQ(search().failureText(), QStringLiteral("The network is not available."));
}

TEST_F(ResearchClientTest, AStopEndsAWaitAndARequestAtOnce)
{
    std::stop_source stopped;
    stopped.request_stop();
    EXPECT_TRUE(
        Outcome(m_client->search(QStringLiteral("x"), QStringLiteral("US"), 1, stopped.get_token()))
            .isCancelled());
    m_http.answerWith(status(202, "", "20"));
    const Outcome waiting(search("a"));
    m_http.hold();
    const Outcome sending(search("b"));
    m_stop.request_stop();
    EXPECT_TRUE(waiting.isCancelled());
    EXPECT_TRUE(sending.isCancelled());
    EXPECT_EQ(m_clock->sleepers(), 0);
    EXPECT_EQ(m_http.inFlight(), 0);
}

TEST_F(ResearchClientTest, MayGoWhileACallWaitsOrSends)
{
    m_http.answerInTurn({status(202, "", "20"), ready(4)});
    const Outcome waiting(search("a"));
    m_http.hold();
    const Outcome sending(search("b"));
    m_client.reset();
    m_http.release();
    m_clock->runUntilIdle();
    EXPECT_EQ(waiting.value().size(), 4);
    EXPECT_EQ(sending.value().size(), 4);
}

TEST_F(ResearchClientTest, TwoCallsForOneKeyHonourEachOthersRetryDate)
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
