// SPDX-License-Identifier: GPL-3.0-or-later
// HTTPS: whose certificates are believed, and what the user reads about the others.
#include "clients/network_http.h"

#include "support/json_printers.h"
#include "support/loopback_server.h"
#include "support/task_outcome.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <openssl/crypto.h>

#include <cstdlib>

namespace veltrix
{
namespace
{

using Request = LoopbackServer::Request;
using Connection = LoopbackServer::Connection;

class NetworkTls : public testing::Test
{
protected:
    NetworkTls() { writePem("trusted.pem", m_authority.certificatePem()); }

    void writePem(const char *name, const QByteArray &pem)
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(pem);
    }
    [[nodiscard]] QString path(const char *name) const
    {
        return m_folder.filePath(QString::fromUtf8(name));
    }

    /// How a request to a server with this identity ends for someone who trusts that file.
    static Outcome<HttpResponse> ask(const TestIdentity &identity, const QString &trusted)
    {
        LoopbackServer server(
            [](const Request &, Connection &connection) { connection.answer(200, "safe"); },
            identity);
        const NetworkHttp http({QStringLiteral("1"), trusted});
        HttpRequest request;
        request.url = server.url(QStringLiteral("/functions?key=secret"));
        request.timeout = Seconds(5);
        Outcome outcome(http.sender()(request, {}));
        outcome.wait();
        EXPECT_EQ(server.requests().size(), outcome.hasValue() ? 1U : 0U)
            << "a request went to a server that is not trusted";
        return outcome;
    }
    [[nodiscard]] QString failure(const TestIdentity &identity, const char *trusted) const
    {
        return ask(identity, trusted == nullptr ? QString() : path(trusted)).failureText();
    }

    TestAuthority m_authority;
    QTemporaryDir m_folder;
};

TEST_F(NetworkTls, AServerOfAnAddedAuthorityIsTrusted)
{
    const auto outcome = ask(m_authority.issue("IP:127.0.0.1"), path("trusted.pem"));
    EXPECT_EQ(outcome.value().body, "safe");
}

TEST_F(NetworkTls, WithoutTheAuthorityItIsNot)
{
    const TestIdentity server = m_authority.issue("IP:127.0.0.1");
    const QString text = QStringLiteral("A secure connection to the server “127.0.0.1” could not "
                                        "be made: its certificate is not trusted.");
    EXPECT_EQ(failure(server, nullptr), text);
    EXPECT_EQ(failure(server, "missing.pem"), text);
    writePem("other.pem", TestAuthority().certificatePem());
    EXPECT_EQ(failure(server, "other.pem"), text);
}

TEST_F(NetworkTls, AFileOfAuthoritiesThatIsBrokenIsReportedWhereItIsMissed)
{
    const TestIdentity server = m_authority.issue("IP:127.0.0.1");
    const QString text = QStringLiteral("A secure connection to the server “127.0.0.1” could not "
                                        "be made: its certificate is not trusted. ");
    const QByteArray pem = m_authority.certificatePem();
    for (const QByteArray &content :
         {QByteArray(), QByteArray("not a certificate"), pem.first(pem.size() / 2),
          QByteArray(pem).replace(40, 20, "????????????????????")}) {
        writePem("broken.pem", content);
        EXPECT_EQ(failure(server, "broken.pem"),
                  text + QStringLiteral("The file “%1” holds no certificate that can be read.")
                             .arg(path("broken.pem")))
            << content.toStdString();
    }
    writePem("half.pem", TestAuthority().certificatePem() + pem.first(pem.size() / 2));
    EXPECT_EQ(failure(server, "half.pem"),
              text + QStringLiteral("Of the 2 certificates in the file “%1” only 1 can be read.")
                         .arg(path("half.pem")));
    // What can be read is trusted all the same, and then there is nothing to complain about.
    writePem("mixed.pem", pem + TestAuthority().certificatePem().chopped(100));
    EXPECT_EQ(ask(server, path("mixed.pem")).value().body, "safe");
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(QStringLiteral("folder.pem")));
    EXPECT_TRUE(failure(server, "folder.pem").startsWith(text));
    EXPECT_TRUE(failure(server, "folder.pem").contains(path("folder.pem")));
}

