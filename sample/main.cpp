// SPDX-License-Identifier: GPL-3.0-or-later
// veltrix-sample-services: the App Store's services, made up, on loopback.
#include "sample/options.h"
#include "sample/sample_services.h"

#include <QCoreApplication>
#include <QSaveFile>

#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <stdexcept>

namespace
{

using namespace veltrix::sample;

/// Blocked before any thread starts, so that only the main thread's sigwait() takes them.
sigset_t blockEndingSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

/// Asks for SIGTERM at the parent's end; a parent that has ended meanwhile counts as well.
void endWithParent(pid_t parentAtStart)
{
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parentAtStart)
        raise(SIGTERM);
}

void writeWhole(const QString &name, const QByteArray &content)
{
    if (name.isEmpty())
        return;
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        throw std::runtime_error("Cannot write " + name.toStdString() + ": " +
                                 file.errorString().toStdString());
}

void run(const Options &options, const sigset_t &endingSignals)
{
    const SampleServices services(options);
    writeWhole(options.certificateFile, services.authorityPem());
    const QByteArray lines = services.readyLines();
    std::fputs(lines.constData(), stdout);
    std::fflush(stdout);
    writeWhole(options.readyFile, lines);
    int received = 0;
    sigwait(&endingSignals, &received);
}

} // namespace

int main(int argc, char *argv[])
{
    const pid_t parent = getppid();
    const sigset_t endingSignals = blockEndingSignals();
    // A client that hangs up must not end the services.
    std::signal(SIGPIPE, SIG_IGN);
    const QCoreApplication application(argc, argv);
    const auto read = readOptions(QCoreApplication::arguments());
    if (const auto *farewell = std::get_if<Farewell>(&read)) {
        std::fputs(farewell->text.toUtf8().constData(), farewell->status == 0 ? stdout : stderr);
        return farewell->status;
    }
    try {
        const Options &options = std::get<Options>(read);
        if (options.dieWithParent)
            endWithParent(parent);
        run(options, endingSignals);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "veltrix-sample-services: %s\n", error.what());
        return 1;
    }
    return 0;
}
