// SPDX-License-Identifier: GPL-3.0-or-later
#include "clients/request_url.h"
#include "clients/research_client_fixture.h"

namespace veltrix
{
namespace
{

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
    EXPECT_TRUE(saved(QStringLiteral("PHOTO editor "), QStringLiteral("Us")));
    EXPECT_FALSE(saved(QStringLiteral("photo"), QStringLiteral("US")));
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
    EXPECT_EQ(saved(QStringLiteral("x"), QStringLiteral("US"))->results.size(), 100);
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
    EXPECT_TRUE(saved(QStringLiteral("photo editor"), QStringLiteral("US")));
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

TEST_F(ResearchClientTest, CallsThatWaitOrSendEndWithTheClient)
{
    m_http.answerInTurn({status(202, "", "20"), ready(4)});
    const Outcome waiting(search("a"));
    m_http.hold();
    const Outcome sending(search("b"));
    m_client.reset();
    EXPECT_TRUE(waiting.isCancelled());
    EXPECT_TRUE(sending.isCancelled());
    EXPECT_EQ(m_http.inFlight(), 0);
    EXPECT_EQ(m_clock->sleepers(), 0);
}

} // namespace
} // namespace veltrix
