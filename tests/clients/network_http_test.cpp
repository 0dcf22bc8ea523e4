// SPDX-License-Identifier: GPL-3.0-or-later
// HTTP against a real server on loopback, mostly a hostile one.
#include "clients/network_http_fixture.h"

#include "clients/itunes_client.h"
#include "effects/system_clock.h"

namespace veltrix
{
namespace
{

TEST_F(NetworkHttpTest, AnAnswerComesWithStatusHeadersAndBody)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.answer(404, "gone", {"Retry-After: 7", "Content-Type: text/html"});
    });
    const HttpResponse response = send(get(server.url())).wait().value();
    EXPECT_EQ(response.status, 404);
    EXPECT_EQ(response.body, "gone");
    EXPECT_EQ(response.header("retry-after"), QByteArray("7"));
    EXPECT_EQ(response.header("missing"), std::nullopt);
}

TEST_F(NetworkHttpTest, EveryStatusIsAnAnswer)
{
    LoopbackServer server([](const Request &request, Connection &connection) {
        connection.answer(request.target.mid(1).toInt(), "body");
    });
    for (const int status : {200, 202, 299, 300, 304, 400, 401, 403, 405, 407,
                             410, 418, 429, 500, 501, 502, 503, 504, 540, 546}) {
        const auto outcome = send(get(server.url(QStringLiteral("/%1").arg(status)))).wait();
        ASSERT_TRUE(outcome.hasValue()) << status << outcome.failureText().toStdString();
        EXPECT_EQ(outcome.value().status, status);
        EXPECT_EQ(outcome.value().body, status == 304 ? "" : "body") << status;
    }
}

TEST_F(NetworkHttpTest, ThePathAndQueryGoOverTheWireAsTheyWereEncoded)
{
    LoopbackServer server(
        [](const Request &, Connection &connection) { connection.answer(200, "{}"); });
    ITunesClient client(
        {server.url(), m_http->sender(),
         std::make_shared<ITunesTrafficController>(std::make_shared<SystemClock>())});
    Outcome(client.search(QStringLiteral("c++ photo editor"), QStringLiteral("us"), 25, {})).wait();
    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(server.requests()[0].target,
              "/search?term=c%2B%2B%20photo%20editor&entity=software&country=US&limit=25");
}

TEST_F(NetworkHttpTest, SaysHonestlyWhoAsksAndKeepsNoCookies)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.answer(200, "", {"Set-Cookie: id=42; Path=/", "Cache-Control: max-age=9999"});
    });
    send(get(server.url())).wait();
    send(get(server.url())).wait();
    ASSERT_EQ(server.requests().size(), 2U);
    EXPECT_EQ(server.requests()[1].header("User-Agent"), "Veltrix/1.2.3");
    EXPECT_EQ(server.requests()[1].header("Cookie"), "");
}

TEST_F(NetworkHttpTest, NoCacheOnTheWayIsToldToLookAway)
{
    LoopbackServer server(
        [](const Request &, Connection &connection) { connection.answer(200, "{}"); });
    send(get(server.url())).wait();
    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(server.requests()[0].header("Cache-Control"), "");
    EXPECT_EQ(server.requests()[0].header("Pragma"), "");
}

TEST_F(NetworkHttpTest, NothingIsServedFromAnEarlierAnswer)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.answer(200, "{}", {"Cache-Control: max-age=86400", "ETag: \"1\""});
    });
    send(get(server.url())).wait();
    send(get(server.url())).wait();
    EXPECT_EQ(server.requests().size(), 2U);
}

TEST_F(NetworkHttpTest, APostCarriesItsHeadersAndBody)
{
    LoopbackServer server(
        [](const Request &, Connection &connection) { connection.answer(202, "later"); });
    HttpRequest request = get(server.url(QStringLiteral("/functions")));
    request.method = HttpRequest::Method::Post;
    request.headers = {{"apikey", "key"}, {"Content-Type", "application/json"}};
    request.body = R"({"keyword":"x"})";
    EXPECT_EQ(send(request).wait().value().status, 202);
    const Request sent = server.requests().at(0);
    EXPECT_EQ(sent.method, "POST");
    EXPECT_EQ(sent.header("apikey"), "key");
    EXPECT_EQ(sent.header("Content-Type"), "application/json");
    EXPECT_EQ(sent.body, R"({"keyword":"x"})");
}