TEST_F(NetworkTls, ACertificateForAnotherNameIsRefused)
{
    EXPECT_EQ(failure(m_authority.issue("DNS:other.example"), "trusted.pem"),
              QStringLiteral("A secure connection to the server “127.0.0.1” could not be made: its "
                             "certificate is for another name."));
}

TEST_F(NetworkTls, AnExpiredCertificateIsRefused)
{
    EXPECT_EQ(
        failure(m_authority.issue("IP:127.0.0.1", TestAuthority::Validity::Expired), "trusted.pem"),
        QStringLiteral("A secure connection to the server “127.0.0.1” could not be made: its "
                       "certificate has expired."));
}

TEST_F(NetworkTls, ACertificateOfTheFutureIsRefused)
{
    EXPECT_EQ(
        failure(m_authority.issue("IP:127.0.0.1", TestAuthority::Validity::NotYet), "trusted.pem"),
        QStringLiteral("A secure connection to the server “127.0.0.1” could not be made: its "
                       "certificate is not valid yet."));
}

TEST_F(NetworkTls, AServerThatSpeaksNoTlsIsRefused)
{
    LoopbackServer plain(
        [](const Request &, Connection &connection) { connection.answer(200, "plain"); });
    const NetworkHttp http({QStringLiteral("1"), {}});
    HttpRequest request;
    request.url = plain.url();
    request.url.setScheme(QStringLiteral("https"));
    request.timeout = Seconds(1);
    EXPECT_TRUE(Outcome(http.sender()(request, {})).wait().holds<TransportError>());
    EXPECT_TRUE(plain.requests().empty());
}

TEST_F(NetworkTls, ARedirectFromHttpsToHttpIsRefused)
{
    LoopbackServer plain(
        [](const Request &, Connection &connection) { connection.answer(200, "plain"); });
    const QByteArray target = plain.url().toEncoded();
    LoopbackServer server(
        [&target](const Request &, Connection &connection) {
            connection.answer(307, "", {"Location: " + target});
        },
        m_authority.issue("IP:127.0.0.1"));
    const NetworkHttp http({QStringLiteral("1"), path("trusted.pem")});
    for (const auto method : {HttpRequest::Method::Get, HttpRequest::Method::Post}) {
        HttpRequest request;
        request.method = method;
        request.url = server.url();
        EXPECT_EQ(Outcome(http.sender()(request, {})).wait().failureText(),
                  QStringLiteral("The server “127.0.0.1” redirected to an address that is not "
                                 "safe."));
    }
    EXPECT_TRUE(plain.requests().empty());
}

TEST_F(NetworkTls, ARedirectFromHttpToHttpsIsFollowed)
{
    LoopbackServer safe(
        [](const Request &, Connection &connection) { connection.answer(200, "safe"); },
        m_authority.issue("IP:127.0.0.1"));
    const QByteArray target = safe.url().toEncoded();
    LoopbackServer plain([&target](const Request &, Connection &connection) {
        connection.answer(301, "", {"Location: " + target});
    });
    const NetworkHttp http({QStringLiteral("1"), path("trusted.pem")});
    HttpRequest request;
    request.url = plain.url();
    EXPECT_EQ(Outcome(http.sender()(request, {})).wait().value().body, "safe");
}

// What a thread of the network frees while the program exits would be freed twice.
TEST(NetworkTlsAtExit, OpenSslIsLeftAsItIs)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto exitAfterARequest = [] {
        const NetworkHttp http({QStringLiteral("1"), QString()});
        HttpRequest request;
        request.url = QUrl(QStringLiteral("https://127.0.0.1:1"));
        Outcome(http.sender()(request, {})).wait();
        constexpr int cleanedUp = 3;
        OPENSSL_atexit([] { std::_Exit(cleanedUp); });
        std::exit(0);
    };
    EXPECT_EXIT(exitAfterARequest(), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace veltrix
