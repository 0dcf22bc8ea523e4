// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/itunes_client.h"

#include "clients/request_url.h"
#include "json/json_error.h"
#include "json/json_reader.h"
#include "json/json_writer.h"
#include "support/fake_http.h"
#include "support/generators.h"
#include "support/json_printers.h"
#include "support/task_outcome.h"
#include "support/virtual_clock.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace veltrix
{
namespace
{

/// The form in which the service sends a body.
QByteArray body(const char *results, int count)
{
    return "\n\n\n{\n \"resultCount\":" + QByteArray::number(count) + ",\n \"results\": [" +
           results + "]\n}\n\n\n";
}

class ITunesClientTest : public testing::Test
{
protected:
    ITunesClientTest() { m_http.answerWith(FakeHttp::response(200, body("", 0))); }

    Outcome<QList<ITunesAppResult>> search(const char *term, const char *country = "us",
                                           std::int64_t limit = 25)
    {
        return Outcome(m_client.search(QString::fromUtf8(term), QString::fromUtf8(country), limit,
                                       m_stop.get_token()));
    }
    Outcome<std::optional<ITunesAppResult>> lookup(std::int64_t trackId)
    {
        return Outcome(m_client.lookup(trackId, QStringLiteral("gb"), m_stop.get_token()));
    }

    std::shared_ptr<VirtualClock> m_clock = std::make_shared<VirtualClock>();
    FakeHttp m_http{m_clock};
    std::shared_ptr<ITunesTrafficController> m_traffic =
        std::make_shared<ITunesTrafficController>(m_clock);
    ITunesClient m_client{
        {QUrl(QStringLiteral("https://apps.example")), m_http.sender(), m_traffic}};
    std::stop_source m_stop;
};

TEST_F(ITunesClientTest, ASearchAsksForTheTermInTheUpperCasedStorefront)
{
    EXPECT_TRUE(search("photo editor", "us", 25).value().isEmpty());
    ASSERT_EQ(m_http.count(), 1);
    const HttpRequest &request = m_http.sent().front().request;
    EXPECT_EQ(request.method, HttpRequest::Method::Get);
    EXPECT_TRUE(request.headers.isEmpty());
    EXPECT_EQ(absoluteString(request.url),
              QStringLiteral("https://apps.example/search?"
                             "term=photo%20editor&entity=software&country=US&limit=25"));
}

TEST_F(ITunesClientTest, ALookupAsksForTheIdBeyondThirtyTwoBits)
{
    EXPECT_EQ(lookup(6'451'880'007).value(), std::nullopt);
    EXPECT_EQ(m_http.urls(),
              QStringList{QStringLiteral(
                  "https://apps.example/lookup?id=6451880007&country=GB&entity=software")});
}

TEST_F(ITunesClientTest, OfAnAnswerThatIsLongerThanAskedForTheFirstResultsCount)
{
    m_http.answerWith(FakeHttp::response(
        200, body(R"({"trackId":1},{"trackId":2},{"trackId":3},{"trackId":4})", 4)));
    const auto found = search("photo", "us", 2).value();
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found[1].trackId, 2);
    // The second comes from the cache.
    EXPECT_EQ(search("photo", "us", 2).value(), found);
    m_clock->advance(Seconds(60));
    EXPECT_EQ(search("photo", "us", 4).value().size(), 4);
    m_clock->advance(Seconds(60));
    EXPECT_EQ(search("photo", "us", 1'000'000).value().size(), 4);
}

TEST_F(ITunesClientTest, NoAnswerCostsMoreThanTheMostThatTheServiceGives)
{
    const QByteArray results = QByteArray("{},").repeated(100'000) + R"({"trackId":7})";
    m_http.answerWith(FakeHttp::response(200, body(results.constData(), 100'001)));
    EXPECT_EQ(search("photo", "us", 1'000'000).value().size(), ITunesClient::mostResults);
    m_clock->advance(Seconds(60));
    EXPECT_EQ(lookup(7).value(), std::nullopt);
}

TEST_F(ITunesClientTest, ALookupFindsItsAppBehindOthersAsFarAsTheServiceGivesResults)
{
    const QByteArray results = QByteArray("{},").repeated(199) + R"({"trackId":7},{"trackId":7})";
    m_http.answerWith(FakeHttp::response(200, body(results.constData(), 201)));
    EXPECT_TRUE(lookup(7).value().has_value());
}

TEST_F(ITunesClientTest, TheTermIsNeitherTrimmedNorLowerCased)
{
    search(" C++ & \"Rock 'n' Roll\" 50% ~._-/?#é ");
    EXPECT_EQ(m_http.sent().front().request.url.query(QUrl::FullyEncoded),
              QStringLiteral("term=%20C%2B%2B%20%26%20%22Rock%20%27n%27%20Roll%22%2050%25%20~._-"
                             "%2F%3F%23%C3%A9%20&entity=software&country=US&limit=25"));
}

TEST_F(ITunesClientTest, ABaseAddressMayHaveAPathOfItsOwn)
{
    const QList<QueryItem> none;
    const auto of = [&none](const char *base) {
        return absoluteString(
            requestUrl(QUrl(QString::fromUtf8(base)), QStringLiteral("search"), none));
    };
    EXPECT_EQ(of("http://127.0.0.1:8080"), QStringLiteral("http://127.0.0.1:8080/search"));
    EXPECT_EQ(of("https://a.example/itunes/"), QStringLiteral("https://a.example/itunes/search"));
    EXPECT_EQ(of("https://a.example/a%20b"), QStringLiteral("https://a.example/a%20b/search"));
}

RC_GTEST_PROP(RequestUrl, EveryTermArrivesAsItWasGiven, (const QString &given))
{
    // In front of a U+FEFF, which reading the address back would take away from the start.
    const QString term = u'>' + given;
    const QUrl url = requestUrl(
        QUrl(QStringLiteral("https://apps.example")), QStringLiteral("search"),
        {{QStringLiteral("term"), term}, {QStringLiteral("entity"), QStringLiteral("software")}});
    const QString sent = QString::fromLatin1(url.toEncoded());
    const qsizetype query = sent.indexOf(u'?') + 1;
    const QString pairs = sent.mid(query);
    RC_ASSERT(pairs.count(u'&') == 1);
    const QString value = pairs.mid(5, pairs.indexOf(u'&') - 5);
    RC_ASSERT(QUrl::fromPercentEncoding(value.toLatin1()) == term);
    for (const QChar c : value) {
        RC_ASSERT(c.unicode() < 128);
        RC_ASSERT(c.isLetterOrNumber() || QStringLiteral("%-._~").contains(c));
    }
    RC_ASSERT(absoluteString(url) == sent);
}

TEST_F(ITunesClientTest, AnAddressThatIsNoneFailsBeforeAnythingIsSpent)
{
    for (const char *base : {"", "itunes", "ftp://apps.example", "https://"}) {
        ITunesClient client({QUrl(QString::fromUtf8(base)), m_http.sender(), m_traffic});
        const Outcome outcome(
            client.search(QStringLiteral("a"), QStringLiteral("US"), 1, m_stop.get_token()));
        EXPECT_TRUE(outcome.holds<BadUrlError>()) << base;
    }
    EXPECT_EQ(m_http.count(), 0);
}

TEST_F(ITunesClientTest, TwoEqualSearchesWithinThirtyMinutesAreOneRequestAndOnePermit)
{
    m_http.answerWith(FakeHttp::response(200, body(R"({"trackId":1})", 1)));
    EXPECT_EQ(search("bear").value().size(), 1);
    m_clock->advance(Seconds(0.1));
    // No permit is taken: the spacing of 0.35 s does not hold this one back.
    EXPECT_EQ(search("bear").value().size(), 1);
    EXPECT_EQ(m_http.count(), 1);
    m_clock->advance(Seconds(1800));
    EXPECT_EQ(search("bear").value().size(), 1);
    EXPECT_EQ(m_http.count(), 2);
}

TEST_F(ITunesClientTest, AnotherLimitOrStorefrontIsAnotherRequest)
{
    search("bear", "us", 25);
    search("bear", "us", 50);
    search("bear", "de", 25);
    m_clock->runUntilIdle();
    EXPECT_EQ(m_http.count(), 3);
    search("bear", "US", 25);
    EXPECT_EQ(m_http.count(), 3);
}

TEST_F(ITunesClientTest, ClientsOfOneControllerShareItsBudget)
{
    ITunesClient other({QUrl(QStringLiteral("https://apps.example")), m_http.sender(), m_traffic});
    std::vector<Outcome<QList<ITunesAppResult>>> outcomes;
    for (int i = 0; i < 3; ++i) {
        outcomes.push_back(search(QByteArray::number(i).constData()));
        outcomes.push_back(Outcome(
            other.search(QString::number(10 + i), QStringLiteral("US"), 1, m_stop.get_token())));
    }
    m_clock->advance(Seconds(4.4));
    EXPECT_EQ(m_http.count(), 5);
    m_clock->advance(Seconds(0.11));
    EXPECT_EQ(m_http.count(), 6);
}

TEST_F(ITunesClientTest, ResultsComeInTheOrderOfTheService)
{
    m_http.answerWith(FakeHttp::response(
        200,
        body(R"({"trackId":3,"trackName":"C","unknown":[{}]},{"kind":"song"},{"trackId":1})", 99)));
    const QList<ITunesAppResult> results = search("x").value();
    ASSERT_EQ(results.size(), 3);
    EXPECT_EQ(results[0].trackName, QStringLiteral("C"));
    EXPECT_EQ(results[1].trackId, std::nullopt);
    EXPECT_EQ(results[2].trackId, 1);
}

TEST_F(ITunesClientTest, ALookupPassesOverItemsWithoutAnId)
{
    m_http.answerWith(FakeHttp::response(
        200, body(R"({"trackName":"none"},{"trackId":8},{"trackId":7,"trackName":"wanted"})", 3)));
    EXPECT_EQ(lookup(7).value()->trackName, QStringLiteral("wanted"));
}

TEST_F(ITunesClientTest, ALookupThatFindsNothingIsNoError)
{
    EXPECT_EQ(lookup(7).value(), std::nullopt);
    m_http.answerWith(FakeHttp::response(200, body(R"({"trackId":8})", 1)));
    const Outcome other(lookup(9));
    m_clock->runUntilIdle();
    EXPECT_EQ(other.value(), std::nullopt);
}

class AnyFailureStatus : public ITunesClientTest, public testing::WithParamInterface<int>
{
};

TEST_P(AnyFailureStatus, FailsTheCallIsNotRetriedAndNeverCached)
{
    m_http.answerWith(FakeHttp::response(GetParam(), GetParam() == 403 ? "" : body("", 0)));
    const Outcome first(lookup(7));
    EXPECT_TRUE(first.holds<BadServerResponseError>());
    EXPECT_EQ(first.failureText(),
              QStringLiteral("The server answered with an error (%1).").arg(GetParam()));
    EXPECT_EQ(m_http.count(), 1);
    m_clock->advance(Seconds(1));
    EXPECT_TRUE(lookup(7).holds<BadServerResponseError>());
    EXPECT_EQ(m_http.count(), 2);
}

INSTANTIATE_TEST_SUITE_P(Statuses, AnyFailureStatus,
                         testing::Values(199, 301, 304, 400, 403, 404, 429, 500, 503));

TEST_F(ITunesClientTest, EveryStatusOfSuccessIsSuccess)
{
    for (const int status : {200, 204, 299}) {
        m_http.answerWith(FakeHttp::response(status, body("", 0)));
        const Outcome outcome(search(QByteArray::number(status).constData()));
        m_clock->runUntilIdle();
        EXPECT_TRUE(outcome.hasValue()) << status;
    }
}

TEST_F(ITunesClientTest, ABodyThatIsNoAnswerIsSaidInWords)
{
    for (const char *text :
         {"", "\n\n\n", "<html></html>", "{}", R"({"resultCount":0})", R"({"results":[]})",
          R"({"resultCount":"0","results":[]})", R"({"resultCount":0,"results":{}})",
          R"({"resultCount":1,"results":[{"trackId":"1"}]})", R"({"resultCount":0,"results":[)",
          R"([])", R"({"resultCount":0,"results":[]} x)", "\"Sign in\""}) {
        m_http.answerWith(FakeHttp::response(200, text));
        const Outcome outcome(search(text));
        m_clock->runUntilIdle();
        EXPECT_TRUE(outcome.holds<UnreadableAnswerError>()) << text;
        EXPECT_EQ(outcome.failureText(),
                  QStringLiteral("The answer of the server “apps.example” could not be read. If "
                                 "this network asks you to sign in, do so in a web browser and try "
                                 "again."))
            << text;
    }
}

TEST_F(ITunesClientTest, ASignInPageIsNotKeptSoThatTheSearchAfterSigningInSucceeds)
{
    m_http.answerInTurn({FakeHttp::response(200, "<!DOCTYPE html><title>Hotel</title>"),
                         FakeHttp::response(200, body(R"({"trackId":1})", 1))});
    EXPECT_TRUE(search("bear").holds<UnreadableAnswerError>());
    EXPECT_EQ(m_traffic->cachedBytes(), 0);
    m_clock->advance(Seconds(1));
    EXPECT_EQ(search("bear").value().size(), 1);
    EXPECT_GT(m_traffic->cachedBytes(), 0);
    EXPECT_EQ(search("bear").value().size(), 1);
    EXPECT_EQ(m_http.count(), 2);
}

TEST_F(ITunesClientTest, ARequestThatGoesOutAgainTakesAPermitLikeAnyOther)
{
    search("bear");
    const HttpPermit again = m_http.sent().front().request.permitToRepeat;
    ASSERT_TRUE(again);
    // One permit was taken for the first time; the next one is spaced like another request's.
    const auto take = [](HttpPermit permit, std::stop_token stop) -> Task<bool> {
        co_await permit(stop);
        co_return true;
    };
    const Outcome permit(take(again, {}));
    EXPECT_FALSE(permit.isDone());
    m_clock->advance(Seconds(0.36));
    EXPECT_TRUE(permit.hasValue());
    for (int i = 0; i < 4; ++i)
        search(QByteArray::number(i).constData());
    m_clock->advance(Seconds(2));
    EXPECT_EQ(m_http.count(), 4) << "the fifth permit of the bucket was spent on the repeat";
}

TEST_F(ITunesClientTest, AThousandSearchesLeaveABoundedNumberOfBytes)
{
    // A search of a hundred apps is some 940 kB.
    const QByteArray description(940'000, 'x');
    m_http.answerWith(FakeHttp::response(
        200, body(("{\"trackId\":1,\"description\":\"" + description + "\"}").constData(), 1)));
    qint64 most = 0;
    for (int i = 0; i < 1000; ++i) {
        const auto outcome = search(QByteArray::number(i).constData());
        m_clock->advance(Seconds(4.5));
        ASSERT_TRUE(outcome.hasValue());
        most = std::max(most, m_traffic->cachedBytes());
    }
    EXPECT_LE(most, ITunesTrafficController::cacheCapacity);
    EXPECT_GT(most, ITunesTrafficController::cacheCapacity - 1'000'000) << "the room is used";
    // The newest are still there.
    search("999");
    EXPECT_EQ(m_http.count(), 1000);
}

TEST_F(ITunesClientTest, TransportErrorsPassUnchanged)
{
    m_http.answerWith([](const HttpRequest &) -> HttpResponse {
        throw TransportError(QStringLiteral("The network is not available."));
    });
    EXPECT_EQ(search("x").failureText(), QStringLiteral("The network is not available."));
}

TEST_F(ITunesClientTest, AStopWhileWaitingForAPermitIsCancellationAndSendsNothing)
{
    for (int i = 0; i < 5; ++i)
        search(QByteArray::number(i).constData());
    m_clock->runUntilIdle();
    const Outcome waiting(search("late"));
    EXPECT_FALSE(waiting.isDone());
    m_stop.request_stop();
    EXPECT_TRUE(waiting.isCancelled());
    EXPECT_EQ(m_http.count(), 5);
}

TEST_F(ITunesClientTest, CallsThatWaitEndWithTheClient)
{
    auto traffic = std::make_shared<ITunesTrafficController>(m_clock);
    auto client = std::make_unique<ITunesClient>(ITunesClient::Arguments{
        QUrl(QStringLiteral("https://apps.example")), m_http.sender(), traffic});
    std::vector<Outcome<QList<ITunesAppResult>>> outcomes;
    for (int i = 0; i < 7; ++i) {
        outcomes.emplace_back(
            client->search(QString::number(i), QStringLiteral("US"), 1, m_stop.get_token()));
    }
    m_clock->advance(Seconds(2));
    EXPECT_TRUE(outcomes[4].hasValue());
    m_http.hold();
    m_clock->advance(Seconds(4));
    EXPECT_EQ(m_http.inFlight(), 1);
    client.reset();
    EXPECT_TRUE(outcomes[5].isCancelled()) << "while its request was under way";
    EXPECT_TRUE(outcomes[6].isCancelled()) << "while it waited for a permit";
    EXPECT_EQ(m_http.inFlight(), 0);
    EXPECT_EQ(m_clock->sleepers(), 0);
}

TEST_F(ITunesClientTest, WaitsForAPermitEndWithTheController)
{
    auto traffic = std::make_unique<ITunesTrafficController>(m_clock);
    Outcome<Done> first(finished(traffic->acquirePermit(m_stop.get_token())));
    Outcome<Done> second(finished(traffic->acquirePermit(m_stop.get_token())));
    EXPECT_TRUE(first.hasValue());
    traffic.reset();
    EXPECT_TRUE(second.isCancelled());
    EXPECT_EQ(m_clock->sleepers(), 0);
}

TEST(ITunesAppResultJson, ARecordOfOneFieldIsWrittenWithThatFieldAlone)
{
    const auto record = fromJson<ITunesAppResult>(R"({"trackId":42})");
    EXPECT_EQ(toJson(record), R"({"trackId":42})");
}

} // namespace
} // namespace veltrix