TEST_F(NetworkHttpTest, ACompressedScriptIsReadAsItsText)
{
    const QByteArray plain = "\n\n\n{\n \"resultCount\":0,\n \"results\": []\n}\n\n\n";
    LoopbackServer server([&plain](const Request &, Connection &connection) {
        connection.answer(200, gzip(plain),
                          {"Content-Type: text/javascript; charset=utf-8",
                           "Content-Disposition: attachment; filename=1.txt",
                           "Content-Encoding: gzip"});
    });
    EXPECT_EQ(send(get(server.url())).wait().value().body, plain);
    EXPECT_TRUE(server.requests()[0].header("Accept-Encoding").contains("gzip"));
}

TEST_F(NetworkHttpTest, AThrottledAnswerIsAnAnswerWithItsStatus)
{
    LoopbackServer server(
        [](const Request &, Connection &connection) { connection.answer(403, ""); });
    const HttpResponse response = send(get(server.url())).wait().value();
    EXPECT_EQ(response.status, 403);
    EXPECT_TRUE(response.body.isEmpty());
}

TEST_F(NetworkHttpTest, ARefusedConnectionIsSaid)
{
    const QUrl url(
        QStringLiteral("http://127.0.0.1:%1/search?term=secret").arg(LoopbackServer::unusedPort()));
    EXPECT_EQ(failure(get(url)), QStringLiteral("The server “127.0.0.1” refused the connection."));
}

TEST_F(NetworkHttpTest, AConnectionClosedBeforeTheHeadersIsSaid)
{
    LoopbackServer server([](const Request &, Connection &) {});
    EXPECT_EQ(failure(get(server.url(QStringLiteral("/search?term=secret")))),
              QStringLiteral("The server “127.0.0.1” closed the connection before its answer was "
                             "whole."));
    // Sent once more, in case a connection that was kept open had gone stale; never again.
    EXPECT_LE(server.requests().size(), 2U);
}

TEST_F(NetworkHttpTest, AConnectionClosedAfterTheHeadersIsSaid)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n");
    });
    EXPECT_EQ(failure(get(server.url())),
              QStringLiteral("The server “127.0.0.1” closed the connection before its answer was "
                             "whole."));
}

TEST_F(NetworkHttpTest, AConnectionClosedHalfWayIsSaid)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nfirst half");
    });
    EXPECT_EQ(failure(get(server.url())),
              QStringLiteral("The server “127.0.0.1” closed the connection before its answer was "
                             "whole."));
}

/// A body in chunks whose last one never comes may count as whole, when the connection closes in
/// the same instant in which the bytes arrive. So what reads the body must find out, and it does.
TEST_F(NetworkHttpTest, ABodyInChunksThatStopsHalfWayIsNeverTakenForAnAnswer)
{
    LoopbackServer server([](const Request &request, Connection &connection) {
        const QByteArray half = "\n\n\n{\"resultCount\":1,\"results\":[{\"trackId\":1}";
        connection.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" +
                        QByteArray::number(half.size(), 16) + "\r\n" + half);
        if (request.target.contains("pause"))
            connection.wait(50ms);
    });
    ITunesClient client(
        {server.url(), m_http->sender(),
         std::make_shared<ITunesTrafficController>(std::make_shared<SystemClock>())});
    for (const char *term : {"at-once", "pause"}) {
        auto outcome =
            Outcome(client.search(QString::fromUtf8(term), QStringLiteral("us"), 1, {})).wait();
        EXPECT_TRUE(outcome.holds<TransportError>() || outcome.holds<UnreadableAnswerError>())
            << term;
    }
}

