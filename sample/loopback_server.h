// SPDX-License-Identifier: GPL-3.0-or-later
// An HTTP or HTTPS server on 127.0.0.1 that runs on threads of its own.
#pragma once

#include "sample/access_log.h"

#include <httplib.h>

#include <memory>
#include <thread>

namespace veltrix::sample
{

class LoopbackServer
{
public:
    /// Binds at once: to `port`, or to a free port if it is 0. Throws std::runtime_error if that
    /// is not possible. The log must outlive the server.
    LoopbackServer(std::unique_ptr<httplib::Server> server, int port, AccessLog &log);
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer &) = delete;
    LoopbackServer &operator=(const LoopbackServer &) = delete;

    /// For adding routes before start().
    [[nodiscard]] httplib::Server &routes() { return *m_server; }
    void start();
    /// Stops answering and waits for requests in progress; the destructor does it, too.
    void stop();
    [[nodiscard]] int port() const { return m_port; }

private:
    std::unique_ptr<httplib::Server> m_server;
    int m_port = 0;
    std::thread m_thread;
};

} // namespace veltrix::sample
