// SPDX-License-Identifier: GPL-3.0-or-later
// The updater against real servers on loopback, over HTTPS and the real clock.
#include "clients/network_http.h"
#include "clients/update/updater_fixture.h"
#include "effects/atomic_file.h"
#include "effects/system_clock.h"
#include "support/loopback_server.h"
#include "support/task_outcome.h"

#include <QCoreApplication>

namespace veltrix
{
namespace
{

using Request = LoopbackServer::Request;
using Connection = LoopbackServer::Connection;

class UpdaterNetwork : public UpdaterTest
{
protected:
    UpdaterNetwork()
    {
        const QString trusted = m_folder.filePath(QStringLiteral("trusted.pem"));
        writeFileAtomically(trusted, m_authority.certificatePem());
        m_network.emplace(NetworkHttp::Options{QStringLiteral("1.5"), trusted});
        m_package = packageOf("2.0", 3'000'000);
    }

    /// A server with a certificate that is trusted here.
    [[nodiscard]] std::unique_ptr<LoopbackServer> serve(LoopbackServer::Script script) const
    {
        return std::make_unique<LoopbackServer>(std::move(script),
                                                m_authority.issue("IP:127.0.0.1"));
    }

    /// A server whose feed offers the package that another script sends.
    void offerFrom(LoopbackServer::Script packageScript)
    {
        m_server = serve([this, script = std::move(packageScript)](const Request &request,
                                                                   Connection &connection) {
            if (request.target == "/feed.xml")
                connection.answer(200, m_feed, {"Content-Type: application/rss+xml"});
            else
                script(request, connection);
        });
        TestItem offered = item(QStringLiteral("2.0"));
        offered.url = m_server->url(QStringLiteral("/veltrix_2.0.deb")).toString();
        m_feed = feedOf({offered});
    }

    void openAt(const QUrl &feed)
    {
        UpdaterEnvironment real = environment();
        real.send = m_network->sender();
        real.download = m_network->downloader();
        real.clock = std::make_shared<SystemClock>();
        const UpdateSource source{feed, UpdateKey::fromBase64(m_signer.publicKey()).value()};
        m_updater = std::make_unique<Updater>(source, real);
    }

    QString check()
    {
        m_updater->checkForUpdates();
        waitFor([this] { return m_updater->canCheckForUpdates(); });
        return inWords(m_updater->status());
    }
    QString download()
    {
        m_updater->downloadUpdate();
        waitFor([this] { return m_updater->canCheckForUpdates(); });
        return inWords(m_updater->status());
    }

    /// Packages that were stored.
    [[nodiscard]] QStringList packages() const
    {
        return files().filter(QStringLiteral("/updates/"));
    }

