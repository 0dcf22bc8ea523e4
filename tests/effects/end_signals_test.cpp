// SPDX-License-Identifier: GPL-3.0-or-later
// Signals that ask the program to end, and streams that nobody reads.
#include "effects/end_signals.h"
#include "effects/standard_streams.h"

#include <QCoreApplication>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace veltrix
{
namespace
{

TEST(EndSignals, EachAsksForAnOrderlyEnd)
{
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        EndSignals ends;
        QSignalSpy asked(&ends, &EndSignals::endRequested);
        ASSERT_EQ(std::raise(signal), 0);
        EXPECT_TRUE(asked.wait(5'000)) << signal;
    }
}

TEST(EndSignals, TheEchoOfOneDoesNotEndTheProgramAtOnce)
{
    EndSignals ends;
    QSignalSpy asked(&ends, &EndSignals::endRequested);
    std::raise(SIGTERM);
    std::raise(SIGTERM);
    EXPECT_TRUE(asked.wait(5'000));
}

/// What became of a child that does this.
int statusOf(void (*act)())
{
    const pid_t child = ::fork();
    if (child == 0) {
        act();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return status;
}

TEST(EndSignals, TheThirdEndsAProgramThatHangs)
{
    const int status = statusOf([] {
        const EndSignals ends;
        for (int i = 0; i < 3; ++i)
            std::raise(SIGTERM);
    });
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGTERM);
}

TEST(EndSignals, AnIgnoredOneStaysIgnored)
{
    const int status = statusOf([] {
        std::signal(SIGHUP, SIG_IGN);
        const EndSignals ends;
        struct sigaction now {
        };
        ::sigaction(SIGHUP, nullptr, &now);
        ::_exit(now.sa_handler == SIG_IGN ? 0 : 1);
    });
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(StandardStreams, ThatAreClosedAreOpenedOnTheNullDevice)
{
    const int status = statusOf([] {
        for (const int stream : {0, 1, 2})
            ::close(stream);
        secureStandardStreams();
        // The next file gets none of their numbers, and what is printed goes nowhere.
        const int file = ::open("/dev/null", O_RDONLY);
        ::_exit(file > 2 && ::write(1, "x", 1) == 1 && ::write(2, "x", 1) == 1 ? 0 : 1);
    });
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(StandardStreams, ABrokenPipeIsAnErrorAndNoEnd)
{
    const int status = statusOf([] {
        secureStandardStreams();
        int ends[2];
        if (::pipe(ends) != 0)
            ::_exit(2);
        ::close(ends[0]);
        ::_exit(::write(ends[1], "x", 1) == -1 && errno == EPIPE ? 0 : 1);
    });
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

} // namespace
} // namespace veltrix
