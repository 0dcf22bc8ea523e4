// SPDX-License-Identifier: GPL-3.0-or-later
// A small HTTP server on loopback that does exactly what a test tells it, also what no server
// should.
#pragma once

#include "support/test_certificates.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QUrl>

#include <atomic>
#include <chrono>
#include <functional>
#include <list>
#include <mutex>
#include <optional>
#include <thread>

using SSL = struct ssl_st;
using SSL_CTX = struct ssl_ctx_st;

namespace veltrix
{

/// Serves every connection in a thread of its own by a script of the test's.
class LoopbackServer
{
public:
    struct Request {
        QByteArray method;
        /// Path and query, as sent.
        QByteArray target;
        /// Header lines, as sent.
        QByteArrayList headers;
        QByteArray body;

        /// The value of a header, ignoring case; empty when there is none.
        [[nodiscard]] QByteArray header(QByteArrayView name) const;
    };

    /// The open connection, as its script sees it.
    class Connection
    {
    public:
        /// Sends bytes as they are; false when the client has gone.
        bool send(QByteArrayView bytes);
        /// Sends a whole answer with Content-Length and closes.
        void answer(int status, QByteArrayView body, const QByteArrayList &headers = {});
        /// Waits; false when the client or the test has gone meanwhile.
        bool wait(std::chrono::milliseconds duration);
        /// Waits for another request on the same connection; nothing when the client has gone.
        std::optional<Request> receive();
        /// Breaks the connection off at the end of the script, as a machine does that has forgotten
        /// it, instead of closing it in good order.
        void reset();

    private:
        friend class LoopbackServer;
        LoopbackServer *server = nullptr;
        int socket = -1;
        SSL *tls = nullptr;
        bool isReset = false;
    };

    /// Runs in a thread of the server's, once a connection. The connection is closed when it
    /// returns.
    using Script = std::function<void(const Request &request, Connection &connection)>;

    /// Speaks HTTP, or HTTPS with an identity.
    explicit LoopbackServer(Script script, std::optional<TestIdentity> identity = std::nullopt);
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer &) = delete;
    LoopbackServer &operator=(const LoopbackServer &) = delete;

    /// "http://127.0.0.1:<port>" and the path (and query) given.
    [[nodiscard]] QUrl url(const QString &path = QStringLiteral("/")) const;
    [[nodiscard]] quint16 port() const { return m_port; }
    /// Requests received so far.
    [[nodiscard]] std::vector<Request> requests() const;
    /// Connections whose client went before the script had ended.
    [[nodiscard]] int abandoned() const { return m_abandoned; }

    /// A port of this machine on which nobody listens.
    static quint16 unusedPort();

private:
    void acceptAll();
    void serve(int socket);
    /// The next request of a connection, noted; nothing when the client has gone.
    std::optional<Request> readRequest(Connection &connection);

    Script m_script;
    std::optional<TestIdentity> m_identity;
    std::shared_ptr<SSL_CTX> m_tlsContext;
    int m_listener = -1;
    quint16 m_port = 0;
    std::atomic<bool> m_isStopping = false;
    std::atomic<int> m_abandoned = 0;
    mutable std::mutex m_mutex;
    std::vector<Request> m_requests;
    std::list<std::thread> m_connections;
    std::thread m_acceptor;
};

} // namespace veltrix
