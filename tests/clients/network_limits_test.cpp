// SPDX-License-Identifier: GPL-3.0-or-later
// How long a transfer may take, and how large it may get.
#include "clients/network_http_fixture.h"

#include <QFile>
#include <QTemporaryDir>

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

class Headers : public NetworkLimits, public testing::WithParamInterface<std::pair<int, int>>
{
protected:
    /// Answers with so many headers of so many bytes.
    static LoopbackServer::Script script()
    {
        return [](const Request &, Connection &connection) {
            QByteArray head = "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n";
            for (int i = 0; i < GetParam().first; ++i) {
                head += "X-" + QByteArray::number(i) + ": " + QByteArray(GetParam().second, 'x') +
                        "\r\n";
            }
            connection.send(head + "\r\n{}");
            connection.wait(5s);
        };
    }
};

using FewHeaders = Headers;

TEST_P(FewHeaders, AreAccepted)
{
    LoopbackServer server(script());
    EXPECT_EQ(send(get(server.url())).wait().value().body, "{}");
}

INSTANTIATE_TEST_SUITE_P(Sizes, FewHeaders,
                         testing::Values(std::pair(0, 0), std::pair(90, 100), std::pair(30, 8000)));

using ManyHeaders = Headers;

TEST_P(ManyHeaders, AreRefusedBeforeTheBody)
{
    LoopbackServer server(script());
    HttpRequest request = get(server.url());
    request.timeout = Seconds(10);
    EXPECT_EQ(failure(request),
              QStringLiteral("The answer of the server “127.0.0.1” was too large."));
}

INSTANTIATE_TEST_SUITE_P(Sizes, ManyHeaders,
                         testing::Values(std::pair(101, 10), std::pair(1, 300'000),
                                         std::pair(60, 8000)));

TEST_F(NetworkLimits, HeadersThatNeverEndTimeOut)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nX: ");
        while (connection.send(QByteArray(1000, 'x')) && connection.wait(1ms)) {
        }
    });
    HttpRequest request = get(server.url());
    request.timeout = Seconds(0.3);
    EXPECT_EQ(failure(request), QStringLiteral("The server “127.0.0.1” did not answer in time."));
}

TEST_F(NetworkLimits, HeadersThatNeverEndLeaveTheNetworkToOthersOverHttps)
{
    const TestAuthority authority;
    const QTemporaryDir folder;
    QFile pem(folder.filePath(QStringLiteral("trusted.pem")));
    ASSERT_TRUE(pem.open(QIODevice::WriteOnly));
    pem.write(authority.certificatePem());
    pem.close();
    m_http =
        std::make_unique<NetworkHttp>(NetworkHttp::Options{QStringLiteral("1"), pem.fileName()});
    LoopbackServer hostile(
        [](const Request &, Connection &connection) {
            connection.send("HTTP/1.1 200 OK\r\nX: ");
            while (connection.send(QByteArray(1024 * 1024, 'x'))) {
            }
        },
        authority.issue("IP:127.0.0.1"));
    LoopbackServer honest(
        [](const Request &, Connection &connection) { connection.answer(200, "honest"); });
    HttpRequest request = get(hostile.url());
    request.timeout = Seconds(0.5);
    EXPECT_EQ(failure(request), QStringLiteral("The server “127.0.0.1” did not answer in time."));
    EXPECT_EQ(send(get(honest.url())).wait().value().body, "honest");
}

} // namespace
} // namespace veltrix
