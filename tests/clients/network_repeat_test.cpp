// SPDX-License-Identifier: GPL-3.0-or-later
// How often a counted request goes out when connections break, and what it takes for that.
#include "clients/network_http_fixture.h"

#include "clients/itunes_client.h"
#include "effects/system_clock.h"

#include <QFile>
#include <QTemporaryDir>

namespace veltrix
{
namespace
{

constexpr const char *emptyAnswer =
    "HTTP/1.1 200 OK\r\nContent-Length: 30\r\n\r\n{\"resultCount\":0,\"results\":[]}";

class RepeatTest : public NetworkHttpTest
{
protected:
    RepeatTest()
    {
        QFile pem(m_folder.filePath(QStringLiteral("trusted.pem")));
        EXPECT_TRUE(pem.open(QIODevice::WriteOnly));
        pem.write(m_authority.certificatePem());
        pem.close();
        m_http = std::make_unique<NetworkHttp>(
            NetworkHttp::Options{QStringLiteral("1"), pem.fileName()});
    }
    [[nodiscard]] TestIdentity identity() const { return m_authority.issue("IP:127.0.0.1"); }

    /// A request that takes a permit before it goes out again.
    HttpRequest counted(const QUrl &url)
    {
        HttpRequest request = get(url);
        request.permitToRepeat = [permits = m_permits](std::stop_token stop) {
            return permit(permits, std::move(stop));
        };
        return request;
    }
    /// Permits taken for going out again.
    [[nodiscard]] int permits() const { return *m_permits; }

    static Task<void> permit(std::shared_ptr<int> permits, std::stop_token stop)
    {
        throwIfStopped(stop);
        ++*permits;
        co_return;
    }

    TestAuthority m_authority;
    QTemporaryDir m_folder;
    std::shared_ptr<int> m_permits = std::make_shared<int>(0);
};

enum class Break { Close, Reset };

void breakOff(Connection &connection, Break how)
{
    if (how == Break::Reset)
        connection.reset();
}

class BrokenConnection : public RepeatTest, public testing::WithParamInterface<Break>
{
};

TEST_P(BrokenConnection, ThatWasMadeForARequestFailsItAndItIsNeverSentAgain)
{
    LoopbackServer server(
        [](const Request &, Connection &connection) { breakOff(connection, GetParam()); },
        identity());
    for (size_t i = 1; i <= 8; ++i) {
        EXPECT_EQ(send(counted(server.url())).wait().failureText(),
                  QStringLiteral("The server “127.0.0.1” closed the connection before its answer "
                                 "was whole."));
        EXPECT_EQ(server.requests().size(), i);
    }
    EXPECT_EQ(permits(), 0);
}

TEST_P(BrokenConnection, ThatWasKeptOpenIsReplacedOnceAndForAPermit)
{
    LoopbackServer server(
        [](const Request &, Connection &connection) {
            connection.send(emptyAnswer);
            if (connection.receive())
                breakOff(connection, GetParam());
        },
        identity());
    // Each request but the first finds the connection of the one before.
    for (int i = 0; i < 8; ++i) {
        auto outcome = send(counted(server.url(QStringLiteral("/%1").arg(i))));
        EXPECT_TRUE(outcome.wait().hasValue()) << outcome.failureText().toStdString();
        EXPECT_EQ(permits(), i);
        EXPECT_EQ(server.requests().size(), size_t(1 + 2 * i));
    }
}

TEST_P(BrokenConnection, OverPlainHttpTakesAPermitForEachTimeThatTheRequestWentOut)
{
    LoopbackServer server(
        [](const Request &, Connection &connection) { breakOff(connection, GetParam()); });
    for (int i = 1; i <= 8; ++i) {
        EXPECT_TRUE(send(counted(server.url())).wait().holds<TransportError>());
        EXPECT_EQ(server.requests().size(), size_t(i + permits()));
    }
    EXPECT_GT(permits(), 0) << "the toolkit repeats by itself here";
}

TEST_P(BrokenConnection, OverPlainHttpThatWasKeptOpenTakesAPermitToo)
{
    LoopbackServer server([](const Request &, Connection &connection) {
        connection.send(emptyAnswer);
        if (connection.receive())
            breakOff(connection, GetParam());
    });
    for (int i = 0; i < 8; ++i) {
        EXPECT_TRUE(send(counted(server.url())).wait().hasValue());
        EXPECT_EQ(permits(), i);
        EXPECT_EQ(server.requests().size(), size_t(1 + 2 * i));
    }
}

INSTANTIATE_TEST_SUITE_P(Ways, BrokenConnection, testing::Values(Break::Close, Break::Reset),
                         [](const auto &way) {
                             return way.param == Break::Close ? "Closed" : "Reset";
                         });

TEST_F(RepeatTest, AConnectionThatIsKeptIsUsedAgainWithoutAPermit)
{
    LoopbackServer server(
        [](const Request &, Connection &connection) {
            do
                connection.send(emptyAnswer);
            while (connection.receive());
        },
        identity());
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(send(counted(server.url())).wait().hasValue());
    EXPECT_EQ(server.requests().size(), 5U);
    EXPECT_EQ(permits(), 0);
}

TEST_F(RepeatTest, ARedirectTakesAPermit)
{
    LoopbackServer server([](const Request &request, Connection &connection) {
        const int left = request.target.mid(1).toInt();
        if (left == 0)
            connection.answer(200, "there");
        else
            connection.answer(302, "", {"Location: /" + QByteArray::number(left - 1)});
    });
    EXPECT_EQ(send(counted(server.url(QStringLiteral("/3")))).wait().value().body, "there");
    EXPECT_EQ(permits(), 3);
    EXPECT_EQ(server.requests().size(), 4U);
}

TEST_F(RepeatTest, ARequestThatNobodyCountsIsSentAgainWhenItsKeptConnectionHasGone)
{
    LoopbackServer server(
        [](const Request &, Connection &connection) {
            connection.send(emptyAnswer);
            connection.receive();
        },
        identity());
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(send(get(server.url())).wait().hasValue());
    EXPECT_EQ(server.requests().size(), 5U);
}

/// The whole way: what the server sees and what the budget was charged are the same number.
TEST_F(RepeatTest, TheAppStoreIsNeverAskedWithoutAPermit)
{
    LoopbackServer server(
        [](const Request &, Connection &connection) {
            connection.send(emptyAnswer);
            if (connection.receive())
                connection.reset();
        },
        identity());
    const auto traffic = std::make_shared<ITunesTrafficController>(std::make_shared<SystemClock>());
    ITunesClient client({server.url(), m_http->sender(), traffic});
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 3; ++i) {
        const auto outcome =
            Outcome(client.search(QString::number(i), QStringLiteral("us"), 1, {}));
        EXPECT_TRUE(Outcome(outcome).wait().hasValue());
    }
    // Three searches, two of which went out twice: the whole bucket, four spacings.
    EXPECT_EQ(server.requests().size(), 5U);
    EXPECT_GE(timer.elapsed(), 4 * 350);
}

} // namespace
} // namespace veltrix
