// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/end_signals.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace veltrix
{

namespace
{

constexpr std::array endSignals{SIGTERM, SIGINT, SIGHUP};

/// A pipe from the signal handler, which may do next to nothing, to the event loop.
std::array<int, 2> wakeUp{-1, -1};

/// Signals so far.
volatile std::sig_atomic_t received = 0;

void handle(int signal)
{
    received = received + 1;
    if (received > 2) {
        std::signal(signal, SIG_DFL);
        std::raise(signal);
        return;
    }
    const int code = errno;
    [[maybe_unused]] const ssize_t written = ::write(wakeUp[1], "", 1);
    errno = code;
}

} // namespace

EndSignals::EndSignals(QObject *parent) : QObject(parent)
{
    received = 0;
    if (::pipe2(wakeUp.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto *notifier = new QSocketNotifier(wakeUp[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        while (::read(wakeUp[0], &byte, 1) > 0) {
        }
        Q_EMIT endRequested();
    });
    for (const int signal : endSignals) {
        struct sigaction old {
        };
        // Whoever started the program may want it to outlive his terminal.
        if (::sigaction(signal, nullptr, &old) == 0 && old.sa_handler == SIG_IGN)
            continue;
        struct sigaction action {
        };
        action.sa_handler = handle;
        action.sa_flags = SA_RESTART;
        ::sigaction(signal, &action, nullptr);
    }
}

EndSignals::~EndSignals()
{
    for (const int signal : endSignals) {
        struct sigaction ours {
        };
        if (::sigaction(signal, nullptr, &ours) == 0 && ours.sa_handler == handle)
            std::signal(signal, SIG_DFL);
    }
    for (int &descriptor : wakeUp)
        ::close(std::exchange(descriptor, -1));
}

} // namespace veltrix
