// SPDX-License-Identifier: GPL-3.0-or-later
// How long a transfer may take, and how large it may get.
#include "clients/network_http_fixture.h"

namespace veltrix
{
namespace
{

using NetworkLimits = NetworkHttpTest;

TEST_F(NetworkLimits, AServerThatStaysSilentTimesOut)
{
    LoopbackServer server([](const Request &, Connection &connection) { connection.wait(10s); });
    HttpRequest request = get(server.url());
    request.timeout = Seconds(0.15);
    EXPECT_EQ(failure(request), QStringLiteral("The server “127.0.0.1” did not answer in time."));
}

TEST_F(NetworkLimits, AServerThatStopsInTheMiddleTimesOut)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nfirst half");
        connection.wait(10s);
    });
    HttpRequest request = get(server.url());
    request.timeout = Seconds(0.15);
    EXPECT_EQ(failure(request), QStringLiteral("The server “127.0.0.1” did not answer in time."));
}

/// One byte at a time, `pause` apart.
void trickle(Connection &connection, QByteArrayView bytes, std::chrono::milliseconds pause)
{
    for (const char byte : bytes) {
        if (!connection.send(QByteArrayView(&byte, 1)) || !connection.wait(pause))
            return;
    }
}

TEST_F(NetworkLimits, OneByteASecondTimesOutWhenTheTimeoutIsShorter)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n");
        trickle(connection, QByteArray(100, 'x'), 1s);
    });
    HttpRequest request = get(server.url());
    request.timeout = Seconds(0.3);
    EXPECT_EQ(failure(request), QStringLiteral("The server “127.0.0.1” did not answer in time."));
}

TEST_F(NetworkLimits, BytesThatKeepTricklingInStillEndAtTheTotalTime)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n");
        trickle(connection, QByteArray(1000, 'x'), 20ms);
    });
    HttpRequest request = get(server.url());
    request.timeout = Seconds(2);
    request.totalTimeout = Seconds(0.4);
    EXPECT_EQ(failure(request), QStringLiteral("The server “127.0.0.1” did not answer in time."));
}

TEST_F(NetworkLimits, SlowProgressIsNoTimeout)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\n");
        trickle(connection, "12345678", 100ms);
    });
    HttpRequest request = get(server.url());
    request.timeout = Seconds(0.5);
    EXPECT_EQ(send(request).wait().value().body, "12345678");
}

TEST_F(NetworkLimits, ABodyBeyondTheLimitEndsTheTransferWhileItArrives)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: 41943040\r\n\r\n");
        const QByteArray block(1024 * 1024, 'x');
        for (int i = 0; i < 40; ++i) {
            if (!connection.send(block))
                return;
        }
    });
    EXPECT_EQ(failure(get(server.url())),
              QStringLiteral("The answer of the server “127.0.0.1” was too large."));
    HttpRequest small = get(server.url());
    small.bodyLimit = 1000;
    EXPECT_EQ(failure(small),
              QStringLiteral("The answer of the server “127.0.0.1” was too large."));
}

TEST_F(NetworkLimits, ABodyOfExactlyTheLimitIsAccepted)
{
    LoopbackServer server([](const Request &request, Connection &connection) {
        connection.answer(200, QByteArray(request.target.mid(1).toInt(), 'x'));
    });
    HttpRequest request = get(server.url(QStringLiteral("/100000")));
    request.bodyLimit = 100'000;
    EXPECT_EQ(send(request).wait().value().body.size(), 100'000);
    request.url = server.url(QStringLiteral("/100001"));
    EXPECT_EQ(failure(request),
              QStringLiteral("The answer of the server “127.0.0.1” was too large."));
}

TEST_F(NetworkLimits, ACompressedBodyIsMeasuredByWhatItUnpacksTo)
{
    const QByteArray bomb = gzip(QByteArray(200LL * 1024 * 1024, '\0'));
    ASSERT_LT(bomb.size(), 1024 * 1024);
    LoopbackServer server([&bomb](const Request &, Connection &connection) {
        connection.answer(200, bomb, {"Content-Encoding: gzip"});
    });
    EXPECT_EQ(failure(get(server.url())),
              QStringLiteral("The answer of the server “127.0.0.1” was too large."));
}

} // namespace
} // namespace veltrix