TEST_F(NetworkHttpTest, ALengthThatIsTooSmallGivesTheBytesItCounts)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 2\r\nConnection: close\r\n\r\n{}rest");
    });
    const auto outcome = send(get(server.url())).wait();
    EXPECT_EQ(outcome.value().body, "{}");
}

TEST_F(NetworkHttpTest, AnAnswerThatIsNotHttpIsSaid)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.send("SSH-2.0-OpenSSH_9.2\r\n\r\n");
        connection.wait(50ms);
    });
    const auto outcome = send(get(server.url())).wait();
    EXPECT_TRUE(outcome.holds<TransportError>());
    EXPECT_FALSE(outcome.failureText().contains(QStringLiteral("SSH")));
}

TEST_F(NetworkHttpTest, BrokenCompressionIsAFailure)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        QByteArray packed = gzip(QByteArray(20'000, 'x'));
        packed.replace(12, 4, "\xff\xff\xff\xff");
        connection.answer(200, packed, {"Content-Encoding: gzip"});
    });
    EXPECT_TRUE(send(get(server.url())).wait().holds<TransportError>());
}

TEST_F(NetworkHttpTest, RedirectsAreFollowedFiveTimesAndNotSix)
{
    LoopbackServer server([](const Request &request, Connection &connection) {
        const int left = request.target.mid(1).toInt();
        if (left == 0)
            connection.answer(200, "there");
        else
            connection.answer(302, "", {"Location: /" + QByteArray::number(left - 1)});
    });
    EXPECT_EQ(send(get(server.url(QStringLiteral("/5")))).wait().value().body, "there");
    EXPECT_EQ(failure(get(server.url(QStringLiteral("/6")))),
              QStringLiteral("The server “127.0.0.1” redirected too often."));
}

TEST_F(NetworkHttpTest, ARedirectToAnotherKindOfAddressIsRefused)
{
    LoopbackServer server([](const Request &request, Connection &connection) {
        connection.answer(301, "", {"Location: " + request.target.mid(1)});
    });
    for (const char *target : {"file:///etc/passwd", "ftp://127.0.0.1/x", "data:,x"}) {
        EXPECT_EQ(failure(get(server.url(QStringLiteral("/") + QString::fromUtf8(target)))),
                  QStringLiteral("The server “127.0.0.1” redirected to an address that is not "
                                 "safe."))
            << target;
    }
}

TEST_F(NetworkHttpTest, HeadersThatIdentifyAreNotCarriedToAnotherOriginAndAllOthersAre)
{
    LoopbackServer other(
        [](const Request &, Connection &connection) { connection.answer(200, "other"); });
    const QByteArray target = other.url().toEncoded();
    LoopbackServer server([&target](const Request &request, Connection &connection) {
        if (request.target == "/own")
            connection.answer(307, "", {"Location: /end"});
        else if (request.target == "/end")
            connection.answer(200, "own");
        else
            connection.answer(307, "", {"Location: " + target});
    });
    HttpRequest request = get(server.url(QStringLiteral("/away")));
    request.headers = {{"apikey", "key"},
                       {"AUTHORIZATION", "Bearer x"},
                       {"Cookie", "id=1"},
                       {"X-Apple-Store-Front", "143441-1,29"}};
    EXPECT_EQ(send(request).wait().value().body, "other");
    EXPECT_EQ(other.requests().at(0).header("apikey"), "");
    EXPECT_EQ(other.requests().at(0).header("Authorization"), "");
    EXPECT_EQ(other.requests().at(0).header("Cookie"), "");
    EXPECT_EQ(other.requests().at(0).header("X-Apple-Store-Front"), "143441-1,29");
    request.url = server.url(QStringLiteral("/own"));
    EXPECT_EQ(send(request).wait().value().body, "own");
    EXPECT_EQ(server.requests().back().header("apikey"), "key");
    // A POST would take its body along too, so its redirect is handed back as the answer.
    request.method = HttpRequest::Method::Post;
    request.body = "secret";
    request.url = server.url(QStringLiteral("/away"));
    EXPECT_EQ(send(request).wait().value().status, 307);
    EXPECT_EQ(other.requests().size(), 1U);
}

