// SPDX-License-Identifier: GPL-3.0-or-later
// Faults of a share of all requests, whatever they ask for.
#include "sample/faults.h"

#include "sample/dice.h"
#include "sample/http_reply.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <string>

namespace veltrix::sample
{

namespace
{

constexpr int faultCount = static_cast<int>(Fault::Slow) + 1;
/// Far more than two servers of a few dozen threads ever have open.
constexpr int mostSockets = 1024;

/// The port of whoever is at the other end of a socket; 0 when it has none.
int portOfPeer(int socket)
{
    sockaddr_in peer{};
    socklen_t length = sizeof peer;
    if (getpeername(socket, reinterpret_cast<sockaddr *>(&peer), &length) != 0 ||
        peer.sin_family != AF_INET)
        return 0;
    return ntohs(peer.sin_port);
}

/// Ends the connection that a request came by. The library gives handlers no hold of it, so it is
/// found by the port at its other end; the answer then goes nowhere.
void hangUp(const httplib::Request &request)
{
    for (int socket = 0; socket < mostSockets; ++socket) {
        if (portOfPeer(socket) == request.remote_port) {
            shutdown(socket, SHUT_RDWR);
            return;
        }
    }
}

void replyLater(httplib::Response &response, int status)
{
    response.set_header("Retry-After", std::to_string(Faults::retryAfterSeconds));
    replyEmpty(response, status);
}

} // namespace

std::optional<Fault> Faults::next()
{
    Dice dice(stableHash(m_seed, m_count++));
    if (dice.below(100) >= m_percent)
        return std::nullopt;
    return static_cast<Fault>(dice.below(faultCount));
}

bool Faults::answer(const httplib::Request &request, httplib::Response &response, Pause &pause)
{
    const std::optional<Fault> fault = next();
    if (!fault)
        return false;
    switch (*fault) {
    case Fault::HungUp:
        hangUp(request);
        replyEmpty(response, 500);
        break;
    case Fault::Refused:
        replyEmpty(response, 403);
        break;
    case Fault::Limited:
        replyLater(response, 429);
        break;
    case Fault::Broken:
        replyEmpty(response, 500);
        break;
    case Fault::Unavailable:
        replyLater(response, 503);
        break;
    case Fault::Cut:
        replyCut(response, QByteArray(4096, ' '), "text/plain");
        break;
    case Fault::Garbage:
        replyGarbage(response);
        break;
    case Fault::Slow:
        pause.wait(Pause::slowness);
        return false;
    }
    return true;
}

} // namespace veltrix::sample