    TestAuthority m_authority;
    std::optional<NetworkHttp> m_network;
    QByteArray m_feed;
    std::unique_ptr<LoopbackServer> m_server;
};

TEST_F(UpdaterNetwork, AnUpdateComesOverHttpsByteForByte)
{
    offerFrom([this](const Request &, Connection &connection) {
        connection.answer(200, m_package, {"Content-Type: application/octet-stream"});
    });
    openAt(m_server->url(QStringLiteral("/feed.xml")));
    EXPECT_EQ(check(), QStringLiteral("2.0 is available"));
    qint64 most = 0;
    QObject::connect(m_updater.get(), &Updater::statusChanged, m_updater.get(), [&] {
        if (const auto *it = std::get_if<UpdateDownloading>(&m_updater->status()))
            most = std::max(most, it->received);
    });
    EXPECT_EQ(download(), QStringLiteral("handed over 2.0"));
    EXPECT_EQ(m_opened, packages());
    ASSERT_EQ(m_opened.size(), 1);
    EXPECT_TRUE(m_opened[0].endsWith(QStringLiteral("/veltrix_2.0.deb")));
    EXPECT_GT(most, 0);
    const std::vector<Request> requests = m_server->requests();
    ASSERT_EQ(requests.size(), 2U);
    EXPECT_EQ(requests[0].header("User-Agent"), "Veltrix/1.5");
    EXPECT_EQ(requests[1].header("Accept-Encoding"), "identity");
}

TEST_F(UpdaterNetwork, ARedirectToPlainHttpIsRefused)
{
    LoopbackServer plain(
        [this](const Request &, Connection &connection) { connection.answer(200, m_package); });
    const QByteArray target = plain.url(QStringLiteral("/veltrix.deb")).toEncoded();
    const QString unsafe =
        QStringLiteral("failed: The server “127.0.0.1” redirected to an address that is not safe.");

    offerFrom([&target](const Request &, Connection &connection) {
        connection.answer(302, "", {"Location: " + target});
    });
    openAt(m_server->url(QStringLiteral("/feed.xml")));
    EXPECT_EQ(check(), QStringLiteral("2.0 is available"));
    EXPECT_EQ(download(), unsafe);

    const auto redirecting = serve([&target](const Request &, Connection &connection) {
        connection.answer(301, "", {"Location: " + target});
    });
    openAt(redirecting->url(QStringLiteral("/feed.xml")));
    EXPECT_EQ(check(), unsafe);
    EXPECT_TRUE(plain.requests().empty());
    EXPECT_TRUE(packages().isEmpty());
    EXPECT_TRUE(m_opened.isEmpty());
}

TEST_F(UpdaterNetwork, ADownloadThatIsStoppedHalfWayEndsTheConnectionAndLeavesNothing)
{
    offerFrom([this](const Request &, Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nContent-Length: " +
                        QByteArray::number(m_package.size()) + "\r\n\r\n");
        connection.send(m_package.first(m_package.size() / 2));
        connection.wait(std::chrono::seconds(20));
    });
    openAt(m_server->url(QStringLiteral("/feed.xml")));
    check();
    m_updater->downloadUpdate();
    waitFor([this] {
        const auto *downloading = std::get_if<UpdateDownloading>(&m_updater->status());
        return downloading && downloading->received == m_package.size() / 2;
    });
    m_updater->stop();
    EXPECT_EQ(inWords(m_updater->status()), QStringLiteral("2.0 is available"));
    waitFor([this] { return m_server->abandoned() == 1; });
    EXPECT_TRUE(packages().isEmpty());
    EXPECT_TRUE(m_opened.isEmpty());
}

TEST_F(UpdaterNetwork, ADownloadThatBreaksOffOrRunsOverIsRefusedAndLeavesNothing)
{
    const auto sends = [this](const QByteArray &head, const QByteArray &body) {
        offerFrom([head, body](const Request &, Connection &connection) {
            connection.send("HTTP/1.1 200 OK\r\n" + head + "\r\n");
            connection.send(body);
        });
        openAt(m_server->url(QStringLiteral("/feed.xml")));
        check();
        const QString end = download();
        EXPECT_TRUE(packages().isEmpty());
        EXPECT_TRUE(m_opened.isEmpty());
        return end;
    };
    const QByteArray half = m_package.first(m_package.size() / 2);
    EXPECT_EQ(
        sends("Content-Length: " + QByteArray::number(m_package.size()) + "\r\n", half),
        QStringLiteral("failed: The server “127.0.0.1” closed the connection before its answer "
                       "was whole."));
    EXPECT_EQ(sends("Connection: close\r\n", half),
              QStringLiteral("failed: The update was refused: it has %1 bytes, not the "
                             "announced %2.")
                  .arg(half.size())
                  .arg(m_package.size()));
    EXPECT_EQ(sends("Connection: close\r\n", m_package + "more"),
              QStringLiteral("failed: The answer of the server “127.0.0.1” was too large."));
    QByteArray tampered = m_package;
    tampered[1'234'567] = 'x';
    EXPECT_EQ(
        sends("Content-Length: " + QByteArray::number(tampered.size()) + "\r\n", tampered),
        QStringLiteral("failed: The update was refused: its signature is not that of Veltrix."));
}

TEST_F(UpdaterNetwork, AFeedThatBreaksOffOrIsTooLargeIsRefused)
{
    const auto checkOf = [this](const QByteArray &head, const QByteArray &body) {
        const auto server = serve([head, body](const Request &, Connection &connection) {
            connection.send("HTTP/1.1 200 OK\r\n" + head + "\r\n");
            connection.send(body);
        });
        openAt(server->url(QStringLiteral("/feed.xml")));
        return check();
    };
    const QByteArray feed = feedOf({item(QStringLiteral("2.0"))});
    EXPECT_EQ(
        checkOf("Content-Length: 99999\r\n", feed),
        QStringLiteral("failed: The server “127.0.0.1” closed the connection before its answer "
                       "was whole."));
    EXPECT_TRUE(checkOf("Connection: close\r\n", feed.chopped(20))
                    .startsWith(QStringLiteral("failed: The update feed couldn’t be read.")));
    EXPECT_EQ(checkOf("Connection: close\r\n", feed + QByteArray(largestAppcast, ' ')),
              QStringLiteral("failed: The answer of the server “127.0.0.1” was too large."));
}

TEST_F(UpdaterNetwork, AServerThatIsNotTrustedIsNotAsked)
{
    LoopbackServer stranger(
        [](const Request &, Connection &connection) { connection.answer(200, feedWith("")); },
        TestAuthority().issue("IP:127.0.0.1"));
    openAt(stranger.url(QStringLiteral("/feed.xml")));
    EXPECT_EQ(check(), QStringLiteral("failed: A secure connection to the server “127.0.0.1” could "
                                      "not be made: its certificate is not trusted."));
    EXPECT_TRUE(stranger.requests().empty());
}

TEST_F(UpdaterNetwork, ItMayGoInTheMiddleOfADownload)
{
    offerFrom([this](const Request &, Connection &connection) {
        connection.send("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + m_package.first(100'000));
        connection.wait(std::chrono::seconds(20));
    });
    openAt(m_server->url(QStringLiteral("/feed.xml")));
    check();
    m_updater->downloadUpdate();
    waitFor([this] {
        const auto *downloading = std::get_if<UpdateDownloading>(&m_updater->status());
        return downloading && downloading->received > 0;
    });
    m_updater.reset();
    waitFor([this] { return m_server->abandoned() == 1; });
    EXPECT_TRUE(packages().isEmpty());
}

} // namespace
} // namespace veltrix
