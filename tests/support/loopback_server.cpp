// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/loopback_server.h"

#include <openssl/ssl.h>

#include <arpa/inet.h>
#include <csignal>
#include <netinet/in.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace veltrix
{

namespace
{

/// A listening socket on a port of the system's choice.
int listenOnLoopback(quint16 &port)
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *plain = reinterpret_cast<sockaddr *>(&address);
    if (socket < 0 || ::bind(socket, plain, size) != 0 || ::listen(socket, 64) != 0 ||
        ::getsockname(socket, plain, &size) != 0)
        throw std::runtime_error("cannot listen on loopback");
    port = ntohs(address.sin_port);
    return socket;
}

std::shared_ptr<SSL_CTX> contextFor(const TestIdentity &identity)
{
    const std::shared_ptr<SSL_CTX> context(SSL_CTX_new(TLS_server_method()), SSL_CTX_free);
    if (!context || SSL_CTX_use_certificate(context.get(), identity.certificate.get()) != 1 ||
        SSL_CTX_use_PrivateKey(context.get(), identity.key.get()) != 1)
        throw std::runtime_error("cannot use the test's certificate");
    return context;
}

} // namespace

QByteArray LoopbackServer::Request::header(QByteArrayView name) const
{
    for (const QByteArray &line : headers) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0 && line.first(colon).compare(name.toByteArray(), Qt::CaseInsensitive) == 0)
            return line.mid(colon + 1).trimmed();
    }
    return {};
}

bool LoopbackServer::Connection::send(QByteArrayView bytes)
{
    qsizetype sent = 0;
    while (sent < bytes.size()) {
        const char *rest = bytes.data() + sent;
        const auto left = static_cast<size_t>(bytes.size() - sent);
        const ssize_t count = tls != nullptr ? SSL_write(tls, rest, int(left))
                                             : ::send(socket, rest, left, MSG_NOSIGNAL);
        if (count <= 0) {
            ++server->m_abandoned;
            return false;
        }
        sent += count;
    }
    return true;
}

void LoopbackServer::Connection::answer(int status, QByteArrayView body,
                                        const QByteArrayList &headers)
{
    QByteArray head = "HTTP/1.1 " + QByteArray::number(status) + " Status\r\n";
    for (const QByteArray &header : headers)
        head += header + "\r\n";
    head += "Content-Length: " + QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n";
    send(head + body.toByteArray());
}

bool LoopbackServer::Connection::wait(std::chrono::milliseconds duration)
{
    const auto end = std::chrono::steady_clock::now() + duration;
    while (std::chrono::steady_clock::now() < end) {
        if (server->m_isStopping)
            return false;
        pollfd watched{socket, POLLRDHUP, 0};
        if (::poll(&watched, 1, 10) > 0 && (watched.revents & (POLLRDHUP | POLLHUP | POLLERR))) {
            ++server->m_abandoned;
            return false;
        }
    }
    return true;
}

std::optional<LoopbackServer::Request> LoopbackServer::Connection::receive()
{
    return server->readRequest(*this);
}

void LoopbackServer::Connection::reset()
{
    isReset = true;
}

LoopbackServer::LoopbackServer(Script script, std::optional<TestIdentity> identity)
    : m_script(std::move(script)), m_identity(std::move(identity))
{
    std::signal(SIGPIPE, SIG_IGN);
    if (m_identity)
        m_tlsContext = contextFor(*m_identity);
    m_listener = listenOnLoopback(m_port);
    m_acceptor = std::thread([this] { acceptAll(); });
}

LoopbackServer::~LoopbackServer()
{
    m_isStopping = true;
    m_acceptor.join();
    for (std::thread &connection : m_connections)
        connection.join();
    ::close(m_listener);
}

QUrl LoopbackServer::url(const QString &path) const
{
    const QString scheme = m_identity ? QStringLiteral("https") : QStringLiteral("http");
    return QUrl(QStringLiteral("%1://127.0.0.1:%2%3").arg(scheme).arg(m_port).arg(path));
}

std::vector<LoopbackServer::Request> LoopbackServer::requests() const
{
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

quint16 LoopbackServer::unusedPort()
{
    quint16 port = 0;
    ::close(listenOnLoopback(port));
    return port;
}

void LoopbackServer::acceptAll()
{
    while (!m_isStopping) {
        pollfd watched{m_listener, POLLIN, 0};
        if (::poll(&watched, 1, 10) <= 0)
            continue;
        const int socket = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket >= 0)
            m_connections.emplace_back([this, socket] { serve(socket); });
    }
}

void LoopbackServer::serve(int socket)
{
    // A read that waits for a client that stays silent ends with the test.
    const timeval patience{0, 50'000};
    ::setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    Connection connection;
    connection.server = this;
    connection.socket = socket;
    bool isReady = true;
    if (m_tlsContext) {
        connection.tls = SSL_new(m_tlsContext.get());
        SSL_set_fd(connection.tls, socket);
        int result = 0;
        do {
            result = SSL_accept(connection.tls);
        } while (result <= 0 && !m_isStopping &&
                 SSL_get_error(connection.tls, result) == SSL_ERROR_WANT_READ);
        isReady = result == 1;
    }
    if (isReady) {
        if (const std::optional<Request> request = readRequest(connection))
            m_script(*request, connection);
    }
    if (connection.tls != nullptr) {
        if (!connection.isReset)
            SSL_shutdown(connection.tls);
        SSL_free(connection.tls);
    }
    if (connection.isReset) {
        const linger atOnce{1, 0};
        ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
        ::close(socket);
        return;
    }
    // The client may still be sending: closing with unread bytes would reset the connection and
    // lose the answer.
    ::shutdown(socket, SHUT_WR);
    char rest[4096];
    while (!m_isStopping && ::recv(socket, rest, sizeof rest, 0) > 0) {
    }
    ::close(socket);
}

std::optional<LoopbackServer::Request> LoopbackServer::readRequest(Connection &connection)
{
    QByteArray bytes;
    qsizetype headEnd = -1;
    qsizetype length = 0;
    Request request;
    while (headEnd < 0 || bytes.size() < headEnd + 4 + length) {
        char chunk[4096];
        const ssize_t count = connection.tls != nullptr
                                  ? SSL_read(connection.tls, chunk, sizeof chunk)
                                  : ::recv(connection.socket, chunk, sizeof chunk, 0);
        if (count <= 0) {
            const bool isWaiting =
                connection.tls != nullptr
                    ? SSL_get_error(connection.tls, int(count)) == SSL_ERROR_WANT_READ
                    : count < 0 && (errno == EAGAIN || errno == EINTR);
            if (!isWaiting || m_isStopping)
                return std::nullopt;
            continue;
        }
        bytes.append(chunk, count);
        if (headEnd >= 0)
            continue;
        headEnd = bytes.indexOf("\r\n\r\n");
        if (headEnd < 0)
            continue;
        QByteArrayList lines = bytes.first(headEnd).replace("\r\n", "\n").split('\n');
        const QByteArrayList start = lines.takeFirst().split(' ');
        request.method = start.value(0);
        request.target = start.value(1);
        request.headers = lines;
        length = request.header("Content-Length").toLongLong();
    }
    request.body = bytes.mid(headEnd + 4, length);
    const std::lock_guard lock(m_mutex);
    m_requests.push_back(request);
    return request;
}

} // namespace veltrix
