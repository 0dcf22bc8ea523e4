// SPDX-License-Identifier: GPL-3.0-or-later
// The research client over real HTTPS, against servers and platforms as they are on bad days.
#include "clients/network_http.h"
#include "clients/research_client.h"
#include "effects/system_clock.h"
#include "support/json_printers.h"
#include "support/loopback_server.h"
#include "support/task_outcome.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veltrix
{
namespace
{

using namespace std::chrono_literals;
using Request = LoopbackServer::Request;
using Connection = LoopbackServer::Connection;

class ResearchOverHttps : public testing::Test
{
protected:
    ResearchOverHttps()
    {
        QFile pem(m_folder.filePath(QStringLiteral("TrustedCertificates.pem")));
        EXPECT_TRUE(pem.open(QIODevice::WriteOnly));
        pem.write(m_authority.certificatePem());
    }

    /// How a search against this script ends.
    Outcome<QList<ITunesAppResult>> search(LoopbackServer::Script script,
                                           std::optional<TestIdentity> identity = std::nullopt,
                                           std::optional<Seconds> timeout = std::nullopt)
    {
        LoopbackServer server(std::move(script),
                              identity ? *identity : m_authority.issue("IP:127.0.0.1"));
        return searchAt(server.url(QString()), timeout);
    }
    Outcome<QList<ITunesAppResult>> searchAt(const QUrl &project,
                                             std::optional<Seconds> timeout = std::nullopt)
    {
        const NetworkHttp http(
            {QStringLiteral("1"), m_folder.filePath(QStringLiteral("TrustedCertificates.pem"))});
        const HttpSend send = [inner = http.sender(), timeout](HttpRequest request,
                                                               std::stop_token stop) {
            // The real fifteen seconds would only make the test slow.
            if (timeout) {
                request.timeout = std::min(request.timeout, *timeout);
                request.totalTimeout = *timeout * 3;
            }
            return inner(std::move(request), std::move(stop));
        };
        ResearchClient client(
            {[project] {
                 return SupabaseConfiguration{project, QStringLiteral("sb_publishable_secret")};
             },
             send,
             std::make_shared<SystemClock>(),
             nullptr,
             {}});
        Outcome outcome(
            client.search(QStringLiteral("private keyword"), QStringLiteral("us"), 10, {}));
        outcome.wait();
        for (const char *secret : {"sb_publishable", "private", "keyword", "aso-research"})
            EXPECT_FALSE(outcome.failureText().contains(QLatin1String(secret)));
        return outcome;
    }
    QString failure(LoopbackServer::Script script,
                    std::optional<TestIdentity> identity = std::nullopt,
                    std::optional<Seconds> timeout = std::nullopt)
    {
        return search(std::move(script), std::move(identity), timeout).failureText();
    }

    TestAuthority m_authority;
    QTemporaryDir m_folder;
};

QString failed(int status)
{
    return QStringLiteral("Research request failed (%1). Please try again later.").arg(status);
}

const QString closed =
    QStringLiteral("The server “127.0.0.1” closed the connection before its answer was whole.");
const QString late = QStringLiteral("The server “127.0.0.1” did not answer in time.");

TEST_F(ResearchOverHttps, AReadyAnswerIsGiven)
{
    const auto outcome = search([](const Request &request, Connection &connection) {
        const bool isRight = request.method == "POST" &&
                             request.target == "/functions/v1/aso-research" &&
                             request.header("apikey") == "sb_publishable_secret" &&
                             request.header("Authorization").isEmpty() &&
                             request.body == R"({"keyword":"private keyword","country":"US"})";
        connection.answer(isRight ? 200 : 400, R"({"status":"ready","results":[{"trackId":5}]})");
    });
    EXPECT_EQ(outcome.value().front().trackId, 5);
}

TEST_F(ResearchOverHttps, APendingAnswerIsAskedForAgain)
{
    std::atomic<int> asked = 0;
    const auto outcome = search([&asked](const Request &, Connection &connection) {
        if (asked++ == 0)
            connection.answer(202, R"({"status":"pending"})", {"Retry-After: 1"});
        else
            connection.answer(200, R"({"status":"ready","results":[]})");
    });
    EXPECT_TRUE(outcome.hasValue());
    EXPECT_EQ(asked, 2);
}

TEST_F(ResearchOverHttps, FailuresOfThePlatformAreSaidWithTheirStatus)
{
    const std::vector<std::pair<int, const char *>> answers = {
        {401, R"({"code":401,"message":"Missing authorization header"})"},
        {401, R"({"code":"UNAUTHORIZED_INVALID_JWT_FORMAT","message":"Invalid JWT"})"},
        {404, R"({"code":"NOT_FOUND","message":"Requested function was not found"})"},
        {500, R"({"code":"WORKER_ERROR","message":"Function exited due to an error"})"},
        {502, "<html><body><h1>502 Bad Gateway</h1></body></html>"},
        {504, R"({"code":"IDLE_TIMEOUT","message":"The request timed out"})"},
        {540, R"({"message":"Project paused"})"},
        {546, R"({"code":"WORKER_LIMIT","message":"Not enough resources"})"},
        {200, "<html><body>Sign in to this network</body></html>"},
        {200, ""},
    };
    for (const auto &[code, body] : answers) {
        EXPECT_EQ(failure([status = code, text = body](const Request &, Connection &connection) {
                      connection.answer(status, text);
                  }),
                  failed(code))
            << body;
    }
}

TEST_F(ResearchOverHttps, LimitsOfThePlatformAreQueuedWithTheirTime)
{
    const auto limited = [](int status, const char *body) {
        return [status, body](const Request &, Connection &connection) {
            connection.answer(status, body, {"Retry-After: 90"});
        };
    };
    const QString text =
        QStringLiteral("Research is queued or temporarily limited. Try again in 2 minute(s).");
    EXPECT_EQ(failure(limited(429, R"({"code":429,"message":"Too many requests"})")), text);
    EXPECT_EQ(
        failure(limited(503, R"({"code":"BOOT_ERROR","message":"Function failed to start"})")),
        text);
    EXPECT_EQ(failure(limited(503, "<html>Service Unavailable</html>")), text);
}

TEST_F(ResearchOverHttps, ARefusedConnectionIsSaid)
{
    const QUrl nobody(QStringLiteral("https://127.0.0.1:%1").arg(LoopbackServer::unusedPort()));
    EXPECT_EQ(searchAt(nobody).failureText(),
              QStringLiteral("The server “127.0.0.1” refused the connection."));
}

TEST_F(ResearchOverHttps, ConnectionsThatBreakOffAreSaid)
{
    EXPECT_EQ(failure([](const Request &, Connection &) {}), closed);
    EXPECT_EQ(failure([](const Request &, Connection &connection) {
                  connection.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n");
              }),
              closed);
    EXPECT_EQ(failure([](const Request &, Connection &connection) {
                  connection.send(
                      "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"status\":\"ready\"");
              }),
              closed);
}

TEST_F(ResearchOverHttps, OneByteASecondTimesOut)
{
    EXPECT_EQ(failure(
                  [](const Request &, Connection &connection) {
                      connection.send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n");
                      for (int i = 0; i < 100; ++i) {
                          if (!connection.send("x") || !connection.wait(1s))
                              return;
                      }
                  },
                  std::nullopt, Seconds(0.3)),
              late);
}

TEST_F(ResearchOverHttps, FortyMebibytesAreTooMuch)
{
    EXPECT_EQ(failure([](const Request &, Connection &connection) {
                  connection.send("HTTP/1.1 200 OK\r\nContent-Length: 41943040\r\n\r\n");
                  const QByteArray block(1024 * 1024, ' ');
                  for (int i = 0; i < 40; ++i) {
                      if (!connection.send(block))
                          return;
                  }
              }),
              QStringLiteral("The answer of the server “127.0.0.1” was too large."));
}

TEST_F(ResearchOverHttps, ALengthThatIsTooSmallCutsTheAnswerShort)
{
    EXPECT_EQ(failure([](const Request &, Connection &connection) {
                  connection.send("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n"
                                  R"({"status":"ready","results":[]})");
              }),
              failed(200));
}

TEST_F(ResearchOverHttps, ARedirectToHttpIsRefused)
{
    LoopbackServer plain(
        [](const Request &, Connection &connection) { connection.answer(200, "{}"); });
    EXPECT_EQ(failure([target = plain.url().toEncoded()](const Request &, Connection &connection) {
                  connection.answer(307, "", {"Location: " + target});
              }),
              QStringLiteral("The server “127.0.0.1” redirected to an address that is not safe."));
    EXPECT_TRUE(plain.requests().empty());
}

TEST_F(ResearchOverHttps, ARedirectToAnotherServerIsNotFollowedWithTheKey)
{
    LoopbackServer other(
        [](const Request &, Connection &connection) { connection.answer(200, "{}"); },
        m_authority.issue("IP:127.0.0.1"));
    EXPECT_EQ(failure([target = other.url().toEncoded()](const Request &, Connection &connection) {
                  connection.answer(308, "", {"Location: " + target});
              }),
              failed(308));
    EXPECT_TRUE(other.requests().empty());
}

TEST_F(ResearchOverHttps, CertificatesThatAreNotRightAreRefused)
{
    const auto never = [](const Request &, Connection &) {
        ADD_FAILURE() << "the request went to a server that is not trusted";
    };
    const QString refused =
        QStringLiteral("A secure connection to the server “127.0.0.1” could not be made: its "
                       "certificate %1.");
    EXPECT_EQ(failure(never, m_authority.issue("DNS:other.example")),
              refused.arg(QStringLiteral("is for another name")));
    EXPECT_EQ(failure(never, m_authority.issue("IP:127.0.0.1", TestAuthority::Validity::Expired)),
              refused.arg(QStringLiteral("has expired")));
    EXPECT_EQ(failure(never, TestAuthority().issue("IP:127.0.0.1")),
              refused.arg(QStringLiteral("is not trusted")));
}

} // namespace
} // namespace veltrix