/// Servers label a packed archive as compressed. Unpacked on the way, it has neither the size nor
/// the bytes that were announced and signed.
TEST_F(NetworkHttpTest, AnArchiveBehindARedirectArrivesAsItIs)
{
    const QByteArray archive = gzip(QByteArray(20'000, 'a'));
    LoopbackServer files([&archive](const Request &, Connection &connection) {
        connection.answer(200, archive, {"Content-Encoding: gzip"});
    });
    const QByteArray target = files.url(QStringLiteral("/veltrix.tar.gz")).toEncoded();
    LoopbackServer feed([&target](const Request &, Connection &connection) {
        connection.answer(302, "", {"Location: " + target});
    });
    HttpRequest request = get(feed.url());
    request.headers = {{"Accept-Encoding", "identity"}};
    Outcome outcome(m_http->downloader()(request, {}, {}));
    EXPECT_EQ(outcome.wait().value().body, archive);
    EXPECT_EQ(files.requests().at(0).header("Accept-Encoding"), "identity");
}

TEST_F(NetworkHttpTest, AStopEndsTheConnectionAtOnce)
{
    LoopbackServer server([](const Request &, Connection &connection) { connection.wait(10s); });
    std::stop_source stop;
    auto outcome = send(get(server.url()), stop.get_token());
    while (server.requests().empty())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    stop.request_stop();
    EXPECT_TRUE(outcome.isCancelled());
    QElapsedTimer timer;
    timer.start();
    while (server.abandoned() == 0 && timer.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_EQ(server.abandoned(), 1);
}

TEST_F(NetworkHttpTest, ASenderOutlivesItsMakerAndTransfersEndWithTheLastSender)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.wait(100ms);
        connection.answer(200, "late");
    });
    HttpSend sender = m_http->sender();
    m_http.reset();
    auto answered = Outcome(sender(get(server.url()), {}));
    EXPECT_EQ(answered.wait().value().body, "late");
    const auto orphan = Outcome(sender(get(server.url()), {}));
    sender = {};
    EXPECT_TRUE(orphan.isCancelled());
}

TEST_F(NetworkHttpTest, TransfersRunSideBySide)
{
    std::atomic<int> open = 0;
    LoopbackServer server([&open](const Request &, Connection &connection) {
        ++open;
        for (int i = 0; i < 500 && open < 3; ++i)
            connection.wait(10ms);
        connection.answer(200, open >= 3 ? "together" : "alone");
    });
    std::vector<Outcome<HttpResponse>> outcomes;
    for (int i = 0; i < 3; ++i)
        outcomes.push_back(send(get(server.url())));
    for (auto &outcome : outcomes)
        EXPECT_EQ(outcome.wait().value().body, "together");
}

TEST_F(NetworkHttpTest, ADownloadTellsHowFarItIs)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.answer(200, QByteArray(500'000, 'x'));
    });
    std::vector<std::pair<qint64, std::optional<qint64>>> steps;
    const HttpProgress note = [&steps](qint64 received, std::optional<qint64> total) {
        steps.emplace_back(received, total);
    };
    Outcome outcome(m_http->downloader()(get(server.url()), note, {}));
    EXPECT_EQ(outcome.wait().value().body.size(), 500'000);
    ASSERT_FALSE(steps.empty());
    EXPECT_TRUE(std::is_sorted(steps.begin(), steps.end()));
    EXPECT_EQ(steps.back().first, 500'000);
    EXPECT_EQ(steps.back().second, 500'000);
}

TEST_F(NetworkHttpTest, AnAddressThatIsNotOfTheWebFailsAtOnce)
{
    for (const char *address : {"", "file:///etc/passwd", "https:///path", "mailto:a@b"}) {
        EXPECT_TRUE(send(get(QUrl(QString::fromUtf8(address)))).wait().holds<BadUrlError>())
            << address;
    }
}

} // namespace
} // namespace veltrix
