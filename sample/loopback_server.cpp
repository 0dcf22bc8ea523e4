// SPDX-License-Identifier: GPL-3.0-or-later
// An HTTP or HTTPS server on 127.0.0.1.
#include "sample/loopback_server.h"

#include <sys/socket.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace veltrix::sample
{

namespace
{

constexpr const char *loopback = "127.0.0.1";
/// An idle connection holds a thread, so there are many threads and connections idle briefly.
constexpr std::size_t threadCount = 32;
constexpr time_t idleSeconds = 2;
constexpr std::size_t requestsPerConnection = 1'000;

/// The library's default would let two servers share a port without either noticing.
void allowQuickRestart(socket_t socket)
{
    const int yes = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
}

} // namespace

LoopbackServer::LoopbackServer(std::unique_ptr<httplib::Server> server, int port, AccessLog &log)
    : m_server(std::move(server))
{
    if (!m_server->is_valid())
        throw std::runtime_error("The server could not be set up.");
    m_server->new_task_queue = [] {
        return new httplib::ThreadPool(threadCount);
    };
    m_server->set_keep_alive_timeout(idleSeconds);
    m_server->set_keep_alive_max_count(requestsPerConnection);
    m_server->set_tcp_nodelay(true);
    m_server->set_socket_options(allowQuickRestart);
    m_server->set_logger(
        [&log](const httplib::Request &request, const httplib::Response &response) {
            log.add(request.method, request.path, response.status);
        });
    if (port == 0)
        m_port = m_server->bind_to_any_port(loopback);
    else if (m_server->bind_to_port(loopback, port))
        m_port = port;
    if (m_port <= 0)
        throw std::runtime_error("Port " + std::to_string(port) + " cannot be used.");
}

LoopbackServer::~LoopbackServer()
{
    stop();
}

void LoopbackServer::stop()
{
    m_server->stop();
    if (m_thread.joinable())
        m_thread.join();
}

void LoopbackServer::start()
{
    m_thread = std::thread([this] { m_server->listen_after_bind(); });
    // stop() does nothing before the server listens.
    while (!m_server->is_running())
        std::this_thread::yield();
}

} // namespace veltrix::sample
