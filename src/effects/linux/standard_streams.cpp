// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/standard_streams.h"

#include "effects/linux/posix_files.h"

#include <csignal>
#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

namespace veltrix
{

void secureStandardStreams()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) == -1) {
            // The lowest free number is this one, for those below are taken.
            [[maybe_unused]] const int opened =
                ::open("/dev/null", descriptor == STDIN_FILENO ? O_RDONLY : O_WRONLY);
        }
    }
    std::signal(SIGPIPE, SIG_IGN);
}

std::FILE *takeStandardOutput()
{
    std::fflush(stdout);
    const int kept = ::dup(STDOUT_FILENO);
    std::FILE *const output = kept == -1 ? nullptr : ::fdopen(kept, "w");
    if (!output || ::dup2(STDERR_FILENO, STDOUT_FILENO) == -1)
        return stdout;
    return output;
}

Readers writeToStandardOutput(std::FILE *output, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const auto written = untilNotInterrupted(
            [&] { return ::write(::fileno(output), bytes.data(), size_t(bytes.size())); });
        if (written == -1 && errno == EPIPE)
            return Readers::None;
        if (written == -1) {
            throw FileError(QStringLiteral("Standard output could not be written: %1.")
                                .arg(systemReason(errno)));
        }
        bytes = bytes.sliced(written);
    }
    return Readers::Some;
}

bool isErrorOutputATerminal()
{
    return ::isatty(STDERR_FILENO) == 1;
}

} // namespace veltrix
